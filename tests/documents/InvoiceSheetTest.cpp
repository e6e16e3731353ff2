// The plain invoice sheet: the address block without the company, the
// figures with the currency (shipping without it), an empty figure leaving
// its field as it was, the header and footer files, and the sheet as it
// prints.
#include "FakeServices.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "orders/BOMManager.h"
#include "orders/Invoice.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/Stationery.h"
#include "platform/Paths.h"
#include "platform/outlets/TextField.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QTest>
#include <QTextDocument>

using testlib::TestEnvironment;

namespace {

std::shared_ptr<Order> anOrder(const QString &value, const QString &deposit, const QString &balance)
{
    auto order = std::make_shared<Order>();
    order->setID(12);
    order->setTitle(QStringLiteral("Panels"));
    order->setValue(value);
    order->setDeposit(deposit);
    order->setBalance(balance);
    order->setShipping(QStringLiteral("12.50"));
    order->setDepositPaid(QStringLiteral("16/01/26"));
    return order;
}

}  // namespace

class InvoiceSheetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QDir(platform::paths::quorvelDir()).removeRecursively(); }

    void shouldFillTheSheetFromTheOrderAndItsContact()
    {
        testlib::FakeServices services;
        ContactManager contacts(&services);
        services.contacts = &contacts;
        auto company = std::make_shared<Contact>();
        company->setName(QStringLiteral("Dijk Panels"));
        company->setKind(QStringLiteral("Company"));
        contacts.add(company);
        auto person = std::make_shared<Contact>();
        person->setName(QStringLiteral("Jane van Dijk"));
        person->setKind(QStringLiteral("Company Contact"));
        person->setCompany(company->getID());
        person->setAdd1(QStringLiteral("1 Mill Lane"));
        person->setAdd3(QStringLiteral("Kent"));
        person->setPostcode(QStringLiteral("DA5 1AA"));
        contacts.add(person);
        services.getPrefsController()->currencyField->setStringValue(QStringLiteral("£"));

        Invoice sheet(&services);
        sheet.setDetailsForThisOrder(
            anOrder(QStringLiteral("100.00"), QStringLiteral("10.00"), QStringLiteral("102.50")).get(), person.get());
        // Every line of the address, empty ones kept; never the company.
        QCOMPARE(sheet.billingAddress->stringValue(), QStringLiteral("Jane van Dijk\n1 Mill Lane\n\nKent\nDA5 1AA\n"));
        QCOMPARE(sheet.invoiceTitle->stringValue(), QStringLiteral("Panels"));
        QCOMPARE(sheet.fullValue->stringValue(), QStringLiteral("£100.00"));
        QCOMPARE(sheet.depositAmount->stringValue(), QStringLiteral("£10.00"));
        QCOMPARE(sheet.balanceAmount->stringValue(), QStringLiteral("£102.50"));
        QCOMPARE(sheet.shipping->stringValue(), QStringLiteral("12.50"));
        QCOMPARE(sheet.depositPaid->stringValue(), QStringLiteral("16/01/26"));
        QCOMPARE(sheet.fullValueWithTax->stringValue(), QStringLiteral(""));

        // An order with empty figures leaves the last order's in place.
        sheet.setDetailsForThisOrder(anOrder(QStringLiteral(""), QStringLiteral(""), QStringLiteral("")).get(),
                                     person.get());
        QCOMPARE(sheet.fullValue->stringValue(), QStringLiteral("£100.00"));
        QCOMPARE(sheet.balanceAmount->stringValue(), QStringLiteral("£102.50"));
    }

    void shouldPrintTheHeaderTheFiguresTheLinesAndTheFooter()
    {
        testlib::FakeServices services;
        BOMManager bom(&services);
        services.bom = &bom;
        auto line = Material::withOrder(12);
        line->setItem(QStringLiteral("Bolt"));
        bom.add(line);
        services.setCurrentOrder(12);
        bom.setCurrentOrder(12);
        testlib::writeFile(platform::paths::quorvelDir() + QStringLiteral("/invoiceHeader.rtf"),
                           "{\\rtf1\\ansi Smith & Sons, Builders}");

        Invoice sheet(&services);
        sheet.setDataSource(&bom);
        sheet.setDetailsForThisOrder(
            anOrder(QStringLiteral("100.00"), QStringLiteral("10.00"), QStringLiteral("102.50")).get(), nullptr);
        QString printed;
        sheet.printDocument = [&printed](QTextDocument &document) { printed = document.toPlainText(); };
        sheet.print();
        const qsizetype header = printed.indexOf(QStringLiteral("Smith & Sons, Builders"));
        const qsizetype title = printed.indexOf(QStringLiteral("Panels"));
        const qsizetype balance = printed.indexOf(QStringLiteral("102.50"));
        const qsizetype lines = printed.indexOf(QStringLiteral("Bolt"));
        const qsizetype footer = printed.indexOf(QStringLiteral("Payment terms"));
        QVERIFY2(header == 0 && header < title && title < balance && balance < lines && lines < footer,
                 qPrintable(printed));
        // The header the user wrote is left alone; the footer was made once.
        QVERIFY(!QFileInfo::exists(platform::paths::quorvelDir() + QStringLiteral("/invoiceHeader.rtfd")));
        QCOMPARE(stationery::footerPath(), platform::paths::quorvelDir() + QStringLiteral("/invoiceFooter.rtfd"));
    }

    void shouldOpenTheHeaderAndFooterForEditing()
    {
        testlib::FakeServices services;
        Invoice sheet(&services);
        TestEnvironment::current().clearDiagnostics();
        sheet.editInvoiceHeader();
        sheet.editInvoiceFooter();
        QCOMPARE(TestEnvironment::current().openedFiles(),
                 (QStringList{platform::paths::quorvelDir() + QStringLiteral("/invoiceHeader.rtfd"),
                              platform::paths::quorvelDir() + QStringLiteral("/invoiceFooter.rtfd")}));
    }
};

QUORVEL_TEST(InvoiceSheetTest)
#include "InvoiceSheetTest.moc"
