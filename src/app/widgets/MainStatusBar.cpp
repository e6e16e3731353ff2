#include "app/widgets/MainStatusBar.h"

#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "app/SaveKeeper.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/OrderManager.h"
#include "platform/Clock.h"
#include "platform/Localised.h"
#include "platform/outlets/TextField.h"
#include "reports/ReportManager.h"
#include "store/TableView.h"
#include "tasks/ActionManager.h"

#include <QLabel>
#include <QLocale>
#include <QTabWidget>

namespace {

struct ListInFront
{
    kdDataSource *records = nullptr;  // the collection; none for a report
    ListManager *manager = nullptr;  // with its search field, when it has one
    TableView *table = nullptr;
    QString view;  // the list's object name in the window
    QString noun;  // "orders"
};

ListInFront listOf(Quorvel &quorvel, const QString &tab)
{
    using platform::localised;
    if (tab == QLatin1String("1"))
        return {quorvel.getContactManager(), quorvel.getContactManager(),
                quorvel.getContactManager()->getCompanyOutline(), QStringLiteral("contactOutline"),
                localised("contacts")};
    if (tab == QLatin1String("2"))
        return {quorvel.getOrderManager(), quorvel.getOrderManager(), quorvel.getOrderManager()->getTableView(),
                QStringLiteral("orderTableView"), localised("orders")};
    if (tab == QLatin1String("3"))
        return {quorvel.getItemManager(), quorvel.getItemManager(), quorvel.getItemManager()->getTableView(),
                QStringLiteral("itemTableView"), localised("items")};
    if (tab == QLatin1String("pro"))
        return {quorvel.getActionManager(), quorvel.getActionManager(), quorvel.getActionManager()->getTableView(),
                QStringLiteral("actionTableView"), localised("tasks")};
    if (tab == QLatin1String("pro2"))
        return {quorvel.getBillManager(), quorvel.getBillManager(), quorvel.getBillManager()->getTableView(),
                QStringLiteral("billTableView"), localised("bills")};
    if (tab == QLatin1String("pro3"))
        return {quorvel.getReportManager(), nullptr, quorvel.getReportManager()->table,
                QStringLiteral("reportTableView"), localised("rows")};
    return {};
}

}  // namespace

MainStatusBar::MainStatusBar(Quorvel &controller, MainWindow &window)
    : QStatusBar(&window),
      quorvel(controller),
      main(window),
      count(new QLabel(this)),
      saved(new QLabel(this))
{
    setObjectName(QStringLiteral("mainStatusBar"));
    count->setObjectName(QStringLiteral("recordCount"));
    saved->setObjectName(QStringLiteral("lastSave"));
    addWidget(count, 1);
    addPermanentWidget(saved);
    connect(main.tabs(), &QTabWidget::currentChanged, this, &MainStatusBar::showCount);
    for (const char *tab : {"1", "2", "3", "pro", "pro2", "pro3"}) {
        if (TableView *table = listOf(quorvel, QLatin1String(tab)).table)
            connect(table, &TableView::reloaded, this, &MainStatusBar::showCount);
    }
    connect(quorvel.getSaveKeeper(), &SaveKeeper::saved, this, [this](DatabaseBundle::File file, qint64 bytes) {
        saved->setText(platform::localised("Saved %1 (%2) at %3")
                           .arg(DatabaseBundle::fileName(file), QLocale().formattedDataSize(bytes),
                                QLocale().toString(platform::now().time(), QLocale::ShortFormat)));
    });
    showCount();
}

QString MainStatusBar::countText() const
{
    return count->text();
}

QString MainStatusBar::savedText() const
{
    return saved->text();
}

void MainStatusBar::showCount()
{
    const QString tab = MainWindow::identifierOf(main.tabs()->currentWidget());
    const ListInFront list = listOf(quorvel, tab);
    if (!list.records) {
        count->clear();
        return;
    }
    const QLocale locale;
    // The rows the list shows, without its total rows.
    const int shown = list.records->kdDataSource::numberOfRowsInTableView();
    const int all = list.manager ? list.records->getCount() : shown;
    count->setText(
        shown == all ? QStringLiteral("%1 %2").arg(locale.toString(all), list.noun)
                     : platform::localised("%1 of %2 %3").arg(locale.toString(shown), locale.toString(all), list.noun));
    // An empty list found by a search says so.
    auto *view = main.findChild<integrityTableView *>(list.view);
    const QString search
        = list.manager && list.manager->searchField ? list.manager->searchField->stringValue() : QString();
    if (view)
        view->setPlaceholderText(shown == 0 && !search.isEmpty()
                                     ? platform::localised("No %1 match “%2”.").arg(list.noun, search)
                                     : QString());
}
