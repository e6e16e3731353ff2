#include "tasks/ActionManager.h"

#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "tasks/Action.h"
#include "tasks/AlarmWatch.h"

using namespace Qt::Literals::StringLiterals;
using platform::localised;

namespace {

const QString timeFormat = u"%H:%M"_s;
const QString completeColumn = u"complete"_s;

}  // namespace

ActionManager::ActionManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, u"tasks"_s, u"Delete Task"_s, parent),
      complete(new CheckBox(this)),
      details(new TextView(this)),
      editorWindow(new Window(this)),
      endDate(new TextField(this)),
      endTime(new TextField(this)),
      startDate(new TextField(this)),
      startTime(new TextField(this)),
      alarmButton(new CheckBox(this)),
      rate(new TextField(this)),
      totalCharge(new TextField(this)),
      totalTime(new TextField(this)),
      totalTimeUnits(new PopUp(this)),
      title(new TextField(this)),
      calculationMessage(new TextField(this)),
      filterPopUp(new PopUp(this))
{
    editorWindow->setTitle(localised("Task"));
    totalTimeUnits->addItems({u"Hours"_s, u"Days"_s});
    totalTimeUnits->selectItemAtIndex(0);
    startTime->setDateFormat(timeFormat);
    endTime->setDateFormat(timeFormat);
    // The dates take the user's date format from the preferences; the rate
    // and the charge are money, with two decimals.
    rate->setMoney(true);
    totalCharge->setMoney(true);
    filterPopUp->addItems({localised("All"), localised("Incomplete")});
    filterPopUp->selectItemAtIndex(0);
    connect(filterPopUp, &PopUp::activated, this, [this] { filter(); });
}

ActionManager::~ActionManager() = default;

QString ActionManager::userDateFormat() const
{
    return platform::userDateFormat(!quorvel || quorvel->getPrefsController()->isUKFormat());
}

void ActionManager::create()
{
    creating = true;
    currentItem = std::make_shared<Action>();
    setItem(currentItem.get());
    show();
}

void ActionManager::edit()
{
    const int row = table->selectedRow();
    if (row < 0)
        return;
    auto *action = static_cast<Action *>(getnthVisibleItem(row));
    if (!action)
        return;
    setItem(action);
    show();
    creating = false;
}

void ActionManager::setItem(Action *action)
{
    if (!action)
        return;
    currentItem = shareOf(action);
    alarmButton->setState(action->isAlarm());
    complete->setState(action->isComplete());
    details->setString(action->getDetails());
    endDate->setStringValue(action->getEndDate());
    endTime->setStringValue(action->getEndTime());
    rate->setStringValue(action->getRate());
    startDate->setStringValue(action->getStartDate());
    startTime->setStringValue(action->getStartTime());
    title->setStringValue(action->getTitle());
    totalCharge->setStringValue(action->getTotalCharge());
    totalTime->setStringValue(action->getTotalTime());
    totalTimeUnits->selectItemWithTitle(action->getTotalTimeUnits());
    calculationMessage->setStringValue(u""_s);
}

void ActionManager::finish()
{
    const std::shared_ptr<Action> action = currentItem;
    if (!action)
        return;
    action->setAlarm(alarmButton->state());
    action->setComplete(complete->state());
    action->setDetails(details->string());
    action->setEndDate(endDate->stringValue());
    action->setTitle(title->stringValue());
    action->setEndTime(endTime->stringValue());
    action->setRate(rate->stringValue());
    action->setStartDate(startDate->stringValue());
    action->setStartTime(startTime->stringValue());
    action->setTotalTime(totalTime->stringValue());
    action->setTotalTimeUnits(totalTimeUnits->titleOfSelectedItem());
    action->setTotalCharge(totalCharge->stringValue());

    if (creating) {
        add(action);
        creating = false;
    }

    // An alarm that has rung may ring again at a new end moment, if the
    // user says so; switching the alarm off and on does not reset it.
    if (action->isAlarm() && action->isAlarmAcknowledged()) {
        const std::optional<QDateTime> end = endMomentOf(*action);
        if (end && platform::now().msecsTo(*end) > 0) {
            platform::log(u"date in future"_s);
            const int answer = platform::runAlert(
                localised("Reset Alarm"),
                localised("The alarm for this item has been acknowledged. Would you like to reset the alarm?"),
                localised("OK"), u"No"_s);
            if (answer == 1)
                action->setAlarmAcknowledged(false);
        }
    }

    hide();
    filter();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void ActionManager::cancel()
{
    // A new task was never added: there is nothing to take out of the list,
    // and the creating flag stays until the next create or edit.
    hide();
}

void ActionManager::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void ActionManager::hide()
{
    editorWindow->orderOut();
}

void ActionManager::filter()
{
    if (!quorvel || !quorvel->hasTime())
        return;
    const QString text = searchField->stringValue();
    const QString shown = filterPopUp->titleOfSelectedItem();
    const bool all = shown == localised("All");
    const bool incompleteOnly = !all && shown == localised("Incomplete");
    filterBy([&](const dataObject &record) {
        if (!text.isEmpty() && !record.contains(text))
            return false;
        if (all)
            return true;
        return incompleteOnly && !static_cast<const Action &>(record).isComplete();
    });
    reloadData();
}

QString ActionManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    const dataObject *record = getnthVisibleItem(row);
    if (!record) {
        platform::log(u"no item for row %1"_s.arg(row));
        return Action().getFieldByName(columnId);
    }
    return record->getFieldByName(columnId);
}

void ActionManager::setObjectValueForTableColumn(const QString &, const QString &columnId, int row)
{
    if (columnId == completeColumn) {
        if (auto *action = static_cast<Action *>(getnthVisibleItem(row))) {
            action->setComplete(!action->isComplete());
            reloadData();
        }
    }
    if (quorvel)
        quorvel->setChangeFlag();
}

std::optional<QDateTime> ActionManager::momentFrom(const TextField *date, const TextField *time)
{
    const QString clockFormat = time->dateFormat().isEmpty() ? timeFormat : time->dateFormat();
    const std::optional<QDate> day = date->dateValue();
    const std::optional<QDateTime> clock = platform::parseDate(time->stringValue().trimmed(), clockFormat);
    if (!day || !clock)
        return std::nullopt;
    return QDateTime(*day, QTime(0, 0))
        .addSecs(qint64(clock->time().hour()) * 3600 + qint64(clock->time().minute()) * 60);
}

std::optional<float> ActionManager::calculateTotalTime()
{
    const std::optional<QDateTime> start = momentFrom(startDate, startTime);
    if (!start) {
        calculationMessage->setStringValue(localised("The start date or time could not be read."));
        return std::nullopt;
    }
    const std::optional<QDateTime> end = momentFrom(endDate, endTime);
    if (!end) {
        calculationMessage->setStringValue(localised("The end date or time could not be read."));
        return std::nullopt;
    }
    const double seconds = double(start->msecsTo(*end)) / 1000.0;
    const float hours = float(seconds / 60.0) / 60.0f;
    const float result = totalTimeUnits->titleOfSelectedItem() == "Days"_L1 ? hours / 24.0f : hours;
    totalTime->setFloatValue(result);
    calculationMessage->setStringValue(u""_s);
    return result;
}

std::optional<float> ActionManager::calculateTotalCharge()
{
    // The rate is per hour or per day as the units say: the units
    // themselves do not enter the sum.
    if (!platform::isNumeric(totalTime->stringValue())) {
        calculationMessage->setStringValue(localised("Work out the time first."));
        return std::nullopt;
    }
    const float charge = totalTime->floatValue() * rate->floatValue();
    totalCharge->setFloatValue(charge);
    calculationMessage->setStringValue(u""_s);
    return charge;
}

std::optional<QDateTime> ActionManager::endMomentOf(const Action &action) const
{
    return platform::parseDate(action.getEndDate() + u' ' + action.getEndTime(), userDateFormat() + u' ' + timeFormat);
}

int ActionManager::checkForOverdueActions(const QDateTime &now)
{
    int rung = 0;
    const int count = getCount();
    for (int i = 0; i < count && i < getCount(); ++i) {
        // Held for the time of the alert, in which the task may be deleted.
        const std::shared_ptr<Action> action = shareOf(static_cast<Action *>(getnthItem(i)));
        if (!action || !action->isAlarm() || action->isAlarmAcknowledged())
            continue;
        const std::optional<QDateTime> end = endMomentOf(*action);
        if (!end || end->msecsTo(now) <= 0)
            continue;
        const QString taskTitle = action->getTitle();
        Q_EMIT alarmRaised(taskTitle);
        platform::runAlert(localised("Alarm"), taskTitle, localised("OK"));
        // The task may have been deleted while the alert was up.
        if (indexOf(action.get()) < 0)
            continue;
        action->setAlarmAcknowledged(true);
        platform::log(u"acknowledged"_s);
        ++rung;
    }
    return rung;
}

void ActionManager::kickOffCheckForOverdueActions()
{
    if (alarmWatch)
        return;
    alarmWatch = std::make_unique<AlarmWatch>(*this);
    alarmWatch->start();
}

QString ActionManager::describe(const dataObject &record) const
{
    return localised("Task") + u' ' + record.getFieldByName(u"title"_s);
}
