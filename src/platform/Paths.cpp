#include "platform/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QSettings>

namespace platform::paths {

namespace {
QMutex pathsMutex;
QString supportOverride;
QString homeOverride;

QString join(const QString &parent, const QString &name)
{
    if (parent.endsWith(QLatin1Char('/')))
        return parent + name;
    return parent + QLatin1Char('/') + name;
}
}  // namespace

void setApplicationSupportDir(const QString &dir)
{
    QMutexLocker locker(&pathsMutex);
    supportOverride = dir;
}

QString applicationSupportDir()
{
    {
        QMutexLocker locker(&pathsMutex);
        if (!supportOverride.isEmpty())
            return supportOverride;
    }
    const QString xdg = qEnvironmentVariable("XDG_DATA_HOME");
    if (!xdg.isEmpty())
        return xdg;
    return join(homeDir(), QStringLiteral(".local/share"));
}

void useDataDir(const QString &dir)
{
    setApplicationSupportDir(dir);
    const QString settingsDir = preferencesDir();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDir);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsDir);
}

QString preferencesDir()
{
    return join(quorvelDir(), QStringLiteral("preferences"));
}

void setHomeDir(const QString &dir)
{
    QMutexLocker locker(&pathsMutex);
    homeOverride = dir;
}

QString homeDir()
{
    {
        QMutexLocker locker(&pathsMutex);
        if (!homeOverride.isEmpty())
            return homeOverride;
    }
    return QDir::homePath();
}

QString expandTilde(const QString &path)
{
    if (path == QLatin1String("~"))
        return homeDir();
    if (path.startsWith(QLatin1String("~/")))
        return join(homeDir(), path.mid(2));
    return path;
}

QString quorvelDir()
{
    return join(applicationSupportDir(), QStringLiteral("Quorvel"));
}

QString bundleDir()
{
    return join(quorvelDir(), QStringLiteral("quorveldatabase.qvldb"));
}

QString bundleFile(const QString &name)
{
    return join(bundleDir(), name);
}

QString itemImagesDir()
{
    return join(bundleDir(), QStringLiteral("ItemImages"));
}

QString itemImagePath(int itemId)
{
    return join(itemImagesDir(), QString::number(itemId) + QStringLiteral(".tiff"));
}

QString attachmentsDir()
{
    return caseInsensitiveChild(bundleDir(), QStringLiteral("Attachments"));
}

QString reportsDir()
{
    return caseInsensitiveChild(quorvelDir(), QStringLiteral("reports"));
}

QString legacyDatabaseFile()
{
    return join(homeDir(), QStringLiteral("Quorvel/quorveldatabase.xml"));
}

bool isPlainName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..")
        && !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) && !name.contains(QChar(0));
}

QString legacyAttachmentsDir()
{
    return join(homeDir(), QStringLiteral("Library/Quorvel/Attachments"));
}

QString caseInsensitiveChild(const QString &parent, const QString &name)
{
    const QString exact = join(parent, name);
    if (QFileInfo(exact).isDir())
        return exact;
    const QStringList children = QDir(parent).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    for (const QString &child : children) {
        if (child.compare(name, Qt::CaseInsensitive) == 0)
            return join(parent, child);
    }
    return exact;
}

}  // namespace platform::paths
