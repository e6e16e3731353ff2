#pragma once
// One program per data folder: a second start finds the first through a
// local socket named after the data folder and asks it to bring its main
// window to the front, then ends. The first listens for that request.
#include <QObject>
#include <functional>

class QLocalServer;

class SingleInstance : public QObject
{
    Q_OBJECT
public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    // Asks a program already running on the socket to show itself; false
    // when none answers.
    static bool askRunningToShow(const QString &name);
    // Listens on the socket; `show` runs for every request.
    bool listen(const QString &name, std::function<void()> show);

private:
    QLocalServer *server = nullptr;
    std::function<void()> onShow;
};
