#pragma once
// What an area of the program may ask of the application controller, and
// nothing more: the other areas' managers and editors, the preferences, the
// database, the lookups across collections, and the writing of a manager's
// file. The controller (Quorvel) answers them; every manager is given this
// interface when it is made, so no area depends on the controller, on
// another area's construction or on the windows. Tests give a manager a
// fake (tests/testlib/FakeServices.h).
//
// The names are the controller's own. Only forward declarations here: an
// area that uses a manager it is handed includes that manager's header.
#include <QString>

class ActionManager;
class BillManager;
class BOMManager;
class CheckoutManager;
class CompanyContactEditor;
class CompanyEditor;
class Contact;
class ContactManager;
class DatabaseBundle;
class Item;
class ItemManager;
class OrderManager;
class Picker;
class PrefsController;
class QObject;
class SupplierDataSource;

class QuorvelServices
{
public:
    virtual ~QuorvelServices() = default;

    // The managers, the editors of companies, the picker and the preferences.
    virtual ContactManager *getContactManager() const = 0;
    virtual ActionManager *getActionManager() const = 0;
    virtual BillManager *getBillManager() const = 0;
    virtual BOMManager *getBOMManager() const = 0;
    virtual ItemManager *getItemManager() const = 0;
    virtual OrderManager *getOrderManager() const = 0;
    virtual CheckoutManager *getCheckoutManager() const = 0;
    virtual SupplierDataSource *getSupplierDataSource() const = 0;
    virtual CompanyEditor *getCompanyEditor() const = 0;
    virtual CompanyContactEditor *getCompanyContactEditor() const = 0;
    virtual Picker *getPicker() const = 0;
    virtual PrefsController *getPrefsController() const = 0;
    // The six collections as the database files hold them.
    virtual DatabaseBundle &getDatabase() = 0;

    // Lookups across collections.
    virtual Contact *getContactbyId(const QString &id) const = 0;
    virtual QString getContactNameforId(const QString &id) const = 0;
    virtual QString getContactIdForName(const QString &name) const = 0;
    virtual int getContactIdForOrder(int orderId) const = 0;
    virtual QString getCurrentContactIdAsString() const = 0;
    virtual Item *getProductbyId(int id) const = 0;
    // The order whose bill of materials is shown.
    virtual int getCurrentOrder() const = 0;
    virtual void setCurrentOrder(int orderId) = 0;
    virtual void connectContact(Contact *contact, int orderId) = 0;

    // The optional modules the user has switched on.
    virtual bool hasTime() const = 0;
    virtual bool hasData() const = 0;
    virtual bool hasAccounts() const = 0;

    // The order editor and the checkout never edit at once.
    virtual void requestOrderManagerResign() = 0;
    virtual void requestCheckoutManagerResign() = 0;
    // Whether the sender of a command is the checkout.
    virtual bool isCheckout(const QObject *sender) const = 0;
    virtual void editContactForCurrentOrder() = 0;
    // The checkout on the order selected in the orders list, or on a new
    // sale; and the orders tab to the front, to choose an order in it.
    virtual void checkout() = 0;
    virtual void bringOrdersToFront() = 0;

    // Writes the file of the manager that sends it (all six for the
    // controller itself, nothing for any other sender).
    virtual bool writeDatabase(const QObject *sender) = 0;
    // Accepted and ignored: a deletion reaches the disk with the next write.
    virtual void setChangeFlag() = 0;
};
