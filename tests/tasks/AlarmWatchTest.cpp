#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "platform/Alerts.h"
#include "store/PrefsController.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"
#include "tasks/AlarmWatch.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace std::chrono_literals;
using testlib::TestEnvironment;

// The alarm watch on the test clock (2026-01-15 10:00): each overdue alarm
// rings once, hidden and done tasks too, until its alarm is reset.
class AlarmWatchTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Quorvel> quorvel;
    ActionManager &actions() { return *quorvel->getActionManager(); }

    Action *alarmed(const QString &title, const QString &endDate, const QString &endTime = QStringLiteral("09:59"))
    {
        auto action = std::make_shared<Action>();
        action->setTitle(title);
        action->setEndDate(endDate);
        action->setEndTime(endTime);
        action->setAlarm(true);
        actions().add(action);
        return action.get();
    }
    QStringList rungTitles() const
    {
        QStringList titles;
        for (const platform::Alert &alert : TestEnvironment::current().alertsShown()) {
            if (alert.message == QLatin1String("Alarm"))
                titles << alert.informativeText;
        }
        return titles;
    }

private Q_SLOTS:
    void init()
    {
        quorvel = std::make_unique<Quorvel>();
        TestEnvironment::current().clearAlerts();
    }
    void cleanup() { quorvel.reset(); }

    void shouldRingEveryOverdueAlarmOnceInCollectionOrder()
    {
        alarmed(QStringLiteral("Ring the plumber"), QStringLiteral("15/01/26"));
        alarmed(QStringLiteral("Not yet"), QStringLiteral("15/01/26"), QStringLiteral("10:01"));
        alarmed(QStringLiteral("Done but alarmed"), QStringLiteral("01/12/25"))->setComplete(true);
        alarmed(QStringLiteral("Hidden 100% job"), QStringLiteral("14/01/26"))->setVisible(false);
        alarmed(QStringLiteral("Alarm off"), QStringLiteral("14/01/26"))->setAlarm(false);
        alarmed(QStringLiteral("No end"), QString());
        QSignalSpy raised(&actions(), &ActionManager::alarmRaised);

        QCOMPARE(actions().checkForOverdueActions(TestEnvironment::fixedNow()), 3);
        const QStringList expected{"Ring the plumber", "Done but alarmed", "Hidden 100% job"};
        QCOMPARE(rungTitles(), expected);
        QCOMPARE(raised.size(), 3);
        QVERIFY(static_cast<Action *>(actions().getnthItem(0))->isAlarmAcknowledged());

        QCOMPARE(actions().checkForOverdueActions(TestEnvironment::fixedNow().addSecs(60)), 0);
        QCOMPARE(rungTitles(), expected);
    }

    void shouldRingAgainOnlyAfterTheAlarmIsReset()
    {
        Action *task = alarmed(QStringLiteral("Invoice"), QStringLiteral("15/01/26"));
        actions().checkForOverdueActions(TestEnvironment::fixedNow());
        task->setAlarm(false);
        task->setAlarm(true);
        QCOMPARE(actions().checkForOverdueActions(TestEnvironment::fixedNow()), 0);
        task->setAlarmAcknowledged(false);
        QCOMPARE(actions().checkForOverdueActions(TestEnvironment::fixedNow()), 1);
        QCOMPARE(rungTitles(), (QStringList{"Invoice", "Invoice"}));
    }

    void shouldReadTheEndDateInTheUsersOrder_data()
    {
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<int>("rung");
        QTest::newRow("day first: 1 February, ahead") << false << 0;
        QTest::newRow("month first: 2 January, passed") << true << 1;
    }
    void shouldReadTheEndDateInTheUsersOrder()
    {
        QFETCH(bool, monthFirst);
        QFETCH(int, rung);
        QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
        settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        settings.setValue(QStringLiteral("QuorvelDateFormat"), monthFirst ? QStringLiteral("1") : QStringLiteral("0"));
        settings.sync();
        quorvel->getPrefsController()->readDefaults();
        alarmed(QStringLiteral("Check"), QStringLiteral("01/02/26"));
        QCOMPARE(actions().checkForOverdueActions(TestEnvironment::fixedNow()), rung);
    }

    void shouldRingOnTheManagersThreadAndStopAtOnceWhenDestroyed()
    {
        alarmed(QStringLiteral("Ring the plumber"), QStringLiteral("15/01/26"));
        QList<QThread *> threads;
        const platform::AlertHandler previous = platform::setAlertHandler([&threads](const platform::Alert &) {
            threads << QThread::currentThread();
            return 1;
        });
        auto watch = std::make_unique<AlarmWatch>(actions());
        watch->setDelays(0ms, 1h);
        watch->start();
        QTRY_COMPARE_WITH_TIMEOUT(threads.size(), 1, 500);
        QCOMPARE(threads.first(), actions().thread());
        QElapsedTimer timer;
        timer.start();
        watch.reset();  // waiting the hour after the pass
        QVERIFY(timer.elapsed() < 200);
        platform::setAlertHandler(previous);
    }
};

QUORVEL_TEST(AlarmWatchTest)
#include "AlarmWatchTest.moc"
