#pragma once
// The workspace: opening a URL ("mailto:" links, help pages) or a file or
// folder with its default application, and the general pasteboard's plain
// text. The widget layer installs the platform's services; tests install
// recording doubles; with none (the command line) nothing opens and the
// pasteboard is a text held in memory.
#include <QString>
#include <functional>

namespace platform {

struct WorkspaceHandler
{
    std::function<bool(const QString &url)> openUrl;
    std::function<bool(const QString &path)> openFile;
    std::function<QString()> pasteboardString;
    std::function<void(const QString &text)> setPasteboardString;
};

bool openUrl(const QString &url);
bool openFile(const QString &path);
QString pasteboardString();
void setPasteboardString(const QString &text);

WorkspaceHandler setWorkspaceHandler(WorkspaceHandler handler);

}  // namespace platform
