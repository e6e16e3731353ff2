#include "platform/richtext/RichTextFile.h"

#include "platform/richtext/RichTextFileTesting.h"
#include "platform/richtext/RtfReader.h"
#include "platform/richtext/RtfWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QTextDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The largest TXT.rtf or .rtf file loaded: far beyond any real document,
// pictures included, and small enough to keep in memory.
constexpr qint64 kMaxFileSize = 256 * 1024 * 1024;

const QString kPackageText = QStringLiteral("TXT.rtf");

RichTextFile::testing::Failure g_injected = RichTextFile::testing::Failure::None;

// Whether the step should fail because a test asked for it; the request is
// then used up.
bool injected(RichTextFile::testing::Failure step)
{
    if (g_injected != step)
        return false;
    g_injected = RichTextFile::testing::Failure::None;
    errno = EIO;
    return true;
}

void setError(QString *error, const QString &message)
{
    if (error)
        *error = message;
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool isPackagePath(const QString &path)
{
    return path.endsWith(QLatin1String(".rtfd"), Qt::CaseInsensitive);
}

bool exists(const QString &path)
{
    struct stat st;
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0;
}

bool renamePath(const QString &from, const QString &to)
{
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool syncDirectory(const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

void removePath(const QString &path)
{
    if (QFileInfo(path).isDir() && !QFileInfo(path).isSymLink())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

QString uniqueSibling(const QString &parent, const QString &name, const char *purpose)
{
    const QString suffix = QString::number(QRandomGenerator::global()->generate64(), 36);
    return parent + QLatin1String("/.") + name + QLatin1Char('.') + QLatin1String(purpose) + QLatin1Char('-') + suffix;
}

bool writeSynced(const QString &path, const QByteArray &bytes, QString *error)
{
    QFile file(path);
    if (injected(RichTextFile::testing::Failure::WriteFile) || !file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        setError(error,
                 QStringLiteral("cannot write %1: %2").arg(path, file.isOpen() ? file.errorString() : systemError()));
        return false;
    }
    if (file.write(bytes) != bytes.size() || !file.flush() || ::fsync(file.handle()) != 0) {
        setError(error, QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
        return false;
    }
    file.close();
    return true;
}

bool saveFile(const QString &path, const QByteArray &rtf, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        setError(error, QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
        return false;
    }
    if (file.write(rtf) != rtf.size() || !file.commit()) {
        setError(error, QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
        file.cancelWriting();
        return false;
    }
    return true;
}

// Writes the package into a new folder beside the target, then puts it in
// the target's place; the old package is moved aside first and removed only
// once the new one is there.
bool savePackage(const QString &path, const RtfWriteResult &written, QString *error)
{
    const QFileInfo target(path);
    const QString parent = target.absolutePath();
    const QString name = target.fileName();
    const QString finalPath = target.absoluteFilePath();

    QString temporary;
    for (int attempt = 0; attempt < 100 && temporary.isEmpty(); ++attempt) {
        const QString candidate = uniqueSibling(parent, name, "saving");
        if (::mkdir(QFile::encodeName(candidate).constData(), 0777) == 0) {
            temporary = candidate;
        } else if (errno != EEXIST) {
            setError(error, QStringLiteral("cannot create a folder in %1: %2").arg(parent, systemError()));
            return false;
        }
    }
    if (temporary.isEmpty()) {
        setError(error, QStringLiteral("cannot create a folder in %1").arg(parent));
        return false;
    }

    auto fail = [&](const QString &message) {
        removePath(temporary);
        setError(error, message);
        return false;
    };

    if (!writeSynced(temporary + QLatin1Char('/') + kPackageText, written.rtf, error))
        return fail(error ? *error : QString());
    for (const RtfAttachment &attachment : written.attachments) {
        const QString fileName = attachment.fileName;
        if (fileName.isEmpty() || fileName.contains(QLatin1Char('/')) || fileName == QLatin1String(".")
            || fileName == QLatin1String("..") || fileName.compare(kPackageText, Qt::CaseInsensitive) == 0)
            return fail(QStringLiteral("attachment name not allowed: %1").arg(fileName));
        if (!writeSynced(temporary + QLatin1Char('/') + fileName, attachment.bytes, error))
            return fail(error ? *error : QString());
    }
    if (!syncDirectory(temporary))
        return fail(QStringLiteral("cannot write %1: %2").arg(temporary, systemError()));

    QString aside;
    if (exists(finalPath)) {
        aside = uniqueSibling(parent, name, "old");
        if (injected(RichTextFile::testing::Failure::RenameAside) || !renamePath(finalPath, aside))
            return fail(QStringLiteral("cannot replace %1: %2").arg(finalPath, systemError()));
    }
    if (injected(RichTextFile::testing::Failure::RenameIntoPlace) || !renamePath(temporary, finalPath)) {
        const QString reason = systemError();
        if (!aside.isEmpty())
            renamePath(aside, finalPath);
        return fail(QStringLiteral("cannot replace %1: %2").arg(finalPath, reason));
    }
    syncDirectory(parent);
    if (!aside.isEmpty())
        removePath(aside);
    return true;
}

}  // namespace

namespace RichTextFile::testing {

void injectFailure(Failure failure)
{
    g_injected = failure;
}

}  // namespace RichTextFile::testing

namespace RichTextFile {

bool load(const QString &path, QTextDocument &document, QString *error, QStringList *skipped)
{
    const QFileInfo info(path);
    const bool package = info.isDir() || isPackagePath(path);
    if (package && !info.isDir()) {
        setError(error, QStringLiteral("%1 is not a rich-text package").arg(path));
        return false;
    }
    const QString textPath = package ? info.absoluteFilePath() + QLatin1Char('/') + kPackageText : path;
    QFile file(textPath);
    if (!file.open(QIODevice::ReadOnly)) {
        setError(error, QStringLiteral("cannot read %1: %2").arg(textPath, file.errorString()));
        return false;
    }
    if (file.size() > kMaxFileSize) {
        setError(error, QStringLiteral("%1 is too large (%2 bytes)").arg(textPath).arg(file.size()));
        return false;
    }
    const QByteArray bytes = file.read(kMaxFileSize + 1);
    if (bytes.size() > kMaxFileSize) {
        setError(error, QStringLiteral("%1 is too large").arg(textPath));
        return false;
    }
    const RtfReadResult result = RtfReader::read(bytes, document, package ? info.absoluteFilePath() : QString());
    if (skipped)
        *skipped = result.skipped;
    if (!result.ok) {
        setError(error, QStringLiteral("%1 is not rich text").arg(textPath));
        return false;
    }
    return true;
}

bool save(const QString &path, const QTextDocument &document, QString *error)
{
    if (isPackagePath(path))
        return savePackage(path, RtfWriter::writePackage(document), error);
    return saveFile(path, RtfWriter::writeRtf(document).rtf, error);
}

}  // namespace RichTextFile
