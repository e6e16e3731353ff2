#include "tasks/AlarmWatch.h"

#include "platform/Clock.h"
#include "tasks/ActionManager.h"

#include <QMetaObject>
#include <QThread>

AlarmWatch::AlarmWatch(ActionManager &actionManager, QObject *parent) : QObject(parent), manager(actionManager)
{
    // Posted passes are delivered to this object, so they run on the
    // manager's thread, and are dropped with it.
    if (!parent && thread() != manager.thread())
        moveToThread(manager.thread());
}

AlarmWatch::~AlarmWatch()
{
    {
        std::lock_guard lock(mutex);
        stopping = true;
    }
    wake.notify_all();
    if (worker.joinable())
        worker.join();
}

void AlarmWatch::setDelays(std::chrono::milliseconds beforeFirstPass, std::chrono::milliseconds afterEachPass)
{
    std::lock_guard lock(mutex);
    first = beforeFirstPass;
    period = afterEachPass;
}

void AlarmWatch::start()
{
    if (worker.joinable())
        return;
    worker = std::thread([this] { work(); });
}

void AlarmWatch::work()
{
    const auto stopped = [this] { return stopping; };
    std::unique_lock lock(mutex);
    if (wake.wait_for(lock, first, stopped))
        return;
    for (;;) {
        passPending = true;
        QMetaObject::invokeMethod(this, [this] { runPass(); }, Qt::QueuedConnection);
        wake.wait(lock, [this] { return stopping || !passPending; });
        if (stopping || wake.wait_for(lock, period, stopped))
            return;
    }
}

void AlarmWatch::runPass()
{
    manager.checkForOverdueActions(platform::now());
    {
        std::lock_guard lock(mutex);
        passPending = false;
    }
    wake.notify_all();
}
