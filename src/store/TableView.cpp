#include "store/TableView.h"

#include "store/TableDataSource.h"

TableView::TableView(QObject *parent)
    : Outlet(parent)
{ }

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

void TableView::userSelectRow(int row)
{
    selected = row < -1 ? -1 : row;
    Q_EMIT selectionActivated();
}

void TableView::userClickColumn(const QString &columnId)
{
    bool ascending = true;
    if (!descriptors.isEmpty() && descriptors.first().key == columnId)
        ascending = !descriptors.first().ascending;
    QList<SortDescriptor> next{SortDescriptor{columnId, ascending}};
    for (const SortDescriptor &descriptor : std::as_const(descriptors))
        if (descriptor.key != columnId)
            next.append(descriptor);
    descriptors = next;
    if (source)
        source->didClickTableColumn(columnId, ascending);
}

void TableView::userDoubleClick(int row)
{
    selected = row < -1 ? -1 : row;
    Q_EMIT doubleClicked();
}
