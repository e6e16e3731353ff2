#include "contacts/widgets/CompanyEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/CompanyEditor.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;
using editor::labelFor;
using editor::pushButton;

CompanyEditorWindow::CompanyEditorWindow(CompanyEditor &editor, QWidget *parent)
    : QDialog(parent), companies(editor)
{
    setObjectName(QStringLiteral("companyEditorWindow"));
    setWindowTitle(localised("Company"));
    setModal(false);
    setSizeGripEnabled(true);

    auto *columns = new QHBoxLayout;
    columns->addWidget(makeDetails(), 1);
    columns->addWidget(makePeople(), 1);

    QPushButton *copy = pushButton(localised("Copy Address"), QStringLiteral("copyContactButton"));
    connect(copy, &QPushButton::clicked, this, [this] { companies.copyContact(); });
    auto *postal = new QHBoxLayout;
    postal->addWidget(copy);
    postal->addStretch(1);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(localised("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton *cancelling = buttons->addButton(localised("Cancel"), QDialogButtonBox::RejectRole);
    cancelling->setObjectName(QStringLiteral("cancelButton"));
    cancelling->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, [this] { companies.finish(); });
    connect(cancelling, &QPushButton::clicked, this, &CompanyEditorWindow::reject);
    tabChain << copy << ok << cancelling;

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(postal);
    layout->addWidget(buttons);
    for (int i = 1; i < tabChain.size(); ++i)
        setTabOrder(tabChain.at(i - 1), tabChain.at(i));

    binding::bind(companies.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelCompanyEditorWindowGeometry"), QSize(820, 560));
}

CompanyEditorWindow::~CompanyEditorWindow() = default;

QWidget *CompanyEditorWindow::makeDetails()
{
    auto *details = new QWidget;
    auto *form = new QFormLayout(details);
    form->setContentsMargins(0, 0, 0, 0);
    const auto field = [this, form](TextField *outlet, const QString &objectName, const QString &label) {
        QLineEdit *edit = editor::lineEdit(outlet, objectName);
        if (label.isEmpty())
            form->addRow(QString(), edit);  // a further line of the row above
        else
            form->addRow(labelFor(label, edit), edit);
        tabChain << edit;
        return edit;
    };
    const auto popUp = [this, form](PopUp *outlet, const QString &objectName, const QString &label) {
        QComboBox *combo = editor::popUp(outlet, objectName);
        form->addRow(labelFor(label, combo), combo);
        tabChain << combo;
    };

    popUp(companies.title, QStringLiteral("title"), localised("Title:"));
    nameEdit = field(companies.name, QStringLiteral("name"), localised("Name:"));
    field(companies.add1, QStringLiteral("add1"), localised("Address:"));
    field(companies.add2, QStringLiteral("add2"), QString());
    field(companies.add3, QStringLiteral("add3"), QString());
    field(companies.postcode, QStringLiteral("postcode"), localised("Postcode:"));
    field(companies.phone, QStringLiteral("phone"), localised("Phone:"));
    field(companies.mobile, QStringLiteral("mobile"), localised("Mobile:"));
    field(companies.fax, QStringLiteral("fax"), localised("Fax:"));

    QLineEdit *email = editor::lineEdit(companies.email, QStringLiteral("email"));
    QPushButton *send = pushButton(localised("E-mail"), QStringLiteral("sendEmailButton"));
    connect(send, &QPushButton::clicked, this, [this] { companies.sendEmail(); });
    auto *emailRow = new QHBoxLayout;
    emailRow->addWidget(email, 1);
    emailRow->addWidget(send);
    form->addRow(labelFor(localised("E-mail:"), email), emailRow);
    tabChain << email << send;

    field(companies.website, QStringLiteral("website"), localised("Website:"));
    popUp(companies.type, QStringLiteral("type"), localised("Type:"));

    auto *notes = new QPlainTextEdit;
    notes->setObjectName(QStringLiteral("comments"));
    notes->setTabChangesFocus(true);
    binding::bind(companies.comments, notes);
    form->addRow(labelFor(localised("Notes:"), notes), notes);
    tabChain << notes;
    return details;
}

QWidget *CompanyEditorWindow::makePeople()
{
    auto *box = new QWidget;
    people = new integrityTableView;
    people->setObjectName(QStringLiteral("tableView"));
    people->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // A double click or Enter on a person opens them in their own editor
    // (the contact manager answers the table's double click).
    binding::bind(companies.tableView, people);
    tabChain << people;

    auto *layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelFor(localised("People:"), people));
    layout->addWidget(people, 1);
    return box;
}

void CompanyEditorWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    nameEdit->setFocus(Qt::OtherFocusReason);
}

void CompanyEditorWindow::reject()
{
    companies.cancel();
    if (isVisible())
        QDialog::reject();
}
