#include "tasks/AlarmWatch.h"

#include "platform/Clock.h"
#include "tasks/ActionManager.h"

AlarmWatch::AlarmWatch(ActionManager &manager, QObject *parent)
    : PeriodicPass(
        manager, [&manager] { manager.checkForOverdueActions(platform::now()); }, parent)
{
    setDelays(std::chrono::milliseconds(0), std::chrono::seconds(30));
}
