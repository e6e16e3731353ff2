#include "TestMain.h"

#include "platform/Numbers.h"

#include <QTest>
#include <climits>
#include <cmath>
#include <cstdio>
#include <random>

class NumbersTest : public QObject
{
    Q_OBJECT
private slots:
    void shouldReadTheLongestLeadingFloat_data();
    void shouldReadTheLongestLeadingFloat();
    void shouldReadFloatsInSinglePrecision();
    void shouldSaturateWhenANumberIsOutOfRange();
    void shouldReadTheLeadingInteger_data();
    void shouldReadTheLeadingInteger();
    void shouldTellWhetherANumberStartsTheText_data();
    void shouldTellWhetherANumberStartsTheText();
    void shouldPrintTwoDecimalsAsPrintfRounds_data();
    void shouldPrintTwoDecimalsAsPrintfRounds();
    void shouldAgreeWithPrintfOverManyValues();
    void shouldPrintSixDecimals_data();
    void shouldPrintSixDecimals();
    void shouldRemoveEveryComma();
    void shouldWriteMoneyWithTwoDecimals_data();
    void shouldWriteMoneyWithTwoDecimals();
    void shouldWriteNoMoneyForOtherText_data();
    void shouldWriteNoMoneyForOtherText();
    void shouldSearchIgnoringCase_data();
    void shouldSearchIgnoringCase();
};

void NumbersTest::shouldReadTheLongestLeadingFloat_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    QTest::newRow("number then words") << "12 boxes" << 12.0;
    QTest::newRow("leading blanks") << "  3.5" << 3.5;
    QTest::newRow("tabs and line breaks") << "\t\n\r 7" << 7.0;
    QTest::newRow("negative with trailing letter") << "-2.5x" << -2.5;
    QTest::newRow("plus sign") << "+4" << 4.0;
    QTest::newRow("no integer part") << ".5" << 0.5;
    QTest::newRow("no fraction digits") << "5." << 5.0;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("signed exponent") << "1.5e-2" << 0.015;
    QTest::newRow("capital exponent") << "2E+2kg" << 200.0;
    QTest::newRow("exponent without digits") << "1e" << 1.0;
    QTest::newRow("exponent sign without digits") << "1e+" << 1.0;
    QTest::newRow("letters") << "abc" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("blanks only") << "   " << 0.0;
    QTest::newRow("thousands separator") << "1,234" << 1.0;
    QTest::newRow("lone point") << "." << 0.0;
    QTest::newRow("sign then blank") << "- 3" << 0.0;
    QTest::newRow("hex is not read") << "0x10" << 0.0;
    QTest::newRow("second point stops") << "1.2.3" << 1.2;
    QTest::newRow("date reads its day") << "01/03/08" << 1.0;
    QTest::newRow("currency sign first") << "$12" << 0.0;
    QTest::newRow("many digits") << QString(80, QLatin1Char('1')).prepend(QStringLiteral("0.")) << 0.1111111111111111;
}

void NumbersTest::shouldReadTheLongestLeadingFloat()
{
    QFETCH(QString, text);
    QFETCH(double, expected);
    QCOMPARE(platform::doubleValue(text), expected);
    QCOMPARE(platform::floatValue(text), float(expected));
}

void NumbersTest::shouldReadFloatsInSinglePrecision()
{
    // The float is the double rounded once to single precision.
    QCOMPARE(platform::floatValue(u"0.1"), 0.1f);
    QCOMPARE(platform::floatValue(u"2.675"), 2.675f);
    QVERIFY(double(platform::floatValue(u"2.675")) != 2.675);
}

void NumbersTest::shouldSaturateWhenANumberIsOutOfRange()
{
    QVERIFY(std::isinf(platform::doubleValue(u"1e999")));
    QVERIFY(platform::doubleValue(u"1e999") > 0);
    QVERIFY(std::isinf(platform::doubleValue(u"-1e999")));
    QVERIFY(platform::doubleValue(u"-1e999") < 0);
    QCOMPARE(platform::doubleValue(u"1e-999"), 0.0);
    QCOMPARE(platform::doubleValue(u"0.0000e999"), 0.0);
    QVERIFY(std::isinf(platform::floatValue(u"1e39")));
}

void NumbersTest::shouldReadTheLeadingInteger_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("digits then letters") << "12abc" << 12;
    QTest::newRow("letters") << "abc" << 0;
    QTest::newRow("blanks and minus") << "  -4" << -4;
    QTest::newRow("plus") << "+7" << 7;
    QTest::newRow("fraction dropped") << "3.9" << 3;
    QTest::newRow("exponent not read") << "1e3" << 1;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("sign then blank") << "- 4" << 0;
    QTest::newRow("too large") << "99999999999" << INT_MAX;
    QTest::newRow("too small") << "-99999999999" << INT_MIN;
    QTest::newRow("largest") << "2147483647" << INT_MAX;
    QTest::newRow("smallest") << "-2147483648" << INT_MIN;
    QTest::newRow("one past largest") << "2147483648" << INT_MAX;
    QTest::newRow("very many digits") << QString(200, QLatin1Char('9')) << INT_MAX;
}

void NumbersTest::shouldReadTheLeadingInteger()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    QCOMPARE(platform::intValue(text), expected);
}

void NumbersTest::shouldTellWhetherANumberStartsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("number then words") << "12 boxes" << true;
    QTest::newRow("date") << "01/03/08" << true;
    QTest::newRow("blanks then fraction") << "  -.5" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("letters") << "abc" << false;
    QTest::newRow("lone sign") << " -" << false;
    QTest::newRow("lone point") << "." << false;
    QTest::newRow("exponent only") << "e5" << false;
}

void NumbersTest::shouldTellWhetherANumberStartsTheText()
{
    QFETCH(QString, text);
    QFETCH(bool, expected);
    QCOMPARE(platform::isNumeric(text), expected);
}

void NumbersTest::shouldPrintTwoDecimalsAsPrintfRounds_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    // 2.675 is stored just below 2.675, so it rounds down, as printf does.
    QTest::newRow("2.675 as double") << 2.675 << "2.67";
    QTest::newRow("2.675 as float") << double(2.675f) << "2.67";
    QTest::newRow("2.685 as double") << 2.685 << "2.69";
    QTest::newRow("0.005 is just above the half") << 0.005 << "0.01";
    QTest::newRow("1.005 is just below the half") << 1.005 << "1.00";
    QTest::newRow("exact half rounds to even, down") << 0.125 << "0.12";
    QTest::newRow("exact half rounds to even, up") << 0.375 << "0.38";
    QTest::newRow("negative") << -2.5 << "-2.50";
    QTest::newRow("tiny negative keeps its sign") << -0.001 << "-0.00";
    QTest::newRow("negative zero") << -0.0 << "-0.00";
    QTest::newRow("zero") << 0.0 << "0.00";
    QTest::newRow("large") << 1234567.891 << "1234567.89";
    QTest::newRow("no grouping at 1e20") << 1e20 << "100000000000000000000.00";
    QTest::newRow("float sum") << double(0.1f + 0.2f) << "0.30";
}

void NumbersTest::shouldPrintTwoDecimalsAsPrintfRounds()
{
    QFETCH(double, value);
    QFETCH(QString, expected);
    QCOMPARE(platform::format2(value), expected);
}

void NumbersTest::shouldAgreeWithPrintfOverManyValues()
{
    // The test main runs in the C locale, so printf is the reference here.
    std::mt19937 random(7);
    std::uniform_int_distribution<int> cents(-10000000, 10000000);
    std::uniform_real_distribution<double> wide(-1e9, 1e9);
    char buffer[512];
    for (int i = 0; i < 20000; ++i) {
        // Values near a half cent, in double and in float, and arbitrary ones.
        const double nearHalf = (cents(random) + 0.5) / 100.0;
        const double values[] = {nearHalf, double(float(nearHalf)), wide(random), nearHalf / 1000.0};
        for (double value : values) {
            std::snprintf(buffer, sizeof buffer, "%.2f", value);
            QCOMPARE(platform::format2(value), QString::fromLatin1(buffer));
            std::snprintf(buffer, sizeof buffer, "%f", value);
            QCOMPARE(platform::format6(value), QString::fromLatin1(buffer));
        }
    }
}

void NumbersTest::shouldPrintSixDecimals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one and a half") << 1.5 << "1.500000";
    QTest::newRow("two thirds") << 2.0 / 3.0 << "0.666667";
    QTest::newRow("negative") << -12.0 << "-12.000000";
}

void NumbersTest::shouldPrintSixDecimals()
{
    QFETCH(double, value);
    QFETCH(QString, expected);
    QCOMPARE(platform::format6(value), expected);
}

void NumbersTest::shouldRemoveEveryComma()
{
    QCOMPARE(platform::withoutCommas(QStringLiteral("1,234,567.00")), QStringLiteral("1234567.00"));
    QCOMPARE(platform::withoutCommas(QStringLiteral("12.50")), QStringLiteral("12.50"));
    QCOMPARE(platform::withoutCommas(QStringLiteral(",,")), QString(""));
}

void NumbersTest::shouldSearchIgnoringCase_data()
{
    QTest::addColumn<QString>("haystack");
    QTest::addColumn<QString>("needle");
    QTest::addColumn<bool>("expected");
    QTest::newRow("other case") << "Hello World"
                                << "wORLD" << true;
    QTest::newRow("middle") << "Acme Widgets Ltd"
                            << "widg" << true;
    QTest::newRow("absent") << "Acme"
                            << "beta" << false;
    QTest::newRow("longer needle") << "abc"
                                   << "abcd" << false;
    QTest::newRow("empty needle is never found") << "Hello"
                                                 << "" << false;
    QTest::newRow("both empty") << ""
                                << "" << false;
    QTest::newRow("empty haystack") << ""
                                    << "a" << false;
    QTest::newRow("accented letters") << QString::fromUtf8("ÄBCD") << QString::fromUtf8("äbc") << true;
    QTest::newRow("at the very end") << "Ashford"
                                     << "FORD" << true;
    QTest::newRow("a near miss before the match") << "aab"
                                                  << "ab" << true;
    QTest::newRow("symbols are not letters") << "a[b"
                                             << "A{B" << false;
    QTest::newRow("an ASCII needle in a Kelvin sign") << QString::fromUtf8("\u212A") << "k" << true;
    QTest::newRow("an ASCII needle in accented text") << QString::fromUtf8("Café Ashford") << "ASHF" << true;
}

void NumbersTest::shouldSearchIgnoringCase()
{
    QFETCH(QString, haystack);
    QFETCH(QString, needle);
    QFETCH(bool, expected);
    QCOMPARE(platform::containsText(haystack, needle), expected);
}

void NumbersTest::shouldWriteMoneyWithTwoDecimals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("money");
    QTest::newRow("whole") << "100"
                           << "100.00";
    QTest::newRow("one decimal") << "107.5"
                                 << "107.50";
    QTest::newRow("six decimals") << "465.000000"
                                  << "465.00";
    QTest::newRow("single-precision noise") << "452.78003"
                                            << "452.78";
    QTest::newRow("half rounds up") << "2.675"
                                    << "2.68";
    QTest::newRow("below half rounds down") << "2.6749"
                                            << "2.67";
    QTest::newRow("carry into the whole part") << "9.995"
                                               << "10.00";
    QTest::newRow("carry into a new digit") << "999.999"
                                            << "1000.00";
    QTest::newRow("negative") << "-20"
                              << "-20.00";
    QTest::newRow("negative rounds away from zero") << "-0.125"
                                                    << "-0.13";
    QTest::newRow("negative zero") << "-0.001"
                                   << "0.00";
    QTest::newRow("plus sign") << "+5"
                               << "5.00";
    QTest::newRow("no whole part") << ".5"
                                   << "0.50";
    QTest::newRow("no decimals after the point") << "5."
                                                 << "5.00";
    QTest::newRow("leading zeros") << "007.1"
                                   << "7.10";
    QTest::newRow("blanks around") << "  42\t"
                                   << "42.00";
    QTest::newRow("thousands separators") << "1,000,000.00"
                                          << "1000000.00";
    QTest::newRow("short first group") << "12,345.6"
                                       << "12345.60";
    QTest::newRow("many digits") << "123456789012345678.905"
                                 << "123456789012345678.91";
}

void NumbersTest::shouldWriteMoneyWithTwoDecimals()
{
    QFETCH(QString, text);
    QFETCH(QString, money);
    const std::optional<QString> written = platform::moneyText(text);
    QVERIFY(written.has_value());
    QCOMPARE(*written, money);
    // What is written reads back as the figure shown.
    QCOMPARE(platform::moneyText(*written), written);
}

void NumbersTest::shouldWriteNoMoneyForOtherText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("words") << "on account";
    QTest::newRow("a number and words") << "12 boxes";
    QTest::newRow("a currency sign") << "$12";
    QTest::newRow("an exponent") << "1e3";
    QTest::newRow("a date") << "01/03/08";
    QTest::newRow("a lone point") << ".";
    QTest::newRow("a lone sign") << "-";
    QTest::newRow("a decimal comma") << "1,23";
    QTest::newRow("a group of four") << "1,2345";
    QTest::newRow("a first group of four") << "1234,567";
    QTest::newRow("a trailing comma") << "1,";
    QTest::newRow("a leading comma") << ",100";
    QTest::newRow("two points") << "1.2.3";
    QTest::newRow("a blank after the sign") << "- 3";
}

void NumbersTest::shouldWriteNoMoneyForOtherText()
{
    QFETCH(QString, text);
    QCOMPARE(platform::moneyText(text), std::optional<QString>());
}

QUORVEL_TEST(NumbersTest)
#include "NumbersTest.moc"
