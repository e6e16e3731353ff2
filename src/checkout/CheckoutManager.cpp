#include "checkout/CheckoutManager.h"

#include "orders/Order.h"
#include "store/QuorvelServices.h"

CheckoutManager::CheckoutManager(QuorvelServices *controller, QObject *parent)
    : OrderManager(controller, parent)
{ }

void CheckoutManager::edit(Order *order)
{
    // The checkout window is not built yet: it only remembers what it was
    // asked to show.
    editedOrder = shareOf(order);
    open = true;
}

void CheckoutManager::awakeFromNib()
{
    fillStatusPopUp();
    installStationary();
}

void CheckoutManager::requestResign(const QObject *)
{
    hide();
}

void CheckoutManager::windowDidBecomeKey()
{
    if (quorvel)
        quorvel->requestOrderManagerResign();
}
