#pragma once
// The statement of the accounts tab: four fixed rows that set the money-in
// total beside the money-out total and show the difference. It keeps no
// records; it reads the total rows of the two other accounts tables through
// their data sources, so it always shows the period and search last applied.
#include "store/TableDataSource.h"

#include <QString>

class TableView;

class StatementManager : public TableDataSource
{
public:
    StatementManager(TableView *moneyIn, TableView *moneyOut)
        : inTable(moneyIn),
          outTable(moneyOut)
    { }

    // Always 4: money in, money out, the rule, the difference.
    int numberOfRowsInTableView() const override;
    // Column "name": "Money In", "Money Out", then empty. Any other column:
    // the money-in total (the money-in table's "field2" at its last row),
    // the money-out total (the bills table's "amount" at its last row),
    // "_____", and money in minus money out ("%1.2f").
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // On screen the last row is labelled ("Difference").
    QString shownValueForTableColumn(const QString &columnId, int row) const override;
    // The statement is never sorted: header clicks are ignored (the
    // default does nothing).
    bool shouldSelectTableColumn(const QString &) const { return false; }

    // The table as CSV or HTML like every other export; the HTML header
    // cells are set in a monospaced face.
    QString getDataAsCSVusingTableView(const TableView &table) const override;
    QString getDataAsHTMLusingTableView(const TableView &table) const override;

private:
    // The cell of the table's last row in that column; empty without a
    // data source or rows.
    static QString lastRowValue(const TableView *table, const QString &columnId);

    TableView *inTable;
    TableView *outTable;
};
