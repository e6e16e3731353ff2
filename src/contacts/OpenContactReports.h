#pragma once
// The two tables every contact editor shows of the contact that is open:
// the lines it bought ("ItemsforOpenContact") and its orders
// ("OrdersforOpenContact"). Each is run by its own report engine, whose
// definitions compare the customer with the contact manager's current
// contact.
#include "store/TableView.h"

#include <QObject>
#include <memory>

class Contact;
class QuorvelServices;
class ReportManager;

class OpenContactReports : public QObject
{
    Q_OBJECT
public:
    explicit OpenContactReports(QuorvelServices *controller, QObject *parent = nullptr);
    ~OpenContactReports() override;

    // Runs both reports into their tables for that contact (none: no
    // contact's rows).
    void run(const Contact *contact);

    TableView *itemTableView;
    TableView *orderTableView;

private:
    QuorvelServices *quorvel;
    std::unique_ptr<ReportManager> itemsReportMangager;
    std::unique_ptr<ReportManager> ordersReportMangager;
};
