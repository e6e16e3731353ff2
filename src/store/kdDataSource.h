#pragma once
// The base of every collection controller and table data source: the ordered
// collection of records it owns, id allocation, the mapping from table rows
// to visible records, lookup by id, sorting and export.
//
// Record lifetime, one rule for the whole program: records are shared. The
// collection holds a std::shared_ptr to each of its records, and so does
// everything else that keeps a record beyond the moment of a call: an
// order's contact, an editor's open record, the sale of the checkout, a
// deleted record waiting to be undone. A record lives as long as anything
// refers to it, as the files expect (an order keeps, shows and writes its
// contact after the contact has left the contacts list). Removing a record
// from a collection never frees it by hand; the plain pointers the lookups
// answer are for the moment of a call and are never kept.
//
// Lookups by id, by position and by visible row use indexes kept in step
// with the collection (rebuilt lazily after a change), so none of them scans
// the collection; sorting is a stable O(n log n) sort that gives exactly the
// order of the stable exchange sort the program has always used.
#include "store/TableDataSource.h"
#include "store/dataObject.h"

#include <QHash>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class TableView;

class kdDataSource : public TableDataSource
{
public:
    kdDataSource();
    virtual ~kdDataSource();
    kdDataSource(const kdDataSource &) = delete;
    kdDataSource &operator=(const kdDataSource &) = delete;

    // Appends the record, which the collection then holds (records are
    // shared: see dataObject). A non-zero id raises highestId when it is
    // greater; an id of 0 takes the next id.
    void add(std::shared_ptr<dataObject> record);
    // Puts a record back at that position (clamped to the collection),
    // keeping its id: how an undone deletion returns a record to its place.
    // highestId rises to the id when it is greater.
    void insertItem(std::shared_ptr<dataObject> record, qsizetype position);
    // Consumes and answers the next id.
    int getNextId();
    int getHighestId() const { return highestId; }
    // Drops every record and restarts ids at 0.
    void clear();
    // Removes that very record from the collection; nothing when it is not
    // here. The record itself lives on while anything else holds it.
    void deleteItem(dataObject *record);
    // Removes the record and answers the collection's share of it (none
    // when it is not here).
    std::shared_ptr<dataObject> takeItem(dataObject *record);
    // Counts every change of the collection's membership or order, so that
    // whoever keeps rows of its own knows when to build them again.
    quint64 getGeneration() const { return generation; }

    virtual int getCount() const;
    virtual dataObject *getnthItem(int n) const;
    virtual dataObject *getFirstItem() const;
    virtual dataObject *getNextItem(const dataObject *record) const;
    virtual dataObject *getItemById(int id) const;
    dataObject *getnthVisibleItem(int n) const;
    dataObject *getSelectedItem() const;
    // Position of the record in the collection, -1 when it is not here.
    qsizetype indexOf(const dataObject *record) const;

    TableView *getTableView() const { return tableView; }
    void setTableView(TableView *view) { tableView = view; }

    int numberOfRowsInTableView() const override;
    QString objectValueForTableColumn(const QString &columnId, int row) const override;

    // Sets every record's visible flag to the predicate's answer. This is
    // what the managers' filters run at each keystroke of a search: records
    // are fetched from memory ahead of the one being asked, so a large
    // collection is searched at the speed of the predicate, not of memory.
    void filterBy(const std::function<bool(const dataObject &)> &isVisible);

    void sortByColumn(const QString &field, bool ascending) { sortByColumn(field, ascending, 0); }
    void sortByColumn(const QString &field, bool ascending, int options);
    // Sorts as a person reads the column (platform/ReadingOrder.h): numbers
    // as numbers, dates as dates in `dateFormat`, codes naturally. This is
    // what a click on a column heading does on screen; `ascending` is read
    // as sortByColumn reads it (the greatest first). "name" sorts by
    // surname here too.
    void sortAsRead(const QString &field, bool ascending, const QString &dateFormat);
    void swop(dataObject *a, dataObject *b);

    // Export of the table as shown (rows from numberOfRowsInTableView, cells
    // from objectValueForTableColumn, columns in the given order).
    QString getDataAsCSVusingTableView(const TableView &table) const override;
    QString getDataAsHTMLusingTableView(const TableView &table) const override;
    // Builds the table's columns from a layout file; always answers true.
    bool configureTable(TableView &table, const QString &path, const QString &defaults = QString());

    virtual void deleteKey() { }
    virtual void remove() { }
    virtual void sort() { }
    virtual QString getWindowTitle() const { return QString(); }

    // Called by records when their id or visibility changes.
    void recordIdChanged(dataObject *record);
    void recordVisibilityChanged(dataObject *record);

protected:
    // The records in collection order; subclasses may read it directly.
    const std::vector<std::shared_ptr<dataObject>> &records() const { return collection; }

private:
    void renumberFrom(qsizetype first);
    void ensureIdIndex() const;
    void ensureVisibleIndex() const;

    TableView *tableView = nullptr;
    void changed() { ++generation; }

    std::vector<std::shared_ptr<dataObject>> collection;
    int highestId = 0;
    quint64 generation = 0;

    mutable QHash<int, dataObject *> idIndex;  // id -> first record with that id
    mutable bool idIndexValid = true;
    mutable std::vector<int> visibleRows;  // visible row -> position
    mutable bool visibleIndexValid = true;
};
