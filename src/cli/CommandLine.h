#pragma once
// quorvel-cli: the program's lists from the command line, over the same
// database folder as the program.
#include "cli/CliUsage.h"

#include <QIODevice>
#include <QStringList>

namespace cli {

// Runs one command line (without the program name) and answers the exit
// code. Results go to `out`, messages to `err`.
int run(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
