#include "store/Backups.h"

#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/DatabaseBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace backups {

namespace {

// A hard link where the file system allows, else a copy.
bool keepFile(const QString &from, const QString &to, QString *error)
{
    if (::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return true;
    QFile source(from);
    if (source.copy(to))
        return true;
    if (error)
        *error = QStringLiteral("%1: %2").arg(from, source.errorString());
    return false;
}

void forgetOldest(int keep)
{
    const QStringList all = names();
    for (qsizetype n = keep; n < all.size(); ++n)
        QDir(folder() + QLatin1Char('/') + all.at(n)).removeRecursively();
}

}  // namespace

QString folder()
{
    return platform::paths::quorvelDir() + QStringLiteral("/Backups");
}

bool isBackupName(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^\\d{8}-\\d{6}(-\\d{1,4})?$"));
    return form.match(name).hasMatch();
}

QString make(const QDateTime &now, int keep, QString *error)
{
    if (keep <= 0)
        return QString();
    QStringList present;
    for (int file = 0; file < DatabaseBundle::FileCount; ++file) {
        if (QFileInfo(DatabaseBundle::filePath(DatabaseBundle::File(file))).isFile())
            present << DatabaseBundle::fileName(DatabaseBundle::File(file));
    }
    if (present.isEmpty())
        return QString();
    const QString stem = now.toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = stem;
    for (int n = 2; QFileInfo::exists(folder() + QLatin1Char('/') + name); ++n)
        name = stem + QStringLiteral("-%1").arg(n);
    // Made under a hidden name and renamed when whole, so a backup that is
    // listed is complete; what a crash left half-made is removed here.
    QDir backups(folder());
    for (const QString &left : backups.entryList({QStringLiteral(".making-*")}, QDir::Dirs | QDir::Hidden))
        QDir(backups.filePath(left)).removeRecursively();
    const QString making = folder() + QStringLiteral("/.making-") + name;
    const QString target = folder() + QLatin1Char('/') + name;
    if (!QDir().mkpath(making)) {
        if (error)
            *error = QStringLiteral("cannot create %1").arg(making);
        return QString();
    }
    for (const QString &file : present) {
        if (!keepFile(platform::paths::bundleFile(file), making + QLatin1Char('/') + file, error)) {
            QDir(making).removeRecursively();
            return QString();
        }
    }
    if (!QDir().rename(making, target)) {
        QDir(making).removeRecursively();
        if (error)
            *error = QStringLiteral("cannot create %1").arg(target);
        return QString();
    }
    forgetOldest(keep);
    return name;
}

QStringList names()
{
    QStringList found = QDir(folder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    found.removeIf([](const QString &name) { return !isBackupName(name); });
    return found;
}

QList<Backup> list()
{
    QList<Backup> found;
    for (const QString &name : names()) {
        Backup backup;
        backup.name = name;
        backup.made = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd-HHmmss"));
        for (int file = 0; file < DatabaseBundle::FileCount; ++file)
            backup.records[size_t(file)] = countRecords(folder() + QLatin1Char('/') + name + QLatin1Char('/')
                                                        + DatabaseBundle::fileName(DatabaseBundle::File(file)));
        found << backup;
    }
    return found;
}

int countRecords(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    // Each record is a <dict> inside the root <dict>.
    const uchar *bytes = file.size() > 0 ? file.map(0, file.size()) : nullptr;
    if (!bytes)
        return file.size() == 0 ? 0 : -1;
    const QByteArrayView view(reinterpret_cast<const char *>(bytes), file.size());
    qsizetype count = 0;
    for (qsizetype at = view.indexOf("<dict>"); at >= 0; at = view.indexOf("<dict>", at + 6))
        ++count;
    return int(std::max<qsizetype>(0, count - 1));
}

bool restore(const QString &name, const QDateTime &now, int keep, QString *kept, QString *error)
{
    const auto fail = [error](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    const QString source = folder() + QLatin1Char('/') + name;
    if (!isBackupName(name) || !QFileInfo(source).isDir())
        return fail(QStringLiteral("there is no backup \"%1\"").arg(name));
    // What is there now becomes a backup of its own, and no backup is
    // forgotten for it (the one restored may be the oldest).
    Q_UNUSED(keep);
    QString why;
    const QString own = make(now, int(names().size()) + 1, &why);
    if (own.isEmpty() && !why.isEmpty())
        return fail(why);
    if (kept)
        *kept = own;
    QDir().mkpath(platform::paths::bundleDir());
    for (int file = 0; file < DatabaseBundle::FileCount; ++file) {
        const QString fileName = DatabaseBundle::fileName(DatabaseBundle::File(file));
        QFile backup(source + QLatin1Char('/') + fileName);
        if (!backup.exists())
            continue;
        if (!backup.open(QIODevice::ReadOnly))
            return fail(QStringLiteral("%1: %2").arg(backup.fileName(), backup.errorString()));
        if (!platform::plist::writeFileAtomically(platform::paths::bundleFile(fileName), backup.readAll(), &why))
            return fail(QStringLiteral("%1: %2").arg(platform::paths::bundleFile(fileName), why));
    }
    return true;
}

}  // namespace backups
