#include "orders/Stationery.h"

#include "platform/Folders.h"
#include "platform/Log.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace stationery {

namespace {

// Where the program carries the documents it ships.
QString shipped(const QString &name)
{
    return QStringLiteral(":/core/stationery/%1.rtfd").arg(name);
}

// The support folder's document of that name and extension.
QString supportFile(const QString &name)
{
    return platform::paths::quorvelDir() + QLatin1Char('/') + name;
}

// "ours.rtf" when it exists, else "ours.rtfd".
QString singleFileFirst(const QString &stem)
{
    const QString single = supportFile(stem + QStringLiteral(".rtf"));
    return QFileInfo::exists(single) ? single : supportFile(stem + QStringLiteral(".rtfd"));
}

void installWhenMissing(const QString &target, const QString &source)
{
    if (QFileInfo::exists(target))
        return;
    if (!copyPackage(source, target))
        platform::log(QStringLiteral("couldn't copy %1 to %2").arg(source, target));
}

bool makeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    if (QDir().mkpath(path))
        return true;
    platform::log(QStringLiteral("couldn't create the folder %1").arg(path));
    return false;
}

}  // namespace

QString folder()
{
    return platform::paths::quorvelDir() + QStringLiteral("/stationary");
}

QString documentPath(const QString &name)
{
    return folder() + QLatin1Char('/') + name + QStringLiteral(".rtfd");
}

bool isSafeName(const QString &name)
{
    return platform::paths::isPlainName(name);
}

bool install()
{
    if (!makeFolder(platform::paths::quorvelDir()) || !makeFolder(folder()))
        return false;
    const QString custom = supportFile(QStringLiteral("customInvoice.rtfd"));
    installWhenMissing(documentPath(QStringLiteral("Invoice")),
                       QFileInfo::exists(custom) ? custom : shipped(QStringLiteral("Invoice")));
    installWhenMissing(documentPath(QStringLiteral("Reminder")), shipped(QStringLiteral("Reminder")));
    return true;
}

QStringList names()
{
    QStringList result;
    const QFileInfoList entries = QDir(folder()).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        if (entry.fileName().startsWith(QLatin1Char('.')))
            continue;
        result << entry.completeBaseName();
    }
    return result;
}

QString headerPath()
{
    return singleFileFirst(QStringLiteral("invoiceHeader"));
}

QString footerPath()
{
    return singleFileFirst(QStringLiteral("invoiceFooter"));
}

void createHeaderAndFooterIfNecessary()
{
    for (const QString &stem : {QStringLiteral("invoiceHeader"), QStringLiteral("invoiceFooter")}) {
        if (QFileInfo::exists(supportFile(stem + QStringLiteral(".rtf"))))
            continue;
        installWhenMissing(supportFile(stem + QStringLiteral(".rtfd")), shipped(stem));
    }
}

bool copyPackage(const QString &from, const QString &to)
{
    return platform::copyFolder(from, to);
}

}  // namespace stationery
