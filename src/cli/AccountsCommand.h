#pragma once
// quorvel-cli accounts: the accounts tab's three tables (money out, money in,
// the statement) for a period, made by the program's own managers with no
// window, as of a given moment.
#include <QIODevice>
#include <QStringList>

namespace cli {

// accounts [--period TITLE] [--from DATE] [--search TEXT]
//          [--now YYYY-MM-DDTHH:MM] [--table bills|moneyin|statement]
//          [--columns ID[=TITLE],...] [--format csv|html] [--output FILE]
// Chooses the period and start date as the user would in the accounts tab
// (the start date in the date order of the preferences), then writes the
// chosen table, its total rows included, in the bytes of the program's
// export. Exit codes as cli::ExitCode.
int accountsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
