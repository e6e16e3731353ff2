#include "contacts/widgets/ContactEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/ContactTabView.h"
#include "platform/Localised.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using editor::pushButton;
using platform::localised;

ContactEditorWindow::ContactEditorWindow(ContactManager &manager, TabView *tabsOutlet, QWidget *parent)
    : EditorDialog(
        QStringLiteral("contactEditorWindow"), localised("Contact"), [owner = &manager] { owner->cancel(); }, parent),
      contacts(manager)
{
    auto *details = new QWidget;
    auto *layout = new QFormLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    editor::Form form{layout};
    form.popUp(contacts.title, QStringLiteral("title"), localised("Title:"), true);
    firstField = form.field(contacts.name, QStringLiteral("name"), localised("Name:"));
    form.field(contacts.add1, QStringLiteral("add1"), localised("Address:"));
    form.field(contacts.add2, QStringLiteral("add2"), QString());
    form.field(contacts.add3, QStringLiteral("add3"), QString());
    form.field(contacts.postcode, QStringLiteral("postcode"), localised("Postcode:"));
    form.field(contacts.phone, QStringLiteral("phone"), localised("Phone:"));
    form.field(contacts.mobile, QStringLiteral("mobile"), localised("Mobile:"));
    form.field(contacts.fax, QStringLiteral("fax"), localised("Fax:"));
    layout->addRow(localised("E-mail:"),
                   editor::row({editor::lineEdit(contacts.email, QStringLiteral("email")),
                                editor::emailButton([this] { contacts.sendEmail(); })},
                               1));
    form.popUp(contacts.type, QStringLiteral("type"), localised("Type"));

    auto *tabs = new ContactTabView(details, editor::notes(contacts.comments, QStringLiteral("comments")),
                                    *contacts.reports, tabsOutlet);
    tabs->setObjectName(QStringLiteral("contactTabView"));

    auto *postal = editor::leftRow({editor::copyAddressButton([this] { contacts.copyContact(); }),
                                    pushButton(localised("Paste Address"), QStringLiteral("pasteContactButton"),
                                               [this] { contacts.pasteContact(); })});
    // The contact becomes a company's person, or a company, and opens in
    // that editor where this window is.
    postal->addWidget(pushButton(localised("Link to Company"), QStringLiteral("linkToCompanyButton"),
                                 [this] { contacts.linkToCompany(); }));
    postal->addWidget(
        pushButton(localised("Make Company"), QStringLiteral("makeCompanyButton"), [this] { contacts.makeCompany(); }));

    auto *body = new QVBoxLayout;
    body->addWidget(tabs);
    layOut(body, postal, [this] { contacts.finish(); });
    attach(contacts.editorWindow, QStringLiteral("QuorvelContactEditorWindowGeometry"), QSize(640, 520));
}

ContactEditorWindow::~ContactEditorWindow() = default;
