#include "Preferences.h"
#include "TableCells.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "store/PrefsController.h"
#include "tasks/Action.h"
#include "tasks/ActionManager.h"

#include <QSettings>
#include <QTest>

#include <memory>

using testlib::TestEnvironment;

namespace {

Action *task(ActionManager &actions, const QString &title, bool done = false)
{
    auto action = std::make_shared<Action>();
    action->setTitle(title);
    action->setComplete(done);
    actions.add(action);
    return action.get();
}

}  // namespace

// The task list and editor: duration and charge, the filter, the done
// column and the question that resets an alarm.
class ActionManagerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Quorvel> quorvel;
    ActionManager &actions() { return *quorvel->getActionManager(); }

    void fillTimes(const QString &startDate, const QString &startTime, const QString &endDate, const QString &endTime)
    {
        actions().create();
        actions().startDate->userSetStringValue(startDate);
        actions().startTime->userSetStringValue(startTime);
        actions().endDate->userSetStringValue(endDate);
        actions().endTime->userSetStringValue(endTime);
    }

private Q_SLOTS:
    void init()
    {
        quorvel = std::make_unique<Quorvel>();
        testlib::startWithModules(*quorvel, false);
        TestEnvironment::current().clearAlerts();
    }
    void cleanup() { quorvel.reset(); }

    void shouldWorkOutTheDurationFromStartToEnd_data()
    {
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<QStringList>("times");  // start date, start time, end date, end time
        QTest::addColumn<QString>("units");
        QTest::addColumn<float>("expected");
        QTest::addColumn<QString>("shown");
        const QStringList workday{"01/03/08", "09:00", "01/03/08", "17:30"};
        QTest::newRow("a working day in hours") << false << workday << "Hours" << 8.5f << "8.5";
        QTest::newRow("a working day in days") << false << workday << "Days" << 8.5f / 24.0f << "0.35416666";
        QTest::newRow("an end before the start")
            << false << QStringList{"01/03/08", "17:30", "01/03/08", "09:00"} << "Hours" << -8.5f << "-8.5";
        QTest::newRow("day first: 3 January to 3 February")
            << false << QStringList{"03/01/08", "09:00", "03/02/08", "09:00"} << "Days" << 31.0f << "31";
        QTest::newRow("month first: 1 March to 2 March")
            << true << QStringList{"03/01/08", "09:00", "03/02/08", "09:00"} << "Days" << 1.0f << "1";
        QTest::newRow("words for the days")
            << false << QStringList{"today", "09:00", "tomorrow", "17:30"} << "Hours" << 32.5f << "32.5";
        QTest::newRow("a date without its year")
            << true << QStringList{"1/14", "08:00", "01/15/26", "08:00"} << "Days" << 1.0f << "1";
    }
    void shouldWorkOutTheDurationFromStartToEnd()
    {
        QFETCH(bool, monthFirst);
        QFETCH(QStringList, times);
        QFETCH(QString, units);
        QFETCH(float, expected);
        QFETCH(QString, shown);
        testlib::startWithModules(*quorvel, monthFirst);
        fillTimes(times.at(0), times.at(1), times.at(2), times.at(3));
        actions().totalTimeUnits->userSelectItemAtIndex(units == QLatin1String("Days") ? 1 : 0);
        const std::optional<float> total = actions().calculateTotalTime();
        QVERIFY(total.has_value());
        QCOMPARE(*total, expected);
        QCOMPARE(actions().totalTime->stringValue(), shown);
        QCOMPARE(actions().calculationMessage->stringValue(), QString());
    }

    void shouldGiveNoDurationAndSayWhyWhenADateOrTimeCannotBeRead_data()
    {
        QTest::addColumn<QStringList>("times");
        QTest::newRow("no start date") << QStringList{"", "09:00", "01/03/08", "17:30"};
        QTest::newRow("an impossible end date") << QStringList{"01/03/08", "09:00", "31/02/08", "17:30"};
        QTest::newRow("words for a time") << QStringList{"01/03/08", "nine", "01/03/08", "17:30"};
    }
    void shouldGiveNoDurationAndSayWhyWhenADateOrTimeCannotBeRead()
    {
        QFETCH(QStringList, times);
        fillTimes(times.at(0), times.at(1), times.at(2), times.at(3));
        actions().totalTime->userSetStringValue(QStringLiteral("7"));
        QVERIFY(!actions().calculateTotalTime().has_value());
        QCOMPARE(actions().totalTime->stringValue(), QStringLiteral("7"));
        QVERIFY(!actions().calculationMessage->stringValue().isEmpty());
    }

    void shouldChargeTheDurationTimesTheRateWhateverTheUnits_data()
    {
        QTest::addColumn<QString>("totalTime");
        QTest::addColumn<int>("unitsIndex");
        QTest::addColumn<QString>("charge");
        QTest::newRow("hours") << "8.5" << 0 << "340.00";
        QTest::newRow("days") << "8.5" << 1 << "340.00";
        QTest::newRow("a negative duration") << "-8.5" << 0 << "-340.00";
        QTest::newRow("a fraction of a day") << "0.35416666" << 1 << "14.17";
    }
    void shouldChargeTheDurationTimesTheRateWhateverTheUnits()
    {
        QFETCH(QString, totalTime);
        QFETCH(int, unitsIndex);
        QFETCH(QString, charge);
        actions().create();
        actions().totalTime->userSetStringValue(totalTime);
        actions().rate->userSetStringValue(QStringLiteral("40"));
        actions().totalTimeUnits->userSelectItemAtIndex(unitsIndex);
        QVERIFY(actions().calculateTotalCharge().has_value());
        QCOMPARE(actions().totalCharge->stringValue(), charge);
    }

    void shouldAskForTheDurationBeforeCharging()
    {
        actions().create();
        actions().rate->userSetStringValue(QStringLiteral("40"));
        actions().totalCharge->userSetStringValue(QStringLiteral("12"));
        QVERIFY(!actions().calculateTotalCharge().has_value());
        QCOMPARE(actions().totalCharge->stringValue(), QStringLiteral("12"));
        QVERIFY(!actions().calculationMessage->stringValue().isEmpty());
    }

    void shouldStoreTheEditorIntoANewTaskOnlyWhenFinished()
    {
        fillTimes(QStringLiteral("01/03/08"), QStringLiteral("09:00"), QStringLiteral("01/03/08"),
                  QStringLiteral("17:30"));
        actions().title->userSetStringValue(QStringLiteral("Fit kitchen"));
        actions().totalTimeUnits->userSelectItemAtIndex(1);
        actions().cancel();
        QCOMPARE(actions().getCount(), 0);

        actions().create();
        actions().title->userSetStringValue(QStringLiteral("Fit kitchen"));
        actions().alarmButton->userSetState(true);
        actions().totalTimeUnits->userSelectItemAtIndex(1);
        actions().finish();
        QCOMPARE(actions().getCount(), 1);
        const auto *stored = static_cast<const Action *>(actions().getnthItem(0));
        QCOMPARE(stored->getTitle(), QStringLiteral("Fit kitchen"));
        QCOMPARE(stored->getTotalTimeUnits(), QStringLiteral("Days"));
        QVERIFY(stored->isAlarm());
        QVERIFY(stored->getID() > 0);
        QVERIFY(!actions().editorWindow->isVisible());
    }

    void shouldOfferToResetAnAcknowledgedAlarmWhoseEndMovesAhead_data()
    {
        QTest::addColumn<QString>("endDate");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("stillAcknowledged");
        QTest::newRow("end ahead, OK resets") << "16/01/26" << 1 << true << false;
        QTest::newRow("end ahead, No keeps it") << "16/01/26" << 0 << true << true;
        QTest::newRow("end passed, no question") << "14/01/26" << 1 << false << true;
    }
    void shouldOfferToResetAnAcknowledgedAlarmWhoseEndMovesAhead()
    {
        QFETCH(QString, endDate);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(bool, stillAcknowledged);
        Action *alarmed = task(actions(), QStringLiteral("Call back"));
        alarmed->setAlarm(true);
        alarmed->setAlarmAcknowledged(true);
        actions().filter();
        actions().table->selectRow(0);
        actions().edit();
        actions().endDate->userSetStringValue(endDate);
        actions().endTime->userSetStringValue(QStringLiteral("09:00"));
        TestEnvironment::current().scriptAlertAnswers({answer});
        actions().finish();
        const QList<platform::Alert> &alerts = TestEnvironment::current().alertsShown();
        QCOMPARE(alerts.size(), asked ? 1 : 0);
        if (asked) {
            QCOMPARE(alerts.first().message, QStringLiteral("Reset Alarm"));
            QCOMPARE(alerts.first().alternateButton, QStringLiteral("No"));
        }
        QCOMPARE(alarmed->isAlarmAcknowledged(), stillAcknowledged);
    }

    void shouldFilterByCompletionAndTitleOnlyWhileTheTimeModuleIsOn_data()
    {
        QTest::addColumn<bool>("timeModule");
        QTest::addColumn<int>("shownItem");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("expected");
        const QStringList everything{"Paint door", "Paint gate", "Mend fence"};
        QTest::newRow("all") << true << 0 << "" << everything;
        QTest::newRow("incomplete") << true << 1 << "" << QStringList{"Paint door", "Mend fence"};
        QTest::newRow("incomplete with a search") << true << 1 << "paint" << QStringList{"Paint door"};
        QTest::newRow("module off: as before") << false << 1 << "paint" << everything;
    }
    void shouldFilterByCompletionAndTitleOnlyWhileTheTimeModuleIsOn()
    {
        QFETCH(bool, timeModule);
        QFETCH(int, shownItem);
        QFETCH(QString, search);
        QFETCH(QStringList, expected);
        if (!timeModule) {
            QSettings settings = testlib::preferences();
            settings.setValue(QStringLiteral("QuorvelTimeMmt"), QStringLiteral("NO"));
            settings.sync();
            quorvel->getPrefsController()->readDefaults();
            settings.remove(QStringLiteral("QuorvelTimeMmt"));
        }
        QCOMPARE(quorvel->hasTime(), timeModule);
        task(actions(), QStringLiteral("Paint door"));
        task(actions(), QStringLiteral("Paint gate"), true);
        task(actions(), QStringLiteral("Mend fence"));
        actions().searchField->userSetStringValue(search);
        actions().filterPopUp->userSelectItemAtIndex(shownItem);
        actions().filter();
        QCOMPARE(testlib::columnCells(actions(), "title"), expected);
    }

    void shouldToggleTheDoneFlagInPlaceFromTheCompleteColumn()
    {
        task(actions(), QStringLiteral("Paint door"));
        Action *done = task(actions(), QStringLiteral("Paint gate"), true);
        actions().filter();
        QCOMPARE(actions().objectValueForTableColumn(QStringLiteral("complete"), 1), QStringLiteral("Yes"));
        actions().setObjectValueForTableColumn(QStringLiteral("Yes"), QStringLiteral("complete"), 1);
        QVERIFY(!done->isComplete());
        QCOMPARE(actions().objectValueForTableColumn(QStringLiteral("complete"), 1), QStringLiteral("No"));
        actions().setObjectValueForTableColumn(QStringLiteral("x"), QStringLiteral("title"), 1);
        QCOMPARE(done->getTitle(), QStringLiteral("Paint gate"));
    }

    void shouldSortColumnsAsTheyRead()
    {
        task(actions(), QStringLiteral("b"))->setTotalTime(QStringLiteral("10"));
        task(actions(), QStringLiteral("a"))->setTotalTime(QStringLiteral("9"));
        actions().filter();
        actions().didClickTableColumn(QStringLiteral("totaltime"), true);
        // On screen "10" is more than "9" (the first sort descriptor's
        // ascending puts the greatest first).
        QCOMPARE(testlib::columnCells(actions(), "title"), (QStringList{"b", "a"}));
    }
};

QUORVEL_TEST(ActionManagerTest)
#include "ActionManagerTest.moc"
