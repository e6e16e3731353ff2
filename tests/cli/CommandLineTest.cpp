#include "CliRun.h"
#include "DatabaseFiles.h"
#include "TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

using testlib::CliResult;
using testlib::plistOf;
using testlib::readFile;

namespace {

// Whether a property list has that key with that text in some record.
bool holds(const QByteArray &plistBytes, const char *key, const char *value)
{
    const QRegularExpression pair(QStringLiteral("<key>%1</key>\\s*<string>%2</string>")
                                      .arg(QLatin1String(key), QRegularExpression::escape(QLatin1String(value))));
    return pair.match(QString::fromUtf8(plistBytes)).hasMatch();
}

}  // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

    QTemporaryDir home;
    QString support;
    QString bundle;

    // The program over this test's data folder.
    CliResult run(const QStringList &arguments) const
    {
        return testlib::runCli(QStringList{QStringLiteral("--data-dir"), support} + arguments, home.path());
    }
    void writeFile(const QString &path, const QByteArray &bytes) const { QVERIFY(testlib::writeFile(path, bytes)); }

    void makeDatabase()
    {
        writeFile(bundle + QStringLiteral("/contacts.xml"),
                  plistOf("contacts",
                          {{{"id", "1"},
                            {"company", "0"},
                            {"name", "Ann Lee"},
                            {"type", "Customer"},
                            {"email", "ann@example.org"},
                            {"add1", "1 High St &amp; Co"}},
                           {{"id", "4"}, {"company", "0"}, {"name", "Bo \xc3\xa9t\xc3\xa9"}}}));
        writeFile(bundle + QStringLiteral("/orders.xml"),
                  plistOf("orders",
                          {{{"id", "7"},
                            {"contact", "1"},
                            {"title", "Repair"},
                            {"ordernum", "INV7"},
                            {"includeBOM", "NO"},
                            {"sent", "NO"},
                            {"repeats", "NO"}}}));
        writeFile(bundle + QStringLiteral("/itemsordered.xml"),
                  plistOf("materials",
                          {{{"id", "5"}, {"order", "7"}, {"product", "0"}, {"item", "Bolt"}},
                           {{"id", "9"}, {"order", "7"}, {"product", "0"}, {"item", "Nut"}},
                           {{"id", "12"}, {"order", "7"}, {"product", "0"}, {"item", "Cog"}}}));
    }

    // Order 7 repeats monthly, last on 15/01/09, with three lines.
    void makeRepeatingDatabase()
    {
        makeDatabase();
        writeFile(bundle + QStringLiteral("/orders.xml"),
                  plistOf("orders",
                          {{{"id", "7"},
                            {"contact", "1"},
                            {"title", "Hosting"},
                            {"ordernum", "INV7"},
                            {"repeats", "YES"},
                            {"repeatfrequency", "month"},
                            {"lastrepeatdate", "15/01/09"}}}));
    }

    CliResult repeatAt(const char *moment) { return run({"repeat", "--now", QString::fromLatin1(moment)}); }

private Q_SLOTS:
    void init()
    {
        QVERIFY(home.isValid());
        support = home.path() + QStringLiteral("/support");
        bundle = support + QStringLiteral("/Quorvel/quorveldatabase.qvldb");
        QDir(support).removeRecursively();
    }

    void shouldAnswerUsageErrorsWithTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no command") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("export without kind") << QStringList{"export"};
        QTest::newRow("export of an unknown kind") << QStringList{"export", "widgets"};
        QTest::newRow("unknown format") << QStringList{"export", "orders", "--format", "pdf"};
        QTest::newRow("unknown option") << QStringList{"export", "orders", "--colour", "red"};
        QTest::newRow("option without value") << QStringList{"export", "orders", "--output"};
        QTest::newRow("empty column") << QStringList{"export", "orders", "--columns", "title,,date"};
        QTest::newRow("data-dir without folder") << QStringList{"--data-dir"};
        QTest::newRow("stats with an argument") << QStringList{"stats", "orders"};
        QTest::newRow("repeat with a date only") << QStringList{"repeat", "--now", "2009-02-16"};
        QTest::newRow("repeat on a day that is not") << QStringList{"repeat", "--now", "2009-02-30T10:00"};
        QTest::newRow("repeat with a day-first moment") << QStringList{"repeat", "--now=16/02/2009 10:00"};
        QTest::newRow("repeat with an argument") << QStringList{"repeat", "orders"};
    }
    void shouldAnswerUsageErrorsWithTwo()
    {
        QFETCH(QStringList, arguments);
        makeDatabase();
        const CliResult result = run(arguments);
        QCOMPARE(result.code, 2);
        QVERIFY(result.err.contains("Usage: quorvel-cli"));
        QVERIFY(result.out.isEmpty());
    }

    void shouldPrintHelpAndVersion()
    {
        CliResult result = testlib::runCli({"--help"}, home.path());
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.startsWith("Usage: quorvel-cli"));
        result = testlib::runCli({"--version"}, home.path());
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.startsWith("quorvel-cli "));
    }

    void shouldFailWithOneWithoutADatabase_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("stats") << QStringList{"stats"};
        QTest::newRow("export") << QStringList{"export", "orders"};
        QTest::newRow("resave") << QStringList{"resave"};
        QTest::newRow("repeat") << QStringList{"repeat"};
    }
    void shouldFailWithOneWithoutADatabase()
    {
        QFETCH(QStringList, arguments);
        const CliResult result = run(arguments);
        QCOMPARE(result.code, 1);
        QVERIFY(result.err.contains("no database"));
        QVERIFY(!QFileInfo::exists(bundle));  // nothing created
    }

    void shouldUseTheDefaultDataFolder()
    {
        support = home.path() + QStringLiteral("/.local/share");
        bundle = support + QStringLiteral("/Quorvel/quorveldatabase.qvldb");
        makeDatabase();
        const CliResult result = testlib::runCli({"stats"}, home.path());
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.startsWith("contacts\t2\t4\n"));
        QDir(support).removeRecursively();
    }

    void shouldCountEveryCollectionInReadingOrder()
    {
        makeDatabase();
        const CliResult result = run({"stats"});
        QCOMPARE(result.code, 0);
        // The lines' highest id ends at the number of lines read, not at the highest stored id.
        QCOMPARE(result.out,
                 QByteArray("contacts\t2\t4\norders\t1\t7\nitems\t0\t0\nmaterials\t3\t3\nbills\t0\t0\ntasks\t0\t0\n"));
    }

    void shouldExportAsTheProgramDoes()
    {
        makeDatabase();
        CliResult result = run({"export", "contacts", "--columns", "name=Who,add1,email"});
        QCOMPARE(result.code, 0);
        // The contacts tab shows an address with a leading space.
        QCOMPARE(result.out,
                 QByteArray("\"Who\",\"Address\",\"Email\"\r\"Ann Lee\",\" 1 High St & Co\",\"ann@example.org\"\r"
                            "\"Bo \xc3\xa9t\xc3\xa9\",\"\",\"\"\r"));

        const QString output = home.path() + QStringLiteral("/orders.html");
        result = run(
            {"export", "orders", "--format", "html", "--columns=title,contact:name=Customer", "--output", output});
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.isEmpty());
        const QByteArray bytes = readFile(output);
        QVERIFY(bytes.startsWith("\xff\xfe"));
        QStringDecoder decoder(QStringDecoder::Utf16LE);
        const QString page = decoder(bytes.mid(2));
        QCOMPARE(
            page,
            QStringLiteral(
                "<html><head><title>Data Export from Quorvel</title><body>"
                "<table cellpadding=2 cellspacing=2 border=0><tr>"
                "<th style = background:#cccccc;font-family:sans-serif;text-align:left>Title</th>"
                "<th style = background:#cccccc;font-family:sans-serif;text-align:left>Customer</th></tr>"
                "<tr><td  style = font-family:monospace>Repair</td><td  style = font-family:monospace>Ann Lee</td></tr>"
                "</table><br /></body></head></html>"));
    }

    void shouldReportAnUnreadableFileAndKeepItAside()
    {
        makeDatabase();
        const QString orders = bundle + QStringLiteral("/orders.xml");
        const QByteArray broken = "<?xml version=\"1.0\"?>\n<plist><dict><key>orders</key><array><dict><key>id";
        writeFile(orders, broken);

        CliResult result = run({"stats"});
        QCOMPARE(result.code, 3);
        QVERIFY2(result.err.contains("orders.xml"), result.err.constData());
        QVERIFY(result.out.startsWith("contacts\t2\t4\norders\t0\t0\n"));  // the command still did its work
        QCOMPARE(readFile(orders), broken);

        result = run({"export", "orders"});
        QCOMPARE(result.code, 3);
        QCOMPARE(readFile(orders), broken);

        result = run({"resave"});
        QCOMPARE(result.code, 3);
        const QStringList aside = QDir(bundle).entryList({QStringLiteral("orders.xml.unreadable-*")});
        QCOMPARE(aside.size(), 1);
        QCOMPARE(readFile(bundle + QLatin1Char('/') + aside.first()), broken);

        result = run({"stats"});
        QCOMPARE(result.code, 0);
    }

    void shouldCopyADueOrderOncePerRunAndSaveTheAdvancedDate()
    {
        makeRepeatingDatabase();
        const QString orders = bundle + QStringLiteral("/orders.xml");
        const QString lines = bundle + QStringLiteral("/itemsordered.xml");
        CliResult result = repeatAt("2009-02-16T10:00");
        QCOMPARE(result.code, 0);
        QCOMPARE(result.out, QByteArray("INV7 -> INV8\n"));
        QVERIFY2(result.err.contains("Repeat Order\nOrder 'Hosting' has been duplicated."), result.err.constData());
        const QByteArray saved = readFile(orders);
        QVERIFY(holds(saved, "lastrepeatdate", "15/02/09"));
        QVERIFY(holds(saved, "ordernum", "INV8"));
        QVERIFY(holds(saved, "date", "16/02/09"));  // the copy is dated the day of the pass
        QCOMPARE(readFile(lines).count("<key>order</key>"), 6);

        // Not due again until 15/03/09: nothing printed, nothing written.
        const QByteArray savedLines = readFile(lines);
        const QDateTime modified = QFileInfo(orders).lastModified();
        result = repeatAt("2009-02-16T10:00");
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.isEmpty());
        QCOMPARE(readFile(orders), saved);
        QCOMPARE(QFileInfo(orders).lastModified(), modified);
        QCOMPARE(readFile(lines), savedLines);

        result = repeatAt("2009-03-16T10:00");
        QCOMPARE(result.out, QByteArray("INV7 -> INV9\n"));
        QVERIFY(holds(readFile(orders), "lastrepeatdate", "15/03/09"));
    }

    void shouldUseThePreferencesKeptInTheDataFolder()
    {
        makeRepeatingDatabase();
        writeFile(support + QStringLiteral("/Quorvel/preferences/Quorvel/Quorvel.conf"),
                  "[General]\nQuorvelOrderPrefix=JOB\nQuorvelTermOrder=Job\nQuorvelDateFormat=1\n");
        const CliResult result = repeatAt("2009-02-16T10:00");
        QCOMPARE(result.code, 0);
        QCOMPARE(result.out, QByteArray("INV7 -> JOB8\n"));
        QVERIFY2(result.err.contains("Repeat Job"), result.err.constData());
        QVERIFY(holds(readFile(bundle + QStringLiteral("/orders.xml")), "date", "02/16/09"));  // month first
    }

    void shouldMakeNoPassWhenTheLinesCannotBeRead()
    {
        makeRepeatingDatabase();
        const QByteArray orders = readFile(bundle + QStringLiteral("/orders.xml"));
        writeFile(bundle + QStringLiteral("/itemsordered.xml"), "<plist><dict><key>materials");
        const CliResult result = repeatAt("2009-02-16T10:00");
        QCOMPARE(result.code, 3);
        QVERIFY(result.out.isEmpty());
        QCOMPARE(readFile(bundle + QStringLiteral("/orders.xml")), orders);
        QCOMPARE(readFile(bundle + QStringLiteral("/itemsordered.xml")), QByteArray("<plist><dict><key>materials"));
    }

    void shouldResaveToTheSameBytes()
    {
        makeDatabase();
        CliResult result = run({"resave"});
        QCOMPARE(result.code, 0);
        QStringList names{"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"};
        QList<QByteArray> first;
        for (const QString &name : names) {
            QVERIFY2(QFileInfo::exists(bundle + QLatin1Char('/') + name), qPrintable(name));
            first << readFile(bundle + QLatin1Char('/') + name);
        }
        QVERIFY(first.at(0).contains("<string>1 High St &amp; Co</string>"));
        const CliResult stats = run({"stats"});
        QCOMPARE(stats.out,
                 QByteArray("contacts\t2\t4\norders\t1\t7\nitems\t0\t0\nmaterials\t3\t3\nbills\t0\t0\ntasks\t0\t0\n"));
        result = run({"resave"});
        QCOMPARE(result.code, 0);
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(readFile(bundle + QLatin1Char('/') + names.at(i)), first.at(i));
    }

    void shouldRefuseToWriteWhileTheDatabaseIsHeld_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::newRow("resave") << QStringList{"resave"} << 4;
        QTest::newRow("repeat") << QStringList{"repeat"} << 4;
        QTest::newRow("import-legacy") << QStringList{"import-legacy"} << 4;
        QTest::newRow("restore") << QStringList{"restore", "20240101-120000"} << 4;
        QTest::newRow("stats reads") << QStringList{"stats"} << 0;
        QTest::newRow("export reads") << QStringList{"export", "contacts"} << 0;
    }
    void shouldRefuseToWriteWhileTheDatabaseIsHeld()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        makeDatabase();
        const QByteArray before = readFile(bundle + QStringLiteral("/orders.xml"));
        {
            // Held as the running program holds it.
            QLockFile held(bundle + QStringLiteral(".lock"));
            QVERIFY(held.tryLock(0));
            const CliResult result = run(arguments);
            QCOMPARE(result.code, code);
            if (code == 4) {
                QVERIFY(result.err.contains("is open in Quorvel"));
                QCOMPARE(result.err.count('\n'), 1);
                QCOMPARE(readFile(bundle + QStringLiteral("/orders.xml")), before);
                QVERIFY(!QFileInfo::exists(support + QStringLiteral("/Quorvel/Backups")));
            }
        }
        // Let go, the same command writes.
        if (arguments.first() == QLatin1String("resave"))
            QCOMPARE(run(arguments).code, 0);
    }

    void shouldListAndRestoreBackups()
    {
        makeDatabase();
        // The first write of a run keeps the files as they were.
        const QByteArray kept = readFile(bundle + QStringLiteral("/contacts.xml"));
        QCOMPARE(run({"resave"}).code, 0);
        QVERIFY(readFile(bundle + QStringLiteral("/contacts.xml")) != kept);
        CliResult listed = run({"backups"});
        QCOMPARE(listed.code, 0);
        QStringList lines = QString::fromUtf8(listed.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1);
        const QStringList first = lines.first().split(QLatin1Char('\t'));
        QCOMPARE(first.size(), 3);
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{8}-\\d{6}$")).match(first.at(0)).hasMatch());
        QVERIFY2(first.at(2).contains(QStringLiteral("contacts 2")) && first.at(2).contains(QStringLiteral("orders 1")),
                 qPrintable(first.at(2)));
        // A change after it, then the backup put back.
        writeFile(bundle + QStringLiteral("/contacts.xml"), plistOf("contacts", {{{"id", "1"}, {"name", "Zed"}}}));
        const CliResult restored = run({"restore", first.at(0)});
        QCOMPARE(restored.code, 0);
        QCOMPARE(readFile(bundle + QStringLiteral("/contacts.xml")), kept);
        QVERIFY(restored.out.contains("the files it replaced are kept as the backup"));
        // The replaced files are a backup of their own.
        QCOMPARE(QString::fromUtf8(run({"backups"}).out).count(QLatin1Char('\n')), 2);
        // Names that are no backup, or lead out of the folder, are refused.
        for (const char *name : {"..", "../Quorvel", "/etc", "20990101-000000"}) {
            const CliResult refused = run({"restore", QString::fromLatin1(name)});
            QCOMPARE(refused.code, 1);
            QVERIFY2(refused.err.contains("nothing restored"), name);
        }
        QCOMPARE(readFile(bundle + QStringLiteral("/contacts.xml")), kept);
    }
};

QUORVEL_TEST(CommandLineTest)
#include "CommandLineTest.moc"
