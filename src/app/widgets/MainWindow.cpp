#include "app/widgets/MainWindow.h"

#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "app/kdKeyResponder.h"
#include "app/widgets/ChartPanel.h"
#include "app/widgets/ListCharts.h"
#include "app/widgets/MainStatusBar.h"
#include "app/widgets/MainToolBar.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/CompanyEditor.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/ContactOutline.h"
#include "items/ItemManager.h"
#include "orders/OrderManager.h"
#include "platform/Localised.h"
#include "reports/ReportManager.h"
#include "store/DeletionHistory.h"
#include "store/PrefsController.h"
#include "store/kdToolBox.h"
#include "tasks/ActionManager.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

using platform::localised;

namespace {

const QString geometryKey = QStringLiteral("QuorvelMainWindowGeometry");
const char *const identifierProperty = "tabIdentifier";
}  // namespace

MainWindow::MainWindow(Quorvel &controller, QWidget *parent)
    : QMainWindow(parent),
      quorvel(controller)
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowIcon(QIcon(QStringLiteral(":/core/icons/quorvel.svg")));

    tabView = new QTabWidget(this);
    tabView->setObjectName(QStringLiteral("mainTabView"));
    tabView->setDocumentMode(true);
    for (int i = 0; i < quorvel.mainTabView->numberOfTabViewItems(); ++i)
        tabView->addTab(makePage(quorvel.mainTabView->identifierAt(i)), quorvel.mainTabView->labelAt(i));
    setCentralWidget(tabView);

    mainToolBar = new MainToolBar(quorvel, this);
    addToolBar(Qt::TopToolBarArea, mainToolBar);

    buildMenus();

    binding::bind(quorvel.mainTabView, tabView);
    binding::bind(quorvel.mainWindow, this);
    setStatusBar(new MainStatusBar(quorvel, *this));
    placement::remember(this, geometryKey, QSize(1000, 640));
}

MainWindow::~MainWindow() = default;

QWidget *MainWindow::makePage(const QString &identifier)
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("tab_") + identifier);
    page->setProperty(identifierProperty, identifier);
    auto *layout = new QVBoxLayout(page);
    auto *bar = new QHBoxLayout;
    layout->addLayout(bar);

    if (identifier == QLatin1String("1")) {
        ContactManager *contacts = quorvel.getContactManager();
        addSearchField(bar, QStringLiteral("contactSearchField"), contacts->searchField);
        addFilter(bar, QStringLiteral("contactTypeFilter"), contacts->typeFilter);
        ContactOutline::install(
            addList(layout, QStringLiteral("contactOutline"), contacts->getCompanyOutline(), contacts), contacts);
    } else if (identifier == QLatin1String("2")) {
        OrderManager *orders = quorvel.getOrderManager();
        addSearchField(bar, QStringLiteral("orderSearchField"), orders->searchField);
        addFilter(bar, QStringLiteral("orderFilterPopUp"), orders->filterPopUp);
        addList(layout, QStringLiteral("orderTableView"), orders->getTableView(), orders);
    } else if (identifier == QLatin1String("3")) {
        ItemManager *items = quorvel.getItemManager();
        addSearchField(bar, QStringLiteral("itemSearchField"), items->searchField);
        addFilter(bar, QStringLiteral("itemStockFilter"), items->stockFilter);
        addList(layout, QStringLiteral("itemTableView"), items->getTableView(), items);
    } else if (identifier == QLatin1String("pro")) {
        ActionManager *actions = quorvel.getActionManager();
        addFilter(bar, QStringLiteral("actionFilterPopUp"), actions->filterPopUp);
        addList(layout, QStringLiteral("actionTableView"), actions->getTableView(), actions);
    } else if (identifier == QLatin1String("pro2")) {
        BillManager *bills = quorvel.getBillManager();
        // The period governs all three tables: its controls stand above them.
        addFilter(bar, QStringLiteral("billPeriodPopUp"), bills->periodPopUp);
        auto *fromDate = new QLineEdit;
        fromDate->setObjectName(QStringLiteral("billFromDate"));
        binding::bind(bills->fromDate, fromDate);
        auto *fromLabel = new QLabel(localised("Start:"));
        fromLabel->setBuddy(fromDate);
        bar->addWidget(fromLabel);
        bar->addWidget(fromDate);
        addSearchField(bar, QStringLiteral("billSearchField"), bills->searchField);
        auto *accountTabs = new QTabWidget(page);
        accountTabs->setObjectName(QStringLiteral("accountsTabView"));
        const TabView *accounts = quorvel.accountsTabView;
        for (int i = 0; i < accounts->numberOfTabViewItems(); ++i) {
            auto *sub = new QWidget;
            const QString subId = accounts->identifierAt(i);
            sub->setObjectName(QStringLiteral("accounts_") + subId);
            sub->setProperty(identifierProperty, subId);
            auto *subLayout = new QVBoxLayout(sub);
            if (subId == QLatin1String("1")) {
                addList(subLayout, QStringLiteral("billTableView"), bills->getTableView(), bills);
            } else if (subId == QLatin1String("2")) {
                addList(subLayout, QStringLiteral("moneyInTableView"), bills->getInTableView(), nullptr);
            } else {
                addList(subLayout, QStringLiteral("statementTableView"), bills->getSttTableView(), nullptr);
                subLayout->addWidget(listCharts::statementChart(*bills, sub), 1);
            }
            accountTabs->addTab(sub, accounts->labelAt(i));
        }
        binding::bind(quorvel.accountsTabView, accountTabs);
        layout->addWidget(accountTabs);
    } else if (identifier == QLatin1String("pro3")) {
        auto *chooser = new QComboBox(page);
        chooser->setObjectName(QStringLiteral("reportChooser"));
        chooser->setMinimumContentsLength(24);
        binding::bind(quorvel.getReportManager()->filter, chooser);
        bar->addWidget(chooser);
        addList(layout, QStringLiteral("reportTableView"), quorvel.getReportManager()->table, nullptr);
        layout->addWidget(listCharts::reportChart(*quorvel.getReportManager(), page));
    }
    bar->addStretch(1);
    return page;
}

integrityTableView *MainWindow::addList(QVBoxLayout *layout, const QString &name, TableView *table, kdDataSource *owner)
{
    auto *view = new integrityTableView;
    view->setObjectName(name);
    binding::bind(table, view);
    if (owner) {
        auto responder = std::make_unique<kdKeyResponder>();
        responder->setOwner(owner);
        view->setKeyResponder(responder.get());
        keyResponders.push_back(std::move(responder));
    }
    layout->addWidget(view, 1);
    return view;
}

QLineEdit *MainWindow::addSearchField(QLayout *layout, const QString &name, TextField *field)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(name);
    edit->setPlaceholderText(localised("Search"));
    edit->setClearButtonEnabled(true);
    edit->setMinimumWidth(220);
    binding::bind(field, edit);
    layout->addWidget(edit);
    return edit;
}

QComboBox *MainWindow::addFilter(QLayout *layout, const QString &name, PopUp *popUp)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    binding::bind(popUp, combo);
    layout->addWidget(combo);
    return combo;
}

void MainWindow::buildMenus()
{
    auto addAction
        = [this](QMenu *menu, const QString &name, const QString &text, const QKeySequence &keys, auto slot) {
              QAction *action = menu->addAction(text);
              action->setObjectName(name);
              if (!keys.isEmpty())
                  action->setShortcut(keys);
              connect(action, &QAction::triggered, this, slot);
              return action;
          };
    Quorvel *q = &quorvel;

    QMenu *file = menuBar()->addMenu(localised("&File"));
    addAction(file, QStringLiteral("newContactAction"), localised("New Contact"), QKeySequence(Qt::CTRL | Qt::Key_N),
              [q] { q->getContactManager()->create(); });
    addAction(file, QStringLiteral("newCompanyAction"), localised("New Company"),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), [q] { q->getCompanyEditor()->create(); });
    // The New commands for orders and items carry the user's words.
    QAction *newOrder = addAction(file, QStringLiteral("newOrderAction"), localised("New Order"),
                                  QKeySequence(Qt::CTRL | Qt::Key_O), [q] { q->getOrderManager()->create(); });
    binding::bind(q->getPrefsController()->orderMenuItem, newOrder);
    QAction *newItem = addAction(file, QStringLiteral("newItemAction"), localised("New Item"),
                                 QKeySequence(Qt::CTRL | Qt::Key_I), [q] { q->getItemManager()->create(); });
    binding::bind(q->getPrefsController()->itemMenuItem, newItem);
    addAction(file, QStringLiteral("newTaskAction"), localised("New Task"), QKeySequence(Qt::CTRL | Qt::Key_T),
              [q] { q->getActionManager()->create(); });
    addAction(file, QStringLiteral("newInvoiceAction"), localised("New Invoice"), QKeySequence(Qt::CTRL | Qt::Key_B),
              [q] { q->getBillManager()->create(); });
    file->addSeparator();
    addAction(file, QStringLiteral("exportCSVAction"), localised("Export as CSV..."),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), [q] { q->exportCSVMenuItem(); });
    addAction(file, QStringLiteral("exportHTMLAction"), localised("Export as HTML..."),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H), [q] { q->exportHTMLMenuItem(); });
    addAction(file, QStringLiteral("importContactsAction"), localised("Import Contacts..."), QKeySequence(),
              [q] { q->importContacts(); });
    addAction(file, QStringLiteral("restoreBackupAction"), localised("Restore from Backup..."), QKeySequence(),
              [q] { q->restoreFromBackup(); });
    addAction(file, QStringLiteral("importLegacyAction"), localised("Import First-Generation Database..."),
              QKeySequence(), [q] { q->importQuorvelDatabaseWithWarning(); });
    addAction(file, QStringLiteral("printAction"), localised("Print..."), QKeySequence::Print,
              [q] { q->printMenuItem(); });
    file->addSeparator();
    QAction *prefs = addAction(file, QStringLiteral("preferencesAction"), localised("Preferences..."),
                               QKeySequence(Qt::CTRL | Qt::Key_Comma), [q] { q->getPrefsController()->openWindow(); });
    prefs->setMenuRole(QAction::PreferencesRole);
    QAction *quit = addAction(file, QStringLiteral("quitAction"), localised("Quit"), QKeySequence::Quit,
                              [q] { q->windowShouldClose(); });
    quit->setMenuRole(QAction::QuitRole);

    QMenu *edit = menuBar()->addMenu(localised("&Edit"));
    // Undo Delete names what it will bring back, and is also the menu of
    // the toolbar's Delete button.
    QAction *undo = addAction(edit, QStringLiteral("undoDeleteAction"), localised("Undo Delete"),
                              QKeySequence(QKeySequence::Undo), [q] { q->undoDelete(); });
    const DeletionHistory *history = quorvel.getDeletionHistory();
    const auto showNextUndo = [undo, history] {
        const QString what = history->nextUndo();
        undo->setEnabled(!what.isEmpty());
        undo->setText(what.isEmpty()
                          ? localised("Undo Delete")
                          : kdToolBox::replaceSubstring(QStringLiteral("%@"), what, localised("Undo Delete %@")));
    };
    connect(history, &DeletionHistory::changed, undo, showNextUndo);
    showNextUndo();
    auto *deleteMenu = new QMenu(this);
    deleteMenu->setObjectName(QStringLiteral("deleteToolbarMenu"));
    deleteMenu->addAction(undo);
    mainToolBar->setMenuFor(QStringLiteral("deleteItemIdentifier"), deleteMenu);
    edit->addSeparator();
    addAction(edit, QStringLiteral("editAction"), localised("Edit"), QKeySequence(Qt::CTRL | Qt::Key_E),
              [q] { q->editMenuItem(); });
    addAction(edit, QStringLiteral("deleteAction"), localised("Delete"), QKeySequence(Qt::CTRL | Qt::Key_Backspace),
              [q] { q->deleteMenuItem(); });

    QMenu *window = menuBar()->addMenu(localised("&Window"));
    addAction(window, QStringLiteral("ordersToFrontAction"), localised("Orders to Front"),
              QKeySequence(Qt::CTRL | Qt::Key_1), [q] { q->bringOrdersToFront(); });
    addAction(window, QStringLiteral("notepadAction"), localised("Notepad"), QKeySequence(Qt::CTRL | Qt::Key_2),
              [q] { q->notePad->makeKeyAndOrderFront(); });
    addAction(window, QStringLiteral("checkoutAction"), localised("Checkout"), QKeySequence(Qt::CTRL | Qt::Key_K),
              [q] { q->checkout(); });
    addAction(window, QStringLiteral("contactForOrderAction"), localised("Contact of the Current Order"),
              QKeySequence(), [q] { q->editContactForCurrentOrder(); });

    QMenu *help = menuBar()->addMenu(localised("&Help"));
    addAction(help, QStringLiteral("helpAction"), localised("Quorvel Help"), QKeySequence::HelpContents,
              [q] { q->help(); });
}

void MainWindow::rebuildToolBar()
{
    mainToolBar->rebuild();
    // Until the user has sized the window, it is wide enough for the whole
    // toolbar (nothing behind "»"), as far as the screen allows.
    if (placement::isSaved(geometryKey))
        return;
    const int wanted = mainToolBar->sizeHint().width() + 24;
    const QScreen *shown = screen();
    const int room = shown ? shown->availableGeometry().width() : wanted;
    if (width() < wanted)
        resize(std::max(width(), std::min(wanted, room)), height());
}

QWidget *MainWindow::tabWithIdentifier(const QString &identifier) const
{
    for (int i = 0; i < tabView->count(); ++i)
        if (identifierOf(tabView->widget(i)) == identifier)
            return tabView->widget(i);
    return nullptr;
}

QString MainWindow::identifierOf(const QWidget *page)
{
    return page ? page->property(identifierProperty).toString() : QString();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // Closing the main window quits: the controller asks the application
    // to end, which saves everything; the window itself stays until then.
    placement::save(this, QStringLiteral("QuorvelMainWindowGeometry"));
    event->ignore();
    quorvel.windowShouldClose();
}
