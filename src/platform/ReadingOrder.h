#pragma once
// The order in which a person reads a column, for sorting a list on screen:
// numbers as numbers ("9" before "10", "1,250.00" after "950", "£12.00"
// with them), dates as dates in the user's order, text with numbers in it by
// those numbers ("INV7" before "INV62"), the rest by its letters ignoring
// case. Empty cells go after everything else. (The collections' own sort,
// which the exports and the reports rely on, compares text as it always
// has; this order is only for what the user sees.)
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace platform {

struct ReadingKey
{
    enum Kind { Number, Date, Text, Empty } kind = Empty;
    double number = 0;  // a number, or a date's moment
    QString folded;  // the text, case-folded
};

// A number as people write one in a list ("1,250.00", "-3", "\u00a312.00",
// "15%"); nothing for any other text, nor for digits with a leading nought
// (a telephone number, a code).
std::optional<double> numberAsWritten(QStringView text);
// How a cell is read; `dateFormat` is the user's (see Dates.h).
ReadingKey readingKey(const QString &text, const QString &dateFormat);
// Negative, zero or positive as `a` comes before, with or after `b`.
int compareAsRead(const ReadingKey &a, const ReadingKey &b);
// The positions of `texts` in reading order (greatest first when asked);
// equal cells keep the order they had.
std::vector<size_t> orderAsRead(const std::vector<QString> &texts, bool greatestFirst, const QString &dateFormat);

}  // namespace platform
