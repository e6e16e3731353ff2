#include "cli/CommandLine.h"

#include "cli/CliDatabase.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/ListColumns.h"
#include "store/TableExport.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QDir>
#include <QFileInfo>

namespace cli {

namespace {

void say(QIODevice &device, const QString &line)
{
    device.write(line.toUtf8());
    device.write("\n");
}

int usageError(QIODevice &err, const QString &why)
{
    say(err, QStringLiteral("quorvel-cli: ") + why);
    err.write(usage().toUtf8());
    return UsageError;
}

// Every record of a collection as a table row, whatever the filter says.
class AllRecords : public kdDataSource
{
public:
    explicit AllRecords(const kdDataSource &source) : from(source) {}
    int numberOfRowsInTableView() const override { return from.getCount(); }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        const dataObject *record = from.getnthItem(row);
        return record ? record->getFieldByName(columnId) : QStringLiteral("");
    }

private:
    const kdDataSource &from;
};

// "ID[=TITLE],..." A column without a title takes the default list's title
// for that field, else the field name.
std::optional<QList<TableColumn>> parseColumns(const QString &text, const QString &kind)
{
    const QList<TableColumn> defaults = ListColumns::defaultsFor(kind);
    QList<TableColumn> columns;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const qsizetype equals = part.indexOf(QLatin1Char('='));
        TableColumn column;
        column.identifier = (equals < 0 ? part : part.left(equals)).trimmed();
        if (column.identifier.isEmpty())
            return std::nullopt;
        if (equals >= 0) {
            column.title = part.mid(equals + 1);
        } else {
            column.title = column.identifier;
            for (const TableColumn &known : defaults) {
                if (known.identifier == column.identifier)
                    column.title = known.title;
            }
        }
        columns.append(column);
    }
    return columns;
}

struct Options {
    QStringList positional;
    QMap<QString, QString> values;  // --name VALUE or --name=VALUE
};

// Splits the arguments of a command into positional ones and the named
// options it accepts; anything else is a usage error (answered in `why`).
std::optional<Options> parseOptions(const QStringList &arguments, const QStringList &accepted, QString &why)
{
    Options options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (!argument.startsWith(QLatin1String("--"))) {
            options.positional << argument;
            continue;
        }
        QString name = argument.mid(2);
        QString value;
        const qsizetype equals = name.indexOf(QLatin1Char('='));
        if (equals >= 0) {
            value = name.mid(equals + 1);
            name = name.left(equals);
        } else if (accepted.contains(name)) {
            if (i + 1 >= arguments.size()) {
                why = QStringLiteral("option --%1 needs a value").arg(name);
                return std::nullopt;
            }
            value = arguments.at(++i);
        }
        if (!accepted.contains(name)) {
            why = QStringLiteral("unknown option --%1").arg(name);
            return std::nullopt;
        }
        options.values.insert(name, value);
    }
    return options;
}

bool writeOutput(const QByteArray &bytes, const QString &path, QIODevice &out, QIODevice &err)
{
    if (path.isEmpty()) {
        if (out.write(bytes) != bytes.size()) {
            say(err, QStringLiteral("quorvel-cli: cannot write to standard output"));
            return false;
        }
        return true;
    }
    QString why;
    if (!platform::plist::writeFileAtomically(path, bytes, &why)) {
        say(err, QStringLiteral("quorvel-cli: cannot write %1: %2").arg(path, why));
        return false;
    }
    return true;
}

int exportCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto options = parseOptions(arguments, {QStringLiteral("format"), QStringLiteral("columns"),
                                                  QStringLiteral("output")}, why);
    if (!options)
        return usageError(err, why);
    if (options->positional.size() != 1)
        return usageError(err, QStringLiteral("export needs one KIND"));
    const QString kind = options->positional.first();
    if (!ListColumns::kinds().contains(kind))
        return usageError(err, QStringLiteral("unknown kind \"%1\"").arg(kind));
    const QString format = options->values.value(QStringLiteral("format"), QStringLiteral("csv"));
    if (format != QLatin1String("csv") && format != QLatin1String("html"))
        return usageError(err, QStringLiteral("unknown format \"%1\" (csv or html)").arg(format));
    QList<TableColumn> columns = ListColumns::defaultsFor(kind);
    if (options->values.contains(QStringLiteral("columns"))) {
        const auto given = parseColumns(options->values.value(QStringLiteral("columns")), kind);
        if (!given)
            return usageError(err, QStringLiteral("--columns needs ID[=TITLE],... with no empty ID"));
        columns = *given;
    }

    CliDatabase database;
    if (!database.exists()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }
    const bool allRead = database.read();

    TableView table;
    table.setColumns(columns);
    AllRecords rows(*database.collection(kind));
    const QByteArray bytes = format == QLatin1String("csv")
        ? encodeCsvExport(rows.getDataAsCSVusingTableView(table))
        : encodeHtmlExport(wrapHtmlExport(rows.getDataAsHTMLusingTableView(table)));
    if (!writeOutput(bytes, options->values.value(QStringLiteral("output")), out, err))
        return Failure;
    return allRead ? Success : UnreadableFile;
}

int statsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    if (!arguments.isEmpty())
        return usageError(err, QStringLiteral("stats takes no arguments"));
    CliDatabase database;
    if (!database.exists()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }
    const bool allRead = database.read();
    QByteArray text;
    for (const QString &kind : ListColumns::kinds()) {
        const kdDataSource *collection = database.collection(kind);
        text += QStringLiteral("%1\t%2\t%3\n").arg(kind).arg(collection->getCount()).arg(collection->getHighestId()).toUtf8();
    }
    if (!writeOutput(text, QString(), out, err))
        return Failure;
    return allRead ? Success : UnreadableFile;
}

int resaveCommand(const QStringList &arguments, QIODevice &err)
{
    if (!arguments.isEmpty())
        return usageError(err, QStringLiteral("resave takes no arguments"));
    CliDatabase database;
    if (!database.exists()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }
    const bool allRead = database.read();
    if (!database.writeAll())
        return Failure;
    return allRead ? Success : UnreadableFile;
}

}  // namespace

QString usage()
{
    return QStringLiteral(
        "Usage: quorvel-cli [--data-dir DIR] COMMAND [OPTIONS]\n"
        "\n"
        "Commands:\n"
        "  export KIND [--format csv|html] [--columns ID[=TITLE],...] [--output FILE]\n"
        "        every record of KIND (contacts, orders, items, materials, tasks, bills)\n"
        "        as the program exports a list\n"
        "  stats   one line per collection: KIND<TAB>COUNT<TAB>HIGHEST_ID\n"
        "  resave  read the database and write all six files again\n"
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

int run(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    if (arguments.contains(QStringLiteral("--help"))) {
        out.write(usage().toUtf8());
        return Success;
    }
    QStringList rest = arguments;
    // Global options come before the command.
    while (!rest.isEmpty() && rest.first().startsWith(QLatin1String("--"))) {
        const QString option = rest.takeFirst();
        if (option == QLatin1String("--help")) {
            out.write(usage().toUtf8());
            return Success;
        }
        if (option == QLatin1String("--version")) {
            say(out, QStringLiteral("quorvel-cli " QUORVEL_VERSION));
            return Success;
        }
        if (option == QLatin1String("--data-dir")) {
            if (rest.isEmpty() || rest.first().isEmpty())
                return usageError(err, QStringLiteral("--data-dir needs a folder"));
            platform::paths::setApplicationSupportDir(rest.takeFirst());
        } else if (option.startsWith(QLatin1String("--data-dir="))) {
            const QString dir = option.mid(int(qstrlen("--data-dir=")));
            if (dir.isEmpty())
                return usageError(err, QStringLiteral("--data-dir needs a folder"));
            platform::paths::setApplicationSupportDir(dir);
        } else {
            return usageError(err, QStringLiteral("unknown option %1").arg(option));
        }
    }
    if (rest.isEmpty())
        return usageError(err, QStringLiteral("no command given"));
    const QString command = rest.takeFirst();
    if (command == QLatin1String("export"))
        return exportCommand(rest, out, err);
    if (command == QLatin1String("stats"))
        return statsCommand(rest, out, err);
    if (command == QLatin1String("resave"))
        return resaveCommand(rest, err);
    if (command == QLatin1String("help")) {
        out.write(usage().toUtf8());
        return Success;
    }
    return usageError(err, QStringLiteral("unknown command \"%1\"").arg(command));
}

}  // namespace cli
