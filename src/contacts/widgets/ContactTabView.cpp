#include "contacts/widgets/ContactTabView.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/OpenContactReports.h"
#include "platform/Localised.h"

#include <QVBoxLayout>

using platform::localised;

namespace {

integrityTableView *reportTable(TableView *outlet, const QString &name)
{
    auto *table = new integrityTableView;
    table->setObjectName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setMinimumHeight(110);
    binding::bind(outlet, table);
    return table;
}

// A tab's page around its contents; the identifier is what the tab view's
// outlet knows the tab by.
QWidget *page(const QString &identifier, QWidget *contents)
{
    auto *widget = new QWidget;
    widget->setObjectName(identifier + QStringLiteral("Tab"));
    widget->setProperty("tabIdentifier", identifier);
    auto *layout = new QVBoxLayout(widget);
    layout->addWidget(contents);
    return widget;
}

}  // namespace

ContactTabView::ContactTabView(QWidget *details, QWidget *notes, OpenContactReports &reports, TabView *outlet,
                               QWidget *parent)
    : QTabWidget(parent)
{
    orders = reportTable(reports.orderTableView, QStringLiteral("orderTableView"));
    items = reportTable(reports.itemTableView, QStringLiteral("itemTableView"));
    addTab(page(QStringLiteral("details"), details), localised("Details"));
    addTab(page(QStringLiteral("notes"), notes), localised("Notes"));
    addTab(page(QStringLiteral("orders"), orders), localised("Orders"));
    addTab(page(QStringLiteral("items"), items), localised("Bill of Materials"));
    binding::bind(outlet, this);
}
