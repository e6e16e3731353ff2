#include "cli/CommandLine.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvel"));
    QFile out;
    QFile err;
    if (!out.open(stdout, QIODevice::WriteOnly) || !err.open(stderr, QIODevice::WriteOnly))
        return cli::Failure;
    QStringList arguments = app.arguments();
    arguments.removeFirst();
    const int code = cli::run(arguments, out, err);
    out.flush();
    err.flush();
    return code;
}
