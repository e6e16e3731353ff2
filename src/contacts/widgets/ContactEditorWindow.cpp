#include "contacts/widgets/ContactEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/ContactReportsView.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;
using editor::lineEdit;
using editor::popUp;
using editor::pushButton;

ContactEditorWindow::ContactEditorWindow(ContactManager &manager, QWidget *parent) : QDialog(parent), contacts(manager)
{
    setObjectName(QStringLiteral("contactEditorWindow"));
    setWindowTitle(localised("Contact"));
    setModal(false);
    setSizeGripEnabled(true);

    auto *form = new QFormLayout;
    form->addRow(localised("Title:"), popUp(contacts.title, QStringLiteral("title")));
    nameEdit = lineEdit(contacts.name, QStringLiteral("name"));
    form->addRow(localised("Name:"), nameEdit);
    form->addRow(localised("Address:"), lineEdit(contacts.add1, QStringLiteral("add1")));
    form->addRow(QString(), lineEdit(contacts.add2, QStringLiteral("add2")));
    form->addRow(QString(), lineEdit(contacts.add3, QStringLiteral("add3")));
    form->addRow(localised("Postcode:"), lineEdit(contacts.postcode, QStringLiteral("postcode")));
    form->addRow(localised("Phone:"), lineEdit(contacts.phone, QStringLiteral("phone")));
    form->addRow(localised("Mobile:"), lineEdit(contacts.mobile, QStringLiteral("mobile")));
    form->addRow(localised("Fax:"), lineEdit(contacts.fax, QStringLiteral("fax")));
    auto *emailRow = new QHBoxLayout;
    emailRow->addWidget(lineEdit(contacts.email, QStringLiteral("email")), 1);
    QPushButton *send = pushButton(localised("E-mail"), QStringLiteral("sendEmailButton"));
    connect(send, &QPushButton::clicked, this, [this] { contacts.sendEmail(); });
    emailRow->addWidget(send);
    form->addRow(localised("E-mail:"), emailRow);
    form->addRow(localised("Type"), popUp(contacts.type, QStringLiteral("type")));
    auto *notes = new QPlainTextEdit;
    notes->setObjectName(QStringLiteral("comments"));
    notes->setTabChangesFocus(true);
    binding::bind(contacts.comments, notes);
    form->addRow(QString(), notes);

    auto *postal = new QHBoxLayout;
    QPushButton *copy = pushButton(localised("Copy Address"), QStringLiteral("copyContactButton"));
    connect(copy, &QPushButton::clicked, this, [this] { contacts.copyContact(); });
    QPushButton *paste = pushButton(localised("Paste Address"), QStringLiteral("pasteContactButton"));
    connect(paste, &QPushButton::clicked, this, [this] { contacts.pasteContact(); });
    // The contact becomes a company's person, or a company, and opens in
    // that editor where this window is.
    QPushButton *link = pushButton(localised("Link to Company"), QStringLiteral("linkToCompanyButton"));
    connect(link, &QPushButton::clicked, this, [this] { contacts.linkToCompany(); });
    QPushButton *company = pushButton(localised("Make Company"), QStringLiteral("makeCompanyButton"));
    connect(company, &QPushButton::clicked, this, [this] { contacts.makeCompany(); });
    postal->addWidget(copy);
    postal->addWidget(paste);
    postal->addStretch(1);
    postal->addWidget(link);
    postal->addWidget(company);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(localised("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton *cancelling = buttons->addButton(localised("Cancel"), QDialogButtonBox::RejectRole);
    cancelling->setObjectName(QStringLiteral("cancelButton"));
    cancelling->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, [this] { contacts.finish(); });
    connect(cancelling, &QPushButton::clicked, this, &ContactEditorWindow::reject);

    auto *columns = new QHBoxLayout;
    columns->addLayout(form, 1);
    columns->addWidget(new ContactReportsView(*contacts.reports), 1);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(postal);
    layout->addWidget(buttons);

    binding::bind(contacts.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelContactEditorWindowGeometry"), QSize(860, 560));
}

ContactEditorWindow::~ContactEditorWindow() = default;

void ContactEditorWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    nameEdit->setFocus(Qt::OtherFocusReason);
}

void ContactEditorWindow::reject()
{
    contacts.cancel();
    if (isVisible())
        QDialog::reject();
}
