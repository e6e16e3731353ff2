#include "checkout/CheckoutManager.h"

CheckoutManager::CheckoutManager(Quorvel *controller, QObject *parent) : OrderManager(controller, parent) {}

void CheckoutManager::edit(Order *order)
{
    // The checkout window is not built yet: it only remembers what it was
    // asked to show.
    editedOrder = order;
    open = true;
}
