#include "orders/OrderAttachments.h"

#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace orderAttachments {

namespace {

// Copies a file, or a folder with everything in it, to `target`, which must
// not exist yet. Links inside a folder are copied as links, so a link to a
// folder above cannot make the copy endless. Answers whether all was copied.
bool copyRecursively(const QString &source, const QString &target)
{
    const QFileInfo info(source);
    if (!info.isDir())
        return QFile::copy(source, target);
    if (QFileInfo::exists(target) || !QDir().mkdir(target))
        return false;
    bool complete = true;
    const QFileInfoList entries
        = QDir(source).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QString destination = target + u'/' + entry.fileName();
        if (entry.isSymLink())
            complete = QFile::link(entry.symLinkTarget(), destination) && complete;
        else
            complete = copyRecursively(entry.filePath(), destination) && complete;
    }
    return complete;
}

// Whether `path` is `folder` itself or lies inside it.
bool isWithin(const QString &path, const QString &folder)
{
    const QString canonicalFolder = QFileInfo(folder).canonicalFilePath();
    const QString canonicalPath = QFileInfo(path).canonicalFilePath();
    if (canonicalFolder.isEmpty() || canonicalPath.isEmpty())
        return false;
    return canonicalPath == canonicalFolder || canonicalPath.startsWith(canonicalFolder + u'/');
}

}  // namespace

QString folder(int orderId)
{
    // "Attachments"/"attachments" and "Order"/"order" name one folder,
    // whichever spelling is on disk.
    return platform::paths::caseInsensitiveChild(platform::paths::attachmentsDir(),
                                                 u"Order"_s + QString::number(orderId));
}

QStringList names(int orderId)
{
    QStringList entries = QDir(folder(orderId))
                              .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                         QDir::Name | QDir::IgnoreCase);
    if (!entries.isEmpty() && entries.first() == ".DS_Store"_L1)
        entries.removeFirst();
    return entries;
}

bool remove(int orderId, const QString &name)
{
    const QString from = folder(orderId) + u'/' + name;
    if (!platform::paths::isPlainName(name) || !QFileInfo::exists(from))
        return false;
    QDir().mkpath(holdingFolder());
    const QString base = holdingFolder() + u"/Order"_s + QString::number(orderId) + u'-' + name;
    QString to = base;
    for (int n = 2; QFileInfo::exists(to); ++n)
        to = base + u'-' + QString::number(n);
    return QDir().rename(from, to);
}

int count(int orderId)
{
    // Listed by name, ignoring case, hidden entries included: the order in
    // which a Mac file system lists a folder, where the Finder's
    // ".DS_Store" comes before the documents. Only a first ".DS_Store" is
    // not counted.
    const QStringList entries = QDir(folder(orderId))
                                    .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                               QDir::Name | QDir::IgnoreCase);
    int found = int(entries.size());
    if (found > 0 && entries.first() == ".DS_Store"_L1)
        --found;
    return found;
}

bool attach(int orderId, const QString &path)
{
    // The copy keeps the name the file has; a name that could reach out of
    // the order's folder ("..", a path ending in "/") is not attached.
    const QString name = QFileInfo(path).fileName();
    if (!platform::paths::isPlainName(name))
        return false;
    const QString target = folder(orderId);
    QDir().mkpath(target);
    const QString copy = target + u'/' + name;
    if (QFileInfo::exists(copy) || isWithin(target, path))
        return false;
    return copyRecursively(path, copy);
}

QString statusText(int attachments)
{
    using platform::localised;
    if (attachments == 0)
        return localised("There are no attachments");
    if (attachments == 1)
        return localised("There is 1 attachment");
    return platform::withArguments(u"%@ %i %@"_s,
                                   {localised("There are "), QString::number(attachments), localised(" attachments")});
}

QString wellImage(int attachments)
{
    if (attachments == 1)
        return u"singlefilewell"_s;
    return attachments > 1 ? u"doublefilewell"_s : QString();
}

QString holdingFolder()
{
    return platform::paths::bundleFile(u"Deleted Attachments"_s);
}

QString hold(int orderId)
{
    const QString from = folder(orderId);
    if (!QFileInfo(from).isDir())
        return QString();
    QDir().mkpath(holdingFolder());
    // An order's id can come back in a later run: each held folder gets a
    // name of its own.
    const QString base = holdingFolder() + u"/Order"_s + QString::number(orderId);
    QString to = base;
    for (int n = 2; QFileInfo::exists(to); ++n)
        to = base + u'-' + QString::number(n);
    return QDir().rename(from, to) ? to : QString();
}

bool restore(const QString &held, int orderId)
{
    const QString to = folder(orderId);
    if (held.isEmpty() || !QFileInfo(held).isDir() || QFileInfo::exists(to))
        return false;
    QDir().mkpath(QFileInfo(to).path());
    return QDir().rename(held, to);
}

void emptyHolding()
{
    QDir(holdingFolder()).removeRecursively();
}

}  // namespace orderAttachments
