#include "contacts/OpenContactReports.h"

#include "contacts/Contact.h"
#include "reports/ReportManager.h"

using namespace Qt::Literals::StringLiterals;

OpenContactReports::OpenContactReports(QuorvelServices *controller, QObject *parent)
    : QObject(parent),
      itemTableView(new TableView(this)),
      orderTableView(new TableView(this)),
      quorvel(controller),
      itemsReportMangager(std::make_unique<ReportManager>(controller)),
      ordersReportMangager(std::make_unique<ReportManager>(controller))
{
    // Until a report has run, each table is served by its engine (empty).
    itemTableView->setDataSource(itemsReportMangager.get());
    orderTableView->setDataSource(ordersReportMangager.get());
}

OpenContactReports::~OpenContactReports()
{
    // The tables outlive the engines by a moment: they must not ask a
    // destroyed engine for rows.
    itemTableView->setDataSource(nullptr);
    orderTableView->setDataSource(nullptr);
}

void OpenContactReports::run(const Contact *contact)
{
    // The open contact is given, not taken from the contact manager: a
    // company's person opened from the company editor is shown while the
    // company stays the manager's current contact.
    const int id = contact ? contact->getID() : -1;
    itemsReportMangager->setOpenContactId(id);
    ordersReportMangager->setOpenContactId(id);
    itemsReportMangager->doReport(u"ItemsforOpenContact"_s, itemTableView);
    ordersReportMangager->doReport(u"OrdersforOpenContact"_s, orderTableView);
}
