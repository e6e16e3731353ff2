#include "reports/ReportCollation.h"

#include "platform/Numbers.h"

#include <QHash>
#include <QHashSeed>

#include <charconv>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace reports {

namespace {

// The rows of a collation, read once in row order: each row's group of rows
// with equal match text (groups numbered in the order of their first rows),
// and whether its quantity is a number, with its value.
struct RowIndex
{
    std::vector<int> groupOf;
    int groupCount = 0;
    std::vector<char> numeric;
    std::vector<float> amount;
};

// Open addressing on the texts' hashes; a text is compared only with groups
// of the same hash, and with a copy of the group's text kept in one buffer
// (the rows' own texts lie all over memory). Memory is fetched ahead: the
// texts of rows further on while hashing, their buckets while grouping.
RowIndex indexRows(int count, TextColumn keys, TextColumn quantities)
{
    struct Slot
    {
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
            __builtin_prefetch(keys[k + ahead].constData());
            __builtin_prefetch(quantities[k + ahead].constData());
        }
        hashes[size_t(k)] = quint32(qHash(keys[k], seed));
        const QString &quantity = quantities[k];
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
        const QString &key = keys[k];
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
            // constData, not utf16(): utf16() copies a text that does not own
            // its characters (a literal) into a buffer of its own, in place.
            const auto *chars = reinterpret_cast<const char16_t *>(key.constData());
            texts.insert(texts.end(), chars, chars + key.size());
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

}  // namespace

// The loop that the header describes is quadratic. Rows with different
// match texts never meet, so the rows are grouped by match text, and in a
// group the rows after i are met in row order. A row whose quantity is not a
// number is never removed and never changes until it is the first row
// itself; a row that is a number is removed by the first earlier row whose
// running sum is still a number. So each group keeps its rows that are
// numbers and its rows that are not in two queues in row order: when row i
// comes, it is the front of one of them; while its running sum is a number it
// takes the numbers from the front of theirs, and every other later row of
// the group fails against it ("couldn't merge"). The sums are built exactly
// as one merge after another builds them (single precision, re-read from
// their "%.2f" text), and the failures are said in the loop's order. Past
// `logLimit` lines the failures are only counted.
CollationPlan planCollation(int count, TextColumn keys, TextColumn quantities, int logLimit)
{
    const size_t total = static_cast<size_t>(count);
    CollationPlan plan;
    plan.alive.assign(total, 1);
    plan.qty.resize(total);
    const RowIndex index = indexRows(count, keys, quantities);
    const std::vector<int> &groupOf = index.groupOf;
    const std::vector<char> &numeric = index.numeric;
    const std::vector<float> &amount = index.amount;

    // Each group's rows in one array: first its numbers, then the others,
    // each part in row order; head and end of each part per group.
    struct Group
    {
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
        QString sumText = quantities[r];
        float running = amount[size_t(r)];
        char digits[64];
        qsizetype digitsLength = -1;  // the text is sumText while -1
        bool changed = false;
        const auto currentText
            = [&]() { return digitsLength >= 0 ? QString::fromLatin1(digits, digitsLength) : sumText; };
        const auto takeNext = [&](int j) {
            running = running + amount[size_t(j)];
            const auto printed
                = std::to_chars(digits, digits + sizeof digits, double(running), std::chars_format::fixed, 2);
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
            const bool nextIsNumber
                = a < group.numEnd && (b == group.otherEnd || members[size_t(a)] < members[size_t(b)]);
            const int j = members[size_t(nextIsNumber ? a : b)];
            if (nextIsNumber && sumIsNumber) {
                takeNext(j);
                group.numHead = ++a;
                continue;
            }
            plan.messages.append(u"couldn't merge "_s + currentText() + u" and "_s + quantities[j]);
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
        plan.messages.append(u"couldn't merge %1 more pairs of rows; those lines are left out"_s.arg(unlogged));
    return plan;
}

}  // namespace reports
