#pragma once
// The bill of materials: every line (Material) of every order in one
// collection, showing the lines of one order, the current order, in the
// order editor's materials table and in the checkout's table. Lines come
// from stock items (taking stock), from tasks (their time) or are typed in;
// they can be edited in place. The order editor takes the materials total
// and the shipping total from here.
#include "store/ListManager.h"

#include <vector>

class Action;
class Item;
class Material;

class BOMManager : public ListManager
{
    Q_OBJECT
public:
    explicit BOMManager(QuorvelServices *controller, QObject *parent = nullptr);

    // The id of the order whose lines are shown (0 for none), and the
    // number of its lines.
    int getCurrentOrder() const { return currentOrder; }
    void setCurrentOrder(int orderId);
    int getNumberForThisOrder() const { return numberForThisOrder; }
    // Recounts and reloads both tables.
    void reloadData();

    // The line of that order with rank n (counted from 0, in collection
    // order); when there is none, the first line of the whole collection
    // (none when the collection is empty).
    Material *getnthItem(int n, int orderId) const;
    using kdDataSource::getnthItem;

    int numberOfRowsInTableView() const override;
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    void setObjectValueForTableColumn(const QString &value, const QString &columnId, int row) override;
    void didClickTableColumn(const QString &columnId, bool ascending) override;

    static bool isANumber(const QString &text);
    static QString formatNumber(const QString &text);

    void addProduct(Item *item);
    void addTime(Action *task);
    void create() override;
    // Removes the line and gives back the stock it took; the deletion can
    // be undone.
    void deleteRecord(dataObject *record) override;
    // The selected line of the editor's table, or of the checkout's table
    // when the sender is the checkout manager.
    void deleteKey(const QObject *sender);
    void deleteKey() override { deleteKey(nullptr); }
    void finish();
    // The lines are not searched: nothing to filter. The reading of the
    // database calls it after the lines file, so it refreshes the index.
    void filter() override;
    // A double click on a line of the editor's table only prints
    // "double click" on standard output.
    void doubleClick();
    void setItem(Material *line);
    void setContactfor(Material *line) const;
    void setContacts();

    float getTotalforCurrentOrder() const;
    float getShippingforCurrentOrder() const;
    void duplicateMaterialsFromOrder(int fromOrder, int toOrder);

    // The checkout window's copy of the materials table.
    TableView *checkoutTableView;

Q_SIGNALS:
    // A refused edit (not a number): the platform's beep.
    void beep();
    // Lines took stock or gave it back: the stock list shows it again.
    void stockChanged();
    // A line was added, removed or edited in its table: the totals of the
    // order it belongs to may have changed.
    void linesChanged();

protected:
    QString describe(const dataObject &record) const override;

private:
    // The current order's lines by rank, with their positions in the
    // collection.
    struct RankedLine
    {
        Material *line;
        size_t position;
    };
    // Brings the index up to date: lines appended since (by add(), the
    // database reading included) are looked at alone; a shorter collection,
    // a different record where the last indexed one was, or another current
    // order rebuilds it in one pass.
    void ensureRanks() const;
    void invalidateRanks() const { ranksValid = false; }
    // The current order's line of that rank, or none.
    Material *rankedLine(int n) const;
    // Keeps the selection of a table inside its rows.
    void clampSelection(TableView *view) const;

    mutable std::vector<RankedLine> ranks;
    mutable bool ranksValid = false;
    mutable int rankedOrder = 0;
    mutable size_t rankedCount = 0;
    mutable const dataObject *lastRanked = nullptr;

    // The line being edited; held, so it stays whole if deleted meanwhile.
    std::shared_ptr<Material> currentItem;
    int numberForThisOrder = 0;
    int currentOrder = 0;
};
