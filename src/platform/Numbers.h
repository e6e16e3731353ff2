#pragma once
// The platform's text-to-number rules and the locale-independent number output
// that every record and manager uses.
#include <QString>
#include <QStringView>
#include <optional>

namespace platform {

// Leading blanks (spaces, tabs, line breaks) are skipped, then the longest
// decimal floating-point number at the start of the text is read ("12 boxes"
// is 12, "1e3" is 1000, ".5" is 0.5, "-2.5x" is -2.5); no number gives 0.
// Thousands separators are not understood: "1,234" is 1.
float floatValue(QStringView text);
double doubleValue(QStringView text);

// Leading blanks, an optional sign, then decimal digits ("12abc" is 12,
// "abc" is 0, "  -4" is -4). Values beyond the int range saturate.
int intValue(QStringView text);

// Whether a floating-point number can be read at the start of the text
// (leading blanks allowed): "12 boxes" and "01/03/08" are numeric, "" and
// "abc" are not.
bool isNumeric(QStringView text);

// "%.2f" (and "%1.2f", which is the same for every value) of a number,
// rounded as printf rounds, with "." whatever the locale.
QString format2(double value);
// A float as a text field shows the number itself: the fewest decimals that
// still read back as the same float (107.5, 20, -3.25, 0.35416666), with "."
// whatever the locale.
QString shortestFloatText(float number);
// "%f": six decimals.
QString format6(double value);
// "%i" / "%d".
inline QString formatInt(int value)
{
    return QString::number(value);
}

// Money as a money field shows it. Text that is wholly a decimal number
// (blanks around it, a sign, "," between groups of three digits: "1,234.5")
// comes with two decimals, rounded half away from zero on the figures as
// written ("2.675" is "2.68"), and without thousands separators ("1234.50"),
// so that floatValue reads it back. Any other text ("", "12 boxes", "1e3",
// "1,23", "twelve") gives none.
std::optional<QString> moneyText(QStringView text);

// The text with every "," removed (money totals ignore thousands separators).
QString withoutCommas(const QString &text);

// Case-insensitive substring search. An empty needle is never found, as the
// platform's substring search answers "not found" for it.
bool containsText(QStringView haystack, QStringView needle);

}  // namespace platform
