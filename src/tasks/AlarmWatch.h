#pragma once
// The alarm watch of the task manager: a worker thread that only waits and
// posts. It posts one pass of the manager's checkForOverdueActions() at that
// moment to the manager's thread, waits for the pass to end (a pass that
// shows alerts lasts as long as they are up), waits 30 s, and starts over.
// So every task is touched by the manager's thread alone, and alerts come
// one at a time in collection order.
//
// Destroying the watch stops the worker at once, whatever it is waiting
// for; a pass that was posted and has not run yet is dropped.
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class ActionManager;

class AlarmWatch : public QObject
{
    Q_OBJECT
public:
    explicit AlarmWatch(ActionManager &manager, QObject *parent = nullptr);
    ~AlarmWatch() override;

    // The wait before the first pass (none) and the wait after each pass
    // has ended (30 s). Takes effect from the next wait.
    void setDelays(std::chrono::milliseconds beforeFirstPass, std::chrono::milliseconds afterEachPass);
    // Starts the worker; a second call does nothing.
    void start();

private:
    void work();
    void runPass();

    ActionManager &manager;
    std::mutex mutex;
    std::condition_variable wake;
    std::chrono::milliseconds first{0};
    std::chrono::milliseconds period{std::chrono::seconds(30)};
    bool stopping = false;
    bool passPending = false;
    std::thread worker;
};
