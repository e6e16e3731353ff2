#include "contacts/widgets/CompanyContactEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/widgets/ContactTabView.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;

CompanyContactEditorWindow::CompanyContactEditorWindow(CompanyContactEditor &editor, TabView *tabsOutlet,
                                                       QWidget *parent)
    : EditorDialog(
        QStringLiteral("companyContactEditorWindow"), localised("Company Contact"),
        [owner = &editor] { owner->cancel(); }, parent),
      people(editor)
{
    QWidget *details = makeDetails();
    QPlainTextEdit *notes = editor::notes(people.comments, QStringLiteral("comments"));
    auto *tabs = new ContactTabView(details, notes, *people.reports, tabsOutlet);
    tabs->setObjectName(QStringLiteral("companyContactTabView"));
    auto *body = new QVBoxLayout;
    body->addWidget(tabs);
    QPushButton *copy = editor::copyAddressButton([this] { people.copyContact(); });
    tabChain << notes << tabs->orderTable() << tabs->itemTable() << copy;
    layOut(body, editor::leftRow({copy}), [this] { people.finish(); });
    attach(people.editorWindow, QStringLiteral("QuorvelCompanyContactEditorWindowGeometry"), QSize(640, 600));
}

CompanyContactEditorWindow::~CompanyContactEditorWindow() = default;

QWidget *CompanyContactEditorWindow::makeDetails()
{
    auto *details = new QWidget;
    auto *layout = new QFormLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    editor::Form form{layout, &tabChain};
    form.popUp(people.title, QStringLiteral("title"), localised("Title:"), true);
    firstField = form.field(people.name, QStringLiteral("name"), localised("Name:"));
    form.field(people.jobtitle, QStringLiteral("jobtitle"), localised("Job title:"));

    // The company: the address lines, postcode and phone below follow the
    // company chosen here (the editor answers the menu's choice).
    QComboBox *company = editor::popUp(people.company, QStringLiteral("company"));
    company->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    company->setMinimumContentsLength(16);
    form.withButton(localised("Company:"), company,
                    editor::pushButton(localised("Edit Company"), QStringLiteral("editCompanyButton"),
                                       [this] { people.editCompanyButton(); }));

    form.field(people.add1, QStringLiteral("add1"), localised("Address:"));
    form.field(people.add2, QStringLiteral("add2"), QString());
    form.field(people.add3, QStringLiteral("add3"), QString());
    form.field(people.postcode, QStringLiteral("postcode"), localised("Postcode:"));
    form.field(people.phone, QStringLiteral("phone"), localised("Phone:"));
    form.field(people.extension, QStringLiteral("extension"), localised("Extension:"));
    form.field(people.mobile, QStringLiteral("mobile"), localised("Mobile:"));
    form.field(people.fax, QStringLiteral("fax"), localised("Fax:"));
    form.withButton(localised("E-mail:"), editor::lineEdit(people.email, QStringLiteral("email")),
                    editor::emailButton([this] { people.sendEmail(); }));
    form.field(people.website, QStringLiteral("website"), localised("Website:"));
    form.popUp(people.type, QStringLiteral("type"), localised("Type:"));
    return details;
}
