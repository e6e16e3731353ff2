#include "orders/BOMManager.h"

#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/Material.h"
#include "platform/Alerts.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "tasks/Action.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <typeinfo>

using namespace Qt::Literals::StringLiterals;
using platform::localised;

namespace {

// Every column of a line can be edited in place.
bool isEditableColumn(const QString &identifier)
{
    return identifier == "qty"_L1 || identifier == "cost"_L1 || identifier == "total"_L1 || identifier == "item"_L1
        || identifier == "code"_L1 || identifier == "unit"_L1;
}

// "<ClassName: 0xADDRESS>", the way an object describes itself in a
// diagnostic; the class is the line's own (dynamic) class.
QString selfDescription(const Material &line)
{
    const char *mangled = typeid(line).name();
    int status = 0;
    const std::unique_ptr<char, void (*)(void *)> demangled(abi::__cxa_demangle(mangled, nullptr, nullptr, &status),
                                                            std::free);
    const QString className
        = status == 0 && demangled ? QString::fromLatin1(demangled.get()) : QString::fromLatin1(mangled);
    return u"<%1: 0x%2>"_s.arg(className, QString::number(quintptr(&line), 16));
}

}  // namespace

BOMManager::BOMManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("materials"), QStringLiteral("Delete Item"), parent),
      checkoutTableView(new TableView(this))
{
    QList<TableColumn> columns = table->tableColumns();
    for (TableColumn &column : columns)
        column.editable = column.editable || isEditableColumn(column.identifier);
    table->setColumns(columns);

    checkoutTableView->setColumns(columns);
    checkoutTableView->setLastColumnFills(true);
    checkoutTableView->setDataSource(this);

    // A double click on a line does not open an editor.
    disconnect(table, &TableView::doubleClicked, this, nullptr);
    connect(table, &TableView::doubleClicked, this, &BOMManager::doubleClick);
}

// --- the current order and its index ---------------------------------------

void BOMManager::ensureRanks() const
{
    const std::vector<std::shared_ptr<dataObject>> &all = records();
    const size_t count = all.size();
    if (ranksValid
        && (rankedOrder != currentOrder || count < rankedCount
            || (rankedCount > 0 && all[rankedCount - 1].get() != lastRanked)))
        ranksValid = false;
    if (!ranksValid) {
        ranks.clear();
        rankedCount = 0;
        rankedOrder = currentOrder;
        ranksValid = true;
    }
    // Only appended records are new to the index.
    for (size_t i = rankedCount; i < count; ++i) {
        auto *line = static_cast<Material *>(all[i].get());
        if (line->getOrder() == currentOrder)
            ranks.push_back(RankedLine{line, i});
    }
    rankedCount = count;
    lastRanked = count > 0 ? all[count - 1].get() : nullptr;
}

Material *BOMManager::rankedLine(int n) const
{
    ensureRanks();
    if (n < 0 || size_t(n) >= ranks.size())
        return nullptr;
    // A line that is no longer where it was indexed, or no longer of this
    // order, means the collection changed behind the index's back (a sort,
    // a removal, a line moved to another order): rebuild. The line is looked
    // at only once it is known to be in the collection.
    const RankedLine &ranked = ranks[size_t(n)];
    if (records()[ranked.position].get() != ranked.line || ranked.line->getOrder() != rankedOrder) {
        invalidateRanks();
        ensureRanks();
        if (size_t(n) >= ranks.size())
            return nullptr;
    }
    return ranks[size_t(n)].line;
}

void BOMManager::setCurrentOrder(int orderId)
{
    // The same order again (a reload) keeps its index: lines appended since
    // are added to it, and a changed collection is noticed by the index.
    if (orderId != currentOrder) {
        currentOrder = orderId;
        invalidateRanks();
    }
    ensureRanks();
    numberForThisOrder = int(ranks.size());
}

void BOMManager::reloadData()
{
    setCurrentOrder(currentOrder);
    table->reloadData();
    checkoutTableView->reloadData();
}

void BOMManager::filter()
{
    invalidateRanks();
}

Material *BOMManager::getnthItem(int n, int orderId) const
{
    if (orderId == currentOrder) {
        if (Material *line = rankedLine(n))
            return line;
    } else if (n >= 0) {
        int rank = 0;
        for (const auto &record : records()) {
            auto *line = static_cast<Material *>(record.get());
            if (line->getOrder() == orderId && rank++ == n)
                return line;
        }
    }
    // No such rank: the first line of the collection, whichever order it
    // belongs to (callers ask only for ranks they have counted).
    return static_cast<Material *>(getFirstItem());
}

// --- the tables -------------------------------------------------------------

int BOMManager::numberOfRowsInTableView() const
{
    return numberForThisOrder;
}

QString BOMManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    const Material *line = getnthItem(row, currentOrder);
    return line ? line->getFieldByName(columnId) : u""_s;
}

void BOMManager::setObjectValueForTableColumn(const QString &value, const QString &columnId, int row)
{
    Material *line = getnthItem(row, currentOrder);
    if (!line)
        return;
    QString text = value;

    if (columnId == "cost"_L1 || columnId == "total"_L1) {
        if (!isANumber(text)) {
            Q_EMIT beep();
            return;
        }
        text = formatNumber(text);
    }

    if (columnId == "qty"_L1 && line->getProduct() > 0 && quorvel) {
        if (Item *item = quorvel->getProductbyId(line->getProduct())) {
            // The stock gives back what the line no longer takes, or gives
            // up what it takes in addition.
            const int delta = platform::intValue(line->getQty()) - platform::intValue(text);
            if (delta != 0 && item->getDecreaseQty()) {
                const int inStock = item->adjustQty(delta);
                if (inStock <= platform::intValue(item->getWarnlevel())) {
                    QString informative = localised("Low stock: this leaves %i of these items in stock.");
                    informative.replace("%i"_L1, platform::formatInt(inStock));
                    platform::runAlert(localised("Item Adjusted"), informative, localised("OK"));
                }
                if (ItemManager *items = quorvel->getItemManager())
                    items->reloadData();
            }
        }
    }

    line->setFieldByName(columnId, text);

    if (columnId == "cost"_L1 || columnId == "qty"_L1)
        line->recalcTotal();
    Q_EMIT linesChanged();
}

void BOMManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortAsRead(columnId, ascending, PrefsController::dateFormatOf(quorvel));
    invalidateRanks();
    reloadData();
}

void BOMManager::doubleClick()
{
    platform::standardOutput(u"double click\n"_s);
}

// A text is a number when a decimal number can be read at its start, the
// way the platform's decimal parsing reads it: leading blanks are skipped,
// then the longest number (sign, digits, a point, an exponent) is taken and
// the rest ignored; with no digits at all the result is not-a-number.
// So "12abc" (12), " 3" (3), "-.5" and "1e3" are numbers; "", "abc", "."
// and "-" are not. Commas are not understood: "1,50" reads as 1.
bool BOMManager::isANumber(const QString &text)
{
    return platform::isNumeric(text);
}

QString BOMManager::formatNumber(const QString &text)
{
    return platform::format2(platform::floatValue(text));
}

// --- adding lines -----------------------------------------------------------

void BOMManager::addProduct(Item *item)
{
    if (!item)
        return;
    const std::shared_ptr<Material> line = Material::withOrderAndProduct(currentOrder, item->getID());
    line->setItem(item->getItem());
    line->setCode(item->getCode());
    line->setCost(item->getPrice());
    line->setProduct(item->getID());
    line->recalcTotal();
    setContactfor(line.get());
    add(line);
    Q_EMIT stockChanged();
    Q_EMIT linesChanged();
}

void BOMManager::addTime(Action *task)
{
    if (!task)
        return;
    // The task's own figures, as it shows them: no recalculation.
    const std::shared_ptr<Material> line = Material::withOrder(currentOrder);
    line->setItem(task->getTitle());
    line->setCode(u""_s);
    line->setQty(task->getTotalTime());
    line->setUnit(task->getTotalTimeUnits());
    line->setCost(task->getRate());
    line->setTotal(task->getTotalCharge());
    add(line);
    Q_EMIT stockChanged();
    Q_EMIT linesChanged();
}

void BOMManager::create()
{
    add(Material::withOrder(currentOrder));
    reloadData();
    Q_EMIT linesChanged();
}

void BOMManager::duplicateMaterialsFromOrder(int fromOrder, int toOrder)
{
    // Only the lines there before the copying starts are copied: the copies
    // belong to the target order, so this matters only when both are the
    // same order, where the copies would otherwise be copied again forever.
    const int count = getCount();
    for (int i = 0; i < count; ++i) {
        const auto *source = static_cast<const Material *>(kdDataSource::getnthItem(i));
        if (!source || source->getOrder() != fromOrder)
            continue;
        const std::shared_ptr<Material> copy = Material::withOrder(toOrder);
        copy->setItem(source->getItem());
        copy->setCode(source->getCode());
        copy->setQty(source->getQty());
        copy->setUnit(source->getUnit());
        copy->setCost(source->getCost());
        copy->setTotal(source->getTotal());
        copy->setProduct(source->getProduct());
        add(copy);
    }
}

// --- removing lines ---------------------------------------------------------

void BOMManager::deleteRecord(dataObject *record)
{
    if (indexOf(record) < 0)
        return;
    auto *line = static_cast<Material *>(record);
    // The stock the line took goes back; an undo takes it again.
    std::shared_ptr<Item> stock;
    int returned = 0;
    if (quorvel) {
        Item *item = quorvel->getProductbyId(line->getProduct());
        if (item && item->getDecreaseQty()) {
            returned = platform::intValue(line->getQty());
            item->adjustQty(returned);
            stock = shareOf(item);
        }
    }
    removeWithUndo(record, [this, stock, returned] {
        if (!stock || !quorvel)
            return;
        stock->adjustQty(-returned);
        Q_EMIT stockChanged();
        quorvel->writeDatabase(quorvel->getItemManager());
    });
    invalidateRanks();
    reloadData();
    clampSelection(table);
    clampSelection(checkoutTableView);
    Q_EMIT stockChanged();
    Q_EMIT linesChanged();
}

void BOMManager::clampSelection(TableView *view) const
{
    if (view->selectedRow() >= numberForThisOrder)
        view->selectRow(numberForThisOrder - 1);
}

void BOMManager::deleteKey(const QObject *sender)
{
    const bool fromCheckout = quorvel && quorvel->isCheckout(sender);
    const TableView *view = fromCheckout ? checkoutTableView : table;
    const int row = view->selectedRow();
    if (row < 0)
        return;
    Material *line = getnthItem(row, currentOrder);
    const int answer = platform::runAlert(localised("Delete Item"),
                                          localised("Do you want to delete the selected item from the database?"),
                                          localised("OK"), localised("Cancel"));
    if (answer == 1 && line)
        deleteRecord(line);
    if (quorvel)
        quorvel->setChangeFlag();
}

QString BOMManager::describe(const dataObject &record) const
{
    return localised("Line") + u' ' + record.getFieldByName(u"item"_s);
}

// --- the rest ---------------------------------------------------------------

void BOMManager::finish()
{
    filter();
    // The lines have no editor window of their own to hide.
    if (quorvel)
        quorvel->writeDatabase(this);
}

// Lines are handed over by the order editor. A diagnostic names any caller
// that hands over something other than a line: with a C++ signature that can
// only be an object of a class derived from Material whose name does not
// say so; a Material (and none) never prints.
void BOMManager::setItem(Material *line)
{
    currentItem = shareOf(line);
    if (!line)
        return;
    const QString description = selfDescription(*line);
    if (!description.contains("Material"_L1, Qt::CaseInsensitive))
        platform::standardOutput(u"setItem called by: %1\n"_s.arg(description));
}

void BOMManager::setContactfor(Material *line) const
{
    if (line && quorvel)
        line->setContact(quorvel->getContactIdForOrder(line->getOrder()));
}

void BOMManager::setContacts()
{
    for (const auto &record : records())
        setContactfor(static_cast<Material *>(record.get()));
}

// --- totals -----------------------------------------------------------------

float BOMManager::getTotalforCurrentOrder() const
{
    float total = 0.0f;
    for (int n = 0; n < numberForThisOrder; ++n) {
        const Material *line = getnthItem(n, currentOrder);
        if (!line)
            continue;
        const float lineTotal = line->getTotalasFloat();
        platform::log(u"%1 = %2"_s.arg(line->getItem(), platform::format6(lineTotal)));
        total += lineTotal;
    }
    return total;
}

float BOMManager::getShippingforCurrentOrder() const
{
    float shipping = 0.0f;
    for (int n = 0; n < numberForThisOrder && quorvel; ++n) {
        const Material *line = getnthItem(n, currentOrder);
        if (!line)
            continue;
        if (const Item *item = quorvel->getProductbyId(line->getProduct()))
            shipping += platform::floatValue(item->getShipping()) * line->getQtyasFloat();
    }
    platform::log(u"returning: %1"_s.arg(platform::format6(shipping)));
    return shipping;
}
