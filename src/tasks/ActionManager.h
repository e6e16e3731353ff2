#pragma once
// The task list and the task editor: the list with its "complete" column
// that toggles in place, filtered by a search and "All"/"Incomplete"; the
// editor with the task's dates and times in the user's date order, its rate
// and units, and the arithmetic of duration and charge; and the alarm watch,
// which tells the user once when an alarmed task's end moment has passed.
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/ListManager.h"

#include <QDateTime>

#include <memory>
#include <optional>

class Action;
class AlarmWatch;

class ActionManager : public ListManager
{
    Q_OBJECT
public:
    explicit ActionManager(QuorvelServices *controller, QObject *parent = nullptr);
    ~ActionManager() override;

    // The editor.
    void create() override;
    void edit() override;
    void setItem(Action *action);
    // Stores the editor into the task (adding a new one), offers to reset
    // an acknowledged alarm whose end now lies ahead, hides the editor,
    // filters and writes the tasks file.
    void finish();
    void cancel();
    void show();
    void hide();

    // The list. Does nothing while the time module is off.
    void filter() override;
    // The "complete" column shows "Yes" or "No"; a row with no task is
    // logged and shown as an empty task.
    QString objectValueForTableColumn(const QString &columnId, int row) const override;
    // An edit of the "complete" column toggles the task's done flag,
    // whatever the value given; any edit sets the change flag.
    void setObjectValueForTableColumn(const QString &value, const QString &columnId, int row) override;
    // Toggles the done flag of the task in that row (the check box of the
    // "complete" column).
    void toggleCompleteAtRow(int row);

    // The editor's arithmetic. The duration in the units chosen, from the
    // start and end fields; the charge, the duration field times the rate.
    // Each puts its figure into its field and answers it; when a date or
    // time cannot be read (or there is no duration yet) the field is left
    // alone, `calculationMessage` says why, and the answer is empty.
    std::optional<float> calculateTotalTime();
    std::optional<float> calculateTotalCharge();

    // One pass of the alarm watch at that moment: every task that was in
    // the collection when the pass began (hidden and done ones too) whose
    // alarm is on, not yet acknowledged, and whose end moment lies before
    // `now` rings once, in collection order: the "Alarm" alert with its
    // title, then the acknowledged flag. Answers how many rang.
    int checkForOverdueActions(const QDateTime &now);
    // Starts the alarm watch (a pass now, then 30 s after each pass).
    void kickOffCheckForOverdueActions();
    bool isWatchingAlarms() const { return alarmWatch != nullptr; }

    // The moment a task ends, read in the user's date order; none when its
    // date or time cannot be read.
    std::optional<QDateTime> endMomentOf(const Action &action) const;

    Action *getCurrentItem() const { return currentItem.get(); }
    bool isCreating() const { return creating; }

    // Outlets of the editor.
    CheckBox *complete;
    TextView *details;
    Window *editorWindow;
    TextField *endDate;
    TextField *endTime;
    TextField *startDate;
    TextField *startTime;
    CheckBox *alarmButton;
    TextField *rate;
    TextField *totalCharge;
    TextField *totalTime;
    PopUp *totalTimeUnits;  // "Hours" / "Days"
    TextField *title;
    // A short line under the arithmetic: why no figure could be worked out.
    TextField *calculationMessage;
    // The list's "All" / "Incomplete" pop-up ("All" at first).
    PopUp *filterPopUp;

Q_SIGNALS:
    // An alarm is about to ring (before its modal alert): the widget layer
    // also tells the desktop, for when the window is in the background.
    void alarmRaised(const QString &taskTitle);

protected:
    QString describe(const dataObject &record) const override;

private:
    // The user's date format: "%d/%m/%y" or "%m/%d/%y".
    QString userDateFormat() const;
    // A moment from a date field and a time field, each read with its own
    // format (the date may be a word such as "today"); none when either
    // cannot be read.
    static std::optional<QDateTime> momentFrom(const TextField *date, const TextField *time);

    // The task in the editor (a new one is listed when it is finished).
    std::shared_ptr<Action> currentItem;
    bool creating = false;
    std::unique_ptr<AlarmWatch> alarmWatch;
};
