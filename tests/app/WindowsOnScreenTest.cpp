// Windows as the user meets them: the period of the accounts above all
// three of its tables, and Escape putting a window away.
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/widgets/NotepadWindow.h"
#include "platform/Paths.h"
#include "platform/outlets/Window.h"

#include <QComboBox>
#include <QTextEdit>
#include <QDir>

using Program = testlib::RunningProgram;

class WindowsOnScreenTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
    }

    void shouldShowThePeriodAboveAllThreeAccountsTables()
    {
        Program program;
        program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        auto *period = program.window()->findChild<QComboBox *>(QStringLiteral("billPeriodPopUp"));
        auto *tables = program.window()->findChild<QTabWidget *>(QStringLiteral("accountsTabView"));
        QVERIFY(period && tables);
        // Not inside any of the sub-tabs, and still there on the statement.
        QVERIFY(!tables->isAncestorOf(period));
        tables->setCurrentIndex(2);
        QVERIFY(period->isVisibleTo(program.window()));
        // The statement's difference is labelled on screen; the money in
        // reads "Date Paid" above its dates.
        auto *statement = program.window()->findChild<QTableView *>(QStringLiteral("statementTableView"));
        QCOMPARE(statement->model()->index(3, 0).data().toString(), QStringLiteral("Difference"));
        auto *moneyIn = program.window()->findChild<QTableView *>(QStringLiteral("moneyInTableView"));
        QCOMPARE(moneyIn->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Date Paid"));
    }

    void shouldPutTheNotepadAwayWithEscape()
    {
        Program program;
        program.quorvel.notePad->makeKeyAndOrderFront();
        auto *notepad = program.window()->window()->findChild<NotepadWindow *>();
        if (!notepad) {
            for (QWidget *top : QApplication::topLevelWidgets())
                notepad = notepad ? notepad : qobject_cast<NotepadWindow *>(top);
        }
        QVERIFY(notepad);
        QVERIFY(QTest::qWaitForWindowExposed(notepad));
        notepad->activateWindow();
        QApplication::setActiveWindow(notepad);
        QTest::keyClick(notepad->editor(), Qt::Key_Escape);
        QVERIFY(!notepad->isVisible());
    }
};

QUORVEL_TEST(WindowsOnScreenTest)
#include "WindowsOnScreenTest.moc"
