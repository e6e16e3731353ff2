// The order list and editor without a window: new orders, tax and balance,
// the tax-rate question, the list filter, deleting and the customer's block.
#include "FakeServices.h"
#include "Preferences.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "checkout/CheckoutManager.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "store/Picker.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>
#include <memory>

using testlib::TestEnvironment;

namespace {

// The order editor with the managers it asks for, over a stand-in for the
// controller.
struct Shop
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    OrderManager orders{&services};
    BOMManager bom{&services};
    ItemManager items{&services};
    CheckoutManager checkout{&services};
    Picker picker;
    Shop()
    {
        services.contacts = &contacts;
        services.orders = &orders;
        services.bom = &bom;
        services.items = &items;
        services.checkoutManager = &checkout;
        services.picker = &picker;
        // The date fields in the user's order, day first until the
        // preferences are read, as the program wires them.
        PrefsController *prefs = services.getPrefsController();
        prefs->dateFields = {orders.date,   orders.depositPaid,   orders.balancePaid,
                             checkout.date, checkout.depositPaid, checkout.balancePaid};
        prefs->setUKFormat(prefs->isUKFormat());
    }
    ContactManager *getContactManager() { return &contacts; }
    OrderManager *getOrderManager() { return &orders; }
    BOMManager *getBOMManager() { return &bom; }
    ItemManager *getItemManager() { return &items; }
    PrefsController *getPrefsController() { return services.getPrefsController(); }
    void setCurrentOrder(int orderId) { services.setCurrentOrder(orderId); }
};

template <class Program>
Order *addOrder(Program &shop, const QString &title, const QString &status = QStringLiteral("Enquiry"),
                Contact *contact = nullptr)
{
    auto order = std::make_shared<Order>();
    order->setTitle(title);
    order->setStatus(status);
    order->setContact(contact);
    order->setTaxRate(QStringLiteral("20.00"));  // the default global rate: opening asks nothing
    shop.getOrderManager()->add(order);
    return order.get();
}

template <class Program> Contact *addContact(Program &shop, const QString &name)
{
    auto contact = std::make_shared<Contact>();
    contact->setName(name);
    shop.getContactManager()->add(contact);
    return contact.get();
}

void openOrder(OrderManager &manager, const Order *order)
{
    manager.table->selectRow(int(manager.indexOf(order)));  // every order is visible here
    manager.edit();
}

}  // namespace

class OrderManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearAlerts();
        QDir(platform::paths::quorvelDir()).removeRecursively();
    }

    void shouldMakeANewOrderAndWorkOutItsFigures()
    {
        // What reaches the disk: the whole controller, which writes.
        Quorvel shop;
        shop.getPrefsController()->taxRate->setStringValue(QStringLiteral("17.5"));
        OrderManager &manager = *shop.getOrderManager();
        auto saved = std::make_shared<Order>();  // as read from the file, with its id
        saved->setID(11);
        manager.add(saved);

        manager.create();
        QCOMPARE(manager.orderNumber->stringValue(), QStringLiteral("INV12"));
        QCOMPARE(manager.date->stringValue(), QStringLiteral("15/01/26"));
        QCOMPARE(manager.getCurrentItem()->getTaxRate(), QStringLiteral("17.50"));
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());  // a new order never asks
        QCOMPARE(manager.getCount(), 1);

        manager.value->setStringValue(QStringLiteral("100"));
        manager.shipping->setStringValue(QStringLiteral("10"));
        manager.deposit->setStringValue(QStringLiteral("20"));
        manager.calculateTax();
        QCOMPARE(manager.taxAmount->stringValue(), QStringLiteral("17.50"));
        QCOMPARE(manager.balance->stringValue(), QStringLiteral("107.50"));

        manager.finish(&manager);
        QCOMPARE(manager.getCount(), 2);
        QCOMPARE(manager.getCurrentItem()->getValueWithTax(), QStringLiteral("127.50"));
        QVERIFY(!manager.editorWindow->isVisible());
        QFile file(platform::paths::bundleFile(QStringLiteral("orders.xml")));
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains("<string>127.50</string>"));
    }

    void shouldDateANewOrderTodayInTheUsersOrder_data()
    {
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<QString>("today");
        QTest::newRow("day first") << false << "15/01/26";
        QTest::newRow("month first") << true << "01/15/26";
    }
    void shouldDateANewOrderTodayInTheUsersOrder()
    {
        QFETCH(bool, monthFirst);
        QFETCH(QString, today);
        // The date fields take the user's order from the preferences as the
        // program wires them: the whole controller.
        Quorvel quorvel;
        testlib::startWithModules(quorvel, monthFirst);
        OrderManager &manager = *quorvel.getOrderManager();
        manager.create();
        QCOMPARE(manager.date->stringValue(), today);
        // Already dated when a contact takes it into the list before it is finished.
        QCOMPARE(manager.getCurrentItem()->getDate(), today);
        manager.finish(&manager);
        QCOMPARE(manager.getCurrentItem()->getDate(), today);
        QCOMPARE(manager.getCurrentItem()->getFieldByName(QStringLiteral("date")), today);

        // A repeat made of it is dated today too.
        const Order *copy = manager.duplicate(manager.getCurrentItem());
        QVERIFY(copy);
        QCOMPARE(copy->getDate(), today);
    }

    void shouldShowAndStoreTheBalanceWithTwoDecimals_data()
    {
        QTest::addColumn<QStringList>("figures");  // value, tax amount, shipping, deposit
        QTest::addColumn<QString>("balance");
        QTest::addColumn<QString>("total");
        QTest::newRow("a deposit against cents") << QStringList{"385.33", "67.45", "", "100"} << "352.78"
                                                 << "452.78";
        QTest::newRow("whole figures") << QStringList{"100", "17.50", "10", "20"} << "107.50"
                                       << "127.50";
        QTest::newRow("more paid than owed") << QStringList{"10", "", "", "25"} << "-15.00"
                                             << "10.00";
        QTest::newRow("figures with words") << QStringList{"12 boxes", "", "", "on account"} << "12.00"
                                            << "12.00";
    }
    void shouldShowAndStoreTheBalanceWithTwoDecimals()
    {
        QFETCH(QStringList, figures);
        QFETCH(QString, balance);
        QFETCH(QString, total);
        Shop shop;
        OrderManager &manager = *shop.getOrderManager();
        manager.create();
        manager.value->userSetStringValue(figures.at(0));
        manager.taxAmount->userSetStringValue(figures.at(1));
        manager.shipping->userSetStringValue(figures.at(2));
        manager.deposit->userSetStringValue(figures.at(3));
        manager.calculateBalance();
        QCOMPARE(manager.balance->stringValue(), balance);

        manager.finish(&manager);
        const Order *order = manager.getCurrentItem();
        QCOMPARE(order->getBalance(), balance);
        QCOMPARE(order->getValueWithTax(), total);
    }

    void shouldPutTheMaterialsTotalInTheValueWithTwoDecimals()
    {
        Shop shop;
        OrderManager &manager = *shop.getOrderManager();
        Order *order = addOrder(shop, QStringLiteral("Shelves"));
        for (const char *total : {"400", "65"}) {
            const std::shared_ptr<Material> line = Material::withOrder(order->getID());
            line->setTotal(QLatin1String(total));
            shop.getBOMManager()->add(line);
        }
        openOrder(manager, order);
        manager.deposit->setStringValue(QStringLiteral("100"));
        manager.insertBOMTotal();
        QCOMPARE(manager.value->stringValue(), QStringLiteral("465.00"));
        QCOMPARE(manager.balance->stringValue(), QStringLiteral("365.00"));
        manager.finish(&manager);
        QCOMPARE(order->getValue(), QStringLiteral("465.00"));
    }

    void shouldAskAboutAChangedRateAndShowTaxOnlyWithARate_data()
    {
        QTest::addColumn<QString>("rate");
        QTest::addColumn<int>("answer");  // to the question, when there is one
        QTest::addColumn<QString>("rateAfter");
        QTest::addColumn<QString>("label");
        QTest::newRow("change") << "15.00" << 1 << "17.50"
                                << "VAT @ 17.50%";
        QTest::newRow("keep") << "15.00" << 0 << "15.00"
                              << "VAT @ 15.00%";
        QTest::newRow("no rate") << "0" << 0 << "0"
                                 << "";
        QTest::newRow("empty rate") << "" << 0 << ""
                                    << "";
        QTest::newRow("unchanged") << "17.5" << 1 << "17.5"
                                   << "VAT @ 17.5%";
    }
    void shouldAskAboutAChangedRateAndShowTaxOnlyWithARate()
    {
        QFETCH(QString, rate);
        QFETCH(int, answer);
        QFETCH(QString, rateAfter);
        QFETCH(QString, label);
        Shop shop;
        shop.getPrefsController()->taxRate->setStringValue(QStringLiteral("17.5"));
        shop.getPrefsController()->taxStatement->setStringValue(QStringLiteral(" VAT\n"));
        OrderManager &manager = *shop.getOrderManager();
        Order *order = addOrder(shop, QStringLiteral("Roof"));
        order->setTaxRate(rate);
        order->setTax(QStringLiteral("3.00"));
        TestEnvironment::current().scriptAlertAnswers({answer});

        openOrder(manager, order);
        const QList<platform::Alert> alerts = TestEnvironment::current().alertsShown();
        QCOMPARE(alerts.size(), rate == QLatin1String("17.5") ? 0 : 1);
        if (!alerts.isEmpty()) {
            QCOMPARE(alerts.first().message, QStringLiteral("Tax Rate Changed"));
            QCOMPARE(alerts.first().defaultButton, QStringLiteral("Change to 17.50%"));
            QCOMPARE(alerts.first().alternateButton, QStringLiteral("Keep %1%").arg(rate));
        }
        QCOMPARE(order->getTaxRate(), rateAfter);
        QCOMPARE(order->getTax(), QStringLiteral("3.00"));  // the user recalculates
        QCOMPARE(manager.tax->stringValue(), label);
        QCOMPARE(manager.taxAmount->stringValue(), label.isEmpty() ? QStringLiteral("") : QStringLiteral("3.00"));
        QCOMPARE(manager.taxAmount->isHidden(), label.isEmpty());
        QCOMPARE(manager.calculateTaxButton->isHidden(), label.isEmpty());
    }

    void shouldFilterByStatusTextAndCustomer_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("titles");
        QTest::newRow("incomplete at start") << QString() << ""
                                             << "Kitchen";
        QTest::newRow("all") << "All"
                             << ""
                             << "Kitchen Garden Sink";
        QTest::newRow("text") << "All"
                              << "kitch"
                              << "Kitchen";
        QTest::newRow("customer shows complete") << "Incomplete"
                                                 << "smith"
                                                 << "Kitchen Garden";
    }
    void shouldFilterByStatusTextAndCustomer()
    {
        QFETCH(QString, shown);
        QFETCH(QString, search);
        QFETCH(QString, titles);
        Shop shop;
        Contact *smith = addContact(shop, QStringLiteral("Jo Smith"));
        addOrder(shop, QStringLiteral("Kitchen"), QStringLiteral("Enquiry"), smith);
        addOrder(shop, QStringLiteral("Garden"), QStringLiteral("Complete"), smith);
        addOrder(shop, QStringLiteral("Sink"), QStringLiteral("Complete"));
        OrderManager &manager = *shop.getOrderManager();
        manager.awakeFromNib();
        if (!shown.isNull())
            manager.filterPopUp->selectItemWithTitle(shown);
        manager.searchField->setStringValue(search);
        manager.filter();
        QStringList visible;
        for (int row = 0; row < manager.numberOfRowsInTableView(); ++row)
            visible << manager.objectValueForTableColumn(QStringLiteral("title"), row);
        QCOMPARE(visible.join(u' '), titles);
    }

    void shouldAddAStatusTheListDoesNotKnow()
    {
        Shop shop;
        OrderManager &manager = *shop.getOrderManager();
        const int known = manager.status->numberOfItems();
        openOrder(manager, addOrder(shop, QStringLiteral("Odd"), QStringLiteral("On hold")));
        QCOMPARE(manager.status->numberOfItems(), known + 1);
        QCOMPARE(manager.status->titleOfSelectedItem(), QStringLiteral("On hold"));
    }

    void shouldDeleteTheOrderWithItsAttachmentsButNotItsLines_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("OK") << 1;
        QTest::newRow("Cancel") << 0;
    }
    void shouldDeleteTheOrderWithItsAttachmentsButNotItsLines()
    {
        QFETCH(int, answer);
        Shop shop;
        OrderManager &manager = *shop.getOrderManager();
        Order *order = addOrder(shop, QStringLiteral("Shed"));
        shop.getBOMManager()->add(Material::withOrder(order->getID()));
        const QString folder = OrderManager::attachmentFolder(order->getID());
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/plans")));
        manager.table->selectRow(0);
        TestEnvironment::current().scriptAlertAnswers({answer});

        manager.deleteKey();
        QCOMPARE(TestEnvironment::current().alertsShown().value(0).message, QStringLiteral("Delete Order"));
        QCOMPARE(manager.getCount(), 1 - answer);
        QCOMPARE(QFileInfo::exists(folder), answer == 0);
        QCOMPARE(shop.getBOMManager()->getCount(), 1);
    }

    void shouldGiveTheCustomersPostalBlock_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("block");
        QTest::newRow("with a title") << "Mrs"
                                      << "Mrs Ann Lee\r1 High St\r\rLeeds\rLS1 1AA\r";
        QTest::newRow("without") << ""
                                 << "Ann Lee\r1 High St\r\rLeeds\rLS1 1AA\r";
    }
    void shouldGiveTheCustomersPostalBlock()
    {
        QFETCH(QString, title);
        QFETCH(QString, block);
        Shop shop;
        OrderManager &manager = *shop.getOrderManager();
        Contact *lee = addContact(shop, QStringLiteral("Ann Lee"));
        lee->setTitle(title);
        lee->setAdd1(QStringLiteral("1 High St"));
        lee->setAdd3(QStringLiteral("Leeds"));
        lee->setPostcode(QStringLiteral("LS1 1AA"));
        manager.contactName->setConnected(true);
        openOrder(manager, addOrder(shop, QStringLiteral("Porch"), QStringLiteral("Quote"), lee));
        QCOMPARE(manager.grabContactFields(), block);
        QCOMPARE(manager.contactName->stringValue(), QStringLiteral("Ann Lee"));
        QVERIFY(manager.editContactButton->isEnabled());
    }

    void shouldPaintEachRowInTheFirstColourStoredForItsStatus()
    {
        QVariantList colours;
        const auto entry = [](const char *status, const char *red) {
            return QVariantMap{{QStringLiteral("Status"), QLatin1String(status)},
                               {QStringLiteral("redComponent"), QLatin1String(red)},
                               {QStringLiteral("greenComponent"), QStringLiteral("0.250000")},
                               {QStringLiteral("blueComponent"), QStringLiteral("1.000000")},
                               {QStringLiteral("alphaComponent"), QStringLiteral("0.100000")}};
        };
        colours << entry("Quote", "0.500000") << entry("Quote", "0.900000") << entry("complete", "0.300000");
        QSettings(PrefsController::settingsName(), PrefsController::settingsName())
            .setValue(QStringLiteral("QuorvelFlagColours"), colours);
        Shop shop;
        addOrder(shop, QStringLiteral("A"), QStringLiteral("Quote"));
        addOrder(shop, QStringLiteral("B"), QStringLiteral("Complete"));  // the stored status differs in case
        const OrderManager &manager = *shop.getOrderManager();

        const std::optional<RgbaColour> quote = manager.labelColorForRow(0);
        QVERIFY(quote);
        QCOMPARE(*quote, (RgbaColour{0.5f, 0.25f, 1.0f, 1.0f}));  // the first entry, opaque
        QVERIFY(!manager.labelColorForRow(1));
        QVERIFY(!manager.labelColorForRow(2));  // no such row
        QSettings(PrefsController::settingsName(), PrefsController::settingsName())
            .remove(QStringLiteral("QuorvelFlagColours"));
    }
};

QUORVEL_TEST(OrderManagerTest)
#include "OrderManagerTest.moc"
