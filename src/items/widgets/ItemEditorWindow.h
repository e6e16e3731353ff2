#pragma once
// The item editor: one window over the item manager's editor outlets. The
// item's code, name, condition, status and description; the numbers
// (prices, shipping, quantity in stock, quantity wanted, low-stock level,
// whether sales take it out of stock); the supplier, chosen among the
// contacts of type Supplier; and the picture, dropped on its well or
// chosen from a file, and removed at once. OK stores the item, "New
// Similar" stores it and starts a copy; Cancel, Escape and the close box
// abandon the editor. The window remembers its size and place.
#include "app/widgets/EditorDialog.h"

class ItemManager;
class QLabel;

class ItemEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit ItemEditorWindow(ItemManager &manager, QWidget *parent = nullptr);
    ~ItemEditorWindow() override;

    // Takes the picture in that image file (any format the platform reads)
    // into the well. Answers whether the file held a picture.
    bool takePictureFrom(const QString &path);
    // Asks for a picture file and takes it.
    void choosePicture();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeItemGroup();
    QWidget *makeStockGroup();
    QWidget *makePictureGroup();
    void showPicture();

    ItemManager &items;
    QLabel *well = nullptr;
};
