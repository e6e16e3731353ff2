#pragma once
// The orders list and the order editor. The list paints each row in the
// colour of its status.
#include "app/ListManager.h"

class Contact;
class Order;

class OrderManager : public ListManager
{
    Q_OBJECT
public:
    explicit OrderManager(Quorvel *controller, QObject *parent = nullptr);

    // The order open in the editor, none when none.
    Order *getCurrentItem() const { return currentItem; }
    // Gives the order with that id in this collection the contact.
    virtual void connectContact(Contact *contact, int orderId);
    // Copies the linked contact's details into the editor.
    virtual void updateContactFields() {}
    // Another editor came to the front: an open editor finishes.
    virtual void requestResign(const QObject *sender);

    // Search text and the "All"/"Incomplete" pop-up; an order whose
    // contact matches the search is shown whatever the pop-up says.
    void filter() override;
    // Dates sort as dates, everything else as text.
    void didClickTableColumn(const QString &columnId, bool ascending) override;

    // The colour of the row's status ("QuorvelFlagColours"), none without one.
    std::optional<RgbaColour> labelColorForRow(int row) const override;

    PopUp *filterPopUp;  // "All" / "Incomplete"

protected:
    Order *currentItem = nullptr;
};
