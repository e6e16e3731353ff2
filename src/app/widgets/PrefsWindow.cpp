#include "app/widgets/PrefsWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"
#include "store/PrefsController.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

using editor::labelFor;
using editor::lineEdit;
using platform::localised;

namespace {
const char *const identifierProperty = "tabIdentifier";

QWidget *page(const QString &identifier)
{
    auto *widget = new QWidget;
    widget->setObjectName(QStringLiteral("prefsTab_") + identifier);
    widget->setProperty(identifierProperty, identifier);
    return widget;
}

}  // namespace

PrefsWindow::PrefsWindow(PrefsController &controller, QWidget *parent)
    : QDialog(parent),
      prefs(controller)
{
    setObjectName(QStringLiteral("prefsWindow"));
    setWindowTitle(localised("Preferences"));

    tabView = new QTabWidget(this);
    tabView->setObjectName(QStringLiteral("prefsTabView"));
    tabView->addTab(makeGeneralPage(), localised("General"));
    tabView->addTab(makeOrdersPage(), prefs.getTermOrders());
    tabView->addTab(makeItemsPage(), prefs.getTermItems());
    tabView->addTab(makeListsPage(), localised("Lists"));
    tabView->addTab(makeColoursPage(), localised("Status Colours"));
    tabView->addTab(makeModulesPage(), localised("Modules"));
    binding::bind(prefs.prefsTabView, tabView);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, &prefs, &PrefsController::OKButton);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabView);
    layout->addWidget(buttons);

    binding::bind(prefs.prefsWindow, this);
    placement::remember(this, QStringLiteral("QuorvelPrefsWindowGeometry"), QSize(560, 380));
}

QWidget *PrefsWindow::makeGeneralPage()
{
    QWidget *general = page(QStringLiteral("general"));
    auto *form = new QFormLayout(general);
    QLineEdit *currency = lineEdit(prefs.currencyField, QStringLiteral("currencyField"), general);
    form->addRow(labelFor(localised("&Currency symbol:"), currency), currency);

    auto *dayFirst = new QRadioButton(general);
    dayFirst->setObjectName(QStringLiteral("dateFormatDayFirst"));
    auto *monthFirst = new QRadioButton(general);
    monthFirst->setObjectName(QStringLiteral("dateFormatMonthFirst"));
    auto *group = new QButtonGroup(general);
    group->addButton(dayFirst, 0);
    group->addButton(monthFirst, 1);
    binding::bind(prefs.dateFormat, group);
    auto *dates = new QHBoxLayout;
    dates->addWidget(dayFirst);
    dates->addWidget(monthFirst);
    dates->addStretch();
    form->addRow(labelFor(localised("&Date format:"), dayFirst), dates);
    form->addRow(new QLabel(localised("A new date format is used from the next start.")));
    return general;
}

QWidget *PrefsWindow::makeOrdersPage()
{
    QWidget *orders = page(QStringLiteral("orders"));
    editor::Form form{new QFormLayout(orders)};
    form.field(prefs.taxRate, QStringLiteral("taxRate"), localised("&Tax rate (%):"));
    form.field(prefs.taxStatement, QStringLiteral("taxStatement"), localised("Tax &statement:"));
    form.field(prefs.orderPrefixField, QStringLiteral("orderPrefixField"), localised("Order &prefix:"));
    form.field(prefs.termOrder, QStringLiteral("termOrder"), localised("Word for &one order:"));
    form.field(prefs.termOrders, QStringLiteral("termOrders"), localised("Word for &several orders:"));
    return orders;
}

QWidget *PrefsWindow::makeItemsPage()
{
    QWidget *items = page(QStringLiteral("items"));
    editor::Form form{new QFormLayout(items)};
    form.field(prefs.itemPrefixField, QStringLiteral("itemPrefixField"), localised("Item &prefix:"));
    form.field(prefs.stockWarn, QStringLiteral("stockWarn"), localised("Stock &warning level:"));
    form.field(prefs.termItem, QStringLiteral("termItem"), localised("Word for &one item:"));
    form.field(prefs.termItems, QStringLiteral("termItems"), localised("Word for &several items:"));
    form.field(prefs.termBOM, QStringLiteral("termBOM"), localised("Word for a &bill of materials:"));
    return items;
}

QWidget *PrefsWindow::makeListsPage()
{
    QWidget *lists = page(QStringLiteral("lists"));
    auto *layout = new QHBoxLayout(lists);
    const auto addList = [lists, layout](TextView *outlet, const QString &name, const QString &title) {
        auto *column = new QVBoxLayout;
        auto *edit = new QPlainTextEdit(lists);
        edit->setObjectName(name);
        edit->setTabChangesFocus(true);
        binding::bind(outlet, edit);
        column->addWidget(labelFor(title, edit));
        column->addWidget(edit);
        layout->addLayout(column);
    };
    addList(prefs.listInvoiceCategories, QStringLiteral("listInvoiceCategories"), localised("&Invoice categories:"));
    addList(prefs.listStatuses, QStringLiteral("listStatuses"), localised("S&tatuses:"));
    addList(prefs.listContactTypes, QStringLiteral("listContactTypes"), localised("&Contact types:"));
    return lists;
}

QWidget *PrefsWindow::makeColoursPage()
{
    QWidget *colours = page(QStringLiteral("colours"));
    auto *form = new QFormLayout(colours);
    auto *status = new QComboBox(colours);
    status->setObjectName(QStringLiteral("statusColourAssignmentPopUpButton"));
    binding::bind(prefs.statusColourAssignmentPopUpButton, status);
    connect(prefs.statusColourAssignmentPopUpButton, &PopUp::activated, this,
            [this] { prefs.statusSelectorHasChanged(); });
    form->addRow(labelFor(localised("&Status:"), status), status);

    auto *well = new QPushButton(colours);
    well->setObjectName(QStringLiteral("colourStatusAssignmentWell"));
    well->setAutoDefault(false);
    binding::bind(prefs.colourStatusAssignmentWell, well);
    form->addRow(labelFor(localised("C&olour:"), well), well);

    // "Set Colour..." opens the colour chooser on the status's colour and
    // keeps what is chosen for the status (the well alone only shows it).
    auto *set = new QPushButton(localised("Set &Colour…"), colours);
    set->setObjectName(QStringLiteral("setColourButton"));
    set->setAutoDefault(false);
    connect(set, &QPushButton::clicked, this, [this, well] {
        const RgbaColour before = prefs.colourStatusAssignmentWell->color();
        well->click();
        if (!(prefs.colourStatusAssignmentWell->color() == before))
            prefs.setColorForStatus();
    });
    form->addRow(QString(), set);
    return colours;
}

QWidget *PrefsWindow::makeModulesPage()
{
    QWidget *modules = page(QStringLiteral("modules"));
    auto *layout = new QVBoxLayout(modules);
    const auto addBox = [modules, layout](CheckBox *outlet, const QString &name) {
        auto *box = new QCheckBox(outlet->title(), modules);
        box->setObjectName(name);
        binding::bind(outlet, box);
        layout->addWidget(box);
    };
    addBox(prefs.proTimeMmtButton, QStringLiteral("proTimeMmtButton"));
    addBox(prefs.proAccountMmtButton, QStringLiteral("proAccountMmtButton"));
    addBox(prefs.proDataMmtButton, QStringLiteral("proDataMmtButton"));
    layout->addWidget(new QLabel(localised("Modules switched on or off take effect from the next start."), modules));
    layout->addStretch();
    return modules;
}
