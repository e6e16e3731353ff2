#pragma once
// quorvel-cli import-legacy and import-contacts: the program's imports run
// headless, each writing the database at the end and printing a summary.
#include <QIODevice>
#include <QStringList>

namespace cli {

int importLegacyCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);
int importContactsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
