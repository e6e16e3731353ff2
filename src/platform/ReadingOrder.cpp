#include "platform/ReadingOrder.h"

#include "platform/Dates.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace platform {

// A sign, a currency symbol before or after, thousands separated by commas,
// a decimal point, a percent sign.
std::optional<double> numberAsWritten(QStringView text)
{
    text = text.trimmed();
    const auto isSymbol = [](QChar c) { return c.category() == QChar::Symbol_Currency || c == u'%'; };
    bool negative = false;
    if (!text.isEmpty() && (text.front() == u'-' || text.front() == u'+')) {
        negative = text.front() == u'-';
        text = text.mid(1).trimmed();
    }
    if (!text.isEmpty() && isSymbol(text.front()))
        text = text.mid(1).trimmed();
    if (!text.isEmpty() && isSymbol(text.back()))
        text.chop(1);
    if (!negative && !text.isEmpty() && text.front() == u'-') {
        negative = true;
        text = text.mid(1);
    }
    // A run of digits with a leading nought is a code or a telephone
    // number, not a number ("0846885253", "007").
    if (text.size() > 1 && text[0] == u'0' && text[1].isDigit())
        return std::nullopt;
    QString digits;
    digits.reserve(text.size());
    bool seenPoint = false, seenDigit = false;
    qsizetype sinceComma = -1;  // digits since the last comma, -1 before any
    for (const QChar c : text) {
        if (c.isDigit()) {
            digits.append(c);
            seenDigit = true;
            if (sinceComma >= 0 && !seenPoint)
                ++sinceComma;
        } else if (c == u',' && !seenPoint && seenDigit && (sinceComma < 0 || sinceComma == 3)) {
            sinceComma = 0;
        } else if (c == u'.' && !seenPoint && (sinceComma < 0 || sinceComma == 3)) {
            seenPoint = true;
            digits.append(c);
        } else {
            return std::nullopt;
        }
    }
    if (!seenDigit || (sinceComma >= 0 && sinceComma != 3 && !seenPoint))
        return std::nullopt;
    bool ok = false;
    const double value = digits.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return negative ? -value : value;
}

namespace {

// Text compared run by run: a run of digits by its value, the rest by its
// folded letters.
int compareNaturally(QStringView a, QStringView b)
{
    qsizetype i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i].isDigit() && b[j].isDigit()) {
            qsizetype endA = i, endB = j;
            while (endA < a.size() && a[endA].isDigit())
                ++endA;
            while (endB < b.size() && b[endB].isDigit())
                ++endB;
            QStringView runA = a.mid(i, endA - i), runB = b.mid(j, endB - j);
            while (runA.size() > 1 && runA.front() == u'0')
                runA = runA.mid(1);
            while (runB.size() > 1 && runB.front() == u'0')
                runB = runB.mid(1);
            if (runA.size() != runB.size())
                return runA.size() < runB.size() ? -1 : 1;
            if (const int c = runA.compare(runB))
                return c;
            i = endA;
            j = endB;
            continue;
        }
        if (a[i] != b[j])
            return a[i] < b[j] ? -1 : 1;
        ++i;
        ++j;
    }
    if (i < a.size())
        return 1;
    return j < b.size() ? -1 : 0;
}

}  // namespace

ReadingKey readingKey(const QString &text, const QString &dateFormat)
{
    ReadingKey key;
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return key;
    if (const auto number = numberAsWritten(trimmed)) {
        key.kind = ReadingKey::Number;
        key.number = *number;
        return key;
    }
    if (trimmed.front().isDigit()) {
        if (const auto moment = parseDate(trimmed, dateFormat)) {
            key.kind = ReadingKey::Date;
            key.number = double(moment->toMSecsSinceEpoch());
            return key;
        }
    }
    key.kind = ReadingKey::Text;
    key.folded = trimmed.toCaseFolded();
    return key;
}

int compareAsRead(const ReadingKey &a, const ReadingKey &b)
{
    if (a.kind != b.kind)
        return a.kind < b.kind ? -1 : 1;
    switch (a.kind) {
    case ReadingKey::Number:
    case ReadingKey::Date:
        return a.number < b.number ? -1 : (a.number > b.number ? 1 : 0);
    case ReadingKey::Text:
        return compareNaturally(a.folded, b.folded);
    case ReadingKey::Empty:
        break;
    }
    return 0;
}

std::vector<size_t> orderAsRead(const std::vector<QString> &texts, bool greatestFirst, const QString &dateFormat)
{
    std::vector<ReadingKey> keys;
    keys.reserve(texts.size());
    for (const QString &text : texts)
        keys.push_back(readingKey(text, dateFormat));
    std::vector<size_t> order(texts.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](size_t l, size_t r) {
        // Empty cells stay at the end whichever way the list runs.
        const bool emptyL = keys[l].kind == ReadingKey::Empty, emptyR = keys[r].kind == ReadingKey::Empty;
        if (emptyL || emptyR)
            return !emptyL && emptyR;
        const int c = compareAsRead(keys[l], keys[r]);
        return greatestFirst ? c > 0 : c < 0;
    });
    return order;
}

}  // namespace platform
