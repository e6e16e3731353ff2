#pragma once
// Money out (bills) beside money in (paid orders) and the statement: the
// accounts tab's three tables. One period choice and one start date govern
// both sides: the bills are filtered in place and totalled under the table;
// money in is a report ("MoneyIn") over the orders, written into the
// reports folder and run into its own table. The bill editor is here too.
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/ListManager.h"

#include <QDateTime>
#include <QVariantMap>
#include <memory>
#include <optional>

class Bill;
class ReportManager;
class StatementManager;

class BillManager : public ListManager
{
    Q_OBJECT
public:
    explicit BillManager(QuorvelServices *controller, QObject *parent = nullptr);
    ~BillManager() override;

    // The money-in table and the statement table.
    TableView *getInTableView() const { return inTable; }
    TableView *getSttTableView() const { return sttTable; }
    // The engine that runs money in: none until "MoneyIn.xml" was first
    // written.
    ReportManager *getReportManager() const { return reportManager.get(); }
    StatementManager *getStatementManager() const { return statementManager.get(); }

    // The editor on a new bill.
    void create() override;
    // The bill of the selected row (not the total rows). A new bill
    // cancelled before still counts as being created.
    void edit() override;
    // Fills the editor; a category the pop-up lacks is added to it.
    void setItem(Bill *bill);
    // Stores the editor into the bill, adds it when it is being created,
    // hides the editor, filters and writes the bills file.
    void finish();
    // Hides the editor and nothing else: a bill being created stays so, and
    // the next bill finished, even one opened with edit(), is added to the
    // list once more.
    void cancel();
    void show();
    void hide();

    // The bills of the period that match the search (both bounds
    // inclusive), then money in of the same period through the report
    // engine. Nothing while the accounts module is off, nor while a
    // relative period waits for its start date.
    void filter() override;
    // The sum of the visible bills' amounts, thousands separators removed.
    float total() const;

    // The bills, then "_____" and the total under the "amount" column.
    int numberOfRowsInTableView() const override;
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // Sorts by the column (as dates for the date paid) and reloads.
    void didClickTableColumn(const QString &columnId, bool ascending) override;
    bool shouldSelectTableColumn(const QString &) const { return false; }

    // The money-in report definition for a period: the start date text
    // (empty: none) and the end date text (null: none).
    static QVariantMap moneyInDefinition(const QString &from, const QString &to);
    // The user's date order ("%d/%m/%y" or "%m/%d/%y"): the start date
    // field's format.
    QString userDateFormat() const;

    Bill *getCurrentItem() const { return currentItem.get(); }
    bool isCreating() const { return creating; }

    // Outlets of the accounts tab.
    PopUp *periodPopUp;
    TextField *fromDate;
    TableView *inTable;
    TableView *sttTable;

    // Outlets of the editor.
    Window *editorWindow;
    TextField *invoiceNumber;
    TextField *name;
    TextField *datePaid;
    TextField *amount;
    PopUp *category;
    TextView *details;

protected:
    QString describe(const dataObject &record) const override;

private:
    // Writes "MoneyIn.xml" and runs it into the money-in table.
    void runMoneyIn(const QString &from, const std::optional<QDateTime> &to);

    // The bill in the editor (a new one is listed when it is finished).
    std::shared_ptr<Bill> currentItem;
    bool creating = false;
    std::unique_ptr<ReportManager> reportManager;
    std::unique_ptr<StatementManager> statementManager;
};
