#pragma once
// Diagnostics: the program's log (standard error, "quorvel: TEXT") and the
// few lines it prints on standard output. Tests install a handler to read
// what was written.
#include <QString>
#include <functional>

namespace platform {

enum class LogChannel { Log, StandardOutput };
using LogHandler = std::function<void(LogChannel channel, const QString &text)>;

// One line in the log.
void log(const QString &text);
// Text on standard output exactly as given (no line break added).
void standardOutput(const QString &text);

// Installs a handler and answers the previous one (none: the real streams).
LogHandler setLogHandler(LogHandler handler);

}  // namespace platform
