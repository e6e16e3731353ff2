// The order editor's documents: the stationery it offers and prints on,
// and the plain invoice sheet.
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/Stationery.h"
#include "platform/Workspace.h"

#include <QFileInfo>

#include <algorithm>

void OrderManager::installStationary()
{
    stationery::install();
    const QString chosen = whichStationary->titleOfSelectedItem();
    const QStringList names = stationery::names();
    whichStationary->removeAllItems();
    whichStationary->addItems(names);
    if (!names.isEmpty())
        whichStationary->selectItemAtIndex(
            std::max<qsizetype>(0, names.indexOf(names.contains(chosen) ? chosen : QStringLiteral("Invoice"))));
}

void OrderManager::editInvoiceTemplate()
{
    if (QFileInfo(stationery::folder()).isDir())
        platform::openFile(stationery::folder());
}

void OrderManager::printInvoice()
{
    if (!currentItem)
        return;
    finish(nullptr);
    if (openTemplateWindow)
        openTemplateWindow(whichStationary->titleOfSelectedItem(), currentItem);
}

void OrderManager::printInvoiceSheet()
{
    if (!currentItem)
        return;
    finish(nullptr);
    if (openInvoiceSheet)
        openInvoiceSheet(currentItem);
}
