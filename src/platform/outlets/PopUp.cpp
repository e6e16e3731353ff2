#include "platform/outlets/PopUp.h"

PopUp::PopUp(QObject *parent)
    : Outlet(parent)
{ }

void PopUp::addItem(const QString &title)
{
    titles.append(title.isNull() ? QStringLiteral("") : title);
    if (selected < 0)
        selected = 0;  // a pop-up shows its first item once it has one
    Q_EMIT changed();
}

void PopUp::addItems(const QStringList &newTitles)
{
    if (newTitles.isEmpty())
        return;
    for (const QString &title : newTitles)
        titles.append(title.isNull() ? QStringLiteral("") : title);
    if (selected < 0)
        selected = 0;
    Q_EMIT changed();
}

void PopUp::removeAllItems()
{
    titles.clear();
    selected = -1;
    Q_EMIT changed();
}

QString PopUp::itemTitleAt(int index) const
{
    return index >= 0 && index < titles.size() ? titles.at(index) : QString();
}

int PopUp::indexOfItemWithTitle(const QString &title) const
{
    return int(titles.indexOf(title));
}

QString PopUp::titleOfSelectedItem() const
{
    return itemTitleAt(selected);
}

void PopUp::selectItemAtIndex(int index)
{
    const int next = index >= 0 && index < titles.size() ? index : -1;
    if (next == selected)
        return;
    selected = next;
    Q_EMIT changed();
}

void PopUp::selectItemWithTitle(const QString &title)
{
    selectItemAtIndex(indexOfItemWithTitle(title));
}

void PopUp::userEnterTitle(const QString &title)
{
    int index = indexOfItemWithTitle(title);
    if (index < 0) {
        // Selected before the widget is told, so that it shows the new title.
        titles.append(title);
        index = int(titles.size()) - 1;
        selected = index;
        Q_EMIT changed();
    }
    userSelectItemAtIndex(index);
}

void PopUp::userSelectItemAtIndex(int index)
{
    selected = index >= 0 && index < titles.size() ? index : -1;
    Q_EMIT activated();
}
