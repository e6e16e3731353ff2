#pragma once
// The one generic item model behind every table view: rows and cells come
// from the table's data source (numberOfRowsInTableView,
// objectValueForTableColumn), columns and titles from the table outlet. It
// keeps no copy of the rows: each cell is asked for when it is shown. The
// row count and the columns are taken at each reset, so the view sees one
// consistent shape between two reloads.
//
// On screen (the exports keep the source's text): a column whose cells are
// numbers is right-aligned, a money column shows two decimals with the
// thousands separator of the user's locale, and the totals under a list
// (a row with "_____" in it, then the total) read as totals: the "_____"
// row is left out of the view by the binding and the total row is bold, in
// money columns with the currency symbol, and marked (TotalRowRole) so that
// a rule is drawn above it.
#include "store/TableView.h"

#include <QAbstractTableModel>
#include <QList>
#include <QPointer>
#include <vector>

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

    // Set on the total row (a bool), for the rule drawn above it.
    static constexpr int TotalRowRole = Qt::UserRole + 1;
    // The "_____" row above the totals, -1 when there is none.
    int ruleRow() const { return rule; }
    bool isNumericColumn(int column) const;
    bool isMoneyColumn(int column) const;
    // A column of dates (in either order), which keeps to its width.
    bool isDateColumn(int column) const;
    // The symbol the totals of money columns show ("\u00a3"); none by default.
    static void setCurrencySymbol(const QString &symbol);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    void takeShape();
    // Reads a sample of the cells to tell the numeric columns.
    void readColumnKinds() const;
    QString moneyText(const QString &text, bool total) const;

    QPointer<TableView> table;
    QList<TableColumn> columns;
    int rows = 0;
    int rule = -1;
    mutable bool kindsRead = false;
    mutable std::vector<bool> numeric, money, dates;
};
