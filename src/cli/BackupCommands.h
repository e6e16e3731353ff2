#pragma once
// quorvel-cli backups and restore: the dated backups of the database listed,
// and one put back (the files it replaces kept as a backup of their own).
#include <QIODevice>
#include <QStringList>

namespace cli {

int backupsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);
int restoreCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
