#pragma once
// The alarm watch of the task manager: one pass of the manager's
// checkForOverdueActions() at that moment runs on the manager's thread at
// once, then 30 s after each pass has ended (a pass that shows alerts lasts
// as long as they are up). So every task is touched by the manager's thread
// alone, and alerts come one at a time in collection order.
#include "platform/PeriodicPass.h"

class ActionManager;

class AlarmWatch : public PeriodicPass
{
    Q_OBJECT
public:
    explicit AlarmWatch(ActionManager &manager, QObject *parent = nullptr);

    // The wait before the first pass (none) and the wait after each pass
    // has ended (30 s). Takes effect from the next wait.
    void setDelays(std::chrono::milliseconds beforeFirstPass, std::chrono::milliseconds afterEachPass)
    {
        setWaits(beforeFirstPass, std::chrono::milliseconds(0), afterEachPass);
    }
};
