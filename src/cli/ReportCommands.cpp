#include "cli/ReportCommands.h"

#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "cli/CliOutput.h"
#include "cli/CommandLine.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "platform/StringTable.h"
#include "platform/outlets/TextField.h"
#include "reports/ReportManager.h"
#include "store/TableExport.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <optional>

namespace cli {

namespace {

struct ReportOptions {
    QStringList positional;
    QString format = QStringLiteral("csv");
    QString output;
    std::optional<QString> contact;
};

// --format, --output and --contact, each as "--name VALUE" or "--name=VALUE".
std::optional<ReportOptions> parseReportOptions(const QStringList &arguments, QString &why)
{
    ReportOptions options;
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
        }
        if (name != QLatin1String("format") && name != QLatin1String("output") && name != QLatin1String("contact")) {
            why = QStringLiteral("unknown option --%1").arg(name);
            return std::nullopt;
        }
        if (equals < 0) {
            if (i + 1 >= arguments.size()) {
                why = QStringLiteral("option --%1 needs a value").arg(name);
                return std::nullopt;
            }
            value = arguments.at(++i);
        }
        if (name == QLatin1String("format"))
            options.format = value;
        else if (name == QLatin1String("output"))
            options.output = value;
        else
            options.contact = value;
    }
    return options;
}

// The user's date order, as the program's preferences keep it.
QString preferredDateFormat()
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    return settings.value(QStringLiteral("QuorvelDateFormat")).toString() == QLatin1String("1")
        ? QStringLiteral("%m/%d/%y")
        : QStringLiteral("%d/%m/%y");
}

}  // namespace

int reportCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto options = parseReportOptions(arguments, why);
    if (!options)
        return usageError(err, why);
    if (options->positional.size() != 1 || options->positional.first().isEmpty())
        return usageError(err, QStringLiteral("report needs one NAME"));
    const QString name = options->positional.first();
    const bool csv = options->format == QLatin1String("csv");
    if (!csv && options->format != QLatin1String("html"))
        return usageError(err, QStringLiteral("unknown format \"%1\" (csv or html)").arg(options->format));
    static const QRegularExpression wholeNumber(QStringLiteral("^-?[0-9]+$"));
    if (options->contact && !wholeNumber.match(*options->contact).hasMatch())
        return usageError(err, QStringLiteral("--contact needs a contact id (-1 for none)"));
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }

    platform::installStringTable();
    TextField dateField;
    dateField.setDateFormat(preferredDateFormat());
    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    const bool allRead = quorvel.getDatabase().readDatabase().ok();
    ReportManager *reports = quorvel.getReportManager();
    reports->setFromDate(&dateField);
    reports->populateFilter();

    const QString definition = QDir(platform::paths::reportsDir()).filePath(name + QStringLiteral(".xml"));
    if (!QFileInfo(definition).isFile()) {
        say(err, QStringLiteral("quorvel-cli: no report \"%1\" in %2").arg(name, platform::paths::reportsDir()));
        return Failure;
    }
    if (options->contact && *options->contact != QLatin1String("-1")) {
        Contact *contact = quorvel.getContactbyId(*options->contact);
        if (!contact) {
            say(err, QStringLiteral("quorvel-cli: no contact with id %1").arg(*options->contact));
            return Failure;
        }
        quorvel.getContactManager()->setCurrentItem(contact);
    }

    reports->doReport(name, reports->table);
    const QByteArray bytes = csv
        ? encodeCsvExport(reports->getDataAsCSVusingTableView(*reports->table))
        : encodeHtmlExport(wrapHtmlExport(reports->getDataAsHTMLusingTableView(*reports->table)));
    if (!writeOutput(bytes, options->output, out, err))
        return Failure;
    return allRead ? Success : UnreadableFile;
}

int reportsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    if (!arguments.isEmpty())
        return usageError(err, QStringLiteral("reports takes no arguments"));
    ReportManager reports(nullptr);
    reports.populateFilter();
    if (!QFileInfo(platform::paths::reportsDir()).isDir()) {
        say(err, QStringLiteral("quorvel-cli: cannot make the reports folder %1").arg(platform::paths::reportsDir()));
        return Failure;
    }
    QByteArray text;
    for (const QString &title : reports.filter->itemTitles())
        text += (title + QLatin1Char('\n')).toUtf8();
    return writeOutput(text, QString(), out, err) ? Success : Failure;
}

}  // namespace cli
