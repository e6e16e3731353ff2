#include "app/kdDateFormatter.h"

namespace {

// At least `width` digits, zero-padded, with a minus sign before them for a
// negative value.
QString padded(int value, int width)
{
    QString digits = QString::number(value < 0 ? -qint64(value) : qint64(value));
    if (digits.size() < width)
        digits.prepend(QString(width - digits.size(), QLatin1Char('0')));
    return value < 0 ? QLatin1Char('-') + digits : digits;
}

}  // namespace

// "%2m/%2d/%2Y": month and day in two digits, the year in full with at least
// two digits, whatever the locale. A date that is not valid prints as "".
QString kdDateFormatter::validate(const QDateTime &date) const
{
    if (!date.isValid())
        return QStringLiteral("");
    const QDate day = date.date();
    return padded(day.month(), 2) + QLatin1Char('/') + padded(day.day(), 2) + QLatin1Char('/') + padded(day.year(), 2);
}
