#include "platform/PeriodicPass.h"

#include <QMetaObject>
#include <QThread>

PeriodicPass::PeriodicPass(QObject &owner, std::function<void()> passToRun, QObject *parent)
    : QObject(parent),
      pass(std::move(passToRun))
{
    // Posted passes are delivered to this object, so they run on the
    // owner's thread, and are dropped with it.
    if (!parent && thread() != owner.thread())
        moveToThread(owner.thread());
}

PeriodicPass::~PeriodicPass()
{
    {
        std::lock_guard lock(mutex);
        stopping = true;
    }
    wake.notify_all();
    if (worker.joinable())
        worker.join();
}

void PeriodicPass::setWaits(std::chrono::milliseconds first, std::chrono::milliseconds before,
                            std::chrono::milliseconds after)
{
    std::lock_guard lock(mutex);
    firstWait = first;
    beforeEach = before;
    afterEach = after;
}

void PeriodicPass::start()
{
    if (worker.joinable())
        return;
    worker = std::thread([this] { work(); });
}

void PeriodicPass::work()
{
    const auto stopped = [this] { return stopping; };
    std::unique_lock lock(mutex);
    if (wake.wait_for(lock, firstWait, stopped))
        return;
    for (;;) {
        if (wake.wait_for(lock, beforeEach, stopped))
            return;
        passPending = true;
        QMetaObject::invokeMethod(
            this, [this] { runPass(); }, Qt::QueuedConnection);
        wake.wait(lock, [this] { return stopping || !passPending; });
        if (stopping || wake.wait_for(lock, afterEach, stopped))
            return;
    }
}

void PeriodicPass::runPass()
{
    pass();
    {
        std::lock_guard lock(mutex);
        passPending = false;
    }
    wake.notify_all();
}
