#include "reports/ReportManager.h"

ReportManager::ReportManager(Quorvel *controller, QObject *parent)
    : QObject(parent), table(new TableView(this)), quorvel(controller)
{
    table->setDataSource(this);
    setTableView(table);
}
