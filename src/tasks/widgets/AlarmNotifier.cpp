#include "tasks/widgets/AlarmNotifier.h"

#include "platform/Localised.h"
#include "tasks/ActionManager.h"

#include <QIcon>
#include <QSystemTrayIcon>

AlarmNotifier::AlarmNotifier(ActionManager &manager, QObject *parent)
    : QObject(parent)
{
    connect(&manager, &ActionManager::alarmRaised, this, &AlarmNotifier::notify);
}

AlarmNotifier::~AlarmNotifier() = default;

bool AlarmNotifier::notify(const QString &taskTitle)
{
    if (!QSystemTrayIcon::isSystemTrayAvailable())
        return false;
    if (!trayIcon) {
        trayIcon = new QSystemTrayIcon(QIcon(QStringLiteral(":/core/icons/quorvel.svg")), this);
        trayIcon->setToolTip(QStringLiteral("Quorvel"));
    }
    // A tray icon shows messages only while it is itself shown.
    trayIcon->show();
    trayIcon->showMessage(platform::localised("Alarm"), taskTitle, QSystemTrayIcon::Information);
    return true;
}
