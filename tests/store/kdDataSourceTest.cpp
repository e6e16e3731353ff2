#include "TestMain.h"

#include "platform/Dates.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QRandomGenerator>
#include <QTest>
#include <limits>

namespace {

// A record with free-form fields, enough to drive the collection.
class Row : public dataObject
{
public:
    explicit Row(QString text, int id = 0, bool isVisible = true)
        : value(std::move(text))
    {
        setID(id);
        setVisible(isVisible);
    }
    QString getFieldByName(const QString &name) const override
    {
        if (name == QLatin1String("text") || name == QLatin1String("date"))
            return value;
        if (name == QLatin1String("surname"))
            return value.section(QLatin1Char(' '), -1);
        return QStringLiteral("");
    }
    QString value;
};

QStringList texts(const kdDataSource &source)
{
    QStringList out;
    for (int i = 0; i < source.getCount(); ++i)
        out << static_cast<Row *>(source.getnthItem(i))->value;
    return out;
}

// The exchange sort the collection must agree with, written out as the
// program has always done it: passes of neighbour exchanges until a pass
// exchanges nothing. Dates are cached the first time a record is compared.
void referenceSort(std::vector<Row *> &rows, const QString &field, bool ascending, int options)
{
    const QString key = field == QLatin1String("name") ? QStringLiteral("surname") : field;
    auto dateOf = [&](Row *row) -> std::optional<QDateTime> {
        if (!row->getNSDate()) {
            if (auto parsed = platform::parseDate(row->getFieldByName(key), QStringLiteral("%d/%m/%y")))
                row->setNSDate(parsed);
        }
        return row->getNSDate();
    };
    bool exchanged = true;
    while (exchanged) {
        exchanged = false;
        for (size_t i = 0; i + 1 < rows.size(); ++i) {
            Row *left = rows[i];
            Row *right = rows[i + 1];
            int comparison = 0;
            if (options == 0 || options == 1) {
                comparison = left->getFieldByName(key).compare(right->getFieldByName(key), Qt::CaseInsensitive);
            } else if (options == 2) {
                const auto l = dateOf(left);
                const auto r = dateOf(right);
                if (!l || !r)
                    continue;
                comparison = *l < *r ? -1 : (*r < *l ? 1 : 0);
            } else {
                continue;
            }
            if ((comparison < 0 && ascending) || (comparison > 0 && !ascending)) {
                std::swap(rows[i], rows[i + 1]);
                exchanged = true;
            }
        }
    }
}

}  // namespace

class kdDataSourceTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldAnswerNothingWhenEmpty()
    {
        kdDataSource source;
        TableView table;
        source.setTableView(&table);
        table.selectRow(0);
        QVERIFY(!source.getFirstItem());
        QVERIFY(!source.getnthItem(0));
        QVERIFY(!source.getnthVisibleItem(0));
        QVERIFY(!source.getSelectedItem());
        QCOMPARE(source.numberOfRowsInTableView(), 0);
        QCOMPARE(source.getCount(), 0);
    }

    void shouldNumberRecordsAfterTheHighestIdThereIs()
    {
        // A file may give a record the highest id an int holds: the next
        // record takes the lowest id free rather than running past it.
        kdDataSource source;
        source.add(std::make_shared<Row>(QStringLiteral("a"), 1));
        source.add(std::make_shared<Row>(QStringLiteral("top"), std::numeric_limits<int>::max()));
        auto next = std::make_shared<Row>(QStringLiteral("b"));
        source.add(next);
        QCOMPARE(next->getID(), 2);
        QCOMPARE(source.getItemById(2), next.get());
        QCOMPARE(source.getHighestId(), std::numeric_limits<int>::max());
    }

    void shouldNumberRecordsFromTheHighestIdSeen()
    {
        kdDataSource source;
        source.add(std::make_shared<Row>(QStringLiteral("a"), 7));
        QCOMPARE(source.getHighestId(), 7);
        auto second = std::make_shared<Row>(QStringLiteral("b"));
        source.add(second);
        QCOMPARE(second->getID(), 8);
        QCOMPARE(source.getNextId(), 9);
        source.add(std::make_shared<Row>(QStringLiteral("c"), 3));
        QCOMPARE(source.getHighestId(), 9);  // a lower id leaves it
        QCOMPARE(source.getItemById(8), second.get());

        source.clear();
        QCOMPARE(source.getCount(), 0);
        auto fresh = std::make_shared<Row>(QStringLiteral("d"));
        source.add(fresh);
        QCOMPARE(fresh->getID(), 1);
    }

    void shouldNeverReuseIdsAfterDeletion()
    {
        kdDataSource source;
        auto a = std::make_shared<Row>(QStringLiteral("a"));
        source.add(a);
        source.deleteItem(a.get());
        auto b = std::make_shared<Row>(QStringLiteral("b"));
        source.add(b);
        QCOMPARE(b->getID(), 2);
        QVERIFY(!source.getItemById(1));
    }

    void shouldFindByIdAfterIdsChangeAndRecordsMove()
    {
        kdDataSource source;
        auto a = std::make_shared<Row>(QStringLiteral("a"), 5);
        auto b = std::make_shared<Row>(QStringLiteral("b"), 6);
        auto c = std::make_shared<Row>(QStringLiteral("c"), 5);  // a duplicate id: the first in order wins
        source.add(a);
        source.add(b);
        source.add(c);
        QCOMPARE(source.getItemById(5), a.get());
        source.swop(a.get(), c.get());
        QCOMPARE(source.getItemById(5), c.get());
        b->setID(42);
        QCOMPARE(source.getItemById(42), b.get());
        QVERIFY(!source.getItemById(6));
        source.deleteItem(c.get());
        QCOMPARE(source.getItemById(5), a.get());
        QVERIFY(!source.getItemById(0));
    }

    void shouldWalkTheCollectionInOrder()
    {
        kdDataSource source;
        const std::shared_ptr<Row> held[3]
            = {std::make_shared<Row>(QStringLiteral("a")), std::make_shared<Row>(QStringLiteral("b")),
               std::make_shared<Row>(QStringLiteral("c"))};
        Row *rows[3] = {held[0].get(), held[1].get(), held[2].get()};
        for (const std::shared_ptr<Row> &row : held)
            source.add(row);
        QCOMPARE(source.getFirstItem(), rows[0]);
        QCOMPARE(source.getNextItem(rows[0]), rows[1]);
        QCOMPARE(source.getNextItem(rows[2]), nullptr);
        Row stranger(QStringLiteral("x"));
        QCOMPARE(source.getNextItem(&stranger), nullptr);
        QCOMPARE(source.getnthItem(-1), nullptr);
        QCOMPARE(source.getnthItem(3), nullptr);
        source.deleteItem(rows[1]);
        QCOMPARE(source.getNextItem(rows[0]), rows[2]);
        source.deleteItem(&stranger);  // not ours: nothing happens
        QCOMPARE(source.getCount(), 2);
    }

    void shouldMapRowsToVisibleRecords_data()
    {
        QTest::addColumn<QString>("visibility");  // one letter per record: v visible, h hidden
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("expected");  // position in the collection, -1 for none

        QTest::newRow("first visible after a hidden one") << "hvv" << 0 << 1;
        QTest::newRow("second visible") << "hvv" << 1 << 2;
        QTest::newRow("past the last") << "hvv" << 2 << -1;
        QTest::newRow("row -1 with a hidden first record") << "hvv" << -1 << 0;
        QTest::newRow("row -1 with a visible first record") << "vhv" << -1 << -1;
        QTest::newRow("row -2") << "hvv" << -2 << -1;
        QTest::newRow("all hidden") << "hhh" << 0 << -1;
        QTest::newRow("hidden between") << "vhhv" << 1 << 3;
    }
    void shouldMapRowsToVisibleRecords()
    {
        QFETCH(QString, visibility);
        QFETCH(int, row);
        QFETCH(int, expected);
        kdDataSource source;
        std::vector<std::shared_ptr<Row>> rows;
        for (QChar flag : visibility) {
            rows.push_back(std::make_shared<Row>(QStringLiteral("r"), 0, flag == QLatin1Char('v')));
            source.add(rows.back());
        }
        QCOMPARE(source.getnthVisibleItem(row), expected < 0 ? nullptr : rows[size_t(expected)].get());
        QCOMPARE(source.numberOfRowsInTableView(), int(visibility.count(QLatin1Char('v'))));
    }

    void shouldFollowVisibilityAndSelectionChanges()
    {
        kdDataSource source;
        TableView table;
        source.setTableView(&table);
        const auto aHeld = std::make_shared<Row>(QStringLiteral("a"));
        Row *a = aHeld.get();
        const auto bHeld = std::make_shared<Row>(QStringLiteral("b"));
        Row *b = bHeld.get();
        const auto cHeld = std::make_shared<Row>(QStringLiteral("c"));
        Row *c = cHeld.get();
        source.add(aHeld);
        source.add(bHeld);
        source.add(cHeld);
        QCOMPARE(source.getnthVisibleItem(1), b);
        b->setVisible(false);
        QCOMPARE(source.getnthVisibleItem(1), c);
        QCOMPARE(source.numberOfRowsInTableView(), 2);
        table.selectRow(1);
        QCOMPARE(source.getSelectedItem(), c);
        table.selectRow(-1);
        QVERIFY(!source.getSelectedItem());
        b->setVisible(true);
        source.swop(a, c);
        QCOMPARE(source.getnthVisibleItem(0), c);
        source.add(std::make_shared<Row>(QStringLiteral("d"), 0, false));
        QCOMPARE(source.numberOfRowsInTableView(), 3);
    }

    void shouldShowExactlyTheRecordsAFilterTakes()
    {
        kdDataSource source;
        const QStringList values{"apple", "banana", "avocado", "cherry"};
        for (const QString &value : values)
            source.add(std::make_shared<Row>(value, 0, false));
        QCOMPARE(source.numberOfRowsInTableView(), 0);
        source.filterBy([](const dataObject &record) {
            return static_cast<const Row &>(record).value.startsWith(QLatin1Char('a'));
        });
        QCOMPARE(source.numberOfRowsInTableView(), 2);
        QCOMPARE(static_cast<Row *>(source.getnthVisibleItem(1))->value, QStringLiteral("avocado"));
        source.filterBy([](const dataObject &) { return true; });
        QCOMPARE(source.numberOfRowsInTableView(), 4);
        QCOMPARE(static_cast<Row *>(source.getnthVisibleItem(3))->value, QStringLiteral("cherry"));
    }

    void shouldSwopOnlyRecordsThatAreBothHere()
    {
        kdDataSource source;
        const auto aHeld = std::make_shared<Row>(QStringLiteral("a"));
        Row *a = aHeld.get();
        const auto bHeld = std::make_shared<Row>(QStringLiteral("b"));
        Row *b = bHeld.get();
        source.add(aHeld);
        source.add(bHeld);
        Row stranger(QStringLiteral("x"));
        source.swop(a, &stranger);
        QCOMPARE(texts(source), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        source.swop(b, a);
        QCOMPARE(texts(source), QStringList({QStringLiteral("b"), QStringLiteral("a")}));
    }

    void shouldSortInTheKeptOrder_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<int>("options");
        QTest::addColumn<QStringList>("expected");

        const QStringList bac{QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("c")};
        QTest::newRow("not ascending gives ascending order")
            << bac << "text" << false << 0 << QStringList{"A", "b", "c"};
        QTest::newRow("ascending gives descending order") << bac << "text" << true << 0 << QStringList{"c", "b", "A"};
        QTest::newRow("option 1 is option 0") << bac << "text" << false << 1 << QStringList{"A", "b", "c"};
        QTest::newRow("other options never exchange") << bac << "text" << false << 7 << bac;
        QTest::newRow("equal ignoring case keeps its order")
            << QStringList{"b", "B", "a", "b"} << "text" << false << 0 << QStringList{"a", "b", "B", "b"};
        QTest::newRow("text, not numbers")
            << QStringList{"9", "10", "1"} << "text" << false << 0 << QStringList{"1", "10", "9"};
        QTest::newRow("name sorts by surname") << QStringList{"Jane Young", "Adam Zeta", "Zed Abel"} << "name" << false
                                               << 0 << QStringList{"Zed Abel", "Jane Young", "Adam Zeta"};
        QTest::newRow("dates: day first, not ascending")
            << QStringList{"01/02/08", "02/01/08"} << "date" << false << 2 << QStringList{"02/01/08", "01/02/08"};
        QTest::newRow("dates: ascending gives the latest first")
            << QStringList{"02/01/08", "01/02/08", "15/06/99"} << "date" << true << 2
            << QStringList{"01/02/08", "02/01/08", "15/06/99"};
        QTest::newRow("an undated record stays and nothing passes it")
            << QStringList{"05/05/08", "01/01/08", "soon", "04/04/08", "02/02/08"} << "date" << false << 2
            << QStringList{"01/01/08", "05/05/08", "soon", "02/02/08", "04/04/08"};
        QTest::newRow("one record is left alone") << QStringList{"x"} << "date" << false << 2 << QStringList{"x"};
    }
    void shouldSortInTheKeptOrder()
    {
        QFETCH(QStringList, values);
        QFETCH(QString, field);
        QFETCH(bool, ascending);
        QFETCH(int, options);
        QFETCH(QStringList, expected);
        kdDataSource source;
        for (const QString &value : values)
            source.add(std::make_shared<Row>(value));
        source.sortByColumn(field, ascending, options);
        QCOMPARE(texts(source), expected);
        for (int i = 0; i < source.getCount(); ++i)
            QCOMPARE(source.getNextItem(source.getnthItem(i)), source.getnthItem(i + 1));
    }

    void shouldKeepTheFirstDateItSortedBy()
    {
        kdDataSource source;
        const auto aHeld = std::make_shared<Row>(QStringLiteral("01/01/08"));
        Row *a = aHeld.get();
        const auto bHeld = std::make_shared<Row>(QStringLiteral("01/06/08"));
        Row *b = bHeld.get();
        source.add(aHeld);
        source.add(bHeld);
        source.sortByColumn(QStringLiteral("date"), false, 2);
        a->value = QStringLiteral("01/12/08");  // edited after its first date sort
        source.sortByColumn(QStringLiteral("date"), false, 2);
        QCOMPARE(source.getnthItem(0), a);
        // Text sorting sees the edit.
        source.sortByColumn(QStringLiteral("date"), false, 0);
        QCOMPARE(source.getnthItem(0), b);
    }

    // The fast sort must give the exchange sort's order on any data:
    // duplicates, mixed case, undated records, hidden records.
    void shouldAgreeWithTheExchangeSort_data()
    {
        QTest::addColumn<int>("options");
        QTest::addColumn<bool>("ascending");
        for (int options : {0, 2})
            for (bool ascending : {false, true})
                QTest::addRow("options %d ascending %d", options, int(ascending)) << options << ascending;
    }
    void shouldAgreeWithTheExchangeSort()
    {
        QFETCH(int, options);
        QFETCH(bool, ascending);
        QRandomGenerator random(1234 + uint(options) * 2 + uint(ascending));
        const QStringList words{"apple", "Apple", "banana", "b", "B", "", " c", "cherry"};
        for (int round = 0; round < 40; ++round) {
            kdDataSource source;
            std::vector<Row *> expected;
            std::vector<std::unique_ptr<Row>> twins;
            const int count = random.bounded(0, 30);
            for (int i = 0; i < count; ++i) {
                QString value;
                if (options == 2)
                    value = random.bounded(8) == 0 ? QStringLiteral("n/a")
                                                   : QStringLiteral("%1/%2/%3")
                                                         .arg(random.bounded(1, 4))
                                                         .arg(random.bounded(1, 3))
                                                         .arg(random.bounded(7, 9), 2, 10, QLatin1Char('0'));
                else
                    value = words.at(random.bounded(words.size()));
                auto row = std::make_shared<Row>(value, 0, random.bounded(3) != 0);
                source.add(row);
                twins.push_back(std::make_unique<Row>(value));
                expected.push_back(twins.back().get());
            }
            referenceSort(expected, QStringLiteral("text"), ascending, options);
            source.sortByColumn(QStringLiteral("text"), ascending, options);
            QStringList want;
            for (Row *row : expected)
                want << row->value;
            QCOMPARE(texts(source), want);
        }
    }
};

QUORVEL_TEST(kdDataSourceTest)
#include "kdDataSourceTest.moc"
