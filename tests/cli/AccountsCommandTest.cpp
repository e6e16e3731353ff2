// quorvel-cli accounts: the real command over a small database, compared
// with what the program's accounts tab exports after the same choices.
#include "CliRun.h"
#include "DatabaseFiles.h"
#include "Preferences.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QSettings>
#include <QTest>

using testlib::TestEnvironment;

using testlib::CliResult;
using testlib::filesIn;
using testlib::plistOf;
using testlib::readFile;

class AccountsCommandTest : public QObject
{
    Q_OBJECT

    QString support;

    QString bundle() const { return support + QStringLiteral("/Quorvel/quorveldatabase.qvldb"); }

    CliResult run(const QStringList &arguments) const
    {
        return testlib::runCli(QStringList{QStringLiteral("--data-dir"), support, QStringLiteral("accounts")}
                                   + arguments,
                               TestEnvironment::current().homeDir());
    }

    void writeFile(const QString &path, const QByteArray &bytes) const { QVERIFY(testlib::writeFile(path, bytes)); }

    // Bills of 29 February to 9 March 2008, and orders paid in those days
    // (dates day first).
    void makeDatabase() const
    {
        writeFile(bundle() + QStringLiteral("/contacts.xml"),
                  plistOf("contacts", {{{"id", "1"}, {"name", "Ann Lee"}, {"type", "Customer"}}}));
        QList<testlib::PlistRecord> bills;
        const char *rows[][6] = {{"1", "Acme", "B1", "Rent", "29/02/08", "1,200.50"},
                                 {"2", "Parts Ltd", "B2", "Stock", "01/03/08", "99.5"},
                                 {"3", "Post office", "B3", "Postage", "08/03/08", "7"},
                                 {"4", "Rent Co", "B4", "Rent", "09/03/08", "450"}};
        for (const auto &row : rows)
            bills.append(testlib::PlistRecord{{"id", row[0]},
                                              {"name", row[1]},
                                              {"number", row[2]},
                                              {"category", row[3]},
                                              {"datepaid", row[4]},
                                              {"amount", row[5]}});
        writeFile(bundle() + QStringLiteral("/bills.xml"), plistOf("bills", bills));
        writeFile(bundle() + QStringLiteral("/orders.xml"),
                  plistOf("orders",
                          {{{"id", "1"},
                            {"contact", "1"},
                            {"title", "Kitchen"},
                            {"deposit", "100"},
                            {"depositpaid", "01/03/08"},
                            {"balance", "400"},
                            {"balancepaid", "08/03/08"}},
                           {{"id", "2"},
                            {"contact", "1"},
                            {"title", "Garden"},
                            {"deposit", "50"},
                            {"depositpaid", "07/03/08"},
                            {"balance", "20"},
                            {"balancepaid", ""}},
                           {{"id", "3"},
                            {"contact", "1"},
                            {"title", "Roof"},
                            {"deposit", "10"},
                            {"depositpaid", "28/02/08"},
                            {"balance", "0"},
                            {"balancepaid", ""}}}));
    }

    // What the accounts tab of the program exports after the user chose the
    // period, start date and search, through the export menu command.
    QByteArray programExport(const QString &period, const QString &from, const QString &search, const QString &tab,
                             bool csv)
    {
        platform::paths::setApplicationSupportDir(support);
        QDir().mkpath(PrefsController::notepadPath());  // a saved start: the accounts module is on
        Quorvel quorvel;
        quorvel.setStartRepeatChecker(false);
        quorvel.getPrefsController()->readDefaults();
        quorvel.getDatabase().readDatabase();
        BillManager &bills = *quorvel.getBillManager();
        bills.fromDate->userSetStringValue(from);
        bills.periodPopUp->userSelectItemAtIndex(bills.periodPopUp->indexOfItemWithTitle(period));
        bills.searchField->userSetStringValue(search);

        quorvel.mainWindow->makeKeyAndOrderFront();
        quorvel.mainTabView->selectTabViewItemWithIdentifier(QStringLiteral("pro2"));
        quorvel.accountsTabView->selectTabViewItemWithIdentifier(tab);
        const QString path
            = TestEnvironment::current().root() + (csv ? QStringLiteral("/tab.csv") : QStringLiteral("/tab.html"));
        TestEnvironment::current().scriptFilePanelAnswers({path});
        if (!(csv ? quorvel.exportCSVMenuItem() : quorvel.exportHTMLMenuItem()))
            return {};
        return readFile(path);
    }

private Q_SLOTS:
    void init()
    {
        support = TestEnvironment::current().root() + QStringLiteral("/cli-support");
        QDir(support).removeRecursively();
        QSettings settings = testlib::preferences();
        settings.clear();
        settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    }
    void cleanup()
    {
        platform::paths::setApplicationSupportDir(TestEnvironment::current().supportDir());
        platform::setFixedNow(TestEnvironment::fixedNow());
    }

    void shouldWriteWhatTheAccountsTabExports_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("period");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("tab");
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<QByteArray>("shows");
        const QStringList week{"--period", "1 Week", "--from", "01/03/08"};
        QTest::newRow("a week of bills, both ends included")
            << week << "1 Week"
            << "01/03/08"
            << ""
            << "1" << false
            << QByteArray("\"Date Paid\",\"Paid To\",\"Number\",\"Category\",\"Amount\"\r"
                          "\"01/03/08\",\"Parts Ltd\",\"B2\",\"Stock\",\"99.5\"\r"
                          "\"08/03/08\",\"Post office\",\"B3\",\"Postage\",\"7\"\r"
                          "\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"106.50\"\r");
        QTest::newRow("a week of money in, the last day left out")
            << week + QStringList{"--table", "moneyin"} << "1 Week"
            << "01/03/08"
            << ""
            << "2" << false
            << QByteArray("\"Name\",\"Received\",\"Datepaid\"\r\"Kitchen\",\"100\",\"01/03/08\"\r"
                          "\"Garden\",\"50\",\"07/03/08\"\r\"\",\"_____\",\"\"\r\"\",\"150.00\",\"\"\r");
        QTest::newRow("everything, thousands separators summed")
            << QStringList{} << "All"
            << ""
            << ""
            << "1" << false << QByteArray("\"\",\"\",\"\",\"\",\"1757.00\"\r");
        QTest::newRow("a search") << QStringList{"--search", "RENT"} << "All"
                                  << ""
                                  << "RENT"
                                  << "1" << false
                                  << QByteArray("\"Acme\",\"B1\",\"Rent\",\"1,200.50\"\r\"09/03/08\",\"Rent Co\"");
        QTest::newRow("statement with more out than in")
            << QStringList{"--table", "statement"} << "All"
            << ""
            << ""
            << "3" << false
            << QByteArray("\"Money In\",\"560.00\"\r\"Money Out\",\"1757.00\"\r\"\",\"_____\"\r\"\",\"-1197.00\"\r");
        QTest::newRow("html") << week + QStringList{"--table", "statement", "--format", "html"} << "1 Week"
                              << "01/03/08"
                              << ""
                              << "3" << false << QByteArray("\xff\xfe<\0h\0t\0m\0l\0", 12);
        QTest::newRow("last calendar month, its end keeping the time of now")
            << QStringList{"--period", "Last calendar month"} << "Last calendar month"
            << ""
            << ""
            << "1" << false
            << QByteArray("\"29/02/08\",\"Acme\",\"B1\",\"Rent\",\"1,200.50\"\r"
                          "\"01/03/08\",\"Parts Ltd\",\"B2\",\"Stock\",\"99.5\"\r\"\",\"\",\"\",\"\",\"_____\"\r");
        QTest::newRow("start date month first")
            << QStringList{"--period", "1 Month", "--from", "01/03/08"} << "1 Month"
            << "01/03/08"
            << ""
            << "1" << true
            << QByteArray("\"01/03/08\",\"Parts Ltd\",\"B2\",\"Stock\",\"99.5\"\r\"\",\"\",\"\",\"\",\"_____\"\r"
                          "\"\",\"\",\"\",\"\",\"99.50\"\r");
    }
    void shouldWriteWhatTheAccountsTabExports()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, period);
        QFETCH(QString, from);
        QFETCH(QString, search);
        QFETCH(QString, tab);
        QFETCH(bool, monthFirst);
        QFETCH(QByteArray, shows);
        makeDatabase();
        const QString order = monthFirst ? QStringLiteral("1") : QStringLiteral("0");
        writeFile(support + QStringLiteral("/Quorvel/preferences/Quorvel/Quorvel.conf"),
                  "[General]\nQuorvelDateFormat=" + order.toLatin1() + "\n");
        testlib::preferences().setValue(QStringLiteral("QuorvelDateFormat"), order);
        const QMap<QString, QByteArray> before = filesIn(support);

        const QDateTime now(QDate(2008, 3, 20), QTime(10, 0));
        const CliResult result = run(options + QStringList{"--now", "2008-03-20T10:00"});
        QCOMPARE(result.code, 0);
        QVERIFY2(result.out.contains(shows), result.out.constData());

        // Only the money-in definition and the built-in reports are new.
        QMap<QString, QByteArray> after = filesIn(support);
        const QString reports = support + QStringLiteral("/Quorvel/reports/");
        QVERIFY(after.contains(reports + QStringLiteral("MoneyIn.xml")));
        QVERIFY(after.contains(reports + QStringLiteral("Top Sellers.xml")));
        for (const QString &path : after.keys()) {
            if (path.startsWith(reports))
                after.remove(path);
        }
        QCOMPARE(after, before);

        platform::setFixedNow(now);
        QCOMPARE(result.out, programExport(period, from, search, tab, !options.contains(QStringLiteral("html"))));
    }

    void shouldWriteTheChosenBillColumnsWithTheirTitles()
    {
        makeDatabase();
        const CliResult result = run({"--columns", "name=Payee,amount,details"});
        QCOMPARE(result.code, 0);
        QCOMPARE(result.out,
                 QByteArray("\"Payee\",\"Amount\",\"details\"\r\"Acme\",\"1,200.50\",\"29/02/08\"\r"
                            "\"Parts Ltd\",\"99.5\",\"01/03/08\"\r\"Post office\",\"7\",\"08/03/08\"\r"
                            "\"Rent Co\",\"450\",\"09/03/08\"\r\"\",\"_____\",\"\"\r\"\",\"1757.00\",\"\"\r"));
    }

    void shouldRefuseBadInputAndWriteNothing_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("unknown period") << QStringList{"--period", "2 Weeks"}
                                        << QByteArray("unknown period \"2 Weeks\"");
        QTest::newRow("relative period without a start")
            << QStringList{"--period", "1 Year"} << QByteArray("\"1 Year\" needs --from");
        QTest::newRow("start date in another order") << QStringList{"--period", "1 Week", "--from", "2008-03-01"}
                                                     << QByteArray("--from needs a date written dd/mm/yy");
        QTest::newRow("malformed now") << QStringList{"--now", "2008-03-20 10:00"}
                                       << QByteArray("--now needs a moment");
        QTest::newRow("unknown table") << QStringList{"--table", "ledger"} << QByteArray("unknown table \"ledger\"");
        QTest::newRow("unknown format") << QStringList{"--format", "pdf"} << QByteArray("unknown format \"pdf\"");
        QTest::newRow("unknown column") << QStringList{"--columns", "name,colour"}
                                        << QByteArray("no column \"colour\"");
        QTest::newRow("columns of money in") << QStringList{"--table", "moneyin", "--columns", "name"}
                                             << QByteArray("--columns chooses the columns of the bills table only");
        QTest::newRow("an argument") << QStringList{"bills"} << QByteArray("no argument \"bills\"");
    }
    void shouldRefuseBadInputAndWriteNothing()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, said);
        makeDatabase();
        const QMap<QString, QByteArray> before = filesIn(support);
        const QString output = support + QStringLiteral("/out.csv");
        const CliResult result = run(options + QStringList{"--output", output});
        QCOMPARE(result.code, 2);
        QVERIFY2(result.err.contains(said), result.err.constData());
        QVERIFY(result.out.isEmpty());
        QCOMPARE(filesIn(support), before);
    }

    void shouldSayWhichFileCouldNotBeRead()
    {
        makeDatabase();
        writeFile(bundle() + QStringLiteral("/bills.xml"), "<plist><dict><key>bills");
        const CliResult result = run({"--table", "statement"});
        QCOMPARE(result.code, 3);
        QVERIFY2(result.err.contains("bills.xml could not be read"), result.err.constData());
        QVERIFY(result.out.contains("\"Money Out\",\"0.00\""));
        QCOMPARE(readFile(bundle() + QStringLiteral("/bills.xml")), QByteArray("<plist><dict><key>bills"));
    }
};

QUORVEL_TEST(AccountsCommandTest)
#include "AccountsCommandTest.moc"
