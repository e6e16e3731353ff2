#pragma once
// A report definition read into a plain value: the property list in the
// reports folder that names the kind of record to read ("selectfrom"), the
// fields shown as columns, the headings and widths of the columns, the
// conditions of the first and of the second row of a record, the column
// totalled and the columns by which like rows are merged.
//
// Reading never fails on a dictionary: what is wrong in it is said in
// `problems` (one line each) and read as the engine goes on with it. A single
// text where a list of texts belongs is a list of one; an entry that is not a
// text is the empty text; a column number that is not a whole number is no
// column. Only a file that is not a property list whose root is a dictionary
// gives no definition at all. Nothing here touches the log or a table.
//
// Columns are named "field" and their number counted from 1 ("field2");
// "field-1" names none.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <optional>

namespace reports {

// The identifier that names no column.
inline const QString noColumn = QStringLiteral("field-1");

// The value position that a column identifier picks, as a result row reads
// it: the number after the first five characters ("field3" gives 3); 0 (no
// value) for a name of fewer than six characters.
int columnIndex(const QString &identifier);

struct ReportDefinition
{
    QStringList headings;  // "colheadings": one column each
    QStringList widths;  // "colwidths": integer texts, one per heading
    QStringList fields;  // "fields": one name per column of the first row
    QStringList fields2;  // "fields2": the names of the second row
    bool hasFields2 = false;
    QString source;  // "selectfrom"; null when absent or not a text
    QVariant where;  // "where" as found (clauses are read when the report runs)
    QVariant where2;  // "where2" as found
    bool hasWhere2 = false;
    QString totalCol = noColumn;  // "field" and "totalcol"; none without the key
    QString matchCol = noColumn;  // "field" and "collationmatchcol", when both
    QString qtyCol = noColumn;  // collation keys are there, else none

    // Whether a record makes a second row: both "fields2" and "where2" are there.
    bool hasSecondRows() const { return hasFields2 && hasWhere2; }
    // Whether like rows are merged: both collation columns name a column.
    bool collates() const { return matchCol != noColumn && qtyCol != noColumn; }
};

// The definition in a property list's root dictionary.
ReportDefinition readReportDefinition(const QVariantMap &root, QStringList *problems = nullptr);

// The definition in the file at `path`; nothing when the file cannot be read
// as a property list or its root is not a dictionary, and `failure` then
// says so ("couldn't read report definition PATH: REASON").
std::optional<ReportDefinition> readReportDefinitionFile(const QString &path, QString *failure = nullptr,
                                                         QStringList *problems = nullptr);

// A scalar of a property list as text (an empty <string/> is ""); a null
// text for arrays, dictionaries, data and nothing.
QString textOf(const QVariant &value);

}  // namespace reports
