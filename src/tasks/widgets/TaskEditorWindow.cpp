#include "tasks/widgets/TaskEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"
#include "tasks/ActionManager.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;
using editor::lineEdit;
using editor::pushButton;

namespace {

QHBoxLayout *row(std::initializer_list<QWidget *> widgets)
{
    auto *layout = new QHBoxLayout;
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    return layout;
}

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

TaskEditorWindow::TaskEditorWindow(ActionManager &manager, QWidget *parent) : QDialog(parent), actions(manager)
{
    setObjectName(QStringLiteral("taskEditorWindow"));
    setWindowTitle(localised("Task"));
    setModal(false);
    setSizeGripEnabled(true);

    auto *form = new QFormLayout;
    titleEdit = lineEdit(actions.title, QStringLiteral("title"));
    form->addRow(localised("Title:"), titleEdit);
    auto *details = new QPlainTextEdit;
    details->setObjectName(QStringLiteral("details"));
    details->setTabChangesFocus(true);
    binding::bind(actions.details, details);
    form->addRow(localised("Details:"), details);

    startDateEdit = lineEdit(actions.startDate, QStringLiteral("startDate"));
    QLineEdit *startTime = lineEdit(actions.startTime, QStringLiteral("startTime"));
    startTime->setPlaceholderText(QStringLiteral("hh:mm"));
    form->addRow(localised("Start:"), row({startDateEdit, startTime}));
    endDateEdit = lineEdit(actions.endDate, QStringLiteral("endDate"));
    QLineEdit *endTime = lineEdit(actions.endTime, QStringLiteral("endTime"));
    endTime->setPlaceholderText(QStringLiteral("hh:mm"));
    form->addRow(localised("End:"), row({endDateEdit, endTime}));

    auto *units = new QComboBox;
    units->setObjectName(QStringLiteral("totalTimeUnits"));
    binding::bind(actions.totalTimeUnits, units);
    form->addRow(localised("Units:"), units);
    QLineEdit *rate = lineEdit(actions.rate, QStringLiteral("rate"));
    form->addRow(localised("Rate:"), rate);

    QLineEdit *totalTime = lineEdit(actions.totalTime, QStringLiteral("totalTime"));
    QPushButton *calculateTime = pushButton(localised("Calculate"), QStringLiteral("calculateTotalTimeButton"));
    connect(calculateTime, &QPushButton::clicked, this, [this] { actions.calculateTotalTime(); });
    form->addRow(localised("Total time:"), row({totalTime, calculateTime}));
    QLineEdit *totalCharge = lineEdit(actions.totalCharge, QStringLiteral("totalCharge"));
    QPushButton *calculateCharge = pushButton(localised("Calculate"), QStringLiteral("calculateTotalChargeButton"));
    connect(calculateCharge, &QPushButton::clicked, this, [this] { actions.calculateTotalCharge(); });
    form->addRow(localised("Total charge:"), row({totalCharge, calculateCharge}));

    auto *message = new QLabel;
    message->setObjectName(QStringLiteral("calculationMessage"));
    message->setTextFormat(Qt::PlainText);
    binding::bind(actions.calculationMessage, message);
    form->addRow(QString(), message);

    auto *alarm = new QCheckBox(localised("Alarm"));
    alarm->setObjectName(QStringLiteral("alarmButton"));
    binding::bind(actions.alarmButton, alarm);
    auto *done = new QCheckBox(localised("Complete"));
    done->setObjectName(QStringLiteral("complete"));
    binding::bind(actions.complete, done);
    auto *flags = row({alarm, done});
    flags->addStretch(1);
    form->addRow(QString(), flags);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(localised("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton *cancelling = buttons->addButton(localised("Cancel"), QDialogButtonBox::RejectRole);
    cancelling->setObjectName(QStringLiteral("cancelButton"));
    cancelling->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, [this] { actions.finish(); });
    connect(cancelling, &QPushButton::clicked, this, &TaskEditorWindow::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form, 1);
    layout->addWidget(buttons);

    binding::bind(actions.editorWindow, this);
    placement::remember(this, QStringLiteral("QuorvelTaskEditorWindowGeometry"), QSize(520, 520));
}

TaskEditorWindow::~TaskEditorWindow() = default;

void TaskEditorWindow::showEvent(QShowEvent *event)
{
    startDateEdit->setPlaceholderText(hintFor(actions.startDate->dateFormat()));
    endDateEdit->setPlaceholderText(hintFor(actions.endDate->dateFormat()));
    QDialog::showEvent(event);
    titleEdit->setFocus(Qt::OtherFocusReason);
}

void TaskEditorWindow::reject()
{
    actions.cancel();
    if (isVisible())
        QDialog::reject();
}
