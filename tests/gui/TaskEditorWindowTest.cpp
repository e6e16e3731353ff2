#include "FormDriver.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"
#include "tasks/widgets/TaskEditorWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The program's windows over a controller, without reading a database.
struct Program : testlib::FormDriver
{
    Quorvel quorvel;
    ActionManager &actions = *quorvel.getActionManager();
    ApplicationWindows windows{quorvel};
    QWidget *form() override { return windows.taskEditorWindow(); }
    QTableView *taskList() const
    {
        return windows.mainWindow()->findChild<QTableView *>(QStringLiteral("actionTableView"));
    }
};

}  // namespace

// The task editor and the task list, driven as a user would.
class TaskEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { TestEnvironment::current().clearAlerts(); }

    void shouldOpenFromNewTaskAndWorkOutTimeAndChargeBeforeStoring()
    {
        Program program;
        program.windows.mainWindow()->findChild<QAction *>(QStringLiteral("newTaskAction"))->trigger();
        TaskEditorWindow *window = program.windows.taskEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(program.find<QLineEdit>("startDate")->placeholderText(), QStringLiteral("dd/mm/yy"));

        program.type("title", QStringLiteral("Fit kitchen"));
        program.type("startDate", QStringLiteral("01/03/08"));
        program.type("startTime", QStringLiteral("09:00"));
        program.type("endDate", QStringLiteral("01/03/08"));
        program.type("endTime", QStringLiteral("17:30"));
        program.type("rate", QStringLiteral("40"));
        program.click("calculateTotalTimeButton");
        QCOMPARE(program.find<QLineEdit>("totalTime")->text(), QStringLiteral("8.5"));
        program.click("calculateTotalChargeButton");
        QCOMPARE(program.find<QLineEdit>("totalCharge")->text(), QStringLiteral("340.00"));
        QTest::mouseClick(program.find<QCheckBox>("alarmButton"), Qt::LeftButton);

        program.click("okButton");
        QVERIFY(window->isHidden());
        QCOMPARE(program.actions.getCount(), 1);
        const auto *stored = static_cast<const Action *>(program.actions.getnthItem(0));
        QCOMPARE(stored->getTitle(), QStringLiteral("Fit kitchen"));
        QCOMPARE(stored->getTotalTime(), QStringLiteral("8.5"));
        QCOMPARE(stored->getTotalCharge(), QStringLiteral("340.00"));
        QVERIFY(stored->isAlarm());
    }

    void shouldSayWhyNoTimeWasWorkedOutAndAddNothingOnCancel()
    {
        Program program;
        program.actions.create();
        QVERIFY(QTest::qWaitForWindowExposed(program.windows.taskEditorWindow()));
        program.type("startDate", QStringLiteral("someday"));
        program.type("startTime", QStringLiteral("09:00"));
        program.click("calculateTotalTimeButton");
        QCOMPARE(program.find<QLineEdit>("totalTime")->text(), QString());
        QVERIFY(!program.find<QLabel>("calculationMessage")->text().isEmpty());
        program.click("cancelButton");
        QVERIFY(program.windows.taskEditorWindow()->isHidden());
        QCOMPARE(program.actions.getCount(), 0);
    }

    void shouldToggleDoneWithSpaceAndAskBeforeDeletingWithBackspace()
    {
        Program program;
        auto task = std::make_shared<Action>();
        task->setTitle(QStringLiteral("Paint door"));
        program.actions.add(task);
        program.actions.reloadData();
        program.actions.table->selectRow(0);
        QTableView *list = program.taskList();
        QVERIFY(list);

        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(task->isComplete());
        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(!task->isComplete());

        TestEnvironment::current().scriptAlertAnswers({0});
        QTest::keyClick(list, Qt::Key_Backspace);
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QCOMPARE(TestEnvironment::current().alertsShown().first().message, QStringLiteral("Delete Task"));
        QCOMPARE(program.actions.getCount(), 1);
    }
};

QUORVEL_TEST(TaskEditorWindowTest)
#include "TaskEditorWindowTest.moc"
