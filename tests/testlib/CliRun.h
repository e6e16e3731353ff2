#pragma once
// Runs the real quorvel-cli, as a user would from a shell, with a home
// folder of the test's own (so the default data and configuration folders
// are under it, never the real ones).
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace testlib {

struct CliResult
{
    int code = -1;  // -1 when the program did not finish in time
    QByteArray out;
    QByteArray err;
};

// `unset` names environment variables the program must not see (the
// display, say).
CliResult runProgram(const QString &program, const QStringList &arguments, const QString &home,
                     const QStringList &unset = {});

#ifdef QUORVEL_CLI_PATH
inline CliResult runCli(const QStringList &arguments, const QString &home, const QStringList &unset = {})
{
    return runProgram(QStringLiteral(QUORVEL_CLI_PATH), arguments, home, unset);
}
#endif

}  // namespace testlib
