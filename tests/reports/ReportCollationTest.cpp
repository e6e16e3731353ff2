// Merging like rows of a report: which rows stay, what their quantities
// become, and what is said about rows that cannot merge.
#include "TestMain.h"

#include "reports/ReportCollation.h"

#include <QTest>

#include <vector>

using namespace reports;

namespace {

// Rows written "key:quantity", stored row by row as a report stores them,
// with a third value between that the plan must step over.
struct Table
{
    std::vector<QString> values;
    int count = 0;
    explicit Table(const QStringList &rows)
    {
        for (const QString &row : rows) {
            const qsizetype colon = row.indexOf(u':');
            values.push_back(row.left(colon));
            values.push_back(QStringLiteral("other"));
            values.push_back(row.mid(colon + 1));
            ++count;
        }
    }
    TextColumn keys() const { return {values.data(), 3}; }
    TextColumn quantities() const { return {values.data() + 2, 3}; }
};

// The rows that stay, "key:quantity", with the plan applied.
QStringList applied(const Table &table, const CollationPlan &plan)
{
    QStringList rows;
    for (int r = 0; r < table.count; ++r) {
        if (!plan.alive[size_t(r)])
            continue;
        const QString &qty = plan.qty[size_t(r)].isNull() ? table.quantities()[r] : plan.qty[size_t(r)];
        rows << table.keys()[r] + u':' + qty;
    }
    return rows;
}

}  // namespace

class ReportCollationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldMergeLikeRowsAsOneMergeAfterAnother_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("merged");
        QTest::addColumn<QStringList>("said");
        QTest::newRow("like rows added up")
            << QStringList{"Widget:2", "Widget:3", "Bolt:1"} << QStringList{"Widget:5.00", "Bolt:1"} << QStringList();
        QTest::newRow("a lone row keeps its text")
            << QStringList{"Bolt:3", "Nut:1.5"} << QStringList{"Bolt:3", "Nut:1.5"} << QStringList();
        QTest::newRow("no rows") << QStringList() << QStringList() << QStringList();
        QTest::newRow("into the first of three")
            << QStringList{"Nut:1", "Bolt:1", "Nut:2", "Nut:4"} << QStringList{"Nut:7.00", "Bolt:1"} << QStringList();
        QTest::newRow("keys compared with letter case")
            << QStringList{"widget:1", "Widget:2"} << QStringList{"widget:1", "Widget:2"} << QStringList();
        QTest::newRow("empty keys are alike")
            << QStringList{":1", "Bolt:1", ":2"} << QStringList{":3.00", "Bolt:1"} << QStringList();
        QTest::newRow("two decimals, rounded")
            << QStringList{"Pin:0.333", "Pin:0.333"} << QStringList{"Pin:0.67"} << QStringList();
        QTest::newRow("the number at the start")
            << QStringList{"Box:2 boxes", "Box:1,000"} << QStringList{"Box:3.00"} << QStringList();
        QTest::newRow("a text first stays with the rest")
            << QStringList{"Nut:lots", "Nut:4"} << QStringList{"Nut:lots", "Nut:4"}
            << QStringList{"couldn't merge lots and 4"};
        QTest::newRow("a text between numbers")
            << QStringList{"Nut:1", "Nut:x", "Nut:2", "Nut:y"} << QStringList{"Nut:3.00", "Nut:x", "Nut:y"}
            << QStringList{"couldn't merge 1 and x", "couldn't merge 3.00 and y", "couldn't merge x and y"};
        QTest::newRow("an empty quantity is no number")
            << QStringList{"Cog:", "Cog:2", "Cog:3"} << QStringList{"Cog:", "Cog:5.00"}
            << QStringList{"couldn't merge  and 2", "couldn't merge  and 3"};
        QTest::newRow("a negative quantity")
            << QStringList{"Gear:5", "Gear:-4.25"} << QStringList{"Gear:0.75"} << QStringList();
    }
    void shouldMergeLikeRowsAsOneMergeAfterAnother()
    {
        QFETCH(QStringList, rows);
        QFETCH(QStringList, merged);
        QFETCH(QStringList, said);
        const Table table(rows);
        const CollationPlan plan = planCollation(table.count, table.keys(), table.quantities(), 200);
        QCOMPARE(applied(table, plan), merged);
        QCOMPARE(plan.messages, said);
        QCOMPARE(plan.removed, merged.size() < rows.size());
    }

    void shouldCountWhatItDoesNotSay_data()
    {
        QTest::addColumn<int>("limit");
        QTest::addColumn<QStringList>("said");
        const QStringList all{"couldn't merge a and b", "couldn't merge a and c", "couldn't merge a and d",
                              "couldn't merge b and c", "couldn't merge b and d", "couldn't merge c and d"};
        QTest::newRow("room for every line") << 6 << all;
        QTest::newRow("one line too few")
            << 5 << all.mid(0, 5) + QStringList{"couldn't merge 1 more pairs of rows; those lines are left out"};
        QTest::newRow("two lines") << 2
                                   << all.mid(0, 2)
                + QStringList{"couldn't merge 4 more pairs of rows; those lines are left out"};
        QTest::newRow("none") << 0 << QStringList{"couldn't merge 6 more pairs of rows; those lines are left out"};
    }
    void shouldCountWhatItDoesNotSay()
    {
        QFETCH(int, limit);
        QFETCH(QStringList, said);
        const Table table({"K:a", "K:b", "K:c", "K:d", "L:1", "L:2"});
        const CollationPlan plan = planCollation(table.count, table.keys(), table.quantities(), limit);
        QCOMPARE(plan.messages, said);
        // What is said changes nothing in what is merged.
        QCOMPARE(applied(table, plan), QStringList({"K:a", "K:b", "K:c", "K:d", "L:3.00"}));
    }

    void shouldMergeEveryRowWhenTheMatchColumnIsTheSameText()
    {
        // A match column that names no value reads the empty text in every row.
        const QString none;
        const Table table({"A:1", "B:2", "C:x", "D:3"});
        const CollationPlan plan = planCollation(table.count, {&none, 0}, table.quantities(), 200);
        QCOMPARE(applied(table, plan), QStringList({"A:6.00", "C:x"}));
        QCOMPARE(plan.messages, QStringList{"couldn't merge 3.00 and x"});
    }
};

QUORVEL_TEST(ReportCollationTest)
#include "ReportCollationTest.moc"
