#include "CliRun.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace testlib {

CliResult runProgram(const QString &program, const QStringList &arguments, const QString &home,
                     const QStringList &unset)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
    for (const QString &name : unset)
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

}  // namespace testlib
