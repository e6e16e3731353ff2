#pragma once
// The bill of materials: the lines (stock items and task time) of the order
// being edited.
#include "app/ListManager.h"

class BOMManager : public ListManager
{
    Q_OBJECT
public:
    explicit BOMManager(Quorvel *controller, QObject *parent = nullptr);

    // The id of the order whose lines are shown (0 for none).
    int getCurrentOrder() const { return currentOrder; }
    void setCurrentOrder(int orderId) { currentOrder = orderId; }

private:
    int currentOrder = 0;
};
