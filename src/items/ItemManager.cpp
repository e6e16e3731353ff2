#include "items/ItemManager.h"

#include "items/StockCodes.h"

#include "contacts/Contact.h"
#include "items/Item.h"
#include "items/SupplierDataSource.h"
#include "platform/Localised.h"
#include "platform/Numbers.h"
#include "store/Picker.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

using namespace Qt::Literals::StringLiterals;
using platform::localised;

void ItemManager::ImageView::setImage(const QByteArray &tiff)
{
    if (tiff == picture)
        return;
    picture = tiff;
    Q_EMIT changed();
}

ItemManager::ItemManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, u"items"_s, u"Delete Item"_s, parent),
      stockFilter(new PopUp(this)),
      editorWindow(new Window(this)),
      bought(new TextField(this)),
      code(new TextField(this)),
      condition(new PopUp(this)),
      decreaseQty(new CheckBox(this)),
      description(new TextView(this)),
      imageView(new ImageView(this)),
      name(new TextField(this)),
      price(new TextField(this)),
      qty(new TextField(this)),
      optimumQty(new TextField(this)),
      shipping(new TextField(this)),
      status(new PopUp(this)),
      supplierName(new TextField(this)),
      warnLevel(new TextField(this))
{
    codes = std::make_unique<StockCodes>(*this);
    stockFilter->addItems({localised("All"), localised("In Stock")});
    stockFilter->selectItemAtIndex(0);
    // Stored in the items file as they stand, so not translated.
    condition->addItems({u"New"_s, u"Used"_s, u"Refurbished"_s, u"Damaged"_s});
    editorWindow->setTitle(localised("Item"));
    // Prices and shipping show two decimals; the figure shown is the one stored.
    for (TextField *money : {price, bought, shipping})
        money->setMoney(true);
    connect(stockFilter, &PopUp::activated, this, [this] { filter(); });
}

ItemManager::~ItemManager() = default;

Item *ItemManager::getItemByCode(const QString &wanted)
{
    return codes->itemWithCode(wanted);
}

void ItemManager::fillStatusPopUp()
{
    status->removeAllItems();
    if (quorvel && quorvel->getPrefsController())
        status->addItems(quorvel->getPrefsController()->getStatusList());
}

// ---------------------------------------------------------------------------
// The editor

void ItemManager::makeNewItem()
{
    creating = true;
    currentItem = std::make_shared<Item>();
    const int id = getNextId();
    currentItem->setID(id);
    const PrefsController *prefs = quorvel ? quorvel->getPrefsController() : nullptr;
    currentItem->setCode((prefs ? prefs->getItemPrefix() : QString()) + QString::number(id));
    if (prefs)
        currentItem->setWarnlevel(prefs->getStockWarn());
}

void ItemManager::create()
{
    makeNewItem();
    setItem(currentItem.get());
    show();
}

void ItemManager::createSimilar()
{
    if (!currentItem)
        return;
    finish();
    makeNewItem();
    code->setStringValue(currentItem->getCode());
    show();
}

void ItemManager::edit()
{
    const int row = table->selectedRow();
    if (row < 0)
        return;
    auto *item = static_cast<Item *>(getnthVisibleItem(row));
    if (!item)
        return;
    setItem(item);
    show();
}

void ItemManager::setItem(dataObject *record)
{
    auto *item = dynamic_cast<Item *>(record);
    if (!item)
        return;
    currentItem = shareOf(item);
    fillStatusPopUp();
    code->setStringValue(item->getCode());
    description->setString(item->getDescription());
    name->setStringValue(item->getItem());
    price->setStringValue(item->getPrice());
    qty->setStringValue(item->getQty());
    optimumQty->setStringValue(item->getOptimumQty());
    bought->setStringValue(item->getBought());
    status->selectItemWithTitle(item->getStatus());
    shipping->setStringValue(item->getShipping());
    condition->selectItemWithTitle(item->getCondition());
    imageView->setImage(item->getImage());
    decreaseQty->setState(item->getDecreaseQty());
    warnLevel->setStringValue(item->getWarnlevel());
    // A supplier that names no contact leaves the field as it was.
    if (quorvel) {
        const QString supplier = quorvel->getContactNameforId(item->getSupplier());
        if (!supplier.isNull())
            supplierName->setStringValue(supplier);
    }
}

void ItemManager::finish()
{
    const std::shared_ptr<Item> item = currentItem;
    if (!item)
        return;
    item->setCode(code->stringValue());
    codes->codesChanged();
    item->setDescription(description->string());
    item->setItem(name->stringValue());
    item->setPrice(price->stringValue());
    item->setQty(qty->stringValue());
    item->setOptimumQty(optimumQty->stringValue());
    item->setBought(bought->stringValue());
    item->setShipping(shipping->stringValue());
    item->setWarnlevel(warnLevel->stringValue());
    item->setDecreaseQty(decreaseQty->state());
    const QString chosenCondition = condition->titleOfSelectedItem();
    if (!chosenCondition.isEmpty())
        item->setCondition(chosenCondition);
    // The status is shown in the editor but never taken from it.
    item->setSupplier(quorvel ? quorvel->getContactIdForName(supplierName->stringValue()) : u"0"_s);

    // A cancelled new item leaves `creating` set: the next item finished,
    // even one opened from the list, is then listed a second time (the same
    // record, with its id).
    if (creating) {
        creating = false;
        add(item);
    }
    if (!imageView->image().isEmpty())
        item->setImage(imageView->image());

    filter();
    hide();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void ItemManager::cancel()
{
    hide();
}

void ItemManager::show()
{
    // The window carries the user's word for an item.
    if (quorvel && quorvel->getPrefsController() && !quorvel->getPrefsController()->getTermItem().isEmpty())
        editorWindow->setTitle(quorvel->getPrefsController()->getTermItem());
    editorWindow->makeKeyAndOrderFront();
}

void ItemManager::hide()
{
    editorWindow->orderOut();
}

void ItemManager::pickSupplier()
{
    if (!quorvel || !quorvel->getPicker())
        return;
    quorvel->getPicker()->beginfor([this](dataObject *chosen) { setSupplier(chosen); },
                                   quorvel->getSupplierDataSource(), u"name"_s, u"address"_s, localised("Supplier"));
}

void ItemManager::setSupplier(dataObject *record)
{
    if (const auto *contact = dynamic_cast<const Contact *>(record))
        supplierName->setStringValue(contact->getName());
}

void ItemManager::deleteImage()
{
    imageView->setImage({});
    if (currentItem)
        currentItem->setImage({});
}

// ---------------------------------------------------------------------------
// The list

void ItemManager::filter()
{
    const QString text = searchField->stringValue();
    const QString mode = stockFilter->titleOfSelectedItem();
    const bool inStockOnly = !mode.isEmpty() && mode != u"All"_s && mode != localised("All");
    filterBy([&text, inStockOnly](const dataObject &record) {
        if (!text.isEmpty() && !record.contains(text))
            return false;
        if (!inStockOnly)
            return true;
        const QString &quantity = static_cast<const Item &>(record).getQty();
        return quantity.isEmpty() || platform::intValue(quantity) >= 1;
    });
    reloadData();
}

QString ItemManager::describe(const dataObject &record) const
{
    const QString term = quorvel ? quorvel->getPrefsController()->getTermItem() : localised("Item");
    const QString called = record.getFieldByName(u"item"_s);
    return term + u' ' + (called.isEmpty() ? record.getFieldByName(u"code"_s) : called);
}
