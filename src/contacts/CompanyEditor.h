#pragma once
// The editor of a company ("Company" contact) and the table of the people
// who work there. A new company is added to the contacts at once, so a
// cancelled new company stays in the list, empty. The form of address and
// the mobile number are shown but, on purpose, never stored back. The
// database is saved by the contact manager, not here.
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/TableView.h"

#include <QObject>

class Contact;
class ContactManager;
class Quorvel;

class CompanyEditor : public QObject
{
    Q_OBJECT
public:
    explicit CompanyEditor(Quorvel *controller, QObject *parent = nullptr);

    // A new company, added to the contacts at once, in the editor.
    void create();
    // setItem, then show.
    void edit(Contact *contact);
    // Fills the fields and reloads the table of the company's people.
    void setItem(Contact *contact);
    void finish();
    // Hides the window; nothing is stored (a new company stays, empty).
    void cancel() { hide(); }
    void show();
    void hide();
    void doubleClick() {}
    Window *getEditorWindow() const { return editorWindow; }
    // Always sets the flag, whatever the argument.
    void setCreating(bool) { creating = true; }
    bool isCreating() const { return creating; }
    Contact *getCurrentItem() const { return currentItem; }

    // The postal block to the pasteboard; the mail program on the e-mail field.
    void copyContact();
    void sendEmail();

    Window *editorWindow;
    TextField *name;
    TextField *add1;
    TextField *add2;
    TextField *add3;
    TextField *postcode;
    TextField *phone;
    TextField *mobile;
    TextField *fax;
    TextField *email;
    PopUp *type;
    PopUp *title;
    TextField *website;
    TextView *comments;
    // The company's people; the contact manager feeds it.
    TableView *tableView;

private:
    ContactManager *contactManager() const;

    Quorvel *quorvel;
    Contact *currentItem = nullptr;
    bool creating = false;
};
