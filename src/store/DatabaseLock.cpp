#include "store/DatabaseLock.h"

#include "platform/Paths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

DatabaseLock::DatabaseLock() = default;

DatabaseLock::~DatabaseLock() = default;

QString DatabaseLock::lockPath()
{
    return platform::paths::bundleDir() + QStringLiteral(".lock");
}

QString DatabaseLock::serverName()
{
    const QByteArray folder = QFileInfo(platform::paths::bundleDir()).absoluteFilePath().toUtf8();
    return QStringLiteral("quorvel-")
        + QString::fromLatin1(QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex().left(16));
}

bool DatabaseLock::tryLock()
{
    if (isLocked())
        return true;
    QDir().mkpath(QFileInfo(lockPath()).path());
    file = std::make_unique<QLockFile>(lockPath());
    // A lock is stale only when the program that took it is gone (the lock
    // file names its process), however long it has been held; a stale lock
    // is taken over.
    file->setStaleLockTime(0);
    return file->tryLock(0);
}

bool DatabaseLock::isLocked() const
{
    return file && file->isLocked();
}

void DatabaseLock::unlock()
{
    if (file)
        file->unlock();
}

QString DatabaseLock::holder() const
{
    qint64 pid = 0;
    QString host, application;
    if (file && file->getLockInfo(&pid, &host, &application))
        return QStringLiteral("process %1 on %2").arg(pid).arg(host);
    return QString();
}
