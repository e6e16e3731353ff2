// Filling stationery: every placeholder with its value in the fixed order,
// a contact-less order, the bill of materials as a table at the first
// "<itemsordered>" only, values that hold placeholders (their own one must
// not make filling go on for ever), and what is logged.
#include "TestEnvironment.h"
#include "TestMain.h"
#include "TimeLimits.h"

#include "contacts/Contact.h"
#include "orders/InvoiceFilling.h"
#include "orders/Order.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

using testlib::TestEnvironment;

namespace {

std::shared_ptr<Contact> jane()
{
    auto contact = std::make_shared<Contact>();
    contact->setTitle(QStringLiteral("Ms"));
    contact->setName(QStringLiteral("Jane van Dijk"));
    contact->setCompanyName(QStringLiteral("Dijk Panels"));
    contact->setJobTitle(QStringLiteral("Buyer"));
    contact->setAdd1(QStringLiteral("1 Mill Lane"));
    contact->setAdd2(QStringLiteral("Bexley"));
    contact->setAdd3(QStringLiteral("Kent"));
    contact->setPostcode(QStringLiteral("DA5 1AA"));
    return contact;
}

std::shared_ptr<Order> order12(Contact *contact)
{
    auto order = std::make_shared<Order>();
    order->setOrderNum(QStringLiteral("INV12"));
    order->setBalance(QStringLiteral("117.50"));
    order->setBalancePaid(QStringLiteral("02/02/26"));
    order->setDate(QStringLiteral("15/01/26"));
    order->setDeposit(QStringLiteral("10.00"));
    order->setDepositPaid(QStringLiteral("16/01/26"));
    order->setDescription(QStringLiteral("Two panels"));
    order->setStatus(QStringLiteral("Invoiced"));
    order->setShipping(QStringLiteral("12.50"));
    order->setTax(QStringLiteral("17.50"));
    order->setTaxRate(QStringLiteral("17.50"));
    order->setTitle(QStringLiteral("Panels"));
    order->setType(QStringLiteral("Order"));
    order->setValue(QStringLiteral("100.00"));
    order->setValueWithTax(QStringLiteral("130.00"));
    order->setPaymentMethod(QStringLiteral("card"));
    order->setContact(contact);
    return order;
}

const QString bomHtml = QStringLiteral("<table><tr><th>Item</th><th>Qty</th></tr>"
                                       "<tr><td>Bolt</td><td>3</td></tr><tr><td>Labour</td><td>1</td></tr></table>");

}  // namespace

class InvoiceFillingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { TestEnvironment::current().clearDiagnostics(); }

    void shouldReplaceEveryPlaceholder_data()
    {
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<QString>("withContact");
        QTest::addColumn<QString>("withoutContact");
        QTest::newRow("balance") << "<balance>"
                                 << "117.50"
                                 << "117.50";
        QTest::newRow("balance paid") << "<balancepaid>"
                                      << "02/02/26"
                                      << "02/02/26";
        QTest::newRow("salutation") << "<contactsalutation>"
                                    << "Ms"
                                    << "";
        QTest::newRow("name") << "<contactname>"
                              << "Jane van Dijk"
                              << "";
        QTest::newRow("surname") << "<contactsurname>"
                                 << "Dijk"
                                 << "";
        QTest::newRow("company") << "<contactcompany>"
                                 << "Dijk Panels"
                                 << "";
        QTest::newRow("job title") << "<contactjobtitle>"
                                   << "Buyer"
                                   << "";
        QTest::newRow("add1") << "<contactadd1>"
                              << "1 Mill Lane"
                              << "";
        QTest::newRow("add2") << "<contactadd2>"
                              << "Bexley"
                              << "";
        QTest::newRow("add3") << "<contactadd3>"
                              << "Kent"
                              << "";
        QTest::newRow("postcode") << "<contactpostcode>"
                                  << "DA5 1AA"
                                  << "";
        QTest::newRow("date") << "<date>"
                              << "15/01/26"
                              << "15/01/26";
        QTest::newRow("deposit") << "<deposit>"
                                 << "10.00"
                                 << "10.00";
        QTest::newRow("deposit paid") << "<depositpaid>"
                                      << "16/01/26"
                                      << "16/01/26";
        QTest::newRow("description") << "<description>"
                                     << "Two panels"
                                     << "Two panels";
        QTest::newRow("number") << "<ordernumber>"
                                << "INV12"
                                << "INV12";
        QTest::newRow("status") << "<status>"
                                << "Invoiced"
                                << "Invoiced";
        QTest::newRow("shipping") << "<shipping>"
                                  << "12.50"
                                  << "12.50";
        QTest::newRow("tax amount") << "<tax>"
                                    << "17.50"
                                    << "17.50";
        QTest::newRow("tax rate") << "<taxrate>"
                                  << "17.50"
                                  << "17.50";
        QTest::newRow("title") << "<title>"
                               << "Panels"
                               << "Panels";
        QTest::newRow("type") << "<type>"
                              << "Order"
                              << "Order";
        // The net value, and the stored total (value, tax and shipping).
        QTest::newRow("subtotal") << "<subtotal>"
                                  << "100.00"
                                  << "100.00";
        QTest::newRow("total") << "<total>"
                               << "130.00"
                               << "130.00";
        QTest::newRow("payment method") << "<paymentmethod>"
                                        << "card"
                                        << "card";
    }
    void shouldReplaceEveryPlaceholder()
    {
        QFETCH(QString, placeholder);
        QFETCH(QString, withContact);
        QFETCH(QString, withoutContact);
        const auto contact = jane();
        for (Contact *linked : {contact.get(), static_cast<Contact *>(nullptr)}) {
            const auto order = order12(linked);
            QTextDocument document;
            document.setPlainText(QStringLiteral("[%1] and [%1]").arg(placeholder));
            invoices::fill(document, *order, linked, bomHtml);
            const QString value = linked ? withContact : withoutContact;
            QCOMPARE(document.toPlainText(), QStringLiteral("[%1] and [%1]").arg(value));
        }
    }

    void shouldKeepTheFormatOfThePlaceholder()
    {
        const auto contact = jane();
        const auto order = order12(contact.get());
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("Dear "));
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        cursor.insertText(QStringLiteral("<contactname>"), bold);
        invoices::fill(document, *order, contact.get(), bomHtml);
        const QTextCursor found = document.find(QStringLiteral("Jane van Dijk"));
        QVERIFY(!found.isNull());
        QCOMPARE(found.charFormat().fontWeight(), int(QFont::Bold));
    }

    void shouldPutTheBillOfMaterialsAtTheFirstPlaceOnly()
    {
        const auto order = order12(nullptr);
        order->setIncludeBOM(true);
        QTextDocument document;
        document.setPlainText(QStringLiteral("Lines:\n<itemsordered>\nagain <itemsordered>"));
        invoices::fill(document, *order, nullptr, bomHtml);
        const QTextCursor bolt = document.find(QStringLiteral("Bolt"));
        QVERIFY(!bolt.isNull());
        QTextTable *table = bolt.currentTable();
        QVERIFY(table);
        QCOMPARE(table->rows(), 3);
        QCOMPARE(table->columns(), 2);
        QCOMPARE(table->cellAt(2, 0).firstCursorPosition().block().text(), QStringLiteral("Labour"));
        QCOMPARE(document.toPlainText().count(QStringLiteral("<itemsordered>")), 1);
        QVERIFY(document.toPlainText().endsWith(QStringLiteral("again <itemsordered>")));
    }

    void shouldRemoveEveryPlaceOfTheBillOfMaterialsWhenItIsLeftOut()
    {
        const auto order = order12(nullptr);
        order->setIncludeBOM(false);
        QTextDocument document;
        document.setPlainText(QStringLiteral("a<itemsordered>b<itemsordered>c"));
        invoices::fill(document, *order, nullptr, bomHtml);
        QCOMPARE(document.toPlainText(), QStringLiteral("abc"));
        QVERIFY(!document.find(QStringLiteral("Bolt")).currentTable());
    }

    void shouldFillAValueHoldingItsOwnPlaceholderOnce()
    {
        auto contact = jane();
        contact->setName(QStringLiteral("<contactname>"));
        const auto order = order12(contact.get());
        // A value may hold a later placeholder: its own step replaces it.
        order->setDescription(QStringLiteral("see <ordernumber>"));
        QTextDocument document;
        document.setPlainText(QStringLiteral("<contactname> <contactname> | <description>"));
        QElapsedTimer timer;
        timer.start();
        invoices::fill(document, *order, contact.get(), bomHtml);
        QVERIFY(timer.elapsed() < testlib::timeLimit(5000));
        QCOMPARE(document.toPlainText(), QStringLiteral("<contactname> <contactname> | see INV12"));
    }

    void shouldLogWhatItCannotDo_data()
    {
        QTest::addColumn<QString>("find");
        QTest::addColumn<QString>("replace");
        QTest::addColumn<QString>("logged");
        QTest::addColumn<QString>("text");
        QTest::newRow("no find text") << QString() << QStringLiteral("x")
                                      << QStringLiteral("replaceAllOccurencesOf: passed nil as find string")
                                      << QStringLiteral("a <title> b");
        QTest::newRow("no replacement") << QStringLiteral("<title>") << QString()
                                        << QStringLiteral(
                                               "replaceAllOccurencesOf: passed nil as replace string for <title>")
                                        << QStringLiteral("a  b");
    }
    void shouldLogWhatItCannotDo()
    {
        QFETCH(QString, find);
        QFETCH(QString, replace);
        QFETCH(QString, logged);
        QFETCH(QString, text);
        QTextDocument document;
        document.setPlainText(QStringLiteral("a <title> b"));
        invoices::replaceAllOccurencesOf(document, find, replace);
        QCOMPARE(TestEnvironment::current().logLines(), QStringList{logged});
        QCOMPARE(document.toPlainText(), text);
    }

    void shouldLeaveTheBillOfMaterialsPlaceWhenThereIsNoTable_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("logged");
        QTest::newRow("no data") << QString() << QStringLiteral("couldn't initialise data");
        QTest::newRow("nothing to show") << QStringLiteral("")
                                         << QStringLiteral("couldn't initialise attributed string. html is ");
    }
    void shouldLeaveTheBillOfMaterialsPlaceWhenThereIsNoTable()
    {
        QFETCH(QString, html);
        QFETCH(QString, logged);
        QTextDocument document;
        document.setPlainText(QStringLiteral("<itemsordered>"));
        invoices::insertBOMTable(document, true, html);
        QCOMPARE(TestEnvironment::current().logLines(), QStringList{logged});
        QCOMPARE(document.toPlainText(), QStringLiteral("<itemsordered>"));
    }
};

QUORVEL_TEST(InvoiceFillingTest)
#include "InvoiceFillingTest.moc"
