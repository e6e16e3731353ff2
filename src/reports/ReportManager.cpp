#include "reports/ReportManager.h"

#include "accounts/BillManager.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/OrderManager.h"
#include "platform/Dates.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "platform/Resources.h"
#include "reports/ReportItem.h"
#include "tasks/ActionManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <charconv>
#include <cmath>
#include <memory>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString noColumn = u"field-1"_s;

// The built-in definitions, in the order they are installed.
const QStringList copiedWithFolder{u"Outstanding Balances"_s, u"Current Customers"_s,
                                   u"Current Items Purchased"_s, u"Top Sellers"_s,
                                   u"OrdersforOpenContact"_s, u"ItemsforOpenContact"_s};
const QStringList copiedWhenMissing{u"OrdersforOpenContact"_s, u"ItemsforOpenContact"_s};
const QStringList triedAtEveryStart{u"Stocktake"_s, u"Reorder Quantities"_s};

// Entries of the reports folder that the chooser leaves out: windows of
// their own run them.
const QStringList notInChooser{u"MoneyIn.xml"_s, u"OrdersforOpenContact.xml"_s, u"ItemsforOpenContact.xml"_s};

QString resourcePath(const QString &name)
{
    return u":/core/reports/"_s + name + u".xml"_s;
}

// The value position a "fieldN" name picks, as ReportItem reads it: the
// number after the first five characters; 0 (no value) for shorter names.
int fieldIndex(const QString &name)
{
    return name.size() < 6 ? 0 : platform::intValue(QStringView(name).mid(5));
}

// Whether a definition's column number is a whole number ("2", "-1").
bool isColumnNumber(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    qsizetype i = trimmed.at(0) == u'-' ? 1 : 0;
    if (i == trimmed.size())
        return false;
    for (; i < trimmed.size(); ++i) {
        if (!trimmed.at(i).isDigit())
            return false;
    }
    return true;
}

// A scalar of a property list as text; a null text for arrays, dictionaries
// and data.
QString textOf(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QString: {
        // An empty <string/> may come as a null text.
        const QString text = value.toString();
        return text.isNull() ? u""_s : text;
    }
    case QMetaType::LongLong:
    case QMetaType::Int:
    case QMetaType::Double: return value.toString();
    default: return QString();
    }
}

// A definition as read from its file. Columns are named "fieldN".
struct Definition {
    QStringList headings;
    QStringList widths;
    QStringList fields;
    QStringList fields2;
    bool hasFields2 = false;
    QString source;
    QVariant where;
    QVariant where2;
    bool hasWhere2 = false;
    QString totalCol = noColumn;
    QString matchCol = noColumn;
    QString qtyCol = noColumn;
};

class DefinitionReader
{
public:
    DefinitionReader(const QString &reportName, const QVariantMap &root) : name(reportName), map(root) {}

    void problem(const QString &text) { platform::log(u"report "_s + name + u": "_s + text); }

    // A list of texts under the key; a single text counts as a list of one.
    QStringList texts(const QString &key, bool required)
    {
        if (!map.contains(key)) {
            if (required)
                problem(u"no \""_s + key + u"\""_s);
            return {};
        }
        const QVariant value = map.value(key);
        const QString single = textOf(value);
        if (!single.isNull()) {
            problem(u"\""_s + key + u"\" should be a list of texts; read as a list of one"_s);
            return {single};
        }
        if (value.metaType().id() != QMetaType::QVariantList) {
            problem(u"\""_s + key + u"\" is not a list of texts; left out"_s);
            return {};
        }
        QStringList result;
        const QVariantList list = value.toList();
        for (qsizetype i = 0; i < list.size(); ++i) {
            QString text = textOf(list.at(i));
            if (text.isNull()) {
                problem(u"entry %1 of \""_s.arg(i + 1) + key + u"\" is not a text; read as empty"_s);
                text = u""_s;
            }
            result.append(text);
        }
        return result;
    }

    // The text under the key; null when absent or not a text.
    QString text(const QString &key)
    {
        if (!map.contains(key))
            return QString();
        const QString value = textOf(map.value(key));
        if (value.isNull())
            problem(u"\""_s + key + u"\" is not a text; left out"_s);
        return value;
    }

    // "field" and the column number under the key, or "field-1".
    QString column(const QString &key, const QString &consequence)
    {
        const QString value = text(key);
        if (value.isNull())
            return noColumn;
        if (!isColumnNumber(value)) {
            problem(u"\""_s + key + u"\" is not a column number: \""_s + value + u"\"; "_s + consequence);
            return noColumn;
        }
        return u"field"_s + value.trimmed();
    }

    Definition read()
    {
        Definition definition;
        definition.headings = texts(u"colheadings"_s, true);
        definition.widths = texts(u"colwidths"_s, true);
        if (definition.widths.size() < definition.headings.size() && map.contains(u"colwidths"_s))
            problem(u"\"colwidths\" has %1 widths for %2 headings; the others are 100 points wide"_s
                        .arg(definition.widths.size())
                        .arg(definition.headings.size()));
        definition.fields = texts(u"fields"_s, true);
        definition.source = text(u"selectfrom"_s);
        definition.where = map.value(u"where"_s);
        definition.hasFields2 = map.contains(u"fields2"_s);
        if (definition.hasFields2)
            definition.fields2 = texts(u"fields2"_s, false);
        definition.hasWhere2 = map.contains(u"where2"_s);
        definition.where2 = map.value(u"where2"_s);
        if (definition.hasFields2 && definition.hasWhere2 && definition.fields2.size() < definition.fields.size())
            problem(u"\"fields2\" has %1 names, fewer than the %2 of \"fields\"; the others are empty"_s
                        .arg(definition.fields2.size())
                        .arg(definition.fields.size()));
        // A definition without a total has none.
        if (map.contains(u"totalcol"_s))
            definition.totalCol = column(u"totalcol"_s, u"no total"_s);
        if (map.contains(u"collationmatchcol"_s) && map.contains(u"collationqtycol"_s)) {
            definition.matchCol = column(u"collationmatchcol"_s, u"no merging of rows"_s);
            definition.qtyCol = column(u"collationqtycol"_s, u"no merging of rows"_s);
        }
        return definition;
    }

private:
    QString name;
    QVariantMap map;
};

// The definition in the file, or nothing (said in the log) when the file is
// not a property list of a dictionary.
std::optional<Definition> readDefinition(const QString &name, const QString &path)
{
    platform::plist::ReadStatus status;
    const QVariant root = platform::plist::readValueFile(path, &status);
    if (!status.ok()) {
        platform::log(u"couldn't read report definition "_s + path + u": "_s + status.message());
        return std::nullopt;
    }
    if (root.metaType().id() != QMetaType::QVariantMap) {
        platform::log(u"couldn't read report definition "_s + path + u": it is not a dictionary"_s);
        return std::nullopt;
    }
    return DefinitionReader(name, root.toMap()).read();
}

// One column per heading, "field1" first; a heading without a width is 100
// points wide.
QList<TableColumn> columnsFor(const Definition &definition)
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

std::optional<qint64> momentOf(const QString &text, const QString &format)
{
    const std::optional<QDateTime> date = platform::parseDate(text, format);
    if (!date || !date->isValid())
        return std::nullopt;
    return date->toMSecsSinceEpoch();
}

// The dates read during one run, each text read once: a run over every
// order meets the same few thousand dates again and again, and reading a
// date as local time asks the system for its time zone every time. The
// format is the engine's, fetched when the first date is read.
class DateReadings
{
public:
    explicit DateReadings(const ReportManager &engine) : reports(engine) {}

    std::optional<qint64> read(const QString &text)
    {
        if (!formatKnown) {
            format = reports.dateFormat();
            formatKnown = true;
        }
        const auto known = readings.constFind(text);
        if (known != readings.cend())
            return *known;
        const std::optional<qint64> moment = momentOf(text, format);
        readings.insert(text, moment);
        return moment;
    }

private:
    const ReportManager &reports;
    QString format;
    bool formatKnown = false;
    QHash<QString, std::optional<qint64>> readings;
};

// Whether the record meets every clause (see ReportManager::meetsCriteria).
bool clausesHold(const ReportManager &reports, const dataObject &record, const QList<ReportManager::Clause> &where,
                 DateReadings &dates)
{
    for (const ReportManager::Clause &clause : where) {
        const QString found = record.getFieldByName(clause.field);
        // A clause made by hand (not by clausesFrom) has nothing worked out.
        const bool current = clause.prepared ? clause.currentContact : clause.value == "currentcontact"_L1;
        const bool known = clause.prepared && !current;
        QString value = clause.value;
        if (current)
            value = reports.currentContactIdText();
        const QString &op = clause.op;
        bool holds = true;
        if (ReportManager::isDate(found)) {
            if (op == ">"_L1 || op == "<"_L1) {
                const std::optional<qint64> a = dates.read(found);
                const std::optional<qint64> b = known ? clause.valueTime : dates.read(value);
                const bool later = !a || !b || *a - *b >= 0;
                holds = op == ">"_L1 ? later : !later;
            } else if (op == "!"_L1) {
                holds = found != value;
            } else if (op == "="_L1) {
                holds = found == value;
            }
        } else if (!ReportManager::isNumeric(found)) {
            if (op == "="_L1)
                holds = found == value;
            else if (op == "!"_L1)
                holds = found != value;
        } else {
            const float r = platform::floatValue(found);
            const float v = known ? clause.valueNumber : platform::floatValue(value);
            if (op == ">"_L1)
                holds = r > v;
            else if (op == "<"_L1)
                holds = r < v;
            else if (op == "!"_L1)
                holds = r != v;
            else if (op == "="_L1)
                holds = r == v;
        }
        if (!holds)
            return false;
    }
    return true;
}

// The rows of a collation, read once in row order: each row's group of rows
// with equal match text (groups numbered in the order of their first rows),
// and whether its quantity is a number, with its value.
struct RowIndex {
    std::vector<int> groupOf;
    int groupCount = 0;
    std::vector<char> numeric;
    std::vector<float> amount;
};

// Open addressing on the texts' hashes; a text is compared only with groups
// of the same hash, and with a copy of the group's text kept in one buffer
// (the rows' own texts lie all over memory). Memory is fetched ahead: the
// texts of rows further on while hashing, their buckets while grouping.
template <typename KeyAt, typename QtyAt>
RowIndex indexRows(int count, KeyAt keyAt, QtyAt qtyAt)
{
    struct Slot {
        quint32 hash = 0;
        qint32 group = -1;
        quint32 textFrom = 0;
        quint32 textLength = 0;
    };
    constexpr int ahead = 8;
    const size_t total = static_cast<size_t>(count);
    RowIndex index;
    index.groupOf.resize(total);
    index.numeric.resize(total);
    index.amount.resize(total);

    std::vector<quint32> hashes(total);
    const size_t seed = QHashSeed::globalSeed();
    for (int k = 0; k < count; ++k) {
        if (k + ahead < count) {
            __builtin_prefetch(keyAt(k + ahead).constData());
            __builtin_prefetch(qtyAt(k + ahead).constData());
        }
        hashes[size_t(k)] = quint32(qHash(keyAt(k), seed));
        const QString &quantity = qtyAt(k);
        index.numeric[size_t(k)] = platform::isNumeric(quantity);
        if (index.numeric[size_t(k)])
            index.amount[size_t(k)] = platform::floatValue(quantity);
    }

    std::vector<Slot> buckets(1024);
    size_t mask = buckets.size() - 1;
    std::vector<Slot> groups;  // each group's slot, by group number
    std::vector<char16_t> texts;
    for (int k = 0; k < count; ++k) {
        if (k + ahead < count)
            __builtin_prefetch(&buckets[hashes[size_t(k + ahead)] & mask]);
        const QString &key = keyAt(k);
        const quint32 hash = hashes[size_t(k)];
        size_t at = hash & mask;
        int group = -1;
        for (;;) {
            const Slot slot = buckets[at];
            if (slot.group < 0)
                break;
            if (slot.hash == hash && QStringView(texts.data() + slot.textFrom, slot.textLength) == QStringView(key)) {
                group = slot.group;
                break;
            }
            at = (at + 1) & mask;
        }
        if (group < 0) {
            group = int(groups.size());
            const Slot slot{hash, group, quint32(texts.size()), quint32(key.size())};
            texts.insert(texts.end(), key.utf16(), key.utf16() + key.size());
            groups.push_back(slot);
            if (groups.size() * 2 > buckets.size()) {
                // Half full: twice the buckets, every group placed again.
                buckets.assign(buckets.size() * 2, Slot{});
                mask = buckets.size() - 1;
                for (const Slot &known : groups) {
                    size_t free = known.hash & mask;
                    while (buckets[free].group >= 0)
                        free = (free + 1) & mask;
                    buckets[free] = known;
                }
            } else {
                buckets[at] = slot;
            }
        }
        index.groupOf[size_t(k)] = group;
    }
    index.groupCount = int(groups.size());
    return index;
}

// What collating rows does to them: which stay, and the new quantity text
// of those whose quantity changed (a null text for the others).
struct CollationPlan {
    std::vector<char> alive;
    std::vector<QString> qty;
    bool removed = false;
};

// The rows are merged as this loop merges them:
//
//   for each row i from the first, for each later row j:
//     when i and j have equal text in the match column, merge(i, j), and
//     after a successful merge examine the same position j again.
//
// That loop is quadratic. Rows with different match texts never meet, so
// the rows are grouped by match text, and in a group the rows after i are
// met in row order. A row whose quantity is not a number is never removed
// and never changes until it is the first row itself; a row that is a
// number is removed by the first earlier row whose running sum is still a
// number. So each group keeps its rows that are numbers and its rows that
// are not in two queues in row order: when row i comes, it is the front of
// one of them; while its running sum is a number it takes the numbers from
// the front of theirs, and every other later row of the group fails against
// it ("couldn't merge"). The sums are built exactly as merge() builds them
// (single precision, re-read from their "%.2f" text), and the failures are
// logged in the loop's order. Past `logLimit` lines the failures are only
// counted, so a column that holds no numbers costs no more than one that does.
template <typename KeyAt, typename QtyAt>
CollationPlan planCollation(int count, KeyAt keyAt, QtyAt qtyAt, int logLimit)
{
    const size_t total = static_cast<size_t>(count);
    CollationPlan plan;
    plan.alive.assign(total, 1);
    plan.qty.resize(total);
    const RowIndex index = indexRows(count, keyAt, qtyAt);
    const std::vector<int> &groupOf = index.groupOf;
    const std::vector<char> &numeric = index.numeric;
    const std::vector<float> &amount = index.amount;

    // Each group's rows in one array: first its numbers, then the others,
    // each part in row order; head and end of each part per group.
    struct Group {
        int numHead = 0, numEnd = 0, otherHead = 0, otherEnd = 0;
    };
    std::vector<Group> groups(static_cast<size_t>(index.groupCount));
    for (size_t k = 0; k < total; ++k) {
        Group &group = groups[size_t(groupOf[k])];
        ++(numeric[k] ? group.numEnd : group.otherEnd);
    }
    int next = 0;
    for (Group &group : groups) {
        const int nums = group.numEnd;
        const int others = group.otherEnd;
        group.numHead = next;
        group.numEnd = next;  // filled below, then it is the end
        group.otherHead = next + nums;
        group.otherEnd = next + nums;
        next += nums + others;
    }
    std::vector<int> members(total);
    for (size_t k = 0; k < total; ++k) {
        Group &group = groups[size_t(groupOf[k])];
        members[size_t(numeric[k] ? group.numEnd++ : group.otherEnd++)] = int(k);
    }

    qint64 logged = 0;
    qint64 unlogged = 0;
    for (int r = 0; r < count; ++r) {
        if (!plan.alive[size_t(r)])
            continue;
        Group &group = groups[size_t(groupOf[size_t(r)])];
        // r is the earliest row of its group still waiting.
        bool sumIsNumber = numeric[size_t(r)];
        if (sumIsNumber)
            ++group.numHead;
        else
            ++group.otherHead;
        int a = group.numHead;
        int b = group.otherHead;
        if (a == group.numEnd && b == group.otherEnd)
            continue;

        // The running sum and its "%.2f" text. Finite sums are printed and
        // read back here as platform::format2 prints and platform::floatValue
        // reads them (shortest exact fixed notation, read as a double, then
        // single precision), without a string per merge.
        QString sumText = qtyAt(r);
        float running = amount[size_t(r)];
        char digits[64];
        qsizetype digitsLength = -1;  // the text is sumText while -1
        bool changed = false;
        const auto currentText = [&]() {
            return digitsLength >= 0 ? QString::fromLatin1(digits, digitsLength) : sumText;
        };
        const auto takeNext = [&](int j) {
            running = running + amount[size_t(j)];
            const auto printed = std::to_chars(digits, digits + sizeof digits, double(running),
                                               std::chars_format::fixed, 2);
            if (std::isfinite(running) && printed.ec == std::errc()) {
                digitsLength = printed.ptr - digits;
                double back = 0.0;
                std::from_chars(digits, printed.ptr, back);
                running = float(back);
            } else {
                digitsLength = -1;
                sumText = platform::format2(running);
                sumIsNumber = platform::isNumeric(sumText);
                if (sumIsNumber)
                    running = platform::floatValue(sumText);
            }
            plan.alive[size_t(j)] = 0;
            plan.removed = true;
            changed = true;
        };
        // In row order while there are lines to write.
        while ((a < group.numEnd || b < group.otherEnd) && logged < logLimit) {
            const bool nextIsNumber =
                a < group.numEnd && (b == group.otherEnd || members[size_t(a)] < members[size_t(b)]);
            const int j = members[size_t(nextIsNumber ? a : b)];
            if (nextIsNumber && sumIsNumber) {
                takeNext(j);
                group.numHead = ++a;
                continue;
            }
            platform::log(u"couldn't merge "_s + currentText() + u" and "_s + qtyAt(j));
            ++logged;
            if (nextIsNumber)
                ++a;
            else
                ++b;
        }
        // The rest only counted: the numbers merge while the sum is one,
        // everything after fails.
        while (sumIsNumber && a < group.numEnd) {
            takeNext(members[size_t(a)]);
            group.numHead = ++a;
        }
        unlogged += qint64(group.numEnd - a) + qint64(group.otherEnd - b);
        if (changed)
            plan.qty[size_t(r)] = currentText();
    }
    if (unlogged > 0)
        platform::log(u"couldn't merge %1 more pairs of rows; those lines are left out"_s.arg(unlogged));
    return plan;
}

// The values of the result rows, row after row: row r holds
// values[r * width, (r + 1) * width).
struct RowValues {
    std::vector<QString> values;
    int width = 0;
    int count = 0;
    // The value in the column numbered n (counted from 1), as the row's
    // getnthField answers it.
    const QString &at(int r, int n) const
    {
        static const QString none = u""_s;
        return n >= 1 && n <= width ? values[size_t(r) * size_t(width) + size_t(n - 1)] : none;
    }
};

// The records a definition reads, by the name it gives them.
kdDataSource *sourceFor(const QuorvelServices *quorvel, const QString &kind)
{
    if (!quorvel)
        return nullptr;
    if (kind == "contacts"_L1)
        return quorvel->getContactManager();
    if (kind == "itemspurchased"_L1)
        return quorvel->getBOMManager();
    if (kind == "orders"_L1)
        return quorvel->getOrderManager();
    if (kind == "items"_L1)
        return quorvel->getItemManager();
    if (kind == "actions"_L1)
        return quorvel->getActionManager();
    if (kind == "bills"_L1)
        return quorvel->getBillManager();
    return nullptr;
}

// The rows are made as plain values first, so that rows merged away never
// become records.
RowValues collectRows(const ReportManager &reports, const QString &name, const Definition &definition)
{
    RowValues rows;
    rows.width = int(definition.fields.size());
    kdDataSource *source = sourceFor(reports.getQuorvel(), definition.source);
    if (!source) {
        platform::log(u"no datasource"_s);
        return rows;
    }
    QStringList problems;
    using Clauses = QList<ReportManager::Clause>;
    const Clauses where = reports.clausesFrom(definition.where, u"where"_s, &problems);
    const bool secondRows = definition.hasFields2 && definition.hasWhere2;
    const Clauses where2 = secondRows ? reports.clausesFrom(definition.where2, u"where2"_s, &problems) : Clauses();
    for (const QString &line : std::as_const(problems))
        platform::log(u"report "_s + name + u": "_s + line);

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
    DateReadings dates(reports);
    for (int i = 0; i < count; ++i) {
        if (i + ahead < count) {
            const char *next = reinterpret_cast<const char *>(source->getnthItem(i + ahead));
            for (int line = 0; line < linesPerRecord; ++line)
                __builtin_prefetch(next + line * 64);
        }
        const dataObject *record = source->getnthItem(i);
        if (clausesHold(reports, *record, where, dates))
            addRow(*record, definition.fields);
        if (secondRows && clausesHold(reports, *record, where2, dates))
            addRow(*record, names2);
    }
    return rows;
}

}  // namespace

ReportManager::ReportManager(QuorvelServices *controller, QObject *parent)
    : QObject(parent), filter(new PopUp(this)), table(new TableView(this)), quorvel(controller)
{
    table->setDataSource(this);
    setTableView(table);
    connect(filter, &PopUp::activated, this, &ReportManager::runReport);
}

QString ReportManager::dateFormat() const
{
    if (fromDate && !fromDate->dateFormat().isEmpty())
        return fromDate->dateFormat();
    if (quorvel && quorvel->getPrefsController() && !quorvel->getPrefsController()->isUKFormat())
        return u"%m/%d/%y"_s;
    return u"%d/%m/%y"_s;
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
    const QStringList entries =
        folder.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name | QDir::IgnoreCase);
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
    Definition definition;
    if (!QFileInfo::exists(path)) {
        platform::log(u"couldn't open file: "_s + path);
    } else if (const std::optional<Definition> read = readDefinition(name, path)) {
        definition = *read;
        totalcol = definition.totalCol;
    }
    if (table)
        table->setColumns(columnsFor(definition));

    const RowValues rows = collectRows(*this, name, definition);

    // The total, over every row, before any merging.
    if (totalcol != noColumn) {
        sum = 0.0f;
        const int n = fieldIndex(totalcol);
        for (int r = 0; r < rows.count; ++r) {
            const QString &value = rows.at(r, n);
            sum += value.contains(u',') ? platform::floatValue(platform::withoutCommas(value))
                                        : platform::floatValue(value);
        }
    }

    // Merging, then the rows that stay become the result, with the ids they
    // would have had had every row been added.
    CollationPlan plan;
    const int qtyIndex = fieldIndex(definition.qtyCol);
    if (definition.matchCol != noColumn && definition.qtyCol != noColumn && rows.count > 1) {
        const int matchIndex = fieldIndex(definition.matchCol);
        plan = planCollation(
            rows.count, [&](int r) -> const QString & { return rows.at(r, matchIndex); },
            [&](int r) -> const QString & { return rows.at(r, qtyIndex); }, mergeLogLimit);
    }
    for (int r = 0; r < rows.count; ++r) {
        if (!plan.alive.empty() && !plan.alive[size_t(r)])
            continue;
        const auto row = std::make_shared<ReportItem>();
        for (int c = 1; c <= rows.width; ++c)
            row->addField(rows.at(r, c));
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
    QList<Clause> clauses;
    if (!where.isValid())
        return clauses;
    const auto say = [problems](const QString &text) {
        if (problems)
            problems->append(text);
    };
    if (where.metaType().id() != QMetaType::QVariantList) {
        say(u"\""_s + key + u"\" is not a list of clauses; left out"_s);
        return clauses;
    }
    const QString format = dateFormat();
    const QVariantList list = where.toList();
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QString which = u"clause %1 of \""_s.arg(i + 1) + key + u"\""_s;
        const QVariant &entry = list.at(i);
        const int kind = entry.metaType().id();
        const QVariantList parts =
            kind == QMetaType::QVariantList || kind == QMetaType::QStringList ? entry.toList() : QVariantList();
        QStringList texts;
        bool allTexts = true;
        for (const QVariant &part : parts) {
            texts.append(textOf(part));
            allTexts = allTexts && !texts.last().isNull();
        }
        if (texts.size() != 3 || !allTexts) {
            say(which + u" is not three texts (field, operator, value); left out"_s);
            continue;
        }
        Clause clause;
        clause.field = texts.at(0);
        clause.op = texts.at(1);
        clause.value = texts.at(2);
        if (clause.op != ">"_L1 && clause.op != "<"_L1 && clause.op != "!"_L1 && clause.op != "="_L1)
            say(which + u" has the unknown operator \""_s + clause.op + u"\"; it always holds"_s);
        clause.currentContact = clause.value == "currentcontact"_L1;
        if (!clause.currentContact) {
            clause.valueTime = momentOf(clause.value, format);
            clause.valueNumber = platform::floatValue(clause.value);
        }
        clause.prepared = true;
        clauses.append(clause);
    }
    return clauses;
}

bool ReportManager::meetsCriteria(const dataObject &record, const QList<Clause> &where) const
{
    DateReadings dates(*this);
    return clausesHold(*this, record, where, dates);
}

bool ReportManager::dateIsLaterThanDate(const QString &a, const QString &b) const
{
    const QString format = dateFormat();
    const std::optional<qint64> first = momentOf(a, format);
    const std::optional<qint64> second = momentOf(b, format);
    return !first || !second || *first - *second >= 0;
}

bool ReportManager::isDate(const QString &text)
{
    if (text.size() < 8 || text.at(2) != u'/' || text.at(5) != u'/')
        return false;
    const QStringView view(text);
    return platform::isNumeric(view.mid(0, 2)) && platform::isNumeric(view.mid(3, 2))
        && platform::isNumeric(view.mid(6, 2));
}

bool ReportManager::isNumeric(const QString &text)
{
    return platform::isNumeric(text);
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

// See planCollation for how the rows are merged without meeting every pair.
void ReportManager::collate(const QString &matchCol, const QString &qtyCol)
{
    const int matchIndex = fieldIndex(matchCol);
    const int qtyIndex = fieldIndex(qtyCol);
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
    const CollationPlan plan = planCollation(
        count, [&keys](int k) -> const QString & { return keys[size_t(k)]; },
        [&qty](int k) -> const QString & { return qty[size_t(k)]; }, mergeLogLimit);
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

void ReportManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortByColumn(columnId, ascending, 0);
    reloadData();
}
