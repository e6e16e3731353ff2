#include "contacts/ContactManager.h"

#include "contacts/Contact.h"
#include "platform/Numbers.h"

ContactManager::ContactManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("contacts"), QStringLiteral("Delete contact"), parent),
      typeFilter(new PopUp(this))
{
}

Contact *ContactManager::getContactbyId(const QString &id) const
{
    return static_cast<Contact *>(getItemById(platform::intValue(id)));
}

Contact *ContactManager::getContactbyName(const QString &name) const
{
    for (dataObject *record : records()) {
        auto *contact = static_cast<Contact *>(record);
        if (contact->getName() == name)
            return contact;
    }
    return nullptr;
}

void ContactManager::editThisContact(Contact *contact)
{
    currentItem = contact;
}

void ContactManager::createForCurrentOrder()
{
    // Nothing yet: the contact editor comes with the contacts work.
}
