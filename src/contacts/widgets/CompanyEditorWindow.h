#pragma once
// The company editor: one window over the company editor's outlets. The
// company's name and form of address, the three address lines and the
// postcode, the phone numbers, the e-mail address (with a button that opens
// the mail program), the web address, the type and the notes; and the table
// of the people who work there, where a double click or Enter opens a person
// in the company-contact editor. The postal block is copied to the
// pasteboard. OK stores the company; Cancel, Escape and the close box leave
// it as it was. The window remembers its size and place.
#include <QDialog>
#include <QList>

class CompanyEditor;
class QLineEdit;
class integrityTableView;

class CompanyEditorWindow : public QDialog
{
    Q_OBJECT
public:
    explicit CompanyEditorWindow(CompanyEditor &editor, QWidget *parent = nullptr);
    ~CompanyEditorWindow() override;

public Q_SLOTS:
    // Escape, the Cancel button and the close box.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeDetails();
    QWidget *makePeople();

    CompanyEditor &companies;
    QLineEdit *nameEdit = nullptr;
    integrityTableView *people = nullptr;
    // The widgets in the order Tab visits them.
    QList<QWidget *> tabChain;
};
