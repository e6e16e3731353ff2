#include "contacts/CompanyContactEditor.h"

#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "store/QuorvelServices.h"

using namespace Qt::Literals::StringLiterals;

namespace {
const QString companyKind = u"Company"_s;
}  // namespace

CompanyContactEditor::CompanyContactEditor(QuorvelServices *controller, ContactManager *contacts, QObject *parent)
    : QObject(parent),
      ContactFields(this),
      company(new PopUp(this)),
      extension(new TextField(this)),
      jobtitle(new TextField(this)),
      reports(new OpenContactReports(controller, this)),
      quorvel(controller),
      contactManager(contacts)
{
    // Choosing another company shows that company's address and phone.
    connect(company, &PopUp::activated, this, [this] { populateCompanyFields(); });
}

void CompanyContactEditor::setItem(Contact *contact)
{
    currentItem = shareOf(contact);
    if (!contact)
        return;
    populateCompanyMenu();
    // The address lines, postcode and phone shown are the company's; a
    // person with no company yet shows its own until one is chosen.
    if (company->indexOfSelectedItem() >= 0)
        populateCompanyFields();
    else
        fillAddress(*contact);
    fillOwnFields(*contact);
    jobtitle->setStringValue(contact->getJobTitle());
    extension->setStringValue(contact->getExtension());
    website->setStringValue(contact->getWebsite());
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
    // With no company of that id nothing is chosen: the user chooses, and
    // finishing without a choice leaves the person's company as it is.
    company->selectItemAtIndex(chosen);
}

void CompanyContactEditor::populateCompanyFields()
{
    const Contact *chosen = getCompanyByName(company->titleOfSelectedItem());
    if (chosen)
        fillAddress(*chosen);
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
// fields, and keeps the extension and web address typed; the type is not
// stored back. The contacts are written at once.
void CompanyContactEditor::finish()
{
    const std::shared_ptr<Contact> contact = currentItem;
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
    contact->setExtension(extension->stringValue());
    contact->setWebsite(website->stringValue());
    hide();
    if (contactManager)
        contactManager->reloadData();
    if (quorvel)
        quorvel->writeDatabase(contactManager);
}
