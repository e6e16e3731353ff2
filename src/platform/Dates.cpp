#include "platform/Dates.h"

#include <QHash>

namespace platform {

namespace {

inline bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Reads between `least` and `most` digits at position i.
bool readNumber(const QChar *text, qsizetype n, qsizetype &i, int least, int most, int &value)
{
    int count = 0;
    value = 0;
    while (count < most && i < n && isDigit(text[i].unicode())) {
        value = value * 10 + (text[i].unicode() - u'0');
        ++i;
        ++count;
    }
    return count >= least;
}

inline bool isBlank(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

void appendTwo(QString &out, int value)
{
    if (value < 0) {
        out += QLatin1Char('-');
        value = -value;
    }
    if (value < 10)
        out += QLatin1Char('0');
    out += QString::number(value);
}

void appendFour(QString &out, int value)
{
    if (value < 0) {
        out += QLatin1Char('-');
        value = -value;
    }
    const QString digits = QString::number(value);
    for (qsizetype pad = digits.size(); pad < 4; ++pad)
        out += QLatin1Char('0');
    out += digits;
}

QString format(const QDate &date, const QTime &time, const QString &pattern)
{
    QString out;
    out.reserve(pattern.size() + 8);
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = pattern[i];
        if (c != QLatin1Char('%') || i + 1 >= n) {
            out += c;
            continue;
        }
        const QChar f = pattern[++i];
        switch (f.unicode()) {
        case u'd':
            appendTwo(out, date.day());
            break;
        case u'm':
            appendTwo(out, date.month());
            break;
        case u'y':
            appendTwo(out, ((date.year() % 100) + 100) % 100);
            break;
        case u'Y':
            appendFour(out, date.year());
            break;
        case u'H':
            appendTwo(out, time.hour());
            break;
        case u'M':
            appendTwo(out, time.minute());
            break;
        case u'%':
            out += QLatin1Char('%');
            break;
        default:
            out += c;
            out += f;
            break;
        }
    }
    return out;
}

// Making a local moment asks the time-zone rules, which costs far more than
// reading the text; sorting reads the same few thousand dates over and over,
// so the answers are kept per thread (and forgotten when there are too many).
QDateTime localMoment(int year, int month, int day, int hour, int minute)
{
    thread_local QHash<qint64, QDateTime> known;
    const qint64 key = ((((qint64(year) * 16 + month) * 32 + day) * 32 + hour) * 64) + minute;
    const auto found = known.constFind(key);
    if (found != known.constEnd())
        return *found;
    if (known.size() >= (1 << 16))
        known.clear();
    const QDateTime moment(QDate(year, month, day), QTime(hour, minute));
    known.insert(key, moment);
    return moment;
}

}  // namespace

std::optional<QDateTime> parseDate(const QString &text, const QString &format)
{
    const QChar *s = text.constData();
    const qsizetype n = text.size();
    const QChar *f = format.constData();
    const qsizetype fn = format.size();

    int year = 2001, month = 1, day = 1, hour = 0, minute = 0;
    qsizetype i = 0;
    while (i < n && isBlank(s[i].unicode()))
        ++i;
    for (qsizetype k = 0; k < fn; ++k) {
        const QChar c = f[k];
        if (c == QLatin1Char('%') && k + 1 < fn) {
            const char16_t directive = f[++k].unicode();
            int value = 0;
            switch (directive) {
            case u'd':
                if (!readNumber(s, n, i, 1, 2, value))
                    return std::nullopt;
                day = value;
                continue;
            case u'm':
                if (!readNumber(s, n, i, 1, 2, value))
                    return std::nullopt;
                month = value;
                continue;
            case u'y':
                if (!readNumber(s, n, i, 2, 2, value))
                    return std::nullopt;
                year = value <= 68 ? 2000 + value : 1900 + value;
                continue;
            case u'Y':
                if (!readNumber(s, n, i, 4, 4, value))
                    return std::nullopt;
                year = value;
                continue;
            case u'H':
                if (!readNumber(s, n, i, 1, 2, value))
                    return std::nullopt;
                hour = value;
                continue;
            case u'M':
                if (!readNumber(s, n, i, 1, 2, value))
                    return std::nullopt;
                minute = value;
                continue;
            case u'%':
                if (i >= n || s[i] != QLatin1Char('%'))
                    return std::nullopt;
                ++i;
                continue;
            default:
                // An unknown directive is matched literally.
                if (i + 1 >= n || s[i] != c || s[i + 1].unicode() != directive)
                    return std::nullopt;
                i += 2;
                continue;
            }
        }
        if (i >= n || s[i] != c)
            return std::nullopt;
        ++i;
    }
    if (i != n)
        return std::nullopt;
    if (!QDate::isValid(year, month, day) || hour > 23 || minute > 59)
        return std::nullopt;
    const QDateTime result = localMoment(year, month, day, hour, minute);
    if (!result.isValid())
        return std::nullopt;
    return result;
}

QString formatDate(const QDateTime &moment, const QString &pattern)
{
    if (!moment.isValid())
        return QString();
    return format(moment.date(), moment.time(), pattern);
}

QString formatDate(const QDate &date, const QString &pattern)
{
    if (!date.isValid())
        return QString();
    return format(date, QTime(0, 0), pattern);
}

QDateTime addDays(const QDateTime &moment, int days)
{
    return moment.addDays(days);
}

QDateTime addMonths(const QDateTime &moment, int months)
{
    // QDate::addMonths clamps to the last day of a shorter month.
    return moment.addMonths(months);
}

QDateTime addYears(const QDateTime &moment, int years)
{
    return moment.addYears(years);
}

}  // namespace platform
