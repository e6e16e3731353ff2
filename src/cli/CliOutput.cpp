#include "cli/CliOutput.h"

#include "cli/CliUsage.h"
#include "platform/PropertyList.h"

namespace cli {

void say(QIODevice &device, const QString &line)
{
    device.write(line.toUtf8());
    device.write("\n");
}

int usageError(QIODevice &err, const QString &why)
{
    say(err, QStringLiteral("quorvel-cli: ") + why);
    err.write(usage().toUtf8());
    return UsageError;
}

bool writeOutput(const QByteArray &bytes, const QString &path, QIODevice &out, QIODevice &err)
{
    if (path.isEmpty()) {
        if (out.write(bytes) != bytes.size()) {
            say(err, QStringLiteral("quorvel-cli: cannot write to standard output"));
            return false;
        }
        return true;
    }
    QString why;
    if (!platform::plist::writeFileAtomically(path, bytes, &why)) {
        say(err, QStringLiteral("quorvel-cli: cannot write %1: %2").arg(path, why));
        return false;
    }
    return true;
}

}  // namespace cli
