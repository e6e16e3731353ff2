#pragma once
// quorvel-cli's report commands: running a report definition of the reports
// folder over the database, and listing the report chooser's names.
#include <QIODevice>
#include <QStringList>

namespace cli {

// report NAME [--format csv|html] [--output FILE] [--contact ID]
// The result table, total rows included, in the bytes of the program's
// export of the reports tab. Exit codes as cli::ExitCode; an unknown report
// name or contact id is a Failure.
int reportCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

// reports: the chooser's names, one per line (the built-in definitions are
// installed first, as the program does at start).
int reportsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
