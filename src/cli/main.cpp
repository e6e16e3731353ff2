#include "cli/CommandLine.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>

#include <memory>

namespace {

// The command's name: the first argument that is neither a global option
// nor the folder of --data-dir.
QString commandOf(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (argument == QLatin1String("--data-dir")) {
            ++i;
            continue;
        }
        if (!argument.startsWith(QLatin1String("--")))
            return argument;
    }
    return QString();
}

QtMessageHandler standardMessages = nullptr;

// Qt's note that a desktop session's runtime folder is missing says
// nothing to a user of the command line, where there often is none.
void dropSessionNotes(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    if (standardMessages)
        standardMessages(type, context, message);
}

}  // namespace

int main(int argc, char **argv)
{
    // Laying a document out on pages needs the GUI application object, which
    // runs on the offscreen platform here: no display is needed or used.
    std::unique_ptr<QCoreApplication> app;
    if (commandOf(argc, argv) == QLatin1String("invoice")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        standardMessages = qInstallMessageHandler(dropSessionNotes);
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvel"));
    QFile out;
    QFile err;
    if (!out.open(stdout, QIODevice::WriteOnly) || !err.open(stderr, QIODevice::WriteOnly))
        return cli::Failure;
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    const int code = cli::run(arguments, out, err);
    out.flush();
    err.flush();
    return code;
}
