// The order editor's bill of materials: its totals and shipping brought into
// the order, and stock items and tasks picked as new lines.
#include "orders/OrderManager.h"

#include "contacts/Contact.h"
#include "contacts/ContactFields.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/RecurringOrders.h"
#include "orders/RepeatChecker.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/FilePanels.h"
#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Workspace.h"
#include "store/Picker.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"

#include <QFileInfo>
#include <QHash>

using namespace Qt::Literals::StringLiterals;
using platform::localised;
using platform::withArguments;

// ---------------------------------------------------------------------------
// The bill of materials

void OrderManager::insertBOMTotal()
{
    if (!quorvel)
        return;
    const float total = quorvel->getBOMManager()->getTotalforCurrentOrder();
    platform::log(u"inserting BOM Total - "_s + platform::format6(total));
    value->setStringValue(platform::format6(total));
    platform::log(u"inserted BOM Total - "_s + platform::format6(total));
    calculateBalance();
}

void OrderManager::insertBOMShipping()
{
    if (!quorvel)
        return;
    shipping->setStringValue(platform::format6(quorvel->getBOMManager()->getShippingforCurrentOrder()));
    calculateBalance();
}

void OrderManager::pickMaterial()
{
    if (!quorvel)
        return;
    quorvel->getPicker()->beginfor([this](dataObject *chosen) { setMaterial(chosen); }, quorvel->getItemManager(),
                                   u"code"_s, u"item"_s, quorvel->getPrefsController()->getTermItem());
}

void OrderManager::setMaterial(dataObject *chosen)
{
    auto *item = dynamic_cast<Item *>(chosen);
    if (!item || !quorvel)
        return;
    if (item->getQty() == "0"_L1) {
        const int answer
            = platform::runAlert(localised("Out of Stock"),
                                 localised("You have none of these items. Do you still wish to add one to this order?"),
                                 localised("Add anyway"), localised("Cancel"));
        if (answer != 1)
            return;
    }
    if (item->getDecreaseQty()) {
        // One unit per pick; the stock may go below nothing.
        const int left = item->decQty();
        if (platform::intValue(item->getWarnlevel()) >= left)
            platform::runAlert(
                localised("Low Stock"),
                withArguments(localised("This leaves %i of these items in stock."), {QString::number(left)}),
                localised("OK"));
    }
    BOMManager *bom = quorvel->getBOMManager();
    bom->addProduct(item);
    bom->reloadData();
}

void OrderManager::pickTime()
{
    if (!quorvel)
        return;
    quorvel->getPicker()->beginfor([this](dataObject *chosen) { setTime(chosen); }, quorvel->getActionManager(),
                                   u"totalTimeUnits"_s, u"title"_s, localised("Task"));
}

void OrderManager::setTime(dataObject *chosen)
{
    auto *task = dynamic_cast<Action *>(chosen);
    if (!task || !quorvel)
        return;
    BOMManager *bom = quorvel->getBOMManager();
    bom->addTime(task);
    bom->reloadData();
}
