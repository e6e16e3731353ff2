#include "cli/CliDatabase.h"

#include "platform/Paths.h"
#include "store/ListColumns.h"

#include <QFileInfo>

namespace cli {

CliDatabase::CliDatabase()
    : bundle(contacts, orders, items, materials, bills, actions)
{ }

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
