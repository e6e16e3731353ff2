#pragma once
// A matrix of radio cells in one row: the selected column.
#include "platform/outlets/Outlet.h"

#include <QStringList>

class Matrix : public Outlet
{
    Q_OBJECT
public:
    explicit Matrix(const QStringList &cellTitles = {}, QObject *parent = nullptr);

    QStringList titles() const { return cells; }
    int numberOfColumns() const { return int(cells.size()); }
    int selectedColumn() const { return selected; }
    void selectCellAtColumn(int column);

    // From the widget: the user chose a cell (activated() follows).
    void userSelectColumn(int column);

Q_SIGNALS:
    void activated();

private:
    QStringList cells;
    int selected = 0;
};
