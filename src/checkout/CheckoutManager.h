#pragma once
// The point-of-sale checkout: quick sales on the order machinery. It is an
// order manager of its own whose new orders land in the one order list.
#include "orders/OrderManager.h"

class CheckoutManager : public OrderManager
{
    Q_OBJECT
public:
    explicit CheckoutManager(QuorvelServices *controller, QObject *parent = nullptr);

    // Start-up: the checkout fills its status pop-up only (the order
    // list's filter is not its business).
    void awakeFromNib() override;
    // Opens the checkout on that order, or on a new sale when none.
    void edit(Order *order);
    // The order editor came to the front: the checkout window goes.
    void requestResign(const QObject *sender) override;
    // The checkout window became key: the order editor is asked to resign.
    void windowDidBecomeKey() override;
    Order *getEditedOrder() const { return editedOrder.get(); }
    bool isOpen() const { return open; }

private:
    std::shared_ptr<Order> editedOrder;
    bool open = false;
};
