#pragma once
// The stock list and the item editor.
#include "app/ListManager.h"

class ItemManager : public ListManager
{
    Q_OBJECT
public:
    explicit ItemManager(Quorvel *controller, QObject *parent = nullptr);

    PopUp *stockFilter;  // "All" / "In Stock"
};
