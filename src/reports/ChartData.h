#pragma once
// What the charts under the reports and the statement show, worked out from
// the rows the tables show: pure rules, with their own tests.
//
// A report's bars: the first column's text against the totalled column's
// figure (read as far as it is a number, commas allowed), like labels added
// together, the largest kept (in order of size, the largest first).
//
// The statement's months: money in and money out added up by calendar
// month from dated figures; a date that cannot be read in the user's order
// is left out; months in calendar order, with every month between the
// first and the last (an empty month shows as nothing, not as a gap).
#include <QDate>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace charts {

struct Bar
{
    QString label;
    double value = 0;
};

QList<Bar> reportBars(const QStringList &labels, const QStringList &figures, int limit);

struct Month
{
    QDate month;  // the first day of the month
    double in = 0;
    double out = 0;
};

// Each entry: a date text and a figure text.
using Dated = QList<QPair<QString, QString>>;
QList<Month> monthlyMoney(const Dated &moneyIn, const Dated &moneyOut, const QString &dateFormat);

}  // namespace charts
