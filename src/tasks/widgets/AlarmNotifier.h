#pragma once
// Takes a ringing alarm to the desktop as well: when the desktop has a
// system tray, the program's tray icon shows the task's title as a message,
// so that the alarm reaches a user whose window is in the background. The
// modal alert is shown as ever; without a system tray nothing more happens.
#include <QObject>
#include <QString>

class ActionManager;
class QSystemTrayIcon;

class AlarmNotifier : public QObject
{
    Q_OBJECT
public:
    explicit AlarmNotifier(ActionManager &manager, QObject *parent = nullptr);
    ~AlarmNotifier() override;

    // Shows the message; answers whether the desktop could take it.
    bool notify(const QString &taskTitle);

private:
    QSystemTrayIcon *trayIcon = nullptr;
};
