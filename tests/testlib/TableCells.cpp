#include "TableCells.h"

#include "store/TableDataSource.h"

#include <QAbstractItemModel>

namespace testlib {

QStringList columnCells(const TableDataSource &source, const QString &columnId)
{
    QStringList cells;
    for (int row = 0; row < source.numberOfRowsInTableView(); ++row)
        cells << source.objectValueForTableColumn(columnId, row);
    return cells;
}

QStringList modelColumn(const QAbstractItemModel &model, int column)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells << model.index(row, column).data().toString();
    return cells;
}

bool modelShows(const QAbstractItemModel &model, const QString &text)
{
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            if (model.index(row, column).data().toString() == text)
                return true;
        }
    }
    return false;
}

}  // namespace testlib
