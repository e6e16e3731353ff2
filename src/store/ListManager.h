#pragma once
// What every list of the main window shares: a collection (kdDataSource)
// shown in a table, a search field, the controller it asks for everything
// else, and the edit/delete commands the controller routes to it. The
// managers of each area derive from it and add their editors and rules.
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TextField.h"
#include "store/DeletionHistory.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class QuorvelServices;

class ListManager : public QObject, public kdDataSource
{
    Q_OBJECT
public:
    // `deleteQuestion` is the message of the delete alert ("Delete Order" ...);
    // `kind` names the default columns (see ListColumns).
    ListManager(QuorvelServices *controller, const QString &kind, const QString &deleteQuestion,
                QObject *parent = nullptr);

    QuorvelServices *getQuorvel() const { return quorvel; }
    void setQuorvel(QuorvelServices *controller) { quorvel = controller; }

    // Opens the editor on a new record; lists without an editor yet do nothing.
    virtual void create() { }
    // Opens the editor on the selected visible record.
    virtual void edit() { }
    // Shows the visible records: every record whose fields contain the
    // search text (all of them when it is empty).
    virtual void filter();
    // With a row selected: the delete question; "OK" deletes the record of
    // the selected row. The controller's change flag is set either way.
    void deleteKey() override;
    // Removes the record from the collection and reloads the table; the
    // deletion can be undone.
    virtual void deleteRecord(dataObject *record);
    virtual void reloadData();

    // The cell text: the visible record's field of that name.
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // Sorts by the clicked column as text and reloads.
    void didClickTableColumn(const QString &columnId, bool ascending) override;

    TableView *table;
    TextField *searchField;

    // Told of every record the user deletes from this list: what it was and
    // how to put it back (the controller keeps them for Undo Delete).
    std::function<void(DeletionHistory::Deletion)> onDeletion;

protected:
    // Takes the record out of the list, keeping its place, reloads, and
    // tells onDeletion; `alsoUndo` reverses whatever else the deletion did.
    void removeWithUndo(dataObject *record, std::function<void()> alsoUndo = {});
    // How the Undo menu item names a record of this list ("Order INV12").
    virtual QString describe(const dataObject &record) const;
    // Puts a deleted record back at its place with its id, shows it and
    // writes the list's file.
    virtual void putBack(const std::shared_ptr<dataObject> &record, qsizetype position);

    QuorvelServices *quorvel;
    QString deleteMessage;
};
