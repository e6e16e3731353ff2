#pragma once
// What every list of the main window shares: a collection (kdDataSource)
// shown in a table, a search field, the controller it asks for everything
// else, and the edit/delete commands the controller routes to it. The
// managers of each area derive from it and add their editors and rules.
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TextField.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QObject>
#include <QString>

class Quorvel;

class ListManager : public QObject, public kdDataSource
{
    Q_OBJECT
public:
    // `deleteQuestion` is the message of the delete alert ("Delete Order" ...);
    // `kind` names the default columns (see ListColumns).
    ListManager(Quorvel *controller, const QString &kind, const QString &deleteQuestion, QObject *parent = nullptr);

    Quorvel *getQuorvel() const { return quorvel; }
    void setQuorvel(Quorvel *controller) { quorvel = controller; }

    // Opens the editor on a new record; lists without an editor yet do nothing.
    virtual void create() {}
    // Opens the editor on the selected visible record.
    virtual void edit() {}
    // Shows the visible records: every record whose fields contain the
    // search text (all of them when it is empty).
    virtual void filter();
    // With a row selected: the delete question; "OK" deletes the record of
    // the selected row. The controller's change flag is set either way.
    void deleteKey() override;
    // Removes the record from the collection and reloads the table.
    virtual void deleteRecord(dataObject *record);
    virtual void reloadData();

    // The cell text: the visible record's field of that name.
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // Sorts by the clicked column as text and reloads.
    void didClickTableColumn(const QString &columnId, bool ascending) override;

    TableView *table;
    TextField *searchField;

protected:
    Quorvel *quorvel;
    QString deleteMessage;
};
