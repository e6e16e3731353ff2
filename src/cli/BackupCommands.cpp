#include "cli/BackupCommands.h"

#include "cli/CliOutput.h"
#include "cli/CliUsage.h"
#include "platform/Clock.h"
#include "store/Backups.h"
#include "store/DatabaseBundle.h"
#include "store/ListColumns.h"
#include "store/PrefsController.h"

namespace cli {

int backupsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    if (!arguments.isEmpty())
        return usageError(err, QStringLiteral("backups takes no arguments"));
    const QStringList kinds = ListColumns::kinds();
    for (const backups::Backup &backup : backups::list()) {
        QStringList records;
        for (int file = 0; file < DatabaseBundle::FileCount; ++file) {
            if (backup.records[size_t(file)] >= 0)
                records << QStringLiteral("%1 %2").arg(kinds.at(file)).arg(backup.records[size_t(file)]);
        }
        say(out,
            QStringLiteral("%1\t%2\t%3")
                .arg(backup.name, backup.made.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                     records.join(QStringLiteral(", "))));
    }
    return Success;
}

int restoreCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    if (arguments.size() != 1 || arguments.first().startsWith(QLatin1String("--")))
        return usageError(err, QStringLiteral("restore needs the NAME of one backup (see quorvel-cli backups)"));
    QString kept, why;
    if (!backups::restore(arguments.first(), platform::now(), PrefsController::backupCount(), &kept, &why)) {
        say(err, QStringLiteral("quorvel-cli: nothing restored: %1").arg(why));
        return Failure;
    }
    say(out, QStringLiteral("restored %1").arg(arguments.first()));
    if (!kept.isEmpty())
        say(out, QStringLiteral("the files it replaced are kept as the backup %1").arg(kept));
    return Success;
}

}  // namespace cli
