// quorvel-cli import-legacy and import-contacts, run as a user runs them.
#include "CliRun.h"
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include <QDir>
#include <QTest>

using testlib::CliResult;
using testlib::TestEnvironment;

class ImportCommandsTest : public QObject
{
    Q_OBJECT

    QString support;

    CliResult run(const QStringList &arguments) const
    {
        return testlib::runCli(QStringList{QStringLiteral("--data-dir"), support} + arguments,
                               TestEnvironment::current().homeDir());
    }
    QString bundleFile(const QString &name) const
    {
        return support + QStringLiteral("/Quorvel/quorveldatabase.qvldb/") + name;
    }
    QString file(const QString &name, const QByteArray &bytes) const
    {
        const QString path = TestEnvironment::current().root() + QLatin1Char('/') + name;
        testlib::writeFile(path, bytes);
        return path;
    }

private Q_SLOTS:
    void init()
    {
        support = TestEnvironment::current().root() + QStringLiteral("/cli-support");
        QDir(support).removeRecursively();
    }

    void shouldImportAFirstGenerationDatabaseAndKeepTheOldOne()
    {
        testlib::writeFile(bundleFile(QStringLiteral("contacts.xml")),
                           testlib::plistOf("contacts", {{{"id", "1"}, {"name", "Current"}}}));
        const QString legacy = file(QStringLiteral("legacy.xml"),
                                    "<q><contacts><contact><id>7</id><name>Old Ann</name></contact></contacts>"
                                    "<orders><order><id>3</id><contactId>7</contactId></order></orders></q>");
        const CliResult result = run({QStringLiteral("import-legacy"), legacy});
        QCOMPARE(result.code, 0);
        QVERIFY2(result.out.contains("contacts\t1\norders\t1\t(1 linked to their contact)"), result.out.constData());
        QVERIFY(result.out.contains("the database as it was is kept in"));
        QVERIFY(testlib::readFile(bundleFile(QStringLiteral("contacts.xml"))).contains("Old Ann"));
        QVERIFY(testlib::readFile(bundleFile(QStringLiteral("orders.xml"))).contains("<string>7</string>"));
        const QStringList kept = QDir(support + QStringLiteral("/Quorvel"))
                                     .entryList({QStringLiteral("quorveldatabase.qvldb.before-import-*")}, QDir::Dirs);
        QCOMPARE(kept.size(), 1);
        QVERIFY(
            testlib::readFile(support + QStringLiteral("/Quorvel/") + kept.first() + QStringLiteral("/contacts.xml"))
                .contains("Current"));
    }

    void shouldSayWhatItCannotImport_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("no legacy file") << QStringList{"import-legacy"} << 1
                                        << QByteArray("no first-generation database at");
        QTest::newRow("two legacy files") << QStringList{"import-legacy", "a", "b"} << 2 << QByteArray("one FILE");
        QTest::newRow("no csv file") << QStringList{"import-contacts", "missing.csv"} << 1 << QByteArray("no file");
        QTest::newRow("no file named") << QStringList{"import-contacts"} << 2 << QByteArray("needs one FILE.csv");
    }
    void shouldSayWhatItCannotImport()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        QFETCH(QByteArray, said);
        const CliResult result = run(arguments);
        QCOMPARE(result.code, code);
        QVERIFY2(result.err.contains(said), result.err.constData());
    }

    void shouldImportContactsWithTheColumnsAsked()
    {
        const QString csv
            = file(QStringLiteral("people.csv"), "Name,Phone,Memo\nJo Park,0123,likes tea\n,,\nSam Lee,0456,\n");
        const CliResult dry = run({QStringLiteral("import-contacts"), csv, QStringLiteral("--dry-run")});
        QCOMPARE(dry.code, 0);
        QVERIFY2(dry.out.contains("columns\tName=name,Phone=phone,Memo=ignore"), dry.out.constData());
        QVERIFY(dry.out.contains("2 contacts imported\n1 empty rows skipped"));
        QVERIFY(dry.out.contains("nothing was written"));
        QVERIFY(!QFileInfo::exists(bundleFile(QStringLiteral("contacts.xml"))));

        const CliResult result = run({QStringLiteral("import-contacts"), csv, QStringLiteral("--map"),
                                      QStringLiteral("memo=comments,2=mobile")});
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.contains("columns\tName=name,Phone=mobile,Memo=comments"));
        const QByteArray written = testlib::readFile(bundleFile(QStringLiteral("contacts.xml")));
        QVERIFY(written.contains("<string>likes tea</string>") && written.contains("<key>mobile</key>"));
    }

    void shouldRefuseABadMapOrFile_data()
    {
        QTest::addColumn<QStringList>("extra");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("unknown field") << QStringList{"--map", "Name=birthday"} << QByteArray("Name\nJo\n") << 2
                                       << QByteArray("unknown contact field");
        QTest::newRow("unknown column") << QStringList{"--map", "Fax=fax"} << QByteArray("Name\nJo\n") << 2
                                        << QByteArray("no column \"Fax\"");
        QTest::newRow("not a pair") << QStringList{"--map", "Name"} << QByteArray("Name\nJo\n") << 2
                                    << QByteArray("COLUMN=FIELD");
        QTest::newRow("binary file") << QStringList{}
                                     << QByteArray("\x7f"
                                                   "ELF\x02\x01\x01\0\0\0",
                                                   10)
                                     << 1 << QByteArray("not a text file");
        QTest::newRow("quote never closed")
            << QStringList{} << QByteArray("Name\n\"Jo\n") << 1 << QByteArray("never closed");
    }
    void shouldRefuseABadMapOrFile()
    {
        QFETCH(QStringList, extra);
        QFETCH(QByteArray, bytes);
        QFETCH(int, code);
        QFETCH(QByteArray, said);
        const QString csv = file(QStringLiteral("bad.csv"), bytes);
        const CliResult result = run(QStringList{QStringLiteral("import-contacts"), csv} + extra);
        QCOMPARE(result.code, code);
        QVERIFY2((result.err + result.out).contains(said), (result.err + result.out).constData());
        QVERIFY(!QFileInfo::exists(bundleFile(QStringLiteral("contacts.xml"))));
    }
};

QUORVEL_TEST(ImportCommandsTest)
#include "ImportCommandsTest.moc"
