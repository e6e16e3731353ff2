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

using editor::lineEdit;
using editor::pushButton;
using editor::row;
using platform::localised;

TaskEditorWindow::TaskEditorWindow(ActionManager &manager, QWidget *parent)
    : EditorDialog(
        QStringLiteral("taskEditorWindow"), localised("Task"), [owner = &manager] { owner->cancel(); }, parent),
      actions(manager)
{
    auto *layout = new QFormLayout;
    editor::Form form{layout};
    firstField = form.field(actions.title, QStringLiteral("title"), localised("Title:"));
    form.notes(actions.details, QStringLiteral("details"), localised("Details:"));

    QLineEdit *startDateEdit = lineEdit(actions.startDate, QStringLiteral("startDate"));
    QLineEdit *startTime = lineEdit(actions.startTime, QStringLiteral("startTime"));
    startTime->setPlaceholderText(QStringLiteral("hh:mm"));
    layout->addRow(localised("Start:"), row({startDateEdit, startTime}));
    QLineEdit *endDateEdit = lineEdit(actions.endDate, QStringLiteral("endDate"));
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
