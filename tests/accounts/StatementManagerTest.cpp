// The statement of the accounts tab: money in beside money out and the
// difference, before and after money in was first reported, and its export.
#include "TableCells.h"
#include "TestMain.h"

#include "accounts/StatementManager.h"
#include "store/TableView.h"

#include <QTest>

namespace {

// A table's data source that ends with a total row, as the bills table and
// the money-in report do.
class TotalRows : public TableDataSource
{
public:
    TotalRows(QString columnId, QString total)
        : column(std::move(columnId)),
          sum(std::move(total))
    { }
    int numberOfRowsInTableView() const override { return 3; }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        if (columnId != column)
            return QStringLiteral("");
        return row == 2 ? sum : row == 1 ? QStringLiteral("_____") : QStringLiteral("1");
    }
    QString getDataAsCSVusingTableView(const TableView &) const override { return {}; }
    QString getDataAsHTMLusingTableView(const TableView &) const override { return {}; }

private:
    QString column;
    QString sum;
};

}  // namespace

class StatementManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldSubtractMoneyOutFromMoneyIn_data()
    {
        QTest::addColumn<QString>("moneyIn");
        QTest::addColumn<QString>("moneyOut");
        QTest::addColumn<QString>("difference");
        QTest::newRow("more in than out") << "500.00"
                                          << "120.50"
                                          << "379.50";
        QTest::newRow("more out than in") << "120.50"
                                          << "500.00"
                                          << "-379.50";
        QTest::newRow("money in never reported") << QString() << "75.25"
                                                 << "-75.25";
    }
    void shouldSubtractMoneyOutFromMoneyIn()
    {
        QFETCH(QString, moneyIn);
        QFETCH(QString, moneyOut);
        QFETCH(QString, difference);
        TableView in;
        TableView out;
        TotalRows inRows(QStringLiteral("field2"), moneyIn);
        TotalRows outRows(QStringLiteral("amount"), moneyOut);
        if (!moneyIn.isNull())
            in.setDataSource(&inRows);
        out.setDataSource(&outRows);
        const StatementManager statement(&in, &out);

        QCOMPARE(testlib::columnCells(statement, "name"), (QStringList{"Money In", "Money Out", "", ""}));
        QCOMPARE(testlib::columnCells(statement, "amount"),
                 (QStringList{moneyIn.isNull() ? QStringLiteral("") : moneyIn, moneyOut, "_____", difference}));
    }

    void shouldExportItsFourRowsWithMonospacedHeaders()
    {
        TableView in;
        TableView out;
        TotalRows inRows(QStringLiteral("field2"), QStringLiteral("10.00"));
        TotalRows outRows(QStringLiteral("amount"), QStringLiteral("4.00"));
        in.setDataSource(&inRows);
        out.setDataSource(&outRows);
        const StatementManager statement(&in, &out);
        TableView table;
        table.setColumns(TableView::columnsFrom({{"name", "Name"}, {"amount", "Amount"}}));

        QCOMPARE(statement.getDataAsCSVusingTableView(table),
                 QStringLiteral("\"Name\",\"Amount\"\r\"Money In\",\"10.00\"\r\"Money Out\",\"4.00\"\r"
                                "\"\",\"_____\"\r\"\",\"6.00\"\r"));
        const QString html = statement.getDataAsHTMLusingTableView(table);
        QVERIFY(html.startsWith(QStringLiteral("<table cellpadding=2 cellspacing=2 border=0><tr>"
                                               "<th style = background:#cccccc;font-family:monospace>Name</th>")));
        QCOMPARE(html.count(QStringLiteral("<tr>")), 5);
        QVERIFY(html.contains(QStringLiteral("<td style = background:#f0f0ff;font-family:monospace style = "
                                             "font-family:monospace>Money Out</td>")));
        QVERIFY(html.endsWith(QStringLiteral("</table><br />")));
    }
};

QUORVEL_TEST(StatementManagerTest)
#include "StatementManagerTest.moc"
