#pragma once
// The one generic item model behind every table view: rows and cells come
// from the table's data source (numberOfRowsInTableView,
// objectValueForTableColumn), columns and titles from the table outlet. It
// keeps no copy of the rows: each cell is asked for when it is shown. The
// row count and the columns are taken at each reset, so the view sees one
// consistent shape between two reloads.
#include "store/TableView.h"

#include <QAbstractTableModel>
#include <QList>
#include <QPointer>

class TableDataSource;

class TableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    // Resets itself whenever the outlet reloads or changes its columns.
    explicit TableModel(TableView *outlet, QObject *parent = nullptr);

    TableView *outlet() const { return table; }
    // The outlet's data source; none when there is no outlet or no source.
    TableDataSource *dataSource() const;
    // The identifier of a column, a null text when out of range.
    QString columnIdentifier(int column) const;
    // The column showing that identifier, -1 when none does.
    int columnWithIdentifier(const QString &identifier) const;

    // Fetches the row count and the columns again.
    void reload();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    void takeShape();

    QPointer<TableView> table;
    QList<TableColumn> columns;
    int rows = 0;
};
