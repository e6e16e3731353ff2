#pragma once
// The stock list and the item editor: the list of every stock item,
// filtered by a search and by "All"/"In Stock", sorted by any column, and
// the editor for a new item, a new item like the one on screen, or an
// existing one, with the supplier chosen from the contacts and a picture
// set by dropping or choosing a file.
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/ListManager.h"

#include <QByteArray>
#include <memory>

class StockCodes;

class Item;

class ItemManager : public ListManager
{
    Q_OBJECT
public:
    // The editor's picture well: the picture it shows, as the bytes of a
    // TIFF file (empty: none).
    class ImageView : public Outlet
    {
    public:
        explicit ImageView(QObject *parent = nullptr)
            : Outlet(parent)
        { }
        const QByteArray &image() const { return picture; }
        void setImage(const QByteArray &tiff);
        // From the widget: the user dropped or chose a picture.
        void userSetImage(const QByteArray &tiff) { setImage(tiff); }

    private:
        QByteArray picture;
    };

    explicit ItemManager(QuorvelServices *controller, QObject *parent = nullptr);
    ~ItemManager() override;

    // A new item: the next id, the code made of the item prefix and that
    // id, the default low-stock level.
    void create() override;
    // With an item in the editor: saves it, then keeps every field on
    // screen for a new item that only gets its own id and code.
    void createSimilar();
    // The item of the selected row.
    void edit() override;
    void setItem(dataObject *record);
    // Stores the editor into the item (the status is shown, never read
    // back), adds a new item, writes its picture, then filters, hides the
    // editor and writes the items file.
    void finish();
    // Hides the editor; nothing is stored. The editor still counts as
    // holding a new item until the next one is finished, so the next item
    // finished, even one opened with edit(), joins the list once more.
    void cancel();
    void show();
    void hide();

    // The supplier, chosen in the Picker among the contacts of type
    // "Supplier"; only its name goes into the editor until finish().
    void pickSupplier();
    void setSupplier(dataObject *contact);
    // Clears the picture well and deletes the item's picture file at once,
    // whether or not the editor is finished.
    void deleteImage();

    // Every item matching the search; with "In Stock" chosen, not those
    // whose quantity is below 1 (a quantity never entered stays listed).
    void filter() override;

    Item *getCurrentItem() const { return currentItem.get(); }
    // The item of that code (the first when several share it), found
    // without going through the list; none when no item has it.
    Item *getItemByCode(const QString &code);
    bool isCreating() const { return creating; }

    // Outlets of the list.
    PopUp *stockFilter;  // "All" / "In Stock"

    // Outlets of the editor.
    Window *editorWindow;
    TextField *bought;
    TextField *code;
    PopUp *condition;
    CheckBox *decreaseQty;
    TextView *description;
    ImageView *imageView;
    TextField *name;
    TextField *price;
    TextField *qty;
    TextField *optimumQty;
    TextField *shipping;
    PopUp *status;
    TextField *supplierName;
    TextField *warnLevel;

protected:
    QString describe(const dataObject &record) const override;

private:
    std::unique_ptr<StockCodes> codes;
    // A new item with the next id, the prefixed code and the default
    // low-stock level, now the editor's item (creating).
    void makeNewItem();
    void fillStatusPopUp();

    // The item in the editor (a new one is listed when it is finished).
    std::shared_ptr<Item> currentItem;
    bool creating = false;
};
