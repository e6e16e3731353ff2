#pragma once
// The open and save panels. The widget layer installs the platform's file
// dialogs; tests install a script; with neither (the command line) every
// panel is cancelled.
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace platform {

struct FilePanelRequest
{
    enum Kind { Open, Save, Folder } kind = Save;
    QString title;
    // Save: the extension the chosen name must carry ("csv"); it is added
    // when the user leaves it out. Open: the extensions offered (empty: any).
    QStringList fileTypes;
    QString directory;
    QString suggestedName;  // Save: the name the panel offers ("INV12.pdf")
};

// The chosen file, or none when the user cancelled.
using FilePanelHandler = std::function<std::optional<QString>(const FilePanelRequest &)>;

std::optional<QString> runFilePanel(const FilePanelRequest &request);
std::optional<QString> runSavePanel(const QString &requiredFileType, const QString &title = QString());
std::optional<QString> runOpenPanel(const QStringList &fileTypes = {}, const QString &title = QString());

// A name with the required extension: "sales" -> "sales.csv"; "sales.CSV" stays.
QString withRequiredExtension(const QString &path, const QString &extension);

FilePanelHandler setFilePanelHandler(FilePanelHandler handler);

}  // namespace platform
