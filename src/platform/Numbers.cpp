#include "platform/Numbers.h"

#include <charconv>
#include <climits>
#include <limits>
#include <string>
#include <system_error>

namespace platform {

namespace {

inline bool isBlank(char16_t c)
{
    if (c < 128)
        return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\v' || c == u'\f';
    return QChar::isSpace(c);
}

inline bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

qsizetype skipBlanks(QStringView text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && isBlank(text[i].unicode()))
        ++i;
    return i;
}

// The extent [start, end) of the longest decimal floating-point number at the
// start of the text after its blanks; end == start when there is none.
struct NumberExtent
{
    qsizetype start = 0;
    qsizetype end = 0;
};

NumberExtent scanNumber(QStringView text)
{
    const qsizetype n = text.size();
    NumberExtent extent;
    qsizetype i = skipBlanks(text);
    extent.start = extent.end = i;
    if (i < n && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    qsizetype digits = 0;
    while (i < n && isDigit(text[i].unicode())) {
        ++i;
        ++digits;
    }
    if (i < n && text[i] == u'.') {
        qsizetype j = i + 1;
        qsizetype fraction = 0;
        while (j < n && isDigit(text[j].unicode())) {
            ++j;
            ++fraction;
        }
        if (digits + fraction > 0) {
            digits += fraction;
            i = j;
        }
    }
    if (digits == 0)
        return extent;
    // An exponent counts only when digits follow it.
    if (i < n && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < n && (text[j] == u'+' || text[j] == u'-'))
            ++j;
        if (j < n && isDigit(text[j].unicode())) {
            while (j < n && isDigit(text[j].unicode()))
                ++j;
            i = j;
        }
    }
    extent.end = i;
    return extent;
}

double convert(const char *first, const char *last)
{
    // from_chars takes no leading "+" and never looks at the C locale.
    bool negative = false;
    if (first < last && (*first == '+' || *first == '-')) {
        negative = *first == '-';
        ++first;
    }
    double value = 0.0;
    const auto result = std::from_chars(first, last, value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small for a double: infinity or zero, as strtod
        // would answer. Decide by the decimal exponent of the first
        // significant digit.
        long long exponent = 0;
        long long leading = 0;  // position of the first significant digit relative to the point
        bool seenPoint = false;
        bool seenSignificant = false;
        long long integerDigits = 0;
        const char *p = first;
        for (; p < last && *p != 'e' && *p != 'E'; ++p) {
            if (*p == '.') {
                seenPoint = true;
                continue;
            }
            if (!seenSignificant && *p != '0') {
                seenSignificant = true;
                leading = seenPoint ? -(p - first) : integerDigits;
            }
            if (!seenPoint)
                ++integerDigits;
        }
        if (p < last) {
            ++p;
            bool negativeExponent = false;
            if (p < last && (*p == '+' || *p == '-'))
                negativeExponent = *p++ == '-';
            for (; p < last; ++p) {
                if (exponent < 100000000)
                    exponent = exponent * 10 + (*p - '0');
            }
            if (negativeExponent)
                exponent = -exponent;
        }
        value = (seenSignificant && exponent + leading > 0) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return negative ? -value : value;
}

double readDouble(QStringView text)
{
    const NumberExtent extent = scanNumber(text);
    const qsizetype length = extent.end - extent.start;
    if (length <= 0)
        return 0.0;
    char small[64];
    std::string large;
    char *buffer = small;
    if (length > qsizetype(sizeof small)) {
        large.resize(size_t(length));
        buffer = large.data();
    }
    const QChar *source = text.data() + extent.start;
    for (qsizetype i = 0; i < length; ++i)
        buffer[i] = char(source[i].unicode());
    return convert(buffer, buffer + length);
}

QString fixed(double value, int precision)
{
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, precision);
    if (result.ec != std::errc())
        return QString();
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

}  // namespace

float floatValue(QStringView text)
{
    return float(readDouble(text));
}

double doubleValue(QStringView text)
{
    return readDouble(text);
}

int intValue(QStringView text)
{
    const qsizetype n = text.size();
    qsizetype i = skipBlanks(text);
    bool negative = false;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    long long value = 0;
    for (; i < n && isDigit(text[i].unicode()); ++i) {
        if (value <= (long long)INT_MAX + 1)
            value = value * 10 + (text[i].unicode() - u'0');
    }
    if (negative)
        value = -value;
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return int(value);
}

bool isNumeric(QStringView text)
{
    const NumberExtent extent = scanNumber(text);
    return extent.end > extent.start;
}

QString format2(double value)
{
    return fixed(value, 2);
}

QString format6(double value)
{
    return fixed(value, 6);
}

std::optional<QString> moneyText(QStringView text)
{
    const QStringView figures = text.trimmed();
    const qsizetype n = figures.size();
    qsizetype i = 0;
    bool negative = false;
    if (i < n && (figures[i] == u'+' || figures[i] == u'-')) {
        negative = figures[i] == u'-';
        ++i;
    }
    // The whole part: digits, perhaps in groups of three after the first.
    QString digits;
    int group = 0;
    bool grouped = false;
    for (; i < n; ++i) {
        if (isDigit(figures[i].unicode())) {
            digits += figures[i];
            ++group;
        } else if (figures[i] == u',') {
            if (group == 0 || group > 3 || (grouped && group != 3))
                return std::nullopt;
            grouped = true;
            group = 0;
        } else {
            break;
        }
    }
    if (grouped && group != 3)
        return std::nullopt;
    QString fraction;
    if (i < n && figures[i] == u'.') {
        for (++i; i < n && isDigit(figures[i].unicode()); ++i)
            fraction += figures[i];
    }
    if (i != n || (digits.isEmpty() && fraction.isEmpty()))
        return std::nullopt;

    // Whole part and cents as one row of digits, rounded on the third decimal.
    QString cents = (digits.isEmpty() ? QStringLiteral("0") : digits) + (fraction + QStringLiteral("00")).left(2);
    if (fraction.size() > 2 && fraction[2] >= u'5') {
        qsizetype k = cents.size() - 1;
        for (; k >= 0 && cents[k] == u'9'; --k)
            cents[k] = u'0';
        if (k < 0)
            cents.prepend(u'1');
        else
            cents[k] = QChar(cents[k].unicode() + 1);
    }
    QString whole = cents.left(cents.size() - 2);
    while (whole.size() > 1 && whole[0] == u'0')
        whole.remove(0, 1);
    const QString result = whole + u'.' + cents.right(2);
    const bool zero = whole == QLatin1String("0") && cents.endsWith(QLatin1String("00"));
    return negative && !zero ? u'-' + result : result;
}

QString withoutCommas(const QString &text)
{
    if (!text.contains(QLatin1Char(',')))
        return text;
    QString result = text;
    result.remove(QLatin1Char(','));
    return result;
}

namespace {

bool isAscii(QStringView text)
{
    for (QChar c : text) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}

inline char16_t asciiLower(char16_t c)
{
    return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c;
}

}  // namespace

bool containsText(QStringView haystack, QStringView needle)
{
    if (needle.isEmpty())
        return false;
    if (needle.size() > haystack.size())
        return false;
    // Searches run over every record at each keystroke: texts that are all
    // ASCII, by far the most common, are compared here directly. Anything
    // else takes Qt's full case folding, where for example the Kelvin sign
    // matches "k".
    if (!isAscii(needle) || !isAscii(haystack))
        return haystack.contains(needle, Qt::CaseInsensitive);
    const char16_t *h = haystack.utf16();
    const char16_t *n = needle.utf16();
    const qsizetype last = haystack.size() - needle.size();
    const char16_t first = asciiLower(n[0]);
    for (qsizetype i = 0; i <= last; ++i) {
        if (asciiLower(h[i]) != first)
            continue;
        qsizetype k = 1;
        while (k < needle.size() && asciiLower(h[i + k]) == asciiLower(n[k]))
            ++k;
        if (k == needle.size())
            return true;
    }
    return false;
}

QString shortestFloatText(float number)
{
    if (number == 0.0f)
        return QStringLiteral("0");
    for (int decimals = 0; decimals <= 9; ++decimals) {
        const QString text = QString::number(double(number), 'f', decimals);
        if (float(text.toDouble()) == number)
            return text;
    }
    return QString::number(double(number), 'g', 9);
}

}  // namespace platform
