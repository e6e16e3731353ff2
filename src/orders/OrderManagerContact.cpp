// The order editor's contact: picking, linking and making one, its details
// shown in the editor, and copying or e-mailing its postal block.
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

namespace {

void setIfPresent(TextField *field, const QString &text)
{
    if (field->isConnected())
        field->setStringValue(text);
}

}  // namespace

// ---------------------------------------------------------------------------
// Contacts

void OrderManager::pickContact()
{
    if (!quorvel)
        return;
    quorvel->getPicker()->beginfor([this](dataObject *chosen) { setContact(chosen); }, quorvel->getContactManager(),
                                   u"name"_s, u"address"_s, localised("Contact"));
}

void OrderManager::setContact(dataObject *contact)
{
    if (quorvel)
        quorvel->connectContact(dynamic_cast<Contact *>(contact), quorvel->getCurrentOrder());
}

void OrderManager::connectContact(Contact *contact, int orderId)
{
    if (creating && quorvel)
        addNewOrderTo(*quorvel->getOrderManager());
    if (auto *order = static_cast<Order *>(getItemById(orderId)))
        order->setContact(contact);
    Q_EMIT contactConnected();
}

void OrderManager::connectContactById(int contactId, Order *order)
{
    if (order && quorvel)
        order->setContact(quorvel->getContactbyId(QString::number(contactId)));
}

void OrderManager::connectContact(Contact *contact, Order *order)
{
    if (order)
        order->setContact(contact);
}

void OrderManager::createContact()
{
    if (!quorvel)
        return;
    if (creating)
        addNewOrderTo(*quorvel->getOrderManager());
    quorvel->getContactManager()->createForCurrentOrder();
}

void OrderManager::updateContactFields()
{
    TextField *const fields[] = {contactName,     contactAdd1,  contactAdd2,   contactAdd3, contactShortAddress,
                                 contactPostcode, contactPhone, contactMobile, contactFax,  contactEmail};
    Contact *contact = currentItem ? currentItem->getContact() : nullptr;
    if (!contact) {
        for (TextField *field : fields)
            setIfPresent(field, u""_s);
        setIfPresent(contactCompany, u""_s);
        editContactButton->setEnabled(false);
        return;
    }
    const QString texts[]
        = {contact->getName(),         contact->getAdd1(),     contact->getAdd2(),  contact->getAdd3(),
           contact->getShortAddress(), contact->getPostcode(), contact->getPhone(), contact->getMobile(),
           contact->getFax(),          contact->getEmail()};
    for (std::size_t i = 0; i < std::size(fields); ++i)
        setIfPresent(fields[i], texts[i]);
    editContactButton->setEnabled(true);
    if (quorvel) {
        const QString company = quorvel->getContactNameforId(QString::number(contact->getCompany()));
        contact->setCompanyName(company);
        setIfPresent(contactCompany, contact->getCompanyName());
    }
}

QString OrderManager::grabContactFields() const
{
    return ContactFields::postalBlock(currentItem ? currentItem->getContact() : nullptr);
}

void OrderManager::copyContact()
{
    platform::setPasteboardString(grabContactFields());
}

void OrderManager::sendEmail()
{
    const Contact *contact = currentItem ? currentItem->getContact() : nullptr;
    if (contact)
        platform::openUrl(u"mailto:"_s + contact->getEmail());
}
