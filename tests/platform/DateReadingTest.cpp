// Reading what a user types into a date field: the date in the field's
// format with some leeway, and words for days relative to today, in English
// and (when the program speaks German) in German.
#include "TestMain.h"

#include "platform/DateReading.h"

#include <QTest>

using platform::readDate;

namespace {

const QString dayFirst = QStringLiteral("%d/%m/%y");
const QString monthFirst = QStringLiteral("%m/%d/%y");
// A Thursday.
const QDate thursday(2026, 1, 15);

}  // namespace

class DateReadingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldReadTheDateAWordStandsFor_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QDate>("expected");
        const QString en = QStringLiteral("en");
        const QString de = QStringLiteral("de");
        QTest::newRow("today") << "today" << en << thursday;
        QTest::newRow("capitals and blanks") << "  ToDay " << en << thursday;
        QTest::newRow("tomorrow") << "tomorrow" << en << QDate(2026, 1, 16);
        QTest::newRow("yesterday across a year") << "yesterday" << en << QDate(2026, 1, 14);
        QTest::newRow("the day after tomorrow") << "the day after  tomorrow" << en << QDate(2026, 1, 17);
        QTest::newRow("day before yesterday") << "day before yesterday" << en << QDate(2026, 1, 13);
        QTest::newRow("a weekday still to come") << "saturday" << en << QDate(2026, 1, 17);
        QTest::newRow("a weekday gone by this week is next week's") << "Monday" << en << QDate(2026, 1, 19);
        QTest::newRow("today's weekday is today") << "thursday" << en << thursday;
        QTest::newRow("abbreviated weekday") << "fri" << en << QDate(2026, 1, 16);
        QTest::newRow("this weekday") << "this tue" << en << QDate(2026, 1, 20);
        QTest::newRow("next weekday") << "next friday" << en << QDate(2026, 1, 16);
        QTest::newRow("next of today's weekday is a week on") << "next thursday" << en << QDate(2026, 1, 22);
        QTest::newRow("last weekday") << "last monday" << en << QDate(2026, 1, 12);
        QTest::newRow("last of today's weekday is a week back") << "last thursday" << en << QDate(2026, 1, 8);
        QTest::newRow("next week") << "next week" << en << QDate(2026, 1, 22);
        QTest::newRow("last week") << "last week" << en << QDate(2026, 1, 8);
        QTest::newRow("next month") << "next month" << en << QDate(2026, 2, 15);
        QTest::newRow("last month across a year") << "last month" << en << QDate(2025, 12, 15);
        QTest::newRow("next year") << "next year" << en << QDate(2027, 1, 15);
        QTest::newRow("last year") << "last year" << en << QDate(2025, 1, 15);
        QTest::newRow("in days") << "in 20 days" << en << QDate(2026, 2, 4);
        QTest::newRow("in a week") << "in a week" << en << QDate(2026, 1, 22);
        QTest::newRow("in one day") << "in one day" << en << QDate(2026, 1, 16);
        QTest::newRow("weeks ago") << "2 weeks ago" << en << QDate(2026, 1, 1);
        QTest::newRow("months ago") << "13 months ago" << en << QDate(2024, 12, 15);
        QTest::newRow("in years") << "in 2 years" << en << QDate(2028, 1, 15);
        QTest::newRow("English words while speaking German") << "tomorrow" << de << QDate(2026, 1, 16);
        QTest::newRow("heute") << "heute" << de << thursday;
        QTest::newRow("Morgen") << "Morgen" << de << QDate(2026, 1, 16);
        QTest::newRow("übermorgen") << "übermorgen" << de << QDate(2026, 1, 17);
        QTest::newRow("uebermorgen") << "uebermorgen" << de << QDate(2026, 1, 17);
        QTest::newRow("gestern") << "gestern" << de << QDate(2026, 1, 14);
        QTest::newRow("vorgestern") << "vorgestern" << de << QDate(2026, 1, 13);
        QTest::newRow("Montag") << "Montag" << de << QDate(2026, 1, 19);
        QTest::newRow("Sonnabend") << "Sonnabend" << de << QDate(2026, 1, 17);
        QTest::newRow("nächsten Freitag") << "nächsten Freitag" << de << QDate(2026, 1, 16);
        QTest::newRow("letzten Donnerstag") << "letzten Donnerstag" << de << QDate(2026, 1, 8);
        QTest::newRow("nächste Woche") << "Nächste Woche" << de << QDate(2026, 1, 22);
        QTest::newRow("naechsten Monat") << "naechsten Monat" << de << QDate(2026, 2, 15);
        QTest::newRow("letztes Jahr") << "letztes Jahr" << de << QDate(2025, 1, 15);
        QTest::newRow("in 3 Tagen") << "in 3 Tagen" << de << QDate(2026, 1, 18);
        QTest::newRow("vor 2 Wochen") << "vor 2 Wochen" << de << QDate(2026, 1, 1);
        QTest::newRow("in einem Monat") << "in einem Monat" << de << QDate(2026, 2, 15);
    }
    void shouldReadTheDateAWordStandsFor()
    {
        QFETCH(QString, text);
        QFETCH(QString, language);
        QFETCH(QDate, expected);
        for (const QString &format : {dayFirst, monthFirst}) {
            const std::optional<QDate> date = readDate(text, format, thursday, language);
            QVERIFY2(date.has_value(), qPrintable(format));
            QCOMPARE(*date, expected);
        }
    }

    void shouldReadTheFiguresInTheFieldsOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QDate>("expected");
        QTest::newRow("day first") << "03/04/26" << dayFirst << QDate(2026, 4, 3);
        QTest::newRow("month first") << "03/04/26" << monthFirst << QDate(2026, 3, 4);
        QTest::newRow("one digit each") << "3/4/26" << dayFirst << QDate(2026, 4, 3);
        QTest::newRow("four-digit year") << "3/4/2026" << monthFirst << QDate(2026, 3, 4);
        QTest::newRow("points between") << "14.3.26" << dayFirst << QDate(2026, 3, 14);
        QTest::newRow("dashes between") << "3-14-2026" << monthFirst << QDate(2026, 3, 14);
        QTest::newRow("no year is this year") << "14/3" << dayFirst << QDate(2026, 3, 14);
        QTest::newRow("no year, month first") << "3/14" << monthFirst << QDate(2026, 3, 14);
        QTest::newRow("German with a closing point") << "14.3." << dayFirst << QDate(2026, 3, 14);
        QTest::newRow("ISO order whatever the field's") << "2026-03-04" << monthFirst << QDate(2026, 3, 4);
        QTest::newRow("blanks around") << " 01/02/03 " << dayFirst << QDate(2003, 2, 1);
    }
    void shouldReadTheFiguresInTheFieldsOrder()
    {
        QFETCH(QString, text);
        QFETCH(QString, format);
        QFETCH(QDate, expected);
        const std::optional<QDate> date = readDate(text, format, thursday, QStringLiteral("en"));
        QVERIFY(date.has_value());
        QCOMPARE(*date, expected);
    }

    void shouldReadNoDateFromOtherText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("language");
        QTest::newRow("empty") << "" << dayFirst << "en";
        QTest::newRow("blanks") << "   " << dayFirst << "en";
        QTest::newRow("other words") << "paid by cheque" << dayFirst << "en";
        QTest::newRow("a yes") << "yes" << dayFirst << "en";
        QTest::newRow("German words while speaking English") << "morgen" << dayFirst << "en";
        QTest::newRow("impossible day") << "31/02/26" << dayFirst << "en";
        QTest::newRow("day-first date in a month-first field") << "25/12/25" << monthFirst << "en";
        QTest::newRow("impossible day without a year") << "30/2" << dayFirst << "en";
        QTest::newRow("a lone number") << "12" << dayFirst << "en";
        QTest::newRow("a price") << "12.50" << dayFirst << "en";
        QTest::newRow("three-digit year") << "1/2/202" << dayFirst << "en";
        QTest::newRow("next day is no phrase") << "next day" << dayFirst << "en";
        QTest::newRow("this week is no day") << "this week" << dayFirst << "en";
        QTest::newRow("in and ago together") << "in 3 days ago" << dayFirst << "en";
        QTest::newRow("a count in words beyond one") << "in two days" << dayFirst << "en";
        QTest::newRow("a time format") << "today"
                                       << "%H:%M"
                                       << "en";
        QTest::newRow("no format") << "today"
                                   << ""
                                   << "en";
    }
    void shouldReadNoDateFromOtherText()
    {
        QFETCH(QString, text);
        QFETCH(QString, format);
        QFETCH(QString, language);
        QCOMPARE(readDate(text, format, thursday, language), std::optional<QDate>());
    }

    void shouldTellFormatsOfDaysFromOthers_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("days");
        QTest::newRow("day first") << dayFirst << true;
        QTest::newRow("month first") << monthFirst << true;
        QTest::newRow("long year") << "%Y-%m-%d" << true;
        QTest::newRow("time") << "%H:%M" << false;
        QTest::newRow("no year") << "%d/%m" << false;
        QTest::newRow("none") << "" << false;
    }
    void shouldTellFormatsOfDaysFromOthers()
    {
        QFETCH(QString, format);
        QFETCH(bool, days);
        QCOMPARE(platform::isDayFormat(format), days);
    }
};

QUORVEL_TEST(DateReadingTest)
#include "DateReadingTest.moc"
