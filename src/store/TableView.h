#pragma once
// The core side of a table view: what a table shows (its columns in display
// order, the selected row, the sort descriptors) without any widget. The
// widget layer binds a real view to it; the command line and the tests use
// it alone.
#include "platform/outlets/Outlet.h"

#include <QList>
#include <QString>

class TableDataSource;

struct TableColumn
{
    QString identifier;  // the field name the column shows
    QString title;  // the header title
    int width = 100;  // in points
    bool editable = false;
};

struct SortDescriptor
{
    QString key;
    bool ascending = true;
};

class TableView : public Outlet
{
    Q_OBJECT
public:
    explicit TableView(QObject *parent = nullptr);

    const QList<TableColumn> &tableColumns() const { return columns; }
    void setColumns(const QList<TableColumn> &newColumns);
    void addTableColumn(const TableColumn &column);
    void removeAllColumns();
    // Columns given as "identifier" / "title" pairs, width 100.
    static QList<TableColumn> columnsFrom(std::initializer_list<std::pair<const char *, const char *>> pairs);

    int selectedRow() const { return selected; }  // -1 when nothing is selected
    void selectRow(int row);

    const QList<SortDescriptor> &sortDescriptors() const { return descriptors; }
    void setSortDescriptors(const QList<SortDescriptor> &newDescriptors);

    // Whether the last column stretches to the remaining width.
    bool lastColumnFills() const { return fillLast; }
    void setLastColumnFills(bool fills) { fillLast = fills; }

    // Asks the bound widget to fetch its rows again.
    void reloadData();

    // The object that feeds the table (none until one is set).
    TableDataSource *dataSource() const { return source; }
    void setDataSource(TableDataSource *newSource) { source = newSource; }

    // From the widget: the user selected a row (-1 for none) or clicked a
    // column header (the first sort descriptor is set to that column, its
    // direction flipped when it already was the first, and the data source
    // is told).
    void userSelectRow(int row);
    void userClickColumn(const QString &columnId);
    // From the widget: the user double-clicked a row or pressed Enter on it
    // (the row is selected first); doubleClicked() follows.
    void userDoubleClick(int row);

Q_SIGNALS:
    void columnsChanged();
    void selectionChanged(int row);
    void reloaded();
    // The user selected a row.
    void selectionActivated();
    void doubleClicked();

private:
    QList<TableColumn> columns;
    QList<SortDescriptor> descriptors;
    int selected = -1;
    bool fillLast = false;
    TableDataSource *source = nullptr;
};
