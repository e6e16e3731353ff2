// Deleting a record that something still uses, through the program's own
// windows: an order keeps (shows, finds, exports and writes) its customer
// after the contact is deleted, and an editor whose record is deleted from
// the list while it is open can still be finished, without bringing the
// record back.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "platform/Paths.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using testlib::TestEnvironment;

using Program = testlib::RunningProgram;

class DeleteWhileInUseTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
        TestEnvironment::current().clearAlerts();
    }

    void shouldKeepAnOrdersCustomerWhenTheContactIsDeleted()
    {
        Program program;
        QTableView *contacts = program.list(QStringLiteral("1"), QStringLiteral("contactOutline"), 0);
        QCOMPARE(contacts->model()->index(0, 0).data().toString(), QStringLiteral("Ann Lee"));
        Program::deleteSelected(contacts);
        QVERIFY(!Program::column(contacts, 0).contains(QStringLiteral("Ann Lee")));

        // The orders list draws her orders with her name, and finds them by it.
        QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), -1);
        QCOMPARE(Program::column(orders, 3).value(0), QStringLiteral("Ann Lee"));
        auto *search = program.window()->findChild<QLineEdit *>(QStringLiteral("orderSearchField"));
        search->setFocus();
        QTest::keyClicks(search, QStringLiteral("Ann"));
        QCOMPARE(Program::column(orders, 0), QStringList{QStringLiteral("INV10")});

        // Exported and written with her.
        const QString exported = TestEnvironment::current().root() + QStringLiteral("/orders.csv");
        TestEnvironment::current().scriptFilePanelAnswers({exported});
        program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
        program.window()->findChild<QAction *>(QStringLiteral("exportCSVAction"))->trigger();
        QVERIFY(testlib::readFile(exported).contains("\"INV10\",\"\",\"Kitchen\",\"Ann Lee\""));
        program.windows.terminate();
        QCOMPARE(testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("id"), QStringLiteral("10"))
                     .value(QStringLiteral("contact"))
                     .toString(),
                 QStringLiteral("1"));
        QVERIFY(
            testlib::recordOnDisk(QStringLiteral("contacts.xml"), QStringLiteral("id"), QStringLiteral("1")).isEmpty());
    }

    void shouldFinishAnEditorWhoseRecordWasDeleted_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("id");
        QTest::addColumn<int>("column");  // one that tells the rows apart
        QTest::newRow("order") << "2"
                               << "orderTableView" << 1 << "orderEditorWindow"
                               << "orders.xml"
                               << "11" << 0;
        QTest::newRow("task") << "pro"
                              << "actionTableView" << 0 << "taskEditorWindow"
                              << "actions.xml"
                              << "40" << 1;
        QTest::newRow("item") << "3"
                              << "itemTableView" << 1 << "itemEditorWindow"
                              << "items.xml"
                              << "21" << 0;
        QTest::newRow("bill") << "pro2"
                              << "billTableView" << 1 << "billEditorWindow"
                              << "bills.xml"
                              << "51" << 1;
        QTest::newRow("contact") << "1"
                                 << "contactOutline" << 0 << "contactEditorWindow"
                                 << "contacts.xml"
                                 << "1" << 0;
        QTest::newRow("company") << "1"
                                 << "contactOutline" << 1 << "companyEditorWindow"
                                 << "contacts.xml"
                                 << "2" << 0;
        QTest::newRow("company's person") << "1"
                                          << "contactOutline" << 2 << "companyContactEditorWindow"
                                          << "contacts.xml"
                                          << "3" << 0;
    }
    void shouldFinishAnEditorWhoseRecordWasDeleted()
    {
        QFETCH(QString, tab);
        QFETCH(QString, list);
        QFETCH(int, row);
        QFETCH(QString, editor);
        QFETCH(QString, file);
        QFETCH(QString, id);
        QFETCH(int, column);
        Program program;
        QTableView *view = program.list(tab, list, row);
        const QString shown = view->model()->index(row, column).data().toString();
        program.window()->findChild<QAction *>(QStringLiteral("editAction"))->trigger();
        QDialog *window = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (top->objectName() == editor)
                window = qobject_cast<QDialog *>(top);
        }
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));

        view = program.list(tab, list, row);
        Program::deleteSelected(view);
        QVERIFY(!Program::column(view, column).contains(shown));

        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
        QVERIFY(!window->isVisible());
        QVERIFY(!Program::column(view, column).contains(shown));
        program.windows.terminate();
        QVERIFY(testlib::recordOnDisk(file, QStringLiteral("id"), id).isEmpty());
    }
};

QUORVEL_TEST(DeleteWhileInUseTest)
#include "DeleteWhileInUseTest.moc"
