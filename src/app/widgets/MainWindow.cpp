#include "app/widgets/MainWindow.h"

#include "platform/Localised.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QTabWidget>
#include <QVBoxLayout>

using platform::localised;

namespace {
const char *const identifierProperty = "tabIdentifier";
const QString geometryKey = QStringLiteral("QuorvelMainWindowGeometry");
}

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Quorvel"));

    tabView = new QTabWidget(this);
    tabView->setObjectName(QStringLiteral("mainTabView"));
    tabView->setDocumentMode(true);
    tabView->addTab(makePage(QStringLiteral("1"), localised("Contacts")), localised("Contacts"));
    tabView->addTab(makePage(QStringLiteral("2"), localised("Orders")), localised("Orders"));
    tabView->addTab(makePage(QStringLiteral("3"), localised("Stock")), localised("Stock"));
    tabView->addTab(makePage(QStringLiteral("pro"), localised("Tasks")), localised("Tasks"));

    QWidget *accounts = makePage(QStringLiteral("pro2"), localised("Accounts"));
    auto *accountTabs = new QTabWidget(accounts);
    accountTabs->setObjectName(QStringLiteral("accountsTabView"));
    accountTabs->addTab(makePage(QStringLiteral("1"), localised("Money In")), localised("Money In"));
    accountTabs->addTab(makePage(QStringLiteral("2"), localised("Money Out")), localised("Money Out"));
    accountTabs->addTab(makePage(QStringLiteral("3"), localised("Statement")), localised("Statement"));
    delete accounts->layout();
    auto *accountsLayout = new QVBoxLayout(accounts);
    accountsLayout->addWidget(accountTabs);
    tabView->addTab(accounts, localised("Accounts"));

    tabView->addTab(makePage(QStringLiteral("pro3"), localised("Reports")), localised("Reports"));
    setCentralWidget(tabView);

    QMenu *fileMenu = menuBar()->addMenu(localised("&File"));
    QAction *quit = fileMenu->addAction(localised("&Quit"), this, &QWidget::close);
    quit->setObjectName(QStringLiteral("quitAction"));
    quit->setShortcut(QKeySequence::Quit);

    restorePlacement();
}

QWidget *MainWindow::makePage(const QString &identifier, const QString &title)
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("tab_") + identifier);
    page->setProperty(identifierProperty, identifier);
    auto *layout = new QVBoxLayout(page);
    auto *placeholder = new QLabel(title, page);
    placeholder->setAlignment(Qt::AlignCenter);
    layout->addWidget(placeholder);
    return page;
}

QWidget *MainWindow::tabWithIdentifier(const QString &identifier) const
{
    for (int i = 0; i < tabView->count(); ++i) {
        if (identifierOf(tabView->widget(i)) == identifier)
            return tabView->widget(i);
    }
    return nullptr;
}

QString MainWindow::identifierOf(const QWidget *page)
{
    return page ? page->property(identifierProperty).toString() : QString();
}

void MainWindow::restorePlacement()
{
    const QByteArray geometry = QSettings().value(geometryKey).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry))
        resize(900, 600);
}

void MainWindow::savePlacement() const
{
    QSettings().setValue(geometryKey, saveGeometry());
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    savePlacement();
    event->accept();
    QApplication::quit();  // closing the main window quits
}
