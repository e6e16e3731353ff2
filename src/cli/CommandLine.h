#pragma once
// quorvel-cli: the program's lists from the command line, over the same
// database folder as the program.
#include <QIODevice>
#include <QStringList>

namespace cli {

enum ExitCode {
    Success = 0,
    Failure = 1,        // no database folder, or an output that cannot be written
    UsageError = 2,
    UnreadableFile = 3  // a database file could not be read; the command still did its work
};

QString usage();

// Runs one command line (without the program name) and answers the exit
// code. Results go to `out`, messages to `err`.
int run(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
