// The documents the program ships read back whole through its own codec and
// carry the placeholders a business's documents need.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "platform/richtext/RichTextFile.h"

#include <QSet>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>

class ShippedStationeryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldReadBackWholeWithTheirPlaceholders_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("placeholders");
        QTest::addColumn<int>("tables");
        QTest::newRow("Invoice") << QStringLiteral(
            "Invoice") << QStringList{"<contactname>",   "<contactcompany>",  "<contactadd1>", "<contactadd2>",
                                      "<contactadd3>",   "<contactpostcode>", "<ordernumber>", "<date>",
                                      "<paymentmethod>", "<title>",           "<description>", "<itemsordered>",
                                      "<subtotal>",      "<shipping>",        "<taxrate>",     "<tax>",
                                      "<total>",         "<deposit>",         "<depositpaid>", "<balance>"}
                                 << 3;  // the letterhead, the customer and invoice details, the totals
        QTest::newRow("Reminder") << QStringLiteral("Reminder")
                                  << QStringList{"<contactsalutation>", "<contactsurname>", "<contactname>",
                                                 "<ordernumber>",       "<date>",           "<total>",
                                                 "<deposit>",           "<balance>"}
                                  << 2;
        QTest::newRow("header") << QStringLiteral("invoiceHeader") << QStringList{} << 0;
        QTest::newRow("footer") << QStringLiteral("invoiceFooter") << QStringList{} << 0;
    }
    void shouldReadBackWholeWithTheirPlaceholders()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, placeholders);
        QFETCH(int, tables);
        QTextDocument document;
        QString error;
        QStringList skipped;
        QVERIFY2(RichTextFile::load(QStringLiteral(":/core/stationery/%1.rtfd").arg(name), document, &error, &skipped),
                 qPrintable(error));
        QVERIFY2(skipped.isEmpty(), qPrintable(skipped.join(QLatin1Char('\n'))));
        const QString text = document.toPlainText();
        for (const QString &placeholder : placeholders)
            QVERIFY2(text.contains(placeholder), qPrintable(placeholder));
        // A clearly marked place for the business's own name and address.
        QVERIFY(name == QLatin1String("invoiceFooter") || text.contains(QStringLiteral("YOUR BUSINESS NAME")));
        QSet<QTextFrame *> found;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            if (QTextTable *table = QTextCursor(block).currentTable())
                found.insert(table);
        }
        QCOMPARE(int(found.size()), tables);
    }
};

QUORVEL_TEST(ShippedStationeryTest)
#include "ShippedStationeryTest.moc"
