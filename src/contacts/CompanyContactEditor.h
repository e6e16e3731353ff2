#pragma once
// The editor of a company's person ("Company Contact"). The company is
// chosen from a menu of every company; the address lines, postcode and phone
// shown are the chosen company's, and finishing copies them into the
// person's own record. A person with no company yet has none chosen and
// shows its own address until the user chooses one. The extension and web
// address typed are kept; the type is shown but, on purpose, never stored
// back by this editor. Finishing writes the contacts at once. The window,
// the fields and the copy and e-mail commands are the ones every contact
// editor has (ContactFields).
#include "contacts/ContactFields.h"
#include "contacts/OpenContactReports.h"

#include <QObject>

class Contact;
class ContactManager;
class QuorvelServices;

class CompanyContactEditor : public QObject, public ContactFields
{
    Q_OBJECT
public:
    CompanyContactEditor(QuorvelServices *controller, ContactManager *contacts, QObject *parent = nullptr);

    // setItem, then show.
    void edit(Contact *contact)
    {
        setItem(contact);
        show();
    }
    // Fills the company menu, the company's fields, then the person's own
    // fields, and runs the two report tables.
    void setItem(Contact *contact);
    // Does nothing: people are made in the contact editor and linked here.
    void create() { }
    void finish();
    // Hides the window; nothing is stored.
    void cancel() { hide(); }
    // Always sets the flag, whatever the argument.
    void setCreating(bool) { creating = true; }
    bool isCreating() const { return creating; }

    // The names of every company, in collection order, with the person's
    // company selected (none when the person has no such company).
    void populateCompanyMenu();
    // The address lines, postcode and phone of the company chosen in the
    // menu, into the fields (nothing when no company has that name).
    void populateCompanyFields();
    // The first company with exactly that name, none when none.
    Contact *getCompanyByName(const QString &text) const;
    // Opens the company chosen in the menu in the company editor.
    void editCompanyButton();

    PopUp *company;
    TextField *extension;
    TextField *jobtitle;
    OpenContactReports *reports;

private:
    QuorvelServices *quorvel;
    ContactManager *contactManager;
    bool creating = false;
};
