#include "contacts/CompanyEditor.h"

#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "store/QuorvelServices.h"

CompanyEditor::CompanyEditor(QuorvelServices *controller, QObject *parent)
    : QObject(parent),
      ContactFields(this),
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
    const auto contact = std::make_shared<Contact>();
    contact->makeCompany();
    contacts->add(contact);
    contacts->reloadData();
    setItem(contact.get());
    show();
}

void CompanyEditor::setItem(Contact *contact)
{
    currentItem = shareOf(contact);
    if (!contact)
        return;
    // The people's table lists the people of the contact manager's current
    // contact: this company.
    if (ContactManager *contacts = contactManager())
        contacts->setCurrentItem(contact);
    fillOwnFields(*contact);
    fillAddress(*contact);
    website->setStringValue(contact->getWebsite());
    tableView->reloadData();
}

// The form of address and the mobile number are not stored back.
void CompanyEditor::finish()
{
    const std::shared_ptr<Contact> contact = currentItem;
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
    if (quorvel)
        quorvel->writeDatabase(contactManager());
}
