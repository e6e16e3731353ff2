#pragma once
// The orders list and the order editor: the list (drawn in status colours,
// filtered by a search and "All"/"Incomplete"), the editor with the linked
// contact's details, tax and balance arithmetic in single precision, the
// repeat settings and summary, the attachments of the order and the bill of
// materials fed from stock items and tasks. The checkout is an order manager
// of its own (CheckoutManager) on another window.
//
// Outlets may be absent (not connected): every use of one that may be
// absent is skipped then, so the checkout can bind fewer of them.
#include "platform/outlets/Button.h"
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/ListManager.h"

#include <QDateTime>

#include <functional>
#include <memory>

class Action;
class Contact;
class Item;
class Order;
class RecurringOrders;
class RepeatChecker;

class OrderManager : public ListManager
{
    Q_OBJECT
public:
    explicit OrderManager(QuorvelServices *controller, QObject *parent = nullptr);
    ~OrderManager() override;

    // Start-up: the filter pop-up gets "All" and "Incomplete" (selected).
    virtual void awakeFromNib();

    // The editor.
    void create() override;
    void edit() override;
    void setItem(Order *order);
    // Opens that order in the editor, whether the list shows it or not.
    void editOrder(Order *order);
    // Stores the editor into the order. With a sender: adds a new order,
    // hides the editor, filters and writes the orders file. Without one
    // (the printing path) only the record is updated.
    void finish(const QObject *sender);
    void cancel();
    void show();
    void hide();
    // Finishes an open editor when another editor (the checkout) comes to the front.
    virtual void requestResign(const QObject *sender);
    // The editor window became key: the checkout is asked to resign.
    virtual void windowDidBecomeKey();

    // The list. A double click on an order opens it in the order editor,
    // or, while the checkout asks for it, in the checkout.
    void doubleClick();
    void setDoubleClickOpensCheckout(bool on) { doubleClickOpensCheckout = on; }
    bool isDoubleClickOpeningCheckout() const { return doubleClickOpensCheckout; }
    void filter() override;
    void didClickTableColumn(const QString &columnId, bool ascending) override;
    std::optional<RgbaColour> labelColorForRow(int row) const override;
    // Removes the order, its attachments held aside for an undo; its
    // bill-of-materials lines stay.
    void deleteRecord(dataObject *record) override;

    // Money, from the fields' texts.
    void calculateTax();
    void calculateBalance();

    // Contacts.
    void pickContact();
    void setContact(dataObject *contact);
    virtual void connectContact(Contact *contact, int orderId);
    void connectContactById(int contactId, Order *order);
    void connectContact(Contact *contact, Order *order);
    void createContact();
    virtual void updateContactFields();
    QString grabContactFields() const;
    void copyContact();
    void sendEmail();

    // Attachments: the folder "Attachments/OrderN" in the database bundle.
    void attach();
    void fileDropped(const QString &path);
    static int countAttachments(int orderId);
    void setAttachmentStatus();
    // A file was added to the order's attachments folder by the program
    // (an e-mailed invoice): the editor counts them again when that order
    // is the one open.
    void attachmentAdded(int orderId);
    void viewAttachments();
    // Moves the order's attachments into the holding folder, from where an
    // undone deletion takes them back; answers where they went ("" for none).
    static QString deleteAttachments(int orderId);
    int getNumberOfAttachments() const { return numberofAttachments; }
    // The folder of an order's attachments.
    static QString attachmentFolder(int orderId);

    // Recurring orders. duplicate(nullptr) copies the order in the editor:
    // the copy and its lines are written at once and an alert names the new
    // number. Answers the copy (none when there was nothing to copy).
    Order *duplicate(Order *source);
    // One pass of the repeat checker at that moment: every order that was
    // in the collection when the pass began and is due is copied once, and
    // its last-repeat date moves on by one period. When anything was copied
    // the orders and the lines are written once, at the end, and one alert
    // lists every copy. Answers the copies as (source, copy) pairs in the
    // order they were made.
    QList<QPair<Order *, Order *>> checkForOverdueRepeats(const QDateTime &now);
    // Starts the repeat checker (first pass 5 s from now, then every 6 hours).
    void kickOffCheckForOverdueRepeats();
    void setRepeatInformativeText();

    // Stationery: the "stationary" folder made and filled when missing, and
    // its documents listed in the whichStationary pop-up.
    void installStationary();
    // Opens the stationery folder in the file manager.
    void editInvoiceTemplate();
    // Prints the order in the editor on the chosen stationery: the editor's
    // values go into the order first (nothing is written), then the
    // template window opens (openTemplateWindow). printInvoiceSheet does the
    // same for the plain invoice sheet (openInvoiceSheet).
    virtual void printInvoice();
    void printInvoiceSheet();
    // The windows printing opens, installed by the widget layer: the
    // stationery's name and the order; the order alone for the sheet.
    std::function<void(const QString &stationery, std::shared_ptr<Order> order)> openTemplateWindow;
    std::function<void(std::shared_ptr<Order> order)> openInvoiceSheet;

    // The bill of materials of the order in the editor.
    void insertBOMTotal();
    void insertBOMShipping();
    void pickMaterial();
    void setMaterial(dataObject *item);
    void pickTime();
    void setTime(dataObject *task);

    Order *getCurrentItem() const { return currentItem.get(); }
    bool isCreating() const { return creating; }
    Window *getOrderEditorWindow() const { return editorWindow; }

    // Outlets of the editor.
    Button *attachmentButton;
    TextField *attachmentText;
    TextField *balance;
    TextField *balancePaid;
    Button *calculateTaxButton;
    Button *checkoutCalculateTaxButton;
    TextField *checkoutTax;
    TextField *checkoutTaxAmount;
    TextField *contactName;
    TextField *contactAdd1;
    TextField *contactAdd2;
    TextField *contactAdd3;
    TextField *contactShortAddress;
    TextField *contactPostcode;
    TextField *contactPhone;
    TextField *contactMobile;
    TextField *contactFax;
    TextField *contactEmail;
    TextField *contactCompany;  // the contact's display company name
    TextField *date;
    TextField *deposit;
    TextField *depositPaid;
    TextView *description;
    Button *editContactButton;
    Window *editorWindow;
    PopUp *filterPopUp;  // "All" / "Incomplete"
    CheckBox *includeBOM;
    TextField *orderNumber;
    CheckBox *sent;
    TextField *shipping;
    PopUp *status;
    TextField *tax;
    TextField *taxAmount;
    TextField *title;
    PopUp *type;
    TextField *value;
    TextField *valueWithTax;
    PopUp *repeatFrequency;  // "week", "month", "year"
    CheckBox *repeats;
    TextField *repeatInformativeTextField;
    PopUp *whichStationary;
    PopUp *paymentMethod;
    // The attachment well: the number of files its icon shows (0, 1, 2 = more).
    Button *myImageView;

Q_SIGNALS:
    // The value field changed through the arithmetic (the checkout's
    // tender display listens).
    void valueTextDidChange();
    // The attachment well should show its icon again.
    void attachmentIconChanged();
    // A contact was linked to an order: every order editor shows its
    // order's contact again.
    void contactConnected();

protected:
    QString describe(const dataObject &record) const override;
    // The well's icon: "" for none, "singlefilewell" or "doublefilewell".
    void updateIcon();
    // A new order of the editor (creating) enters that list now and
    // creating ends; nothing happens when the editor holds no new order.
    void addNewOrderTo(kdDataSource &list);
    // The status pop-up: emptied, then one item per status of the preferences.
    void fillStatusPopUp();

    // The order in the editor; a new one (creating) is in no list yet.
    std::shared_ptr<Order> currentItem;
    bool creating = false;
    int numberofAttachments = 0;

private:
    std::unique_ptr<RecurringOrders> recurring;
    bool doubleClickOpensCheckout = false;
    std::unique_ptr<RepeatChecker> repeatChecker;
};
