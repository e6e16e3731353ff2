#include "tasks/widgets/TaskEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "platform/Localised.h"
#include "tasks/ActionManager.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using platform::localised;
using editor::lineEdit;
using editor::pushButton;
using editor::row;

namespace {

// "%d/%m/%y" as the user reads it: "dd/mm/yy".
QString hintFor(const QString &format)
{
    QString hint = format;
    hint.replace(QLatin1String("%d"), QLatin1String("dd"));
    hint.replace(QLatin1String("%m"), QLatin1String("mm"));
    hint.replace(QLatin1String("%y"), QLatin1String("yy"));
    return hint;
}

}  // namespace

TaskEditorWindow::TaskEditorWindow(ActionManager &manager, QWidget *parent)
    : EditorDialog(QStringLiteral("taskEditorWindow"), localised("Task"),
                   [owner = &manager] { owner->cancel(); }, parent),
      actions(manager)
{
    auto *layout = new QFormLayout;
    editor::Form form{layout};
    firstField = form.field(actions.title, QStringLiteral("title"), localised("Title:"));
    form.notes(actions.details, QStringLiteral("details"), localised("Details:"));

    startDateEdit = lineEdit(actions.startDate, QStringLiteral("startDate"));
    QLineEdit *startTime = lineEdit(actions.startTime, QStringLiteral("startTime"));
    startTime->setPlaceholderText(QStringLiteral("hh:mm"));
    layout->addRow(localised("Start:"), row({startDateEdit, startTime}));
    endDateEdit = lineEdit(actions.endDate, QStringLiteral("endDate"));
    QLineEdit *endTime = lineEdit(actions.endTime, QStringLiteral("endTime"));
    endTime->setPlaceholderText(QStringLiteral("hh:mm"));
    layout->addRow(localised("End:"), row({endDateEdit, endTime}));

    form.popUp(actions.totalTimeUnits, QStringLiteral("totalTimeUnits"), localised("Units:"));
    form.field(actions.rate, QStringLiteral("rate"), localised("Rate:"));
    layout->addRow(localised("Total time:"),
                   row({lineEdit(actions.totalTime, QStringLiteral("totalTime")),
                        pushButton(localised("Calculate"), QStringLiteral("calculateTotalTimeButton"),
                                   [this] { actions.calculateTotalTime(); })}));
    layout->addRow(localised("Total charge:"),
                   row({lineEdit(actions.totalCharge, QStringLiteral("totalCharge")),
                        pushButton(localised("Calculate"), QStringLiteral("calculateTotalChargeButton"),
                                   [this] { actions.calculateTotalCharge(); })}));

    auto *message = new QLabel;
    message->setObjectName(QStringLiteral("calculationMessage"));
    message->setTextFormat(Qt::PlainText);
    binding::bind(actions.calculationMessage, message);
    layout->addRow(QString(), message);

    auto *alarm = new QCheckBox(localised("Alarm"));
    alarm->setObjectName(QStringLiteral("alarmButton"));
    binding::bind(actions.alarmButton, alarm);
    auto *done = new QCheckBox(localised("Complete"));
    done->setObjectName(QStringLiteral("complete"));
    binding::bind(actions.complete, done);
    layout->addRow(QString(), editor::leftRow({alarm, done}));

    layOut(layout, nullptr, [this] { actions.finish(); });
    attach(actions.editorWindow, QStringLiteral("QuorvelTaskEditorWindowGeometry"), QSize(520, 520));
}

TaskEditorWindow::~TaskEditorWindow() = default;

void TaskEditorWindow::showEvent(QShowEvent *event)
{
    startDateEdit->setPlaceholderText(hintFor(actions.startDate->dateFormat()));
    endDateEdit->setPlaceholderText(hintFor(actions.endDate->dateFormat()));
    EditorDialog::showEvent(event);
}
