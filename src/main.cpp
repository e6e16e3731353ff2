// The program's entry: the main window over the database in the
// application-support folder (or the folder given with --data-dir).
#include "app/widgets/MainWindow.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVEL_VERSION));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Quorvel: run a small business."));
    options.addHelpOption();
    options.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
                                     QStringLiteral("Use DIR as the application-support folder."),
                                     QStringLiteral("DIR"));
    options.addOption(dataDir);
    options.process(app);
    if (options.isSet(dataDir))
        platform::paths::setApplicationSupportDir(options.value(dataDir));

    MainWindow window;
    window.show();
    return app.exec();
}
