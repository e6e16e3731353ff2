#pragma once
// The table view of every list: rows whose data source gives them a colour
// (labelColorForRow, the order statuses) sit on a rounded band of that
// colour, and the keys the table does not use itself go to the list's key
// responder, which turns the delete keys into the manager's deleteKey().
// Letters and digits do nothing here: no keyboard search, no editing.
#include <QSet>
#include <QTableView>

class TableDataSource;
class kdKeyResponder;

class integrityTableView : public QTableView
{
    Q_OBJECT
public:
    explicit integrityTableView(QWidget *parent = nullptr);

    void setKeyResponder(kdKeyResponder *responder) { keyResponder = responder; }
    kdKeyResponder *getKeyResponder() const { return keyResponder; }

    // The data source behind the view's model (a TableModel); none for any
    // other model.
    TableDataSource *dataSource() const;

    // Fetches the rows again.
    void reloadData();
    // A sentence shown in the middle of the list while it has no rows
    // ("No orders match ..."); none shows nothing.
    void setPlaceholderText(const QString &text);
    QString placeholderText() const { return placeholder; }

    // The band painted under a row: the row's rectangle across the visible
    // width, one pixel in from the left and the top, two narrower and one
    // lower.
    QRect bandRect(int row) const;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    friend class StatusRowDelegate;
    bool isBandedRow(int row) const { return bandedRows.contains(row); }

    kdKeyResponder *keyResponder = nullptr;
    QString placeholder;
    QSet<int> bandedRows;  // the rows painted with a band in the current paint
};
