#include "orders/widgets/OrderEditorWindow.h"

#include "app/Quorvel.h"
#include "app/kdKeyResponder.h"
#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/integrityTableView.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/OrderManager.h"
#include "orders/widgets/MyImageView.h"
#include "platform/Alerts.h"
#include "platform/Localised.h"
#include "platform/Numbers.h"
#include "platform/Workspace.h"
#include "platform/outlets/TextField.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using editor::labelFor;
using editor::leftRow;
using editor::pushButton;
using editor::row;
using platform::localised;

namespace {

// One of the linked contact's details: shown, selectable, not edited here.
QLabel *detail(TextField *outlet, const QString &name)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(180);
    binding::bind(outlet, label);
    return label;
}

}  // namespace

OrderEditorWindow::OrderEditorWindow(OrderManager &manager, QWidget *parent)
    : EditorDialog(
        QStringLiteral("orderEditorWindow"), localised("Order"), [owner = &manager] { owner->cancel(); }, parent),
      orders(manager),
      materialsKeys(std::make_unique<kdKeyResponder>())
{
    // The buttons the manager holds outlets for (Calculate, View, Edit
    // Contact) are answered by the manager itself; the others call it here.
    auto *grid = new QGridLayout;
    grid->addWidget(makeOrderGroup(), 0, 0);
    grid->addWidget(makeContactGroup(), 0, 1);
    grid->addWidget(makeMoneyGroup(), 0, 2);
    grid->addWidget(makeBOMTabView(), 1, 0, 1, 3);
    grid->setRowStretch(1, 1);
    for (int column = 0; column < 3; ++column)
        grid->setColumnStretch(column, 1);
    layOut(grid, nullptr, [this] { orders.finish(&orders); });
    attach(orders.editorWindow, QStringLiteral("QuorvelOrderEditorWindowGeometry"), QSize(1060, 680));
}

OrderEditorWindow::~OrderEditorWindow() = default;

QGroupBox *OrderEditorWindow::makeOrderGroup()
{
    orderGroup = new QGroupBox(localised("Order"));
    orderGroup->setObjectName(QStringLiteral("orderGroup"));
    editor::Form form{new QFormLayout(orderGroup), &tabChain, 12};
    form.field(orders.orderNumber, QStringLiteral("orderNumber"), localised("&Number:"));
    form.field(orders.date, QStringLiteral("date"), localised("&Date:"));
    form.field(orders.title, QStringLiteral("title"), localised("&Title:"));
    form.popUp(orders.status, QStringLiteral("status"), localised("&Status:"));
    form.popUp(orders.paymentMethod, QStringLiteral("paymentMethod"), localised("Payment &method:"));
    form.notes(orders.description, QStringLiteral("description"), localised("Des&cription:"));
    return orderGroup;
}

QGroupBox *OrderEditorWindow::makeContactGroup()
{
    auto *group = new QGroupBox(localised("Customer"));
    group->setObjectName(QStringLiteral("contactGroup"));
    auto *form = new QFormLayout;
    form->addRow(localised("Name:"), detail(orders.contactName, QStringLiteral("contactName")));
    form->addRow(localised("Company:"), detail(orders.contactCompany, QStringLiteral("contactCompany")));
    auto *address = new QVBoxLayout;
    address->setSpacing(2);
    address->addWidget(detail(orders.contactAdd1, QStringLiteral("contactAdd1")));
    address->addWidget(detail(orders.contactAdd2, QStringLiteral("contactAdd2")));
    address->addWidget(detail(orders.contactAdd3, QStringLiteral("contactAdd3")));
    form->addRow(localised("Address:"), address);
    form->addRow(localised("In short:"), detail(orders.contactShortAddress, QStringLiteral("contactShortAddress")));
    form->addRow(localised("Postcode:"), detail(orders.contactPostcode, QStringLiteral("contactPostcode")));
    form->addRow(localised("Phone:"), detail(orders.contactPhone, QStringLiteral("contactPhone")));
    form->addRow(localised("Mobile:"), detail(orders.contactMobile, QStringLiteral("contactMobile")));
    form->addRow(localised("Fax:"), detail(orders.contactFax, QStringLiteral("contactFax")));
    form->addRow(localised("E-mail:"), detail(orders.contactEmail, QStringLiteral("contactEmail")));

    QPushButton *choose = pushButton(localised("Choose Contact..."), QStringLiteral("pickContactButton"),
                                     [this] { orders.pickContact(); });
    QPushButton *create = pushButton(localised("New Contact"), QStringLiteral("createContactButton"),
                                     [this] { orders.createContact(); });
    QPushButton *editing = pushButton(localised("Edit Contact"), QStringLiteral("editContactButton"));
    binding::bind(orders.editContactButton, editing);
    QPushButton *copy = editor::copyAddressButton([this] { orders.copyContact(); });
    QPushButton *mail = editor::emailButton([this] { orders.sendEmail(); });
    tabChain << choose << create << editing << copy << mail;

    auto *layout = new QVBoxLayout(group);
    layout->addLayout(form);
    layout->addStretch(1);
    layout->addLayout(leftRow({choose, create, editing}));
    layout->addLayout(leftRow({copy, mail}));
    return group;
}

QGroupBox *OrderEditorWindow::makeMoneyGroup()
{
    auto *group = new QGroupBox(localised("Money"));
    group->setObjectName(QStringLiteral("moneyGroup"));
    auto *form = new QFormLayout(group);
    const auto field = [this](TextField *outlet, const QString &name) {
        auto *edit = new QLineEdit;
        edit->setObjectName(name);
        edit->setAlignment(Qt::AlignRight);
        binding::bind(outlet, edit);
        tabChain << edit;
        return edit;
    };
    // Typing any figure of the balance works it out again (Enter does too,
    // in the manager).
    const auto recalculates = [this](TextField *outlet) {
        connect(outlet, &TextField::edited, this, [this] { orders.calculateBalance(); });
    };

    // The figures are in the currency of the preferences: its symbol stands
    // before each money field (the field keeps the bare figure).
    QList<QLabel *> symbols;
    const auto symbolLabel = [&symbols](const QString &name) {
        auto *symbol = new QLabel;
        symbol->setObjectName(name);
        symbol->setTextFormat(Qt::PlainText);
        symbols << symbol;
        return symbol;
    };
    QLineEdit *value = field(orders.value, QStringLiteral("value"));
    QPushButton *total = pushButton(localised("Use Materials Total"), QStringLiteral("insertBOMTotalButton"));
    connect(total, &QPushButton::clicked, &orders, &OrderManager::insertBOMTotal);
    tabChain << total;
    form->addRow(labelFor(localised("&Value:"), value),
                 row({symbolLabel(QStringLiteral("valueCurrency")), value, total}));

    QLineEdit *shipping = field(orders.shipping, QStringLiteral("shipping"));
    QPushButton *shippingTotal
        = pushButton(localised("Use Materials Shipping"), QStringLiteral("insertBOMShippingButton"));
    connect(shippingTotal, &QPushButton::clicked, &orders, &OrderManager::insertBOMShipping);
    tabChain << shippingTotal;
    form->addRow(labelFor(localised("S&hipping:"), shipping),
                 row({symbolLabel(QStringLiteral("shippingCurrency")), shipping, shippingTotal}));

    // The tax label ("VAT @ 17.50%") names the tax amount's row; at a rate
    // of 0 it is blank and the amount and its button are hidden.
    auto *taxLabel = new QLabel;
    taxLabel->setObjectName(QStringLiteral("tax"));
    taxLabel->setTextFormat(Qt::PlainText);
    binding::bind(orders.tax, taxLabel);
    QLineEdit *taxAmount = field(orders.taxAmount, QStringLiteral("taxAmount"));
    taxLabel->setBuddy(taxAmount);
    taxAmount->setAccessibleName(localised("Tax amount"));
    QPushButton *calculate = pushButton(localised("Calculate"), QStringLiteral("calculateTaxButton"));
    binding::bind(orders.calculateTaxButton, calculate);
    tabChain << calculate;
    auto *taxRow = row({symbolLabel(QStringLiteral("taxCurrency")), taxAmount, calculate});
    form->addRow(taxLabel, taxRow);

    QLineEdit *deposit = field(orders.deposit, QStringLiteral("deposit"));
    form->addRow(labelFor(localised("Dep&osit:"), deposit),
                 row({symbolLabel(QStringLiteral("depositCurrency")), deposit}, 0));
    QLineEdit *depositPaid = field(orders.depositPaid, QStringLiteral("depositPaid"));
    form->addRow(labelFor(localised("Deposit p&aid:"), depositPaid), depositPaid);
    // Beside the balance, the order's whole total (value, tax and
    // shipping), and whether the balance is paid: a date in "Balance paid"
    // says it is.
    QLineEdit *balance = field(orders.balance, QStringLiteral("balance"));
    auto *orderTotal = new QLabel;
    orderTotal->setObjectName(QStringLiteral("orderTotal"));
    orderTotal->setTextFormat(Qt::PlainText);
    form->addRow(labelFor(localised("&Balance:"), balance),
                 row({symbolLabel(QStringLiteral("balanceCurrency")), balance, orderTotal}));
    QLineEdit *balancePaid = field(orders.balancePaid, QStringLiteral("balancePaid"));
    auto *paidState = new QLabel;
    paidState->setObjectName(QStringLiteral("balanceState"));
    paidState->setTextFormat(Qt::PlainText);
    form->addRow(labelFor(localised("Balance &paid:"), balancePaid), row({balancePaid, paidState}));
    const auto showTotals = [this, orderTotal, paidState] {
        const auto figure = [](const TextField *figureField) {
            return double(platform::floatValue(platform::withoutCommas(figureField->stringValue())));
        };
        const double sum = figure(orders.value) + figure(orders.taxAmount) + figure(orders.shipping);
        const QuorvelServices *services = orders.getQuorvel();
        const QString currency = services && services->getPrefsController()
            ? services->getPrefsController()->getCurrency().trimmed()
            : QString();
        orderTotal->setText(localised("Order total: %1").arg(currency + QLocale().toString(sum, 'f', 2)));
        const bool paid = !orders.balancePaid->stringValue().trimmed().isEmpty();
        paidState->setText(paid ? localised("Paid") : localised("Due"));
        QFont font = paidState->font();
        font.setBold(!paid);
        paidState->setFont(font);
    };
    const QuorvelServices *owner = orders.getQuorvel();
    if (owner && owner->getPrefsController()) {
        TextField *preferred = owner->getPrefsController()->currencyField;
        const auto showSymbol = [symbols, preferred] {
            for (QLabel *symbol : symbols)
                symbol->setText(preferred->stringValue().trimmed());
        };
        showSymbol();
        connect(preferred, &Outlet::changed, this, showSymbol);
        connect(preferred, &TextField::edited, this, showSymbol);
    }
    QList<TextField *> shownFigures{orders.value, orders.taxAmount, orders.shipping, orders.balancePaid};
    if (owner && owner->getPrefsController())
        shownFigures << owner->getPrefsController()->currencyField;  // the total names the currency
    for (TextField *shown : std::as_const(shownFigures)) {
        connect(shown, &Outlet::changed, this, showTotals);
        connect(shown, &TextField::edited, this, showTotals);
    }
    showTotals();
    for (TextField *figure : {orders.value, orders.shipping, orders.taxAmount, orders.deposit})
        recalculates(figure);

    auto *includeBOM = new QCheckBox(localised("Incl&ude materials on invoice"));
    includeBOM->setObjectName(QStringLiteral("includeBOM"));
    binding::bind(orders.includeBOM, includeBOM);
    auto *sent = new QCheckBox(localised("S&ent"));
    sent->setObjectName(QStringLiteral("sent"));
    binding::bind(orders.sent, sent);
    tabChain << includeBOM << sent;
    form->addRow(QString(), includeBOM);
    form->addRow(QString(), sent);
    return group;
}

QWidget *OrderEditorWindow::makeRepeatPage()
{
    auto *group = new QWidget;
    group->setObjectName(QStringLiteral("repeatGroup"));
    auto *repeats = new QCheckBox(localised("&Repeats"));
    repeats->setObjectName(QStringLiteral("repeats"));
    binding::bind(orders.repeats, repeats);

    auto *frequency = new QComboBox;
    frequency->setObjectName(QStringLiteral("repeatFrequency"));
    binding::bind(orders.repeatFrequency, frequency);

    auto *summary = new QLabel;
    summary->setObjectName(QStringLiteral("repeatInformativeTextField"));
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    binding::bind(orders.repeatInformativeTextField, summary);

    QPushButton *now = pushButton(localised("Repeat Now"), QStringLiteral("duplicateButton"));
    connect(now, &QPushButton::clicked, this, [this] { orders.duplicate(nullptr); });
    tabChain << repeats << frequency << now;

    auto *layout = new QVBoxLayout(group);
    auto *settings = row({repeats});
    settings->addSpacing(12);
    settings->addWidget(labelFor(localised("&Frequency:"), frequency));
    settings->addWidget(frequency);
    settings->addStretch(1);
    layout->addLayout(settings);
    layout->addWidget(summary);
    layout->addStretch(1);
    layout->addLayout(leftRow({now}));
    return group;
}

QWidget *OrderEditorWindow::makeAttachmentPage()
{
    auto *group = new QWidget;
    group->setObjectName(QStringLiteral("attachmentGroup"));
    well = new MyImageView(orders);

    auto *count = new QLabel;
    count->setObjectName(QStringLiteral("attachmentText"));
    count->setTextFormat(Qt::PlainText);  // the count keeps its spaces
    count->setWordWrap(true);
    binding::bind(orders.attachmentText, count);

    QPushButton *view = pushButton(localised("View"), QStringLiteral("attachmentButton"));
    binding::bind(orders.attachmentButton, view);
    QPushButton *attach = pushButton(localised("Attach..."), QStringLiteral("attachButton"));
    connect(attach, &QPushButton::clicked, &orders, &OrderManager::attach);
    tabChain << well << view << attach;

    // The attachments by name, each to open or take off the order.
    auto *list = new QListWidget;
    list->setObjectName(QStringLiteral("attachmentList"));
    list->setAccessibleName(localised("Attachments"));
    QPushButton *open = pushButton(localised("Open"), QStringLiteral("openAttachmentButton"));
    QPushButton *remove = pushButton(localised("Remove..."), QStringLiteral("removeAttachmentButton"));
    tabChain << list << open << remove;
    const auto current = [this] { return orders.getCurrentItem() ? orders.getCurrentItem()->getID() : 0; };
    const auto showList = [list, open, remove, current] {
        list->clear();
        if (current() > 0)
            list->addItems(orderAttachments::names(current()));
        if (list->count() > 0)
            list->setCurrentRow(0);
        open->setEnabled(list->count() > 0);
        remove->setEnabled(list->count() > 0);
    };
    connect(&orders, &OrderManager::attachmentIconChanged, list, showList);
    const auto openChosen = [list, current] {
        if (list->currentItem())
            platform::openFile(OrderManager::attachmentFolder(current()) + u'/' + list->currentItem()->text());
    };
    connect(open, &QPushButton::clicked, list, openChosen);
    connect(list, &QListWidget::itemActivated, list, openChosen);
    connect(remove, &QPushButton::clicked, list, [this, list, current] {
        if (!list->currentItem())
            return;
        const QString name = list->currentItem()->text();
        if (platform::runAlert(localised("Remove the attachment “%1”?").arg(name),
                               localised("It is taken off the order."), localised("Remove"), localised("Cancel"))
            != 1)
            return;
        orderAttachments::remove(current(), name);
        orders.attachmentAdded(current());  // counted and listed again
    });

    auto *side = new QVBoxLayout;
    side->addWidget(count);
    side->addLayout(leftRow({view, attach}));
    side->addWidget(list, 1);
    side->addLayout(leftRow({open, remove}));
    auto *layout = new QHBoxLayout(group);
    layout->addWidget(well, 0, Qt::AlignTop);
    layout->addLayout(side, 1);
    return group;
}

QWidget *OrderEditorWindow::makeInvoicePage()
{
    auto *group = new QWidget;
    group->setObjectName(QStringLiteral("invoiceGroup"));
    auto *stationery = new QComboBox;
    stationery->setObjectName(QStringLiteral("whichStationary"));
    stationery->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    stationery->setMinimumContentsLength(14);
    binding::bind(orders.whichStationary, stationery);

    QPushButton *print
        = pushButton(localised("Print..."), QStringLiteral("printInvoiceButton"), [this] { orders.printInvoice(); });
    print->setToolTip(localised("Fills the chosen stationery with this order and opens it to print, save as "
                                "PDF or e-mail"));
    QPushButton *sheet = pushButton(localised("Print Invoice Sheet..."), QStringLiteral("printInvoiceSheetButton"),
                                    [this] { orders.printInvoiceSheet(); });
    QPushButton *edit = pushButton(localised("Edit Stationery..."), QStringLiteral("editInvoiceTemplateButton"),
                                   [this] { orders.editInvoiceTemplate(); });
    edit->setToolTip(localised("Opens the stationery folder: documents added there become choices here"));
    tabChain << stationery << print << sheet << edit;

    auto *form = new QFormLayout(group);
    form->addRow(labelFor(localised("Stationer&y:"), stationery), stationery);
    form->addRow(QString(), leftRow({print, sheet, edit}));
    return group;
}

QTabWidget *OrderEditorWindow::makeBOMTabView()
{
    PrefsController *prefs = orders.getQuorvel()->getPrefsController();
    auto *tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("BOMTabView"));
    tabs->addTab(makeRepeatPage(), localised("Repeat"));
    tabs->addTab(makeAttachmentPage(), localised("Attachments"));
    QWidget *materialsPage = makeMaterialsPage(prefs);
    tabs->addTab(materialsPage, localised("Bill of Materials"));
    tabs->addTab(makeInvoicePage(), localised("Invoice"));
    // The lines are what an order is most often opened for.
    tabs->setCurrentWidget(materialsPage);
    binding::bind(prefs->BOMTabView, tabs);
    return tabs;
}

QWidget *OrderEditorWindow::makeMaterialsPage(PrefsController *prefs)
{
    BOMManager *bom = orders.getQuorvel()->getBOMManager();
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("materialsGroup"));

    auto *heading = new QLabel(localised("Bill of Materials"));
    heading->setObjectName(QStringLiteral("BOMTextField"));
    heading->setTextFormat(Qt::PlainText);
    binding::bind(prefs->BOMTextField, heading);

    materials = new integrityTableView;
    materials->setObjectName(QStringLiteral("materialsTableView"));
    materials->setMinimumHeight(140);
    binding::bind(bom->table, materials);
    materialsKeys->setOwner(bom);
    materials->setKeyResponder(materialsKeys.get());
    materials->installEventFilter(this);
    connect(bom, &BOMManager::beep, this, [] { QApplication::beep(); });

    QPushButton *addItem = pushButton(localised("Select From Items"), QStringLiteral("pickMaterialButton"));
    binding::bind(prefs->selectFromItemsButton, addItem);
    addTimeButton = pushButton(localised("Add Time..."), QStringLiteral("pickTimeButton"));
    QPushButton *addLine = pushButton(localised("Add Line"), QStringLiteral("createMaterialButton"));
    QPushButton *remove = pushButton(localised("Remove"), QStringLiteral("deleteMaterialButton"));
    connect(addItem, &QPushButton::clicked, &orders, &OrderManager::pickMaterial);
    connect(addTimeButton, &QPushButton::clicked, &orders, &OrderManager::pickTime);
    connect(addLine, &QPushButton::clicked, bom, [bom] { bom->create(); });
    connect(remove, &QPushButton::clicked, bom, [bom] { bom->deleteKey(nullptr); });
    tabChain << materials << addItem << addTimeButton << addLine << remove;

    auto *commands = new QVBoxLayout;
    for (QPushButton *button : {addItem, addTimeButton, addLine, remove})
        commands->addWidget(button);
    commands->addStretch(1);
    auto *lines = new QHBoxLayout;
    lines->addWidget(materials, 1);
    lines->addLayout(commands);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(heading);
    layout->addLayout(lines, 1);
    return page;
}

void OrderEditorWindow::showTerms()
{
    const PrefsController *prefs = orders.getQuorvel()->getPrefsController();
    if (!prefs->getTermOrder().isEmpty()) {
        orderGroup->setTitle(prefs->getTermOrder());
        orders.editorWindow->setTitle(prefs->getTermOrder());
    }
    // Time lines come from the tasks, when that module is on.
    addTimeButton->setEnabled(orders.getQuorvel()->hasTime());
}

void OrderEditorWindow::showEvent(QShowEvent *event)
{
    showTerms();
    EditorDialog::showEvent(event);
}

// F2 edits the current cell of the materials table (the table keeps every
// other letter key to itself).
bool OrderEditorWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == materials && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_F2) {
        const QModelIndex current = materials->currentIndex();
        if (current.isValid() && materials->model()->flags(current).testFlag(Qt::ItemIsEditable)) {
            materials->edit(current);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
