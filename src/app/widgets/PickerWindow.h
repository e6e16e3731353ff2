#pragma once
// The picker's window: a search field over a two-column table of the rows
// to choose from, with "Select" (the default button, also Enter) and
// "Cancel" (also Escape and closing the window). Down in the search field
// moves into the table; typing in the table goes on in the search field.
// It stays in front of the program's other windows while it is open, and
// remembers its size and place.
#include <QDialog>

class Picker;
class QLineEdit;
class QPushButton;
class integrityTableView;

class PickerWindow : public QDialog
{
    Q_OBJECT
public:
    explicit PickerWindow(Picker &picker, QWidget *parent = nullptr);

    QLineEdit *searchField() const { return search; }
    integrityTableView *table() const { return rows; }
    QPushButton *selectButton() const { return select; }
    QPushButton *cancelButton() const { return cancelling; }

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    bool moveIntoTable(int key);
    bool typeIntoSearch(QEvent *event);

    Picker &owner;
    QLineEdit *search = nullptr;
    integrityTableView *rows = nullptr;
    QPushButton *select = nullptr;
    QPushButton *cancelling = nullptr;
};
