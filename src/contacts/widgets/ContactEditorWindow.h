#pragma once
// The editor of individual contacts: one window over the contact manager's
// editor outlets. Name, form of address, the three address lines and the
// postcode, the phone numbers and e-mail (with a button that opens the mail
// program) and the type; the postal block is copied to and pasted from the
// pasteboard. The notes, the contact's orders and the lines they bought are
// on tabs of their own (the tab view is bound to the outlet the window is
// given, which carries the user's words). "Link to Company" makes the
// contact a company's person and "Make Company" a company; either way it is
// stored and opens in that editor at this window's place. OK stores the
// contact; Cancel, Escape and the close box abandon it. The window
// remembers its size and place.
#include "app/widgets/EditorDialog.h"

class ContactManager;
class TabView;

class ContactEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    ContactEditorWindow(ContactManager &manager, TabView *tabsOutlet, QWidget *parent = nullptr);
    ~ContactEditorWindow() override;

private:
    ContactManager &contacts;
};
