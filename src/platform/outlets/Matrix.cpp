#include "platform/outlets/Matrix.h"

Matrix::Matrix(const QStringList &cellTitles, QObject *parent)
    : Outlet(parent),
      cells(cellTitles)
{ }

void Matrix::selectCellAtColumn(int column)
{
    if (column < 0 || column >= cells.size() || column == selected)
        return;
    selected = column;
    Q_EMIT changed();
}

void Matrix::userSelectColumn(int column)
{
    if (column < 0 || column >= cells.size())
        return;
    selected = column;
    Q_EMIT activated();
}
