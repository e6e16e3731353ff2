#include "TestMain.h"

#include "app/kdDateFormatter.h"

#include <QTest>

class kdDateFormatterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldPrintMonthDayAndYear_data()
    {
        QTest::addColumn<QDateTime>("date");
        QTest::addColumn<QString>("printed");
        QTest::newRow("single-digit month and day") << QDateTime(QDate(2026, 1, 15), QTime(10, 0)) << "01/15/2026";
        QTest::newRow("two-digit month and day") << QDateTime(QDate(2008, 12, 3), QTime(23, 59)) << "12/03/2008";
        QTest::newRow("first day of a year") << QDateTime(QDate(1999, 1, 1), QTime(0, 0)) << "01/01/1999";
        QTest::newRow("year of one digit padded to two") << QDateTime(QDate(7, 6, 5), QTime(12, 0)) << "06/05/07";
        QTest::newRow("year of three digits in full") << QDateTime(QDate(999, 10, 31), QTime(12, 0)) << "10/31/999";
        QTest::newRow("no date") << QDateTime() << "";
    }
    void shouldPrintMonthDayAndYear()
    {
        QFETCH(QDateTime, date);
        QFETCH(QString, printed);
        const kdDateFormatter formatter(nullptr);
        QCOMPARE(formatter.validate(date), printed);
    }
};

QUORVEL_TEST(kdDateFormatterTest)
#include "kdDateFormatterTest.moc"
