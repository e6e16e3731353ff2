#pragma once
// Dated backups of the database: before the first write of each run (of the
// program or of a command that writes), the six files as they are on disk
// are kept in "Backups/YYYYMMDD-HHMMSS/" of the support folder. They are
// hard links where the file system allows (the writer replaces a file by a
// new one, so a link keeps the old bytes at no cost) and copies otherwise.
// Only the newest backups are kept (how many is a preference; none keeps
// none).
//
// Restoring one puts its files back (copies, each replacing its file
// atomically), after keeping the files it replaces as a backup of their own.
#include <QDateTime>
#include <QList>
#include <QString>

#include <array>

namespace backups {

constexpr int defaultKeep = 10;

// <support>/Quorvel/Backups
QString folder();
// Whether a name can only be a backup's: "YYYYMMDD-HHMMSS", maybe "-N".
bool isBackupName(const QString &name);

struct Backup
{
    QString name;
    QDateTime made;
    std::array<int, 6> records{};  // per file, in the bundle's order; -1 when missing
};

// Keeps the database's files as a new backup and forgets the oldest beyond
// `keep`. Answers the new backup's name; "" when there was no file to keep,
// when `keep` is 0, or on failure (then *error says why and no half backup
// is left).
QString make(const QDateTime &now, int keep, QString *error = nullptr);
// The backups there are, newest first.
QList<Backup> list();
// Their names alone, newest first (nothing is read).
QStringList names();
// The number of records in a database file (counted, not read); -1 when
// there is no such file.
int countRecords(const QString &path);
// Puts the backup's files back into the database; the files it replaces are
// kept first as a backup of their own (named in *kept). False, with the
// reason in *error, for an unknown or unsafe name or a failed copy.
bool restore(const QString &name, const QDateTime &now, int keep, QString *kept, QString *error);

}  // namespace backups
