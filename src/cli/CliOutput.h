#pragma once
// What every command writes: lines on a stream, the usage after a usage
// error, and its result to standard output or a file.
#include <QByteArray>
#include <QIODevice>
#include <QString>

namespace cli {

// The line and a line feed.
void say(QIODevice &device, const QString &line);
// "quorvel-cli: WHY" and the usage on the error stream; answers the usage
// error's exit code.
int usageError(QIODevice &err, const QString &why);
// The bytes to standard output (no path) or atomically to the file; a
// failure is said on the error stream and answered false.
bool writeOutput(const QByteArray &bytes, const QString &path, QIODevice &out, QIODevice &err);

}  // namespace cli
