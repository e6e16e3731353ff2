#include "cli/CommandLine.h"

#include "app/Quorvel.h"
#include "cli/AccountsCommand.h"
#include "cli/BackupCommands.h"
#include "cli/CliDatabase.h"
#include "cli/CliOptions.h"
#include "cli/CliOutput.h"
#include "cli/ImportCommands.h"
#include "cli/InvoiceCommand.h"
#include "cli/ReportCommands.h"
#include "contacts/ContactManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "platform/StringTable.h"
#include "store/DatabaseLock.h"
#include "store/ListColumns.h"
#include "store/PrefsController.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

namespace cli {

namespace {

// Every record of a collection as a table row, whatever the filter says.
class AllRecords : public kdDataSource
{
public:
    explicit AllRecords(const kdDataSource &source)
        : from(source)
    { }
    int numberOfRowsInTableView() const override { return from.getCount(); }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        const dataObject *record = from.getnthItem(row);
        return record ? record->getFieldByName(columnId) : QStringLiteral("");
    }

private:
    const kdDataSource &from;
};

int exportCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto options
        = parseOptions(arguments, {QStringLiteral("format"), QStringLiteral("columns"), QStringLiteral("output")}, why);
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
        const auto given = parseColumns(options->values.value(QStringLiteral("columns")), columns, why);
        if (!given)
            return usageError(err, why);
        columns = *given;
    }

    CliDatabase database;
    if (!database.exists()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }

    TableView table;
    table.setColumns(columns);
    const bool csv = format == QLatin1String("csv");
    bool allRead = true;
    QByteArray bytes;
    if (kind == QLatin1String("contacts")) {
        // The contacts as the contacts tab shows and exports them: the
        // outline's rows (each company followed by its people) and cells.
        Quorvel quorvel;
        quorvel.setStartRepeatChecker(false);
        allRead = quorvel.getDatabase().readDatabase().ok();
        bytes = exportBytes(*quorvel.getContactManager(), table, csv);
    } else {
        allRead = database.read();
        AllRecords rows(*database.collection(kind));
        bytes = exportBytes(rows, table, csv);
    }
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
        text += QStringLiteral("%1\t%2\t%3\n")
                    .arg(kind)
                    .arg(collection->getCount())
                    .arg(collection->getHighestId())
                    .toUtf8();
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

// "YYYY-MM-DDTHH:MM" in local time; invalid for anything else.
QDateTime parseMoment(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}T\\d{2}:\\d{2}$"));
    if (!form.match(text).hasMatch())
        return {};
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd'T'HH:mm"));
}

// The preferences a pass of the repeat checker uses (the order prefix, the
// tax rate, the word for an order, and the date order the copies are dated
// in), as the program reads them at start; an absent key keeps the
// program's default.
void readRepeatPreferences(PrefsController &prefs)
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    prefs.setUKFormat(settings.value(QStringLiteral("QuorvelDateFormat")).toString() != QLatin1String("1"));
    const std::pair<QString, TextField *> fields[] = {
        {QStringLiteral("QuorvelOrderPrefix"), prefs.orderPrefixField},
        {QStringLiteral("QuorvelTaxRate"), prefs.taxRate},
        {QStringLiteral("QuorvelTermOrder"), prefs.termOrder},
    };
    for (const auto &[key, field] : fields) {
        if (settings.contains(key))
            field->setStringValue(settings.value(key).toString());
    }
}

// One pass of the repeat checker with the program's own managers, headless:
// the copies' alerts go to `err`, one line per copy to `out`, and when
// anything was copied the orders and the lines files are written at the end
// (so the orders file holds the advanced last-repeat dates). No pass is made
// when a file it reads or writes could not be read: the copies would miss
// their customers or lines.
int repeatCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto options = parseOptions(arguments, {QStringLiteral("now")}, why);
    if (!options)
        return usageError(err, why);
    if (!options->positional.isEmpty())
        return usageError(err, QStringLiteral("repeat takes no arguments besides --now"));
    if (options->values.contains(QStringLiteral("now"))) {
        const QDateTime moment = parseMoment(options->values.value(QStringLiteral("now")));
        if (!moment.isValid())
            return usageError(err, QStringLiteral("--now needs a moment written YYYY-MM-DDTHH:MM"));
        platform::setFixedNow(moment);  // the whole pass, the day it stamps too, is at that moment
    }
    const QDateTime now = platform::now();
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }

    platform::installStringTable();
    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    readRepeatPreferences(*quorvel.getPrefsController());
    DatabaseBundle &bundle = quorvel.getDatabase();
    const bool allRead = bundle.readDatabase().ok();
    for (DatabaseBundle::File file :
         {DatabaseBundle::Contacts, DatabaseBundle::Orders, DatabaseBundle::Items, DatabaseBundle::Materials}) {
        if (bundle.isUnreadable(file)) {
            say(err,
                QStringLiteral("quorvel-cli: no pass made, as %1 could not be read")
                    .arg(DatabaseBundle::fileName(file)));
            return UnreadableFile;
        }
    }

    // The alerts (answered with their default button) and the diagnostics
    // go to `err` in the order they come: `out` holds the copies alone.
    const platform::AlertHandler previousAlerts = platform::setAlertHandler([&err](const platform::Alert &alert) {
        for (const QString &line : {alert.message, alert.informativeText, alert.details}) {
            if (!line.isEmpty())
                say(err, line);
        }
        return 1;
    });
    const platform::LogHandler previousLog
        = platform::setLogHandler([&err](platform::LogChannel channel, const QString &text) {
              if (channel == platform::LogChannel::Log)
                  say(err, QStringLiteral("quorvel: ") + text);
              else
                  err.write(text.toUtf8());
          });
    // The pass writes the orders and the lines itself when it copied anything.
    const QList<QPair<Order *, Order *>> copies = quorvel.getOrderManager()->checkForOverdueRepeats(now);
    platform::setLogHandler(previousLog);
    platform::setAlertHandler(previousAlerts);
    const bool written = bundle.lastWriteError().isEmpty();
    QByteArray lines;
    for (const auto &[source, copy] : copies)
        lines += (source->getOrderNum() + QStringLiteral(" -> ") + copy->getOrderNum() + QLatin1Char('\n')).toUtf8();
    if (!writeOutput(lines, QString(), out, err) || !written)
        return Failure;
    return allRead ? Success : UnreadableFile;
}

}  // namespace

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
            platform::paths::useDataDir(rest.takeFirst());
        } else if (option.startsWith(QLatin1String("--data-dir="))) {
            const QString dir = option.mid(int(qstrlen("--data-dir=")));
            if (dir.isEmpty())
                return usageError(err, QStringLiteral("--data-dir needs a folder"));
            platform::paths::useDataDir(dir);
        } else {
            return usageError(err, QStringLiteral("unknown option %1").arg(option));
        }
    }
    if (rest.isEmpty())
        return usageError(err, QStringLiteral("no command given"));
    const QString command = rest.takeFirst();
    // A command that writes the database is the only writer while it runs.
    DatabaseLock lock;
    static const QStringList writing
        = {QStringLiteral("resave"), QStringLiteral("repeat"), QStringLiteral("import-legacy"),
           QStringLiteral("import-contacts"), QStringLiteral("restore")};
    const bool writes = writing.contains(command) && !rest.contains(QStringLiteral("--dry-run"));
    if (writes && !lock.tryLock()) {
        say(err,
            QStringLiteral("quorvel-cli: the database %1 is open in Quorvel or in use by another command (%2); "
                           "nothing was written")
                .arg(platform::paths::bundleDir(), lock.holder()));
        return Locked;
    }
    if (command == QLatin1String("export"))
        return exportCommand(rest, out, err);
    if (command == QLatin1String("stats"))
        return statsCommand(rest, out, err);
    if (command == QLatin1String("resave"))
        return resaveCommand(rest, err);
    if (command == QLatin1String("report"))
        return reportCommand(rest, out, err);
    if (command == QLatin1String("reports"))
        return reportsCommand(rest, out, err);
    if (command == QLatin1String("repeat"))
        return repeatCommand(rest, out, err);
    if (command == QLatin1String("accounts"))
        return accountsCommand(rest, out, err);
    if (command == QLatin1String("invoice"))
        return invoiceCommand(rest, out, err);
    if (command == QLatin1String("backups"))
        return backupsCommand(rest, out, err);
    if (command == QLatin1String("restore"))
        return restoreCommand(rest, out, err);
    if (command == QLatin1String("import-legacy"))
        return importLegacyCommand(rest, out, err);
    if (command == QLatin1String("import-contacts"))
        return importContactsCommand(rest, out, err);
    if (command == QLatin1String("help")) {
        out.write(usage().toUtf8());
        return Success;
    }
    return usageError(err, QStringLiteral("unknown command \"%1\"").arg(command));
}

}  // namespace cli
