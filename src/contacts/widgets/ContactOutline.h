#pragma once
// The contacts tab's table shown as the two-level outline it is: a company
// row carries a disclosure triangle (pointing right when its people are
// hidden, down when they are shown) in front of its name, and the name of a
// company's person sits one level further in. A click on the triangle shows
// or hides the company's people; with a company selected, Right shows them
// and Left hides them, and Left on a person selects the person's company.
// The selection stays on the record it was on, or on the company whose
// people were hidden. Every other key and click is the table's as before.
#include <QObject>
#include <QRect>

class Contact;
class ContactManager;
class QTableView;

class ContactOutline : public QObject
{
    Q_OBJECT
public:
    // Puts the outline on a view that shows the manager's company outline;
    // the view owns it. The view's own delegate still paints every cell,
    // the name cells moved right by their indentation.
    static ContactOutline *install(QTableView *view, ContactManager *manager);

    // The column showing the name, -1 when the table does not show it.
    int nameColumn() const;
    // How far the name of the row is moved in: room for the triangle, and
    // one level more for a company's person.
    int indentationOfRow(int row) const;
    // The triangle's box in the viewport; empty for a row that is not a
    // company or when the name column is not shown.
    QRect disclosureRect(int row) const;

    // Whether the row is a company whose people are shown.
    bool isRowExpanded(int row) const;
    // Shows or hides the people of the company in that row; nothing for a
    // row that is not a company.
    void setRowExpanded(int row, bool expanded);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ContactOutline(QTableView *view, ContactManager *manager);

    int levelWidth() const;
    int rowOf(const Contact *contact) const;
    bool isPerson(const Contact *contact) const;
    void setCompanyExpanded(const Contact *company, bool expanded);
    bool handleKey(int key);
    // A mouse event at the point: true when it was on a triangle (a press
    // there toggles the company).
    bool handleMouse(QEvent *event);

    QTableView *view;
    ContactManager *manager;
    bool swallowRelease = false;  // the press before it was on a triangle
};
