// One stationery document filled for one order: what setOrder reads and
// shows, a stationery name that cannot be read or would leave its folder,
// the toolbar, printing, saving as PDF and e-mailing through the program's
// seams.
#include "FakeServices.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "contacts/Contact.h"
#include "orders/BOMManager.h"
#include "orders/CustomInvoiceController.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/Stationery.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>

using testlib::TestEnvironment;

namespace {

// Order 12 of Jane, with two lines, and a stationery document "Letter".
struct Invoicing
{
    testlib::FakeServices services;
    BOMManager bom{&services};
    std::shared_ptr<Contact> jane = std::make_shared<Contact>();
    std::shared_ptr<Order> order = std::make_shared<Order>();
    CustomInvoiceController invoice{&services};

    Invoicing()
    {
        services.bom = &bom;
        jane->setName(QStringLiteral("Jane van Dijk"));
        jane->setEmail(QStringLiteral(" jane@example.org "));
        order->setID(12);
        order->setOrderNum(QStringLiteral("INV12"));
        order->setTitle(QStringLiteral("Panels"));
        order->setValueWithTax(QStringLiteral("130.00"));
        order->setIncludeBOM(true);
        order->setContact(jane.get());
        for (const char *item : {"Bolt", "Labour"}) {
            auto line = Material::withOrder(12);
            line->setItem(QLatin1String(item));
            bom.add(line);
        }
        bom.add(Material::withOrder(13));
        services.setCurrentOrder(12);
        bom.setCurrentOrder(12);
        QDir().mkpath(stationery::folder());
        testlib::writeFile(stationery::documentPath(QStringLiteral("Letter")) + QStringLiteral("/TXT.rtf"),
                           "{\\rtf1\\ansi Dear <contactname>,\\par <title> for <total>\\par <itemsordered>\\par}");
        invoice.window->setConnected(true);
    }
    void open(const QString &stationeryName = QStringLiteral("Letter"))
    {
        invoice.setWhichStationary(stationeryName);
        invoice.setbomDataSource(&bom);
        invoice.setOrder(order);
    }
    QString text() const { return invoice.invoiceTextView->toPlainText(); }
};

}  // namespace

class CustomInvoiceControllerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearDiagnostics();
        TestEnvironment::current().clearAlerts();
    }
    void cleanup() { QDir(TestEnvironment::current().supportDir()).removeRecursively(); }

    void shouldFillTheChosenStationeryAndShowIt()
    {
        Invoicing invoicing;
        invoicing.open();
        QVERIFY(invoicing.text().startsWith(QStringLiteral("Dear Jane van Dijk,\nPanels for 130.00\n")));
        QTextTable *table = invoicing.invoice.invoiceTextView->find(QStringLiteral("Labour")).currentTable();
        QVERIFY(table);
        QCOMPARE(table->rows(), 3);  // the headings and this order's two lines
        QVERIFY(invoicing.invoice.window->isVisible());
        QCOMPARE(invoicing.invoice.window->title(), QStringLiteral("Letter"));
        QVERIFY(!invoicing.invoice.invoiceTextView->isModified());
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());
    }

    void shouldSayWhenTheStationeryCannotBeRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("Quote");
        QTest::newRow("outside the folder") << QStringLiteral("../../secret");
        QTest::newRow("none chosen") << QString();
    }
    void shouldSayWhenTheStationeryCannotBeRead()
    {
        QFETCH(QString, name);
        // A document where the name outside the folder would lead.
        testlib::writeFile(stationery::folder() + QStringLiteral("/../../secret.rtfd/TXT.rtf"), "{\\rtf1 secret}");
        Invoicing invoicing;
        invoicing.open(name);
        QVERIFY(!invoicing.invoice.problem().isEmpty());
        QVERIFY(!invoicing.text().contains(QStringLiteral("secret")));
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QVERIFY(TestEnvironment::current().alertsShown().first().message.contains(QStringLiteral("could not be read")));
    }

    void shouldOfferPrintSaveAsPdfAndEmailInItsToolbar()
    {
        Invoicing invoicing;
        CustomInvoiceController &invoice = invoicing.invoice;
        const QString toolbar = QStringLiteral("quorvelCustomInvoiceToolBar");
        QCOMPARE(invoice.toolbarAllowedItemIdentifiers(toolbar),
                 (QStringList{"printItemIdentifier", "pdfItemIdentifier", "emailItemIdentifier"}));
        QCOMPARE(invoice.toolbarDefaultItemIdentifiers(toolbar), invoice.toolbarAllowedItemIdentifiers(toolbar));
        QVERIFY(invoice.toolbarAllowedItemIdentifiers(QStringLiteral("quorvelLiteMainToolBar")).isEmpty());
        const ToolbarItem print = invoice.toolbarItemForItemIdentifier(QStringLiteral("printItemIdentifier"));
        QCOMPARE(print.label, QStringLiteral("Print"));
        QCOMPARE(print.image, QStringLiteral("print"));
        QVERIFY(print.action);

        invoice.imageExists = [](const QString &name) { return name != QLatin1String("print"); };
        const ToolbarItem missing = invoice.toolbarItemForItemIdentifier(QStringLiteral("printItemIdentifier"));
        QVERIFY(missing.label.isEmpty() && missing.image.isEmpty() && !missing.action);
        QCOMPARE(TestEnvironment::current().standardOutputText(), QStringLiteral("Image print not found.\n"));
    }

    void shouldPrintTheDocumentAsItStands()
    {
        Invoicing invoicing;
        invoicing.open();
        QTextCursor(invoicing.invoice.invoiceTextView).insertText(QStringLiteral("PAID "));
        QString printed;
        invoicing.invoice.printDocument = [&printed](QTextDocument &document) { printed = document.toPlainText(); };
        invoicing.invoice.print();
        QVERIFY(printed.startsWith(QStringLiteral("PAID Dear Jane van Dijk")));
    }

    void shouldSaveAPdfWhereTheUserChooses()
    {
        Invoicing invoicing;
        invoicing.open();
        const QString path = TestEnvironment::current().root() + QStringLiteral("/out/invoice");
        QDir().mkpath(QFileInfo(path).path());
        TestEnvironment::current().scriptFilePanelAnswers({path});
        QVERIFY(invoicing.invoice.saveAsPDF());
        QCOMPARE(TestEnvironment::current().filePanelsShown().first().suggestedName, QStringLiteral("INV12.pdf"));
        QVERIFY(testlib::readFile(path + QStringLiteral(".pdf")).startsWith("%PDF-"));
        // Cancelled: nothing written.
        QVERIFY(!invoicing.invoice.saveAsPDF());
    }

    void shouldKeepTheEmailedPdfWithTheOrderAndOpenAMessage()
    {
        Invoicing invoicing;
        QList<int> added;
        invoicing.invoice.onAttachmentAdded = [&added](int orderId) { added << orderId; };
        invoicing.open();
        const QString first = invoicing.invoice.email();
        const QString second = invoicing.invoice.email();
        const QString folder = OrderManager::attachmentFolder(12);
        QCOMPARE(first, folder + QStringLiteral("/INV12.pdf"));
        QCOMPARE(second, folder + QStringLiteral("/INV12 2.pdf"));
        QVERIFY(testlib::readFile(first).startsWith("%PDF-"));
        QCOMPARE(added, (QList<int>{12, 12}));
        const QList<platform::EmailMessage> &messages = TestEnvironment::current().composedEmails();
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages.first().to, QStringLiteral("jane@example.org"));
        QCOMPARE(messages.first().subject, QStringLiteral("Letter INV12"));
        QCOMPARE(messages.first().attachment, first);
    }

    void shouldNameThePdfAfterTheOrderWithoutLeavingTheFolder_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("file");
        QTest::newRow("plain") << QStringLiteral("INV12") << QStringLiteral("INV12.pdf");
        QTest::newRow("separators") << QStringLiteral("../2026/12") << QStringLiteral("2026 12.pdf");
        QTest::newRow("none") << QStringLiteral("") << QStringLiteral("Order 12.pdf");
    }
    void shouldNameThePdfAfterTheOrderWithoutLeavingTheFolder()
    {
        QFETCH(QString, number);
        QFETCH(QString, file);
        Invoicing invoicing;
        invoicing.order->setOrderNum(number);
        invoicing.open();
        QCOMPARE(invoicing.invoice.pdfFileName(), file);
        QCOMPARE(QFileInfo(invoicing.invoice.email()).path(), OrderManager::attachmentFolder(12));
    }
};

QUORVEL_TEST(CustomInvoiceControllerTest)
#include "CustomInvoiceControllerTest.moc"
