#include "cli/CliDatabase.h"

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "store/Backups.h"
#include "store/ListColumns.h"
#include "store/PrefsController.h"

#include <QFileInfo>

namespace cli {

CliDatabase::CliDatabase()
    : bundle(contacts, orders, items, materials, bills, actions)
{
    // The files as they were before the command wrote any, kept dated.
    bundle.setBeforeFirstWrite([] {
        QString why;
        backups::make(platform::now(), PrefsController::backupCount(), &why);
        if (!why.isEmpty())
            platform::log(QStringLiteral("couldn't keep a backup of the database: ") + why);
    });
}

bool CliDatabase::exists() const
{
    return QFileInfo(platform::paths::bundleDir()).isDir();
}

bool CliDatabase::read()
{
    return bundle.readDatabase().ok();
}

bool CliDatabase::writeAll()
{
    return bundle.writeDatabase();
}

const kdDataSource *CliDatabase::collection(const QString &kind) const
{
    // The kinds are listed in the order of the bundle's files.
    const qsizetype at = ListColumns::kinds().indexOf(kind);
    if (at < 0)
        return nullptr;
    return &bundle.collection(DatabaseBundle::File(at));
}

}  // namespace cli
