#include "TestEnvironment.h"

#include "platform/Clock.h"
#include "platform/Paths.h"

#include <QDir>
#include <QSettings>

namespace testlib {

namespace {
TestEnvironment *currentEnvironment = nullptr;
}

TestEnvironment::TestEnvironment()
{
    Q_ASSERT(dir.isValid());
    QDir(dir.path()).mkpath(QStringLiteral("support"));
    QDir(dir.path()).mkpath(QStringLiteral("home"));
    platform::paths::setApplicationSupportDir(supportDir());
    platform::paths::setHomeDir(homeDir());
    const QString settings = dir.path() + QStringLiteral("/settings");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings);
    platform::setFixedNow(fixedNow());
    previousHandler = platform::setAlertHandler([this](const platform::Alert &alert) {
        shown.append(alert);
        return alertScript.isEmpty() ? 1 : alertScript.takeFirst();
    });
    previousPanels = platform::setFilePanelHandler([this](const platform::FilePanelRequest &request) {
        panels.append(request);
        const QString answer = panelScript.isEmpty() ? QString() : panelScript.takeFirst();
        return answer.isNull() ? std::nullopt : std::optional<QString>(answer);
    });
    platform::WorkspaceHandler workspace;
    workspace.openUrl = [this](const QString &url) {
        urls.append(url);
        return true;
    };
    workspace.openFile = [this](const QString &path) {
        files.append(path);
        return true;
    };
    workspace.composeEmail = [this](const platform::EmailMessage &message) {
        emails.append(message);
        return true;
    };
    workspace.pasteboardString = [this] { return pasteboard; };
    workspace.setPasteboardString = [this](const QString &text) { pasteboard = text; };
    previousWorkspace = platform::setWorkspaceHandler(workspace);
    previousLog = platform::setLogHandler([this](platform::LogChannel channel, const QString &text) {
        if (channel == platform::LogChannel::Log)
            logged.append(text);
        else
            printed += text;
    });
    currentEnvironment = this;
}

TestEnvironment::~TestEnvironment()
{
    platform::setAlertHandler(previousHandler);
    platform::setFilePanelHandler(previousPanels);
    platform::setWorkspaceHandler(previousWorkspace);
    platform::setLogHandler(previousLog);
    platform::setFixedNow(QDateTime());
    platform::paths::setApplicationSupportDir(QString());
    platform::paths::setHomeDir(QString());
    if (currentEnvironment == this)
        currentEnvironment = nullptr;
}

TestEnvironment &TestEnvironment::current()
{
    Q_ASSERT(currentEnvironment);
    return *currentEnvironment;
}

QString TestEnvironment::supportDir() const
{
    return dir.path() + QStringLiteral("/support");
}
QString TestEnvironment::homeDir() const
{
    return dir.path() + QStringLiteral("/home");
}

QDateTime TestEnvironment::fixedNow()
{
    return QDateTime(QDate(2026, 1, 15), QTime(10, 0));
}

}  // namespace testlib
