#pragma once
// The editor of a company ("Company" contact) and the table of the people
// who work there. A new company is added to the contacts at once, so a
// cancelled new company stays in the list, empty. The form of address and
// the mobile number are shown but, on purpose, never stored back.
// Finishing writes the contacts at once. The window, the fields and the
// copy and e-mail commands are the ones every contact editor has
// (ContactFields).
#include "contacts/ContactFields.h"
#include "store/TableView.h"

#include <QObject>

class Contact;
class ContactManager;
class QuorvelServices;

class CompanyEditor : public QObject, public ContactFields
{
    Q_OBJECT
public:
    explicit CompanyEditor(QuorvelServices *controller, QObject *parent = nullptr);

    // A new company, added to the contacts at once, in the editor.
    void create();
    // setItem, then show.
    void edit(Contact *contact)
    {
        setItem(contact);
        show();
    }
    // Fills the fields and reloads the table of the company's people.
    void setItem(Contact *contact);
    void finish();
    // Hides the window; nothing is stored (a new company stays, empty).
    void cancel() { hide(); }
    void doubleClick() { }
    // Always sets the flag, whatever the argument.
    void setCreating(bool) { creating = true; }
    bool isCreating() const { return creating; }

    // The company's people; the contact manager feeds it.
    TableView *tableView;

private:
    ContactManager *contactManager() const;

    QuorvelServices *quorvel;
    bool creating = false;
};
