#include "TestMain.h"

#include "tasks/Action.h"

#include <QMap>
#include <QTest>

namespace {

struct TextField {
    const char *key;
    const QString &(Action::*get)() const;
    void (Action::*set)(const QString &);
};

const TextField textFields[] = {
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
};

const TextField &textField(const QString &key)
{
    for (const TextField &field : textFields) {
        if (key == QLatin1String(field.key))
            return field;
    }
    qFatal("no text field %s", qPrintable(key));
}

QString flag(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QMap<QString, QString> snapshot(const Action &action)
{
    QMap<QString, QString> all;
    for (const TextField &field : textFields)
        all.insert(QLatin1String(field.key), (action.*field.get)());
    all.insert(QStringLiteral("complete"), flag(action.isComplete()));
    all.insert(QStringLiteral("alarm"), flag(action.isAlarm()));
    all.insert(QStringLiteral("alarmAcknowledged"), flag(action.isAlarmAcknowledged()));
    all.insert(QStringLiteral("order"), QString::number(action.getOrder()));
    all.insert(QStringLiteral("id"), QString::number(action.getID()));
    return all;
}

void fillAction(Action &action)
{
    for (const TextField &field : textFields)
        (action.*field.set)(QLatin1String(field.key) + QStringLiteral("word"));
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
        QTest::newRow("totaltimeunits") << "totaltimeunits" << "Hours";
        QTest::newRow("complete") << "complete" << "No";
        const char *emptyNames[] = {"details", "enddate", "endtime", "startdate", "starttime",
                                    "totalcharge", "totaltime", "title", "order", "rate"};
        for (const char *name : emptyNames)
            QTest::newRow(name) << QString::fromLatin1(name) << "";
    }
    void shouldAnswerFreshValuesByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        const Action action;
        const QString answer = action.getFieldByName(name);
        QCOMPARE(answer, expected);
        QVERIFY(!answer.isNull());
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("details") << "details" << "detailsword";
        QTest::newRow("enddate") << "enddate" << "endDateword";
        QTest::newRow("endtime") << "endtime" << "endTimeword";
        QTest::newRow("startdate") << "startdate" << "startDateword";
        QTest::newRow("starttime") << "starttime" << "startTimeword";
        QTest::newRow("totalcharge") << "totalcharge" << "totalChargeword";
        QTest::newRow("totaltime") << "totaltime" << "totalTimeword";
        QTest::newRow("totaltimeunits") << "totaltimeunits" << "totalTimeUnitsword";
        QTest::newRow("title") << "title" << "titleword";
        QTest::newRow("complete") << "complete" << "Yes";
        QTest::newRow("order answers nothing") << "order" << "";
        QTest::newRow("rate not answered") << "rate" << "";
        QTest::newRow("alarm not answered") << "alarm" << "";
        QTest::newRow("alarmacknowledged not answered") << "alarmacknowledged" << "";
        QTest::newRow("endDate wrong case") << "endDate" << "";
        QTest::newRow("id not answered") << "id" << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Action action;
        fillAction(action);
        action.setComplete(true);
        action.setAlarm(true);
        QCOMPARE(action.getFieldByName(name), expected);
    }

    void shouldSetTheNamedFieldInTheRightLetterCase_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("field");     // the field that changes; "" for none
        QTest::newRow("details") << "details" << "details";
        QTest::newRow("Details ignored") << "Details" << "";
        QTest::newRow("enddate") << "enddate" << "endDate";
        QTest::newRow("EndDate") << "EndDate" << "endDate";
        QTest::newRow("ENDDATE") << "ENDDATE" << "endDate";
        QTest::newRow("startDate") << "startDate" << "startDate";
        QTest::newRow("StartDate") << "StartDate" << "startDate";
        QTest::newRow("STARTDATE") << "STARTDATE" << "startDate";
        QTest::newRow("endTime") << "endTime" << "endTime";
        QTest::newRow("starttime") << "starttime" << "startTime";
        QTest::newRow("TotalCharge") << "TotalCharge" << "totalCharge";
        QTest::newRow("totalTime") << "totalTime" << "totalTime";
        QTest::newRow("TOTALTIMEUNITS") << "TOTALTIMEUNITS" << "totalTimeUnits";
        QTest::newRow("rate") << "rate" << "rate";
        QTest::newRow("Rate ignored") << "Rate" << "";
        QTest::newRow("title") << "title" << "title";
        QTest::newRow("Title ignored") << "Title" << "";
        QTest::newRow("alarm ignored") << "alarm" << "";
        QTest::newRow("id ignored") << "id" << "";
        QTest::newRow("end date with a space ignored") << "end date" << "";
    }
    void shouldSetTheNamedFieldInTheRightLetterCase()
    {
        QFETCH(QString, name);
        QFETCH(QString, field);
        Action action;
        fillAction(action);
        QMap<QString, QString> wanted = snapshot(action);
        if (!field.isEmpty())
            wanted[field] = QStringLiteral("new");
        action.setFieldByName(name, QStringLiteral("new"));
        QCOMPARE(snapshot(action), wanted);
    }

    void shouldSetTheOrderFromItsLeadingNumber_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("order");
        QTest::newRow("order") << "order" << "42" << 42;
        QTest::newRow("order leading digits") << "order" << "12 jobs" << 12;
        QTest::newRow("order no number") << "order" << "none" << 0;
        QTest::newRow("Order ignored") << "Order" << "42" << 5;
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
        QTest::newRow("Yes") << "complete" << "Yes" << false << true;
        QTest::newRow("YES") << "complete" << "YES" << true << false;
        QTest::newRow("yes") << "complete" << "yes" << true << false;
        QTest::newRow("1") << "complete" << "1" << true << false;
        QTest::newRow("No") << "complete" << "No" << true << false;
        QTest::newRow("Complete ignored") << "Complete" << "Yes" << false << false;
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

    void shouldKeepTheOldTextWhenGivenNothing_data()
    {
        QTest::addColumn<QString>("key");
        for (const TextField &field : textFields)
            QTest::newRow(field.key) << QString::fromLatin1(field.key);
    }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        const TextField &field = textField(key);
        Action action;
        (action.*field.set)(QStringLiteral("kept"));
        (action.*field.set)(QString());
        QCOMPARE((action.*field.get)(), QStringLiteral("kept"));
        (action.*field.set)(QStringLiteral(""));
        QCOMPARE((action.*field.get)(), QStringLiteral(""));
    }

    void shouldSearchTheTitleOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("piece of the title") << "fence" << true;
        QTest::newRow("title other case") << "PAINT THE" << true;
        QTest::newRow("whole title") << "Paint the fence" << true;
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
