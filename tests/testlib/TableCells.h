#pragma once
// Reading what a table shows, row by row: the cells of one column of a
// table's data source (what a list window would show), or of a Qt model.
#include <QString>
#include <QStringList>

class QAbstractItemModel;
class TableDataSource;

namespace testlib {

// The cells of the column with that identifier, for every row shown.
QStringList columnCells(const TableDataSource &source, const QString &columnId);

// The texts of one column of the model, for every row.
QStringList modelColumn(const QAbstractItemModel &model, int column = 0);

// Whether any cell of the model shows exactly that text.
bool modelShows(const QAbstractItemModel &model, const QString &text);

}  // namespace testlib
