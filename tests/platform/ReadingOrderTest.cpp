// The order a column is read in on screen: numbers, dates, codes, words.
#include "TestMain.h"

#include "platform/Dates.h"
#include "platform/ReadingOrder.h"

#include <QTest>

class ReadingOrderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldPutCellsInReadingOrder_data()
    {
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<bool>("dayFirst");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("whole numbers") << QStringList{"10", "9", "100", "-3"} << true
                                       << QStringList{"-3", "9", "10", "100"};
        QTest::newRow("money with separators and symbols")
            << QStringList{"1,250.00", "950.50", "\u00a312.00", "12.5", "-0.01"} << true
            << QStringList{"-0.01", "\u00a312.00", "12.5", "950.50", "1,250.00"};
        QTest::newRow("codes and order numbers") << QStringList{"INV62", "INV7", "inv10", "INV007b", "ITM2"} << true
                                                 << QStringList{"INV7", "INV007b", "inv10", "INV62", "ITM2"};
        QTest::newRow("dates day first") << QStringList{"02/01/08", "01/02/08", "31/12/07"} << true
                                         << QStringList{"31/12/07", "02/01/08", "01/02/08"};
        QTest::newRow("dates month first") << QStringList{"02/01/08", "01/02/08", "12/31/07"} << false
                                           << QStringList{"12/31/07", "01/02/08", "02/01/08"};
        QTest::newRow("words ignore case, empty cells last")
            << QStringList{"", "banana", "Apple", "  ", "cherry"} << true
            << QStringList{"Apple", "banana", "cherry", "", "  "};
        QTest::newRow("numbers, then dates, then words")
            << QStringList{"paid", "03/04/26", "7", "1,2"} << true << QStringList{"7", "03/04/26", "1,2", "paid"};
        QTest::newRow("telephone numbers read as text")
            << QStringList{"0846885253", "0214575938", "12"} << true << QStringList{"12", "0214575938", "0846885253"};
        QTest::newRow("equal cells keep their order")
            << QStringList{"b", "a", "B", "A"} << true << QStringList{"a", "A", "b", "B"};
    }
    void shouldPutCellsInReadingOrder()
    {
        QFETCH(QStringList, cells);
        QFETCH(bool, dayFirst);
        QFETCH(QStringList, expected);
        const std::vector<QString> texts(cells.begin(), cells.end());
        const QString &format = platform::userDateFormat(dayFirst);
        QStringList ascending, descending;
        for (const size_t at : platform::orderAsRead(texts, false, format))
            ascending << texts[at];
        QCOMPARE(ascending, expected);
        // The other way round: greatest first, the empty cells still last.
        for (const size_t at : platform::orderAsRead(texts, true, format))
            descending << texts[at];
        for (qsizetype i = 0; i + 1 < descending.size(); ++i) {
            const auto key = platform::readingKey(descending.at(i), format);
            const auto next = platform::readingKey(descending.at(i + 1), format);
            if (next.kind != platform::ReadingKey::Empty)
                QVERIFY2(key.kind != platform::ReadingKey::Empty && platform::compareAsRead(key, next) >= 0,
                         qPrintable(descending.join(u'|')));
        }
    }
};

QUORVEL_TEST(ReadingOrderTest)
#include "ReadingOrderTest.moc"
