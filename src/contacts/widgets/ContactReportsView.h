#pragma once
// The open contact's orders and the lines they bought, as every contact
// editor shows them: two read-only tables bound to the contact's report
// tables (the report engine gives them their columns and rows).
#include <QWidget>

class OpenContactReports;
class integrityTableView;

class ContactReportsView : public QWidget
{
    Q_OBJECT
public:
    explicit ContactReportsView(OpenContactReports &reports, QWidget *parent = nullptr);

    integrityTableView *orderTable() const { return orders; }
    integrityTableView *itemTable() const { return items; }

private:
    integrityTableView *orders = nullptr;
    integrityTableView *items = nullptr;
};
