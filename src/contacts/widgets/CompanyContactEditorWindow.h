#pragma once
// The editor of a company's person: one window over the company-contact
// editor's outlets. The person's name, form of address and job title; the
// company, chosen from a menu of every company (the address lines, postcode
// and phone follow the choice, and "Edit Company" opens the chosen company
// in its editor); the extension, the other phone numbers, the e-mail
// address (with a button that opens the mail program), the web address and
// the type; the notes, the person's orders and the lines they bought are on
// tabs of their own (the tab view is bound to the outlet the window is
// given, which carries the user's words). The postal block is copied to the
// pasteboard. OK stores the person; Cancel, Escape and the close box leave
// them as they were. The window remembers its size and place.
#include "app/widgets/EditorDialog.h"

class CompanyContactEditor;
class TabView;

class CompanyContactEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    CompanyContactEditorWindow(CompanyContactEditor &editor, TabView *tabsOutlet, QWidget *parent = nullptr);
    ~CompanyContactEditorWindow() override;

private:
    QWidget *makeDetails();

    CompanyContactEditor &people;
};
