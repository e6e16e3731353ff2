#include "orders/RepeatChecker.h"

#include "orders/OrderManager.h"
#include "platform/Clock.h"

#include <QMetaObject>
#include <QThread>

RepeatChecker::RepeatChecker(OrderManager &orderManager, QObject *parent)
    : QObject(parent), manager(orderManager)
{
    // Posted passes are delivered to this object, so they run on the
    // manager's thread, and are dropped with it.
    if (!parent && thread() != manager.thread())
        moveToThread(manager.thread());
}

RepeatChecker::~RepeatChecker()
{
    {
        std::lock_guard lock(mutex);
        stopping = true;
    }
    wake.notify_all();
    if (worker.joinable())
        worker.join();
}

void RepeatChecker::setDelays(std::chrono::milliseconds beforeEachPass, std::chrono::milliseconds afterEachPass)
{
    std::lock_guard lock(mutex);
    before = beforeEachPass;
    after = afterEachPass;
}

void RepeatChecker::start()
{
    if (worker.joinable())
        return;
    worker = std::thread([this] { work(); });
}

void RepeatChecker::work()
{
    const auto stopped = [this] { return stopping; };
    std::unique_lock lock(mutex);
    for (;;) {
        if (wake.wait_for(lock, before, stopped))
            return;
        passPending = true;
        QMetaObject::invokeMethod(this, [this] { runPass(); }, Qt::QueuedConnection);
        wake.wait(lock, [this] { return stopping || !passPending; });
        if (stopping || wake.wait_for(lock, after, stopped))
            return;
    }
}

void RepeatChecker::runPass()
{
    manager.checkForOverdueRepeats(platform::now());
    {
        std::lock_guard lock(mutex);
        passPending = false;
    }
    wake.notify_all();
}
