#pragma once
// The checkout: quick sales at a shop counter on the order machinery. It is
// the order editor bound to a smaller window (any of the editor's controls
// may be missing there, and every step that reads one looks first), whose
// sale is an ordinary order of the one order list and whose lines are
// bill-of-materials lines.
//
// A new sale joins the order list as soon as it gets a customer or a line,
// so that they have an order to belong to; finishing copies the window into
// the sale but writes nothing itself (the orders file is written with the
// next write of the orders, or at quit). Tendering shows the change due or
// the balance remaining as the sum handed over is typed; accepting it
// stamps the payment with today's date (day first, whatever the date
// preference), finishes the sale and starts the next.
//
// Items can also be added by their code, typed or read by a barcode scanner
// (which types the code and Enter), with the same stock rules as picking
// them; an unknown code beeps and says so in the window.
#include "orders/OrderManager.h"

class CheckoutManager : public OrderManager
{
    Q_OBJECT
public:
    explicit CheckoutManager(QuorvelServices *controller, QObject *parent = nullptr);

    // Start-up: the status pop-up and the stationery (the order list's
    // filter is not the checkout's business).
    void awakeFromNib() override;

    // Opens the checkout on that order, or on a new sale (with its bill of
    // materials on its invoice) when none; the window's edited mark is
    // cleared.
    void edit(Order *order);
    // A fresh sale.
    void clearCurrentOrder();
    // A fresh sale, after the close question when the window holds changes.
    void checkoutNew();

    // The sale's customer and lines. Each first puts a new sale into the
    // order list and marks the window edited.
    void checkoutNewContact();
    void checkoutSelectContact();
    void checkoutSelectItem();
    void checkoutSelectTime();
    void checkoutCreateAdhoc();
    // Removes the selected line (after the question); the sale is not put
    // into the order list for that.
    void checkoutDeleteItem();
    // The item of that code as a new line. False, after a beep and a word in
    // the window, when no item has the code.
    bool addItemWithCode(const QString &code);
    // The sale's lines changed: its value, tax and balance follow them.
    void linesChanged();

    // Copies the window into the sale (each field only when the window has
    // its control), puts a new sale into the order list and refilters it.
    void finish();
    // Finishes, then opens the chosen stationery filled with the sale.
    void printInvoice() override;

    // The tender panel.
    void tender();
    void controlTextDidChange();
    void updateTender();
    void tenderOK();
    void tenderCancel();

    // What a double click in the orders list does: open the order in the
    // checkout, or in the order editor again.
    void setDefaultInterfaceToCheckout();
    void setDefaultInterfaceToDatabase();
    // The orders tab to the front, to choose the order to take payment on.
    void updateExistingOrder();

    // The window's delegate.
    void windowDidBecomeKey() override;
    void windowDidBecomeMain();
    // Whether the window may close: the close question when it holds
    // changes ("Save" finishes first, "Cancel" keeps it open).
    bool windowShouldClose();
    void windowWillClose();
    void requestResign(const QObject *sender) override;

    Order *getEditedOrder() const { return currentItem.get(); }
    bool isOpen() const { return editorWindow->isVisible(); }

    TextField *tenderDue;
    TextField *tenderBalance;
    TextField *tenderTendered;
    TextField *tenderInformativeText;  // "Balance Remaining" or "Change Due"
    Window *tenderPanel;
    // The code of an item to add, and what became of the last one.
    TextField *codeEntry;
    TextField *codeEntryMessage;

Q_SIGNALS:
    // An unknown code: the platform's beep.
    void beep();

private:
    // A new sale joins the order list.
    void commitNewSale();
    void markEdited() { editorWindow->setDocumentEdited(true); }
    // The close question: 1 Save, 0 Don't Save, -1 Cancel.
    int askToSave() const;
};
