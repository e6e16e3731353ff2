#include "contacts/widgets/ContactReportsView.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/OpenContactReports.h"
#include "platform/Localised.h"

#include <QGroupBox>
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

QGroupBox *group(const QString &title, const QString &name, QWidget *table)
{
    auto *box = new QGroupBox(title);
    box->setObjectName(name);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(table);
    return box;
}

}  // namespace

ContactReportsView::ContactReportsView(OpenContactReports &reports, QWidget *parent) : QWidget(parent)
{
    orders = reportTable(reports.orderTableView, QStringLiteral("orderTableView"));
    items = reportTable(reports.itemTableView, QStringLiteral("itemTableView"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group(localised("Orders"), QStringLiteral("ordersGroup"), orders), 1);
    layout->addWidget(group(localised("Items"), QStringLiteral("itemsGroup"), items), 1);
}
