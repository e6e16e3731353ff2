// quorvel-cli invoice: the real program fills an order's stationery (or the
// plain sheet) with no display at all, writes a PDF whose text holds the
// order's values and lines, or RTF or plain text, and says clearly what it
// cannot find.
#include "CliRun.h"
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include <QDir>
#include <QProcess>
#include <QTest>

using testlib::CliResult;
using testlib::plistOf;

class InvoiceCommandTest : public QObject
{
    Q_OBJECT

    QString support;

    CliResult run(const QStringList &arguments, const QStringList &unset = {}) const
    {
        return testlib::runCli(QStringList{QStringLiteral("--data-dir"), support} + arguments,
                               testlib::TestEnvironment::current().homeDir(), unset);
    }
    QString bundle(const QString &file) const
    {
        return support + QStringLiteral("/Quorvel/quorveldatabase.qvldb/") + file;
    }
    static QString pdfText(const QString &path)
    {
        QProcess pdftotext;
        pdftotext.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
        return pdftotext.waitForFinished(30000) ? QString::fromUtf8(pdftotext.readAllStandardOutput()) : QString();
    }

private Q_SLOTS:
    void init()
    {
        support = testlib::TestEnvironment::current().root() + QStringLiteral("/cli-support");
        QDir(support).removeRecursively();
        QVERIFY(testlib::writeFile(
            bundle(QStringLiteral("contacts.xml")),
            plistOf("contacts", {{{"id", "1"}, {"name", "Ann Lee"}, {"add1", "4 High St"}, {"postcode", "AB1 2CD"}}})));
        QVERIFY(testlib::writeFile(bundle(QStringLiteral("orders.xml")),
                                   plistOf("orders",
                                           {{{"id", "7"},
                                             {"contact", "1"},
                                             {"ordernum", "INV7"},
                                             {"title", "Garden wall"},
                                             {"value", "100.00"},
                                             {"valuewithtax", "117.50"},
                                             {"balance", "117.50"},
                                             {"includeBOM", "YES"}},
                                            {{"id", "8"}, {"ordernum", "INV8"}, {"title", "Gate"}}})));
        QVERIFY(testlib::writeFile(
            bundle(QStringLiteral("itemsordered.xml")),
            plistOf("materials",
                    {{{"id", "1"}, {"order", "7"}, {"item", "Sandstone block"}, {"qty", "40"}, {"total", "80.00"}},
                     {{"id", "2"}, {"order", "8"}, {"item", "Hinge"}}})));
    }

    void shouldWriteAPdfWithTheOrderAndItsLinesWithoutADisplay()
    {
        const QString pdf = testlib::TestEnvironment::current().root() + QStringLiteral("/inv7.pdf");
        const CliResult result
            = run({QStringLiteral("invoice"), QStringLiteral("INV7"), QStringLiteral("--output"), pdf},
                  {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("DISPLAY"), QStringLiteral("WAYLAND_DISPLAY")});
        QCOMPARE(result.code, 0);
        QVERIFY(testlib::readFile(pdf).startsWith("%PDF-"));
        const QString text = pdfText(pdf);
        for (const char *shown :
             {"INVOICE", "Ann Lee", "4 High St", "INV7", "Garden wall", "117.50", "Sandstone block"})
            QVERIFY2(text.contains(QLatin1String(shown)), qPrintable(QStringLiteral("%1 in:\n%2").arg(shown, text)));
        QVERIFY(!text.contains(QStringLiteral("Hinge")));
        QVERIFY(!text.contains(QLatin1Char('<')));
    }

    void shouldWriteTheFormatAskedOrThatOfTheOutput_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("starts");
        QTest::addColumn<QByteArray>("holds");
        QTest::newRow("text") << QStringList{"INV7", "--format", "txt"} << QByteArray() << QByteArray("Garden wall");
        QTest::newRow("rtf") << QStringList{"--id", "7", "--format", "rtf"} << QByteArray("{\\rtf1")
                             << QByteArray("Sandstone block");
        QTest::newRow("reminder") << QStringList{"INV7", "--stationery", "Reminder", "--format", "txt"} << QByteArray()
                                  << QByteArray("PAYMENT REMINDER");
        QTest::newRow("plain sheet") << QStringList{"INV7", "--sheet", "--format", "txt"} << QByteArray()
                                     << QByteArray("Ann Lee\n4 High St");
    }
    void shouldWriteTheFormatAskedOrThatOfTheOutput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, starts);
        QFETCH(QByteArray, holds);
        const CliResult result = run(QStringList{QStringLiteral("invoice")} + arguments);
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.startsWith(starts));
        QVERIFY2(result.out.contains(holds), result.out.constData());
    }

    void shouldFollowTheOutputsExtension()
    {
        const QString text = testlib::TestEnvironment::current().root() + QStringLiteral("/inv7.txt");
        QCOMPARE(run({QStringLiteral("invoice"), QStringLiteral("INV7"), QStringLiteral("--output"), text}).code, 0);
        QVERIFY(testlib::readFile(text).contains("Garden wall"));
    }

    void shouldSayWhatItCannotFind_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("unknown order") << QStringList{"INV99"} << 1 << QByteArray("no order numbered \"INV99\"");
        QTest::newRow("unknown id") << QStringList{"--id", "99"} << 1 << QByteArray("no order with the id 99");
        QTest::newRow("unknown stationery") << QStringList{"INV7", "--stationery", "Quote"} << 1
                                            << QByteArray("no stationery \"Quote\"; there is: Invoice, Reminder");
        QTest::newRow("a path for stationery")
            << QStringList{"INV7", "--stationery", "../../etc/passwd"} << 1 << QByteArray("not a name of stationery");
        QTest::newRow("no order") << QStringList{} << 2 << QByteArray("invoice needs one ORDER");
        QTest::newRow("both") << QStringList{"INV7", "--id", "7"} << 2 << QByteArray("not both");
        QTest::newRow("bad id") << QStringList{"--id", "seven"} << 2 << QByteArray("--id needs");
        QTest::newRow("bad format") << QStringList{"INV7", "--format", "doc"} << 2 << QByteArray("unknown format");
        QTest::newRow("sheet and stationery")
            << QStringList{"INV7", "--sheet", "--stationery", "Invoice"} << 2 << QByteArray("takes no --stationery");
    }
    void shouldSayWhatItCannotFind()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        QFETCH(QByteArray, said);
        const CliResult result = run(QStringList{QStringLiteral("invoice")} + arguments);
        QCOMPARE(result.code, code);
        QVERIFY2(result.err.contains(said), result.err.constData());
        QVERIFY(result.out.isEmpty());
    }

    void shouldStillPrintWhenAFileOfTheDatabaseCannotBeRead()
    {
        QVERIFY(testlib::writeFile(bundle(QStringLiteral("bills.xml")), "<plist><dict><key>bills"));
        const CliResult result = run(
            {QStringLiteral("invoice"), QStringLiteral("INV7"), QStringLiteral("--format"), QStringLiteral("txt")});
        QCOMPARE(result.code, 3);
        QVERIFY(result.out.contains("Garden wall"));
        QVERIFY(result.err.contains("bills.xml"));
    }
};

QUORVEL_TEST(InvoiceCommandTest)
#include "InvoiceCommandTest.moc"
