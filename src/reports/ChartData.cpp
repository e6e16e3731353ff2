#include "reports/ChartData.h"

#include "platform/Dates.h"
#include "platform/Numbers.h"

#include <QHash>
#include <QMap>
#include <algorithm>

namespace charts {

namespace {

double figureOf(const QString &text)
{
    return double(platform::floatValue(platform::withoutCommas(text)));
}

}  // namespace

QList<Bar> reportBars(const QStringList &labels, const QStringList &figures, int limit)
{
    QList<Bar> bars;
    QHash<QString, qsizetype> where;
    const qsizetype rows = std::min(labels.size(), figures.size());
    for (qsizetype row = 0; row < rows; ++row) {
        const QString label = labels.at(row).trimmed();
        const auto known = where.constFind(label);
        if (known != where.cend()) {
            bars[*known].value += figureOf(figures.at(row));
        } else {
            where.insert(label, bars.size());
            bars.append(Bar{label, figureOf(figures.at(row))});
        }
    }
    std::stable_sort(bars.begin(), bars.end(), [](const Bar &a, const Bar &b) { return a.value > b.value; });
    if (limit >= 0 && bars.size() > limit)
        bars.resize(limit);
    return bars;
}

QList<Month> monthlyMoney(const Dated &moneyIn, const Dated &moneyOut, const QString &dateFormat)
{
    QMap<QDate, Month> months;
    const auto add = [&](const Dated &entries, bool in) {
        for (const auto &[date, figure] : entries) {
            const auto moment = platform::parseDate(date.trimmed(), dateFormat);
            if (!moment)
                continue;
            const QDate first(moment->date().year(), moment->date().month(), 1);
            Month &month = months[first];
            month.month = first;
            (in ? month.in : month.out) += figureOf(figure);
        }
    };
    add(moneyIn, true);
    add(moneyOut, false);
    QList<Month> result;
    if (months.isEmpty())
        return result;
    for (QDate month = months.firstKey(); month <= months.lastKey(); month = month.addMonths(1))
        result.append(months.value(month, Month{month, 0, 0}));
    return result;
}

}  // namespace charts
