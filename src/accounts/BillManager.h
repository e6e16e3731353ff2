#pragma once
// Money out (bills) beside money in (paid orders) and the statement: the
// accounts tab's three tables.
#include "app/ListManager.h"

class BillManager : public ListManager
{
    Q_OBJECT
public:
    explicit BillManager(Quorvel *controller, QObject *parent = nullptr);

    // The money-in table and the statement table.
    TableView *getInTableView() const { return inTable; }
    TableView *getSttTableView() const { return sttTable; }

    PopUp *periodPopUp;
    TableView *inTable;
    TableView *sttTable;
};
