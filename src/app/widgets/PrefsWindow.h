#pragma once
// The preferences window: the fields of the PrefsController, on six tabs
// ("General", the orders, the items, "Lists", "Status Colours", "Modules"),
// with OK storing everything. Tabs 1 and 2 carry the user's words for orders
// and items. The window remembers its size and place.
#include <QDialog>

class PrefsController;
class QTabWidget;

class PrefsWindow : public QDialog
{
    Q_OBJECT
public:
    explicit PrefsWindow(PrefsController &controller, QWidget *parent = nullptr);

    QTabWidget *tabs() const { return tabView; }

private:
    QWidget *makeGeneralPage();
    QWidget *makeOrdersPage();
    QWidget *makeItemsPage();
    QWidget *makeListsPage();
    QWidget *makeColoursPage();
    QWidget *makeModulesPage();

    PrefsController &prefs;
    QTabWidget *tabView = nullptr;
};
