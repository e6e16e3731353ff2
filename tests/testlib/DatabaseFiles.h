#pragma once
// Small database folders written by hand for the tests that read one back
// (the command-line program, the controller): a property-list file of
// records, plain file reading and writing, and a folder's whole content.
#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <utility>

namespace testlib {

// One record: its keys with their text values, in the order written.
using PlistRecord = QList<std::pair<const char *, const char *>>;

// A database file: a dictionary whose one key, the root, holds an array of
// records whose values are all strings.
QByteArray plistOf(const char *root, const QList<PlistRecord> &records);

// Writes the bytes, making the folders on the way; false when it could not.
bool writeFile(const QString &path, const QByteArray &bytes);
// The file's bytes; empty when it cannot be read.
QByteArray readFile(const QString &path);
// Every file under the folder, by path, with its bytes.
QMap<QString, QByteArray> filesIn(const QString &folder);

}  // namespace testlib
