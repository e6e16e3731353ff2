#include "orders/OrderManager.h"

#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "contacts/Contact.h"
#include "orders/Order.h"
#include "platform/Localised.h"

#include <QHash>

OrderManager::OrderManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("orders"), QStringLiteral("Delete Order"), parent),
      filterPopUp(new PopUp(this))
{
    filterPopUp->addItems({platform::localised("All"), platform::localised("Incomplete")});
    connect(filterPopUp, &PopUp::activated, this, [this] { filter(); });
}

void OrderManager::filter()
{
    const QString search = searchField->stringValue();
    const QString shown = filterPopUp->titleOfSelectedItem();
    const QString all = platform::localised("All");
    const QString incomplete = platform::localised("Incomplete");
    const QString complete = platform::localised("Complete");
    // Many orders share a customer: each contact is searched once per pass.
    QHash<const Contact *, bool> contactMatches;
    filterBy([&](const dataObject &record) {
        const auto &order = static_cast<const Order &>(record);
        bool visible = false;
        if (search.isEmpty() || order.contains(search))
            visible = shown == all || (shown == incomplete && order.getStatus() != complete);
        if (const Contact *contact = order.getContact(); contact && !search.isEmpty()) {
            auto known = contactMatches.constFind(contact);
            if (known == contactMatches.constEnd())
                known = contactMatches.insert(contact, contact->contains(search));
            if (*known)
                visible = true;
        }
        return visible;
    });
    reloadData();
}

void OrderManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortByColumn(columnId, ascending, Order::isDate(columnId) ? 2 : 0);
    reloadData();
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
