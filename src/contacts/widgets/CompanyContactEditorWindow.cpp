#include "contacts/widgets/CompanyContactEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/widgets/ContactReportsView.h"
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

CompanyContactEditorWindow::CompanyContactEditorWindow(CompanyContactEditor &editor, QWidget *parent)
    : QDialog(parent), people(editor)
{
    setObjectName(QStringLiteral("companyContactEditorWindow"));
    setWindowTitle(localised("Company Contact"));
    setModal(false);
    setSizeGripEnabled(true);

    auto *columns = new QHBoxLayout;
    columns->addWidget(makeDetails(), 1);
    columns->addWidget(makeReports(), 1);

    QPushButton *copy = pushButton(localised("Copy Address"), QStringLiteral("copyContactButton"));
    connect(copy, &QPushButton::clicked, this, [this] { people.copyContact(); });
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
    connect(ok, &QPushButton::clicked, this, [this] { people.finish(); });
    connect(cancelling, &QPushButton::clicked, this, &CompanyContactEditorWindow::reject);
    tabChain << copy << ok << cancelling;

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(postal);
    layout->addWidget(buttons);
    for (int i = 1; i < tabChain.size(); ++i)
        setTabOrder(tabChain.at(i - 1), tabChain.at(i));

    binding::bind(people.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelCompanyContactEditorWindowGeometry"), QSize(900, 600));
}

CompanyContactEditorWindow::~CompanyContactEditorWindow() = default;

QWidget *CompanyContactEditorWindow::makeDetails()
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

    popUp(people.title, QStringLiteral("title"), localised("Title:"));
    nameEdit = field(people.name, QStringLiteral("name"), localised("Name:"));
    field(people.jobtitle, QStringLiteral("jobtitle"), localised("Job title:"));

    // The company: the address lines, postcode and phone below follow the
    // company chosen here (the editor answers the menu's choice).
    QComboBox *company = editor::popUp(people.company, QStringLiteral("company"));
    company->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    company->setMinimumContentsLength(16);
    QPushButton *editCompany = pushButton(localised("Edit Company"), QStringLiteral("editCompanyButton"));
    connect(editCompany, &QPushButton::clicked, this, [this] { people.editCompanyButton(); });
    auto *companyRow = new QHBoxLayout;
    companyRow->addWidget(company, 1);
    companyRow->addWidget(editCompany);
    form->addRow(labelFor(localised("Company:"), company), companyRow);
    tabChain << company << editCompany;

    field(people.add1, QStringLiteral("add1"), localised("Address:"));
    field(people.add2, QStringLiteral("add2"), QString());
    field(people.add3, QStringLiteral("add3"), QString());
    field(people.postcode, QStringLiteral("postcode"), localised("Postcode:"));
    field(people.phone, QStringLiteral("phone"), localised("Phone:"));
    field(people.extension, QStringLiteral("extension"), localised("Extension:"));
    field(people.mobile, QStringLiteral("mobile"), localised("Mobile:"));
    field(people.fax, QStringLiteral("fax"), localised("Fax:"));

    QLineEdit *email = editor::lineEdit(people.email, QStringLiteral("email"));
    QPushButton *send = pushButton(localised("E-mail"), QStringLiteral("sendEmailButton"));
    connect(send, &QPushButton::clicked, this, [this] { people.sendEmail(); });
    auto *emailRow = new QHBoxLayout;
    emailRow->addWidget(email, 1);
    emailRow->addWidget(send);
    form->addRow(labelFor(localised("E-mail:"), email), emailRow);
    tabChain << email << send;

    field(people.website, QStringLiteral("website"), localised("Website:"));
    popUp(people.type, QStringLiteral("type"), localised("Type:"));

    auto *notes = new QPlainTextEdit;
    notes->setObjectName(QStringLiteral("comments"));
    notes->setTabChangesFocus(true);
    binding::bind(people.comments, notes);
    form->addRow(labelFor(localised("Notes:"), notes), notes);
    tabChain << notes;
    return details;
}

QWidget *CompanyContactEditorWindow::makeReports()
{
    auto *reports = new ContactReportsView(*people.reports);
    tabChain << reports->orderTable() << reports->itemTable();
    return reports;
}

void CompanyContactEditorWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    nameEdit->setFocus(Qt::OtherFocusReason);
}

void CompanyContactEditorWindow::reject()
{
    people.cancel();
    if (isVisible())
        QDialog::reject();
}
