// What the charts show: a report's bars and the statement's months.
#include "TestMain.h"

#include "platform/Dates.h"
#include "reports/ChartData.h"

#include <QTest>

class ChartDataTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldMakeTheLargestBarsOfLikeLabelsAddedTogether()
    {
        const QList<charts::Bar> bars = charts::reportBars({"Bolt", "Nut", "Bolt", "Cog", " Nut", "Washer"},
                                                           {"2", "1,200.50", "3", "lots", "0.5", "4"}, 3);
        QCOMPARE(bars.size(), 3);
        QCOMPARE(bars.at(0).label, QStringLiteral("Nut"));
        QCOMPARE(bars.at(0).value, 1201.0);
        QCOMPARE(bars.at(1).label, QStringLiteral("Bolt"));
        QCOMPARE(bars.at(1).value, 5.0);
        QCOMPARE(bars.at(2).label, QStringLiteral("Washer"));
        QVERIFY(charts::reportBars({}, {}, 5).isEmpty());
    }

    void shouldAddMoneyUpByMonthWithEveryMonthBetween_data()
    {
        QTest::addColumn<bool>("dayFirst");
        QTest::addColumn<QString>("march");
        QTest::newRow("day first") << true << "15/03/26";
        QTest::newRow("month first") << false << "03/15/26";
    }
    void shouldAddMoneyUpByMonthWithEveryMonthBetween()
    {
        QFETCH(bool, dayFirst);
        QFETCH(QString, march);
        const QString january = dayFirst ? QStringLiteral("02/01/26") : QStringLiteral("01/02/26");
        const QList<charts::Month> months
            = charts::monthlyMoney({{january, "100.00"}, {march, "1,000"}, {"paid by cheque", "5"}},
                                   {{january, "40"}, {january, "2.50"}}, platform::userDateFormat(dayFirst));
        QCOMPARE(months.size(), 3);
        QCOMPARE(months.at(0).month, QDate(2026, 1, 1));
        QCOMPARE(months.at(0).in, 100.0);
        QCOMPARE(months.at(0).out, 42.5);
        QCOMPARE(months.at(1).month, QDate(2026, 2, 1));  // nothing that month
        QCOMPARE(months.at(1).in + months.at(1).out, 0.0);
        QCOMPARE(months.at(2).in, 1000.0);
        QVERIFY(charts::monthlyMoney({}, {{"never", "1"}}, platform::dayFirstFormat).isEmpty());
    }
};

QUORVEL_TEST(ChartDataTest)
#include "ChartDataTest.moc"
