#include "contacts/ContactManager.h"

#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactKinds.h"
#include "platform/Alerts.h"
#include "platform/Localised.h"
#include "platform/Numbers.h"
#include "platform/Workspace.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;
using platform::localised;

using namespace contacts;

namespace {

// The outline's columns shown under the list's field names.
QString outlineColumnFor(const QString &columnId)
{
    if (columnId == u"1" || columnId == u"name")
        return u"1"_s;
    if (columnId == u"2" || columnId == u"add1")
        return u"2"_s;
    if (columnId == u"3" || columnId == u"type")
        return u"3"_s;
    return QString();
}

// Where the editor windows hand their place on screen to one another.
const QString contactWindowsFrame = u"ContactWindows"_s;

}  // namespace

// The rows of the open company's people: the table asks the manager, and
// the collection's export writes what the table shows.
class ContactManager::CompanyContactsSource : public kdDataSource
{
public:
    explicit CompanyContactsSource(const ContactManager &owner)
        : contacts(owner)
    { }

    int numberOfRowsInTableView() const override
    {
        const Contact *company = contacts.getCurrentItem();
        return contacts.countContactsforThisCompany(company ? company->getID() : 0);
    }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        const Contact *company = contacts.getCurrentItem();
        const Contact *person = contacts.getnthContact(row, company ? company->getID() : 0);
        return person ? person->getFieldByName(columnId) : u""_s;
    }

private:
    const ContactManager &contacts;
};

ContactManager::ContactManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, u"contacts"_s, u"Delete contact"_s, parent),
      ContactFields(this),
      typeFilter(new PopUp(this)),
      reports(new OpenContactReports(controller, this)),
      companyContacts(new TableView(this)),
      companyContactsSource(std::make_unique<CompanyContactsSource>(*this))
{
    typeFilter->addItems({localised("All"), localised("Customer"), localised("Supplier")});
    typeFilter->selectItemAtIndex(0);
    connect(typeFilter, &PopUp::activated, this, [this] { filter(); });

    QList<TableColumn> columns = TableView::columnsFrom(
        {{"name", "Name"}, {"jobTitle", "Job Title"}, {"extension", "Extension"}, {"email", "Email"}});
    for (TableColumn &column : columns)
        column.title = localised(column.title);
    companyContacts->setColumns(columns);
    companyContacts->setLastColumnFills(true);
    companyContacts->setDataSource(companyContactsSource.get());
    connect(companyContacts, &TableView::doubleClicked, this, [this] { companyContactDoubleClick(); });
}

ContactManager::~ContactManager()
{
    // The table (a child object) goes after its source: it must not ask it.
    companyContacts->setDataSource(nullptr);
}

// --- the outline -----------------------------------------------------------

bool ContactManager::isTopLevel(const Contact *contact) const
{
    return !isCompanyContact(contact);
}

bool ContactManager::isVisibleTopLevel(const Contact *contact) const
{
    return isTopLevel(contact) && contact->getVisible();
}

int ContactManager::numberOfChildrenOfItem(const Contact *item) const
{
    return item ? countContactsforThisCompany(item->getID()) : countVisibleCompanies();
}

Contact *ContactManager::child(int index, const Contact *item) const
{
    return item ? getnthContact(index, item->getID()) : getnthVisibleCompany(index);
}

bool ContactManager::isItemExpandable(const Contact *item) const
{
    return item && item->getKind() == companyKind;
}

QString ContactManager::objectValueForOutlineColumn(const QString &columnId, const Contact *item) const
{
    if (!item)
        return u""_s;
    if (columnId == u"1")
        return item->getName();
    if (columnId == u"2") {
        if (isCompanyContact(item) || item->getAdd1().isEmpty())
            return u""_s;
        return u" "_s + item->getAdd1();
    }
    if (columnId == u"3") {
        if (isCompanyContact(item) || item->getType() == u"Other")
            return u""_s;
        return item->getType();
    }
    return u""_s;
}

bool ContactManager::isExpanded(const Contact *company) const
{
    return company && isItemExpandable(company) && !collapsed.contains(company->getID());
}

void ContactManager::setExpanded(const Contact *company, bool expanded)
{
    if (!company)
        return;
    if (expanded)
        collapsed.remove(company->getID());
    else
        collapsed.insert(company->getID());
    reloadData();
}

// The rows are built in one pass over the collection and kept until the
// list is filtered, sorted or reloaded, or its records change.
void ContactManager::ensureRows() const
{
    if (rowsValid && rowsGeneration == getGeneration())
        return;
    rows.clear();
    QHash<int, std::vector<Contact *>> people;
    for (const auto &record : records()) {
        Contact *contact = asContact(record.get());
        if (isCompanyContact(contact))
            people[contact->getCompany()].push_back(contact);
    }
    for (const auto &record : records()) {
        Contact *contact = asContact(record.get());
        if (!isVisibleTopLevel(contact))
            continue;
        rows.push_back(contact);
        if (isExpanded(contact)) {
            const auto found = people.constFind(contact->getID());
            if (found != people.constEnd())
                rows.insert(rows.end(), found->begin(), found->end());
        }
    }
    rowsGeneration = getGeneration();
    rowsValid = true;
}

Contact *ContactManager::contactAtRow(int row) const
{
    ensureRows();
    return row >= 0 && size_t(row) < rows.size() ? rows[size_t(row)] : nullptr;
}

int ContactManager::numberOfRowsInTableView() const
{
    ensureRows();
    return int(rows.size());
}

QString ContactManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    const Contact *contact = contactAtRow(row);
    if (!contact)
        return u""_s;
    const QString outlineColumn = outlineColumnFor(columnId);
    return outlineColumn.isNull() ? contact->getFieldByName(columnId)
                                  : objectValueForOutlineColumn(outlineColumn, contact);
}

void ContactManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    const QString outlineColumn = outlineColumnFor(columnId);
    QString field = columnId;
    if (outlineColumn == u"1")
        field = u"name"_s;
    else if (outlineColumn == u"2")
        field = u"add1"_s;
    else if (outlineColumn == u"3")
        field = u"type"_s;
    sortAsRead(field, ascending, PrefsController::dateFormatOf(quorvel));
    reloadData();
}

// --- the editor of individuals ---------------------------------------------

void ContactManager::create()
{
    creating = true;
    currentItem = std::make_shared<Contact>();
    setItem(currentItem.get());
    show();
}

void ContactManager::createForCurrentOrder()
{
    create();
    creatingForOrder = quorvel ? quorvel->getCurrentOrder() : 0;
}

void ContactManager::edit()
{
    if (Contact *contact = contactAtRow(table->selectedRow()))
        editThisContact(contact);
}

void ContactManager::editThisContact(Contact *contact)
{
    if (!contact)
        return;
    currentItem = shareOf(contact);
    if (contact->getKind() == companyKind) {
        if (CompanyEditor *editor = quorvel ? quorvel->getCompanyEditor() : nullptr)
            editor->edit(contact);
    } else if (isCompanyContact(contact)) {
        if (CompanyContactEditor *editor = quorvel ? quorvel->getCompanyContactEditor() : nullptr)
            editor->edit(contact);
    } else {
        setItem(contact);
        show();
    }
}

void ContactManager::setItem(Contact *contact)
{
    if (!contact)
        return;
    currentItem = shareOf(contact);
    // The web address field is left as it is: this editor does not keep it.
    fillOwnFields(*contact);
    fillAddress(*contact);
    reloadData();
    reports->run(contact);
}

void ContactManager::finish()
{
    const std::shared_ptr<Contact> contact = currentItem;
    if (!contact)
        return;
    contact->setTitle(title->titleOfSelectedItem());
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
    // The web address is not edited here: it stays as the record has it.
    const QString chosenType = type->titleOfSelectedItem();
    if (!chosenType.isEmpty())
        contact->setType(chosenType);
    if (creatingForOrder != 0) {
        if (quorvel)
            quorvel->connectContact(contact.get(), creatingForOrder);
        creatingForOrder = 0;
    }
    if (creating) {
        add(contact);
        creating = false;
    }
    hide();
    filter();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void ContactManager::cancel()
{
    // A new contact is dropped: it was never listed, and nothing holds it
    // once the editor lets go.
    if (creating)
        currentItem.reset();
    creatingForOrder = 0;
    creating = false;
    hide();
}

// --- companies and their people -------------------------------------------

void ContactManager::companyContactDoubleClick()
{
    const int companyId = currentItem ? currentItem->getID() : 0;
    Contact *person = getnthContact(companyContacts->selectedRow(), companyId);
    CompanyContactEditor *editor = quorvel ? quorvel->getCompanyContactEditor() : nullptr;
    if (person && editor)
        editor->edit(person);
}

void ContactManager::editCompanyForCurrentItem()
{
    if (!currentItem)
        return;
    Contact *company = asContact(getItemById(currentItem->getCompany()));
    CompanyEditor *editor = quorvel ? quorvel->getCompanyEditor() : nullptr;
    if (company && editor)
        editor->edit(company);
}

void ContactManager::companyHasChanged()
{
    if (CompanyContactEditor *editor = quorvel ? quorvel->getCompanyContactEditor() : nullptr)
        editor->populateCompanyFields();
}

namespace {

// The contact is stored as it now is (a new one is added to the list), and
// opens in the other editor, which takes this window's place on screen.
template <class Editor, class Change> void handOver(ContactManager &contacts, Editor *editor, Change change)
{
    Contact *contact = contacts.getCurrentItem();
    if (!contact || !editor)
        return;
    const bool wasCreating = contacts.isCreating();
    change(*contact);
    contacts.finish();
    editor->edit(contact);
    contacts.editorWindow->saveFrameUsingName(contactWindowsFrame);
    editor->getEditorWindow()->setFrameUsingName(contactWindowsFrame);
    if (wasCreating)
        editor->setCreating(true);
}

}  // namespace

void ContactManager::linkToCompany()
{
    handOver(*this, quorvel ? quorvel->getCompanyContactEditor() : nullptr,
             [](Contact &contact) { contact.setKind(companyContactKind); });
}

void ContactManager::makeCompany()
{
    handOver(*this, quorvel ? quorvel->getCompanyEditor() : nullptr, [](Contact &contact) { contact.makeCompany(); });
}

// --- the list --------------------------------------------------------------

void ContactManager::reloadData()
{
    rowsChanged();
    table->reloadData();
    companyContacts->reloadData();
}

void ContactManager::filter()
{
    const QString text = searchField->stringValue();
    const QString chosen = typeFilter->titleOfSelectedItem();
    QString wantedType;
    if (!chosen.isNull() && chosen == localised("Customer"))
        wantedType = u"Customer"_s;
    else if (!chosen.isNull() && chosen == localised("Supplier"))
        wantedType = u"Supplier"_s;
    filterBy([&](const dataObject &record) {
        if (!text.isEmpty() && !record.contains(text))
            return false;
        return wantedType.isNull() || static_cast<const Contact &>(record).getType() == wantedType;
    });
    reloadData();
}

void ContactManager::deleteKey()
{
    Contact *contact = contactAtRow(table->selectedRow());
    if (!contact)
        return;
    const int answer = platform::runAlert(localised("Delete contact"),
                                          localised("Do you want to delete the selected item from the database?"),
                                          localised("OK"), localised("Cancel"));
    if (answer == 1)
        deleteRecord(contact);
    if (quorvel)
        quorvel->setChangeFlag();
}

void ContactManager::deleteRecord(dataObject *record)
{
    // The contact's orders keep it: they still show and write it.
    removeWithUndo(record);
}

QString ContactManager::describe(const dataObject &record) const
{
    const bool company = record.getFieldByName(u"kind"_s) == companyKind;
    return (company ? localised("Company") : localised("Contact")) + u' ' + record.getFieldByName(u"name"_s);
}

void ContactManager::pasteContact()
{
    const QString text = platform::pasteboardString();
    QStringList parts = text.split(u'\n');
    if (parts.size() < 2)
        parts = text.split(u'\r');
    // The fields are filled in order until a part is missing.
    name->setStringValue(parts.value(0));
    if (parts.size() < 2)
        return;
    add1->setStringValue(parts.at(1));
    if (parts.size() < 3)
        return;
    add2->setStringValue(parts.at(2));
    if (parts.size() > 4) {
        add3->setStringValue(parts.at(3));
        postcode->setStringValue(parts.at(4));
    } else {
        postcode->setStringValue(parts.last());
    }
}
