#include "app/widgets/MainToolBar.h"

#include "app/Quorvel.h"
#include "platform/Resources.h"

#include <QAction>
#include <QFile>
#include <QMenu>
#include <QToolButton>

MainToolBar::MainToolBar(Quorvel &controller, QWidget *parent)
    : MainToolBar(
        [&controller] { return controller.toolbarDefaultItemIdentifiers(Quorvel::toolbarIdentifier()); },
        [&controller](const QString &identifier) { return controller.toolbarItemForItemIdentifier(identifier); },
        parent)
{ }

MainToolBar::MainToolBar(IdentifierList identifierList, ItemLookup itemLookup, QWidget *parent)
    : QToolBar(parent),
      identifiers(std::move(identifierList)),
      itemFor(std::move(itemLookup))
{
    platform::initResources();
    setObjectName(QStringLiteral("quorvelLiteMainToolBar"));
    setMovable(false);
    setFloatable(false);
    // No menu to hide the toolbar or change it.
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setEnabled(false);
    toggleViewAction()->setVisible(false);
    setIconSize(QSize(24, 24));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    rebuild();
}

QIcon MainToolBar::iconNamed(const QString &image)
{
    platform::initResources();
    const QString path = QStringLiteral(":/core/icons/%1.svg").arg(image);
    if (image.isEmpty() || !QFile::exists(path))
        return QIcon();
    return QIcon(path);
}

void MainToolBar::rebuild()
{
    const QList<QAction *> old = actions();
    clear();
    for (QAction *action : old) {
        if (action->parent() == this)
            delete action;
    }
    if (!identifiers || !itemFor)
        return;
    for (const QString &identifier : identifiers()) {
        const ToolbarItem item = itemFor(identifier);
        auto *action = new QAction(this);
        action->setObjectName(identifier);
        if (item.image.isEmpty()) {
            action->setEnabled(false);
        } else {
            action->setText(item.label);
            action->setToolTip(item.label);
            action->setIcon(iconNamed(item.image));
            if (item.action)
                connect(action, &QAction::triggered, this, [run = item.action] { run(); });
        }
        addAction(action);
        attachMenu(action);
    }
}

void MainToolBar::setMenuFor(const QString &identifier, QMenu *menu)
{
    menus.insert(identifier, menu);
    for (QAction *action : actions()) {
        if (action->objectName() == identifier)
            attachMenu(action);
    }
}

void MainToolBar::attachMenu(QAction *action)
{
    QMenu *menu = menus.value(action->objectName());
    auto *button = qobject_cast<QToolButton *>(widgetForAction(action));
    if (!menu || !button || !action->isEnabled())
        return;
    // The button still does its own command; the arrow beside it opens the menu.
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
}
