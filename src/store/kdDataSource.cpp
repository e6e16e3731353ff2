#include "store/kdDataSource.h"

#include <QSet>
#include <limits>

#include "platform/Dates.h"
#include "platform/ReadingOrder.h"
#include "store/TableView.h"

#include <algorithm>
#include <numeric>

kdDataSource::kdDataSource() = default;

kdDataSource::~kdDataSource()
{
    // Records that outlive the collection (held by a link or an editor)
    // must not point back at it.
    for (const std::shared_ptr<dataObject> &record : collection) {
        if (record->owner == this) {
            record->owner = nullptr;
            record->position = -1;
        }
    }
}

void kdDataSource::add(std::shared_ptr<dataObject> record)
{
    if (!record)
        return;
    if (record->Id != 0) {
        if (record->Id > highestId)
            highestId = record->Id;
    } else {
        record->Id = getNextId();  // the record is not ours yet: no index to tell
    }
    dataObject *added = record.get();
    added->owner = this;
    added->position = qsizetype(collection.size());
    collection.push_back(std::move(record));
    changed();

    // Appending keeps both indexes valid: the new record cannot precede an
    // earlier record with the same id, and it is the last visible row.
    if (idIndexValid && !idIndex.contains(added->Id))
        idIndex.insert(added->Id, added);
    if (visibleIndexValid && added->visible)
        visibleRows.push_back(int(added->position));
}

void kdDataSource::insertItem(std::shared_ptr<dataObject> record, qsizetype position)
{
    if (!record)
        return;
    const qsizetype at = std::clamp(position, qsizetype(0), qsizetype(collection.size()));
    if (record->Id > highestId)
        highestId = record->Id;
    record->owner = this;
    collection.insert(collection.begin() + at, std::move(record));
    renumberFrom(at);
    changed();
    idIndexValid = false;
    visibleIndexValid = false;
}

int kdDataSource::getNextId()
{
    if (highestId < std::numeric_limits<int>::max())
        return ++highestId;
    // A file gave a record the highest id there is: the lowest one free is
    // taken instead, the highest staying where it is.
    QSet<int> used;
    for (const std::shared_ptr<dataObject> &record : collection)
        used.insert(record->Id);
    int free = 1;
    while (used.contains(free))
        ++free;
    return free;
}

void kdDataSource::clear()
{
    for (const std::shared_ptr<dataObject> &record : collection) {
        if (record->owner == this) {
            record->owner = nullptr;
            record->position = -1;
        }
    }
    collection.clear();
    highestId = 0;
    changed();
    idIndex.clear();
    idIndexValid = true;
    visibleRows.clear();
    visibleIndexValid = true;
}

std::shared_ptr<dataObject> kdDataSource::takeItem(dataObject *record)
{
    const qsizetype at = indexOf(record);
    if (at < 0)
        return nullptr;
    std::shared_ptr<dataObject> taken = std::move(collection[size_t(at)]);
    collection.erase(collection.begin() + at);
    if (taken->owner == this) {
        taken->owner = nullptr;
        taken->position = -1;
        // A record listed twice (a bill finished again after a cancelled
        // new one) stays ours at its other place.
        const auto other = std::find(collection.begin(), collection.end(), taken);
        if (other != collection.end()) {
            taken->owner = this;
            taken->position = qsizetype(other - collection.begin());
        }
    }
    renumberFrom(at);
    changed();
    idIndexValid = false;
    visibleIndexValid = false;
    return taken;
}

void kdDataSource::deleteItem(dataObject *record)
{
    takeItem(record);  // whoever else holds the record keeps it
}

qsizetype kdDataSource::indexOf(const dataObject *record) const
{
    if (!record)
        return -1;
    if (record->owner == this && record->position >= 0 && record->position < qsizetype(collection.size())
        && collection[size_t(record->position)].get() == record)
        return record->position;
    // A record that belongs to another collection as well: look for it.
    const auto found = std::find_if(collection.begin(), collection.end(),
                                    [record](const std::shared_ptr<dataObject> &held) { return held.get() == record; });
    return found == collection.end() ? -1 : qsizetype(found - collection.begin());
}

void kdDataSource::renumberFrom(qsizetype first)
{
    for (size_t i = size_t(first); i < collection.size(); ++i) {
        if (collection[i]->owner == this)
            collection[i]->position = qsizetype(i);
    }
}

int kdDataSource::getCount() const
{
    return int(collection.size());
}

dataObject *kdDataSource::getnthItem(int n) const
{
    // Compared unsigned: a negative position is out of range too.
    if (unsigned(n) >= collection.size())
        return nullptr;
    return collection[size_t(n)].get();
}

dataObject *kdDataSource::getFirstItem() const
{
    return collection.empty() ? nullptr : collection.front().get();
}

dataObject *kdDataSource::getNextItem(const dataObject *record) const
{
    const qsizetype at = indexOf(record);
    if (at < 0 || size_t(at) + 1 >= collection.size())
        return nullptr;
    return collection[size_t(at) + 1].get();
}

void kdDataSource::ensureIdIndex() const
{
    if (idIndexValid)
        return;
    idIndex.clear();
    idIndex.reserve(qsizetype(collection.size()));
    for (const std::shared_ptr<dataObject> &record : collection) {
        if (!idIndex.contains(record->Id))
            idIndex.insert(record->Id, record.get());
    }
    idIndexValid = true;
}

dataObject *kdDataSource::getItemById(int id) const
{
    ensureIdIndex();
    return idIndex.value(id, nullptr);
}

void kdDataSource::ensureVisibleIndex() const
{
    if (visibleIndexValid)
        return;
    visibleRows.clear();
    for (size_t i = 0; i < collection.size(); ++i) {
        if (collection[i]->visible)
            visibleRows.push_back(int(i));
    }
    visibleIndexValid = true;
}

dataObject *kdDataSource::getnthVisibleItem(int n) const
{
    if (n == -1) {
        // Row -1 answers the first record when it is invisible: the row
        // counter starts at -1 and is compared before any visible record
        // has been counted. Callers never ask for it; kept as it always was.
        if (!collection.empty() && !collection.front()->visible)
            return collection.front().get();
        return nullptr;
    }
    if (n < 0)
        return nullptr;
    ensureVisibleIndex();
    if (size_t(n) >= visibleRows.size())
        return nullptr;
    return collection[size_t(visibleRows[size_t(n)])].get();
}

dataObject *kdDataSource::getSelectedItem() const
{
    if (!tableView || tableView->selectedRow() < 0)
        return nullptr;
    return getnthVisibleItem(tableView->selectedRow());
}

int kdDataSource::numberOfRowsInTableView() const
{
    ensureVisibleIndex();
    return int(visibleRows.size());
}

QString kdDataSource::objectValueForTableColumn(const QString &, int) const
{
    return QStringLiteral("");
}

void kdDataSource::filterBy(const std::function<bool(const dataObject &)> &isVisible)
{
    // How far ahead records are fetched, and how much of each: the base
    // fields and the first text fields of a record lie in its first few
    // cache lines.
    constexpr size_t ahead = 8;
    constexpr int linesPerRecord = 3;
    const size_t count = collection.size();
    for (size_t i = 0; i < count; ++i) {
        if (i + ahead < count) {
            const char *next = reinterpret_cast<const char *>(collection[i + ahead].get());
            for (int line = 0; line < linesPerRecord; ++line)
                __builtin_prefetch(next + line * 64);
        }
        dataObject *record = collection[i].get();
        record->visible = isVisible(*record);
    }
    visibleIndexValid = false;
}

void kdDataSource::swop(dataObject *a, dataObject *b)
{
    const qsizetype at = indexOf(a);
    const qsizetype bt = indexOf(b);
    if (at < 0 || bt < 0 || at == bt)
        return;
    std::swap(collection[size_t(at)], collection[size_t(bt)]);
    if (a->owner == this)
        a->position = bt;
    if (b->owner == this)
        b->position = at;
    changed();
    idIndexValid = false;
    visibleIndexValid = false;
}

// Sorting gives exactly the order of the exchange sort the collection has
// always used: neighbours are exchanged when the left is less than the right
// and `ascending` is set, or greater and it is not, so "ascending" leaves the
// collection in descending order (kept: users know their lists this way).
// Such an exchange sort is stable, so a stable sort with the same strict
// order gives the same result. For dates, a record without a date never
// takes part in an exchange: it stays where it is and nothing moves past
// it, so each run of dated records between undated ones is sorted alone.
void kdDataSource::sortByColumn(const QString &field, bool ascending, int options)
{
    const size_t count = collection.size();
    if (count < 2)
        return;
    const QString key = field == QLatin1String("name") ? QStringLiteral("surname") : field;

    std::vector<std::shared_ptr<dataObject>> sorted(count);
    if (options == 0 || options == 1) {
        std::vector<QString> folded(count);
        for (size_t i = 0; i < count; ++i)
            folded[i] = collection[i]->getFieldByName(key).toCaseFolded();
        std::vector<size_t> order(count);
        std::iota(order.begin(), order.end(), size_t(0));
        if (ascending)
            std::stable_sort(order.begin(), order.end(), [&](size_t l, size_t r) {
                return QStringView(folded[l]).compare(QStringView(folded[r])) > 0;
            });
        else
            std::stable_sort(order.begin(), order.end(), [&](size_t l, size_t r) {
                return QStringView(folded[l]).compare(QStringView(folded[r])) < 0;
            });
        for (size_t i = 0; i < count; ++i)
            sorted[i] = std::move(collection[order[i]]);
    } else if (options == 2) {
        // Every record takes part in at least one comparison, so each
        // gets its date parsed (and cached) when it has none yet.
        std::vector<qint64> when(count);
        std::vector<bool> dated(count);
        for (size_t i = 0; i < count; ++i) {
            dataObject *record = collection[i].get();
            if (!record->getNSDate()) {
                if (auto parsed = platform::parseDate(record->getFieldByName(key), platform::dayFirstFormat))
                    record->setNSDate(parsed);
            }
            const auto &cached = record->getNSDate();
            dated[i] = cached.has_value() && cached->isValid();
            if (dated[i])
                when[i] = cached->date().toJulianDay() * 86400000LL + cached->time().msecsSinceStartOfDay();
        }
        std::vector<size_t> run;
        size_t i = 0;
        while (i < count) {
            if (!dated[i]) {
                sorted[i] = std::move(collection[i]);
                ++i;
                continue;
            }
            const size_t start = i;
            run.clear();
            while (i < count && dated[i])
                run.push_back(i++);
            if (ascending)
                std::stable_sort(run.begin(), run.end(), [&](size_t l, size_t r) { return when[l] > when[r]; });
            else
                std::stable_sort(run.begin(), run.end(), [&](size_t l, size_t r) { return when[l] < when[r]; });
            for (size_t k = 0; k < run.size(); ++k)
                sorted[start + k] = std::move(collection[run[k]]);
        }
    } else {
        return;  // no other option ever exchanges anything
    }

    collection.swap(sorted);
    renumberFrom(0);
    changed();
    idIndexValid = false;
    visibleIndexValid = false;
}

void kdDataSource::sortAsRead(const QString &field, bool ascending, const QString &dateFormat)
{
    const size_t count = collection.size();
    if (count < 2)
        return;
    const QString key = field == QLatin1String("name") ? QStringLiteral("surname") : field;
    std::vector<QString> texts(count);
    for (size_t i = 0; i < count; ++i)
        texts[i] = collection[i]->getFieldByName(key);
    const std::vector<size_t> order = platform::orderAsRead(texts, ascending, dateFormat);
    std::vector<std::shared_ptr<dataObject>> sorted(count);
    for (size_t i = 0; i < count; ++i)
        sorted[i] = std::move(collection[order[i]]);
    collection.swap(sorted);
    renumberFrom(0);
    changed();
    idIndexValid = false;
    visibleIndexValid = false;
}

void kdDataSource::recordIdChanged(dataObject *)
{
    idIndexValid = false;
}

void kdDataSource::recordVisibilityChanged(dataObject *)
{
    visibleIndexValid = false;
}
