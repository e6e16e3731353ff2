#include "app/widgets/ApplicationWindows.h"

#include "accounts/widgets/BillEditorWindow.h"
#include "app/Quorvel.h"
#include "app/widgets/BackupsWindow.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/NotepadWindow.h"
#include "app/widgets/PickerWindow.h"
#include "app/widgets/PrefsWindow.h"
#include "app/widgets/TableModel.h"
#include "app/widgets/WelcomePanel.h"
#include "checkout/CheckoutManager.h"
#include "checkout/widgets/CheckoutWindow.h"
#include "contacts/widgets/CompanyContactEditorWindow.h"
#include "contacts/widgets/CompanyEditorWindow.h"
#include "contacts/widgets/ContactEditorWindow.h"
#include "contacts/widgets/ContactsImportWindow.h"
#include "items/widgets/ItemEditorWindow.h"
#include "orders/widgets/DocumentWindows.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/outlets/TextField.h"
#include "store/PrefsController.h"
#include "tasks/widgets/AlarmNotifier.h"
#include "tasks/widgets/CompleteColumnToggle.h"
#include "tasks/widgets/TaskEditorWindow.h"

#include <QCoreApplication>
#include <QTableView>
#include <QThread>

ApplicationWindows::ApplicationWindows(Quorvel &controller, QObject *parent)
    : QObject(parent),
      quorvel(controller)
{
    main = std::make_unique<MainWindow>(quorvel);
    PrefsController *preferences = quorvel.getPrefsController();
    notepad = std::make_unique<NotepadWindow>(quorvel.notePad, preferences->notepadView, nullptr);
    prefs = std::make_unique<PrefsWindow>(*preferences, nullptr);
    welcome = std::make_unique<WelcomePanel>(*preferences, nullptr);
    picker = std::make_unique<PickerWindow>(*quorvel.getPicker(), nullptr);
    orderEditor = std::make_unique<OrderEditorWindow>(*quorvel.getOrderManager(), nullptr);
    itemEditor = std::make_unique<ItemEditorWindow>(*quorvel.getItemManager(), nullptr);
    taskEditor = std::make_unique<TaskEditorWindow>(*quorvel.getActionManager(), nullptr);
    billEditor = std::make_unique<BillEditorWindow>(*quorvel.getBillManager(), nullptr);
    contactEditor
        = std::make_unique<ContactEditorWindow>(*quorvel.getContactManager(), preferences->contactTabView, nullptr);
    companyEditor = std::make_unique<CompanyEditorWindow>(*quorvel.getCompanyEditor(), nullptr);
    companyContactEditor = std::make_unique<CompanyContactEditorWindow>(*quorvel.getCompanyContactEditor(),
                                                                        preferences->companyContactTabView, nullptr);
    alarmNotifier = std::make_unique<AlarmNotifier>(*quorvel.getActionManager());
    documents = std::make_unique<DocumentWindows>(quorvel, *quorvel.getBOMManager());
    documents->install(*quorvel.getOrderManager());
    documents->install(*quorvel.getCheckoutManager());
    checkout = std::make_unique<CheckoutWindow>(*quorvel.getCheckoutManager());
    quorvel.chooseBackup
        = [this](const QList<backups::Backup> &list) { return BackupsWindow::choose(list, main.get()); };
    quorvel.chooseContactColumns
        = [this](const contactsCsv::Preview &preview) { return ContactsImportWindow::choose(preview, main.get()); };
    CompleteColumnToggle::install(main->findChild<QTableView *>(QStringLiteral("actionTableView")),
                                  *quorvel.getActionManager());
    connect(&quorvel, &Quorvel::terminateRequested, this, &ApplicationWindows::terminate);
}

ApplicationWindows::~ApplicationWindows() = default;

void ApplicationWindows::start()
{
    quorvel.awakeFromNib();
    // The totals of money columns show the currency of the preferences.
    TextField *currency = quorvel.getPrefsController()->currencyField;
    const auto showCurrency = [currency] { TableModel::setCurrencySymbol(currency->stringValue().trimmed()); };
    showCurrency();
    connect(currency, &Outlet::changed, this, showCurrency);
    connect(currency, &TextField::edited, this, showCurrency);
    main->rebuildToolBar();
    quorvel.mainWindow->makeKeyAndOrderFront();
}

void ApplicationWindows::showMainWindow()
{
    main->setWindowState((main->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    main->show();
    main->raise();
    main->activateWindow();
}

void ApplicationWindows::terminate()
{
    if (terminated)
        return;
    if (!quorvel.applicationShouldTerminate())
        return;
    terminated = true;
    quorvel.applicationWillTerminate();
    // exit(), not quit(): quit() first asks every window to close, and the
    // main window refuses (closing it is itself a request to quit). With no
    // event loop running yet there is none to leave, and exit() would end
    // the next one at once instead.
    if (QThread::currentThread()->loopLevel() > 0)
        QCoreApplication::exit(0);
}
