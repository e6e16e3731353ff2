#include "platform/Folders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace platform {

bool copyFolder(const QString &from, const QString &to, QString *error)
{
    const auto fail = [error](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    const QFileInfo source(from);
    if (!source.exists())
        return fail(QStringLiteral("%1 does not exist").arg(from));
    if (QFileInfo::exists(to) || QFileInfo(to).isSymLink())
        return fail(QStringLiteral("%1 exists already").arg(to));
    const auto writable = [](const QString &path) {
        QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    };
    if (!source.isDir()) {
        QFile file(from);
        if (!file.copy(to))
            return fail(file.errorString());
        writable(to);
        return true;
    }
    if (!QDir().mkpath(to))
        return fail(QStringLiteral("%1 could not be made").arg(to));
    QDirIterator entries(from, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QFileInfo entry = entries.fileInfo();
        const QString target = to + path.mid(from.size());
        bool copied = true;
        QString why;
        if (entry.isDir() && !entry.isSymLink()) {
            copied = QDir().mkpath(target);
            why = QStringLiteral("%1 could not be made").arg(target);
        } else {
            QFile file(path);
            copied = QDir().mkpath(QFileInfo(target).path()) && file.copy(target);
            why = QStringLiteral("%1: %2").arg(path, file.errorString());
            if (copied)
                writable(target);
        }
        if (!copied) {
            QDir(to).removeRecursively();
            return fail(why);
        }
    }
    return true;
}

}  // namespace platform
