#include "TestMain.h"

#include "RecordFieldTable.h"
#include "tasks/Action.h"

#include <QTest>

namespace {

const testlib::RecordFieldTable<Action> actionFields{
    {
        {"details", &Action::getDetails, &Action::setDetails},
        {"endDate", &Action::getEndDate, &Action::setEndDate},
        {"endTime", &Action::getEndTime, &Action::setEndTime},
        {"rate", &Action::getRate, &Action::setRate},
        {"startDate", &Action::getStartDate, &Action::setStartDate},
        {"startTime", &Action::getStartTime, &Action::setStartTime},
        {"totalCharge", &Action::getTotalCharge, &Action::setTotalCharge},
        {"totalTime", &Action::getTotalTime, &Action::setTotalTime},
        {"totalTimeUnits", &Action::getTotalTimeUnits, &Action::setTotalTimeUnits},
        {"title", &Action::getTitle, &Action::setTitle},
    },
    {
        testlib::flagField("complete", &Action::isComplete),
        testlib::flagField("alarm", &Action::isAlarm),
        testlib::flagField("alarmAcknowledged", &Action::isAlarmAcknowledged),
        testlib::numberField("order", &Action::getOrder),
    },
};

void fillAction(Action &action)
{
    actionFields.fill(action, QStringLiteral("word"));
    action.setOrder(42);
    action.setID(7);
}

}  // namespace

class ActionRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartAsAnOpenTaskInHours()
    {
        const Action action;
        QCOMPARE(action.getTotalTimeUnits(), QStringLiteral("Hours"));
        QCOMPARE(action.getTitle(), QStringLiteral(""));
        QVERIFY(!action.getTitle().isNull());
        QVERIFY(!action.isComplete());
        QVERIFY(!action.isAlarm());
        QVERIFY(!action.isAlarmAcknowledged());
        QCOMPARE(action.getOrder(), 0);
        QCOMPARE(action.getID(), 0);
        QVERIFY(action.getVisible());
    }

    void shouldAnswerFreshValuesByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("totaltimeunits") << "totaltimeunits"
                                        << "Hours";
        QTest::newRow("complete") << "complete"
                                  << "No";
        const char *emptyNames[] = {"details",     "enddate",   "endtime", "startdate", "starttime",
                                    "totalcharge", "totaltime", "title",   "order",     "rate"};
        for (const char *name : emptyNames)
            QTest::newRow(name) << QString::fromLatin1(name) << "";
    }
    void shouldAnswerFreshValuesByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        testlib::expectAnswer(Action(), name, expected);
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("details") << "details"
                                 << "detailsword";
        QTest::newRow("enddate") << "enddate"
                                 << "endDateword";
        QTest::newRow("endtime") << "endtime"
                                 << "endTimeword";
        QTest::newRow("startdate") << "startdate"
                                   << "startDateword";
        QTest::newRow("starttime") << "starttime"
                                   << "startTimeword";
        QTest::newRow("totalcharge") << "totalcharge"
                                     << "totalChargeword";
        QTest::newRow("totaltime") << "totaltime"
                                   << "totalTimeword";
        QTest::newRow("totaltimeunits") << "totaltimeunits"
                                        << "totalTimeUnitsword";
        QTest::newRow("title") << "title"
                               << "titleword";
        QTest::newRow("complete") << "complete"
                                  << "Yes";
        QTest::newRow("order answers nothing") << "order"
                                               << "";
        QTest::newRow("rate not answered") << "rate"
                                           << "";
        QTest::newRow("alarm not answered") << "alarm"
                                            << "";
        QTest::newRow("alarmacknowledged not answered") << "alarmacknowledged"
                                                        << "";
        QTest::newRow("endDate wrong case") << "endDate"
                                            << "";
        QTest::newRow("id not answered") << "id"
                                         << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Action action;
        fillAction(action);
        action.setComplete(true);
        action.setAlarm(true);
        testlib::expectAnswer(action, name, expected);
    }

    void shouldSetTheNamedFieldInTheRightLetterCase_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("field");  // the field that changes; "" for none
        QTest::newRow("details") << "details"
                                 << "details";
        QTest::newRow("Details ignored") << "Details"
                                         << "";
        QTest::newRow("enddate") << "enddate"
                                 << "endDate";
        QTest::newRow("ENDDATE") << "ENDDATE"
                                 << "endDate";
        QTest::newRow("startDate") << "startDate"
                                   << "startDate";
        QTest::newRow("STARTDATE") << "STARTDATE"
                                   << "startDate";
        QTest::newRow("endTime") << "endTime"
                                 << "endTime";
        QTest::newRow("starttime") << "starttime"
                                   << "startTime";
        QTest::newRow("TotalCharge") << "TotalCharge"
                                     << "totalCharge";
        QTest::newRow("totalTime") << "totalTime"
                                   << "totalTime";
        QTest::newRow("TOTALTIMEUNITS") << "TOTALTIMEUNITS"
                                        << "totalTimeUnits";
        QTest::newRow("rate") << "rate"
                              << "rate";
        QTest::newRow("Rate ignored") << "Rate"
                                      << "";
        QTest::newRow("title") << "title"
                               << "title";
        QTest::newRow("Title ignored") << "Title"
                                       << "";
        QTest::newRow("alarm ignored") << "alarm"
                                       << "";
        QTest::newRow("id ignored") << "id"
                                    << "";
        QTest::newRow("end date with a space ignored") << "end date"
                                                       << "";
    }
    void shouldSetTheNamedFieldInTheRightLetterCase()
    {
        QFETCH(QString, name);
        QFETCH(QString, field);
        Action action;
        fillAction(action);
        const QString value = QStringLiteral("new");
        actionFields.expectSetByNameChangesOnly(action, name, value, field, value);
    }

    void shouldSetTheOrderFromItsLeadingNumber_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("order");
        QTest::newRow("order") << "order"
                               << "42" << 42;
        QTest::newRow("order leading digits") << "order"
                                              << "12 jobs" << 12;
        QTest::newRow("order no number") << "order"
                                         << "none" << 0;
        QTest::newRow("Order ignored") << "Order"
                                       << "42" << 5;
    }
    void shouldSetTheOrderFromItsLeadingNumber()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(int, order);
        Action action;
        action.setOrder(5);
        action.setFieldByName(name, value);
        QCOMPARE(action.getOrder(), order);
        // The order is never answered by name.
        QCOMPARE(action.getFieldByName(QStringLiteral("order")), QStringLiteral(""));
    }

    void shouldTakeOnlyYesAsComplete_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("Yes") << "complete"
                             << "Yes" << false << true;
        QTest::newRow("YES") << "complete"
                             << "YES" << true << false;
        QTest::newRow("1") << "complete"
                           << "1" << true << false;
        QTest::newRow("No") << "complete"
                            << "No" << true << false;
        QTest::newRow("Complete ignored") << "Complete"
                                          << "Yes" << false << false;
    }
    void shouldTakeOnlyYesAsComplete()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(bool, before);
        QFETCH(bool, after);
        Action action;
        action.setComplete(before);
        action.setFieldByName(name, value);
        QCOMPARE(action.isComplete(), after);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data() { actionFields.addKeyRows(); }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        actionFields.expectKeepsTheOldTextWhenGivenNothing(key);
    }

    void shouldSearchTheTitleOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("piece of the title") << "fence" << true;
        QTest::newRow("title other case") << "PAINT THE" << true;
        QTest::newRow("details not searched") << "creosote" << false;
        QTest::newRow("rate not searched") << "35" << false;
        QTest::newRow("dates not searched") << "03/08" << false;
        QTest::newRow("nothing typed") << "" << false;
    }
    void shouldSearchTheTitleOnly()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        Action action;
        action.setTitle(QStringLiteral("Paint the fence"));
        action.setDetails(QStringLiteral("two coats of creosote"));
        action.setRate(QStringLiteral("35.00"));
        action.setStartDate(QStringLiteral("01/03/08"));
        QCOMPARE(action.contains(text), found);
    }
};

QUORVEL_TEST(ActionRecordTest)
#include "ActionRecordTest.moc"
