#include "contacts/CompanyEditor.h"

#include "app/Quorvel.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Workspace.h"

using namespace Qt::Literals::StringLiterals;

CompanyEditor::CompanyEditor(Quorvel *controller, QObject *parent)
    : QObject(parent),
      editorWindow(new Window(this)),
      name(new TextField(this)),
      add1(new TextField(this)),
      add2(new TextField(this)),
      add3(new TextField(this)),
      postcode(new TextField(this)),
      phone(new TextField(this)),
      mobile(new TextField(this)),
      fax(new TextField(this)),
      email(new TextField(this)),
      type(new PopUp(this)),
      title(new PopUp(this)),
      website(new TextField(this)),
      comments(new TextView(this)),
      quorvel(controller)
{
    // The people's table is the contact manager's: it supplies the rows and
    // opens a double-clicked person.
    ContactManager *contacts = contactManager();
    tableView = contacts ? contacts->getTableView() : new TableView(this);
}

ContactManager *CompanyEditor::contactManager() const
{
    return quorvel ? quorvel->getContactManager() : nullptr;
}

// The new company is in the list from the start, so it stays there (empty)
// when the editor is cancelled.
void CompanyEditor::create()
{
    ContactManager *contacts = contactManager();
    if (!contacts)
        return;
    creating = true;
    auto *contact = new Contact;
    contact->makeCompany();
    contacts->add(contact);
    contacts->reloadData();
    setItem(contact);
    show();
}

void CompanyEditor::edit(Contact *contact)
{
    setItem(contact);
    show();
}

void CompanyEditor::setItem(Contact *contact)
{
    currentItem = contact;
    if (!contact)
        return;
    // The people's table lists the people of the contact manager's current
    // contact: this company.
    if (ContactManager *contacts = contactManager())
        contacts->setCurrentItem(contact);
    title->selectItemWithTitle(contact->getTitle());
    comments->setString(contact->getComments());
    name->setStringValue(contact->getName());
    add1->setStringValue(contact->getAdd1());
    add2->setStringValue(contact->getAdd2());
    add3->setStringValue(contact->getAdd3());
    postcode->setStringValue(contact->getPostcode());
    email->setStringValue(contact->getEmail());
    fax->setStringValue(contact->getFax());
    mobile->setStringValue(contact->getMobile());
    phone->setStringValue(contact->getPhone());
    type->selectItemWithTitle(contact->getType());
    website->setStringValue(contact->getWebsite());
    tableView->reloadData();
}

// The form of address and the mobile number are not stored back.
void CompanyEditor::finish()
{
    Contact *contact = currentItem;
    if (!contact)
        return;
    contact->setComments(comments->string());
    contact->setName(name->stringValue());
    contact->setAdd1(add1->stringValue());
    contact->setAdd2(add2->stringValue());
    contact->setAdd3(add3->stringValue());
    contact->setPostcode(postcode->stringValue());
    contact->setEmail(email->stringValue());
    contact->setFax(fax->stringValue());
    contact->setPhone(phone->stringValue());
    contact->setWebsite(website->stringValue());
    const QString chosenType = type->titleOfSelectedItem();
    if (!chosenType.isEmpty())
        contact->setType(chosenType);
    hide();
    if (ContactManager *contacts = contactManager()) {
        contacts->companyHasChanged();
        contacts->reloadData();
    }
    // The contacts file is written with the next save of the contacts.
    if (quorvel)
        quorvel->setChangeFlag();
}

void CompanyEditor::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void CompanyEditor::hide()
{
    editorWindow->orderOut();
}

void CompanyEditor::copyContact()
{
    platform::setPasteboardString(ContactManager::postalBlock(currentItem));
}

void CompanyEditor::sendEmail()
{
    if (currentItem)
        platform::openUrl(u"mailto:"_s + email->stringValue());
}
