#include "app/Quorvel.h"

#include "accounts/BillManager.h"
#include "app/SaveKeeper.h"
#include "app/kdDateFormatter.h"
#include "checkout/CheckoutManager.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "items/SupplierDataSource.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/FilePanels.h"
#include "platform/Folders.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "platform/Workspace.h"
#include "reports/ReportManager.h"
#include "store/Backups.h"
#include "store/Picker.h"
#include "store/PrefsController.h"
#include "store/TableExport.h"
#include "tasks/ActionManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using platform::localised;

namespace {

bool programImageExists(const QString &name)
{
    return QFile::exists(QStringLiteral(":/core/icons/%1.svg").arg(name));
}

}  // namespace

Quorvel::Quorvel(QObject *parent)
    : QObject(parent),
      imageExists(programImageExists),
      standardOutput([](const QString &text) { platform::standardOutput(text); }),
      mainWindow(new Window(this)),
      notePad(new Window(this)),
      mainTabView(new TabView(this)),
      accountsTabView(new TabView(this)),
      prefsController(std::make_unique<PrefsController>()),
      contactManager(std::make_unique<ContactManager>(this)),
      orderManager(std::make_unique<OrderManager>(this)),
      itemManager(std::make_unique<ItemManager>(this)),
      bomManager(std::make_unique<BOMManager>(this)),
      actionManager(std::make_unique<ActionManager>(this)),
      billManager(std::make_unique<BillManager>(this)),
      reportManager(std::make_unique<ReportManager>(this)),
      checkoutManager(std::make_unique<CheckoutManager>(this)),
      supplierDataSource(std::make_unique<SupplierDataSource>(this)),
      companyEditor(std::make_unique<CompanyEditor>(this)),
      companyContactEditor(std::make_unique<CompanyContactEditor>(this, contactManager.get())),
      picker(std::make_unique<Picker>())
{
    mainWindow->setTitle(QStringLiteral("Quorvel"));
    notePad->setTitle(localised("Notepad"));
    mainTabView->setTabs({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("pro"),
                          QStringLiteral("pro2"), QStringLiteral("pro3")},
                         {localised("Contacts"), localised("Orders"), localised("Stock"), localised("Tasks"),
                          localised("Accounts"), localised("Reports")});
    accountsTabView->setTabs({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")},
                             {localised("Money Out"), localised("Money In"), localised("Statement")});
    prefsController->mainTabView = mainTabView;
    // The reports tab shows the chosen report, run afresh, whenever it is shown.
    connect(mainTabView, &TabView::selectionChanged, this, [this] {
        if (mainTabView->selectedIdentifier() == QLatin1String("pro3"))
            reportManager->runReport();
    });
    // Every date field takes the user's date format from the preferences:
    // the order's date and the dates its deposit and balance were paid (in
    // the order editor and at the checkout), a task's start and end, the
    // date a bill was paid, and the first day of the accounts' period.
    prefsController->dateFields = {orderManager->date,       orderManager->depositPaid,    orderManager->balancePaid,
                                   checkoutManager->date,    checkoutManager->depositPaid, checkoutManager->balancePaid,
                                   actionManager->startDate, actionManager->endDate,       billManager->datePaid,
                                   billManager->fromDate};
    // Day first until the preferences are read.
    prefsController->setUKFormat(prefsController->isUKFormat());
    prefsController->orderWindow = orderManager->editorWindow;
    prefsController->itemWindow = itemManager->editorWindow;
    prefsController->invoiceListPopUpButton = billManager->category;
    prefsController->contactTypePopUpButton = contactManager->type;
    prefsController->companyTypePopUpButtons = {companyEditor->type, companyContactEditor->type};

    // What one area announces, the others follow.
    connect(bomManager.get(), &BOMManager::stockChanged, itemManager.get(), &ItemManager::filter);
    connect(bomManager.get(), &BOMManager::linesChanged, checkoutManager.get(), &CheckoutManager::linesChanged);
    for (OrderManager *editor : {orderManager.get(), static_cast<OrderManager *>(checkoutManager.get())})
        for (OrderManager *follower : {orderManager.get(), static_cast<OrderManager *>(checkoutManager.get())})
            connect(editor, &OrderManager::contactConnected, follower, &OrderManager::updateContactFields);

    // Every list hands its deletions to one history, for Undo Delete.
    deletionHistory = new DeletionHistory(this);
    for (ListManager *list :
         std::initializer_list<ListManager *>{contactManager.get(), orderManager.get(), itemManager.get(),
                                              bomManager.get(), actionManager.get(), billManager.get()})
        list->onDeletion
            = [this](DeletionHistory::Deletion deletion) { deletionHistory->remember(std::move(deletion)); };

    database = std::make_unique<DatabaseBundle>(*contactManager, *orderManager, *itemManager, *bomManager, *billManager,
                                                *actionManager);
    saver = std::make_unique<SaveKeeper>(*database);
    saver->saveNotepad = [this] { prefsController->saveNotepad(); };
    saver->onWriteFailed = [](DatabaseBundle::File file, const QString &reason) {
        if (reason.isEmpty()) {
            platform::log(QStringLiteral("%1 is saved again").arg(DatabaseBundle::fileName(file)));
            return;
        }
        platform::runAlert(localised("Quorvel could not save %1.").arg(DatabaseBundle::fileName(file)),
                           reason + QLatin1Char('\n')
                               + localised("Your changes are kept, and Quorvel tries again with the next save."),
                           localised("OK"));
    };
    // Changes that leave the collections as they were but change records.
    connect(bomManager.get(), &BOMManager::linesChanged, this,
            [this] { saver->markChanged(DatabaseBundle::Materials); });
    connect(bomManager.get(), &BOMManager::stockChanged, this, [this] {
        saver->markChanged(DatabaseBundle::Materials);
        saver->markChanged(DatabaseBundle::Items);
    });
    connect(actionManager.get(), &ActionManager::alarmRaised, this,
            [this] { saver->markChanged(DatabaseBundle::Actions); });
    connect(prefsController->notepadView, &TextView::edited, this, [this] { saver->markNotepadChanged(); });
    // The files as they were before this run wrote any, kept dated.
    database->setBeforeFirstWrite([] {
        QString why;
        backups::make(platform::now(), PrefsController::backupCount(), &why);
        if (!why.isEmpty())
            platform::log(QStringLiteral("couldn't keep a backup of the database: ") + why);
    });
    database->setAfterReading([this](DatabaseBundle::File file) {
        switch (file) {
        case DatabaseBundle::Contacts:
            contactManager->filter();
            break;
        case DatabaseBundle::Orders:
            orderManager->filter();
            if (startRepeatChecker)
                orderManager->kickOffCheckForOverdueRepeats();
            break;
        case DatabaseBundle::Items:
            itemManager->filter();
            break;
        case DatabaseBundle::Materials:
            bomManager->filter();
            break;
        case DatabaseBundle::Bills:
            billManager->filter();
            break;
        case DatabaseBundle::Actions:
            actionManager->filter();
            break;
        }
    });
}

Quorvel::~Quorvel() = default;

void Quorvel::awakeFromNib()
{
    prefsController->readDefaults();
    orderManager->awakeFromNib();
    checkoutManager->awakeFromNib();
    dateFormatter = std::make_unique<kdDateFormatter>(this);
    // The toolbar is built by the widget layer from the lists below.
    reportManager->populateFilter();
    if (QFileInfo(platform::paths::bundleDir()).isDir()) {
        readDatabase();
    } else if (QFileInfo::exists(platform::paths::legacyDatabaseFile())) {
        const int answer = platform::runAlert(
            localised("Import Quorvel Database"),
            localised("An earlier version of Quorvel (v1.x) has been found. Do you want to import the data?"),
            localised("OK"), localised("Cancel"));
        if (answer == 1)
            importQuorvelDatabase();
    }
    // The alarm watch runs whatever was read: tasks made on a first start
    // ring too.
    if (startRepeatChecker)
        actionManager->kickOffCheckForOverdueActions();
}

bool Quorvel::saveCopyOfDatabase()
{
    platform::FilePanelRequest request;
    request.kind = platform::FilePanelRequest::Folder;
    request.title = localised("Save a Copy of the Database");
    const std::optional<QString> folder = platform::runFilePanel(request);
    if (!folder)
        return false;
    // The folder as it is on disk (pictures, attachments, the notepad), with
    // the records as they are in the program.
    QString target = *folder + QStringLiteral("/quorveldatabase.qvldb");
    if (QFileInfo::exists(target))
        target += QStringLiteral(" copy ") + platform::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString why;
    bool copied = !QFileInfo(platform::paths::bundleDir()).isDir()
        || platform::copyFolder(platform::paths::bundleDir(), target, &why);
    copied = copied && QDir().mkpath(target);
    for (int f = 0; copied && f < DatabaseBundle::FileCount; ++f) {
        const auto file = DatabaseBundle::File(f);
        copied = platform::plist::writeFileAtomically(target + QLatin1Char('/') + DatabaseBundle::fileName(file),
                                                      database->fileContents(file), &why);
    }
    if (!copied) {
        platform::runAlert(localised("The copy could not be saved."), why, localised("OK"));
        return false;
    }
    platform::runAlert(localised("A copy of the database was saved."), target, localised("OK"));
    return true;
}

bool Quorvel::windowShouldClose()
{
    Q_EMIT terminateRequested();
    return false;
}

bool Quorvel::applicationShouldTerminate()
{
    prefsController->OKButton();
    // Until everything is on disk, the user says what happens.
    for (int tries = 0; !writeDatabase(this) && tries < 50; ++tries) {
        QStringList failing;
        for (const DatabaseBundle::File file : saver->failingFiles())
            failing << saver->failureOf(file);
        const int answer = platform::runAlert(
            localised("Some of your changes could not be saved."),
            failing.join(QLatin1Char('\n')) + QLatin1Char('\n')
                + localised("Try again (after making room on the disk, say), save a copy of the whole database "
                            "elsewhere, or quit without these changes."),
            localised("Try Again"), localised("Save a Copy..."), localised("Quit Anyway"));
        if (answer == 0 && saveCopyOfDatabase())
            break;
        if (answer == -1)
            break;
    }
    // What was deleted is gone for good now.
    deletionHistory->clear();
    orderAttachments::emptyHolding();
    return true;
}

bool Quorvel::applicationOpenFile(const QString &)
{
    return true;
}

DatabaseBundle::ReadResult Quorvel::readDatabase()
{
    const DatabaseBundle::ReadResult result = database->readDatabase();
    // What was read is what is on disk: nothing to save yet.
    saver->settle();
    for (const DatabaseBundle::Failure &failure : result.failures)
        platform::runAlert(localised("A database file could not be read"),
                           failure.message() + QLatin1Char('\n')
                               + localised("It is kept as it is and set aside before it is next saved."),
                           localised("OK"));
    return result;
}

bool Quorvel::writeDatabase(const QObject *sender)
{
    if (sender == this)
        return saver->writeAll();
    if (sender == contactManager.get())
        return saver->writeNow(DatabaseBundle::Contacts);
    if (sender == orderManager.get())
        return saver->writeNow(DatabaseBundle::Orders);
    if (sender == itemManager.get())
        return saver->writeNow(DatabaseBundle::Items);
    if (sender == bomManager.get())
        return saver->writeNow(DatabaseBundle::Materials);
    if (sender == billManager.get())
        return saver->writeNow(DatabaseBundle::Bills);
    if (sender == actionManager.get())
        return saver->writeNow(DatabaseBundle::Actions);
    // Any other sender (the checkout) writes nothing at once; its sale is
    // saved with the orders within seconds.
    if (sender == checkoutManager.get())
        saver->markChanged(DatabaseBundle::Orders);
    return false;
}

TableDataSource *Quorvel::determineFrontDataSource() const
{
    if (Window::keyWindow() != mainWindow)
        return nullptr;
    const QString tab = mainTabView->selectedIdentifier();
    if (tab == QLatin1String("1"))
        return contactManager.get();
    if (tab == QLatin1String("2"))
        return orderManager.get();
    if (tab == QLatin1String("3"))
        return itemManager.get();
    if (tab == QLatin1String("pro"))
        return actionManager.get();
    if (tab == QLatin1String("pro2"))
        return accountsTabView->selectedIdentifier() == QLatin1String("1") ? billManager.get() : nullptr;
    if (tab == QLatin1String("pro3"))
        return reportManager.get();
    return nullptr;
}

Outlet *Quorvel::determineFrontView() const
{
    Window *key = Window::keyWindow();
    if (key != mainWindow)
        return key ? key->firstResponder() : nullptr;
    const QString tab = mainTabView->selectedIdentifier();
    if (tab == QLatin1String("1"))
        return contactManager->getCompanyOutline();
    if (tab == QLatin1String("2"))
        return orderManager->getTableView();
    if (tab == QLatin1String("3"))
        return itemManager->getTableView();
    if (tab == QLatin1String("pro"))
        return actionManager->getTableView();
    if (tab == QLatin1String("pro2")) {
        const QString sub = accountsTabView->selectedIdentifier();
        if (sub == QLatin1String("1"))
            return billManager->getTableView();
        if (sub == QLatin1String("2"))
            return billManager->getInTableView();
        if (sub == QLatin1String("3"))
            return billManager->getSttTableView();
        return nullptr;
    }
    if (tab == QLatin1String("pro3")) {
        platform::log(QStringLiteral("*** is reports"));
        return reportManager->table;
    }
    return nullptr;
}

void Quorvel::deleteMenuItem()
{
    const Outlet *focused = mainWindow->firstResponder();
    if (!focused)
        return;
    // Every manager whose table has focus, in this order.
    if (focused == orderManager->getTableView())
        orderManager->deleteKey();
    if (focused == contactManager->getCompanyOutline())
        contactManager->deleteKey();
    if (focused == actionManager->getTableView())
        actionManager->deleteKey();
    if (focused == itemManager->getTableView())
        itemManager->deleteKey();
    if (focused == billManager->getTableView())
        billManager->deleteKey();
}

void Quorvel::editMenuItem()
{
    const Outlet *focused = mainWindow->firstResponder();
    if (!focused)
        return;
    if (focused == orderManager->getTableView())
        orderManager->edit();
    if (focused == contactManager->getCompanyOutline())
        contactManager->edit();
    if (focused == actionManager->getTableView())
        actionManager->edit();
    if (focused == itemManager->getTableView())
        itemManager->edit();
    if (focused == billManager->getTableView())
        billManager->edit();
}

void Quorvel::checkout()
{
    Order *order = nullptr;
    if (mainWindow->firstResponder() == orderManager->getTableView())
        order = static_cast<Order *>(orderManager->getSelectedItem());
    checkoutManager->edit(order);
}

void Quorvel::bringOrdersToFront()
{
    mainTabView->selectTabViewItemWithIdentifier(QStringLiteral("2"));
    mainWindow->makeKeyAndOrderFront();
}

namespace {

struct ExportSource
{
    const TableView *table = nullptr;
    const TableDataSource *dataSource = nullptr;
};

ExportSource exportSource(const Outlet *view)
{
    ExportSource source;
    source.table = qobject_cast<const TableView *>(view);
    if (source.table)
        source.dataSource = source.table->dataSource();
    if (!source.dataSource)
        platform::log(QStringLiteral("kdds is nil"));
    return source;
}

bool writeExport(const QString &path, const QByteArray &bytes)
{
    return platform::plist::writeFileAtomically(path, bytes);
}

}  // namespace

bool Quorvel::exportCSVMenuItem()
{
    const ExportSource source = exportSource(determineFrontView());
    const QString text
        = source.dataSource && source.table ? source.dataSource->getDataAsCSVusingTableView(*source.table) : QString();
    const std::optional<QString> path = platform::runSavePanel(QStringLiteral("csv"), localised("Export as CSV..."));
    if (!path)
        return false;
    if (!writeExport(*path, encodeCsvExport(text))) {
        platform::log(QStringLiteral("Unsuccessful exporting data to %1 \nerror:%2").arg(*path, QString()));
        return false;
    }
    return true;
}

bool Quorvel::exportHTMLMenuItem()
{
    const ExportSource source = exportSource(determineFrontView());
    const QString fragment
        = source.dataSource && source.table ? source.dataSource->getDataAsHTMLusingTableView(*source.table) : QString();
    const QString page = wrapHtmlExport(fragment);
    const std::optional<QString> path = platform::runSavePanel(QStringLiteral("html"), localised("Export as HTML..."));
    if (!path)
        return false;
    if (!writeExport(*path, encodeHtmlExport(page))) {
        platform::log(QStringLiteral("Unsuccessful exporting data to %1\n").arg(*path));
        return false;
    }
    return true;
}

void Quorvel::printMenuItem()
{
    if (Outlet *view = determineFrontView())
        view->print();
}

void Quorvel::help()
{
    // The help pages travel with the program; the browser is given a copy
    // of them in the cache folder.
    const QString folder
        = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/Quorvel/help");
    QDir().mkpath(folder);
    const QDir pages(QStringLiteral(":/core/help"));
    for (const QString &name : pages.entryList(QDir::Files)) {
        QFile source(pages.filePath(name));
        if (source.open(QIODevice::ReadOnly))
            writeExport(folder + QLatin1Char('/') + name, source.readAll());
    }
    const QString page = folder + QStringLiteral("/index.html");
    platform::openFile(page);
    Q_EMIT helpRequested();
}

void Quorvel::editContactForCurrentOrder()
{
    const auto *order = static_cast<Order *>(orderManager->getItemById(getCurrentOrder()));
    if (order && order->getContact())
        contactManager->editThisContact(order->getContact());
}

void Quorvel::undoDelete()
{
    deletionHistory->undo();
}

Contact *Quorvel::getContactbyId(const QString &id) const
{
    return contactManager->getContactbyId(id);
}

QString Quorvel::getContactNameforId(const QString &id) const
{
    if (id == QLatin1String("0"))
        return QStringLiteral("");
    const Contact *contact = contactManager->getContactbyId(id);
    return contact ? contact->getName() : QString();
}

QString Quorvel::getContactIdForName(const QString &name) const
{
    const Contact *contact = contactManager->getContactbyName(name);
    return QString::number(contact ? contact->getID() : 0);
}

int Quorvel::getContactIdForOrder(int orderId) const
{
    const auto *order = static_cast<const Order *>(orderManager->getItemById(orderId));
    return order && order->getContact() ? order->getContact()->getID() : 0;
}

QString Quorvel::getCurrentContactIdAsString() const
{
    const Contact *contact = contactManager->getCurrentItem();
    return contact ? QString::number(contact->getID()) : QStringLiteral("-1");
}

Item *Quorvel::getProductbyId(int id) const
{
    return static_cast<Item *>(itemManager->getItemById(id));
}

int Quorvel::getCurrentOrder() const
{
    return bomManager->getCurrentOrder();
}

void Quorvel::setCurrentOrder(int orderId)
{
    bomManager->setCurrentOrder(orderId);
    bomManager->reloadData();
}

void Quorvel::connectContact(Contact *contact, int orderId)
{
    orderManager->connectContact(contact, orderId);
}

bool Quorvel::hasTime() const
{
    return prefsController->hasTime();
}

bool Quorvel::hasData() const
{
    return prefsController->hasData();
}

bool Quorvel::hasAccounts() const
{
    return prefsController->hasAccounts();
}

void Quorvel::requestOrderManagerResign()
{
    orderManager->requestResign(this);
}

void Quorvel::requestCheckoutManagerResign()
{
    checkoutManager->requestResign(this);
}

bool Quorvel::isCheckout(const QObject *sender) const
{
    return sender && sender == checkoutManager.get();
}
