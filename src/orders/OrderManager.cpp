#include "orders/OrderManager.h"

#include "contacts/Contact.h"
#include "contacts/ContactFields.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/RecurringOrders.h"
#include "orders/RepeatChecker.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/FilePanels.h"
#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Workspace.h"
#include "store/Picker.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"

#include <QFileInfo>
#include <QHash>

using namespace Qt::Literals::StringLiterals;
using platform::localised;
using platform::withArguments;

OrderManager::OrderManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, u"orders"_s, u"Delete Order"_s, parent),
      attachmentButton(new Button(this)),
      attachmentText(new TextField(this)),
      balance(new TextField(this)),
      balancePaid(new TextField(this)),
      calculateTaxButton(new Button(this)),
      checkoutCalculateTaxButton(new Button(this)),
      checkoutTax(new TextField(this)),
      checkoutTaxAmount(new TextField(this)),
      contactName(new TextField(this)),
      contactAdd1(new TextField(this)),
      contactAdd2(new TextField(this)),
      contactAdd3(new TextField(this)),
      contactShortAddress(new TextField(this)),
      contactPostcode(new TextField(this)),
      contactPhone(new TextField(this)),
      contactMobile(new TextField(this)),
      contactFax(new TextField(this)),
      contactEmail(new TextField(this)),
      contactCompany(new TextField(this)),
      date(new TextField(this)),
      deposit(new TextField(this)),
      depositPaid(new TextField(this)),
      description(new TextView(this)),
      editContactButton(new Button(this)),
      editorWindow(new Window(this)),
      filterPopUp(new PopUp(this)),
      includeBOM(new CheckBox(this)),
      orderNumber(new TextField(this)),
      sent(new CheckBox(this)),
      shipping(new TextField(this)),
      status(new PopUp(this)),
      tax(new TextField(this)),
      taxAmount(new TextField(this)),
      title(new TextField(this)),
      type(new PopUp(this)),
      value(new TextField(this)),
      valueWithTax(new TextField(this)),
      repeatFrequency(new PopUp(this)),
      repeats(new CheckBox(this)),
      repeatInformativeTextField(new TextField(this)),
      whichStationary(new PopUp(this)),
      paymentMethod(new PopUp(this)),
      myImageView(new Button(this)),
      recurring(std::make_unique<RecurringOrders>(*this))
{
    // Until start-up (awakeFromNib) the list shows every order, so a
    // manager that is never started (a headless use) hides nothing.
    filterPopUp->addItems({localised("All"), localised("Incomplete")});
    fillStatusPopUp();
    // Stored in the orders file as they stand, so not translated.
    paymentMethod->addItems({u"web"_s, u"cash"_s, u"card"_s, u"cheque"_s, u"transfer"_s});
    repeatFrequency->addItems({u"week"_s, u"month"_s, u"year"_s});
    type->addItems({u"Enquiry"_s, u"Quote"_s, u"Order"_s, u"Invoice"_s});
    editContactButton->setEnabled(false);
    attachmentButton->setEnabled(false);
    editorWindow->setTitle(localised("Order"));
    // The money fields show two decimals; the figure shown is the one stored.
    for (TextField *money : {value, taxAmount, shipping, deposit, balance, valueWithTax, checkoutTaxAmount})
        money->setMoney(true);

    connect(filterPopUp, &PopUp::activated, this, [this] { filter(); });
    connect(calculateTaxButton, &Button::activated, this, [this] { calculateTax(); });
    connect(attachmentButton, &Button::activated, this, [this] { viewAttachments(); });
    connect(editContactButton, &Button::activated, this, [this] {
        if (quorvel)
            quorvel->editContactForCurrentOrder();
    });
    // Enter in a money field works the balance out again.
    for (TextField *money : {value, taxAmount, shipping, deposit})
        connect(money, &TextField::activated, this, [this] { calculateBalance(); });
    // The summary follows the repeat settings as the user changes them.
    const auto refreshSummary = [this] {
        if (repeatInformativeTextField->isConnected())
            setRepeatInformativeText();
    };
    connect(repeats, &CheckBox::activated, this, refreshSummary);
    connect(repeatFrequency, &PopUp::activated, this, refreshSummary);
    connect(editorWindow, &Window::keyChanged, this, [this](bool isKey) {
        if (isKey)
            windowDidBecomeKey();
    });
    disconnect(table, &TableView::doubleClicked, this, nullptr);
    connect(table, &TableView::doubleClicked, this, &OrderManager::doubleClick);
}

void OrderManager::doubleClick()
{
    if (doubleClickOpensCheckout && quorvel)
        quorvel->checkout();
    else
        edit();
}

OrderManager::~OrderManager() = default;

void OrderManager::fillStatusPopUp()
{
    status->removeAllItems();
    if (quorvel && quorvel->getPrefsController())
        status->addItems(quorvel->getPrefsController()->getStatusList());
}

void OrderManager::awakeFromNib()
{
    filterPopUp->removeAllItems();
    filterPopUp->addItems({localised("All"), localised("Incomplete")});
    filterPopUp->selectItemWithTitle(localised("Incomplete"));
    // The preferences have been read by now: the user's statuses. The
    // preferences refill this pop-up when their lists are saved.
    fillStatusPopUp();
    if (quorvel && quorvel->getPrefsController()) {
        PrefsController *prefs = quorvel->getPrefsController();
        if (!prefs->statusListPopUpButton)
            prefs->statusListPopUpButton = status;
        editorWindow->setTitle(prefs->getTermOrder());
    }
    installStationary();
}

// ---------------------------------------------------------------------------
// The editor

void OrderManager::addNewOrderTo(kdDataSource &list)
{
    if (!creating)
        return;
    creating = false;
    if (currentItem)
        list.add(currentItem);
}

void OrderManager::create()
{
    if (!quorvel)
        return;
    creating = true;
    currentItem = std::make_shared<Order>();
    // Ids come from the one order list, also for a sale of the checkout.
    currentItem->setID(quorvel->getOrderManager()->getNextId());
    PrefsController *prefs = quorvel->getPrefsController();
    currentItem->setOrderNum(prefs->getOrderPrefix() + QString::number(currentItem->getID()));
    currentItem->setDate(u"today"_s);
    currentItem->setTaxRate(platform::format2(prefs->getGlobalTaxRate()));
    setItem(currentItem.get());
    // The order holds its date as the date field shows it (today's date in
    // the user's date format), also when it joins the list before it is
    // finished, as it does when a contact is linked to it.
    currentItem->setDate(date->stringValue());
    show();
}

void OrderManager::edit()
{
    creating = false;
    const int row = table->selectedRow();
    if (row < 0)
        return;
    auto *order = static_cast<Order *>(getnthVisibleItem(row));
    if (!order)
        return;
    currentItem = shareOf(order);
    setItem(order);
    show();
}

void OrderManager::editOrder(Order *order)
{
    if (!order)
        return;
    creating = false;
    currentItem = shareOf(order);
    setItem(order);
    show();
}

void OrderManager::setItem(Order *order)
{
    if (!quorvel)
        return;
    PrefsController *prefs = quorvel->getPrefsController();

    // 1. The global rate changed since the order (the one current on entry)
    // was saved: the user chooses which rate it keeps.
    if (!creating && currentItem) {
        const float globalRate = prefs->getGlobalTaxRate();
        if (globalRate != platform::floatValue(currentItem->getTaxRate())) {
            const int answer = platform::runAlert(
                localised("Tax Rate Changed"),
                localised("The tax rate has changed since this item was last saved. Do you wish to change the tax "
                          "rate for this item?"),
                withArguments(localised("Change to %.2f%%"), {platform::format2(globalRate)}),
                withArguments(localised("Keep %@%%"), {currentItem->getTaxRate()}));
            if (answer == 1)
                currentItem->setTaxRate(platform::format2(globalRate));
        }
    }
    if (!order)
        return;
    currentItem = shareOf(order);

    // 2. The order's own fields.
    balance->setStringValue(order->getBalance());
    balancePaid->setStringValue(order->getBalancePaid());
    date->setStringValue(order->getDate());
    deposit->setStringValue(order->getDeposit());
    depositPaid->setStringValue(order->getDepositPaid());
    description->setString(order->getDescription());
    orderNumber->setStringValue(order->getOrderNum());
    shipping->setStringValue(order->getShipping());

    // 3. Tax: hidden altogether for an order without a rate.
    if (platform::floatValue(order->getTaxRate()) == 0.0f) {
        tax->setStringValue(u""_s);
        taxAmount->setStringValue(u""_s);
        taxAmount->setHidden(true);
        calculateTaxButton->setHidden(true);
    } else {
        tax->setStringValue(withArguments(u"%@ @ %@%%"_s, {prefs->getTaxStatement(), order->getTaxRate()}));
        taxAmount->setStringValue(order->getTax());
        taxAmount->setHidden(false);
        calculateTaxButton->setHidden(false);
    }
    title->setStringValue(order->getTitle());
    value->setStringValue(order->getValue());

    // 4. Pop-ups: a status the list does not know is added to it.
    if (status->indexOfItemWithTitle(order->getStatus()) < 0)
        status->addItem(order->getStatus());
    status->selectItemWithTitle(order->getStatus());
    paymentMethod->selectItemWithTitle(order->getPaymentMethod());
    if (!order->getRepeatFrequency().isEmpty() && repeatFrequency->isConnected())
        repeatFrequency->selectItemWithTitle(order->getRepeatFrequency());

    includeBOM->setState(false);
    sent->setState(false);
    repeats->setState(false);
    if (order->getIncludeBOM())
        includeBOM->setState(true);
    if (order->getSent())
        sent->setState(true);
    if (order->getRepeats())
        repeats->setState(true);

    // 5. The customer, the bill of materials, the attachments, the summary.
    updateContactFields();
    quorvel->setCurrentOrder(order->getID());
    numberofAttachments = countAttachments(order->getID());
    setAttachmentStatus();
    updateIcon();
    if (repeatInformativeTextField->isConnected())
        setRepeatInformativeText();
}

void OrderManager::finish(const QObject *sender)
{
    const std::shared_ptr<Order> order = currentItem;
    if (!order)
        return;
    order->setBalance(balance->stringValue());
    order->setBalancePaid(balancePaid->stringValue());
    order->setDate(date->stringValue());
    order->setDeposit(deposit->stringValue());
    order->setDepositPaid(depositPaid->stringValue());
    order->setDescription(description->string());
    order->setOrderNum(orderNumber->stringValue());
    order->setPaymentMethod(paymentMethod->titleOfSelectedItem());
    order->setShipping(shipping->stringValue());
    order->setTax(taxAmount->stringValue());
    order->setTitle(title->stringValue());
    order->setValue(value->stringValue());
    // With nothing chosen the pop-up's text is null and the status stays.
    order->setStatus(status->titleOfSelectedItem());

    // The total includes shipping; the deposit only counts in the balance.
    float total = value->floatValue() + taxAmount->floatValue();
    total = total + shipping->floatValue();
    order->setValueWithTax(platform::format2(total));

    if (repeatFrequency->isConnected()) {
        const QString frequency = repeatFrequency->titleOfSelectedItem();
        if (!frequency.isEmpty())
            order->setRepeatFrequency(frequency);
    }
    order->setIncludeBOM(includeBOM->state());
    order->setSent(sent->state());
    order->setRepeats(repeats->state());
    // Repeating from now on: the first copy falls one period after today.
    if (order->getRepeats() && order->getLastRepeatDate().isEmpty())
        order->setLastRepeatDate(platform::formatDate(platform::now(), platform::dayFirstFormat));

    if (!sender)
        return;  // the printing path: the record only
    if (creating)
        addNewOrderTo(*this);
    hide();
    filter();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void OrderManager::cancel()
{
    platform::log(u"Ordermanager cancelling"_s);
    // A new order was never added: there is nothing to take out of the
    // list, and the creating flag stays until the next create or edit.
    if (creating)
        platform::log(u"Ordermanager creating is yes"_s);
    hide();
}

void OrderManager::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void OrderManager::hide()
{
    editorWindow->orderOut();
}

void OrderManager::requestResign(const QObject *)
{
    if (editorWindow->isVisible())
        finish(this);
}

void OrderManager::windowDidBecomeKey()
{
    if (quorvel)
        quorvel->requestCheckoutManagerResign();
}

// ---------------------------------------------------------------------------
// The list

void OrderManager::filter()
{
    const QString search = searchField->stringValue();
    const QString shown = filterPopUp->titleOfSelectedItem();
    const QString all = localised("All");
    const QString incomplete = localised("Incomplete");
    const QString complete = localised("Complete");
    // Many orders share a customer: each contact is searched once per pass.
    QHash<const Contact *, bool> contactMatches;
    filterBy([&](const dataObject &record) {
        const auto &order = static_cast<const Order &>(record);
        bool visible = false;
        if (search.isEmpty() || order.contains(search))
            visible = shown == all || (shown == incomplete && order.getStatus() != complete);
        if (const Contact *contact = order.getContact(); contact && !search.isEmpty()) {
            auto known = contactMatches.constFind(contact);
            if (known == contactMatches.constEnd())
                known = contactMatches.insert(contact, contact->contains(search));
            if (*known)
                visible = true;
        }
        return visible;
    });
    reloadData();
}

void OrderManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortAsRead(columnId, ascending, PrefsController::dateFormatOf(quorvel));
    reloadData();
}

std::optional<RgbaColour> OrderManager::labelColorForRow(int row) const
{
    const auto *order = static_cast<const Order *>(getnthVisibleItem(row));
    if (!order || !quorvel || !quorvel->getPrefsController())
        return std::nullopt;
    return quorvel->getPrefsController()->colourForStatus(order->getStatus());
}

void OrderManager::deleteRecord(dataObject *record)
{
    if (!record || indexOf(record) < 0)
        return;
    const int id = record->getID();
    const QString held = deleteAttachments(id);
    removeWithUndo(record, [held, id] { orderAttachments::restore(held, id); });
}

QString OrderManager::describe(const dataObject &record) const
{
    const QString term = quorvel ? quorvel->getPrefsController()->getTermOrder() : localised("Order");
    return term + u' ' + record.getFieldByName(u"ordernum"_s);
}

// ---------------------------------------------------------------------------
// Money

void OrderManager::calculateTax()
{
    const float rate = currentItem ? platform::floatValue(currentItem->getTaxRate()) : 0.0f;
    const float product = value->floatValue() * rate;
    const float amount = product / 100.0f;
    taxAmount->setStringValue(platform::format2(amount));
    calculateBalance();
}

void OrderManager::calculateBalance()
{
    float owed = value->floatValue() + taxAmount->floatValue();
    owed = owed + shipping->floatValue();
    owed = owed - deposit->floatValue();
    balance->setFloatValue(owed);
    Q_EMIT valueTextDidChange();
}

// ---------------------------------------------------------------------------
// Attachments

QString OrderManager::attachmentFolder(int orderId)
{
    return orderAttachments::folder(orderId);
}

void OrderManager::attach()
{
    if (const std::optional<QString> chosen = platform::runOpenPanel())
        fileDropped(*chosen);
}

void OrderManager::fileDropped(const QString &path)
{
    if (!currentItem)
        return;
    // A name that is already attached is not copied again, and nothing is
    // said; the count goes up all the same.
    orderAttachments::attach(currentItem->getID(), path);
    ++numberofAttachments;
    setAttachmentStatus();
    updateIcon();
}

int OrderManager::countAttachments(int orderId)
{
    return orderAttachments::count(orderId);
}

void OrderManager::attachmentAdded(int orderId)
{
    if (!currentItem || currentItem->getID() != orderId)
        return;
    numberofAttachments = countAttachments(orderId);
    setAttachmentStatus();
    updateIcon();
}

void OrderManager::setAttachmentStatus()
{
    if (attachmentText->isConnected())
        attachmentText->setStringValue(orderAttachments::statusText(numberofAttachments));
    if (attachmentButton->isConnected())
        attachmentButton->setEnabled(numberofAttachments != 0);
}

void OrderManager::updateIcon()
{
    if (myImageView->isConnected())
        myImageView->setImage(orderAttachments::wellImage(numberofAttachments));
    Q_EMIT attachmentIconChanged();
}

void OrderManager::viewAttachments()
{
    if (!currentItem)
        return;
    const QString folder = attachmentFolder(currentItem->getID());
    if (QFileInfo(folder).isDir())
        platform::openFile(folder);
}

QString OrderManager::deleteAttachments(int orderId)
{
    return orderAttachments::hold(orderId);
}

// ---------------------------------------------------------------------------
// Recurring orders

Order *OrderManager::duplicate(Order *order)
{
    // Held for the whole copy: the alert at its end lets other work run.
    return recurring->duplicate(order ? shareOf(order) : currentItem).get();
}

QList<QPair<Order *, Order *>> OrderManager::checkForOverdueRepeats(const QDateTime &now)
{
    return recurring->checkForOverdueRepeats(now);
}

void OrderManager::kickOffCheckForOverdueRepeats()
{
    repeatChecker = std::make_unique<RepeatChecker>(*this);
    repeatChecker->start();
}

void OrderManager::setRepeatInformativeText()
{
    const bool dayFirst = !quorvel || quorvel->getPrefsController()->isUKFormat();
    const QString text = currentItem ? repeatSummary(currentItem->getLastRepeatDate(), repeats->state(),
                                                     repeatFrequency->titleOfSelectedItem(), dayFirst)
                                     : u""_s;
    if (repeatInformativeTextField->isConnected())
        repeatInformativeTextField->setStringValue(text);
}
