#pragma once
// The main window's toolbar ("quorvelLiteMainToolBar"): one button per item
// that the controller lists, with the program's own icons and the text under
// the icon. The user cannot move, float or customise it. rebuild() asks the
// controller again, so a change of the optional modules shows after it.
#include "platform/outlets/ToolbarItem.h"

#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QStringList>
#include <QToolBar>
#include <functional>

class QMenu;
class Quorvel;

class MainToolBar : public QToolBar
{
    Q_OBJECT
public:
    using IdentifierList = std::function<QStringList()>;
    using ItemLookup = std::function<ToolbarItem(const QString &identifier)>;

    // Built from the controller's toolbar delegate.
    explicit MainToolBar(Quorvel &controller, QWidget *parent = nullptr);
    // Built from any source of items: the identifiers in order, and the item
    // for one identifier.
    MainToolBar(IdentifierList identifiers, ItemLookup itemFor, QWidget *parent = nullptr);

    // The icon of a toolbar image name (":/core/icons/NAME.svg"); a null icon
    // when the program has no such image.
    static QIcon iconNamed(const QString &image);

    // Clears the toolbar and adds one action per item, in the controller's
    // order: objectName the identifier, text the label, the item's icon, and
    // triggering runs the item's action. An item without an image is a
    // disabled action with no text.
    void rebuild();
    // Gives the item of that identifier a menu beside its button (kept
    // across rebuilds); the toolbar does not own the menu.
    void setMenuFor(const QString &identifier, QMenu *menu);

private:
    void attachMenu(QAction *action);

    IdentifierList identifiers;
    ItemLookup itemFor;
    QHash<QString, QPointer<QMenu>> menus;
};
