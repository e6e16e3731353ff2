#pragma once
// The columns each list of the program shows by default (identifier = field
// name, title = header). The windows and the command line's export share
// them, so an export from either gives the same table.
#include "store/TableView.h"

#include <QString>

namespace ListColumns {

// Kinds as the command line names them: contacts, orders, items,
// materials, tasks, bills. An unknown kind gives no columns.
QList<TableColumn> defaultsFor(const QString &kind);

// The kinds, in the order the database is read.
QStringList kinds();

// Whether a record field holds money (an order's value, a line's cost, a
// bill's amount, a task's charge...), for showing it as money.
bool isMoneyField(const QString &field);

}  // namespace ListColumns
