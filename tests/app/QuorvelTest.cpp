// The controller without any window: start-up, routing of the global
// commands, the toolbar's lists, lookups, export and quitting.
#include "Preferences.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/Bill.h"
#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "checkout/CheckoutManager.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "reports/ReportItem.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QTest>

using testlib::TestEnvironment;

namespace {

void storeModules(const QString &time, const QString &data, const QString &accounts, bool withNotepad = true)
{
    QSettings settings = testlib::preferences();
    settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    auto store = [&settings](const char *key, const QString &value) {
        if (value.isNull())
            settings.remove(QLatin1String(key));
        else
            settings.setValue(QLatin1String(key), value);
    };
    store("QuorvelTimeMmt", time);
    store("QuorvelDataMmt", data);
    store("QuorvelAccountMmt", accounts);
    if (withNotepad)
        QDir().mkpath(platform::paths::bundleFile(QStringLiteral("notepad.rtfd")));
}

Contact *addContact(Quorvel &quorvel, const QString &name)
{
    auto contact = std::make_shared<Contact>();
    contact->setName(name);
    quorvel.getContactManager()->add(contact);
    return contact.get();
}

Order *addOrder(Quorvel &quorvel, const QString &number, Contact *contact = nullptr)
{
    auto order = std::make_shared<Order>();
    order->setOrderNum(number);
    order->setContact(contact);
    quorvel.getOrderManager()->add(order);
    return order.get();
}

// Makes the main window key with the given tab (and accounts sub-tab) shown.
void showTab(Quorvel &quorvel, const QString &tab, const QString &accountsTab = QStringLiteral("1"))
{
    quorvel.mainWindow->makeKeyAndOrderFront();
    quorvel.mainTabView->selectTabViewItemWithIdentifier(tab);
    quorvel.accountsTabView->selectTabViewItemWithIdentifier(accountsTab);
}

QStringList fileNamesIn(const QString &dir)
{
    return QDir(dir).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

}  // namespace

class QuorvelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::preferences().clear();
    }

    void shouldListTheToolbarItemsForTheModulesThatAreOn_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("data");
        QTest::addColumn<QString>("accounts");
        QTest::addColumn<QString>("expected");
        const QString head = QStringLiteral("print delete edit company contact order ");
        QTest::newRow("every module") << "YES"
                                      << "YES"
                                      << "YES" << head + "bill todo item pad html csv checkout prefs help";
        QTest::newRow("only time") << "YES"
                                   << "NO"
                                   << "NO" << head + "todo item pad checkout prefs help";
        QTest::newRow("only accounts") << "NO"
                                       << "NO"
                                       << "YES" << head + "bill item pad checkout prefs help";
        QTest::newRow("only data") << "NO"
                                   << "YES"
                                   << "NO" << head + "item pad html csv checkout prefs help";
        QTest::newRow("none") << "NO"
                              << "NO"
                              << "NO" << head + "item pad checkout prefs help";
        QTest::newRow("absent keys count as on")
            << QString() << QString() << QString() << head + "bill todo item pad html csv checkout prefs help";
    }
    void shouldListTheToolbarItemsForTheModulesThatAreOn()
    {
        QFETCH(QString, time);
        QFETCH(QString, data);
        QFETCH(QString, accounts);
        QFETCH(QString, expected);
        storeModules(time, data, accounts);
        Quorvel quorvel;
        quorvel.awakeFromNib();
        QStringList shortNames;
        for (QString identifier : quorvel.toolbarDefaultItemIdentifiers(Quorvel::toolbarIdentifier()))
            shortNames << identifier.remove(QStringLiteral("ItemIdentifier"));
        QCOMPARE(shortNames.join(QLatin1Char(' ')), expected);
        QCOMPARE(quorvel.toolbarAllowedItemIdentifiers(Quorvel::toolbarIdentifier()),
                 quorvel.toolbarDefaultItemIdentifiers(Quorvel::toolbarIdentifier()));
        QVERIFY(quorvel.toolbarAllowedItemIdentifiers(QStringLiteral("anotherToolBar")).isEmpty());
    }

    void shouldKeepEveryModuleOffWithoutANotepadFile()
    {
        storeModules(QStringLiteral("YES"), QStringLiteral("YES"), QStringLiteral("YES"), false);
        Quorvel quorvel;
        quorvel.awakeFromNib();
        QVERIFY(!quorvel.hasTime() && !quorvel.hasData() && !quorvel.hasAccounts());
    }

    void shouldBuildToolbarItemsWithTheUsersWords()
    {
        storeModules(QStringLiteral("YES"), QStringLiteral("YES"), QStringLiteral("YES"));
        testlib::preferences().setValue(QStringLiteral("QuorvelTermOrder"), QStringLiteral("Job"));
        Quorvel quorvel;
        quorvel.awakeFromNib();
        const ToolbarItem order = quorvel.toolbarItemForItemIdentifier(QStringLiteral("orderItemIdentifier"));
        QCOMPARE(order.label, QStringLiteral("New Job"));
        QCOMPARE(order.image, QStringLiteral("new"));
        QVERIFY(order.action);
        const ToolbarItem unknown = quorvel.toolbarItemForItemIdentifier(QStringLiteral("nothingLikeThis"));
        QVERIFY(unknown.image.isEmpty() && unknown.label.isEmpty() && !unknown.action);
    }

    void shouldPrintAFixedLineAndLeaveTheItemInertWhenItsImageIsMissing_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("image");
        QTest::addColumn<QString>("line");
        QTest::newRow("task") << "todoItemIdentifier"
                              << "eggtimer"
                              << "Image todo not found.";
        QTest::newRow("edit") << "editItemIdentifier"
                              << "edit"
                              << "Image Edit not found.";
        QTest::newRow("order") << "orderItemIdentifier"
                               << "new"
                               << "Image new not found.";
    }
    void shouldPrintAFixedLineAndLeaveTheItemInertWhenItsImageIsMissing()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, image);
        QFETCH(QString, line);
        Quorvel quorvel;
        QVERIFY(quorvel.imageExists(image));  // the program carries every image
        quorvel.imageExists = [image](const QString &name) { return name != image; };
        const ToolbarItem item = quorvel.toolbarItemForItemIdentifier(identifier);
        QCOMPARE(TestEnvironment::current().standardOutputText(), line);
        QVERIFY(item.label.isEmpty() && item.image.isEmpty() && !item.action);
        QCOMPARE(item.identifier, identifier);
    }

    void shouldFindTheFrontDataSourceAndViewOfEachTab_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("accountsTab");
        QTest::addColumn<QString>("dataSource");
        QTest::addColumn<QString>("view");
        QTest::newRow("contacts") << "1"
                                  << "1"
                                  << "contacts"
                                  << "contacts";
        QTest::newRow("orders") << "2"
                                << "1"
                                << "orders"
                                << "orders";
        QTest::newRow("stock") << "3"
                               << "1"
                               << "items"
                               << "items";
        QTest::newRow("tasks") << "pro"
                               << "1"
                               << "tasks"
                               << "tasks";
        QTest::newRow("accounts, money out") << "pro2"
                                             << "1"
                                             << "bills"
                                             << "bills";
        QTest::newRow("accounts, money in") << "pro2"
                                            << "2"
                                            << "none"
                                            << "money in";
        QTest::newRow("accounts, statement") << "pro2"
                                             << "3"
                                             << "none"
                                             << "statement";
        QTest::newRow("reports") << "pro3"
                                 << "1"
                                 << "reports"
                                 << "reports";
    }
    void shouldFindTheFrontDataSourceAndViewOfEachTab()
    {
        QFETCH(QString, tab);
        QFETCH(QString, accountsTab);
        QFETCH(QString, dataSource);
        QFETCH(QString, view);
        Quorvel quorvel;
        const QMap<QString, TableDataSource *> sources{{QStringLiteral("contacts"), quorvel.getContactManager()},
                                                       {QStringLiteral("orders"), quorvel.getOrderManager()},
                                                       {QStringLiteral("items"), quorvel.getItemManager()},
                                                       {QStringLiteral("tasks"), quorvel.getActionManager()},
                                                       {QStringLiteral("bills"), quorvel.getBillManager()},
                                                       {QStringLiteral("reports"), quorvel.getReportManager()},
                                                       {QStringLiteral("none"), nullptr}};
        const QMap<QString, Outlet *> views{
            {QStringLiteral("contacts"), quorvel.getContactManager()->getCompanyOutline()},
            {QStringLiteral("orders"), quorvel.getOrderManager()->getTableView()},
            {QStringLiteral("items"), quorvel.getItemManager()->getTableView()},
            {QStringLiteral("tasks"), quorvel.getActionManager()->getTableView()},
            {QStringLiteral("bills"), quorvel.getBillManager()->getTableView()},
            {QStringLiteral("money in"), quorvel.getBillManager()->getInTableView()},
            {QStringLiteral("statement"), quorvel.getBillManager()->getSttTableView()},
            {QStringLiteral("reports"), quorvel.getReportManager()->table}};
        showTab(quorvel, tab, accountsTab);
        QCOMPARE(quorvel.determineFrontDataSource(), sources.value(dataSource));
        QCOMPARE(quorvel.determineFrontView(), views.value(view));
        QCOMPARE(TestEnvironment::current().logLines().contains(QStringLiteral("*** is reports")),
                 tab == QLatin1String("pro3"));
    }

    void shouldAnswerTheKeyWindowsFirstResponderWhenAnotherWindowIsKey()
    {
        Quorvel quorvel;
        showTab(quorvel, QStringLiteral("2"));
        Window other;
        TextView focused;
        other.widgetFocusChanged(&focused);
        other.makeKeyAndOrderFront();
        QVERIFY(!quorvel.mainWindow->isKeyWindow());
        QCOMPARE(quorvel.determineFrontView(), &focused);
        QCOMPARE(quorvel.determineFrontDataSource(), nullptr);

        bool printed = false;
        connect(&focused, &Outlet::printRequested, this, [&printed](bool *taken) { printed = *taken = true; });
        quorvel.printMenuItem();
        QVERIFY(printed);
    }

    void shouldSendDeleteToTheManagerWhoseTableHasFocus_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("question");
        QTest::newRow("orders") << "orders"
                                << "Delete Order";
        QTest::newRow("contacts") << "contacts"
                                  << "Delete contact";
        QTest::newRow("tasks") << "tasks"
                               << "Delete Task";
        QTest::newRow("items") << "items"
                               << "Delete Item";
        QTest::newRow("bills") << "bills"
                               << "Delete Bill";
        QTest::newRow("bill of materials: not served") << "materials"
                                                       << "";
        QTest::newRow("reports: not served") << "reports"
                                             << "";
    }
    void shouldSendDeleteToTheManagerWhoseTableHasFocus()
    {
        QFETCH(QString, list);
        QFETCH(QString, question);
        Quorvel quorvel;
        const QMap<QString, kdDataSource *> managers{{QStringLiteral("orders"), quorvel.getOrderManager()},
                                                     {QStringLiteral("contacts"), quorvel.getContactManager()},
                                                     {QStringLiteral("tasks"), quorvel.getActionManager()},
                                                     {QStringLiteral("items"), quorvel.getItemManager()},
                                                     {QStringLiteral("bills"), quorvel.getBillManager()},
                                                     {QStringLiteral("materials"), quorvel.getBOMManager()},
                                                     {QStringLiteral("reports"), quorvel.getReportManager()}};
        kdDataSource *manager = managers.value(list);
        // Records of the list's own kind.
        const QMap<QString, std::function<std::shared_ptr<dataObject>()>> makers{
            {QStringLiteral("orders"), [] { return std::make_shared<Order>(); }},
            {QStringLiteral("contacts"), [] { return std::make_shared<Contact>(); }},
            {QStringLiteral("tasks"), [] { return std::make_shared<Action>(); }},
            {QStringLiteral("items"), [] { return std::make_shared<Item>(); }},
            {QStringLiteral("bills"), [] { return std::make_shared<Bill>(); }},
            {QStringLiteral("materials"), [] { return std::make_shared<Material>(); }},
            {QStringLiteral("reports"), [] { return std::make_shared<ReportItem>(); }}};
        manager->add(makers.value(list)());
        manager->add(makers.value(list)());
        manager->getTableView()->selectRow(1);
        quorvel.mainWindow->makeKeyAndOrderFront();
        quorvel.mainWindow->widgetFocusChanged(manager->getTableView());
        TestEnvironment::current().scriptAlertAnswers({1});

        quorvel.deleteMenuItem();

        const auto &alerts = TestEnvironment::current().alertsShown();
        if (question.isEmpty()) {
            QVERIFY(alerts.isEmpty());
            QCOMPARE(manager->getCount(), 2);
            return;
        }
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(alerts.first().message, question);
        QCOMPARE(alerts.first().informativeText,
                 QStringLiteral("Do you want to delete the selected item from the database?"));
        QCOMPARE(alerts.first().defaultButton, QStringLiteral("OK"));
        QCOMPARE(alerts.first().alternateButton, QStringLiteral("Cancel"));
        QCOMPARE(manager->getCount(), 1);
        QCOMPARE(manager->getnthItem(0)->getID(), 1);  // the selected second record went
    }

    void shouldCheckOutTheSelectedOrderOnlyFromTheFocusedOrderList()
    {
        Quorvel quorvel;
        Order *order = addOrder(quorvel, QStringLiteral("INV1"));
        quorvel.getOrderManager()->getTableView()->selectRow(0);

        quorvel.checkout();  // the order list does not have focus: a new sale
        QVERIFY(quorvel.getCheckoutManager()->isCreating());
        QVERIFY(quorvel.getCheckoutManager()->getEditedOrder() != order);
        QVERIFY(quorvel.getCheckoutManager()->isOpen());

        quorvel.mainWindow->widgetFocusChanged(quorvel.getOrderManager()->getTableView());
        quorvel.checkout();
        QCOMPARE(quorvel.getCheckoutManager()->getEditedOrder(), order);
    }

    void shouldBringTheOrdersToFront()
    {
        Quorvel quorvel;
        quorvel.mainTabView->selectTabViewItemWithIdentifier(QStringLiteral("3"));
        quorvel.bringOrdersToFront();
        QCOMPARE(quorvel.mainTabView->selectedIdentifier(), QStringLiteral("2"));
        QVERIFY(quorvel.mainWindow->isKeyWindow() && quorvel.mainWindow->isVisible());
    }

    void shouldAnswerTheLookups()
    {
        Quorvel quorvel;
        Contact *ann = addContact(quorvel, QStringLiteral("Ann"));
        addContact(quorvel, QStringLiteral("Bob"));
        Order *order = addOrder(quorvel, QStringLiteral("INV1"), ann);
        Order *orphan = addOrder(quorvel, QStringLiteral("INV2"));

        QCOMPARE(quorvel.getContactNameforId(QStringLiteral("0")), QStringLiteral(""));
        QVERIFY(!quorvel.getContactNameforId(QStringLiteral("0")).isNull());
        QCOMPARE(quorvel.getContactNameforId(QStringLiteral("2")), QStringLiteral("Bob"));
        QVERIFY(quorvel.getContactNameforId(QStringLiteral("99")).isNull());
        QCOMPARE(quorvel.getContactIdForName(QStringLiteral("Bob")), QStringLiteral("2"));
        QCOMPARE(quorvel.getContactIdForName(QStringLiteral("bob")), QStringLiteral("0"));
        QCOMPARE(quorvel.getContactIdForOrder(order->getID()), ann->getID());
        QCOMPARE(quorvel.getContactIdForOrder(orphan->getID()), 0);
        QCOMPARE(quorvel.getContactIdForOrder(77), 0);
        QCOMPARE(quorvel.getCurrentContactIdAsString(), QStringLiteral("-1"));
        quorvel.getContactManager()->setCurrentItem(ann);
        QCOMPARE(quorvel.getCurrentContactIdAsString(), QStringLiteral("1"));

        quorvel.setCurrentOrder(orphan->getID());
        QCOMPARE(quorvel.getCurrentOrder(), orphan->getID());
        quorvel.connectContact(ann, orphan->getID());
        QCOMPARE(orphan->getContact(), ann);
    }

    void shouldAcceptADocumentAndLeaveTheDataAsItWas()
    {
        Quorvel quorvel;
        addContact(quorvel, QStringLiteral("Ann"));
        QVERIFY(quorvel.applicationOpenFile(QStringLiteral("/nowhere/some.csv")));
        QCOMPARE(quorvel.getContactManager()->getCount(), 1);
        QVERIFY(!QDir(platform::paths::bundleDir()).exists());
    }

    void shouldWriteOnlyTheFileOfTheManagerThatAsks_data()
    {
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("contacts") << "contacts" << QStringList{"contacts.xml"};
        QTest::newRow("orders") << "orders" << QStringList{"orders.xml"};
        QTest::newRow("bill of materials") << "materials" << QStringList{"itemsordered.xml"};
        QTest::newRow("checkout: nothing") << "checkout" << QStringList{};
        QTest::newRow("controller: all six")
            << "controller"
            << QStringList{"actions.xml", "bills.xml", "contacts.xml", "items.xml", "itemsordered.xml", "orders.xml"};
    }
    void shouldWriteOnlyTheFileOfTheManagerThatAsks()
    {
        QFETCH(QString, sender);
        QFETCH(QStringList, files);
        Quorvel quorvel;
        const QMap<QString, QObject *> senders{{QStringLiteral("contacts"), quorvel.getContactManager()},
                                               {QStringLiteral("orders"), quorvel.getOrderManager()},
                                               {QStringLiteral("materials"), quorvel.getBOMManager()},
                                               {QStringLiteral("checkout"), quorvel.getCheckoutManager()},
                                               {QStringLiteral("controller"), &quorvel}};
        quorvel.writeDatabase(senders.value(sender));
        QCOMPARE(fileNamesIn(platform::paths::bundleDir()), files);
    }

    void shouldSaveThePreferencesAndEverythingWhenQuitting()
    {
        storeModules(QStringLiteral("NO"), QStringLiteral("YES"), QStringLiteral("YES"));
        Quorvel quorvel;
        quorvel.awakeFromNib();
        addContact(quorvel, QStringLiteral("Ann"));
        quorvel.getPrefsController()->taxRate->setStringValue(QStringLiteral("17.5"));
        QVERIFY(quorvel.applicationShouldTerminate());

        const QSettings settings = testlib::preferences();
        QCOMPARE(settings.value(QStringLiteral("QuorvelTaxRate")).toString(), QStringLiteral("17.5"));
        QCOMPARE(settings.value(QStringLiteral("QuorvelTimeMmt")).toString(), QStringLiteral("NO"));
        QStringList written = fileNamesIn(platform::paths::bundleDir());
        for (const char *name :
             {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"})
            QVERIFY2(written.contains(QLatin1String(name)), name);
        QFile contacts(platform::paths::bundleFile(QStringLiteral("contacts.xml")));
        QVERIFY(contacts.open(QIODevice::ReadOnly));
        QVERIFY(contacts.readAll().contains("<string>Ann</string>"));
    }

    void shouldReadTheDatabaseAtStartAndFilterEachList()
    {
        {
            Quorvel first;
            addContact(first, QStringLiteral("Ann"));
            addOrder(first, QStringLiteral("INV7"));
            first.writeDatabase(&first);
        }
        Quorvel quorvel;
        quorvel.getOrderManager()->searchField->setStringValue(QStringLiteral("nothing matches this"));
        quorvel.awakeFromNib();
        QCOMPARE(quorvel.getContactManager()->getCount(), 1);
        QCOMPARE(quorvel.getContactManager()->numberOfRowsInTableView(), 1);
        QCOMPARE(quorvel.getOrderManager()->getCount(), 1);
        QCOMPARE(quorvel.getOrderManager()->numberOfRowsInTableView(), 0);  // filtered after reading
    }

    void shouldOfferTheImportOfAFirstGenerationDatabaseOnlyWithoutABundle()
    {
        QDir().mkpath(platform::paths::homeDir() + QStringLiteral("/Quorvel"));
        QFile legacy(platform::paths::legacyDatabaseFile());
        QVERIFY(legacy.open(QIODevice::WriteOnly));
        legacy.write("<quorvel></quorvel>");
        legacy.close();
        {
            Quorvel quorvel;
            TestEnvironment::current().scriptAlertAnswers({0});
            quorvel.awakeFromNib();
        }
        const auto alerts = TestEnvironment::current().alertsShown();
        QVERIFY(!alerts.isEmpty());
        QCOMPARE(alerts.last().message, QStringLiteral("Import Quorvel Database"));
        QCOMPARE(
            alerts.last().informativeText,
            QStringLiteral("An earlier version of Quorvel (v1.x) has been found. Do you want to import the data?"));
        QCOMPARE(alerts.last().defaultButton, QStringLiteral("OK"));
        QCOMPARE(alerts.last().alternateButton, QStringLiteral("Cancel"));

        TestEnvironment::current().clearAlerts();
        QDir().mkpath(platform::paths::bundleDir());
        storeModules(QStringLiteral("YES"), QStringLiteral("YES"), QStringLiteral("YES"));
        Quorvel again;
        again.awakeFromNib();
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());
        QFile::remove(platform::paths::legacyDatabaseFile());
    }

    void shouldExportTheFrontTableToTheChosenFile_data()
    {
        QTest::addColumn<bool>("html");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("written");
        QTest::newRow("csv, extension added") << false << "sales"
                                              << "sales.csv";
        QTest::newRow("csv, extension kept") << false << "sales.csv"
                                             << "sales.csv";
        QTest::newRow("html") << true << "page"
                              << "page.html";
    }
    void shouldExportTheFrontTableToTheChosenFile()
    {
        QFETCH(bool, html);
        QFETCH(QString, chosen);
        QFETCH(QString, written);
        Quorvel quorvel;
        addContact(quorvel, QStringLiteral("Ann"));
        quorvel.getContactManager()->getCompanyOutline()->setColumns(
            TableView::columnsFrom({{"name", "Name"}, {"type", "Type"}}));
        showTab(quorvel, QStringLiteral("1"));
        const QString folder = TestEnvironment::current().root() + QStringLiteral("/exports/");
        QDir().mkpath(folder);
        TestEnvironment::current().scriptFilePanelAnswers({folder + chosen});

        QVERIFY(html ? quorvel.exportHTMLMenuItem() : quorvel.exportCSVMenuItem());

        const auto &panels = TestEnvironment::current().filePanelsShown();
        QCOMPARE(panels.size(), 1);
        QCOMPARE(panels.first().fileTypes, QStringList{html ? QStringLiteral("html") : QStringLiteral("csv")});
        QFile file(folder + written);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        if (html) {
            QVERIFY(bytes.startsWith("\xff\xfe"));
            const QString page
                = QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData() + 2), (bytes.size() - 2) / 2);
            QVERIFY(page.startsWith(QStringLiteral("<html><head><title>Data Export from Quorvel</title><body>")));
            QVERIFY(page.contains(QStringLiteral(">Ann</td>")));
        } else {
            // A new contact's type is its initial one.
            QCOMPARE(bytes, QByteArray("\"Name\",\"Type\"\r\"Ann\",\"Customer\"\r"));
        }
    }

    void shouldWriteNothingWhenTheSavePanelIsCancelled()
    {
        Quorvel quorvel;
        showTab(quorvel, QStringLiteral("2"));
        const auto everyFile = [] {
            QStringList all;
            QDirIterator it(TestEnvironment::current().root(), QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext())
                all << it.next();
            return all;
        };
        const QStringList before = everyFile();
        TestEnvironment::current().scriptFilePanelAnswers({QString()});
        QVERIFY(!quorvel.exportCSVMenuItem());
        QCOMPARE(TestEnvironment::current().filePanelsShown().size(), 1);
        QCOMPARE(everyFile(), before);
    }

    void shouldLogAMissingDataSourceAndExportRegardless()
    {
        Quorvel quorvel;
        showTab(quorvel, QStringLiteral("pro2"), QStringLiteral("2"));  // money in: no data source yet
        const QString path = TestEnvironment::current().root() + QStringLiteral("/nothing.csv");
        TestEnvironment::current().scriptFilePanelAnswers({path});
        QVERIFY(quorvel.exportCSVMenuItem());
        QVERIFY(TestEnvironment::current().logLines().contains(QStringLiteral("kdds is nil")));
        QCOMPARE(QFileInfo(path).size(), 0);
    }

    void shouldLogAFailedExportWrite_data()
    {
        QTest::addColumn<bool>("html");
        QTest::addColumn<QString>("line");
        QTest::newRow("csv") << false << "Unsuccessful exporting data to %1 \nerror:";
        QTest::newRow("html") << true << "Unsuccessful exporting data to %1\n";
    }
    void shouldLogAFailedExportWrite()
    {
        QFETCH(bool, html);
        QFETCH(QString, line);
        Quorvel quorvel;
        showTab(quorvel, QStringLiteral("2"));
        const QString path = TestEnvironment::current().root() + QStringLiteral("/no/such/folder/out.")
            + (html ? QStringLiteral("html") : QStringLiteral("csv"));
        TestEnvironment::current().scriptFilePanelAnswers({path});
        QVERIFY(!(html ? quorvel.exportHTMLMenuItem() : quorvel.exportCSVMenuItem()));
        QCOMPARE(TestEnvironment::current().logLines(), QStringList{line.arg(path)});
    }

    void shouldOpenTheHelpPagesCarriedWithTheProgram()
    {
        Quorvel quorvel;
        quorvel.help();
        const QStringList opened = TestEnvironment::current().openedFiles();
        QCOMPARE(opened.size(), 1);
        QFile page(opened.first());
        QVERIFY(page.open(QIODevice::ReadOnly));
        QVERIFY(page.readAll().contains("Quorvel"));
    }
};

QUORVEL_TEST(QuorvelTest)
#include "QuorvelTest.moc"
