#pragma once
// What every test class runs in: a temporary application-support folder and
// home folder, preferences redirected into it, the scripted alert responder
// and a fixed clock (2026-01-15 10:00 local time). The shared test main makes
// one around each test class; tests reach it through TestEnvironment::current().
#include <QDateTime>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include "platform/Alerts.h"

namespace testlib {

class TestEnvironment
{
public:
    TestEnvironment();
    ~TestEnvironment();
    static TestEnvironment &current();

    QString root() const { return dir.path(); }
    QString supportDir() const;  // the application-support folder in use
    QString homeDir() const;     // the home folder in use

    // Alerts: each shown alert is recorded; answers are taken from the
    // script in order, and the default button (1) when the script is empty.
    void scriptAlertAnswers(const QList<int> &answers) { alertScript = answers; }
    const QList<platform::Alert> &alertsShown() const { return shown; }
    void clearAlerts() { shown.clear(); alertScript.clear(); }

    static QDateTime fixedNow();

private:
    QTemporaryDir dir;
    QList<int> alertScript;
    QList<platform::Alert> shown;
    platform::AlertHandler previousHandler;
};

}  // namespace testlib
