#pragma once
// A tab view: its tabs by identifier and label, and the selected one. Tabs
// are counted from 0 in the order they stand.
#include "platform/outlets/Outlet.h"

#include <QStringList>

class TabView : public Outlet
{
    Q_OBJECT
public:
    explicit TabView(QObject *parent = nullptr);

    // Sets the tabs (identifiers and labels, same length); the first is selected.
    void setTabs(const QStringList &identifiers, const QStringList &labels);
    int numberOfTabViewItems() const { return int(ids.size()); }
    QStringList identifiers() const { return ids; }
    QString identifierAt(int index) const;
    int indexOfTabViewItemWithIdentifier(const QString &identifier) const;

    QString labelAt(int index) const;
    void setLabel(int index, const QString &label);

    // The identifier of the selected tab; a null text when there is none.
    QString selectedIdentifier() const { return identifierAt(selected); }
    int indexOfSelectedTab() const { return selected; }
    void selectTabViewItemWithIdentifier(const QString &identifier);
    void selectTabViewItemAtIndex(int index);
    void removeTabViewItemWithIdentifier(const QString &identifier);

    // From the widget: the user chose a tab.
    void userSelectTabAtIndex(int index);

Q_SIGNALS:
    void tabsChanged();
    void selectionChanged();

private:
    QStringList ids;
    QStringList labels;
    int selected = -1;
};
