#include "platform/outlets/TabView.h"

TabView::TabView(QObject *parent)
    : Outlet(parent)
{ }

void TabView::setTabs(const QStringList &identifiers, const QStringList &newLabels)
{
    ids = identifiers;
    labels = newLabels;
    while (labels.size() < ids.size())
        labels.append(QString());
    labels.resize(ids.size());
    selected = ids.isEmpty() ? -1 : 0;
    Q_EMIT tabsChanged();
    Q_EMIT selectionChanged();
}

QString TabView::identifierAt(int index) const
{
    return index >= 0 && index < ids.size() ? ids.at(index) : QString();
}

int TabView::indexOfTabViewItemWithIdentifier(const QString &identifier) const
{
    return int(ids.indexOf(identifier));
}

QString TabView::labelAt(int index) const
{
    return index >= 0 && index < labels.size() ? labels.at(index) : QString();
}

void TabView::setLabel(int index, const QString &label)
{
    if (index < 0 || index >= labels.size() || labels.at(index) == label)
        return;
    labels[index] = label;
    Q_EMIT tabsChanged();
}

void TabView::selectTabViewItemWithIdentifier(const QString &identifier)
{
    const int index = indexOfTabViewItemWithIdentifier(identifier);
    if (index >= 0)
        selectTabViewItemAtIndex(index);
}

void TabView::selectTabViewItemAtIndex(int index)
{
    if (index < 0 || index >= ids.size() || index == selected)
        return;
    selected = index;
    Q_EMIT selectionChanged();
}

void TabView::removeTabViewItemWithIdentifier(const QString &identifier)
{
    const int index = indexOfTabViewItemWithIdentifier(identifier);
    if (index < 0)
        return;
    const QString selectedId = selectedIdentifier();
    ids.removeAt(index);
    labels.removeAt(index);
    if (selectedId == identifier)
        selected = ids.isEmpty() ? -1 : qMin(index, int(ids.size()) - 1);
    else
        selected = int(ids.indexOf(selectedId));
    Q_EMIT tabsChanged();
    Q_EMIT selectionChanged();
}

void TabView::userSelectTabAtIndex(int index)
{
    if (index < 0 || index >= ids.size())
        return;
    selected = index;
    Q_EMIT selectionChanged();
}
