#include "FakeServices.h"

#include "checkout/CheckoutManager.h"
#include "orders/BOMManager.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "store/PrefsController.h"

namespace testlib {

FakeServices::FakeServices()
    : prefs(std::make_unique<PrefsController>()),
      database(std::make_unique<DatabaseBundle>(collections[0], collections[1], collections[2], collections[3],
                                                collections[4], collections[5]))
{ }

FakeServices::~FakeServices() = default;

Contact *FakeServices::getContactbyId(const QString &id) const
{
    return contacts ? contacts->getContactbyId(id) : nullptr;
}

QString FakeServices::getContactNameforId(const QString &id) const
{
    if (id == QLatin1String("0"))
        return QStringLiteral("");
    const Contact *contact = getContactbyId(id);
    return contact ? contact->getName() : QString();
}

QString FakeServices::getContactIdForName(const QString &name) const
{
    const Contact *contact = contacts ? contacts->getContactbyName(name) : nullptr;
    return QString::number(contact ? contact->getID() : 0);
}

int FakeServices::getContactIdForOrder(int orderId) const
{
    const auto *order = orders ? static_cast<const Order *>(orders->getItemById(orderId)) : nullptr;
    return order && order->getContact() ? order->getContact()->getID() : 0;
}

QString FakeServices::getCurrentContactIdAsString() const
{
    const Contact *contact = contacts ? contacts->getCurrentItem() : nullptr;
    return contact ? QString::number(contact->getID()) : QStringLiteral("-1");
}

Item *FakeServices::getProductbyId(int id) const
{
    return items ? static_cast<Item *>(items->getItemById(id)) : nullptr;
}

void FakeServices::setCurrentOrder(int orderId)
{
    currentOrder = orderId;
    if (bom) {
        bom->setCurrentOrder(orderId);
        bom->reloadData();
    }
}

void FakeServices::connectContact(Contact *contact, int orderId)
{
    if (orders)
        orders->connectContact(contact, orderId);
}

bool FakeServices::isCheckout(const QObject *sender) const
{
    return checkoutManager && sender == checkoutManager;
}

}  // namespace testlib
