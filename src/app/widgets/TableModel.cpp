#include "app/widgets/TableModel.h"

#include "store/TableDataSource.h"

TableModel::TableModel(TableView *outlet, QObject *parent)
    : QAbstractTableModel(parent),
      table(outlet)
{
    takeShape();
    if (outlet) {
        connect(outlet, &TableView::reloaded, this, &TableModel::reload);
        connect(outlet, &TableView::columnsChanged, this, &TableModel::reload);
        connect(outlet, &QObject::destroyed, this, &TableModel::reload);
    }
}

TableDataSource *TableModel::dataSource() const
{
    return table ? table->dataSource() : nullptr;
}

QString TableModel::columnIdentifier(int column) const
{
    return column >= 0 && column < columns.size() ? columns.at(column).identifier : QString();
}

int TableModel::columnWithIdentifier(const QString &identifier) const
{
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i).identifier == identifier)
            return i;
    }
    return -1;
}

void TableModel::reload()
{
    beginResetModel();
    takeShape();
    endResetModel();
}

void TableModel::takeShape()
{
    columns = table ? table->tableColumns() : QList<TableColumn>();
    const TableDataSource *source = dataSource();
    rows = source ? qMax(0, source->numberOfRowsInTableView()) : 0;
}

int TableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows;
}

int TableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(columns.size());
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const TableDataSource *source = dataSource();
    if (!source || !index.isValid() || index.row() >= rows || index.column() >= columns.size())
        return {};
    return source->objectValueForTableColumn(columns.at(index.column()).identifier, index.row());
}

bool TableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    TableDataSource *source = dataSource();
    if (role != Qt::EditRole || !source || !index.isValid() || !(flags(index) & Qt::ItemIsEditable))
        return false;
    source->setObjectValueForTableColumn(value.toString(), columns.at(index.column()).identifier, index.row());
    // An edit may change other cells of the row (a line's total follows its
    // quantity and cost): the whole row is shown again.
    Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1),
                       {Qt::DisplayRole, Qt::EditRole});
    return true;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columns.size())
        return {};
    return columns.at(section).title;
}

Qt::ItemFlags TableModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= rows || index.column() >= columns.size())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (columns.at(index.column()).editable)
        result |= Qt::ItemIsEditable;
    return result;
}
