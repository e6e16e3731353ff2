#pragma once
// The company editor: one window over the company editor's outlets. The
// company's name and form of address, the three address lines and the
// postcode, the phone numbers, the e-mail address (with a button that opens
// the mail program), the web address, the type and the notes; and the table
// of the people who work there, where a double click or Enter opens a person
// in the company-contact editor. The postal block is copied to the
// pasteboard. OK stores the company; Cancel, Escape and the close box leave
// it as it was. The window remembers its size and place.
#include "app/widgets/EditorDialog.h"

class CompanyEditor;
class integrityTableView;

class CompanyEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit CompanyEditorWindow(CompanyEditor &editor, QWidget *parent = nullptr);
    ~CompanyEditorWindow() override;

private:
    QWidget *makeDetails();
    QWidget *makePeople();

    CompanyEditor &companies;
    integrityTableView *people = nullptr;
};
