#pragma once
// Dates as the program writes them: format strings with %d %m %y %Y %H %M,
// and calendar arithmetic.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

namespace platform {

// Parses text with a format of %d %m %y %Y %H %M and literal characters.
// %d, %m, %H, %M take one or two digits; %y two digits (00-68 is 2000-2068,
// 69-99 is 1969-1999); %Y four digits. Leading blanks of the text are
// skipped; anything left after the format is an error. A field missing
// from the format takes its default (1 January 2001, 00:00). The result is
// local time. An impossible date (31/02/08) gives nothing.
std::optional<QDateTime> parseDate(const QString &text, const QString &format);

// Prints a moment with a format of %d %m %y %Y %H %M (two digits each, four
// for %Y; "%%" is a percent sign; other characters are copied).
QString formatDate(const QDateTime &moment, const QString &format);
QString formatDate(const QDate &date, const QString &format);

// The two orders a user can write dates in: day first (the program's own,
// and the one it always stores some dates in) and month first.
inline const QString dayFirstFormat = QStringLiteral("%d/%m/%y");
inline const QString monthFirstFormat = QStringLiteral("%m/%d/%y");
inline const QString &userDateFormat(bool dayFirst)
{
    return dayFirst ? dayFirstFormat : monthFirstFormat;
}

// Calendar arithmetic. Months and years clamp to the end of a shorter
// month: 31 January plus one month is 28 or 29 February.
QDateTime addDays(const QDateTime &moment, int days);
QDateTime addMonths(const QDateTime &moment, int months);
QDateTime addYears(const QDateTime &moment, int years);

}  // namespace platform
