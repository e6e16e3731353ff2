// quorvel-cli report and reports: the real program over a small database,
// compared with what the program's reports tab exports.
#include "CliRun.h"
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "contacts/ContactManager.h"
#include "platform/Paths.h"
#include "reports/ReportManager.h"
#include "store/TableExport.h"

#include <QDir>
#include <QTest>

using testlib::CliResult;
using testlib::plistOf;

class ReportCommandTest : public QObject
{
    Q_OBJECT

    QString support;

    CliResult run(const QStringList &arguments) const
    {
        return testlib::runCli(QStringList{QStringLiteral("--data-dir"), support} + arguments,
                               testlib::TestEnvironment::current().homeDir());
    }

    void makeDatabase()
    {
        const QString bundle = support + QStringLiteral("/Quorvel/quorveldatabase.qvldb/");
        QVERIFY(testlib::writeFile(bundle + QStringLiteral("contacts.xml"),
                                   plistOf("contacts",
                                           {{{"id", "1"}, {"name", "Ann Lee"}, {"type", "Customer"}},
                                            {{"id", "2"}, {"name", "Bo Ray"}, {"type", "Customer"}}})));
        QVERIFY(
            testlib::writeFile(bundle + QStringLiteral("orders.xml"),
                               plistOf("orders",
                                       {{{"id", "7"}, {"contact", "1"}, {"ordernum", "INV7"}, {"balance", "20.00"}},
                                        {{"id", "8"}, {"contact", "2"}, {"ordernum", "INV8"}, {"balance", "5.00"}}})));
        QVERIFY(testlib::writeFile(
            bundle + QStringLiteral("itemsordered.xml"),
            plistOf("materials",
                    {{{"id", "1"}, {"order", "7"}, {"contact", "1"}, {"item", "Bolt"}, {"qty", "2"}},
                     {{"id", "2"}, {"order", "8"}, {"contact", "2"}, {"item", "Nut"}, {"qty", "1"}},
                     {{"id", "3"}, {"order", "7"}, {"contact", "1"}, {"item", "Bolt"}, {"qty", "3"}}})));
    }

    // What the reports tab of the program exports for the same report.
    QByteArray programExport(const QString &name, bool csv, int contact = -1)
    {
        platform::paths::setApplicationSupportDir(support);
        Quorvel quorvel;
        quorvel.setStartRepeatChecker(false);
        quorvel.getDatabase().readDatabase();
        if (contact > 0)
            quorvel.getContactManager()->setCurrentItem(quorvel.getContactbyId(QString::number(contact)));
        ReportManager &reports = *quorvel.getReportManager();
        reports.populateFilter();
        reports.doReport(name, reports.table);
        return csv ? encodeCsvExport(reports.getDataAsCSVusingTableView(*reports.table))
                   : encodeHtmlExport(wrapHtmlExport(reports.getDataAsHTMLusingTableView(*reports.table)));
    }

private Q_SLOTS:
    void init()
    {
        support = testlib::TestEnvironment::current().root() + QStringLiteral("/cli-support");
        QDir(support).removeRecursively();
    }
    void cleanup() { platform::paths::setApplicationSupportDir(testlib::TestEnvironment::current().supportDir()); }

    void shouldWriteTheBytesTheProgramExports_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("csv");
        QTest::addColumn<int>("contact");
        QTest::newRow("csv") << QStringList{"report", "Top Sellers"} << "Top Sellers" << true << -1;
        QTest::newRow("html") << QStringList{"report", "Outstanding Balances", "--format", "html"}
                              << "Outstanding Balances" << false << -1;
        QTest::newRow("open contact") << QStringList{"report", "OrdersforOpenContact", "--contact", "2"}
                                      << "OrdersforOpenContact" << true << 2;
        QTest::newRow("no contact") << QStringList{"report", "ItemsforOpenContact", "--contact=-1"}
                                    << "ItemsforOpenContact" << true << -1;
    }
    void shouldWriteTheBytesTheProgramExports()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, name);
        QFETCH(bool, csv);
        QFETCH(int, contact);
        makeDatabase();
        const CliResult result = run(arguments);
        QCOMPARE(result.code, 0);
        QCOMPARE(result.out, programExport(name, csv, contact));
        QVERIFY(result.out.contains(csv ? QByteArray("_____") : QByteArray("\xff\xfe", 2)));
    }

    void shouldMergeAndTotalTheTopSellers()
    {
        makeDatabase();
        const QString file = support + QStringLiteral("/top.csv");
        const CliResult result = run({"report", "Top Sellers", "--output", file});
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.isEmpty());
        QCOMPARE(testlib::readFile(file),
                 QByteArray("\"Item\",\"Code\",\"Quantity Sold\"\r\"Bolt\",\"\",\"5.00\"\r"
                            "\"Nut\",\"\",\"1\"\r\"\",\"\",\"_____\"\r\"\",\"\",\"6.00\"\r"));
    }

    void shouldListTheChoosersNames()
    {
        const CliResult result = run({"reports"});
        QCOMPARE(result.code, 0);
        QCOMPARE(result.out,
                 QByteArray("Current Customers\nCurrent Items Purchased\nOutstanding Balances\n"
                            "Reorder Quantities\nStocktake\nTop Sellers\n"));
    }

    void shouldAnswerWithTheExitCodes_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("database");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("unknown report") << QStringList{"report", "Nope"} << true << 1
                                        << QByteArray("no report \"Nope\"");
        QTest::newRow("unknown contact") << QStringList{"report", "OrdersforOpenContact", "--contact", "99"} << true
                                         << 1 << QByteArray("no contact with id 99");
        QTest::newRow("no database") << QStringList{"report", "Top Sellers"} << false << 1 << QByteArray("no database");
        QTest::newRow("no name") << QStringList{"report"} << true << 2 << QByteArray("report needs one NAME");
        QTest::newRow("unknown format") << QStringList{"report", "Top Sellers", "--format", "pdf"} << true << 2
                                        << QByteArray("unknown format");
        QTest::newRow("contact that is no id") << QStringList{"report", "Top Sellers", "--contact", "Ann"} << true << 2
                                               << QByteArray("--contact needs a contact id");
        QTest::newRow("reports with an argument")
            << QStringList{"reports", "all"} << true << 2 << QByteArray("reports takes no arguments");
    }
    void shouldAnswerWithTheExitCodes()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, database);
        QFETCH(int, code);
        QFETCH(QByteArray, said);
        if (database)
            makeDatabase();
        const CliResult result = run(arguments);
        QCOMPARE(result.code, code);
        QVERIFY2(result.err.contains(said), result.err.constData());
        QVERIFY(result.out.isEmpty());
    }
};

QUORVEL_TEST(ReportCommandTest)
#include "ReportCommandTest.moc"
