#include "reports/ReportManager.h"

#include "platform/Dates.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Resources.h"
#include "reports/ReportCollation.h"
#include "reports/ReportDefinition.h"
#include "reports/ReportItem.h"
#include "store/DatabaseBundle.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using reports::noColumn;

namespace {

// The built-in definitions, in the order they are installed.
const QStringList copiedWithFolder{u"Outstanding Balances"_s, u"Current Customers"_s,    u"Current Items Purchased"_s,
                                   u"Top Sellers"_s,          u"OrdersforOpenContact"_s, u"ItemsforOpenContact"_s};
const QStringList copiedWhenMissing{u"OrdersforOpenContact"_s, u"ItemsforOpenContact"_s};
const QStringList triedAtEveryStart{u"Stocktake"_s, u"Reorder Quantities"_s};

// Entries of the reports folder that the chooser leaves out: windows of
// their own run them.
const QStringList notInChooser{u"MoneyIn.xml"_s, u"OrdersforOpenContact.xml"_s, u"ItemsforOpenContact.xml"_s};

QString resourcePath(const QString &name)
{
    return u":/core/reports/"_s + name + u".xml"_s;
}

// One column per heading, "field1" first; a heading without a width is 100
// points wide.
QList<TableColumn> columnsFor(const reports::ReportDefinition &definition)
{
    QList<TableColumn> columns;
    for (qsizetype i = 0; i < definition.headings.size(); ++i) {
        TableColumn column;
        column.identifier = u"field"_s + QString::number(i + 1);
        column.title = definition.headings.at(i);
        column.width = i < definition.widths.size() ? platform::intValue(definition.widths.at(i)) : 100;
        column.editable = false;
        columns.append(column);
    }
    return columns;
}

void logAll(const QStringList &lines, const QString &prefix = QString())
{
    for (const QString &line : lines)
        platform::log(prefix + line);
}

// The values of the result rows, row after row: row r holds
// values[r * width, (r + 1) * width).
struct RowValues
{
    std::vector<QString> values;
    int width = 0;
    int count = 0;
    // The column numbered n (counted from 1), as the rows' getnthField
    // answers it: the empty text in every row for a number out of range.
    reports::TextColumn column(int n) const
    {
        static const QString none = u""_s;
        // (With no rows there is nothing to point into.)
        if (n < 1 || n > width || values.empty())
            return {&none, 0};
        return {values.data() + (n - 1), size_t(width)};
    }
};

// The collection a definition reads, by the name it gives its records.
kdDataSource *sourceFor(QuorvelServices *quorvel, const QString &kind)
{
    if (!quorvel)
        return nullptr;
    static const QList<std::pair<QString, DatabaseBundle::File>> kinds{
        {u"contacts"_s, DatabaseBundle::Contacts}, {u"itemspurchased"_s, DatabaseBundle::Materials},
        {u"orders"_s, DatabaseBundle::Orders},     {u"items"_s, DatabaseBundle::Items},
        {u"actions"_s, DatabaseBundle::Actions},   {u"bills"_s, DatabaseBundle::Bills}};
    for (const auto &[name, file] : kinds) {
        if (kind == name)
            return &quorvel->getDatabase().collection(file);
    }
    return nullptr;
}

// The rows are made as plain values first, so that rows merged away never
// become records.
RowValues collectRows(const ReportManager &engine, const QString &name, const reports::ReportDefinition &definition)
{
    RowValues rows;
    rows.width = int(definition.fields.size());
    kdDataSource *source = sourceFor(engine.getQuorvel(), definition.source);
    if (!source) {
        platform::log(u"no datasource"_s);
        return rows;
    }
    QStringList problems;
    using Clauses = QList<reports::Clause>;
    const QString format = engine.dateFormat();
    const Clauses where = reports::prepareClauses(definition.where, u"where"_s, format, &problems);
    const bool secondRows = definition.hasSecondRows();
    const Clauses where2
        = secondRows ? reports::prepareClauses(definition.where2, u"where2"_s, format, &problems) : Clauses();
    logAll(problems, u"report "_s + name + u": "_s);

    // The second row takes as many names as the first has.
    QStringList names2 = definition.fields2.mid(0, definition.fields.size());
    while (secondRows && names2.size() < definition.fields.size())
        names2.append(u""_s);

    const int count = source->getCount();
    rows.values.reserve(size_t(count) * size_t(rows.width));
    const auto addRow = [&rows](const dataObject &record, const QStringList &names) {
        for (const QString &field : names)
            rows.values.push_back(record.getFieldByName(field));
        ++rows.count;
    };
    // Records are fetched from memory a few ahead of the one being asked
    // (their first text fields lie in their first cache lines), as the
    // lists' filters do.
    constexpr int ahead = 8;
    constexpr int linesPerRecord = 3;
    reports::CriteriaTest test(format, engine.currentContactIdText());
    for (int i = 0; i < count; ++i) {
        if (i + ahead < count) {
            const char *next = reinterpret_cast<const char *>(source->getnthItem(i + ahead));
            for (int line = 0; line < linesPerRecord; ++line)
                __builtin_prefetch(next + line * 64);
        }
        const dataObject *record = source->getnthItem(i);
        if (test.meets(*record, where))
            addRow(*record, definition.fields);
        if (secondRows && test.meets(*record, where2))
            addRow(*record, names2);
    }
    return rows;
}

}  // namespace

ReportManager::ReportManager(QuorvelServices *controller, QObject *parent)
    : QObject(parent),
      filter(new PopUp(this)),
      table(new TableView(this)),
      quorvel(controller)
{
    table->setDataSource(this);
    setTableView(table);
    connect(filter, &PopUp::activated, this, &ReportManager::runReport);
}

QString ReportManager::dateFormat() const
{
    if (fromDate && !fromDate->dateFormat().isEmpty())
        return fromDate->dateFormat();
    return platform::userDateFormat(!quorvel || !quorvel->getPrefsController()
                                    || quorvel->getPrefsController()->isUKFormat());
}

// ---------------------------------------------------------------------------
// The chooser and the built-in definitions.

void ReportManager::populateFilter()
{
    platform::initResources();
    const QString folder = platform::paths::reportsDir();
    const auto install = [&folder](const QString &name) {
        const QString source = resourcePath(name);
        const QString destination = QDir(folder).filePath(name + u".xml"_s);
        // QFile::copy never replaces an existing file.
        if (QFile::copy(source, destination)) {
            // Files from the resources are read-only; the user's copies are theirs to edit.
            QFile::setPermissions(destination, QFile::permissions(destination) | QFile::WriteOwner | QFile::WriteUser);
            platform::log(u"copied "_s + source + u" to "_s + destination);
        } else {
            platform::log(u"failed to copy "_s + source + u" to "_s + destination);
        }
    };

    if (!QFileInfo(folder).isDir()) {
        platform::log(u"reports folder doesn't exist, creating it and copying reports."_s);
        QDir().mkpath(folder);
        for (const QString &name : copiedWithFolder)
            install(name);
    } else {
        for (const QString &name : copiedWhenMissing) {
            if (!QFileInfo::exists(QDir(folder).filePath(name + u".xml"_s)))
                install(name);
        }
    }
    for (const QString &name : triedAtEveryStart)
        install(name);

    filter->removeAllItems();
    filter->addItems(reportNames());
}

QStringList ReportManager::reportNames()
{
    const QDir folder(platform::paths::reportsDir());
    QStringList names;
    const QStringList entries
        = folder.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name | QDir::IgnoreCase);
    for (const QString &entry : entries) {
        if (entry.startsWith(u'.') || notInChooser.contains(entry))
            continue;
        names.append(QFileInfo(entry).completeBaseName());
    }
    return names;
}

void ReportManager::runReport()
{
    doReport(filter->titleOfSelectedItem(), table);
}

// ---------------------------------------------------------------------------
// Running a report.

void ReportManager::doReport(const QString &name, TableView *view)
{
    platform::log(u"doing report "_s + name);
    totalcol = u"-1"_s;
    collationcol = -1;
    if (view) {
        table = view;
        view->setDataSource(this);
        setTableView(view);
    }
    clear();
    removeAllColumns();

    // The engine spells the folder "Reports"; either spelling finds it.
    const QString folder = platform::paths::caseInsensitiveChild(platform::paths::quorvelDir(), u"Reports"_s);
    const QString path = folder + u"/"_s + name + u".xml"_s;
    reports::ReportDefinition definition;
    if (!QFileInfo::exists(path)) {
        platform::log(u"couldn't open file: "_s + path);
    } else {
        QString failure;
        QStringList problems;
        const std::optional<reports::ReportDefinition> read
            = reports::readReportDefinitionFile(path, &failure, &problems);
        logAll(problems, u"report "_s + name + u": "_s);
        if (read) {
            definition = *read;
            totalcol = definition.totalCol;
        } else {
            platform::log(failure);
        }
    }
    shownFields = definition.fields;
    if (table)
        table->setColumns(columnsFor(definition));

    const RowValues rows = collectRows(*this, name, definition);

    // The total, over every row, before any merging.
    if (totalcol != noColumn) {
        sum = 0.0f;
        const reports::TextColumn totalled = rows.column(reports::columnIndex(totalcol));
        for (int r = 0; r < rows.count; ++r) {
            const QString &value = totalled[r];
            sum += value.contains(u',') ? platform::floatValue(platform::withoutCommas(value))
                                        : platform::floatValue(value);
        }
    }

    // Merging, then the rows that stay become the result, with the ids they
    // would have had had every row been added.
    reports::CollationPlan plan;
    if (definition.collates() && rows.count > 1) {
        plan = reports::planCollation(rows.count, rows.column(reports::columnIndex(definition.matchCol)),
                                      rows.column(reports::columnIndex(definition.qtyCol)), mergeLogLimit);
        logAll(plan.messages);
    }
    for (int r = 0; r < rows.count; ++r) {
        if (!plan.alive.empty() && !plan.alive[size_t(r)])
            continue;
        const auto row = std::make_shared<ReportItem>();
        const QString *values = rows.values.data() + size_t(r) * size_t(rows.width);
        for (int c = 0; c < rows.width; ++c)
            row->addField(values[c]);
        // A merged quantity keeps the type its first value had.
        if (!plan.qty.empty() && !plan.qty[size_t(r)].isNull())
            row->setFieldByName(definition.qtyCol, plan.qty[size_t(r)]);
        row->setID(r + 1);
        add(row);
    }
    while (getHighestId() < rows.count)
        getNextId();

    if (view)
        view->reloadData();
}

QString ReportManager::currentContactIdText() const
{
    if (openContactId)
        return QString::number(*openContactId);
    return quorvel ? quorvel->getCurrentContactIdAsString() : u"-1"_s;
}

void ReportManager::removeAllColumns()
{
    if (table)
        table->removeAllColumns();
}

void ReportManager::reloadData()
{
    if (table)
        table->reloadData();
}

// ---------------------------------------------------------------------------
// Conditions.

QList<ReportManager::Clause> ReportManager::clausesFrom(const QVariant &where, const QString &key,
                                                        QStringList *problems) const
{
    return reports::prepareClauses(where, key, dateFormat(), problems);
}

bool ReportManager::meetsCriteria(const dataObject &record, const QList<Clause> &where) const
{
    return reports::CriteriaTest(dateFormat(), currentContactIdText()).meets(record, where);
}

bool ReportManager::dateIsLaterThanDate(const QString &a, const QString &b) const
{
    return reports::dateIsLaterThanDate(a, b, dateFormat());
}

bool ReportManager::isDate(const QString &text)
{
    return reports::isDate(text);
}

bool ReportManager::isNumeric(const QString &text)
{
    return reports::isNumeric(text);
}

// ---------------------------------------------------------------------------
// Collation.

bool ReportManager::merge(ReportItem *first, ReportItem *second, const QString &qtyCol)
{
    const QString a = first->getFieldByName(qtyCol);
    const QString b = second->getFieldByName(qtyCol);
    if (isNumeric(a) && isNumeric(b)) {
        const float total = platform::floatValue(a) + platform::floatValue(b);
        first->setFieldByName(qtyCol, platform::format2(total));
        deleteItem(second);
        return true;
    }
    platform::log(u"couldn't merge "_s + a + u" and "_s + b);
    return false;
}

void ReportManager::collate(const QString &matchCol, const QString &qtyCol)
{
    const int matchIndex = reports::columnIndex(matchCol);
    const int qtyIndex = reports::columnIndex(qtyCol);
    const int count = getCount();
    if (count < 2)
        return;

    std::vector<ReportItem *> rows(static_cast<size_t>(count));
    std::vector<QString> keys(static_cast<size_t>(count));
    std::vector<QString> qty(static_cast<size_t>(count));
    for (int k = 0; k < count; ++k) {
        auto *row = static_cast<ReportItem *>(getnthItem(k));
        rows[size_t(k)] = row;
        keys[size_t(k)] = row->getnthField(matchIndex);
        qty[size_t(k)] = row->getnthField(qtyIndex);
    }
    const reports::CollationPlan plan = reports::planCollation(count, {keys.data(), 1}, {qty.data(), 1}, mergeLogLimit);
    logAll(plan.messages);
    for (int k = 0; k < count; ++k) {
        if (plan.alive[size_t(k)] && !plan.qty[size_t(k)].isNull())
            rows[size_t(k)]->setFieldByName(qtyCol, plan.qty[size_t(k)]);
    }
    if (!plan.removed)
        return;

    // Take every row out from the back (cheap at the end of the collection),
    // then put back the ones that stay, in order, with their ids.
    std::vector<std::shared_ptr<dataObject>> taken(static_cast<size_t>(count));
    for (int k = count - 1; k >= 0; --k)
        taken[size_t(k)] = takeItem(rows[size_t(k)]);
    for (int k = 0; k < count; ++k) {
        if (plan.alive[size_t(k)])
            add(std::move(taken[size_t(k)]));
    }
}

// ---------------------------------------------------------------------------
// The table.

int ReportManager::numberOfRowsInTableView() const
{
    const int rows = kdDataSource::numberOfRowsInTableView();
    return totalcol == noColumn ? rows : rows + 2;
}

QString ReportManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    if (totalcol != noColumn && columnId == totalcol) {
        const int rows = numberOfRowsInTableView();
        if (row == rows - 2)
            return u"_____"_s;
        if (row == rows - 1)
            return platform::format2(sum);
    }
    const dataObject *record = getnthVisibleItem(row);
    return record ? record->getFieldByName(columnId) : u""_s;
}

QString ReportManager::shownTitle(const QString &, const QString &title) const
{
    if (title == "Datepaid"_L1)
        return platform::localised("Date Paid");
    return title;
}

QString ReportManager::fieldOfColumn(const QString &columnId) const
{
    const int n = reports::columnIndex(columnId);
    return n >= 1 && n <= shownFields.size() ? shownFields.at(n - 1) : columnId;
}

void ReportManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortAsRead(columnId, ascending, PrefsController::dateFormatOf(quorvel));
    reloadData();
}
