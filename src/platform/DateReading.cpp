#include "platform/DateReading.h"

#include "platform/Dates.h"

#include <QRegularExpression>
#include <QStringList>
#include <initializer_list>

namespace platform {

namespace {

using namespace Qt::Literals::StringLiterals;

struct Word
{
    QLatin1StringView text;
    int value;
};

using Words = std::initializer_list<Word>;

// Days counted from today.
constexpr Words englishDays{{"today"_L1, 0},
                            {"tomorrow"_L1, 1},
                            {"yesterday"_L1, -1},
                            {"day after tomorrow"_L1, 2},
                            {"the day after tomorrow"_L1, 2},
                            {"day before yesterday"_L1, -2},
                            {"the day before yesterday"_L1, -2}};
constexpr Words germanDays{
    {"heute"_L1, 0}, {"morgen"_L1, 1}, {"uebermorgen"_L1, 2}, {"gestern"_L1, -1}, {"vorgestern"_L1, -2}};

// Days of the week, Monday 1 to Sunday 7.
constexpr Words englishWeekdays{
    {"monday"_L1, 1}, {"mon"_L1, 1},      {"tuesday"_L1, 2}, {"tue"_L1, 2},    {"tues"_L1, 2},  {"wednesday"_L1, 3},
    {"wed"_L1, 3},    {"thursday"_L1, 4}, {"thu"_L1, 4},     {"thur"_L1, 4},   {"thurs"_L1, 4}, {"friday"_L1, 5},
    {"fri"_L1, 5},    {"saturday"_L1, 6}, {"sat"_L1, 6},     {"sunday"_L1, 7}, {"sun"_L1, 7}};
constexpr Words germanWeekdays{{"montag"_L1, 1},  {"dienstag"_L1, 2}, {"mittwoch"_L1, 3},  {"donnerstag"_L1, 4},
                               {"freitag"_L1, 5}, {"samstag"_L1, 6},  {"sonnabend"_L1, 6}, {"sonntag"_L1, 7}};

// "next" is 1, "last" -1, "this" 0.
constexpr Words englishDirections{{"next"_L1, 1}, {"last"_L1, -1}, {"this"_L1, 0}};
constexpr Words germanDirections{
    {"naechste"_L1, 1},     {"naechsten"_L1, 1}, {"naechster"_L1, 1},   {"naechstes"_L1, 1},    {"kommende"_L1, 1},
    {"kommenden"_L1, 1},    {"kommender"_L1, 1}, {"kommendes"_L1, 1},   {"letzte"_L1, -1},      {"letzten"_L1, -1},
    {"letzter"_L1, -1},     {"letztes"_L1, -1},  {"vergangene"_L1, -1}, {"vergangenen"_L1, -1}, {"vergangener"_L1, -1},
    {"vergangenes"_L1, -1}, {"diese"_L1, 0},     {"diesen"_L1, 0},      {"dieser"_L1, 0}};

// Spans of time.
enum Unit { Day = 1, Week, Month, Year };
constexpr Words englishUnits{{"day"_L1, Day},     {"days"_L1, Day},     {"week"_L1, Week}, {"weeks"_L1, Week},
                             {"month"_L1, Month}, {"months"_L1, Month}, {"year"_L1, Year}, {"years"_L1, Year}};
constexpr Words germanUnits{{"tag"_L1, Day},     {"tage"_L1, Day},    {"tagen"_L1, Day},    {"woche"_L1, Week},
                            {"wochen"_L1, Week}, {"monat"_L1, Month}, {"monate"_L1, Month}, {"monaten"_L1, Month},
                            {"jahr"_L1, Year},   {"jahre"_L1, Year},  {"jahren"_L1, Year}};

// Counts written as words ("in a week", "vor einem Monat").
constexpr Words englishCounts{{"a"_L1, 1}, {"an"_L1, 1}, {"one"_L1, 1}};
constexpr Words germanCounts{{"ein"_L1, 1}, {"eine"_L1, 1}, {"einen"_L1, 1}, {"einem"_L1, 1}, {"einer"_L1, 1}};

// The words of one language.
struct Language
{
    Words days;
    Words weekdays;
    Words directions;
    Words units;
    Words counts;
    QLatin1StringView in;  // "in 3 days"
    QLatin1StringView ago;  // "3 days ago"
    bool agoLeads;  // "vor 3 Tagen"
};

constexpr Language english{englishDays,   englishWeekdays, englishDirections, englishUnits,
                           englishCounts, "in"_L1,         "ago"_L1,          false};
constexpr Language german{germanDays,   germanWeekdays, germanDirections, germanUnits,
                          germanCounts, "in"_L1,        "vor"_L1,         true};

std::optional<int> lookUp(const Words &words, QStringView text)
{
    for (const Word &word : words) {
        if (text == word.text)
            return word.value;
    }
    return std::nullopt;
}

// Lower case, single blanks, and the German letters written out the way a
// keyboard without them does.
QString normalised(QStringView text)
{
    QString out = text.toString().normalized(QString::NormalizationForm_C).toLower().simplified();
    out.replace(u'ä', "ae"_L1);
    out.replace(u'ö', "oe"_L1);
    out.replace(u'ü', "ue"_L1);
    out.replace(u'ß', "ss"_L1);
    return out;
}

QDate weekdayFrom(const QDate &today, int weekday, int direction)
{
    if (direction < 0) {
        const int back = (today.dayOfWeek() - weekday + 7) % 7;
        return today.addDays(back == 0 ? -7 : -back);
    }
    const int ahead = (weekday - today.dayOfWeek() + 7) % 7;
    if (direction > 0 && ahead == 0)
        return today.addDays(7);
    return today.addDays(ahead);
}

QDate moved(const QDate &today, int unit, int count)
{
    switch (unit) {
    case Day:
        return today.addDays(count);
    case Week:
        return today.addDays(qint64(count) * 7);
    case Month:
        return today.addMonths(count);
    case Year:
        return today.addYears(count);
    default:
        return {};
    }
}

std::optional<int> countOf(const Language &language, const QString &text)
{
    static const QRegularExpression digits(u"^[0-9]{1,4}$"_s);
    if (digits.match(text).hasMatch())
        return text.toInt();
    return lookUp(language.counts, text);
}

std::optional<QDate> readWords(const Language &language, const QString &text, const QDate &today)
{
    if (const auto days = lookUp(language.days, text))
        return today.addDays(*days);
    const QStringList words = text.split(u' ');
    if (words.size() == 1) {
        if (const auto weekday = lookUp(language.weekdays, words[0]))
            return weekdayFrom(today, *weekday, 0);
        return std::nullopt;
    }
    if (words.size() == 2) {
        const auto direction = lookUp(language.directions, words[0]);
        if (!direction)
            return std::nullopt;
        if (const auto weekday = lookUp(language.weekdays, words[1]))
            return weekdayFrom(today, *weekday, *direction);
        const auto unit = lookUp(language.units, words[1]);
        if (unit && *direction != 0 && *unit != Day)
            return moved(today, *unit, *direction);
        return std::nullopt;
    }
    if (words.size() == 3) {
        // "in 3 days", "3 days ago" or "vor 3 Tagen".
        const bool forward = words[0] == language.in;
        const bool back = language.agoLeads ? words[0] == language.ago : words[2] == language.ago;
        const int first = forward || language.agoLeads ? 1 : 0;
        if (forward == back)
            return std::nullopt;
        const auto count = countOf(language, words[first]);
        const auto unit = lookUp(language.units, words[first + 1]);
        if (!count || !unit)
            return std::nullopt;
        return moved(today, *unit, back ? -*count : *count);
    }
    return std::nullopt;
}

std::optional<QDate> parsed(const QString &text, const QString &format)
{
    const std::optional<QDateTime> moment = parseDate(text, format);
    return moment ? std::optional<QDate>(moment->date()) : std::nullopt;
}

// The format as written, or with a four-digit year in place of a two-digit one.
std::optional<QDate> readInFormat(const QString &text, const QString &format)
{
    if (const auto date = parsed(text, format))
        return date;
    if (format.contains("%y"_L1))
        return parsed(text, QString(format).replace("%y"_L1, "%Y"_L1));
    return std::nullopt;
}

// The character between the parts of the format ("/" of "%d/%m/%y").
QChar separatorOf(const QString &format)
{
    for (qsizetype i = 0; i + 2 < format.size(); ++i) {
        if (format[i] == u'%' && format[i + 2] != u'%')
            return format[i + 2];
    }
    return {};
}

std::optional<QDate> readFigures(const QString &text, const QString &format, const QDate &today)
{
    if (const auto date = readInFormat(text, format))
        return date;
    static const QRegularExpression iso(u"^([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})$"_s);
    if (const QRegularExpressionMatch match = iso.match(text); match.hasMatch()) {
        const QDate date(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
        return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
    }
    // Other marks between the parts ("14.3.26", "14-3-26"); a German date
    // may end with one ("14.3.").
    const QChar separator = separatorOf(format);
    if (separator.isNull())
        return std::nullopt;
    QString figures = text;
    for (const QChar mark : {u'.', u'-', u'/'})
        figures.replace(mark, separator);
    if (figures != text) {
        if (const auto date = readInFormat(figures, format))
            return date;
    }
    if (figures.endsWith(separator))
        figures.chop(1);
    // The year left out: this year.
    const qsizetype n = format.size();
    if (n >= 3 && format[n - 3] == separator && (format.endsWith("%y"_L1) || format.endsWith("%Y"_L1)))
        return parsed(figures + separator + QString::number(today.year()), format.left(n - 2) + "%Y"_L1);
    return std::nullopt;
}

}  // namespace

bool isDayFormat(const QString &format)
{
    return format.contains("%d"_L1) && format.contains("%m"_L1)
        && (format.contains("%y"_L1) || format.contains("%Y"_L1));
}

std::optional<QDate> readDate(QStringView text, const QString &format, const QDate &today, const QString &language)
{
    if (!isDayFormat(format) || !today.isValid())
        return std::nullopt;
    const QString words = normalised(text);
    if (words.isEmpty())
        return std::nullopt;
    if (const auto date = readWords(english, words, today))
        return date;
    if (language == "de"_L1) {
        if (const auto date = readWords(german, words, today))
            return date;
    }
    const std::optional<QDate> date = readFigures(text.trimmed().toString(), format, today);
    if (date && !date->isValid())
        return std::nullopt;
    return date;
}

}  // namespace platform
