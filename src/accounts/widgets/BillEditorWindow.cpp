#include "accounts/widgets/BillEditorWindow.h"

#include "accounts/BillManager.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;

BillEditorWindow::BillEditorWindow(BillManager &manager, QWidget *parent) : QDialog(parent), bills(manager)
{
    setObjectName(QStringLiteral("billEditorWindow"));
    setWindowTitle(localised("Invoice"));
    setModal(false);
    setSizeGripEnabled(true);

    auto *form = new QFormLayout;
    const auto addRow = [form](const QString &label, QWidget *field) {
        auto *text = new QLabel(label);
        text->setBuddy(field);
        form->addRow(text, field);
    };
    const auto field = [&addRow](TextField *outlet, const QString &objectName, const QString &label) {
        auto *edit = new QLineEdit;
        edit->setObjectName(objectName);
        binding::bind(outlet, edit);
        addRow(label, edit);
    };
    field(bills.invoiceNumber, QStringLiteral("invoiceNumber"), localised("&Number:"));
    field(bills.name, QStringLiteral("name"), localised("&Name:"));
    field(bills.datePaid, QStringLiteral("datePaid"), localised("&Date:"));
    field(bills.amount, QStringLiteral("amount"), localised("&Amount:"));

    auto *categories = new QComboBox;
    categories->setObjectName(QStringLiteral("category"));
    categories->setMinimumContentsLength(16);
    binding::bind(bills.category, categories);
    addRow(localised("C&ategory:"), categories);

    auto *notes = new QPlainTextEdit;
    notes->setObjectName(QStringLiteral("details"));
    notes->setTabChangesFocus(true);
    binding::bind(bills.details, notes);
    addRow(localised("Details:"), notes);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(localised("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton *cancelling = buttons->addButton(localised("Cancel"), QDialogButtonBox::RejectRole);
    cancelling->setObjectName(QStringLiteral("cancelButton"));
    cancelling->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, &bills, &BillManager::finish);
    connect(cancelling, &QPushButton::clicked, this, &BillEditorWindow::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form, 1);
    layout->addWidget(buttons);

    binding::bind(bills.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelBillEditorWindowGeometry"), QSize(420, 360));
}

void BillEditorWindow::reject()
{
    bills.cancel();
    if (isVisible())
        QDialog::reject();
}
