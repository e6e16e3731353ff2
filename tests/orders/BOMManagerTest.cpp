// The bill of materials over a stand-in for the controller, with the
// managers it asks for: which lines the tables
// show, lines from stock and the stock they take, in-place edits, totals,
// copying and deleting.
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
#include "store/Picker.h"

#include <QSignalSpy>
#include <QTest>
#include <utility>

using testlib::TestEnvironment;

namespace {

// The bill of materials with the managers it asks for.
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
    }
    ContactManager *getContactManager() { return &contacts; }
    OrderManager *getOrderManager() { return &orders; }
    BOMManager *getBOMManager() { return &bom; }
    ItemManager *getItemManager() { return &items; }
    CheckoutManager *getCheckoutManager() { return &checkout; }
    void setCurrentOrder(int orderId) { services.setCurrentOrder(orderId); }
};

Material *addLine(BOMManager &bom, int order, const QString &name, const QString &total = QStringLiteral("0"))
{
    const std::shared_ptr<Material> line = Material::withOrder(order);
    line->setItem(name);
    line->setTotal(total);
    bom.add(line);
    return line.get();
}

Item *addItem(Shop &shop, const QString &qty, bool decrease, const QString &warnlevel = QStringLiteral("0"))
{
    auto item = std::make_shared<Item>();
    item->setItem(QStringLiteral("Widget"));
    item->setCode(QStringLiteral("W-1"));
    item->setPrice(QStringLiteral("2.5"));
    item->setQty(qty);
    item->setDecreaseQty(decrease);
    item->setWarnlevel(warnlevel);
    shop.getItemManager()->add(item);
    return item.get();
}

QStringList column(const BOMManager &bom, const char *columnId)
{
    QStringList cells;
    for (int row = 0; row < bom.numberOfRowsInTableView(); ++row)
        cells << bom.objectValueForTableColumn(QLatin1String(columnId), row);
    return cells;
}

}  // namespace

class BOMManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { TestEnvironment::current().clearAlerts(), TestEnvironment::current().clearDiagnostics(); }

    void shouldShowTheCurrentOrdersLinesInCollectionOrder()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        addLine(bom, 1, "A1"), addLine(bom, 2, "B1"), addLine(bom, 1, "A2");
        shop.setCurrentOrder(1);
        QCOMPARE(column(bom, "item"), QStringList({"A1", "A2"}));
        addLine(bom, 1, "A3");  // added directly: found before any recount
        QCOMPARE(bom.getnthItem(2, 1)->getItem(), QString("A3"));
        QCOMPARE(bom.getnthItem(0, 2)->getItem(), QString("B1"));
        bom.reloadData();
        QCOMPARE(column(bom, "item"), QStringList({"A1", "A2", "A3"}));
    }

    void shouldAnswerTheFirstLineOfTheCollectionForAMissingRank()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        QVERIFY(!bom.getnthItem(0, 1));
        addLine(bom, 2, "B1"), addLine(bom, 1, "A1");
        shop.setCurrentOrder(1);
        const std::pair<int, int> missing[] = {{1, 1}, {-1, 1}, {5, 2}, {0, 3}};  // rank, order
        for (auto [n, order] : missing)
            QCOMPARE(bom.getnthItem(n, order)->getItem(), QString("B1"));
    }

    void shouldAddAStockLineForOneAtThePriceWithTheOrdersContact()
    {
        Shop shop;
        auto contact = std::make_shared<Contact>();
        shop.getContactManager()->add(contact);
        auto order = std::make_shared<Order>();
        order->setContact(contact.get());
        shop.getOrderManager()->add(order);
        Item *item = addItem(shop, "10", true);
        shop.setCurrentOrder(order->getID());
        shop.getBOMManager()->addProduct(item);
        const auto *line = static_cast<Material *>(shop.getBOMManager()->getFirstItem());
        QCOMPARE(QStringList({line->getItem(), line->getCode(), line->getQty(), line->getCost(), line->getTotal()}),
                 QStringList({"Widget", "W-1", "1", "2.5", "2.50"}));
        QCOMPARE(line->getProduct(), item->getID());
        QCOMPARE(line->getContact(), contact->getID());
        QCOMPARE(item->getQty(), QString("10"));  // the stock is taken by the order editor
    }

    void shouldKeepStockInStepWithQtyEditsAndDeletion_data()
    {
        QTest::addColumn<bool>("decrease");
        QTest::addColumn<QString>("warnlevel");
        QTest::addColumn<QStringList>("stock");  // after the edit, after the deletion
        QTest::addColumn<int>("alerts");
        QTest::newRow("decreasing, above the warning") << true << "7" << QStringList{"8", "11"} << 0;
        QTest::newRow("decreasing, at the warning") << true << "8" << QStringList{"8", "11"} << 1;
        QTest::newRow("not decreasing") << false << "99" << QStringList{"10", "10"} << 0;
    }
    void shouldKeepStockInStepWithQtyEditsAndDeletion()
    {
        QFETCH(bool, decrease);
        QFETCH(QString, warnlevel);
        QFETCH(QStringList, stock);
        QFETCH(int, alerts);
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        Item *item = addItem(shop, "10", decrease, warnlevel);
        bom.addProduct(item);
        bom.reloadData();
        bom.setObjectValueForTableColumn("3", "qty", 0);
        QCOMPARE(QStringList({item->getQty(), bom.objectValueForTableColumn("total", 0)}),
                 QStringList({stock[0], "7.50"}));
        const auto &shown = TestEnvironment::current().alertsShown();
        QCOMPARE(shown.size(), alerts);
        if (alerts)
            QCOMPARE(QStringList({shown[0].message, shown[0].informativeText, shown[0].defaultButton}),
                     QStringList({"Item Adjusted", "Low stock: this leaves 8 of these items in stock.", "OK"}));
        bom.deleteRecord(bom.getnthItem(0, 0));
        QCOMPARE(QStringList({item->getQty(), QString::number(bom.numberOfRowsInTableView())}),
                 QStringList({stock[1], "0"}));
    }

    void shouldFormatATypedTotalAndRecomputeOnlyAfterACostEdit()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        QSignalSpy beeps(&bom, &BOMManager::beep);
        bom.create();
        bom.setObjectValueForTableColumn("12", "total", 0);
        QCOMPARE(column(bom, "total"), QStringList({"12.00"}));
        bom.setObjectValueForTableColumn("abc", "cost", 0);
        QCOMPARE(beeps.size(), 1);
        QCOMPARE(column(bom, "cost"), QStringList({""}));
        bom.setObjectValueForTableColumn("2", "cost", 0);
        QCOMPARE(column(bom, "cost") + column(bom, "total"), QStringList({"2.00", "2.00"}));
    }

    void shouldTellANumberByItsLeadingDecimal_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("number");
        QTest::addColumn<QString>("formatted");
        QTest::newRow("trailing letters") << "12abc" << true << "12.00";
        QTest::newRow("leading blank") << " 3" << true << "3.00";
        QTest::newRow("fraction only") << "-.5" << true << "-0.50";
        QTest::newRow("exponent") << "1e3" << true << "1000.00";
        QTest::newRow("empty") << "" << false << "0.00";
        QTest::newRow("letters") << "abc" << false << "0.00";
        QTest::newRow("point alone") << "." << false << "0.00";
    }
    void shouldTellANumberByItsLeadingDecimal()
    {
        QFETCH(QString, text);
        QFETCH(bool, number);
        QFETCH(QString, formatted);
        QCOMPARE(BOMManager::isANumber(text), number);
        QCOMPARE(BOMManager::formatNumber(text), formatted);
    }

    void shouldSumTotalsAndShippingOfTheCurrentOrder()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        Item *item = addItem(shop, "10", false);
        item->setShipping("1.5");
        addLine(bom, 1, "Labour", "5"), addLine(bom, 2, "Other order", "100");
        bom.setCurrentOrder(1);
        bom.addProduct(item);
        bom.reloadData();
        bom.setObjectValueForTableColumn("2", "qty", 1);
        QCOMPARE(bom.getTotalforCurrentOrder(), 10.0f);
        QCOMPARE(bom.getShippingforCurrentOrder(), 3.0f);
        QCOMPARE(TestEnvironment::current().logLines(),
                 QStringList({"Labour = 5.000000", "Widget = 5.000000", "returning: 3.000000"}));
    }

    void shouldCopyLinesToAnotherOrderWithoutContactOrStock()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        Item *item = addItem(shop, "10", true);
        bom.setCurrentOrder(1);
        bom.addProduct(item);
        bom.getnthItem(0, 1)->setContact(7);
        addLine(bom, 2, "B1");
        bom.duplicateMaterialsFromOrder(1, 3);
        bom.duplicateMaterialsFromOrder(3, 3);  // the same order: copied once
        const Material *copy = bom.getnthItem(0, 3);
        QCOMPARE(bom.getCount(), 4);
        QCOMPARE(QStringList({copy->getItem(), copy->getCode(), copy->getQty(), copy->getCost(), copy->getTotal()}),
                 QStringList({"Widget", "W-1", "1", "2.5", "2.50"}));
        QCOMPARE(QList<int>({copy->getProduct(), copy->getContact(), bom.getnthItem(1, 3)->getProduct()}),
                 QList<int>({item->getID(), 0, item->getID()}));
        QCOMPARE(item->getQty(), QString("10"));
    }

    void shouldDeleteTheLineSelectedInTheSendersTable_data()
    {
        QTest::addColumn<bool>("fromCheckout");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("order editor") << false << 1 << QStringList{"A2", "A3"};
        QTest::newRow("checkout") << true << 1 << QStringList{"A1", "A3"};
        QTest::newRow("cancelled") << true << 0 << QStringList{"A1", "A2", "A3"};
    }
    void shouldDeleteTheLineSelectedInTheSendersTable()
    {
        QFETCH(bool, fromCheckout);
        QFETCH(int, answer);
        QFETCH(QStringList, left);
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        addLine(bom, 1, "A1"), addLine(bom, 1, "A2"), addLine(bom, 1, "A3");
        shop.setCurrentOrder(1);
        bom.table->selectRow(0);
        bom.checkoutTableView->selectRow(1);
        TestEnvironment::current().scriptAlertAnswers({answer});
        bom.deleteKey(fromCheckout ? static_cast<QObject *>(shop.getCheckoutManager()) : nullptr);
        QCOMPARE(column(bom, "item"), left);
        QCOMPARE(TestEnvironment::current().alertsShown().at(0).message, QString("Delete Item"));
    }

    void shouldOnlyPrintOnADoubleClick()
    {
        Shop shop;
        BOMManager &bom = *shop.getBOMManager();
        bom.table->userDoubleClick(0);
        QCOMPARE(TestEnvironment::current().standardOutputText(), QString("double click\n"));
    }
};

QUORVEL_TEST(BOMManagerTest)
#include "BOMManagerTest.moc"
