#include "items/SupplierDataSource.h"

#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Log.h"
#include "store/QuorvelServices.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool isSupplier(const dataObject *record)
{
    const auto *contact = dynamic_cast<const Contact *>(record);
    return contact && contact->getType() == u"Supplier"_s;
}

}  // namespace

kdDataSource *SupplierDataSource::contacts() const
{
    return quorvel ? quorvel->getContactManager() : nullptr;
}

void SupplierDataSource::findSuppliers() const
{
    supplierPositions.clear();
    const kdDataSource *all = contacts();
    countedContacts = all ? all->getCount() : 0;
    if (!all)
        return;
    const int count = countedContacts;
    for (int i = 0; i < count; ++i) {
        if (isSupplier(all->getnthItem(i)))
            supplierPositions.push_back(i);
    }
}

int SupplierDataSource::getCount() const
{
    findSuppliers();
    return int(supplierPositions.size());
}

dataObject *SupplierDataSource::getnthItem(int n) const
{
    const kdDataSource *all = contacts();
    if (!all || n < 0)
        return nullptr;
    // The positions of the last count serve as long as they still point at
    // suppliers among as many contacts; after a change to the contacts they are found again.
    const auto cached = [&]() -> dataObject * {
        if (size_t(n) >= supplierPositions.size() || all->getCount() != countedContacts)
            return nullptr;
        dataObject *record = all->getnthItem(supplierPositions[size_t(n)]);
        return isSupplier(record) ? record : nullptr;
    };
    if (dataObject *record = cached())
        return record;
    findSuppliers();
    return cached();
}

dataObject *SupplierDataSource::getItemById(int id) const
{
    const kdDataSource *all = contacts();
    return all ? all->getItemById(id) : nullptr;
}

QString SupplierDataSource::objectValueForTableColumn(const QString &columnId, int row) const
{
    platform::standardOutput(u"request for item %1\n"_s.arg(row));
    const dataObject *record = getnthItem(row);
    return record ? record->getFieldByName(columnId) : u""_s;
}
