// The File menu's and the toolbar's "New ..." commands open the editor of
// that kind of record, each in its own window.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QWidget>

namespace {

QWidget *topLevelNamed(const QString &name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->objectName() == name)
            return window;
    }
    return nullptr;
}

}  // namespace

class NewRecordCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldOpenTheEditorOfThatKind_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("editor");
        QTest::newRow("menu: contact") << "newContactAction"
                                       << "contactEditorWindow";
        QTest::newRow("menu: company") << "newCompanyAction"
                                       << "companyEditorWindow";
        QTest::newRow("menu: order") << "newOrderAction"
                                     << "orderEditorWindow";
        QTest::newRow("menu: item") << "newItemAction"
                                    << "itemEditorWindow";
        QTest::newRow("menu: task") << "newTaskAction"
                                    << "taskEditorWindow";
        QTest::newRow("menu: bill") << "newInvoiceAction"
                                    << "billEditorWindow";
        QTest::newRow("toolbar: contact") << "contactItemIdentifier"
                                          << "contactEditorWindow";
        QTest::newRow("toolbar: company") << "companyItemIdentifier"
                                          << "companyEditorWindow";
        QTest::newRow("toolbar: item") << "itemItemIdentifier"
                                       << "itemEditorWindow";
    }
    void shouldOpenTheEditorOfThatKind()
    {
        QFETCH(QString, command);
        QFETCH(QString, editor);
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.mainWindow()->rebuildToolBar();
        QAction *action = windows.mainWindow()->findChild<QAction *>(command);
        QVERIFY2(action, qPrintable(command));
        QWidget *window = topLevelNamed(editor);
        QVERIFY2(window, qPrintable(editor));
        QVERIFY(!window->isVisible());

        action->trigger();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!window->isVisible());
    }
};

QUORVEL_TEST(NewRecordCommandsTest)
#include "NewRecordCommandsTest.moc"
