// The controller's Restore from Backup: a dated backup put back, and the
// program reading the database again.
#include "app/Quorvel.h"

#include "app/SaveKeeper.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Localised.h"
#include "store/PrefsController.h"
#include "store/kdDataSource.h"

using platform::localised;

bool Quorvel::restoreFromBackup()
{
    const QList<backups::Backup> list = backups::list();
    if (list.isEmpty()) {
        platform::runAlert(localised("There is no backup yet."),
                           localised("Quorvel keeps a backup of the database before it first saves it in a session."),
                           localised("OK"));
        return false;
    }
    const std::optional<QString> chosen = chooseBackup ? chooseBackup(list) : std::optional<QString>(list.first().name);
    if (!chosen)
        return false;
    const int answer = platform::runAlert(
        localised("Restore the backup %1?").arg(*chosen),
        localised("The database as it is now is saved and kept as a backup of its own first, so nothing is lost."),
        localised("Restore"), localised("Cancel"));
    return answer == 1 && restoreBackup(*chosen);
}

bool Quorvel::restoreBackup(const QString &name)
{
    // Everything as it is now goes to disk, to be kept by the restore.
    saver->flush();
    QString kept, why;
    if (!backups::restore(name, platform::now(), PrefsController::backupCount(), &kept, &why)) {
        platform::runAlert(localised("The backup could not be restored."), why, localised("OK"));
        return false;
    }
    for (int f = 0; f < DatabaseBundle::FileCount; ++f)
        database->collection(DatabaseBundle::File(f)).clear();
    deletionHistory->clear();
    readDatabase();
    platform::runAlert(localised("The backup %1 is restored.").arg(name),
                       kept.isEmpty() ? QString()
                                      : localised("The database as it was is kept as the backup %1.").arg(kept),
                       localised("OK"));
    return true;
}
