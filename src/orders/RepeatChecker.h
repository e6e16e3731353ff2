#pragma once
// The repeat checker of the order manager: a while after start (5 s) one
// pass of the manager's checkForOverdueRepeats() at that moment runs on the
// manager's thread; then 6 hours after the pass has ended, and the 5 s wait
// again, and so on. The pass itself is a plain function of "now" on the
// manager; the worker thread only waits and posts.
#include "platform/PeriodicPass.h"

class OrderManager;

class RepeatChecker : public PeriodicPass
{
    Q_OBJECT
public:
    explicit RepeatChecker(OrderManager &manager, QObject *parent = nullptr);

    // The wait before each pass (5 s) and the wait after each pass has
    // ended (21600 s). Takes effect from the next wait.
    void setDelays(std::chrono::milliseconds beforeEachPass, std::chrono::milliseconds afterEachPass)
    {
        setWaits(std::chrono::milliseconds(0), beforeEachPass, afterEachPass);
    }
};
