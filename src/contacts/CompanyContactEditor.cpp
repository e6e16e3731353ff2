#include "contacts/CompanyContactEditor.h"

#include "app/Quorvel.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Workspace.h"

using namespace Qt::Literals::StringLiterals;

namespace {
const QString companyKind = u"Company"_s;
}  // namespace

CompanyContactEditor::CompanyContactEditor(Quorvel *controller, ContactManager *contacts, QObject *parent)
    : QObject(parent),
      editorWindow(new Window(this)),
      name(new TextField(this)),
      add1(new TextField(this)),
      add2(new TextField(this)),
      add3(new TextField(this)),
      company(new PopUp(this)),
      extension(new TextField(this)),
      jobtitle(new TextField(this)),
      postcode(new TextField(this)),
      phone(new TextField(this)),
      mobile(new TextField(this)),
      fax(new TextField(this)),
      email(new TextField(this)),
      type(new PopUp(this)),
      title(new PopUp(this)),
      website(new TextField(this)),
      comments(new TextView(this)),
      reports(new OpenContactReports(controller, this)),
      quorvel(controller),
      contactManager(contacts)
{
    // Choosing another company shows that company's address and phone.
    connect(company, &PopUp::activated, this, [this] { populateCompanyFields(); });
}

void CompanyContactEditor::edit(Contact *contact)
{
    setItem(contact);
    show();
}

void CompanyContactEditor::setItem(Contact *contact)
{
    currentItem = contact;
    if (!contact)
        return;
    populateCompanyMenu();
    // The address lines, postcode and phone shown are the company's.
    populateCompanyFields();
    title->selectItemWithTitle(contact->getTitle());
    jobtitle->setStringValue(contact->getJobTitle());
    comments->setString(contact->getComments());
    name->setStringValue(contact->getName());
    email->setStringValue(contact->getEmail());
    extension->setStringValue(contact->getExtension());
    fax->setStringValue(contact->getFax());
    mobile->setStringValue(contact->getMobile());
    website->setStringValue(contact->getWebsite());
    type->selectItemWithTitle(contact->getType());
    reports->run(contact);
}

void CompanyContactEditor::populateCompanyMenu()
{
    company->removeAllItems();
    if (!contactManager)
        return;
    const int wanted = currentItem ? currentItem->getCompany() : 0;
    int chosen = -1;
    for (int i = 0; i < contactManager->getCount(); ++i) {
        const auto *contact = static_cast<const Contact *>(contactManager->getnthItem(i));
        if (contact->getKind() != companyKind)
            continue;
        if (chosen < 0 && currentItem && contact->getID() == wanted)
            chosen = company->numberOfItems();
        company->addItem(contact->getName());
    }
    // With no company of that id the menu shows its first entry.
    if (chosen >= 0)
        company->selectItemAtIndex(chosen);
}

void CompanyContactEditor::populateCompanyFields()
{
    const Contact *chosen = getCompanyByName(company->titleOfSelectedItem());
    if (!chosen)
        return;
    add1->setStringValue(chosen->getAdd1());
    add2->setStringValue(chosen->getAdd2());
    add3->setStringValue(chosen->getAdd3());
    postcode->setStringValue(chosen->getPostcode());
    phone->setStringValue(chosen->getPhone());
}

Contact *CompanyContactEditor::getCompanyByName(const QString &text) const
{
    if (text.isNull() || !contactManager)
        return nullptr;
    for (int i = 0; i < contactManager->getCount(); ++i) {
        auto *contact = static_cast<Contact *>(contactManager->getnthItem(i));
        if (contact->getKind() == companyKind && contact->getName() == text)
            return contact;
    }
    return nullptr;
}

void CompanyContactEditor::editCompanyButton()
{
    Contact *chosen = getCompanyByName(company->titleOfSelectedItem());
    if (chosen && contactManager)
        contactManager->editThisContact(chosen);
}

// The person takes over the company's address and phone shown in the
// fields. The extension, web address and type are not stored back.
void CompanyContactEditor::finish()
{
    Contact *contact = currentItem;
    if (!contact)
        return;
    if (company->indexOfSelectedItem() >= 0) {
        const Contact *chosen = getCompanyByName(company->titleOfSelectedItem());
        contact->setCompany(chosen ? chosen->getID() : 0);
    }
    contact->setTitle(title->titleOfSelectedItem());
    contact->setJobTitle(jobtitle->stringValue());
    contact->setComments(comments->string());
    contact->setName(name->stringValue());
    contact->setAdd1(add1->stringValue());
    contact->setAdd2(add2->stringValue());
    contact->setAdd3(add3->stringValue());
    contact->setPostcode(postcode->stringValue());
    contact->setEmail(email->stringValue());
    contact->setFax(fax->stringValue());
    contact->setMobile(mobile->stringValue());
    contact->setPhone(phone->stringValue());
    hide();
    if (contactManager)
        contactManager->reloadData();
    // The contacts file is written with the next save of the contacts.
    if (quorvel)
        quorvel->setChangeFlag();
}

void CompanyContactEditor::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void CompanyContactEditor::hide()
{
    editorWindow->orderOut();
}

void CompanyContactEditor::copyContact()
{
    platform::setPasteboardString(ContactManager::postalBlock(currentItem));
}

void CompanyContactEditor::sendEmail()
{
    if (currentItem)
        platform::openUrl(u"mailto:"_s + email->stringValue());
}
