#include "app/widgets/TableModel.h"

#include "platform/Dates.h"
#include "platform/ReadingOrder.h"
#include "store/ListColumns.h"
#include "store/TableDataSource.h"

#include <QFont>
#include <QLocale>

namespace {

QString &currencySymbol()
{
    static QString symbol;
    return symbol;
}

// How many cells of a column are read to tell whether it holds numbers.
constexpr int sampledRows = 200;

}  // namespace

void TableModel::setCurrencySymbol(const QString &symbol)
{
    currencySymbol() = symbol;
}

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
    kindsRead = false;
    // The totals are the last rows of a list (the statement has its own
    // two above them): the rule is looked for among the last four.
    rule = -1;
    for (int row = qMax(0, rows - 4); source && row < rows - 1 && rule < 0; ++row) {
        for (const TableColumn &column : std::as_const(columns)) {
            if (source->objectValueForTableColumn(column.identifier, row) == QLatin1String("_____")) {
                rule = row;
                break;
            }
        }
    }
}

void TableModel::readColumnKinds() const
{
    if (kindsRead)
        return;
    kindsRead = true;
    const TableDataSource *source = dataSource();
    numeric.assign(size_t(columns.size()), false);
    money.assign(size_t(columns.size()), false);
    dates.assign(size_t(columns.size()), false);
    if (!source)
        return;
    const int sampled = qMin(rows, sampledRows);
    for (qsizetype c = 0; c < columns.size(); ++c) {
        int numbers = 0, texts = 0, dated = 0;
        for (int row = 0; row < sampled; ++row) {
            if (row == rule || row == rule + 1)
                continue;
            const QString cell = source->objectValueForTableColumn(columns.at(c).identifier, row).trimmed();
            if (cell.isEmpty())
                continue;
            if (platform::numberAsWritten(cell)) {
                ++numbers;
            } else {
                ++texts;
                if (platform::readingKey(cell, platform::dayFirstFormat).kind == platform::ReadingKey::Date
                    || platform::readingKey(cell, platform::monthFirstFormat).kind == platform::ReadingKey::Date)
                    ++dated;
            }
        }
        // A column of numbers may have the odd note in it ("tbc").
        numeric[size_t(c)] = numbers > 0 && texts * 10 <= numbers;
        dates[size_t(c)] = dated > 0 && (texts - dated) * 10 <= dated;
        money[size_t(c)]
            = numeric[size_t(c)] && ListColumns::isMoneyField(source->fieldOfColumn(columns.at(c).identifier));
    }
}

bool TableModel::isNumericColumn(int column) const
{
    readColumnKinds();
    return column >= 0 && size_t(column) < numeric.size() && numeric[size_t(column)];
}

bool TableModel::isDateColumn(int column) const
{
    readColumnKinds();
    return column >= 0 && size_t(column) < dates.size() && dates[size_t(column)];
}

bool TableModel::isMoneyColumn(int column) const
{
    readColumnKinds();
    return column >= 0 && size_t(column) < money.size() && money[size_t(column)];
}

QString TableModel::moneyText(const QString &text, bool total) const
{
    const auto value = platform::numberAsWritten(text);
    if (!value)
        return text;
    const QString figure = QLocale().toString(*value, 'f', 2);
    return total && !currencySymbol().isEmpty() ? currencySymbol() + figure : figure;
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
    const TableDataSource *source = dataSource();
    if (!source || !index.isValid() || index.row() >= rows || index.column() >= columns.size())
        return {};
    const bool total = rule >= 0 && index.row() == rule + 1;
    switch (role) {
    case Qt::DisplayRole: {
        const QString text = source->shownValueForTableColumn(columns.at(index.column()).identifier, index.row());
        return isMoneyColumn(index.column()) && index.row() != rule ? moneyText(text, total) : text;
    }
    case Qt::EditRole:
        return source->objectValueForTableColumn(columns.at(index.column()).identifier, index.row());
    case Qt::TextAlignmentRole:
        if (isNumericColumn(index.column()))
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::FontRole:
        if (total) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case TotalRowRole:
        return total;
    default:
        return {};
    }
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
    if (orientation != Qt::Horizontal || section < 0 || section >= columns.size())
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((isNumericColumn(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    const TableDataSource *source = dataSource();
    return source ? source->shownTitle(columns.at(section).identifier, columns.at(section).title)
                  : columns.at(section).title;
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
