#pragma once
// The suppliers offered when an item's supplier is chosen: a collection of
// its own over the contacts, holding every contact whose type is exactly
// "Supplier" (person, company or a company's person alike, visible or not)
// in the contacts' order. Lookups by id reach every contact.
#include "store/kdDataSource.h"

#include <vector>

class Contact;
class QuorvelServices;

class SupplierDataSource : public kdDataSource
{
public:
    explicit SupplierDataSource(QuorvelServices *controller)
        : quorvel(controller)
    { }

    // Counting looks at the contacts afresh.
    int getCount() const override;
    dataObject *getnthItem(int n) const override;
    dataObject *getItemById(int id) const override;

    int numberOfRowsInTableView() const override { return getCount(); }
    // The field of the n-th supplier; each request is also reported on
    // standard output ("request for item N").
    QString objectValueForTableColumn(const QString &columnId, int row) const override;

private:
    kdDataSource *contacts() const;
    void findSuppliers() const;

    QuorvelServices *quorvel;
    // Positions of the suppliers among the contacts, as last counted.
    mutable std::vector<int> supplierPositions;
    mutable int countedContacts = 0;
};
