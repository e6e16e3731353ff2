// The contacts list of a running controller, with no window: the outline of
// companies and their people, the counts and lookups other lists walk,
// the filter, deleting, the editor of individuals and the postal block on
// the pasteboard, and the hand-over to the company editors.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "FakeServices.h"
#include "app/Quorvel.h"
#include "checkout/CheckoutManager.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "platform/Workspace.h"
#include "reports/ReportManager.h"
#include "store/Picker.h"

#include <QFile>
#include <QSettings>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The contact editors with the managers they ask for, over a stand-in for
// the controller whose database is those managers (the contact's reports
// read it).
struct Shop
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    OrderManager orders{&services};
    BOMManager bom{&services};
    ItemManager items{&services};
    CheckoutManager checkout{&services};
    CompanyEditor companies{&services};
    CompanyContactEditor people{&services, &contacts};
    kdDataSource bills, tasks;
    Picker picker;
    ReportManager reports{&services};
    Shop()
    {
        services.contacts = &contacts;
        services.orders = &orders;
        services.bom = &bom;
        services.items = &items;
        services.checkoutManager = &checkout;
        services.companyEditor = &companies;
        services.companyContactEditor = &people;
        services.picker = &picker;
        services.useCollections(contacts, orders, items, bom, bills, tasks);
    }
    ContactManager *getContactManager() { return &contacts; }
    OrderManager *getOrderManager() { return &orders; }
    CompanyEditor *getCompanyEditor() { return &companies; }
    CompanyContactEditor *getCompanyContactEditor() { return &people; }
    ReportManager *getReportManager() { return &reports; }
};

Contact *addContact(ContactManager &contacts, int id, const QString &name, const QString &kind,
                    const QString &type = QStringLiteral("Customer"), int company = 0)
{
    auto contact = std::make_shared<Contact>();
    contact->setID(id);
    contact->setName(name);
    contact->setKind(kind);
    contact->setType(type);
    contact->setCompany(company);
    contacts.add(contact);
    return contact.get();
}

// Acme (1) with Bob and Cat, Ann on her own, Zed of a deleted company 9,
// Dee of Bolt (5), Bolt a supplier.
void fillWithCompanies(ContactManager &contacts)
{
    addContact(contacts, 7, QStringLiteral("Zed Old"), QStringLiteral("Company Contact"), QStringLiteral("Supplier"),
               9);
    addContact(contacts, 1, QStringLiteral("Acme"), QStringLiteral("Company"));
    addContact(contacts, 2, QStringLiteral("Bob Hill"), QStringLiteral("Company Contact"), QStringLiteral("Customer"),
               1);
    addContact(contacts, 3, QStringLiteral("Ann Lee"), QStringLiteral("Individual"), QStringLiteral("Other"));
    addContact(contacts, 4, QStringLiteral("Cat Ray"), QStringLiteral("Company Contact"), QStringLiteral("Customer"),
               1);
    addContact(contacts, 5, QStringLiteral("Bolt"), QStringLiteral("Company"), QStringLiteral("Supplier"));
    addContact(contacts, 6, QStringLiteral("Dee Fox"), QStringLiteral("Company Contact"), QStringLiteral("Customer"),
               5);
}

QStringList names(const ContactManager &contacts)
{
    QStringList shown;
    for (int row = 0; row < contacts.numberOfRowsInTableView(); ++row)
        shown << contacts.objectValueForTableColumn(QStringLiteral("1"), row);
    return shown;
}

}  // namespace

class ContactManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldListCompaniesWithTheirPeopleAndDropThoseOfADeletedCompany()
    {
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        contacts.filter();
        QCOMPARE(names(contacts), (QStringList{"Acme", "Bob Hill", "Cat Ray", "Ann Lee", "Bolt", "Dee Fox"}));
        QCOMPARE(contacts.countCompanies(), 3);
        QCOMPARE(contacts.countSuppliers(), 2);
        QCOMPARE(contacts.numberOfChildrenOfItem(nullptr), 3);
        QCOMPARE(contacts.numberOfChildrenOfItem(contacts.getContactbyId(QStringLiteral("1"))), 2);
        QVERIFY(contacts.isItemExpandable(contacts.getContactbyId(QStringLiteral("5"))));
        QVERIFY(!contacts.isItemExpandable(contacts.getContactbyId(QStringLiteral("3"))));

        contacts.setExpanded(contacts.getContactbyId(QStringLiteral("1")), false);
        QCOMPARE(names(contacts), (QStringList{"Acme", "Ann Lee", "Bolt", "Dee Fox"}));
    }

    void shouldShowPeopleWhateverTheirOwnVisibleFlag()
    {
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        contacts.searchField->setStringValue(QStringLiteral("Acme"));
        contacts.filter();
        QCOMPARE(names(contacts), (QStringList{"Acme", "Bob Hill", "Cat Ray"}));

        contacts.searchField->setStringValue(QString());
        contacts.typeFilter->userSelectItemAtIndex(2);  // "Supplier"
        QCOMPARE(names(contacts), (QStringList{"Bolt", "Dee Fox"}));
    }

    void shouldShowTheOutlineColumns_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("add1");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("street with a leading space") << "Individual"
                                                     << "Customer"
                                                     << "High St" << QStringList{"Ann", " High St", "Customer", ""};
        QTest::newRow("no street, Other hidden") << "Company"
                                                 << "Other"
                                                 << "" << QStringList{"Ann", "", "", ""};
        QTest::newRow("a company's person") << "Company Contact"
                                            << "Supplier"
                                            << "High St" << QStringList{"Ann", "", "", ""};
    }
    void shouldShowTheOutlineColumns()
    {
        QFETCH(QString, kind);
        QFETCH(QString, type);
        QFETCH(QString, add1);
        QFETCH(QStringList, columns);
        Shop shop;
        Contact *ann = addContact(*shop.getContactManager(), 1, QStringLiteral("Ann"), kind, type);
        ann->setAdd1(add1);
        ann->setAdd2(QStringLiteral("Flat 2"));
        QStringList shown;
        for (const char *id : {"1", "2", "3", "name2"})
            shown << shop.getContactManager()->objectValueForOutlineColumn(QLatin1String(id), ann);
        QCOMPARE(shown, columns);
    }

    void shouldKeepTheLookupQuirks()
    {
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        QCOMPARE(contacts.getnthContact(1, 1)->getName(), QStringLiteral("Cat Ray"));
        QCOMPARE(contacts.getnthContact(-1, 5)->getName(), QStringLiteral("Zed Old"));  // any company's first
        QCOMPARE(contacts.getnthContact(1, 5), nullptr);
        QCOMPARE(contacts.getnthSupplier(1)->getName(), QStringLiteral("Bolt"));
        QCOMPARE(contacts.getnthCompany(2)->getName(), QStringLiteral("Bolt"));
        QCOMPARE(contacts.getnthCompany(3), nullptr);
        QCOMPARE(contacts.getContactbyName(QStringLiteral("acme")), nullptr);
        QCOMPARE(contacts.getContactbyName(QStringLiteral("Acme"))->getID(), 1);
    }

    void shouldSortPeopleBySurnameAndCompaniesByName()
    {
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        contacts.filter();
        contacts.didClickTableColumn(QStringLiteral("1"), false);  // the list's "descending" runs A to Z
        QCOMPARE(names(contacts), (QStringList{"Acme", "Bob Hill", "Cat Ray", "Bolt", "Dee Fox", "Ann Lee"}));
    }

    void shouldAskBeforeDeletingAndDeleteOnlyOnOk_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("left");
        QTest::newRow("OK") << 1 << 0;
        QTest::newRow("Cancel") << 0 << 1;
    }
    void shouldAskBeforeDeletingAndDeleteOnlyOnOk()
    {
        QFETCH(int, answer);
        QFETCH(int, left);
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        contacts.filter();
        contacts.getCompanyOutline()->selectRow(3);  // Ann Lee, after Acme and its two people
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().scriptAlertAnswers({answer});
        contacts.deleteKey();
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QCOMPARE(TestEnvironment::current().alertsShown().first().message, QStringLiteral("Delete contact"));
        QCOMPARE(contacts.getCount(), 6 + left);
        QCOMPARE(contacts.getContactbyName(QStringLiteral("Ann Lee")) != nullptr, left == 1);
    }

    void shouldAddANewContactOnFinishWithoutItsWebsite()
    {
        // What reaches the disk: the whole controller, which writes.
        Quorvel shop;
        ContactManager &contacts = *shop.getContactManager();
        contacts.create();
        QVERIFY(contacts.editorWindow->isVisible());
        contacts.name->userSetStringValue(QStringLiteral("Ann Lee"));
        contacts.website->userSetStringValue(QStringLiteral("www.example.com"));
        contacts.finish();
        QVERIFY(!contacts.editorWindow->isVisible());
        QCOMPARE(contacts.getCount(), 1);
        QCOMPARE(contacts.getnthItem(0)->getFieldByName(QStringLiteral("website")), QString(""));
        QFile file(platform::paths::bundleFile(QStringLiteral("contacts.xml")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("Ann Lee"));

        contacts.create();
        contacts.cancel();
        QCOMPARE(contacts.getCount(), 1);
    }

    void shouldPasteAPostalBlock_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("fields");  // name, add1, add2, add3, postcode
        QTest::newRow("copied contact") << "Mrs Ann Lee\r1 High St\rFlat 2\rTown\rAB1 2CD\r"
                                        << QStringList{"Mrs Ann Lee", "1 High St", "Flat 2", "Town", "AB1 2CD"};
        QTest::newRow("line feeds, four parts")
            << "Ann\n1 High St\nFlat 2\nAB1" << QStringList{"Ann", "1 High St", "Flat 2", "old3", "AB1"};
        QTest::newRow("two parts") << "Ann\r1 High St" << QStringList{"Ann", "1 High St", "old2", "old3", "oldpc"};
        QTest::newRow("line feed wins over return")
            << "Ann\rX\nStreet" << QStringList{"Ann\rX", "Street", "old2", "old3", "oldpc"};
    }
    void shouldPasteAPostalBlock()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, fields);
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        contacts.add2->setStringValue(QStringLiteral("old2"));
        contacts.add3->setStringValue(QStringLiteral("old3"));
        contacts.postcode->setStringValue(QStringLiteral("oldpc"));
        platform::setPasteboardString(text);
        contacts.pasteContact();
        const QStringList shown{contacts.name->stringValue(), contacts.add1->stringValue(),
                                contacts.add2->stringValue(), contacts.add3->stringValue(),
                                contacts.postcode->stringValue()};
        QCOMPARE(shown, fields);
    }

    void shouldCopyThePostalBlockWithAReturnAfterEachLine()
    {
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        Contact *ann = addContact(contacts, 1, QStringLiteral("Ann Lee"), QStringLiteral("Individual"));
        ann->setTitle(QStringLiteral("Mrs"));
        ann->setAdd1(QStringLiteral("1 High St"));
        ann->setPostcode(QStringLiteral("AB1"));
        contacts.setCurrentItem(ann);
        contacts.copyContact();
        QCOMPARE(platform::pasteboardString(), QStringLiteral("Mrs Ann Lee\r1 High St\r\r\rAB1\r"));
    }
    void shouldOpenEachKindInItsOwnEditor_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("editor");  // 0 individuals, 1 companies, 2 a company's people
        QTest::newRow("individual") << "Ann Lee" << 0;
        QTest::newRow("company") << "Acme" << 1;
        QTest::newRow("company's person") << "Bob Hill" << 2;
    }
    void shouldOpenEachKindInItsOwnEditor()
    {
        QFETCH(QString, name);
        QFETCH(int, editor);
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        Contact *contact = contacts.getContactbyName(name);
        contacts.editThisContact(contact);
        QCOMPARE(contacts.getCurrentItem(), contact);
        QCOMPARE(contacts.editorWindow->isVisible(), editor == 0);
        QCOMPARE(shop.getCompanyEditor()->editorWindow->isVisible(), editor == 1);
        QCOMPARE(shop.getCompanyContactEditor()->editorWindow->isVisible(), editor == 2);
    }

    void shouldStoreTheContactAndOpenItInTheOtherEditorInItsPlace_data()
    {
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<bool>("link");  // linkToCompany, else makeCompany
        QTest::addColumn<QString>("kind");
        QTest::newRow("link a new contact") << true << true << "Company Contact";
        QTest::newRow("link an existing contact") << false << true << "Company Contact";
        QTest::newRow("make a new company") << true << false << "Company";
    }
    void shouldStoreTheContactAndOpenItInTheOtherEditorInItsPlace()
    {
        QFETCH(bool, isNew);
        QFETCH(bool, link);
        QFETCH(QString, kind);
        // What reaches the disk: the whole controller, which writes.
        Quorvel shop;
        ContactManager &contacts = *shop.getContactManager();
        if (isNew)
            contacts.create();
        else
            contacts.editThisContact(addContact(contacts, 3, QStringLiteral("Ann Lee"), QStringLiteral("Individual")));
        contacts.name->userSetStringValue(QStringLiteral("Ann Lea"));
        contacts.editorWindow->widgetFrameChanged(QRect(10, 20, 300, 200));
        if (link)
            contacts.linkToCompany();
        else
            contacts.makeCompany();

        QCOMPARE(contacts.getCount(), 1);
        Contact *ann = static_cast<Contact *>(contacts.getnthItem(0));
        QCOMPARE(ann->getKind(), kind);
        QCOMPARE(ann->getName(), QStringLiteral("Ann Lea"));
        QVERIFY(!contacts.editorWindow->isVisible());
        Window *other = link ? shop.getCompanyContactEditor()->editorWindow : shop.getCompanyEditor()->editorWindow;
        QVERIFY(other->isVisible());
        QCOMPARE(other->frame(), QRect(10, 20, 300, 200));
        QCOMPARE(link ? shop.getCompanyContactEditor()->getCurrentItem() : shop.getCompanyEditor()->getCurrentItem(),
                 ann);
        QCOMPARE(link ? shop.getCompanyContactEditor()->isCreating() : shop.getCompanyEditor()->isCreating(), isNew);
        const QSettings settings(QStringLiteral("Quorvel"), QStringLiteral("Quorvel"));
        QCOMPARE(settings.value(QStringLiteral("NSWindow Frame ContactWindows")).toString(),
                 QStringLiteral("10 20 300 200"));
        QFile file(platform::paths::bundleFile(QStringLiteral("contacts.xml")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains(kind.toUtf8()));
    }

    void shouldOpenThePersonOfTheSelectedRowOfTheCompanysTable_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("opened");
        QTest::newRow("no row: any company's first person") << -1 << "Zed Old";
        QTest::newRow("first row") << 0 << "Dee Fox";
        QTest::newRow("past the end") << 1 << "";
    }
    void shouldOpenThePersonOfTheSelectedRowOfTheCompanysTable()
    {
        QFETCH(int, row);
        QFETCH(QString, opened);
        Shop shop;
        ContactManager &contacts = *shop.getContactManager();
        fillWithCompanies(contacts);
        contacts.setCurrentItem(contacts.getContactbyName(QStringLiteral("Bolt")));
        contacts.getTableView()->userDoubleClick(row);
        const Contact *person = shop.getCompanyContactEditor()->getCurrentItem();
        QCOMPARE(person ? person->getName() : QString(""), opened);
        QCOMPARE(shop.getCompanyContactEditor()->editorWindow->isVisible(), !opened.isEmpty());
    }

    void shouldShowTheOpenContactsOrders()
    {
        Shop shop;
        shop.getReportManager()->populateFilter();  // installs the contact reports
        ContactManager &contacts = *shop.getContactManager();
        Contact *ann = addContact(contacts, 1, QStringLiteral("Ann Lee"), QStringLiteral("Individual"));
        Contact *cy = addContact(contacts, 2, QStringLiteral("Cy Dunn"), QStringLiteral("Individual"));
        for (const auto &[who, value] : {std::pair{ann, "120.00"}, {ann, "50.50"}, {cy, "9.00"}}) {
            auto order = std::make_shared<Order>();
            order->setContact(who);
            order->setValueWithTax(QString::fromUtf8(value));
            shop.getOrderManager()->add(order);
        }
        contacts.editThisContact(ann);
        const TableView &orders = *contacts.reports->orderTableView;
        const int rows = orders.dataSource()->numberOfRowsInTableView();
        QCOMPARE(rows, 2 + 2);  // two orders, then the total's two rows
        QCOMPARE(orders.dataSource()->objectValueForTableColumn(QStringLiteral("field5"), rows - 1),
                 QStringLiteral("170.50"));
        QCOMPARE(contacts.reports->itemTableView->tableColumns().size(), 5);
    }
};

QUORVEL_TEST(ContactManagerTest)
#include "ContactManagerTest.moc"
