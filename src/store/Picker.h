#pragma once
// The one general chooser: a small window with a search field and a
// two-column table over which the user picks one record of any collection.
// The caller names the collection, the two fields to show and the word for
// the kind of record; when the user confirms a row the callback receives
// that record of the caller's collection (or none when the collection no
// longer holds it).
//
// The Picker's own collection holds one ReportItem row per record of the
// caller's collection: field 1 and 2 the shown fields, field 3 the id.
#include "platform/outlets/TextField.h"
#include "platform/outlets/Window.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

class Picker : public QObject, public kdDataSource
{
    Q_OBJECT
public:
    using Callback = std::function<void(dataObject *chosen)>;

    explicit Picker(QObject *parent = nullptr);

    // Opens the chooser (or, over an empty collection, shows the "None in
    // database" alert and changes nothing).
    void beginfor(Callback callback, kdDataSource *dataSource, const QString &field1, const QString &field2,
                  const QString &type);
    void finish();
    void cancel();
    void filter();
    void show();
    void hide();
    void reloadData();

    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    void didClickTableColumn(const QString &columnId, bool ascending) override;
    // The Picker's own sort: field number from the identifier, a bubble sort
    // comparing as text ignoring case, for options 0, 1 and 2.
    void sortByColumn(const QString &columnId, bool ascending, int options);

    QString getField1() const { return field1; }
    QString getField2() const { return field2; }
    kdDataSource *getCurrentDataSource() const { return currentDataSource; }

    Window *pickerWindow;
    TextField *searchBox;
    TableView *table;

private:
    // Puts the rows in that order (each the position of a row now) by exchanges.
    void placeInOrder(const std::vector<size_t> &order);

    Callback callback;
    QString field1;
    QString field2;
    kdDataSource *currentDataSource = nullptr;
    // Open and not yet confirmed or cancelled.
    bool choosing = false;
};
