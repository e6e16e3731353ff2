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
#include "platform/FilePanels.h"
#include "platform/Log.h"
#include "platform/Workspace.h"

#include <optional>

namespace testlib {

class TestEnvironment
{
public:
    TestEnvironment();
    ~TestEnvironment();
    static TestEnvironment &current();

    QString root() const { return dir.path(); }
    QString supportDir() const;  // the application-support folder in use
    QString homeDir() const;  // the home folder in use

    // Alerts: each shown alert is recorded; answers are taken from the
    // script in order, and the default button (1) when the script is empty.
    void scriptAlertAnswers(const QList<int> &answers) { alertScript = answers; }
    const QList<platform::Alert> &alertsShown() const { return shown; }
    void clearAlerts()
    {
        shown.clear();
        alertScript.clear();
    }

    static QDateTime fixedNow();

    // File panels: each request is recorded; answers come from the script
    // in order (a null text cancels), cancelled when the script is empty.
    void scriptFilePanelAnswers(const QStringList &answers) { panelScript = answers; }
    const QList<platform::FilePanelRequest> &filePanelsShown() const { return panels; }

    // Workspace: what was opened; the pasteboard is a text held here.
    const QStringList &openedUrls() const { return urls; }
    const QStringList &openedFiles() const { return files; }
    const QList<platform::EmailMessage> &composedEmails() const { return emails; }

    // Diagnostics: the log's lines and the text written on standard output.
    const QStringList &logLines() const { return logged; }
    QString standardOutputText() const { return printed; }
    // Forgets the diagnostics, the file panels and what was opened.
    void clearDiagnostics()
    {
        logged.clear();
        printed.clear();
        panels.clear();
        panelScript.clear();
        urls.clear();
        files.clear();
        emails.clear();
    }

private:
    QTemporaryDir dir;
    QList<int> alertScript;
    QList<platform::Alert> shown;
    platform::AlertHandler previousHandler;
    QStringList panelScript;
    QList<platform::FilePanelRequest> panels;
    platform::FilePanelHandler previousPanels;
    QStringList urls;
    QStringList files;
    QList<platform::EmailMessage> emails;
    QString pasteboard;
    platform::WorkspaceHandler previousWorkspace;
    QStringList logged;
    QString printed;
    platform::LogHandler previousLog;
};

}  // namespace testlib
