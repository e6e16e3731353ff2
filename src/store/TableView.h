#pragma once
// The core side of a table view: what a table shows (its columns in display
// order, the selected row, the sort descriptors) without any widget. The
// widget layer binds a real view to it; the command line and the tests use
// it alone.
#include <QList>
#include <QObject>
#include <QString>

struct TableColumn {
    QString identifier;  // the field name the column shows
    QString title;       // the header title
    int width = 100;     // in points
    bool editable = false;
};

struct SortDescriptor {
    QString key;
    bool ascending = true;
};

class TableView : public QObject
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

    int selectedRow() const { return selected; }   // -1 when nothing is selected
    void selectRow(int row);

    const QList<SortDescriptor> &sortDescriptors() const { return descriptors; }
    void setSortDescriptors(const QList<SortDescriptor> &newDescriptors);

    // Whether the last column stretches to the remaining width.
    bool lastColumnFills() const { return fillLast; }
    void setLastColumnFills(bool fills) { fillLast = fills; }

    // Asks the bound widget to fetch its rows again.
    void reloadData();

Q_SIGNALS:
    void columnsChanged();
    void selectionChanged(int row);
    void reloaded();

private:
    QList<TableColumn> columns;
    QList<SortDescriptor> descriptors;
    int selected = -1;
    bool fillLast = false;
};
