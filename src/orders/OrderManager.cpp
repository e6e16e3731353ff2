#include "orders/OrderManager.h"

#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "orders/Order.h"
#include "platform/Localised.h"

OrderManager::OrderManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("orders"), QStringLiteral("Delete Order"), parent),
      filterPopUp(new PopUp(this))
{
    filterPopUp->addItems({platform::localised("All"), platform::localised("Incomplete")});
}

void OrderManager::connectContact(Contact *contact, int orderId)
{
    if (auto *order = static_cast<Order *>(getItemById(orderId)))
        order->setContact(contact);
}

void OrderManager::requestResign(const QObject *) {}

std::optional<RgbaColour> OrderManager::labelColorForRow(int row) const
{
    const auto *order = static_cast<const Order *>(getnthVisibleItem(row));
    if (!order || !quorvel || !quorvel->getPrefsController())
        return std::nullopt;
    return quorvel->getPrefsController()->colourForStatus(order->getStatus());
}
