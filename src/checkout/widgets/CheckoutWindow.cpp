#include "checkout/widgets/CheckoutWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "app/widgets/integrityTableView.h"
#include "checkout/CheckoutManager.h"
#include "orders/BOMManager.h"
#include "platform/Localised.h"
#include "store/QuorvelServices.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using editor::labelFor;
using platform::localised;

namespace {

// A label bound to a field of the sale, shown and selectable, not edited.
QLabel *shown(TextField *outlet, const QString &name, int pointSize = 0, bool bold = false)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (pointSize > 0 || bold) {
        QFont font = label->font();
        if (pointSize > 0)
            font.setPointSize(pointSize);
        font.setBold(bold);
        label->setFont(font);
    }
    binding::bind(outlet, label);
    return label;
}

QLineEdit *field(TextField *outlet, const QString &name)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(name);
    binding::bind(outlet, edit);
    return edit;
}

// A button with its key, which its tool tip names.
QPushButton *command(const QString &text, const QString &name, const QKeySequence &keys, std::function<void()> run)
{
    QPushButton *button = editor::pushButton(text, name, std::move(run));
    button->setShortcut(keys);
    button->setToolTip(keys.toString(QKeySequence::NativeText));
    return button;
}

}  // namespace

CheckoutWindow::CheckoutWindow(CheckoutManager &manager, QWidget *parent)
    : QMainWindow(parent),
      checkout(manager)
{
    setObjectName(QStringLiteral("checkoutWindow"));
    auto *central = new QWidget;
    auto *grid = new QGridLayout(central);
    grid->addWidget(makeCodeRow(), 0, 0, 1, 2);
    grid->addWidget(makeCustomerGroup(), 1, 0);
    grid->addWidget(makeSaleGroup(), 1, 1);
    grid->addWidget(makeLinesGroup(), 2, 0);
    grid->addWidget(makeTotalsGroup(), 2, 1);
    grid->addWidget(makeCommandRow(), 3, 0, 1, 2);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    setCentralWidget(central);
    makeTenderPanel();

    connect(&checkout, &CheckoutManager::beep, this, [] { QApplication::beep(); });
    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    binding::bind(checkout.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelCheckoutWindowGeometry"), QSize(1000, 700));
}

CheckoutWindow::~CheckoutWindow() = default;

QWidget *CheckoutWindow::makeCodeRow()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    code = field(checkout.codeEntry, QStringLiteral("codeEntry"));
    QFont large = code->font();
    large.setPointSize(large.pointSize() + 6);
    code->setFont(large);
    code->setPlaceholderText(localised("Type or scan an item's code, then Enter"));
    auto *focusCode = new QShortcut(QKeySequence(Qt::Key_F6), this);
    connect(focusCode, &QShortcut::activated, code, [this] {
        code->setFocus();
        code->selectAll();
    });
    QLabel *message = shown(checkout.codeEntryMessage, QStringLiteral("codeEntryMessage"));
    message->setMinimumWidth(260);
    layout->addWidget(labelFor(localised("&Code:"), code));
    layout->addWidget(code, 1);
    layout->addWidget(message);
    return row;
}

QWidget *CheckoutWindow::makeCustomerGroup()
{
    auto *group = new QGroupBox(localised("Customer"));
    group->setObjectName(QStringLiteral("customerGroup"));
    QLabel *name = shown(checkout.contactName, QStringLiteral("contactName"), 0, true);
    QLabel *address = shown(checkout.contactShortAddress, QStringLiteral("contactShortAddress"));
    QPushButton *pick = command(localised("C&ustomer..."), QStringLiteral("checkoutSelectContactButton"),
                                QKeySequence(Qt::CTRL | Qt::Key_K), [this] { checkout.checkoutSelectContact(); });
    QPushButton *added
        = command(localised("New Customer..."), QStringLiteral("checkoutNewContactButton"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K), [this] { checkout.checkoutNewContact(); });
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(name);
    layout->addWidget(address);
    layout->addLayout(editor::leftRow({pick, added}));
    return group;
}

QWidget *CheckoutWindow::makeSaleGroup()
{
    auto *group = new QGroupBox(localised("Sale"));
    group->setObjectName(QStringLiteral("saleGroup"));
    auto *form = new QFormLayout(group);
    QLabel *number = shown(checkout.orderNumber, QStringLiteral("orderNumber"), 0, true);
    form->addRow(localised("Number:"), number);
    QLineEdit *date = field(checkout.date, QStringLiteral("date"));
    form->addRow(labelFor(localised("&Date:"), date), date);
    QLineEdit *title = field(checkout.title, QStringLiteral("title"));
    form->addRow(labelFor(localised("&Title:"), title), title);
    auto *status = new QComboBox;
    status->setObjectName(QStringLiteral("status"));
    binding::bind(checkout.status, status);
    form->addRow(labelFor(localised("&Status:"), status), status);
    return group;
}

QWidget *CheckoutWindow::makeLinesGroup()
{
    auto *group = new QGroupBox(localised("Lines"));
    group->setObjectName(QStringLiteral("linesGroup"));
    BOMManager *bom = checkout.getQuorvel()->getBOMManager();
    lines = new integrityTableView;
    lines->setObjectName(QStringLiteral("checkoutTableView"));
    lines->setMinimumHeight(200);
    binding::bind(bom->checkoutTableView, lines);
    // The item's name takes the room the figures leave.
    lines->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lines->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    auto *remove = new QShortcut(QKeySequence(Qt::Key_Delete), lines, nullptr, nullptr, Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, [this] { checkout.checkoutDeleteItem(); });
    auto *back = new QShortcut(QKeySequence(Qt::Key_Backspace), lines, nullptr, nullptr, Qt::WidgetShortcut);
    connect(back, &QShortcut::activated, this, [this] { checkout.checkoutDeleteItem(); });

    QPushButton *item = command(localised("Add &Item..."), QStringLiteral("checkoutSelectItemButton"),
                                QKeySequence(Qt::CTRL | Qt::Key_I), [this] { checkout.checkoutSelectItem(); });
    QPushButton *time = command(localised("Add Ti&me..."), QStringLiteral("checkoutSelectTimeButton"),
                                QKeySequence(Qt::CTRL | Qt::Key_T), [this] { checkout.checkoutSelectTime(); });
    QPushButton *line = command(localised("Add &Line"), QStringLiteral("checkoutCreateAdhocButton"),
                                QKeySequence(Qt::CTRL | Qt::Key_L), [this] { checkout.checkoutCreateAdhoc(); });
    QPushButton *drop = command(localised("&Remove"), QStringLiteral("checkoutDeleteItemButton"),
                                QKeySequence(Qt::CTRL | Qt::Key_Backspace), [this] { checkout.checkoutDeleteItem(); });
    time->setVisible(checkout.getQuorvel()->hasTime());
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(lines, 1);
    layout->addLayout(editor::leftRow({item, time, line, drop}));
    return group;
}

QWidget *CheckoutWindow::makeTotalsGroup()
{
    auto *group = new QGroupBox(localised("Totals"));
    group->setObjectName(QStringLiteral("totalsGroup"));
    auto *form = new QFormLayout(group);
    form->setLabelAlignment(Qt::AlignRight);
    const auto figure = [](QLabel *label) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setMinimumWidth(160);
        return label;
    };
    form->addRow(localised("Subtotal:"), figure(shown(checkout.value, QStringLiteral("value"), 14)));
    form->addRow(localised("Tax:"), figure(shown(checkout.taxAmount, QStringLiteral("taxAmount"), 14)));
    form->addRow(localised("Shipping:"), figure(shown(checkout.shipping, QStringLiteral("shipping"), 14)));
    form->addRow(localised("Total:"), figure(shown(checkout.valueWithTax, QStringLiteral("valueWithTax"), 20, true)));
    form->addRow(localised("Paid:"), figure(shown(checkout.deposit, QStringLiteral("deposit"), 14)));
    // The dates tendering stamps: a part payment's, and the day it was paid in full.
    form->addRow(localised("Paid on:"), figure(shown(checkout.depositPaid, QStringLiteral("depositPaid"))));
    form->addRow(localised("Paid in full on:"), figure(shown(checkout.balancePaid, QStringLiteral("balancePaid"))));
    auto *due = new QLabel(localised("Due:"));
    QFont large = due->font();
    large.setPointSize(24);
    large.setBold(true);
    due->setFont(large);
    form->addRow(due, figure(shown(checkout.balance, QStringLiteral("balance"), 24, true)));
    return group;
}

QWidget *CheckoutWindow::makeCommandRow()
{
    auto *row = new QWidget;
    auto *stationery = new QComboBox;
    stationery->setObjectName(QStringLiteral("whichStationary"));
    binding::bind(checkout.whichStationary, stationery);
    QPushButton *print = command(localised("&Print..."), QStringLiteral("checkoutPrintButton"), QKeySequence::Print,
                                 [this] { checkout.printInvoice(); });
    QPushButton *existing = command(localised("E&xisting Order..."), QStringLiteral("updateExistingOrderButton"),
                                    QKeySequence(Qt::CTRL | Qt::Key_O), [this] { checkout.updateExistingOrder(); });
    QPushButton *fresh = command(localised("&New Sale"), QStringLiteral("checkoutNewButton"),
                                 QKeySequence(Qt::CTRL | Qt::Key_N), [this] { checkout.checkoutNew(); });
    QPushButton *pay
        = command(localised("T&ender..."), QStringLiteral("tenderButton"), QKeySequence(Qt::Key_F12), [this] {
              checkout.tender();
              tender->setFocus();
          });
    QFont large = pay->font();
    large.setPointSize(large.pointSize() + 4);
    large.setBold(true);
    pay->setFont(large);
    pay->setMinimumHeight(36);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelFor(localised("Stationer&y:"), stationery));
    layout->addWidget(stationery);
    layout->addWidget(print);
    layout->addStretch(1);
    layout->addWidget(existing);
    layout->addWidget(fresh);
    layout->addWidget(pay);
    return row;
}

void CheckoutWindow::makeTenderPanel()
{
    tender = new QDialog(this);
    tender->setObjectName(QStringLiteral("tenderPanel"));
    tender->setWindowModality(Qt::WindowModal);
    QFont large = tender->font();
    large.setPointSize(22);
    QLabel *due = shown(checkout.tenderDue, QStringLiteral("tenderDue"), 22, true);
    auto *tendered = new QLineEdit;
    tendered->setObjectName(QStringLiteral("tenderTendered"));
    tendered->setFont(large);
    tendered->setAlignment(Qt::AlignRight);
    binding::bind(checkout.tenderTendered, tendered);
    QLabel *what = shown(checkout.tenderInformativeText, QStringLiteral("tenderInformativeText"), 16);
    QLabel *left = shown(checkout.tenderBalance, QStringLiteral("tenderBalance"), 22, true);
    for (QLabel *figure : {due, left})
        figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *form = new QFormLayout;
    form->addRow(localised("Due:"), due);
    form->addRow(labelFor(localised("&Tendered:"), tendered), tendered);
    form->addRow(what, left);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Enter in the tendered field accepts; the buttons answer the mouse.
    for (QAbstractButton *button : buttons->buttons()) {
        if (auto *push = qobject_cast<QPushButton *>(button))
            push->setAutoDefault(false);
    }
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("tenderOKButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { checkout.tenderOK(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { checkout.tenderCancel(); });
    connect(tender, &QDialog::rejected, this, [this] { checkout.tenderCancel(); });
    auto *layout = new QVBoxLayout(tender);
    layout->addLayout(form);
    layout->addWidget(buttons);
    binding::bind(checkout.tenderPanel, tender);
    tender->setFocusProxy(tendered);
    tender->resize(420, 260);
}

void CheckoutWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    code->setFocus();
}

void CheckoutWindow::closeEvent(QCloseEvent *event)
{
    if (!checkout.windowShouldClose()) {
        event->ignore();
        return;
    }
    checkout.windowWillClose();
    QMainWindow::closeEvent(event);
}
