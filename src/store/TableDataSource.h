#pragma once
// What a table asks of the object that feeds it: the row count, the text of
// a cell, edits, header clicks and row colours, and the two exports of the
// table as shown. kdDataSource is one; lists that are not collections (the
// statement) are others.
#include "platform/outlets/ColorWell.h"

#include <QString>
#include <optional>

class TableView;

class TableDataSource
{
public:
    virtual ~TableDataSource() = default;

    virtual int numberOfRowsInTableView() const = 0;
    virtual QString objectValueForTableColumn(const QString &columnId, int row) const = 0;
    // An edit of a cell; the default takes none.
    virtual void setObjectValueForTableColumn(const QString &value, const QString &columnId, int row);
    // A click on a column header; the default does nothing.
    virtual void didClickTableColumn(const QString &columnId, bool ascending);
    // The background colour of a row; none paints the row plainly.
    virtual std::optional<RgbaColour> labelColorForRow(int row) const;
    // The record field a column shows (how the window knows a money
    // column); the column's identifier unless the source says otherwise.
    virtual QString fieldOfColumn(const QString &columnId) const { return columnId; }
    // What the window shows in a cell and above a column, where that reads
    // better than the text the exports keep; the same text by default.
    virtual QString shownValueForTableColumn(const QString &columnId, int row) const
    {
        return objectValueForTableColumn(columnId, row);
    }
    virtual QString shownTitle(const QString &columnId, const QString &title) const
    {
        Q_UNUSED(columnId);
        return title;
    }

    virtual QString getDataAsCSVusingTableView(const TableView &table) const = 0;
    virtual QString getDataAsHTMLusingTableView(const TableView &table) const = 0;
};
