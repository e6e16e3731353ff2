// Undo Delete through the program's own windows: whatever list a record is
// deleted from, the Edit menu (Ctrl+Z) and the toolbar's Delete menu name
// it and bring it back in its place, with its id, what its deletion did
// undone (an order's attachments, the stock a line gave back), and the
// change written.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "app/Quorvel.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QTableView>
#include <QTest>

using testlib::TestEnvironment;

using Program = testlib::RunningProgram;

namespace {
QAction *undo(const Program &program)
{
    return program.named(QStringLiteral("undoDeleteAction"));
}
}  // namespace

class UndoDeleteTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
        TestEnvironment::current().clearAlerts();
    }

    void shouldBringBackARecordOfAnyList_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("menuText");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::newRow("order") << "2"
                               << "orderTableView" << 1 << "Undo Delete Order INV11"
                               << "orders.xml"
                               << "id"
                               << "11";
        QTest::newRow("contact with orders") << "1"
                                             << "contactOutline" << 0 << "Undo Delete Contact Ann Lee"
                                             << "contacts.xml"
                                             << "id"
                                             << "1";
        QTest::newRow("company") << "1"
                                 << "contactOutline" << 1 << "Undo Delete Company Acme"
                                 << "contacts.xml"
                                 << "id"
                                 << "2";
        QTest::newRow("item") << "3"
                              << "itemTableView" << 0 << "Undo Delete Item Bolt"
                              << "items.xml"
                              << "id"
                              << "20";
        QTest::newRow("task") << "pro"
                              << "actionTableView" << 1 << "Undo Delete Task Order glass"
                              << "actions.xml"
                              << "id"
                              << "41";
        QTest::newRow("bill") << "pro2"
                              << "billTableView" << 0 << "Undo Delete Bill Rent"
                              << "bills.xml"
                              << "id"
                              << "50";
    }
    void shouldBringBackARecordOfAnyList()
    {
        QFETCH(QString, tab);
        QFETCH(QString, list);
        QFETCH(int, row);
        QFETCH(QString, menuText);
        QFETCH(QString, file);
        QFETCH(QString, field);
        QFETCH(QString, value);
        Program program;
        QVERIFY(!undo(program)->isEnabled());
        QTableView *view = program.list(tab, list, row);
        const int rows = view->model()->rowCount();
        const QString shown = Program::cell(view, row, 0);

        Program::deleteSelected(view);
        QVERIFY(view->model()->rowCount() < rows);
        QVERIFY(undo(program)->isEnabled());
        QCOMPARE(undo(program)->text(), menuText);

        // Gone from the disk too, so that only the undo can write it back.
        QVERIFY(QFile::remove(platform::paths::bundleFile(file)));
        QTest::keyClick(view, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(view->model()->rowCount(), rows);
        QCOMPARE(Program::cell(view, row, 0), shown);
        QVERIFY(!undo(program)->isEnabled());
        QCOMPARE(undo(program)->text(), QStringLiteral("Undo Delete"));
        // Written at once, with its own id.
        QVERIFY(!testlib::recordOnDisk(file, field, value).isEmpty());
    }

    void shouldBringBackAnOrderWithItsAttachmentsAndLines()
    {
        Program program;
        const QString attachments = platform::paths::attachmentsDir() + QStringLiteral("/Order10");
        QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
        Program::deleteSelected(orders);
        QVERIFY(!QFileInfo::exists(attachments));
        QVERIFY(QFile::remove(platform::paths::bundleFile(QStringLiteral("orders.xml"))));
        // The toolbar's Delete button has the same command in its menu.
        auto *menu = program.window()->findChild<QMenu *>(QStringLiteral("deleteToolbarMenu"));
        QCOMPARE(menu->actions().value(0), undo(program));
        menu->actions().first()->trigger();

        QCOMPARE(Program::cell(orders, 0, 0), QStringLiteral("INV10"));
        QCOMPARE(testlib::readFile(attachments + QStringLiteral("/plan.txt")), QByteArray("a plan"));
        QCOMPARE(testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("id"), QStringLiteral("10"))
                     .value(QStringLiteral("contact"))
                     .toString(),
                 QStringLiteral("1"));
        // Its lines never left; opened again, the order shows them.
        orders->selectRow(0);
        program.window()->findChild<QAction *>(QStringLiteral("editAction"))->trigger();
        auto *lines
            = program.windows.orderEditorWindow()->findChild<QTableView *>(QStringLiteral("materialsTableView"));
        QCOMPARE(lines->model()->rowCount(), 2);
    }

    void shouldTakeBackTheStockALineGaveBack()
    {
        Program program;
        Item *bolt = static_cast<Item *>(program.quorvel.getItemManager()->getItemById(20));
        QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
        QTest::keyClick(orders, Qt::Key_E, Qt::ControlModifier);
        OrderEditorWindow *editor = program.windows.orderEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(editor));
        auto *lines = editor->findChild<QTableView *>(QStringLiteral("materialsTableView"));
        lines->setFocus();
        lines->selectRow(0);
        TestEnvironment::current().scriptAlertAnswers({1});
        QTest::keyClick(lines, Qt::Key_Delete);
        QCOMPARE(lines->model()->rowCount(), 1);
        QCOMPARE(bolt->getQty(), QStringLiteral("13"));  // the line's 3 back in stock
        QCOMPARE(undo(program)->text(), QStringLiteral("Undo Delete Line Bolt"));

        for (const char *name : {"items.xml", "itemsordered.xml"})
            QVERIFY(QFile::remove(platform::paths::bundleFile(QLatin1String(name))));
        program.quorvel.undoDelete();
        QCOMPARE(lines->model()->rowCount(), 2);
        QCOMPARE(Program::cell(lines, 0, 0), QStringLiteral("Bolt"));
        QCOMPARE(bolt->getQty(), QStringLiteral("10"));
        QCOMPARE(testlib::recordOnDisk(QStringLiteral("items.xml"), QStringLiteral("id"), QStringLiteral("20"))
                     .value(QStringLiteral("qty"))
                     .toString(),
                 QStringLiteral("10"));
        QCOMPARE(testlib::recordOnDisk(QStringLiteral("itemsordered.xml"), QStringLiteral("id"), QStringLiteral("30"))
                     .value(QStringLiteral("item"))
                     .toString(),
                 QStringLiteral("Bolt"));
    }

    void shouldForgetDeletionsAndHeldAttachmentsAtQuit()
    {
        Program program;
        QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
        Program::deleteSelected(orders);
        QVERIFY(undo(program)->isEnabled());
        program.windows.terminate();
        QVERIFY(!undo(program)->isEnabled());
        QVERIFY(!QFileInfo::exists(platform::paths::bundleFile(QStringLiteral("Deleted Attachments"))));
        QVERIFY(
            testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("id"), QStringLiteral("10")).isEmpty());
    }
};

QUORVEL_TEST(UndoDeleteTest)
#include "UndoDeleteTest.moc"
