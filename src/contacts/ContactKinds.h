#pragma once
// The kinds and types of contact the contacts area tells apart, as the
// records store them, for the contact manager's own files.
#include "contacts/Contact.h"

#include <QString>

namespace contacts {

inline const QString companyKind = QStringLiteral("Company");
inline const QString companyContactKind = QStringLiteral("Company Contact");

inline Contact *asContact(dataObject *record)
{
    return static_cast<Contact *>(record);
}

inline bool isCompanyContact(const Contact *contact)
{
    return contact->getKind() == companyContactKind;
}

inline bool isSupplier(const Contact *contact)
{
    return contact->getType() == u"Supplier";
}

}  // namespace contacts
