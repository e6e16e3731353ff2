#pragma once
// Merging like rows of a report: rows whose texts in the match column are
// equal become one, whose quantity is the sum of theirs. The result is
// exactly that of this loop over the rows in order:
//
//   for each row i from the first, for each later row j:
//     when i and j have equal text in the match column, merge j into i; when
//     that succeeds j is removed, and the row now at position j is examined.
//
// A merge succeeds when both quantities are numbers (platform::isNumeric): the
// first row's quantity becomes their single-precision sum written "%.2f"
// (3 and 2 give 5.00) and the second row goes. Otherwise both rows stay as
// they are and the merge is said as "couldn't merge A and B". Rows that never
// merge keep their text (a lone 3 stays 3).
//
// planCollation works out which rows stay and what their quantities become
// without meeting every pair, and without touching the rows: the caller
// applies the plan and writes its lines to the log.
#include <QString>
#include <QStringList>

#include <vector>

namespace reports {

// One column of texts, row after row, each `stride` texts after the one
// before (a table stored row by row is read with its width as the stride). A
// stride of 0 reads the same text for every row.
struct TextColumn
{
    const QString *first = nullptr;
    size_t stride = 1;
    const QString &operator[](int row) const { return first[size_t(row) * stride]; }
};

// What collating rows does to them.
struct CollationPlan
{
    std::vector<char> alive;  // per row: it stays
    std::vector<QString> qty;  // per row: its new quantity text; null when it does not change
    bool removed = false;  // some row goes
    // The "couldn't merge" lines, in the loop's order; past the limit one
    // line counts the rest ("couldn't merge N more pairs of rows; those lines
    // are left out").
    QStringList messages;
};

// The plan for `count` rows whose match texts and quantities are the columns
// given. At most `logLimit` "couldn't merge" lines are written out, so that a
// column that holds no numbers costs no more than one that does.
CollationPlan planCollation(int count, TextColumn keys, TextColumn quantities, int logLimit);

}  // namespace reports
