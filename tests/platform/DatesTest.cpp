#include "TestMain.h"

#include "platform/Dates.h"

#include <QTest>

using platform::parseDate;

class DatesTest : public QObject
{
    Q_OBJECT
private slots:
    void shouldParseDatesWithAFormat_data();
    void shouldParseDatesWithAFormat();
    void shouldRejectWhatDoesNotFitTheFormat_data();
    void shouldRejectWhatDoesNotFitTheFormat();
    void shouldGiveLocalTime();
    void shouldPrintWithAFormat_data();
    void shouldPrintWithAFormat();
    void shouldReadBackWhatItPrints_data();
    void shouldReadBackWhatItPrints();
    void shouldClampToTheEndOfAShorterMonth_data();
    void shouldClampToTheEndOfAShorterMonth();
    void shouldAddDaysAcrossYears();
};

void DatesTest::shouldParseDatesWithAFormat_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QDateTime>("expected");
    const QTime midnight(0, 0);
    QTest::newRow("two digits each") << "01/03/08"
                                     << "%d/%m/%y" << QDateTime(QDate(2008, 3, 1), midnight);
    QTest::newRow("one digit day and month") << "1/3/08"
                                             << "%d/%m/%y" << QDateTime(QDate(2008, 3, 1), midnight);
    QTest::newRow("year 00") << "15/06/00"
                             << "%d/%m/%y" << QDateTime(QDate(2000, 6, 15), midnight);
    QTest::newRow("year 68") << "15/06/68"
                             << "%d/%m/%y" << QDateTime(QDate(2068, 6, 15), midnight);
    QTest::newRow("year 69") << "15/06/69"
                             << "%d/%m/%y" << QDateTime(QDate(1969, 6, 15), midnight);
    QTest::newRow("year 99") << "15/06/99"
                             << "%d/%m/%y" << QDateTime(QDate(1999, 6, 15), midnight);
    QTest::newRow("four digit year") << "29/02/2000"
                                     << "%d/%m/%Y" << QDateTime(QDate(2000, 2, 29), midnight);
    QTest::newRow("leading blanks") << "  01/03/08"
                                    << "%d/%m/%y" << QDateTime(QDate(2008, 3, 1), midnight);
    QTest::newRow("month first") << "12/31/07"
                                 << "%m/%d/%y" << QDateTime(QDate(2007, 12, 31), midnight);
    QTest::newRow("date and time") << "2008-03-01 13:45"
                                   << "%Y-%m-%d %H:%M" << QDateTime(QDate(2008, 3, 1), QTime(13, 45));
    QTest::newRow("time alone defaults to 1 January 2001") << "9:05"
                                                           << "%H:%M" << QDateTime(QDate(2001, 1, 1), QTime(9, 5));
    QTest::newRow("percent sign") << "5%01"
                                  << "%d%%%m" << QDateTime(QDate(2001, 1, 5), midnight);
}

void DatesTest::shouldParseDatesWithAFormat()
{
    QFETCH(QString, text);
    QFETCH(QString, format);
    QFETCH(QDateTime, expected);
    const auto parsed = parseDate(text, format);
    QVERIFY(parsed.has_value());
    QCOMPARE(*parsed, expected);
}

void DatesTest::shouldRejectWhatDoesNotFitTheFormat_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("format");
    QTest::newRow("31 February") << "31/02/08"
                                 << "%d/%m/%y";
    QTest::newRow("29 February of a common year") << "29/02/01"
                                                  << "%d/%m/%y";
    QTest::newRow("month 13") << "01/13/08"
                              << "%d/%m/%y";
    QTest::newRow("day 0") << "00/03/08"
                           << "%d/%m/%y";
    QTest::newRow("trailing garbage") << "01/03/08x"
                                      << "%d/%m/%y";
    QTest::newRow("trailing blank") << "01/03/08 "
                                    << "%d/%m/%y";
    QTest::newRow("four digit year for %y") << "01/03/2008"
                                            << "%d/%m/%y";
    QTest::newRow("one digit year") << "01/03/8"
                                    << "%d/%m/%y";
    QTest::newRow("two digit year for %Y") << "01/03/08"
                                           << "%d/%m/%Y";
    QTest::newRow("wrong separator") << "01-03-08"
                                     << "%d/%m/%y";
    QTest::newRow("empty") << ""
                           << "%d/%m/%y";
    QTest::newRow("words") << "tomorrow"
                           << "%d/%m/%y";
    QTest::newRow("hour 24") << "24:00"
                             << "%H:%M";
    QTest::newRow("minute 60") << "10:60"
                               << "%H:%M";
    QTest::newRow("three digit day") << "001/03/08"
                                     << "%d/%m/%y";
}

void DatesTest::shouldRejectWhatDoesNotFitTheFormat()
{
    QFETCH(QString, text);
    QFETCH(QString, format);
    QVERIFY(!parseDate(text, format).has_value());
}

void DatesTest::shouldGiveLocalTime()
{
    const auto parsed = parseDate(QStringLiteral("01/03/08"), QStringLiteral("%d/%m/%y"));
    QVERIFY(parsed.has_value());
    // A local moment prints without a zone suffix ("Z" or an offset).
    QCOMPARE(parsed->toString(Qt::ISODate), QString("2008-03-01T00:00:00"));
    QCOMPARE(*parsed, QDateTime(QDate(2008, 3, 1), QTime(0, 0)));
}

void DatesTest::shouldPrintWithAFormat_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");
    const QDateTime march(QDate(2008, 3, 1), QTime(9, 5));
    QTest::newRow("day month year") << march << "%d/%m/%y"
                                    << "01/03/08";
    QTest::newRow("four digit year and time") << march << "%Y-%m-%d %H:%M"
                                              << "2008-03-01 09:05";
    QTest::newRow("year 2000") << QDateTime(QDate(2000, 12, 31), QTime(23, 59)) << "%d/%m/%y %H:%M"
                               << "31/12/00 23:59";
    QTest::newRow("year 1999") << QDateTime(QDate(1999, 1, 2), QTime(0, 0)) << "%y"
                               << "99";
    QTest::newRow("percent and literals") << march << "100%% on %d."
                                          << "100% on 01.";
}

void DatesTest::shouldPrintWithAFormat()
{
    QFETCH(QDateTime, moment);
    QFETCH(QString, format);
    QFETCH(QString, expected);
    QCOMPARE(platform::formatDate(moment, format), expected);
    QCOMPARE(platform::formatDate(moment.date(), format),
             platform::formatDate(QDateTime(moment.date(), QTime(0, 0)), format));
}

void DatesTest::shouldReadBackWhatItPrints_data()
{
    QTest::addColumn<QDate>("date");
    QTest::newRow("2000") << QDate(2000, 1, 1);
    QTest::newRow("2068") << QDate(2068, 12, 31);
    QTest::newRow("1969") << QDate(1969, 7, 20);
    QTest::newRow("1999") << QDate(1999, 12, 31);
    QTest::newRow("leap day") << QDate(2024, 2, 29);
}

void DatesTest::shouldReadBackWhatItPrints()
{
    QFETCH(QDate, date);
    const QString format = QStringLiteral("%d/%m/%y");
    const auto parsed = parseDate(platform::formatDate(date, format), format);
    QVERIFY(parsed.has_value());
    QCOMPARE(parsed->date(), date);
}

void DatesTest::shouldClampToTheEndOfAShorterMonth_data()
{
    QTest::addColumn<QDateTime>("start");
    QTest::addColumn<int>("months");
    QTest::addColumn<int>("years");
    QTest::addColumn<QDateTime>("expected");
    const QTime noon(12, 30);
    QTest::newRow("31 January to leap February")
        << QDateTime(QDate(2008, 1, 31), noon) << 1 << 0 << QDateTime(QDate(2008, 2, 29), noon);
    QTest::newRow("31 January to common February")
        << QDateTime(QDate(2009, 1, 31), noon) << 1 << 0 << QDateTime(QDate(2009, 2, 28), noon);
    QTest::newRow("31 March back one month")
        << QDateTime(QDate(2008, 3, 31), noon) << -1 << 0 << QDateTime(QDate(2008, 2, 29), noon);
    QTest::newRow("31 October to November")
        << QDateTime(QDate(2008, 10, 31), noon) << 1 << 0 << QDateTime(QDate(2008, 11, 30), noon);
    QTest::newRow("across a year") << QDateTime(QDate(2007, 12, 15), noon) << 2 << 0
                                   << QDateTime(QDate(2008, 2, 15), noon);
    QTest::newRow("leap day plus a year")
        << QDateTime(QDate(2008, 2, 29), noon) << 0 << 1 << QDateTime(QDate(2009, 2, 28), noon);
    QTest::newRow("leap day plus four years")
        << QDateTime(QDate(2008, 2, 29), noon) << 0 << 4 << QDateTime(QDate(2012, 2, 29), noon);
}

void DatesTest::shouldClampToTheEndOfAShorterMonth()
{
    QFETCH(QDateTime, start);
    QFETCH(int, months);
    QFETCH(int, years);
    QFETCH(QDateTime, expected);
    QCOMPARE(platform::addYears(platform::addMonths(start, months), years), expected);
}

void DatesTest::shouldAddDaysAcrossYears()
{
    const QDateTime lastDay(QDate(2007, 12, 31), QTime(8, 0));
    QCOMPARE(platform::addDays(lastDay, 1), QDateTime(QDate(2008, 1, 1), QTime(8, 0)));
    QCOMPARE(platform::addDays(lastDay, -365), QDateTime(QDate(2006, 12, 31), QTime(8, 0)));
}

QUORVEL_TEST(DatesTest)
#include "DatesTest.moc"
