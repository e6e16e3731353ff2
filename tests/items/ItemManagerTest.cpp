// The stock list and the item editor over a stand-in for the controller,
// with no window: new items and their codes, similar items, finishing, the double
// entry after a cancelled new item, the in-stock filter, pictures and the
// supplier list.
#include "DatabaseFiles.h"
#include "FakeServices.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "items/SupplierDataSource.h"
#include "platform/Paths.h"
#include "store/Picker.h"
#include "store/PrefsController.h"

#include <QFile>
#include <QTest>

using testlib::TestEnvironment;

namespace {

Item *addItem(ItemManager &items, int id, const QString &name, const QString &qty)
{
    auto item = std::make_shared<Item>();
    item->setID(id);
    item->setItem(name);
    item->setQty(qty);
    items.add(item);
    return item.get();
}

// The item editor with what it asks of the controller: the contacts (the
// suppliers are among them), the supplier list and the picker.
struct Shop
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    ItemManager items{&services};
    SupplierDataSource suppliers{&services};
    Picker picker;
    Shop()
    {
        services.contacts = &contacts;
        services.items = &items;
        services.suppliers = &suppliers;
        services.picker = &picker;
    }
    ContactManager *getContactManager() { return &contacts; }
    ItemManager *getItemManager() { return &items; }
    SupplierDataSource *getSupplierDataSource() { return &suppliers; }
    Picker *getPicker() { return &picker; }
    PrefsController *getPrefsController() { return services.getPrefsController(); }
};

Contact *addContact(Shop &shop, const QString &name, const QString &type)
{
    auto contact = std::make_shared<Contact>();
    contact->setName(name);
    contact->setType(type);
    shop.getContactManager()->add(contact);
    return contact.get();
}

QStringList column(const ItemManager &items, const char *field)
{
    QStringList cells;
    for (int row = 0; row < items.numberOfRowsInTableView(); ++row)
        cells << items.objectValueForTableColumn(QLatin1String(field), row);
    return cells;
}

}  // namespace

class ItemManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldGiveANewItemThePrefixedCodeAndTheDefaultWarnLevel_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<int>("highestId");
        QTest::addColumn<QString>("code");
        QTest::newRow("prefix") << QStringLiteral("ITM") << 41 << QStringLiteral("ITM42");
        QTest::newRow("no prefix") << QString() << 6 << QStringLiteral("7");
        QTest::newRow("first item") << QStringLiteral("S-") << 0 << QStringLiteral("S-1");
    }
    void shouldGiveANewItemThePrefixedCodeAndTheDefaultWarnLevel()
    {
        QFETCH(QString, prefix);
        QFETCH(int, highestId);
        QFETCH(QString, code);
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        shop.getPrefsController()->itemPrefixField->setStringValue(prefix);
        shop.getPrefsController()->stockWarn->setStringValue(QStringLiteral("3"));
        if (highestId > 0)
            addItem(items, highestId, QStringLiteral("Older"), QStringLiteral("1"));

        items.create();
        QVERIFY(items.editorWindow->isVisible());
        QCOMPARE(items.code->stringValue(), code);
        QCOMPARE(items.warnLevel->stringValue(), QStringLiteral("3"));
        items.finish();
        QCOMPARE(items.getCount(), highestId > 0 ? 2 : 1);
        QCOMPARE(items.getItemById(highestId + 1)->getFieldByName(QStringLiteral("code")), code);
        QVERIFY(!items.editorWindow->isVisible());
    }

    void shouldStoreTheEditorButNeverTheStatusAndLookUpTheSupplierByName()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addContact(shop, QStringLiteral("Acme"), QStringLiteral("Supplier"));
        Contact *parts = addContact(shop, QStringLiteral("Parts Ltd"), QStringLiteral("Supplier"));
        Item *item = addItem(items, 5, QStringLiteral("Bolt"), QStringLiteral("4"));
        item->setStatus(QStringLiteral("Sold"));
        items.table->selectRow(0);
        items.edit();
        items.name->userSetStringValue(QStringLiteral("Big bolt"));
        items.price->userSetStringValue(QStringLiteral("abc"));
        items.status->selectItemAtIndex(0);
        items.supplierName->userSetStringValue(QStringLiteral("Parts Ltd"));
        items.decreaseQty->userSetState(true);
        items.finish();
        QCOMPARE(item->getItem(), QStringLiteral("Big bolt"));
        QCOMPARE(item->getPrice(), QStringLiteral("abc"));
        QCOMPARE(item->getStatus(), QStringLiteral("Sold"));
        QCOMPARE(item->getSupplier(), QString::number(parts->getID()));
        QVERIFY(item->getDecreaseQty());

        items.edit();
        items.supplierName->userSetStringValue(QStringLiteral("Nobody"));
        items.finish();
        QCOMPARE(item->getSupplier(), QStringLiteral("0"));
    }

    void shouldKeepThePreviousFieldsForASimilarItem()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        shop.getPrefsController()->itemPrefixField->setStringValue(QStringLiteral("ITM"));
        addContact(shop, QStringLiteral("Acme"), QStringLiteral("Supplier"));
        items.createSimilar();  // nothing in the editor yet
        QVERIFY(!items.editorWindow->isVisible());
        QCOMPARE(items.getCount(), 0);

        items.create();
        items.name->userSetStringValue(QStringLiteral("Lamp"));
        items.bought->userSetStringValue(QStringLiteral("2.50"));
        items.warnLevel->userSetStringValue(QStringLiteral("9"));
        items.supplierName->userSetStringValue(QStringLiteral("Acme"));
        items.createSimilar();
        QCOMPARE(items.getCount(), 1);
        QVERIFY(items.editorWindow->isVisible());
        QCOMPARE(items.code->stringValue(), QStringLiteral("ITM2"));
        QCOMPARE(items.name->stringValue(), QStringLiteral("Lamp"));
        items.finish();

        QCOMPARE(column(items, "code"), QStringList({QStringLiteral("ITM1"), QStringLiteral("ITM2")}));
        QCOMPARE(column(items, "item"), QStringList({QStringLiteral("Lamp"), QStringLiteral("Lamp")}));
        QCOMPARE(column(items, "bought"), QStringList({QStringLiteral("2.50"), QStringLiteral("2.50")}));
        QCOMPARE(column(items, "warnlevel"), QStringList({QStringLiteral("9"), QStringLiteral("9")}));
        QCOMPARE(column(items, "supplier"), QStringList({QStringLiteral("1"), QStringLiteral("1")}));
    }

    void shouldListAnItemTwiceWhenFinishedAfterACancelledNewItem()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addItem(items, 1, QStringLiteral("Bolt"), QStringLiteral("4"));
        items.create();
        items.cancel();
        QCOMPARE(items.getCount(), 1);
        QVERIFY(items.isCreating());

        items.table->selectRow(0);
        items.edit();
        items.name->userSetStringValue(QStringLiteral("Nut"));
        items.finish();
        QCOMPARE(items.getCount(), 2);
        QCOMPARE(column(items, "id"), QStringList({QStringLiteral("1"), QStringLiteral("1")}));
        QCOMPARE(column(items, "item"), QStringList({QStringLiteral("Nut"), QStringLiteral("Nut")}));
        QVERIFY(!items.isCreating());
    }

    void shouldHideItemsOutOfStockOnlyWhenAQuantityWasEntered_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("shown");
        const QStringList all = {QStringLiteral("none"), QStringLiteral("zero"), QStringLiteral("minus"),
                                 QStringLiteral("one"), QStringLiteral("text")};
        QTest::newRow("all") << QStringLiteral("All") << QString() << all;
        QTest::newRow("in stock") << QStringLiteral("In Stock") << QString()
                                  << QStringList({QStringLiteral("none"), QStringLiteral("one")});
        QTest::newRow("in stock and search") << QStringLiteral("In Stock") << QStringLiteral("ON")
                                             << QStringList({QStringLiteral("none"), QStringLiteral("one")});
        QTest::newRow("search") << QStringLiteral("All") << QStringLiteral("e")
                                << QStringList({QStringLiteral("none"), QStringLiteral("zero"), QStringLiteral("one"),
                                                QStringLiteral("text")});
    }
    void shouldHideItemsOutOfStockOnlyWhenAQuantityWasEntered()
    {
        QFETCH(QString, filter);
        QFETCH(QString, search);
        QFETCH(QStringList, shown);
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addItem(items, 1, QStringLiteral("none"), QString());
        addItem(items, 2, QStringLiteral("zero"), QStringLiteral("0"));
        addItem(items, 3, QStringLiteral("minus"), QStringLiteral("-2"));
        addItem(items, 4, QStringLiteral("one"), QStringLiteral("1"));
        addItem(items, 5, QStringLiteral("text"), QStringLiteral("lots"));
        items.searchField->setStringValue(search);
        items.stockFilter->userSelectItemAtIndex(items.stockFilter->indexOfItemWithTitle(filter));
        QCOMPARE(column(items, "item"), shown);
    }

    void shouldSortByTheClickedColumn()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addItem(items, 1, QStringLiteral("b"), QStringLiteral("2"));
        addItem(items, 2, QStringLiteral("c"), QStringLiteral("10"));
        addItem(items, 3, QStringLiteral("a"), QStringLiteral("9"));
        // The collection's sort reads "ascending" the other way round.
        items.table->userClickColumn(QStringLiteral("item"));
        QCOMPARE(column(items, "item"), QStringList({QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("a")}));
        // On screen numbers sort as numbers.
        items.table->userClickColumn(QStringLiteral("qty"));
        QCOMPARE(column(items, "qty"), QStringList({QStringLiteral("10"), QStringLiteral("9"), QStringLiteral("2")}));
        items.table->userClickColumn(QStringLiteral("qty"));
        QCOMPARE(column(items, "qty"), QStringList({QStringLiteral("2"), QStringLiteral("9"), QStringLiteral("10")}));
    }

    void shouldWriteThePictureAtFinishAndDeleteItAtOnce()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        items.create();
        const int id = items.getCurrentItem()->getID();
        items.imageView->userSetImage(QByteArrayLiteral("II*\0picture"));
        QVERIFY(!QFile::exists(platform::paths::itemImagePath(id)));
        items.finish();
        QVERIFY(QFile::exists(platform::paths::itemImagePath(id)));

        items.table->selectRow(0);
        items.edit();
        QCOMPARE(items.imageView->image(), QByteArrayLiteral("II*\0picture"));
        items.deleteImage();
        items.cancel();
        QVERIFY(!QFile::exists(platform::paths::itemImagePath(id)));
        QVERIFY(items.imageView->image().isEmpty());
    }

    void shouldNotSaveADeletedItemAgain()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addItem(items, 1, QStringLiteral("Bolt"), QStringLiteral("4"));
        items.table->selectRow(0);
        items.edit();
        items.cancel();
        TestEnvironment::current().scriptAlertAnswers({1});
        items.deleteKey();
        // The editor still holds the deleted item: finishing it (as "New
        // Similar" does) neither lists it again nor writes it.
        items.createSimilar();
        QCOMPARE(items.getCount(), 0);
        QVERIFY(!testlib::readFile(platform::paths::bundleFile(QStringLiteral("items.xml"))).contains("Bolt"));
    }

    void shouldOfferOnlySuppliersAndPutTheChosenNameInTheEditor()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        addContact(shop, QStringLiteral("Ann Customer"), QStringLiteral("Customer"));
        addContact(shop, QStringLiteral("Acme"), QStringLiteral("Supplier"));
        Contact *hidden = addContact(shop, QStringLiteral("Bolts Ltd"), QStringLiteral("Supplier"));
        hidden->setVisible(false);
        addContact(shop, QStringLiteral("Sam Supply"), QStringLiteral("supplier"));
        SupplierDataSource &suppliers = *shop.getSupplierDataSource();
        QCOMPARE(suppliers.getCount(), 2);
        QCOMPARE(suppliers.objectValueForTableColumn(QStringLiteral("name"), 1), QStringLiteral("Bolts Ltd"));
        QCOMPARE(TestEnvironment::current().standardOutputText(), QStringLiteral("request for item 1\n"));
        QCOMPARE(suppliers.getItemById(1)->getFieldByName(QStringLiteral("name")), QStringLiteral("Ann Customer"));

        items.create();
        items.pickSupplier();
        Picker &picker = *shop.getPicker();
        QVERIFY(picker.pickerWindow->isVisible());
        QCOMPARE(picker.pickerWindow->title(), QStringLiteral("Select Supplier"));
        QCOMPARE(picker.numberOfRowsInTableView(), 2);
        picker.table->selectRow(1);
        picker.finish();
        QCOMPARE(items.supplierName->stringValue(), QStringLiteral("Bolts Ltd"));
        QCOMPARE(items.getCurrentItem()->getSupplier(), QString());
    }

    void shouldKeepThePreviousSupplierNameForANewItem()
    {
        Shop shop;
        ItemManager &items = *shop.getItemManager();
        Contact *acme = addContact(shop, QStringLiteral("Acme"), QStringLiteral("Supplier"));
        Item *older = addItem(items, 1, QStringLiteral("Bolt"), QStringLiteral("4"));
        older->setSupplier(QString::number(acme->getID()));
        items.table->selectRow(0);
        items.edit();
        items.cancel();
        items.create();
        QCOMPARE(items.supplierName->stringValue(), QStringLiteral("Acme"));
        items.finish();
        QCOMPARE(static_cast<Item *>(items.getItemById(2))->getSupplier(), QString::number(acme->getID()));
    }
};

QUORVEL_TEST(ItemManagerTest)
#include "ItemManagerTest.moc"
