#include "cli/ImportCommands.h"

#include "cli/CliDatabase.h"
#include "cli/CliOptions.h"
#include "cli/CliOutput.h"
#include "cli/CliUsage.h"
#include "contacts/ContactsCsv.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "store/LegacyImport.h"

#include <QFileInfo>

namespace cli {

namespace {

// Log lines go to the error stream, but for the "heading: value" pairs the
// contacts import logs for every value of the file.
struct QuietLog
{
    platform::LogHandler previous;
    explicit QuietLog(QIODevice &err)
        : previous(platform::setLogHandler([&err](platform::LogChannel channel, const QString &text) {
              if (channel == platform::LogChannel::Log)
                  say(err, QStringLiteral("quorvel: ") + text);
          }))
    { }
    ~QuietLog() { platform::setLogHandler(previous); }
};

}  // namespace

int importLegacyCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto options = parseOptions(arguments, {}, why);
    if (!options)
        return usageError(err, why);
    if (options->positional.size() > 1)
        return usageError(err, QStringLiteral("import-legacy takes one FILE at most"));
    const QString file
        = options->positional.isEmpty() ? platform::paths::legacyDatabaseFile() : options->positional.first();
    if (!QFileInfo(file).isFile()) {
        say(err, QStringLiteral("quorvel-cli: no first-generation database at %1").arg(file));
        return Failure;
    }
    QuietLog log(err);
    const QString copy = legacyImport::keepCopyOfBundle(platform::paths::bundleDir(), platform::now(), &why);
    if (copy.isEmpty() && QFileInfo(platform::paths::bundleDir()).isDir()) {
        say(err,
            QStringLiteral("quorvel-cli: nothing imported: the database could not be kept aside first: %1").arg(why));
        return Failure;
    }
    CliDatabase database;
    DatabaseBundle &bundle = database.getBundle();
    const legacyImport::Counts counts = legacyImport::importFile(
        file,
        {bundle.collection(DatabaseBundle::Contacts), bundle.collection(DatabaseBundle::Orders),
         bundle.collection(DatabaseBundle::Items), bundle.collection(DatabaseBundle::Materials),
         bundle.collection(DatabaseBundle::Bills), bundle.collection(DatabaseBundle::Actions)});
    const bool attachments = legacyImport::copyAttachments(
        platform::paths::legacyAttachmentsDir(), platform::paths::bundleDir() + QStringLiteral("/Attachments"));
    if (!database.writeAll())
        return Failure;
    say(out,
        QStringLiteral("contacts\t%1\norders\t%2\t(%3 linked to their contact)\nitems\t%4\nmaterials\t%5\n"
                       "bills\t%6\ntasks\t%7")
            .arg(counts.contacts)
            .arg(counts.orders)
            .arg(counts.linked)
            .arg(counts.items)
            .arg(counts.materials)
            .arg(counts.bills)
            .arg(counts.actions));
    if (attachments)
        say(out, QStringLiteral("attachments copied from %1").arg(platform::paths::legacyAttachmentsDir()));
    if (!copy.isEmpty())
        say(out, QStringLiteral("the database as it was is kept in %1").arg(copy));
    return Success;
}

int importContactsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    QStringList rest = arguments;
    const bool dryRun = rest.removeAll(QStringLiteral("--dry-run")) > 0;
    const auto options = parseOptions(rest, {QStringLiteral("map")}, why);
    if (!options)
        return usageError(err, why);
    if (options->positional.size() != 1)
        return usageError(err, QStringLiteral("import-contacts needs one FILE.csv"));
    const QString file = options->positional.first();
    if (!QFileInfo(file).isFile()) {
        say(err, QStringLiteral("quorvel-cli: no file %1").arg(file));
        return Failure;
    }
    const contactsCsv::Preview preview = contactsCsv::preview(file, 0);
    if (preview.headings.isEmpty()) {
        say(err, QStringLiteral("quorvel-cli: %1 cannot be imported: %2").arg(file, preview.problem));
        return Failure;
    }
    QList<contactsCsv::Field> mapping = preview.mapping;
    // --map COLUMN=FIELD,...: COLUMN a heading (any case) or a column's
    // number from 1; FIELD a contact field's name or "ignore".
    const QString given = options->values.value(QStringLiteral("map"));
    for (const QString &pair : given.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.lastIndexOf(QLatin1Char('='));
        if (equals <= 0)
            return usageError(err, QStringLiteral("--map needs COLUMN=FIELD, not \"%1\"").arg(pair));
        const QString column = pair.left(equals).trimmed();
        const auto field = contactsCsv::fieldForKey(pair.mid(equals + 1).trimmed());
        if (!field)
            return usageError(err, QStringLiteral("unknown contact field \"%1\"").arg(pair.mid(equals + 1)));
        qsizetype at = -1;
        for (qsizetype i = 0; i < preview.headings.size() && at < 0; ++i) {
            if (preview.headings.at(i).compare(column, Qt::CaseInsensitive) == 0)
                at = i;
        }
        bool number = false;
        const int position = column.toInt(&number);
        if (at < 0 && number && position >= 1 && position <= preview.headings.size())
            at = position - 1;
        if (at < 0)
            return usageError(err, QStringLiteral("the file has no column \"%1\"").arg(column));
        mapping[at] = *field;
    }

    QuietLog log(err);
    CliDatabase database;
    bool allRead = true;
    if (database.exists())
        allRead = database.read();
    if (!allRead && database.getBundle().isUnreadable(DatabaseBundle::Contacts)) {
        say(err, QStringLiteral("quorvel-cli: nothing imported, as contacts.xml could not be read"));
        return UnreadableFile;
    }
    // The pairs of every row would drown the summary: they are left out here.
    const platform::LogHandler withPairs = platform::setLogHandler([](platform::LogChannel, const QString &) {});
    const contactsCsv::Outcome outcome
        = contactsCsv::import(file, mapping, database.getBundle().collection(DatabaseBundle::Contacts), dryRun);
    platform::setLogHandler(withPairs);

    QStringList used;
    for (qsizetype i = 0; i < preview.headings.size(); ++i)
        used << QStringLiteral("%1=%2").arg(preview.headings.at(i), contactsCsv::keyOf(mapping.value(i)));
    say(out, QStringLiteral("columns\t%1").arg(used.join(QLatin1Char(','))));
    say(out, QStringLiteral("encoding\t%1").arg(preview.encoding));
    say(out, outcome.summary());
    if (dryRun)
        say(out, QStringLiteral("nothing was written (--dry-run)"));
    else if (outcome.imported > 0 && !database.getBundle().writeDatabase(DatabaseBundle::Contacts))
        return Failure;
    if (!outcome.problem.isEmpty())
        return Failure;
    return allRead ? Success : UnreadableFile;
}

}  // namespace cli
