#pragma once
// The form that every contact editor shows (the individual's, the
// company's and the company person's): its window, the fields of a contact,
// and the contact open in it. Each editor fills and stores its own choice of
// these fields; what they all do alike is here.
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"

#include <QString>
#include <memory>

class Contact;
class QObject;

class ContactFields
{
public:
    // The outlets are children of `owner`, made in this order.
    explicit ContactFields(QObject *owner);

    // The contact open in the editor, none when none.
    Contact *getCurrentItem() const { return currentItem.get(); }
    Window *getEditorWindow() const { return editorWindow; }
    void show();
    void hide();
    // The postal block of the open contact to the pasteboard.
    void copyContact();
    // The postal block the contact editors copy: the title and a space when
    // there is a title, then name, add1, add2, add3 and postcode, each
    // followed by "\r" ("" for none).
    static QString postalBlock(const Contact *contact);
    // Opens the mail program on the address in the e-mail field, when a
    // contact is open.
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

protected:
    // The contact's own fields: title, comments, name, e-mail, fax, mobile
    // and type (not the address, phone or web address).
    void fillOwnFields(const Contact &contact);
    // The address lines, postcode and phone.
    void fillAddress(const Contact &contact);

    // The contact open in the editor; the editor holds its share, so the
    // contact stays whole while it is open, even if it is deleted meanwhile.
    std::shared_ptr<Contact> currentItem;
};
