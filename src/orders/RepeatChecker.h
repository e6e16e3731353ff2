#pragma once
// The repeat checker of the order manager: a worker thread that only waits
// and posts. A while after start (5 s) it posts one pass of the manager's
// checkForOverdueRepeats() at that moment to the manager's thread, waits
// for the pass to end, waits 6 hours, and starts over with the 5 s wait.
// So every collection is touched by the manager's thread alone; the pass
// itself is a plain function of "now" on the manager.
//
// Destroying the checker stops the worker at once, whatever it is waiting
// for; a pass that was posted and has not run yet is dropped.
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class OrderManager;

class RepeatChecker : public QObject
{
    Q_OBJECT
public:
    explicit RepeatChecker(OrderManager &manager, QObject *parent = nullptr);
    ~RepeatChecker() override;

    // The wait before each pass (5 s) and the wait after each pass has
    // ended (21600 s). Takes effect from the next wait.
    void setDelays(std::chrono::milliseconds beforeEachPass, std::chrono::milliseconds afterEachPass);
    // Starts the worker; a second call does nothing.
    void start();

private:
    void work();
    void runPass();

    OrderManager &manager;
    std::mutex mutex;
    std::condition_variable wake;
    std::chrono::milliseconds before{std::chrono::seconds(5)};
    std::chrono::milliseconds after{std::chrono::seconds(21600)};
    bool stopping = false;
    bool passPending = false;
    std::thread worker;
};
