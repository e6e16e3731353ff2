#pragma once
// The tab view every contact editor is laid out in: the contact's details,
// its notes, its orders and the lines they bought. The last two are
// read-only tables bound to the open contact's report tables (the report
// engine gives them their columns and rows). The tab view is bound to the
// outlet it is given, through which the preferences put the user's words
// for orders and for a bill of materials on tabs 2 and 3.
#include <QTabWidget>

class OpenContactReports;
class TabView;
class integrityTableView;

class ContactTabView : public QTabWidget
{
    Q_OBJECT
public:
    ContactTabView(QWidget *details, QWidget *notes, OpenContactReports &reports, TabView *outlet,
                   QWidget *parent = nullptr);

    integrityTableView *orderTable() const { return orders; }
    integrityTableView *itemTable() const { return items; }

private:
    integrityTableView *orders = nullptr;
    integrityTableView *items = nullptr;
};
