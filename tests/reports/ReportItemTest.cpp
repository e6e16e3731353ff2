#include "TestMain.h"

#include "RecordFieldTable.h"
#include "reports/ReportItem.h"

#include <QTest>

namespace {

void fillRow(ReportItem &row, const QStringList &values)
{
    for (const QString &value : values)
        row.addField(value);
}

const QStringList smithRow{QStringLiteral("Smith"), QStringLiteral("12.50"), QStringLiteral("01/03/08")};

}  // namespace

class ReportItemTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartEmpty()
    {
        const ReportItem row;
        QCOMPARE(row.getFieldCount(), 0);
        QVERIFY(row.getAttributes().isEmpty());
        QCOMPARE(row.getnthField(1), QStringLiteral(""));
        QVERIFY(!row.contains(QStringLiteral("a")));
    }

    void shouldTypeEachValueAsItIsAdded_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("type");
        QTest::newRow("word") << "Smith"
                              << "STRING";
        QTest::newRow("money") << "12.50"
                               << "NUMBER";
        QTest::newRow("real date is a number here") << "01/03/08"
                                                    << "NUMBER";
        QTest::newRow("long text is a date here") << "Customer name"
                                                  << "DATE";
        QTest::newRow("empty") << ""
                               << "STRING";
        QTest::newRow("leading number") << "12 boxes"
                                        << "NUMBER";
        QTest::newRow("leading blanks") << "  3"
                                        << "NUMBER";
        QTest::newRow("seven letters") << "Abcdefg"
                                       << "STRING";
        QTest::newRow("eight letters") << "Abcdefgh"
                                       << "DATE";
        QTest::newRow("slash at index 2") << "ab/cdefgh"
                                          << "STRING";
        QTest::newRow("slash at index 5") << "abcde/ghij"
                                          << "STRING";
        QTest::newRow("number at index 3") << "abc12defgh"
                                           << "STRING";
        QTest::newRow("number at index 6") << "abcdef12gh"
                                           << "STRING";
        QTest::newRow("number at index 0") << "2008-03-01"
                                           << "NUMBER";
        QTest::newRow("day-first long date") << "1 March 2008"
                                             << "NUMBER";
    }
    void shouldTypeEachValueAsItIsAdded()
    {
        QFETCH(QString, value);
        QFETCH(QString, type);
        ReportItem row;
        row.addField(QStringLiteral("first"));
        row.addField(value);
        QCOMPARE(row.getAttributes().at(1), type);
        QCOMPARE(row.nthFieldIsNumeric(1), type == QLatin1String("NUMBER"));
        QCOMPARE(row.nthFieldIsDate(1), type == QLatin1String("DATE"));
        QCOMPARE(row.getnthField(2), value);
    }

    void shouldTypeTheSmithRow()
    {
        ReportItem row;
        fillRow(row, smithRow);
        QCOMPARE(row.getAttributes(),
                 (QStringList{QStringLiteral("STRING"), QStringLiteral("NUMBER"), QStringLiteral("NUMBER")}));
        QVERIFY(!row.nthFieldIsNumeric(0));
        QVERIFY(row.nthFieldIsNumeric(2));
        QVERIFY(!row.nthFieldIsDate(2));
        QVERIFY(!row.nthFieldIsNumeric(3));
        QVERIFY(!row.nthFieldIsDate(-1));
    }

    void shouldReadValuesByPositionAndName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("field1") << "field1"
                                << "Smith";
        QTest::newRow("field2") << "field2"
                                << "12.50";
        QTest::newRow("field3") << "field3"
                                << "01/03/08";
        QTest::newRow("past the last") << "field4"
                                       << "";
        QTest::newRow("field0") << "field0"
                                << "";
        QTest::newRow("two digits") << "field10"
                                    << "";
        QTest::newRow("only the number counts") << "xxxxx2"
                                                << "12.50";
        QTest::newRow("five characters") << "field"
                                         << "";
        QTest::newRow("four characters") << "name"
                                         << "";
        QTest::newRow("no number") << "fields"
                                   << "";
    }
    void shouldReadValuesByPositionAndName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        ReportItem row;
        fillRow(row, smithRow);
        testlib::expectAnswer(row, name, expected);
    }

    void shouldAnswerNothingPastAOneValueRow()
    {
        ReportItem row;
        row.addField(QStringLiteral("Smith"));
        QCOMPARE(row.getFieldByName(QStringLiteral("field1")), QStringLiteral("Smith"));
        QCOMPARE(row.getFieldByName(QStringLiteral("field2")), QStringLiteral(""));
        QCOMPARE(row.getnthField(2), QStringLiteral(""));
        QCOMPARE(row.getnthField(0), QStringLiteral(""));
        QCOMPARE(row.getnthField(-1), QStringLiteral(""));
    }

    void shouldReplaceTheNamedValue_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("field2") << "field2" << QStringList{"Smith", "new", "01/03/08"};
        QTest::newRow("field1") << "field1" << QStringList{"new", "12.50", "01/03/08"};
        QTest::newRow("only the number counts") << "abcde3" << QStringList{"Smith", "12.50", "new"};
        QTest::newRow("five characters ignored") << "field" << smithRow;
        QTest::newRow("past the last ignored") << "field4" << smithRow;
        QTest::newRow("field0 ignored") << "field0" << smithRow;
    }
    void shouldReplaceTheNamedValue()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, expected);
        ReportItem row;
        fillRow(row, smithRow);
        row.setFieldByName(name, QStringLiteral("new"));
        QCOMPARE(row.getFields(), expected);
        QCOMPARE(row.getFieldCount(), 3);
        // The types stay those given when the values were added.
        QCOMPARE(row.getAttributes(),
                 (QStringList{QStringLiteral("STRING"), QStringLiteral("NUMBER"), QStringLiteral("NUMBER")}));
    }

    void shouldFindARowByAnyValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("first value") << "smi" << true;
        QTest::newRow("second value") << "2.5" << true;
        QTest::newRow("last value") << "03/08" << true;
        QTest::newRow("other case") << "SMITH" << true;
        QTest::newRow("across values") << "Smith12" << false;
        QTest::newRow("absent") << "Jones" << false;
        QTest::newRow("nothing typed") << "" << false;
    }
    void shouldFindARowByAnyValue()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        ReportItem row;
        fillRow(row, smithRow);
        QCOMPARE(row.contains(text), found);
    }

    void shouldTellNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::newRow("12 boxes") << "12 boxes" << true;
        QTest::newRow("date") << "01/03/08" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("abc") << "abc" << false;
        QTest::newRow("negative") << " -4.5" << true;
    }
    void shouldTellNumbers()
    {
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QCOMPARE(ReportItem::isNumeric(text), numeric);
    }
};

QUORVEL_TEST(ReportItemTest)
#include "ReportItemTest.moc"
