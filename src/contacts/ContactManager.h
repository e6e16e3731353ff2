#pragma once
// The contacts list (individual customers and suppliers, companies and
// their people) and its editors. The list so far is a flat table of every
// contact; the company outline and the editors follow.
#include "app/ListManager.h"

class Contact;

class ContactManager : public ListManager
{
    Q_OBJECT
public:
    explicit ContactManager(Quorvel *controller, QObject *parent = nullptr);

    // The view of the contacts tab.
    TableView *getCompanyOutline() const { return table; }
    // The first contact with that id ("%i" text), none when there is none.
    Contact *getContactbyId(const QString &id) const;
    // The first contact whose name equals the text exactly, none when none.
    Contact *getContactbyName(const QString &name) const;
    // The contact open in the editor, none when none.
    Contact *getCurrentItem() const { return currentItem; }
    void setCurrentItem(Contact *contact) { currentItem = contact; }
    // Opens the editor that suits the contact (person, company or a
    // company's person).
    void editThisContact(Contact *contact);
    // A new contact for the application's current order, in the contact
    // editor, linked to that order when it is finished.
    void createForCurrentOrder();

    PopUp *typeFilter;

private:
    Contact *currentItem = nullptr;
};
