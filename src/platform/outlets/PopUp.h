#pragma once
// A pop-up menu (combo box): its item titles and the selected one.
#include "platform/outlets/Outlet.h"

#include <QStringList>

class PopUp : public Outlet
{
    Q_OBJECT
public:
    explicit PopUp(QObject *parent = nullptr);

    const QStringList &itemTitles() const { return titles; }
    int numberOfItems() const { return int(titles.size()); }
    void addItem(const QString &title);
    void addItems(const QStringList &newTitles);
    void removeAllItems();
    QString itemTitleAt(int index) const;
    int indexOfItemWithTitle(const QString &title) const;

    int indexOfSelectedItem() const { return selected; }  // -1 when none
    // The selected item's title; a null text when nothing is selected.
    QString titleOfSelectedItem() const;
    void selectItemAtIndex(int index);  // out of range selects nothing
    void selectItemWithTitle(const QString &title);

    // From the widget: the user chose an item (activated() follows).
    void userSelectItemAtIndex(int index);
    // From an editable pop-up: the user typed a title; it becomes an item
    // (when it is not one) and is selected (activated() follows).
    void userEnterTitle(const QString &title);

Q_SIGNALS:
    void activated();

private:
    QStringList titles;
    int selected = -1;
};
