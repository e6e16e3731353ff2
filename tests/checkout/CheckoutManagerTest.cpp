// The checkout's rules: tendering with change due or balance remaining,
// accepting a payment (stamped day first whatever the date preference), a
// new sale joining the order list when it gets a line or a customer,
// finishing with controls missing, the close question, items added by code,
// and the orders list's double click.
#include "FakeServices.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "checkout/CheckoutManager.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/outlets/TextField.h"
#include "store/Picker.h"
#include "store/PrefsController.h"

#include <QSignalSpy>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// A counter with two stock items, Bolt (ITM20, 10 in stock, 2.00) and Nut
// (ITM21, 0.50), whose checkout window has the usual controls.
struct Counter
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    OrderManager orders{&services};
    BOMManager bom{&services};
    ItemManager items{&services};
    CheckoutManager checkout{&services};
    Picker picker;
    std::shared_ptr<Item> bolt = std::make_shared<Item>();
    std::shared_ptr<Item> nut = std::make_shared<Item>();

    explicit Counter(bool withWindow = true)
    {
        services.contacts = &contacts;
        services.orders = &orders;
        services.bom = &bom;
        services.items = &items;
        services.checkoutManager = &checkout;
        services.picker = &picker;
        services.getPrefsController()->taxRate->setStringValue(QStringLiteral("0"));
        QObject::connect(&bom, &BOMManager::linesChanged, &checkout, &CheckoutManager::linesChanged);
        for (auto &[item, code, name, qty, price] :
             {std::tuple{bolt, "ITM20", "Bolt", "10", "2.00"}, std::tuple{nut, "ITM21", "Nut", "5", "0.50"}}) {
            item->setCode(QLatin1String(code));
            item->setItem(QLatin1String(name));
            item->setQty(QLatin1String(qty));
            item->setPrice(QLatin1String(price));
            item->setDecreaseQty(true);
            items.add(item);
        }
        if (withWindow) {
            for (Outlet *outlet : std::initializer_list<Outlet *>{
                     checkout.editorWindow, checkout.balance, checkout.balancePaid, checkout.date, checkout.deposit,
                     checkout.depositPaid, checkout.orderNumber, checkout.shipping, checkout.taxAmount, checkout.title,
                     checkout.value, checkout.valueWithTax, checkout.status})
                outlet->setConnected(true);
        }
    }
    Order *sale() const { return checkout.getEditedOrder(); }
    bool listed(const Order *order) const { return order && orders.getItemById(order->getID()) == order; }
};

}  // namespace

class CheckoutManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
    }

    void shouldShowChangeOrTheBalanceAsTheSumIsTyped_data()
    {
        QTest::addColumn<QString>("tendered");
        QTest::addColumn<float>("shown");
        QTest::addColumn<QString>("said");
        QTest::newRow("more than due") << QStringLiteral("30") << 5.0f << QStringLiteral("Change Due");
        QTest::newRow("less than due") << QStringLiteral("10") << 15.0f << QStringLiteral("Balance Remaining");
        QTest::newRow("exactly due") << QStringLiteral("25.00") << 0.0f << QStringLiteral("Change Due");
        QTest::newRow("nothing yet") << QStringLiteral("") << 25.0f << QStringLiteral("Balance Remaining");
        QTest::newRow("not a number") << QStringLiteral("abc") << 25.0f << QStringLiteral("Balance Remaining");
    }
    void shouldShowChangeOrTheBalanceAsTheSumIsTyped()
    {
        QFETCH(QString, tendered);
        QFETCH(float, shown);
        QFETCH(QString, said);
        Counter counter;
        counter.checkout.edit(nullptr);
        counter.checkout.balance->setStringValue(QStringLiteral("25.00"));
        counter.checkout.tender();
        QCOMPARE(counter.checkout.tenderDue->stringValue(), QStringLiteral("25.00"));
        QCOMPARE(counter.checkout.tenderInformativeText->stringValue(), QStringLiteral("Balance Remaining"));
        QVERIFY(counter.checkout.tenderPanel->isVisible());
        counter.checkout.tenderTendered->userSetStringValue(tendered);
        QCOMPARE(counter.checkout.tenderBalance->floatValue(), shown);
        QCOMPARE(counter.checkout.tenderInformativeText->stringValue(), said);
        QCOMPARE(counter.checkout.editorWindow->isDocumentEdited(), !tendered.isEmpty());
    }

    void shouldStampThePaymentDayFirstAndStartTheNextSale_data()
    {
        QTest::addColumn<bool>("dayFirst");
        QTest::addColumn<QString>("tendered");
        QTest::addColumn<QString>("deposit");
        QTest::addColumn<QString>("depositPaid");
        QTest::addColumn<QString>("balancePaid");
        // The test clock stands at 15 January 2026.
        QTest::newRow("paid in full") << true << QStringLiteral("30") << QStringLiteral("") << QStringLiteral("")
                                      << QStringLiteral("15/01/26");
        QTest::newRow("paid exactly") << true << QStringLiteral("25.00") << QStringLiteral("") << QStringLiteral("")
                                      << QStringLiteral("15/01/26");
        QTest::newRow("part payment") << true << QStringLiteral("10") << QStringLiteral("10.00")
                                      << QStringLiteral("15/01/26") << QStringLiteral("");
        QTest::newRow("month first preference")
            << false << QStringLiteral("30") << QStringLiteral("") << QStringLiteral("") << QStringLiteral("15/01/26");
    }
    void shouldStampThePaymentDayFirstAndStartTheNextSale()
    {
        QFETCH(bool, dayFirst);
        QFETCH(QString, tendered);
        QFETCH(QString, deposit);
        QFETCH(QString, depositPaid);
        QFETCH(QString, balancePaid);
        Counter counter;
        counter.services.getPrefsController()->setUKFormat(dayFirst);
        counter.checkout.edit(nullptr);
        const std::shared_ptr<Order> sale = shareOf(counter.sale());
        counter.checkout.balance->setStringValue(QStringLiteral("25.00"));
        counter.checkout.tender();
        counter.checkout.tenderTendered->userSetStringValue(tendered);
        counter.checkout.tenderOK();
        QCOMPARE(sale->getDeposit(), deposit);
        QCOMPARE(sale->getDepositPaid(), depositPaid);
        QCOMPARE(sale->getBalancePaid(), balancePaid);
        QVERIFY(TestEnvironment::current().logLines().contains(QStringLiteral("today is 15/01/26")));
        QVERIFY(counter.listed(sale.get()));
        QVERIFY(!counter.checkout.tenderPanel->isVisible());
        // The next sale is new, and not yet in the list.
        QVERIFY(counter.sale() != sale.get());
        QVERIFY(counter.checkout.isCreating());
        QVERIFY(!counter.listed(counter.sale()));
        QVERIFY(!counter.checkout.editorWindow->isDocumentEdited());
    }

    void shouldPutANewSaleInTheListWhenItGetsALineOrACustomer_data()
    {
        QTest::addColumn<int>("command");
        QTest::newRow("a line by code") << 0;
        QTest::newRow("an ad hoc line") << 1;
        QTest::newRow("a customer") << 2;
    }
    void shouldPutANewSaleInTheListWhenItGetsALineOrACustomer()
    {
        QFETCH(int, command);
        Counter counter;
        auto ann = std::make_shared<Contact>();
        ann->setName(QStringLiteral("Ann Lee"));
        counter.contacts.add(ann);
        counter.checkout.edit(nullptr);
        Order *sale = counter.sale();
        QVERIFY(!counter.listed(sale));
        if (command == 0) {
            QVERIFY(counter.checkout.addItemWithCode(QStringLiteral("ITM20")));
        } else if (command == 1) {
            counter.checkout.checkoutCreateAdhoc();
        } else {
            counter.checkout.checkoutSelectContact();
            counter.picker.table->selectRow(0);
            counter.picker.finish();
            QCOMPARE(sale->getContact(), ann.get());
        }
        QVERIFY(counter.listed(sale));
        QVERIFY(counter.checkout.editorWindow->isDocumentEdited());

        // "Don't Save" starts a new sale; the last one stays in the list.
        TestEnvironment::current().scriptAlertAnswers({0});
        counter.checkout.checkoutNew();
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QVERIFY(counter.sale() != sale);
        QVERIFY(counter.listed(sale));
    }

    void shouldAskBeforeLeavingChanges_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("newSale");
        QTest::addColumn<bool>("saved");
        QTest::newRow("Save") << 1 << true << true;
        QTest::newRow("Don't Save") << 0 << true << false;
        QTest::newRow("Cancel") << -1 << false << false;
    }
    void shouldAskBeforeLeavingChanges()
    {
        QFETCH(int, answer);
        QFETCH(bool, newSale);
        QFETCH(bool, saved);
        for (const bool closing : {false, true}) {
            Counter counter;
            counter.checkout.edit(nullptr);
            // Kept as a share: a sale left unsaved is dropped by the checkout.
            const std::shared_ptr<Order> kept = shareOf(counter.sale());
            Order *sale = kept.get();
            counter.checkout.title->userSetStringValue(QStringLiteral("Garden chairs"));
            TestEnvironment::current().clearAlerts();
            TestEnvironment::current().scriptAlertAnswers({answer});
            if (closing)
                QCOMPARE(counter.checkout.windowShouldClose(), answer != -1);
            else
                counter.checkout.checkoutNew();
            const QList<platform::Alert> asked = TestEnvironment::current().alertsShown();
            QCOMPARE(asked.size(), 1);
            QCOMPARE(asked.first().message, QStringLiteral("Close Checkout"));
            QCOMPARE(asked.first().informativeText,
                     QStringLiteral("Do you want to save this transaction before closing?"));
            QCOMPARE(asked.first().defaultButton, QStringLiteral("Save"));
            QCOMPARE(asked.first().alternateButton, QStringLiteral("Don't Save"));
            QCOMPARE(asked.first().otherButton, QStringLiteral("Cancel"));
            if (!closing)
                QCOMPARE(counter.sale() != sale, newSale);
            QCOMPARE(counter.listed(sale), saved);
            QCOMPARE(sale->getTitle() == QLatin1String("Garden chairs"), saved);
        }
        // Without changes nothing is asked.
        Counter quiet;
        quiet.checkout.edit(nullptr);
        TestEnvironment::current().clearAlerts();
        QVERIFY(quiet.checkout.windowShouldClose());
        quiet.checkout.checkoutNew();
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());
    }

    void shouldFinishOnlyWhatTheWindowHas()
    {
        Counter counter(false);
        counter.checkout.edit(nullptr);
        Order *sale = counter.sale();
        sale->setValue(QStringLiteral("7.00"));
        counter.checkout.title->setStringValue(QStringLiteral("typed"));
        counter.checkout.value->setStringValue(QStringLiteral("99.00"));
        counter.checkout.title->setConnected(true);
        counter.checkout.finish();
        QCOMPARE(sale->getTitle(), QStringLiteral("typed"));
        QCOMPARE(sale->getValue(), QStringLiteral("7.00"));  // no value control: kept
        QCOMPARE(sale->getValueWithTax(), QStringLiteral(""));  // no total control: not worked out
        QVERIFY(counter.listed(sale));
        // The write asked for is the checkout's own, which writes nothing.
        QCOMPARE(counter.services.writes, (QList<const QObject *>{&counter.checkout}));
    }

    void shouldWorkTheTotalOutInSinglePrecision()
    {
        Counter counter;
        counter.checkout.edit(nullptr);
        counter.checkout.value->setStringValue(QStringLiteral("0.10"));
        counter.checkout.taxAmount->setStringValue(QStringLiteral("0.20"));
        counter.checkout.shipping->setStringValue(QStringLiteral("1000000.05"));
        counter.checkout.finish();
        // 0.1f + 0.2f + 1000000.05f in floats, then two decimals.
        float total = 0.10f + 0.20f;
        total = total + 1000000.05f;
        QCOMPARE(counter.sale()->getValueWithTax(), QString::asprintf("%.2f", double(total)));
    }

    void shouldAddItemsByTheirCode_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("item");
        QTest::newRow("as it is") << QStringLiteral("ITM20") << QStringLiteral("Bolt");
        QTest::newRow("any case, with blanks") << QStringLiteral("  itm21 ") << QStringLiteral("Nut");
        QTest::newRow("unknown") << QStringLiteral("ITM99") << QString();
        QTest::newRow("empty") << QStringLiteral("") << QString();
    }
    void shouldAddItemsByTheirCode()
    {
        QFETCH(QString, typed);
        QFETCH(QString, item);
        Counter counter;
        QSignalSpy beeps(&counter.checkout, &CheckoutManager::beep);
        counter.checkout.edit(nullptr);
        counter.checkout.codeEntry->userSetStringValue(typed);
        counter.checkout.codeEntry->performAction();
        if (item.isEmpty()) {
            QCOMPARE(beeps.size(), 1);
            QVERIFY(
                counter.checkout.codeEntryMessage->stringValue().startsWith(QStringLiteral("No item has the code")));
            QCOMPARE(counter.bom.numberOfRowsInTableView(), 0);
            QVERIFY(!counter.listed(counter.sale()));
            QVERIFY(TestEnvironment::current().alertsShown().isEmpty());
            return;
        }
        QCOMPARE(beeps.size(), 0);
        QCOMPARE(counter.bom.numberOfRowsInTableView(), 1);
        QCOMPARE(counter.bom.objectValueForTableColumn(QStringLiteral("item"), 0), item);
        QCOMPARE(counter.checkout.codeEntry->stringValue(), QStringLiteral(""));
        // The stock goes down and the sale's figures follow its lines.
        const auto &stocked = item == QLatin1String("Bolt") ? counter.bolt : counter.nut;
        QCOMPARE(stocked->getQty(), item == QLatin1String("Bolt") ? QStringLiteral("9") : QStringLiteral("4"));
        QCOMPARE(counter.checkout.value->stringValue(), stocked->getPrice());
        QCOMPARE(counter.checkout.balance->floatValue(), stocked->getPrice().toFloat());
    }

    void shouldFindTheFirstOfTwoItemsSharingACodeAndFollowCodeChanges()
    {
        Counter counter;
        counter.nut->setCode(QStringLiteral("ITM20"));
        counter.items.getItemByCode(QStringLiteral("x"));  // the index is made now
        QCOMPARE(counter.items.getItemByCode(QStringLiteral("ITM20")), counter.bolt.get());
        // Items leave the list, and codes change in the item editor.
        counter.items.deleteItem(counter.bolt.get());
        QCOMPARE(counter.items.getItemByCode(QStringLiteral("ITM20")), counter.nut.get());
        counter.items.getTableView()->selectRow(0);
        counter.items.edit();
        counter.items.code->setStringValue(QStringLiteral("NUT-1"));
        counter.items.finish();
        QCOMPARE(counter.items.getItemByCode(QStringLiteral("nut-1")), counter.nut.get());
        QCOMPARE(counter.items.getItemByCode(QStringLiteral("ITM20")), nullptr);
    }

    void shouldOpenDoubleClickedOrdersInTheCheckoutWhileItAsks()
    {
        Counter counter;
        counter.checkout.updateExistingOrder();
        QCOMPARE(counter.services.ordersBroughtToFront, 1);
        counter.orders.doubleClick();
        QCOMPARE(counter.services.checkouts, 1);
        counter.checkout.windowWillClose();
        auto order = std::make_shared<Order>();
        counter.orders.add(order);
        counter.orders.getTableView()->selectRow(0);
        counter.orders.doubleClick();
        QCOMPARE(counter.services.checkouts, 1);
        QCOMPARE(counter.orders.getCurrentItem(), order.get());
        // The checkout in front asks again; told to resign, it gives it back.
        counter.checkout.windowDidBecomeKey();
        QVERIFY(counter.orders.isDoubleClickOpeningCheckout());
        counter.checkout.requestResign(nullptr);
        QVERIFY(!counter.orders.isDoubleClickOpeningCheckout());
    }

    void shouldPrintTheFinishedSaleOnTheChosenStationery()
    {
        Counter counter;
        counter.checkout.edit(nullptr);
        counter.checkout.whichStationary->addItems({QStringLiteral("Receipt")});
        counter.checkout.whichStationary->selectItemAtIndex(0);
        counter.checkout.title->setStringValue(QStringLiteral("Counter sale"));
        QString stationery;
        Order *printed = nullptr;
        counter.checkout.openTemplateWindow = [&](const QString &name, std::shared_ptr<Order> order) {
            stationery = name;
            printed = order.get();
        };
        counter.checkout.printInvoice();
        QCOMPARE(stationery, QStringLiteral("Receipt"));
        QCOMPARE(printed, counter.sale());
        QCOMPARE(printed->getTitle(), QStringLiteral("Counter sale"));
        QVERIFY(counter.listed(printed));
    }
};

QUORVEL_TEST(CheckoutManagerTest)
#include "CheckoutManagerTest.moc"
