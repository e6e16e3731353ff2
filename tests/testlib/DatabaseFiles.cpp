#include "DatabaseFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace testlib {

QByteArray plistOf(const char *root, const QList<PlistRecord> &records)
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n<key>";
    text += root;
    text += "</key>\n<array>\n";
    for (const PlistRecord &record : records) {
        text += "<dict>\n";
        for (const auto &[key, value] : record)
            text += QByteArray("<key>") + key + "</key><string>" + value + "</string>\n";
        text += "</dict>\n";
    }
    return text + "</array>\n</dict>\n</plist>\n";
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QMap<QString, QByteArray> filesIn(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(path, readFile(path));
    }
    return files;
}

}  // namespace testlib
