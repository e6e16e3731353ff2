#pragma once
// The point-of-sale checkout: quick sales on the order machinery. It is an
// order manager of its own whose new orders land in the one order list.
#include "orders/OrderManager.h"

class CheckoutManager : public OrderManager
{
    Q_OBJECT
public:
    explicit CheckoutManager(Quorvel *controller, QObject *parent = nullptr);

    // Opens the checkout on that order, or on a new sale when none.
    void edit(Order *order);
    Order *getEditedOrder() const { return editedOrder; }
    bool isOpen() const { return open; }

private:
    Order *editedOrder = nullptr;
    bool open = false;
};
