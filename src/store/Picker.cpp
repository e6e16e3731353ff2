#include "store/Picker.h"

#include "platform/Alerts.h"
#include "platform/Dates.h"
#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Numbers.h"
#include "platform/ReadingOrder.h"
#include "reports/ReportItem.h"

#include <algorithm>
#include <numeric>
#include <vector>

using platform::localised;
using platform::withArguments;

namespace {

// The row's fields: the two shown values and the record's id.
constexpr int idField = 3;

// A field name as a column header: "totalTimeUnits" reads "Total Time
// Units", "contact:name" reads "Contact Name".
QString readable(const QString &fieldName)
{
    QString words;
    bool startOfWord = true;
    for (qsizetype i = 0; i < fieldName.size(); ++i) {
        const QChar c = fieldName.at(i);
        if (c == QLatin1Char(':') || c == QLatin1Char('_') || c.isSpace()) {
            if (!words.isEmpty() && !words.endsWith(QLatin1Char(' ')))
                words += QLatin1Char(' ');
            startOfWord = true;
            continue;
        }
        if (c.isUpper() && i > 0 && fieldName.at(i - 1).isLower() && !words.endsWith(QLatin1Char(' ')))
            words += QLatin1Char(' ');
        words += (startOfWord || words.endsWith(QLatin1Char(' '))) ? c.toUpper() : c;
        startOfWord = false;
    }
    return words.trimmed();
}

}  // namespace

Picker::Picker(QObject *parent)
    : QObject(parent),
      pickerWindow(new Window(this)),
      searchBox(new TextField(this)),
      table(new TableView(this))
{
    table->setDataSource(this);
    table->setLastColumnFills(true);
    table->setColumns(TableView::columnsFrom({{"1", ""}, {"2", ""}}));
    setTableView(table);
    connect(searchBox, &TextField::edited, this, [this] { filter(); });
    connect(searchBox, &TextField::activated, this, [this] {
        // Enter in the search with one match left chooses it.
        if (table->selectedRow() < 0 && kdDataSource::numberOfRowsInTableView() == 1)
            table->selectRow(0);
        finish();
    });
    connect(table, &TableView::doubleClicked, this, [this] { finish(); });
}

void Picker::beginfor(Callback action, kdDataSource *dataSource, const QString &firstField, const QString &secondField,
                      const QString &type)
{
    if (!dataSource || dataSource->getCount() == 0) {
        platform::runAlert(
            localised("None in database"),
            withArguments(localised("There are no %@s in the datbase. First create some by going to File > "
                                    "New.... or the appropriate toolbar button"),
                          {type}),
            localised("OK"));
        return;
    }

    clear();
    field1 = firstField.isNull() ? QStringLiteral("") : firstField;
    field2 = secondField.isNull() ? QStringLiteral("") : secondField;
    callback = std::move(action);
    searchBox->setStringValue(QStringLiteral(""));
    pickerWindow->setTitle(withArguments(QStringLiteral("%@ %@"), {localised("Select"), type}));

    // The headers name the fields shown; rows come in the caller's order, so
    // no column is marked sorted and no row is chosen yet.
    table->setColumns({TableColumn{QStringLiteral("1"), localised(readable(field1))},
                       TableColumn{QStringLiteral("2"), localised(readable(field2))}});
    table->setSortDescriptors({});
    table->selectRow(-1);

    currentDataSource = dataSource;
    const int count = dataSource->getCount();
    for (int i = 0; i < count; ++i) {
        const dataObject *record = dataSource->getnthItem(i);
        if (!record)
            continue;
        auto row = std::make_shared<ReportItem>();
        row->addField(record->getFieldByName(field1));
        row->addField(record->getFieldByName(field2));
        row->addField(QString::number(record->getID()));
        add(row);
    }

    choosing = true;
    reloadData();
    show();
}

void Picker::finish()
{
    hide();
    // Enter can reach both the focused field or table and the window's
    // default button: only the first confirmation of an opening counts.
    if (!choosing)
        return;
    choosing = false;

    const int selected = table->selectedRow();
    if (selected < 0)
        return;
    const auto *row = static_cast<const ReportItem *>(getnthVisibleItem(selected));
    if (!row)
        return;
    const int id = platform::intValue(row->getnthField(idField));
    dataObject *chosen = currentDataSource ? currentDataSource->getItemById(id) : nullptr;
    // The receiver may open the picker again: call a copy.
    const Callback receiver = callback;
    if (receiver)
        receiver(chosen);
}

void Picker::cancel()
{
    choosing = false;
    hide();
}

void Picker::filter()
{
    const QString text = searchBox->stringValue();
    if (text.isEmpty())
        filterBy([](const dataObject &) { return true; });
    else
        filterBy([&text](const dataObject &row) { return row.contains(text); });
    reloadData();
}

void Picker::show()
{
    pickerWindow->makeKeyAndOrderFront();
}

void Picker::hide()
{
    pickerWindow->orderOut();
}

void Picker::reloadData()
{
    table->reloadData();
}

QString Picker::objectValueForTableColumn(const QString &columnId, int row) const
{
    const auto *item = static_cast<const ReportItem *>(getnthVisibleItem(row));
    if (!item)
        return QStringLiteral("");
    if (columnId == QLatin1String("1"))
        return item->getnthField(1);
    if (columnId == QLatin1String("2"))
        return item->getnthField(2);
    return QStringLiteral("");
}

void Picker::didClickTableColumn(const QString &columnId, bool ascending)
{
    // On screen the column sorts as it reads ("Bolt 10" after "Bolt 9").
    const std::vector<std::shared_ptr<dataObject>> &rows = records();
    const int field = platform::intValue(columnId);
    std::vector<QString> texts(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        texts[i] = static_cast<const ReportItem *>(rows[i].get())->getnthField(field);
    placeInOrder(platform::orderAsRead(texts, !ascending, platform::dayFirstFormat));
    reloadData();
}

// The rows have always been ordered by an exchange sort that swaps
// neighbours only when the first is strictly greater (ascending) or strictly
// smaller (descending), comparing the field as text without regard to case.
// Equal neighbours never change places, so that sort is stable, and a stable
// sort on the same strict order gives exactly its result in O(n log n).
void Picker::sortByColumn(const QString &columnId, bool ascending, int options)
{
    if (options < 0 || options > 2)
        return;  // no other option sorts
    const std::vector<std::shared_ptr<dataObject>> &rows = records();
    const size_t count = rows.size();
    if (count < 2)
        return;

    const int field = platform::intValue(columnId);
    std::vector<QString> keys(count);
    for (size_t i = 0; i < count; ++i)
        keys[i] = static_cast<const ReportItem *>(rows[i].get())->getnthField(field).toCaseFolded();
    std::vector<size_t> order(count);
    std::iota(order.begin(), order.end(), size_t(0));
    if (ascending)
        std::stable_sort(order.begin(), order.end(),
                         [&](size_t l, size_t r) { return QStringView(keys[l]).compare(QStringView(keys[r])) < 0; });
    else
        std::stable_sort(order.begin(), order.end(),
                         [&](size_t l, size_t r) { return QStringView(keys[l]).compare(QStringView(keys[r])) > 0; });

    placeInOrder(order);
}

void Picker::placeInOrder(const std::vector<size_t> &order)
{
    const std::vector<std::shared_ptr<dataObject>> &rows = records();
    const size_t count = std::min(order.size(), rows.size());
    // Put the rows in place by exchanges: position i takes the row that
    // belongs there from wherever it is now.
    const std::vector<dataObject *> wanted = [&] {
        std::vector<dataObject *> result(count);
        for (size_t i = 0; i < count; ++i)
            result[i] = rows[order[i]].get();
        return result;
    }();
    for (size_t i = 0; i < count; ++i) {
        if (records()[i].get() != wanted[i])
            swop(records()[i].get(), wanted[i]);
    }
}
