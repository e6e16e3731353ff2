#pragma once
// The report engine. A report definition (an XML property list in the
// reports folder) names the kind of record to read, the fields to show as
// columns, the conditions a record must meet, the column to total and the
// columns by which like rows are merged. The engine runs it into a table whose
// columns it builds itself: one or two result rows (ReportItem) per matching
// record, a total, the merged rows, and two extra rows under the table for
// the total. It also fills the report chooser of the reports tab and installs
// the built-in definitions.
//
// Several instances exist (the reports tab, the contact editors' tables of a
// contact's orders and lines, money in of the accounts); each serves the
// table that it last ran a report into.
//
// Reading a definition, testing records against its conditions and merging
// like rows are plain functions of their own (ReportDefinition.h,
// ReportCriteria.h, ReportCollation.h); this class finds the definition and
// the records (the database's collections, through the controller), runs
// those over them into its rows, and logs what they have to say.
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TextField.h"
#include "reports/ReportCriteria.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

class QuorvelServices;
class ReportItem;

class ReportManager : public QObject, public kdDataSource
{
    Q_OBJECT
public:
    // One condition of a definition (reports/ReportCriteria.h).
    using Clause = reports::Clause;

    explicit ReportManager(QuorvelServices *controller, QObject *parent = nullptr);

    void setQuorvel(QuorvelServices *controller) { quorvel = controller; }
    QuorvelServices *getQuorvel() const { return quorvel; }
    // The contact that "currentcontact" names in this engine's conditions.
    // Without one it is the contact manager's current contact.
    void setOpenContactId(std::optional<int> id) { openContactId = id; }
    // The id text "currentcontact" stands for ("-1" when there is none).
    QString currentContactIdText() const;
    // The field whose date format is used to read dates. Without one (or
    // with a field that has no format) the user's date order from the
    // preferences is used.
    void setFromDate(TextField *field) { fromDate = field; }
    TextField *getFromDate() const { return fromDate; }
    QString dateFormat() const;

    // Installs the built-in definitions (never over an existing file), then
    // fills the chooser with the names of the reports folder, leaving out
    // hidden names and the definitions that other windows run themselves.
    void populateFilter();
    // The names populateFilter puts in the chooser, without installing.
    static QStringList reportNames();
    // The chooser's report, into this instance's table.
    void runReport();
    // Runs the definition NAME.xml of the reports folder into the table:
    // its columns, one or two rows per record of the source that meets the
    // conditions, the total (before merging), then the merged rows. A file
    // that is missing or broken is logged and as much as can be made is
    // shown; nothing is ever shown to the user.
    void doReport(const QString &name, TableView *view);
    void removeAllColumns();
    void reloadData();

    // Merges rows whose values in the match column are equal text, adding
    // their quantities; rows whose quantities are not numbers stay
    // (reports/ReportCollation.h).
    void collate(const QString &matchCol, const QString &qtyCol);
    // Adds the second row's quantity to the first's ("%.2f") and removes the
    // second row; with a quantity that is not a number, logs and answers false.
    bool merge(ReportItem *first, ReportItem *second, const QString &qtyCol);

    // Whether the record meets every clause (true with none), dates read in
    // dateFormat() and "currentcontact" standing for currentContactIdText().
    bool meetsCriteria(const dataObject &record, const QList<Clause> &where) const;
    // A read as a date is on or after B read as a date (both in dateFormat());
    // a text that cannot be read as a date makes the answer true.
    bool dateIsLaterThanDate(const QString &a, const QString &b) const;
    // dd/dd/dd at the start (two characters, "/", two, "/", two, each pair
    // read as a number): 01/03/08 and 01/03/2008 are dates, 1/3/08 is not.
    static bool isDate(const QString &text);
    static bool isNumeric(const QString &text);

    // The clauses of a definition's "where"/"where2" value, their values read
    // in dateFormat() (reports::prepareClauses). A clause that is
    // not three texts is left out and said in `problems`, as is an operator
    // that is not one of the four (such a clause always holds).
    QList<Clause> clausesFrom(const QVariant &where, const QString &key, QStringList *problems = nullptr) const;

    // Table data source: the result rows, plus two rows for the total
    // unless there is none ("_____" and the sum, in the totalled column).
    int numberOfRowsInTableView() const override;
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // Sorts the rows by the clicked column as text; the total rows stay last.
    void didClickTableColumn(const QString &columnId, bool ascending) override;
    // "fieldN" shows the definition's Nth field.
    QString fieldOfColumn(const QString &columnId) const override;
    // Headings made of two words run together ("Datepaid") read as two.
    QString shownTitle(const QString &columnId, const QString &title) const override;
    bool shouldSelectTableColumn(const QString &) const { return false; }

    QString getTotalCol() const { return totalcol; }
    float getSum() const { return sum; }
    int getCollationCol() const { return collationcol; }

    // The most "couldn't merge" lines one collation writes; the rest are
    // counted in one line.
    static constexpr int mergeLogLimit = 200;

    PopUp *filter;
    TableView *table;

private:
    QuorvelServices *quorvel;
    QStringList shownFields;  // the fields of the report last run
    std::optional<int> openContactId;
    TextField *fromDate = nullptr;
    QString totalcol = QStringLiteral("field-1");
    int collationcol = -1;
    float sum = 0.0f;
};
