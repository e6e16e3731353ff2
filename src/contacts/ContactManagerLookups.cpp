// The contact manager's counting and lookups: companies, suppliers and a
// company's people by count and by position, and contacts by id or name.
#include "contacts/ContactKinds.h"
#include "contacts/ContactManager.h"
#include "platform/Numbers.h"

using namespace contacts;

namespace {

using Records = std::vector<std::shared_ptr<dataObject>>;

// How many of the records pass the test.
template <typename Test> int countWhere(const Records &records, Test test)
{
    int count = 0;
    for (const auto &record : records)
        count += test(asContact(record.get())) ? 1 : 0;
    return count;
}

// The n-th (from 0) of the records that pass the test, none when there are
// fewer.
template <typename Test> Contact *nthWhere(const Records &records, int n, Test test)
{
    if (records.empty() || n + 1 > int(records.size()))
        return nullptr;
    int count = 0;
    for (const auto &record : records) {
        if (test(asContact(record.get())) && ++count == n + 1)
            return asContact(record.get());
    }
    return nullptr;
}

}  // namespace

// --- counting and lookups --------------------------------------------------

int ContactManager::countCompanies() const
{
    return countWhere(records(), [this](const Contact *contact) { return isTopLevel(contact); });
}

int ContactManager::countSuppliers() const
{
    return countWhere(records(), isSupplier);
}

int ContactManager::countVisibleCompanies() const
{
    return countWhere(records(), [this](const Contact *contact) { return isVisibleTopLevel(contact); });
}

int ContactManager::countContactsforThisCompany(int companyId) const
{
    return countWhere(records(), [companyId](const Contact *contact) {
        return isCompanyContact(contact) && contact->getCompany() == companyId;
    });
}

Contact *ContactManager::getnthCompany(int n) const
{
    return nthWhere(records(), n, [this](const Contact *contact) { return isTopLevel(contact); });
}

Contact *ContactManager::getnthSupplier(int n) const
{
    return nthWhere(records(), n, isSupplier);
}

Contact *ContactManager::getnthVisibleCompany(int n) const
{
    return nthWhere(records(), n, [this](const Contact *contact) { return isVisibleTopLevel(contact); });
}

// The found test is made at every company's person, not only at those of
// the asked company: with n = -1 (no row selected) the first person of
// another company met before any of this company's is the answer.
Contact *ContactManager::getnthContact(int n, int companyId) const
{
    int count = 0;
    for (const auto &record : records()) {
        Contact *contact = asContact(record.get());
        if (!isCompanyContact(contact))
            continue;
        if (contact->getCompany() == companyId)
            ++count;
        if (count == n + 1)
            return contact;
    }
    return nullptr;
}

Contact *ContactManager::getContactbyId(const QString &id) const
{
    return static_cast<Contact *>(getItemById(platform::intValue(id)));
}

Contact *ContactManager::getContactbyName(const QString &text) const
{
    for (const auto &record : records()) {
        if (asContact(record.get())->getName() == text)
            return asContact(record.get());
    }
    return nullptr;
}
