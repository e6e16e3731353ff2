#include "platform/FilePanels.h"

#include <QFileInfo>

namespace platform {

namespace {
FilePanelHandler &installedHandler()
{
    static FilePanelHandler handler;
    return handler;
}
}  // namespace

std::optional<QString> runFilePanel(const FilePanelRequest &request)
{
    if (!installedHandler())
        return std::nullopt;
    std::optional<QString> chosen = installedHandler()(request);
    if (!chosen || chosen->isEmpty())
        return std::nullopt;
    if (request.kind == FilePanelRequest::Save && !request.fileTypes.isEmpty())
        return withRequiredExtension(*chosen, request.fileTypes.first());
    return chosen;
}

std::optional<QString> runSavePanel(const QString &requiredFileType, const QString &title)
{
    FilePanelRequest request;
    request.kind = FilePanelRequest::Save;
    request.title = title;
    if (!requiredFileType.isEmpty())
        request.fileTypes = QStringList{requiredFileType};
    return runFilePanel(request);
}

std::optional<QString> runOpenPanel(const QStringList &fileTypes, const QString &title)
{
    FilePanelRequest request;
    request.kind = FilePanelRequest::Open;
    request.title = title;
    request.fileTypes = fileTypes;
    return runFilePanel(request);
}

QString withRequiredExtension(const QString &path, const QString &extension)
{
    if (extension.isEmpty() || QFileInfo(path).suffix().compare(extension, Qt::CaseInsensitive) == 0)
        return path;
    return path + QLatin1Char('.') + extension;
}

FilePanelHandler setFilePanelHandler(FilePanelHandler handler)
{
    FilePanelHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

}  // namespace platform
