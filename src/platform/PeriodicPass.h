#pragma once
// A pass run now and then on an owner's thread by a worker thread that only
// waits and posts: it waits `first`, then over and over waits `before`,
// posts the pass to the owner's thread, waits for the pass to end (a pass
// that shows alerts lasts as long as they are up) and waits `after`. So
// everything the pass touches is touched by the owner's thread alone.
//
// Destroying it stops the worker at once, whatever it is waiting for; a
// pass that was posted and has not run yet is dropped.
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class PeriodicPass : public QObject
{
    Q_OBJECT
public:
    PeriodicPass(QObject &owner, std::function<void()> pass, QObject *parent = nullptr);
    ~PeriodicPass() override;

    // Take effect from the next wait.
    void setWaits(std::chrono::milliseconds first, std::chrono::milliseconds before, std::chrono::milliseconds after);
    // Starts the worker; a second call does nothing.
    void start();

private:
    void work();
    void runPass();

    std::function<void()> pass;
    std::mutex mutex;
    std::condition_variable wake;
    std::chrono::milliseconds firstWait{0};
    std::chrono::milliseconds beforeEach{0};
    std::chrono::milliseconds afterEach{0};
    bool stopping = false;
    bool passPending = false;
    std::thread worker;
};
