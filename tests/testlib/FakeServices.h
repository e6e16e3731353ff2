#pragma once
// A stand-in for the application controller, for the test of one manager:
// it answers what a manager may ask (QuorvelServices) from what the test
// hands it, and records the writes asked for instead of writing. It owns
// the preferences (as the controller does) and a database over collections
// of its own; the managers, editors and the picker are the test's, set
// through the public pointers (none by default). The lookups answer as the
// controller does, from the managers set.
#include "store/DatabaseBundle.h"
#include "store/QuorvelServices.h"
#include "store/kdDataSource.h"

#include <QList>
#include <memory>

namespace testlib {

class FakeServices : public QuorvelServices
{
public:
    FakeServices();
    ~FakeServices() override;

    ContactManager *contacts = nullptr;
    ActionManager *actions = nullptr;
    BillManager *bills = nullptr;
    BOMManager *bom = nullptr;
    ItemManager *items = nullptr;
    OrderManager *orders = nullptr;
    CheckoutManager *checkoutManager = nullptr;
    SupplierDataSource *suppliers = nullptr;
    CompanyEditor *companyEditor = nullptr;
    CompanyContactEditor *companyContactEditor = nullptr;
    Picker *picker = nullptr;
    bool time = true, data = true, accounts = true;

    // The senders of every writeDatabase() asked for, in order.
    QList<const QObject *> writes;

    ContactManager *getContactManager() const override { return contacts; }
    ActionManager *getActionManager() const override { return actions; }
    BillManager *getBillManager() const override { return bills; }
    BOMManager *getBOMManager() const override { return bom; }
    ItemManager *getItemManager() const override { return items; }
    OrderManager *getOrderManager() const override { return orders; }
    CheckoutManager *getCheckoutManager() const override { return checkoutManager; }
    SupplierDataSource *getSupplierDataSource() const override { return suppliers; }
    CompanyEditor *getCompanyEditor() const override { return companyEditor; }
    CompanyContactEditor *getCompanyContactEditor() const override { return companyContactEditor; }
    Picker *getPicker() const override { return picker; }
    PrefsController *getPrefsController() const override { return prefs.get(); }
    DatabaseBundle &getDatabase() override { return *database; }
    // The database over these collections instead of the stand-in's own
    // (for a test whose managers hold the records); they must outlive it.
    void useCollections(kdDataSource &contactRecords, kdDataSource &orderRecords, kdDataSource &itemRecords,
                        kdDataSource &lineRecords, kdDataSource &billRecords, kdDataSource &taskRecords)
    {
        database = std::make_unique<DatabaseBundle>(contactRecords, orderRecords, itemRecords, lineRecords, billRecords,
                                                    taskRecords);
    }

    Contact *getContactbyId(const QString &id) const override;
    QString getContactNameforId(const QString &id) const override;
    QString getContactIdForName(const QString &name) const override;
    int getContactIdForOrder(int orderId) const override;
    QString getCurrentContactIdAsString() const override;
    Item *getProductbyId(int id) const override;
    int getCurrentOrder() const override { return currentOrder; }
    // As the controller does: the bill of materials shows that order's lines.
    void setCurrentOrder(int orderId) override;
    void connectContact(Contact *contact, int orderId) override;
    bool hasTime() const override { return time; }
    bool hasData() const override { return data; }
    bool hasAccounts() const override { return accounts; }
    void requestOrderManagerResign() override { }
    void requestCheckoutManagerResign() override { }
    bool isCheckout(const QObject *sender) const override;
    void editContactForCurrentOrder() override { }
    void checkout() override { ++checkouts; }
    void bringOrdersToFront() override { ++ordersBroughtToFront; }
    int checkouts = 0;
    int ordersBroughtToFront = 0;
    bool writeDatabase(const QObject *sender) override
    {
        writes << sender;
        return true;
    }
    void setChangeFlag() override { }

private:
    std::unique_ptr<PrefsController> prefs;
    kdDataSource collections[DatabaseBundle::FileCount];
    std::unique_ptr<DatabaseBundle> database;
    int currentOrder = 0;
};

}  // namespace testlib
