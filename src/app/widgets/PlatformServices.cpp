#include "app/widgets/PlatformServices.h"

#include "platform/Alerts.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"
#include "platform/Progress.h"
#include "platform/Workspace.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>

namespace platformServices {

namespace {

int showAlert(const platform::Alert &alert)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(QStringLiteral("Quorvel"));
    box.setText(alert.message);
    box.setInformativeText(alert.informativeText);
    if (!alert.details.isEmpty())
        box.setDetailedText(alert.details);
    box.setIcon(QMessageBox::Information);
    const QString defaultTitle = alert.defaultButton.isEmpty() ? platform::localised("OK") : alert.defaultButton;
    QPushButton *defaultButton = box.addButton(defaultTitle, QMessageBox::AcceptRole);
    QPushButton *alternate
        = alert.alternateButton.isEmpty() ? nullptr : box.addButton(alert.alternateButton, QMessageBox::RejectRole);
    QPushButton *other
        = alert.otherButton.isEmpty() ? nullptr : box.addButton(alert.otherButton, QMessageBox::DestructiveRole);
    box.setDefaultButton(defaultButton);
    box.setEscapeButton(alternate ? alternate : defaultButton);
    // Wide enough for a sentence a line (the box alone wraps long texts
    // after a few words).
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout()))
        grid->addItem(
            new QSpacerItem(box.fontMetrics().averageCharWidth() * 56, 0, QSizePolicy::Minimum, QSizePolicy::Expanding),
            grid->rowCount(), 0, 1, grid->columnCount());
    box.exec();
    if (alternate && box.clickedButton() == alternate)
        return 0;
    if (other && box.clickedButton() == other)
        return -1;
    return 1;
}

std::optional<QString> showFilePanel(const platform::FilePanelRequest &request)
{
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.directory);
    QStringList filters;
    for (const QString &type : request.fileTypes)
        filters << QStringLiteral("%1 (*.%2)").arg(type.toUpper(), type);
    if (!filters.isEmpty())
        dialog.setNameFilters(filters);
    if (request.kind == platform::FilePanelRequest::Save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        if (!request.fileTypes.isEmpty())
            dialog.setDefaultSuffix(request.fileTypes.first());
        if (!request.suggestedName.isEmpty())
            dialog.selectFile(request.suggestedName);
    } else if (request.kind == platform::FilePanelRequest::Folder) {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first();
}

// A progress window for long work, shown once the work has taken half a
// second; the events it lets through keep the windows drawn.
bool showProgress(const QString &what, qint64 done, qint64 total)
{
    static QPointer<QProgressDialog> window;
    if (done >= total) {
        delete window.data();
        return true;
    }
    if (!window) {
        window = new QProgressDialog(what, QString(), 0, 1000, QApplication::activeWindow());
        window->setObjectName(QStringLiteral("progressWindow"));
        window->setWindowModality(Qt::ApplicationModal);
        window->setMinimumDuration(500);
        window->setAutoClose(false);
        window->setAutoReset(false);
    }
    window->setLabelText(what);
    window->setValue(total > 0 ? int(done * 1000 / total) : 0);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return !window->wasCanceled();
}

}  // namespace

void install()
{
    platform::setAlertHandler(showAlert);
    platform::setFilePanelHandler(showFilePanel);
    platform::setProgressHandler(showProgress);
    platform::WorkspaceHandler workspace;
    workspace.openUrl = [](const QString &url) { return QDesktopServices::openUrl(QUrl(url)); };
    workspace.openFile = [](const QString &path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };
    workspace.composeEmail = [](const platform::EmailMessage &message) {
        const platform::EmailLaunch launch
            = platform::emailLaunchFor(message, QStandardPaths::findExecutable(QStringLiteral("xdg-email")));
        if (!launch.program.isEmpty())
            return QProcess::startDetached(launch.program, launch.arguments);
        const bool opened = QDesktopServices::openUrl(QUrl(launch.mailtoUrl, QUrl::StrictMode));
        if (!launch.folderToShow.isEmpty())
            QDesktopServices::openUrl(QUrl::fromLocalFile(launch.folderToShow));
        return opened;
    };
    workspace.pasteboardString = [] { return QGuiApplication::clipboard()->text(); };
    workspace.setPasteboardString = [](const QString &text) { QGuiApplication::clipboard()->setText(text); };
    platform::setWorkspaceHandler(workspace);
}

}  // namespace platformServices
