#pragma once
// The contacts list and the editor of individuals. The list is a two-level
// outline: individuals and companies at the top, and under each company
// the people who work there ("Company Contact" records), shown whatever
// their own visible flag. The table of the contacts tab shows the
// outline's rows: each visible top-level record, followed by its people
// when it is an expanded company. Companies and their people are edited in
// their own editors (the controller's CompanyEditor and
// CompanyContactEditor); this manager hands records to them. The
// individuals' editor is this manager's own ContactFields.
#include "contacts/ContactFields.h"
#include "store/ListManager.h"

#include <QSet>
#include <memory>
#include <vector>

#include "contacts/Contact.h"
#include "contacts/OpenContactReports.h"

class ContactManager : public ListManager, public ContactFields
{
    Q_OBJECT
public:
    explicit ContactManager(QuorvelServices *controller, QObject *parent = nullptr);
    ~ContactManager() override;

    // The view of the contacts tab.
    TableView *getCompanyOutline() const { return table; }

    // The outline. `nullptr` stands for the root.
    int numberOfChildrenOfItem(const Contact *item) const;
    Contact *child(int index, const Contact *item) const;
    bool isItemExpandable(const Contact *item) const;
    // Column "1" is the name, "2" " add1" (none for a company's person),
    // "3" the type with "Other" shown as "" (none for a company's person).
    QString objectValueForOutlineColumn(const QString &columnId, const Contact *item) const;
    // Companies start expanded; collapsing one hides its people from the
    // rows of the table.
    bool isExpanded(const Contact *company) const;
    void setExpanded(const Contact *company, bool expanded);
    // The record shown in that row of the table, none outside.
    Contact *contactAtRow(int row) const;

    int numberOfRowsInTableView() const override;
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    void didClickTableColumn(const QString &columnId, bool ascending) override;

    // Counting and lookups, in collection order.
    int countCompanies() const;
    int countSuppliers() const;
    int countVisibleCompanies() const;
    int countContactsforThisCompany(int companyId) const;
    Contact *getnthCompany(int n) const;
    Contact *getnthSupplier(int n) const;
    Contact *getnthVisibleCompany(int n) const;
    Contact *getnthContact(int n, int companyId) const;
    // The first contact with that id ("%i" text), none when there is none.
    Contact *getContactbyId(const QString &id) const;
    // The first contact whose name equals the text exactly, none when none.
    Contact *getContactbyName(const QString &name) const;
    void setCurrentItem(Contact *contact) { currentItem = shareOf(contact); }
    bool isCreating() const { return creating; }
    int getCreatingForOrder() const { return creatingForOrder; }

    // The editor of individuals.
    void create() override;
    // A new contact for the application's current order, in the contact
    // editor, linked to that order when it is finished.
    void createForCurrentOrder();
    void edit() override;
    // Opens the editor that suits the contact (person, company or a
    // company's person).
    void editThisContact(Contact *contact);
    void setItem(Contact *contact);
    void finish();
    void cancel();

    void filter() override;
    // Reloads the list and the table of the open company's people.
    void reloadData() override;
    // The delete question for the record of the selected outline row.
    void deleteKey() override;
    void deleteRecord(dataObject *record) override;
    // A postal block from the pasteboard into the editor's fields.
    void pasteContact();

    // The table of the open company's people (rows: the people of the
    // current contact; columns: contact field names). The company editor
    // shows it.
    TableView *getTableView() const { return companyContacts; }
    // A double-click in that table: the person of the selected row (row -1
    // when none is selected) into the company-contact editor.
    void companyContactDoubleClick();
    // The current contact's company into the company editor.
    void editCompanyForCurrentItem();
    // A company was edited: the company-contact editor refreshes the
    // company's fields.
    void companyHasChanged();
    // The record in the editor becomes a company's person (or a company),
    // is finished, and opens in that editor at the same place on screen.
    void linkToCompany();
    void makeCompany();

    PopUp *typeFilter;
    // The open contact's lines and orders.
    OpenContactReports *reports;

protected:
    QString describe(const dataObject &record) const override;

private:
    // Feeds the table of the open company's people (and exports it).
    class CompanyContactsSource;

    bool isTopLevel(const Contact *contact) const;
    bool isVisibleTopLevel(const Contact *contact) const;
    void ensureRows() const;
    void rowsChanged() { rowsValid = false; }

    bool creating = false;
    int creatingForOrder = 0;
    QSet<int> collapsed;  // ids of companies whose people are hidden
    // The outline's rows, valid while rowsValid is set and the collection
    // has not changed since (its generation); the collection holds them.
    mutable std::vector<Contact *> rows;
    mutable bool rowsValid = false;
    mutable quint64 rowsGeneration = 0;
    TableView *companyContacts;
    std::unique_ptr<CompanyContactsSource> companyContactsSource;
};
