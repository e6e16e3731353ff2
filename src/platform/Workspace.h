#pragma once
// The workspace: opening a URL ("mailto:" links, help pages) or a file or
// folder with its default application, a new message in the user's mail
// program with a file attached, and the general pasteboard's plain text. The widget layer installs the platform's
// services; tests install recording doubles; with none (the command line) nothing opens and the pasteboard is a text
// held in memory.
#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// A message for the user's mail program to open, not to send.
struct EmailMessage
{
    QString to;  // an address, or "" to leave it for the user
    QString subject;
    QString attachment;  // the path of a file to attach, or ""
};

struct WorkspaceHandler
{
    std::function<bool(const QString &url)> openUrl;
    std::function<bool(const QString &path)> openFile;
    std::function<bool(const EmailMessage &message)> composeEmail;
    std::function<QString()> pasteboardString;
    std::function<void(const QString &text)> setPasteboardString;
};

bool openUrl(const QString &url);
bool openFile(const QString &path);
// Opens a new message in the user's mail program. The platform's way attaches
// the file; where the mail program cannot be asked to, a "mailto:" link
// opens without it and the file is shown in the file manager instead.
bool composeEmail(const EmailMessage &message);
QString pasteboardString();
void setPasteboardString(const QString &text);

WorkspaceHandler setWorkspaceHandler(WorkspaceHandler handler);

// How the platform's handler starts the mail program for a message: with
// the mail helper (`helper`, the path of xdg-email, or "" when there is
// none) as a program and its argument list, never through a shell; without
// it, a "mailto:" link and the folder of the attachment to show.
struct EmailLaunch
{
    QString program;  // "" when the link is used
    QStringList arguments;
    QString mailtoUrl;
    QString folderToShow;
};
EmailLaunch emailLaunchFor(const EmailMessage &message, const QString &helper);

}  // namespace platform
