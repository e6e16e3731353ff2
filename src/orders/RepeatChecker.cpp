#include "orders/RepeatChecker.h"

#include "orders/OrderManager.h"
#include "platform/Clock.h"

RepeatChecker::RepeatChecker(OrderManager &manager, QObject *parent)
    : PeriodicPass(
        manager, [&manager] { manager.checkForOverdueRepeats(platform::now()); }, parent)
{
    setDelays(std::chrono::seconds(5), std::chrono::seconds(21600));
}
