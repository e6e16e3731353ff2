#include "checkout/CheckoutManager.h"

#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "store/QuorvelServices.h"

using platform::localised;

CheckoutManager::CheckoutManager(QuorvelServices *controller, QObject *parent)
    : OrderManager(controller, parent),
      tenderDue(new TextField(this)),
      tenderBalance(new TextField(this)),
      tenderTendered(new TextField(this)),
      tenderInformativeText(new TextField(this)),
      tenderPanel(new Window(this)),
      codeEntry(new TextField(this)),
      codeEntryMessage(new TextField(this))
{
    editorWindow->setTitle(localised("Checkout"));
    tenderPanel->setTitle(localised("Tender"));
    tenderDue->setMoney(true);
    tenderBalance->setMoney(true);
    connect(tenderTendered, &TextField::edited, this, [this] { controlTextDidChange(); });
    connect(tenderTendered, &TextField::activated, this, [this] { tenderOK(); });
    connect(codeEntry, &TextField::activated, this, [this] { addItemWithCode(codeEntry->stringValue()); });
    // A change typed into any of the sale's fields marks the window edited.
    for (TextField *field : {balance, balancePaid, date, deposit, depositPaid, orderNumber, shipping, taxAmount, title,
                             value, valueWithTax})
        connect(field, &TextField::edited, this, [this] { markEdited(); });
    connect(description, &TextView::edited, this, [this] { markEdited(); });
    connect(editorWindow, &Window::keyChanged, this, [this](bool isKey) {
        if (isKey)
            windowDidBecomeMain();
    });
}

void CheckoutManager::awakeFromNib()
{
    fillStatusPopUp();
    installStationary();
}

// ---------------------------------------------------------------------------
// The sale

void CheckoutManager::edit(Order *order)
{
    if (order) {
        currentItem = shareOf(order);
        setItem(order);
        valueWithTax->setStringValue(order->getValueWithTax());
        creating = false;
    } else {
        create();
        if (currentItem)
            currentItem->setIncludeBOM(true);
        includeBOM->setState(true);
    }
    codeEntry->setStringValue(QStringLiteral(""));
    codeEntryMessage->setStringValue(QStringLiteral(""));
    editorWindow->setDocumentEdited(false);
    show();
}

void CheckoutManager::clearCurrentOrder()
{
    edit(nullptr);
}

int CheckoutManager::askToSave() const
{
    return platform::runAlert(localised("Close Checkout"),
                              localised("Do you want to save this transaction before closing?"), localised("Save"),
                              localised("Don't Save"), localised("Cancel"));
}

void CheckoutManager::checkoutNew()
{
    if (!editorWindow->isDocumentEdited()) {
        clearCurrentOrder();
        return;
    }
    switch (askToSave()) {
    case 1:
        finish();
        edit(nullptr);
        break;
    case 0:
        clearCurrentOrder();
        break;
    default:
        break;
    }
}

void CheckoutManager::commitNewSale()
{
    if (!creating || !quorvel)
        return;
    addNewOrderTo(*quorvel->getOrderManager());
}

void CheckoutManager::checkoutNewContact()
{
    commitNewSale();
    markEdited();
    if (quorvel)
        quorvel->getContactManager()->createForCurrentOrder();
}

void CheckoutManager::checkoutSelectContact()
{
    commitNewSale();
    markEdited();
    pickContact();
}

void CheckoutManager::checkoutSelectItem()
{
    commitNewSale();
    markEdited();
    pickMaterial();
}

void CheckoutManager::checkoutSelectTime()
{
    commitNewSale();
    markEdited();
    pickTime();
}

void CheckoutManager::checkoutCreateAdhoc()
{
    commitNewSale();
    markEdited();
    if (quorvel)
        quorvel->getBOMManager()->create();
}

void CheckoutManager::checkoutDeleteItem()
{
    markEdited();
    if (quorvel)
        quorvel->getBOMManager()->deleteKey(this);
}

bool CheckoutManager::addItemWithCode(const QString &code)
{
    Item *item = quorvel ? quorvel->getItemManager()->getItemByCode(code) : nullptr;
    if (!item) {
        Q_EMIT beep();
        codeEntryMessage->setStringValue(localised("No item has the code \"%1\".").arg(code.trimmed()));
        return false;
    }
    commitNewSale();
    markEdited();
    codeEntry->setStringValue(QStringLiteral(""));
    codeEntryMessage->setStringValue(localised("Added %1").arg(item->getItem()));
    setMaterial(item);
    return true;
}

void CheckoutManager::linesChanged()
{
    if (!currentItem || !quorvel || quorvel->getCurrentOrder() != currentItem->getID())
        return;
    // The lines as they are now, the one just added included.
    quorvel->getBOMManager()->reloadData();
    insertBOMTotal();
    if (platform::floatValue(currentItem->getTaxRate()) != 0.0f)
        calculateTax();
    float total = value->floatValue() + taxAmount->floatValue();
    total = total + shipping->floatValue();
    valueWithTax->setFloatValue(total);
}

void CheckoutManager::finish()
{
    const std::shared_ptr<Order> sale = currentItem;
    if (!sale)
        return;
    // 1. The fields the window has.
    const auto copy = [](TextField *field, void (Order::*set)(const QString &), Order &order) {
        if (field->isConnected())
            (order.*set)(field->stringValue());
    };
    copy(balance, &Order::setBalance, *sale);
    copy(balancePaid, &Order::setBalancePaid, *sale);
    copy(date, &Order::setDate, *sale);
    copy(deposit, &Order::setDeposit, *sale);
    copy(depositPaid, &Order::setDepositPaid, *sale);
    if (description->isConnected())
        sale->setDescription(description->string());
    copy(orderNumber, &Order::setOrderNum, *sale);
    copy(shipping, &Order::setShipping, *sale);
    copy(taxAmount, &Order::setTax, *sale);
    copy(title, &Order::setTitle, *sale);
    copy(value, &Order::setValue, *sale);
    // 2. The total, in single precision: value, tax, shipping.
    if (valueWithTax->isConnected()) {
        float total = value->floatValue() + taxAmount->floatValue();
        total = total + shipping->floatValue();
        sale->setValueWithTax(platform::format2(total));
        valueWithTax->setStringValue(sale->getValueWithTax());
    }
    // 3. The pop-ups, when something is chosen.
    if (status->isConnected() && !status->titleOfSelectedItem().isEmpty())
        sale->setStatus(status->titleOfSelectedItem());
    if (repeatFrequency->isConnected() && !repeatFrequency->titleOfSelectedItem().isEmpty())
        sale->setRepeatFrequency(repeatFrequency->titleOfSelectedItem());
    // 4. Repeating from now on.
    if (repeats->isConnected()) {
        sale->setRepeats(repeats->state());
        if (sale->getRepeats() && sale->getLastRepeatDate().isEmpty())
            sale->setLastRepeatDate(platform::formatDate(platform::now(), platform::dayFirstFormat));
    }
    // 5. A new sale joins the order list.
    commitNewSale();
    // 6. The list shows it; the write asked for writes nothing for the
    // checkout: the sale goes to disk with the next write of the orders.
    if (quorvel) {
        quorvel->getOrderManager()->filter();
        quorvel->writeDatabase(this);
    }
}

void CheckoutManager::printInvoice()
{
    if (!currentItem)
        return;
    finish();
    if (openTemplateWindow)
        openTemplateWindow(whichStationary->titleOfSelectedItem(), currentItem);
}

// ---------------------------------------------------------------------------
// Tendering

void CheckoutManager::tender()
{
    tenderDue->setStringValue(balance->stringValue());
    tenderBalance->setStringValue(balance->stringValue());
    tenderTendered->setStringValue(QStringLiteral(""));
    tenderInformativeText->setStringValue(localised("Balance Remaining"));
    tenderPanel->center();
    tenderPanel->makeKeyAndOrderFront();
}

void CheckoutManager::controlTextDidChange()
{
    markEdited();
    updateTender();
}

void CheckoutManager::updateTender()
{
    const float tendered = platform::floatValue(tenderTendered->stringValue());
    const float difference = tenderDue->floatValue() - tendered;
    if (difference <= 0.0f) {
        tenderBalance->setFloatValue(0.0f - difference);
        tenderInformativeText->setStringValue(localised("Change Due"));
    } else {
        tenderBalance->setFloatValue(difference);
        tenderInformativeText->setStringValue(localised("Balance Remaining"));
    }
}

void CheckoutManager::tenderOK()
{
    // Day first, whatever the date preference.
    const QString today = platform::formatDate(platform::now(), platform::dayFirstFormat);
    platform::log(QStringLiteral("today is ") + today);
    if (tenderInformativeText->stringValue() != localised("Change Due")) {
        deposit->setStringValue(tenderTendered->stringValue());
        depositPaid->setStringValue(today);
    } else {
        balancePaid->setStringValue(today);
    }
    tenderPanel->orderOut();
    finish();
    edit(nullptr);
}

void CheckoutManager::tenderCancel()
{
    tenderPanel->orderOut();
}

// ---------------------------------------------------------------------------
// The orders list and the windows

void CheckoutManager::setDefaultInterfaceToCheckout()
{
    if (quorvel)
        quorvel->getOrderManager()->setDoubleClickOpensCheckout(true);
}

void CheckoutManager::setDefaultInterfaceToDatabase()
{
    if (quorvel)
        quorvel->getOrderManager()->setDoubleClickOpensCheckout(false);
}

void CheckoutManager::updateExistingOrder()
{
    setDefaultInterfaceToCheckout();
    if (quorvel)
        quorvel->bringOrdersToFront();
}

void CheckoutManager::windowDidBecomeKey()
{
    if (quorvel)
        quorvel->requestOrderManagerResign();
    setDefaultInterfaceToCheckout();
}

void CheckoutManager::windowDidBecomeMain()
{
    if (quorvel)
        quorvel->getBOMManager()->reloadData();
}

bool CheckoutManager::windowShouldClose()
{
    if (!editorWindow->isDocumentEdited())
        return true;
    switch (askToSave()) {
    case 1:
        finish();
        return true;
    case 0:
        return true;
    default:
        return false;
    }
}

void CheckoutManager::windowWillClose()
{
    setDefaultInterfaceToDatabase();
}

void CheckoutManager::requestResign(const QObject *)
{
    hide();
    setDefaultInterfaceToDatabase();
}
