// The stationery folder: what installing puts there and never overwrites,
// which documents the order editor offers, the names that cannot leave the
// folder, and the plain invoice sheet's header and footer files.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "orders/Stationery.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using testlib::TestEnvironment;

namespace {

QString support(const QString &name)
{
    return platform::paths::quorvelDir() + QLatin1Char('/') + name;
}

// A package of one TXT.rtf holding the text.
void writePackage(const QString &path, const QByteArray &text)
{
    testlib::writeFile(path + QStringLiteral("/TXT.rtf"), "{\\rtf1\\ansi " + text + "}");
}

QByteArray packageText(const QString &path)
{
    return testlib::readFile(path + QStringLiteral("/TXT.rtf"));
}

}  // namespace

class StationeryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QDir(platform::paths::quorvelDir()).removeRecursively(); }

    void shouldInstallTheShippedDocumentsWritableWhenTheFolderIsNew()
    {
        QVERIFY(stationery::install());
        QCOMPARE(stationery::names(), (QStringList{"Invoice", "Reminder"}));
        const QString invoice = stationery::documentPath(QStringLiteral("Invoice")) + QStringLiteral("/TXT.rtf");
        QVERIFY(packageText(stationery::documentPath(QStringLiteral("Invoice"))).contains("<itemsordered>"));
        QVERIFY(packageText(stationery::documentPath(QStringLiteral("Reminder"))).contains("<balance>"));
        // The user edits them in place.
        QVERIFY(QFileInfo(invoice).isWritable());
    }

    void shouldCarryTheCustomInvoiceOverOnceAndKeepTheUsersEdits()
    {
        writePackage(support(QStringLiteral("customInvoice.rtfd")), "my own invoice");
        QVERIFY(stationery::install());
        const QString invoice = stationery::documentPath(QStringLiteral("Invoice"));
        QVERIFY(packageText(invoice).contains("my own invoice"));

        testlib::writeFile(invoice + QStringLiteral("/TXT.rtf"), "{\\rtf1 edited since}");
        QVERIFY(QDir(stationery::documentPath(QStringLiteral("Reminder"))).removeRecursively());
        QVERIFY(stationery::install());
        QCOMPARE(packageText(invoice), QByteArray("{\\rtf1 edited since}"));
        // A document the user threw away comes back.
        QVERIFY(QFileInfo::exists(stationery::documentPath(QStringLiteral("Reminder"))));
    }

    void shouldOfferEveryDocumentTheUserAddsButHiddenOnes()
    {
        QVERIFY(stationery::install());
        writePackage(stationery::documentPath(QStringLiteral("Quote")), "quote");
        writePackage(stationery::documentPath(QStringLiteral("Delivery Note")), "note");
        testlib::writeFile(stationery::folder() + QStringLiteral("/.DS_Store"), "x");
        writePackage(stationery::folder() + QStringLiteral("/.hidden.rtfd"), "x");
        QCOMPARE(stationery::names(), (QStringList{"Delivery Note", "Invoice", "Quote", "Reminder"}));
    }

    void shouldRefuseNamesThatLeaveTheFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("safe");
        QTest::newRow("a document") << QStringLiteral("Invoice") << true;
        QTest::newRow("with spaces and dots") << QStringLiteral("Invoice v2.1 (final)") << true;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("parent") << QStringLiteral("..") << false;
        QTest::newRow("itself") << QStringLiteral(".") << false;
        QTest::newRow("a path up") << QStringLiteral("../../etc/passwd") << false;
        QTest::newRow("absolute") << QStringLiteral("/etc/passwd") << false;
        QTest::newRow("backslash") << QStringLiteral("..\\x") << false;
        QTest::newRow("NUL") << QStringLiteral("In") + QChar(0) + QStringLiteral("voice") << false;
    }
    void shouldRefuseNamesThatLeaveTheFolder()
    {
        QFETCH(QString, name);
        QFETCH(bool, safe);
        QCOMPARE(stationery::isSafeName(name), safe);
    }

    void shouldPreferTheSingleFileHeaderAndNeverCopyBesideIt()
    {
        testlib::writeFile(support(QStringLiteral("invoiceHeader.rtf")), "{\\rtf1 my header}");
        stationery::createHeaderAndFooterIfNecessary();
        QCOMPARE(stationery::headerPath(), support(QStringLiteral("invoiceHeader.rtf")));
        QVERIFY(!QFileInfo::exists(support(QStringLiteral("invoiceHeader.rtfd"))));
        QCOMPARE(testlib::readFile(support(QStringLiteral("invoiceHeader.rtf"))), QByteArray("{\\rtf1 my header}"));
        // The footer had neither form: the shipped one is copied once.
        QCOMPARE(stationery::footerPath(), support(QStringLiteral("invoiceFooter.rtfd")));
        QVERIFY(!packageText(support(QStringLiteral("invoiceFooter.rtfd"))).isEmpty());
        testlib::writeFile(support(QStringLiteral("invoiceFooter.rtfd/TXT.rtf")), "{\\rtf1 mine}");
        stationery::createHeaderAndFooterIfNecessary();
        QCOMPARE(packageText(support(QStringLiteral("invoiceFooter.rtfd"))), QByteArray("{\\rtf1 mine}"));
    }

    void shouldCopyAPackageWholeOrNotAtAll()
    {
        const QString from = TestEnvironment::current().root() + QStringLiteral("/from.rtfd");
        testlib::writeFile(from + QStringLiteral("/TXT.rtf"), "text");
        testlib::writeFile(from + QStringLiteral("/pictures/a.png"), "png");
        const QString to = TestEnvironment::current().root() + QStringLiteral("/to.rtfd");
        QVERIFY(stationery::copyPackage(from, to));
        QCOMPARE(testlib::readFile(to + QStringLiteral("/pictures/a.png")), QByteArray("png"));
        // Never over something already there, and never from nothing.
        QVERIFY(!stationery::copyPackage(from, to));
        QVERIFY(!stationery::copyPackage(from + QStringLiteral("-missing"), to + QStringLiteral("2")));
        QVERIFY(!QFileInfo::exists(to + QStringLiteral("2")));
    }
};

QUORVEL_TEST(StationeryTest)
#include "StationeryTest.moc"
