#include "cli/CliUsage.h"

namespace cli {

QString usage()
{
    return QStringLiteral("Usage: quorvel-cli [--data-dir DIR] COMMAND [OPTIONS]\n"
                          "\n"
                          "Commands:\n"
                          "  export KIND [--format csv|html] [--columns ID[=TITLE],...] [--output FILE]\n"
                          "        every record of KIND (contacts, orders, items, materials, tasks, bills)\n"
                          "        as the program exports a list (contacts as the contacts tab\n"
                          "        shows them: each company followed by its people)\n"
                          "  stats   one line per collection: KIND<TAB>COUNT<TAB>HIGHEST_ID\n"
                          "  resave  read the database and write all six files again\n"
                          "  repeat [--now YYYY-MM-DDTHH:MM]\n"
                          "        one pass of the repeat checker at that moment (default: now):\n"
                          "        copies every repeating order that is due, prints\n"
                          "        SOURCE_ORDERNUM -> NEW_ORDERNUM per copy, and writes the orders\n"
                          "        and their lines when anything was copied\n"
                          "  report NAME [--format csv|html] [--output FILE] [--contact ID]\n"
                          "        runs the report definition NAME of the reports folder over the\n"
                          "        database and writes its table, total rows included, as the\n"
                          "        program exports it; --contact opens that contact for the\n"
                          "        value \"currentcontact\" (-1: none)\n"
                          "  reports  the names the report chooser lists, one per line\n"
                          "  accounts [--period TITLE] [--from DATE] [--search TEXT]\n"
                          "           [--now YYYY-MM-DDTHH:MM] [--table bills|moneyin|statement]\n"
                          "           [--columns ID[=TITLE],...] [--format csv|html] [--output FILE]\n"
                          "        the accounts tab's table (default bills) for the period of the\n"
                          "        pop-up (default \"All\"; \"1 Week\", \"1 Month\" and \"1 Year\" need\n"
                          "        --from in the date order of the preferences) as of --now,\n"
                          "        total rows included, as the program exports it; --columns\n"
                          "        chooses the bills table's columns\n"
                          "\n"
                          "Options:\n"
                          "  --data-dir DIR  the application-support folder (the database is\n"
                          "                  DIR/Quorvel/quorveldatabase.qvldb)\n"
                          "  --help          this text\n"
                          "  --version       the version\n"
                          "\n"
                          "Exit codes: 0 success, 1 no database or output failed, 2 usage error,\n"
                          "3 a database file could not be read (the command still ran).\n");
}

}  // namespace cli
