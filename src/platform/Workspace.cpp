#include "platform/Workspace.h"

#include <QFileInfo>
#include <QUrl>

namespace platform {

namespace {
WorkspaceHandler &installedHandler()
{
    static WorkspaceHandler handler;
    return handler;
}
QString &memoryPasteboard()
{
    static QString text;
    return text;
}
}  // namespace

bool openUrl(const QString &url)
{
    return installedHandler().openUrl ? installedHandler().openUrl(url) : false;
}

bool openFile(const QString &path)
{
    return installedHandler().openFile ? installedHandler().openFile(path) : false;
}

bool composeEmail(const EmailMessage &message)
{
    return installedHandler().composeEmail ? installedHandler().composeEmail(message) : false;
}

QString pasteboardString()
{
    return installedHandler().pasteboardString ? installedHandler().pasteboardString() : memoryPasteboard();
}

void setPasteboardString(const QString &text)
{
    if (installedHandler().setPasteboardString)
        installedHandler().setPasteboardString(text);
    else
        memoryPasteboard() = text;
}

WorkspaceHandler setWorkspaceHandler(WorkspaceHandler handler)
{
    WorkspaceHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

EmailLaunch emailLaunchFor(const EmailMessage &message, const QString &helper)
{
    EmailLaunch launch;
    if (!helper.isEmpty()) {
        launch.program = helper;
        if (!message.subject.isEmpty())
            launch.arguments << QStringLiteral("--subject") << message.subject;
        if (!message.attachment.isEmpty())
            launch.arguments << QStringLiteral("--attach") << message.attachment;
        // An address that looks like an option is not passed as one.
        if (!message.to.isEmpty() && !message.to.startsWith(QLatin1Char('-')))
            launch.arguments << message.to;
        return launch;
    }
    launch.mailtoUrl = QStringLiteral("mailto:") + QString::fromLatin1(QUrl::toPercentEncoding(message.to, "@+."));
    if (!message.subject.isEmpty())
        launch.mailtoUrl += QStringLiteral("?subject=") + QString::fromLatin1(QUrl::toPercentEncoding(message.subject));
    if (!message.attachment.isEmpty())
        launch.folderToShow = QFileInfo(message.attachment).absolutePath();
    return launch;
}

}  // namespace platform
