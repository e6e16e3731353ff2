#pragma once
// Reading a date as a user types it into a date field: the date written in
// the field's format, with some leeway (one-digit day and month, a
// four-digit year, "." or "-" between the parts, the year left out, or the
// ISO form 2026-03-14), or a word for a day relative to today. English words
// are always understood; German ones too when the program speaks German.
//
//   today, tomorrow, yesterday, the day after tomorrow, the day before yesterday
//   monday ... sunday (also mon, tue, wed, thu, fri, sat, sun): that day of
//       this week if it is today or still to come, else of next week
//   next friday / last friday: the first Friday after / before today
//   next week, last week, next month, last month, next year, last year:
//       today's date a week, a month or a year on or back
//   in 3 days, 2 weeks ago, in a month ... (day, week, month, year)
//
//   heute, morgen, übermorgen, gestern, vorgestern; montag ... sonntag
//   (sonnabend); nächsten freitag, letzten freitag; nächste woche, letzte
//   woche, nächsten monat, letzten monat, nächstes jahr, letztes jahr;
//   in 3 tagen, vor 2 wochen (ae, oe, ue and ss may stand for ä, ö, ü and ß)
//
// Letter case and extra blanks do not matter. The same words are listed
// for the user in the help page (resources/help/index.html).
#include <QDate>
#include <QString>
#include <QStringView>
#include <optional>

namespace platform {

// Whether the format is one of days: it has a day, a month and a year
// (%d, %m, and %y or %Y).
bool isDayFormat(const QString &format);

// The date the text stands for, read with a day format (isDayFormat) on the
// given today; "de" as the language adds the German words. None when the
// text is not a date: an empty text, other words, an impossible date
// (31/02/26), or a format that is not one of days.
std::optional<QDate> readDate(QStringView text, const QString &format, const QDate &today, const QString &language);

}  // namespace platform
