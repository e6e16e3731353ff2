#include "contacts/widgets/CompanyEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/CompanyEditor.h"
#include "platform/Localised.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;

CompanyEditorWindow::CompanyEditorWindow(CompanyEditor &editor, QWidget *parent)
    : EditorDialog(
        QStringLiteral("companyEditorWindow"), localised("Company"), [owner = &editor] { owner->cancel(); }, parent),
      companies(editor)
{
    auto *columns = new QHBoxLayout;
    columns->addWidget(makeDetails(), 1);
    columns->addWidget(makePeople(), 1);
    QPushButton *copy = editor::copyAddressButton([this] { companies.copyContact(); });
    tabChain << copy;
    layOut(columns, editor::leftRow({copy}), [this] { companies.finish(); });
    attach(companies.editorWindow, QStringLiteral("QuorvelCompanyEditorWindowGeometry"), QSize(820, 560));
}

CompanyEditorWindow::~CompanyEditorWindow() = default;

QWidget *CompanyEditorWindow::makeDetails()
{
    auto *details = new QWidget;
    auto *layout = new QFormLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    editor::Form form{layout, &tabChain};
    form.popUp(companies.title, QStringLiteral("title"), localised("Title:"), true);
    firstField = form.field(companies.name, QStringLiteral("name"), localised("Name:"));
    form.field(companies.add1, QStringLiteral("add1"), localised("Address:"));
    form.field(companies.add2, QStringLiteral("add2"), QString());
    form.field(companies.add3, QStringLiteral("add3"), QString());
    form.field(companies.postcode, QStringLiteral("postcode"), localised("Postcode:"));
    form.field(companies.phone, QStringLiteral("phone"), localised("Phone:"));
    form.field(companies.mobile, QStringLiteral("mobile"), localised("Mobile:"));
    form.field(companies.fax, QStringLiteral("fax"), localised("Fax:"));
    form.withButton(localised("E-mail:"), editor::lineEdit(companies.email, QStringLiteral("email")),
                    editor::emailButton([this] { companies.sendEmail(); }));
    form.field(companies.website, QStringLiteral("website"), localised("Website:"));
    form.popUp(companies.type, QStringLiteral("type"), localised("Type:"));
    form.notes(companies.comments, QStringLiteral("comments"), localised("Notes:"));
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
    layout->addWidget(editor::labelFor(localised("People:"), people));
    layout->addWidget(people, 1);
    return box;
}
