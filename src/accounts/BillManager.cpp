#include "accounts/BillManager.h"

BillManager::BillManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("bills"), QStringLiteral("Delete Bill"), parent),
      periodPopUp(new PopUp(this)),
      inTable(new TableView(this)),
      sttTable(new TableView(this))
{
    sttTable->setColumns(TableView::columnsFrom({{"name", ""}, {"amount", ""}}));
}
