#include "store/TableView.h"

TableView::TableView(QObject *parent) : QObject(parent) {}

void TableView::setColumns(const QList<TableColumn> &newColumns)
{
    columns = newColumns;
    Q_EMIT columnsChanged();
}

void TableView::addTableColumn(const TableColumn &column)
{
    columns.append(column);
    Q_EMIT columnsChanged();
}

void TableView::removeAllColumns()
{
    columns.clear();
    Q_EMIT columnsChanged();
}

QList<TableColumn> TableView::columnsFrom(std::initializer_list<std::pair<const char *, const char *>> pairs)
{
    QList<TableColumn> result;
    for (const auto &[identifier, title] : pairs)
        result.append(TableColumn{QString::fromUtf8(identifier), QString::fromUtf8(title)});
    return result;
}

void TableView::selectRow(int row)
{
    if (row < -1)
        row = -1;
    if (selected == row)
        return;
    selected = row;
    Q_EMIT selectionChanged(row);
}

void TableView::setSortDescriptors(const QList<SortDescriptor> &newDescriptors)
{
    descriptors = newDescriptors;
}

void TableView::reloadData()
{
    Q_EMIT reloaded();
}
