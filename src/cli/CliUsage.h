#pragma once
// What quorvel-cli answers: its exit codes and its usage text, which
// every command shares.
#include <QString>

namespace cli {

enum ExitCode {
    Success = 0,
    Failure = 1,  // no database folder, or an output that cannot be written
    UsageError = 2,
    UnreadableFile = 3,  // a database file could not be read; the command still did its work
    Locked = 4  // the program (or another command) is using the database: nothing was written
};

QString usage();

}  // namespace cli
