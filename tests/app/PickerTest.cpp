#include "TableCells.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "contacts/Contact.h"
#include "reports/ReportItem.h"
#include "store/Picker.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using testlib::TestEnvironment;

namespace {

std::shared_ptr<Contact> contact(const QString &name, const QString &add1, int id = 0)
{
    auto record = std::make_shared<Contact>();
    record->setName(name);
    record->setAdd1(add1);
    record->setID(id);
    return record;
}

// The caller's side: a collection of contacts and what the picker handed back.
struct Caller
{
    kdDataSource contacts;
    QList<dataObject *> received;
    int calls = 0;
    Picker::Callback callback()
    {
        return [this](dataObject *chosen) {
            ++calls;
            received.append(chosen);
        };
    }
    // Opens the picker on the contacts' names and first address lines.
    void open(Picker &picker) { picker.beginfor(callback(), &contacts, "name", "add1", "Contact"); }
};

QStringList column(const Picker &picker, const char *columnId)
{
    return testlib::columnCells(picker, QLatin1String(columnId));
}

// The exchange sort the picker's order must agree with, written out as the
// picker has always done it: passes of neighbour exchanges until a pass
// exchanges nothing.
void exchangeSort(std::vector<ReportItem *> &rows, int field, bool ascending)
{
    bool exchanged = true;
    while (exchanged) {
        exchanged = false;
        for (size_t i = 0; i + 1 < rows.size(); ++i) {
            const int comparison
                = rows[i]->getnthField(field).compare(rows[i + 1]->getnthField(field), Qt::CaseInsensitive);
            if ((ascending && comparison > 0) || (!ascending && comparison < 0)) {
                std::swap(rows[i], rows[i + 1]);
                exchanged = true;
            }
        }
    }
}

QString randomWord(QRandomGenerator &random)
{
    // A small alphabet, so that equal and case-equal values are common.
    static const QString letters = QStringLiteral("aAbB91 0é");
    QString word;
    const int length = random.bounded(4);
    for (int i = 0; i < length; ++i)
        word += letters.at(random.bounded(int(letters.size())));
    return word;
}

}  // namespace

class PickerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { TestEnvironment::current().clearAlerts(); }

    void shouldWarnAndChangeNothingWhenTheCollectionIsEmpty()
    {
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann Smith"), QStringLiteral("1 High St")));
        Picker picker;
        picker.beginfor(caller.callback(), &caller.contacts, QStringLiteral("name"), QStringLiteral("address"),
                        QStringLiteral("Contact"));
        QVERIFY(picker.pickerWindow->isVisible());

        kdDataSource suppliers;
        picker.beginfor(caller.callback(), &suppliers, QStringLiteral("code"), QStringLiteral("item"),
                        QStringLiteral("Supplier"));

        const auto &alerts = TestEnvironment::current().alertsShown();
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(alerts.first().message, QStringLiteral("None in database"));
        QCOMPARE(alerts.first().informativeText,
                 QStringLiteral("There are no Suppliers in the datbase. First create some by going to File > "
                                "New.... or the appropriate toolbar button"));
        QCOMPARE(alerts.first().defaultButton, QStringLiteral("OK"));
        QVERIFY(alerts.first().alternateButton.isEmpty());
        QVERIFY(alerts.first().otherButton.isEmpty());

        // The window from the earlier opening is as it was.
        QVERIFY(picker.pickerWindow->isVisible());
        QCOMPARE(picker.pickerWindow->title(), QStringLiteral("Select Contact"));
        QCOMPARE(picker.getCurrentDataSource(), &caller.contacts);
        QCOMPARE(picker.getField1(), QStringLiteral("name"));
        QCOMPARE(column(picker, "1"), QStringList{QStringLiteral("Ann Smith")});
    }

    void shouldNotOpenOverAnEmptyCollection()
    {
        Caller caller;
        Picker picker;
        picker.beginfor(caller.callback(), &caller.contacts, QStringLiteral("name"), QStringLiteral("address"),
                        QStringLiteral("Task"));
        QVERIFY(!picker.pickerWindow->isVisible());
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        picker.finish();
        QCOMPARE(caller.calls, 0);
    }

    void shouldTitleTheWindowWithTheTypeWord_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("title");
        QTest::newRow("supplier") << "Supplier"
                                  << "Select Supplier";
        QTest::newRow("placeholder-like word") << "%@ Task"
                                               << "Select %@ Task";
    }
    void shouldTitleTheWindowWithTheTypeWord()
    {
        QFETCH(QString, type);
        QFETCH(QString, title);
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann"), QString()));
        Picker picker;
        picker.beginfor(caller.callback(), &caller.contacts, QStringLiteral("name"), QStringLiteral("address"), type);
        QCOMPARE(picker.pickerWindow->title(), title);
        QVERIFY(picker.pickerWindow->isVisible());
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());
    }

    void shouldShowTheTwoFieldsOfEveryRecordInTheCallersOrder()
    {
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Zoe Young"), QStringLiteral("2 Low Rd"), 5));
        auto hidden = contact(QStringLiteral("Al Brown"), QStringLiteral("3 Mill Ln"), 2);
        hidden->setVisible(false);  // filtered out in the caller's list: still offered
        caller.contacts.add(hidden);
        Picker picker;
        caller.open(picker);

        QCOMPARE(column(picker, "1"), QStringList({QStringLiteral("Zoe Young"), QStringLiteral("Al Brown")}));
        QCOMPARE(column(picker, "2"), QStringList({QStringLiteral("2 Low Rd"), QStringLiteral("3 Mill Ln")}));
        QCOMPARE(column(picker, "3"), QStringList({QString(""), QString("")}));
        QCOMPARE(picker.table->tableColumns().size(), 2);
        QCOMPARE(picker.table->tableColumns().at(0).identifier, QStringLiteral("1"));
        QCOMPARE(picker.table->tableColumns().at(0).title, QStringLiteral("Name"));
        QCOMPARE(picker.table->tableColumns().at(1).identifier, QStringLiteral("2"));
        QCOMPARE(picker.table->tableColumns().at(1).title, QStringLiteral("Add1"));
    }

    void shouldTellApartRecordsThatShowTheSameValues()
    {
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Jo Bloggs"), QStringLiteral("1 Elm St"), 4));
        caller.contacts.add(contact(QStringLiteral("Jo Bloggs"), QStringLiteral("1 Elm St"), 9));
        Picker picker;
        caller.open(picker);
        QCOMPARE(column(picker, "1"), QStringList({QStringLiteral("Jo Bloggs"), QStringLiteral("Jo Bloggs")}));

        picker.table->userSelectRow(1);
        picker.finish();

        QVERIFY(!picker.pickerWindow->isVisible());
        QCOMPARE(caller.calls, 1);
        QCOMPARE(caller.received.first(), caller.contacts.getItemById(9));
        QVERIFY(caller.received.first() != caller.contacts.getItemById(4));
    }

    void shouldConfirmOnlyOnceWhenEnterAlsoReachesTheDefaultButton_data()
    {
        QTest::addColumn<bool>("inSearchField");
        QTest::newRow("double click or Enter on a row") << false;
        QTest::newRow("Enter in the search field") << true;
    }
    void shouldConfirmOnlyOnceWhenEnterAlsoReachesTheDefaultButton()
    {
        QFETCH(bool, inSearchField);
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann"), QString(), 3));
        Picker picker;
        caller.open(picker);
        if (inSearchField) {
            picker.table->userSelectRow(0);
            picker.searchBox->performAction();
        } else {
            picker.table->userDoubleClick(0);
        }
        picker.finish();  // the window's default button
        QCOMPARE(caller.calls, 1);
        QCOMPARE(caller.received.first(), caller.contacts.getItemById(3));
    }

    void shouldHideAndCallNothing_data()
    {
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("confirmed with no row chosen") << false;
        QTest::newRow("cancelled with a row chosen") << true;
    }
    void shouldHideAndCallNothing()
    {
        QFETCH(bool, cancelled);
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann"), QString(), 3));
        Picker picker;
        caller.open(picker);
        if (cancelled) {
            picker.table->userSelectRow(0);
            picker.cancel();
        }
        picker.finish();
        QVERIFY(!picker.pickerWindow->isVisible());
        QCOMPARE(caller.calls, 0);
    }

    void shouldCallBackWithNoneWhenTheRecordIsGone()
    {
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann"), QString(), 3));
        caller.contacts.add(contact(QStringLiteral("Bob"), QString(), 6));
        Picker picker;
        caller.open(picker);
        caller.contacts.deleteItem(caller.contacts.getItemById(6));

        picker.table->userSelectRow(1);
        picker.finish();
        QCOMPARE(caller.calls, 1);
        QCOMPARE(caller.received.first(), nullptr);
    }

    void shouldStartAFreshOpeningWithNoRowChosen()
    {
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann"), QString(), 3));
        caller.contacts.add(contact(QStringLiteral("Bob"), QString(), 6));
        Picker picker;
        caller.open(picker);
        picker.searchBox->userSetStringValue(QStringLiteral("bob"));
        picker.table->userSelectRow(0);
        picker.cancel();

        caller.open(picker);
        QCOMPARE(picker.searchBox->stringValue(), QStringLiteral(""));
        QCOMPARE(picker.table->selectedRow(), -1);
        QCOMPARE(column(picker, "1"), QStringList({QStringLiteral("Ann"), QStringLiteral("Bob")}));
    }

    void shouldFilterByTextOrId_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("nothing typed") << "" << QStringList({"Ann Smith", "Bob Jones", "Cy Smithers", "Room 12"});
        QTest::newRow("part of a name, any case") << "SMITH" << QStringList({"Ann Smith", "Cy Smithers"});
        QTest::newRow("second field") << "mill" << QStringList({"Bob Jones"});
        QTest::newRow("id number") << "7" << QStringList({"Cy Smithers"});
        QTest::newRow("id or text") << "12" << QStringList({"Bob Jones", "Room 12"});
        QTest::newRow("no match") << "zzz" << QStringList();
    }
    void shouldFilterByTextOrId()
    {
        QFETCH(QString, search);
        QFETCH(QStringList, shown);
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Ann Smith"), QStringLiteral("1 High St"), 3));
        caller.contacts.add(contact(QStringLiteral("Bob Jones"), QStringLiteral("5 Mill Ln"), 12));
        caller.contacts.add(contact(QStringLiteral("Cy Smithers"), QStringLiteral("9 Elm Rd"), 7));
        caller.contacts.add(contact(QStringLiteral("Room 12"), QStringLiteral("4 Oak Av"), 20));
        Picker picker;
        caller.open(picker);
        QSignalSpy reloads(picker.table, &TableView::reloaded);

        picker.searchBox->userSetStringValue(QStringLiteral("x"));
        picker.searchBox->userSetStringValue(search);

        QCOMPARE(column(picker, "1"), shown);
        QCOMPARE(reloads.size(), 2);
    }

    void shouldSortAsItReadsByTheClickedColumn_data()
    {
        QTest::addColumn<QString>("columnId");
        QTest::addColumn<int>("clicks");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("first column ascending, numbers as numbers before words")
            << "1" << 1 << QStringList({"9", "10", "apple", "Banana", "cherry"});
        QTest::newRow("first column descending") << "1" << 2 << QStringList({"cherry", "Banana", "apple", "10", "9"});
        QTest::newRow("second column ascending") << "2" << 1 << QStringList({"Banana", "apple", "10", "9", "cherry"});
        QTest::newRow("unknown column leaves the order")
            << "x" << 1 << QStringList({"Banana", "10", "apple", "9", "cherry"});
    }
    void shouldSortAsItReadsByTheClickedColumn()
    {
        QFETCH(QString, columnId);
        QFETCH(int, clicks);
        QFETCH(QStringList, order);
        Caller caller;
        caller.contacts.add(contact(QStringLiteral("Banana"), QStringLiteral("a")));
        caller.contacts.add(contact(QStringLiteral("10"), QStringLiteral("C")));
        caller.contacts.add(contact(QStringLiteral("apple"), QStringLiteral("b")));
        caller.contacts.add(contact(QStringLiteral("9"), QStringLiteral("c")));
        caller.contacts.add(contact(QStringLiteral("cherry"), QStringLiteral("d")));
        Picker picker;
        caller.open(picker);
        QSignalSpy reloads(picker.table, &TableView::reloaded);
        for (int i = 0; i < clicks; ++i)
            picker.table->userClickColumn(columnId);
        QCOMPARE(column(picker, "1"), order);
        QCOMPARE(reloads.size(), clicks);
    }

    void shouldSortTheSameWithOptionsZeroToTwoOnly_data()
    {
        QTest::addColumn<int>("options");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("0") << 0 << QStringList({"a", "B", "c"});
        QTest::newRow("2, as text too") << 2 << QStringList({"a", "B", "c"});
        QTest::newRow("3 does not sort") << 3 << QStringList({"c", "a", "B"});
        QTest::newRow("-1 does not sort") << -1 << QStringList({"c", "a", "B"});
    }
    void shouldSortTheSameWithOptionsZeroToTwoOnly()
    {
        QFETCH(int, options);
        QFETCH(QStringList, order);
        Caller caller;
        for (const char *name : {"c", "a", "B"})
            caller.contacts.add(contact(QString::fromLatin1(name), QString()));
        Picker picker;
        caller.open(picker);
        picker.sortByColumn(QStringLiteral("1"), true, options);
        QCOMPARE(column(picker, "1"), order);
    }

    void shouldSortExactlyAsTheExchangeSortOnRandomRows_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("count");
        for (quint32 seed : {1u, 2u, 3u, 42u, 2026u})
            QTest::addRow("seed %u", seed) << seed << int(40 + seed % 300);
    }
    void shouldSortExactlyAsTheExchangeSortOnRandomRows()
    {
        QFETCH(quint32, seed);
        QFETCH(int, count);
        QRandomGenerator random(seed);
        Caller caller;
        for (int i = 0; i < count; ++i)
            caller.contacts.add(contact(randomWord(random), randomWord(random)));
        Picker picker;
        caller.open(picker);

        // A run of clicks on both columns, each sorting what the last left.
        const std::pair<const char *, bool> clicks[] = {{"1", true}, {"2", false}, {"1", false}, {"2", true}};
        for (const auto &[columnId, ascending] : clicks) {
            std::vector<ReportItem *> expected;
            for (int i = 0; i < picker.getCount(); ++i)
                expected.push_back(static_cast<ReportItem *>(picker.getnthItem(i)));
            exchangeSort(expected, QString::fromLatin1(columnId).toInt(), ascending);

            picker.sortByColumn(QString::fromLatin1(columnId), ascending, 0);

            for (int i = 0; i < picker.getCount(); ++i)
                QCOMPARE(picker.getnthItem(i), expected[size_t(i)]);
        }
    }
};

QUORVEL_TEST(PickerTest)
#include "PickerTest.moc"
