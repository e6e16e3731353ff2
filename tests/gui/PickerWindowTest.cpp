#include "TableCells.h"
#include "TestMain.h"

#include "app/widgets/PickerWindow.h"
#include "app/widgets/integrityTableView.h"
#include "contacts/Contact.h"
#include "store/Picker.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

void addContact(kdDataSource &contacts, const QString &name, const QString &add1, int id)
{
    auto record = std::make_shared<Contact>();
    record->setName(name);
    record->setAdd1(add1);
    record->setID(id);
    contacts.add(record);
}

// A picker over three contacts with its window, opened as the order editor
// opens it, counting what the callback receives.
struct OpenPicker
{
    kdDataSource contacts;
    Picker picker;
    PickerWindow window{picker};
    QList<dataObject *> received;

    OpenPicker()
    {
        addContact(contacts, QStringLiteral("Ann Smith"), QStringLiteral("1 High St"), 3);
        addContact(contacts, QStringLiteral("Bob Jones"), QStringLiteral("5 Mill Ln"), 5);
        addContact(contacts, QStringLiteral("Bob Brown"), QStringLiteral("9 Elm Rd"), 8);
        picker.beginfor([this](dataObject *chosen) { received.append(chosen); }, &contacts, QStringLiteral("name"),
                        QStringLiteral("add1"), QStringLiteral("Contact"));
    }

    QStringList shownNames() const { return testlib::modelColumn(*window.table()->model()); }
};

}  // namespace

class PickerWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldHandBackTheRecordChosenWithTheKeyboard_data()
    {
        QTest::addColumn<QString>("confirmation");
        QTest::newRow("Enter in the table") << "table";
        QTest::newRow("Enter back in the search field") << "search";
        QTest::newRow("Select button") << "button";
    }
    void shouldHandBackTheRecordChosenWithTheKeyboard()
    {
        QFETCH(QString, confirmation);
        OpenPicker open;
        PickerWindow &window = open.window;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("Select Contact"));
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("searchBox")), window.searchField());
        QCOMPARE(window.findChild<integrityTableView *>(QStringLiteral("pickerTable")), window.table());
        QCOMPARE(open.shownNames(), QStringList({"Ann Smith", "Bob Jones", "Bob Brown"}));

        QTest::keyClicks(window.searchField(), QStringLiteral("bob"));
        QCOMPARE(open.shownNames(), QStringList({"Bob Jones", "Bob Brown"}));

        QTest::keyClick(window.searchField(), Qt::Key_Down);  // into the table, on the first row
        QTest::keyClick(window.table(), Qt::Key_Down);
        QCOMPARE(open.picker.table->selectedRow(), 1);

        if (confirmation == QLatin1String("table")) {
            QTest::keyClick(window.table(), Qt::Key_Return);
        } else if (confirmation == QLatin1String("search")) {
            window.searchField()->setFocus();
            QTest::keyClick(window.searchField(), Qt::Key_Return);
        } else {
            QTest::mouseClick(window.selectButton(), Qt::LeftButton);
        }

        QCOMPARE(open.received.size(), 1);
        QCOMPARE(open.received.first(), open.contacts.getItemById(8));
        QVERIFY(!window.isVisible());
        QVERIFY(!open.picker.pickerWindow->isVisible());
    }

    void shouldChooseTheOneMatchWithEnterInTheSearch_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("chosenId");
        QTest::newRow("one match") << "ann" << 3;
        QTest::newRow("two matches, none selected") << "bob" << -1;
    }
    void shouldChooseTheOneMatchWithEnterInTheSearch()
    {
        QFETCH(QString, typed);
        QFETCH(int, chosenId);
        OpenPicker open;
        QVERIFY(QTest::qWaitForWindowExposed(&open.window));
        QTest::keyClicks(open.window.searchField(), typed);
        QTest::keyClick(open.window.searchField(), Qt::Key_Return);
        if (chosenId < 0) {
            QVERIFY(open.received.isEmpty());
        } else {
            QCOMPARE(open.received.size(), 1);
            QCOMPARE(open.received.first(), open.contacts.getItemById(chosenId));
        }
    }

    void shouldCancelWithEscapeAndHandBackNothing()
    {
        OpenPicker open;
        QVERIFY(QTest::qWaitForWindowExposed(&open.window));
        QTest::keyClick(open.window.searchField(), Qt::Key_Down);
        QCOMPARE(open.picker.table->selectedRow(), 0);

        QTest::keyClick(open.window.table(), Qt::Key_Escape);

        QVERIFY(!open.window.isVisible());
        QVERIFY(!open.picker.pickerWindow->isVisible());
        QVERIFY(open.received.isEmpty());
    }

    void shouldGoOnSearchingWhenTypingInTheTable()
    {
        OpenPicker open;
        QVERIFY(QTest::qWaitForWindowExposed(&open.window));
        QTest::keyClicks(open.window.table(), QStringLiteral("jo"));
        QCOMPARE(open.window.searchField()->text(), QStringLiteral("jo"));
        QCOMPARE(open.shownNames(), QStringList({"Bob Jones"}));
    }

    void shouldRememberItsSizeAndPlace()
    {
        {
            OpenPicker open;
            QVERIFY(QTest::qWaitForWindowExposed(&open.window));
            open.window.resize(520, 410);
            open.picker.cancel();
            QVERIFY(!open.window.isVisible());
        }
        OpenPicker again;
        QCOMPARE(again.window.size(), QSize(520, 410));
    }
};

QUORVEL_TEST(PickerWindowTest)
#include "PickerWindowTest.moc"
