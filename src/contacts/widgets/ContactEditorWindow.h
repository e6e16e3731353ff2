#pragma once
// The editor of individual contacts: one window over the contact manager's
// editor outlets. Name, form of address, the three address lines and the
// postcode, the phone numbers and e-mail (with a button that opens the mail
// program), the type and the notes; the postal block is copied to and
// pasted from the pasteboard. Beside them, the contact's orders and the lines
// they bought. "Link to Company" makes the contact a company's person and
// "Make Company" a company; either way it is stored and opens in that
// editor at this window's place. OK stores the contact; Cancel, Escape and
// the close box abandon it. The window remembers its size and place.
#include "app/widgets/EditorDialog.h"

class ContactManager;

class ContactEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit ContactEditorWindow(ContactManager &manager, QWidget *parent = nullptr);
    ~ContactEditorWindow() override;

private:
    ContactManager &contacts;
};
