#include "platform/Workspace.h"

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

}  // namespace platform
