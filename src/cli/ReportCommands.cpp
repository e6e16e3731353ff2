#include "cli/ReportCommands.h"

#include "app/Quorvel.h"
#include "cli/CliOptions.h"
#include "cli/CliOutput.h"
#include "cli/CliUsage.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Dates.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "platform/StringTable.h"
#include "platform/outlets/TextField.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <optional>

namespace cli {

namespace {

// The user's date order, as the program's preferences keep it.
QString preferredDateFormat()
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    return platform::userDateFormat(settings.value(QStringLiteral("QuorvelDateFormat")).toString()
                                    != QLatin1String("1"));
}

}  // namespace

int reportCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto parsed
        = parseOptions(arguments, {QStringLiteral("format"), QStringLiteral("output"), QStringLiteral("contact")}, why);
    if (!parsed)
        return usageError(err, why);
    if (parsed->positional.size() != 1 || parsed->positional.first().isEmpty())
        return usageError(err, QStringLiteral("report needs one NAME"));
    const QString name = parsed->positional.first();
    if (!platform::paths::isPlainName(name)) {
        say(err, QStringLiteral("quorvel-cli: \"%1\" is not a report's name (a name, not a path)").arg(name));
        return Failure;
    }
    const QString format = parsed->values.value(QStringLiteral("format"), QStringLiteral("csv"));
    const bool csv = format == QLatin1String("csv");
    if (!csv && format != QLatin1String("html"))
        return usageError(err, QStringLiteral("unknown format \"%1\" (csv or html)").arg(format));
    std::optional<QString> contactId;
    if (parsed->values.contains(QStringLiteral("contact")))
        contactId = parsed->values.value(QStringLiteral("contact"));
    static const QRegularExpression wholeNumber(QStringLiteral("^-?[0-9]+$"));
    if (contactId && !wholeNumber.match(*contactId).hasMatch())
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
    if (contactId && *contactId != QLatin1String("-1")) {
        Contact *contact = quorvel.getContactbyId(*contactId);
        if (!contact) {
            say(err, QStringLiteral("quorvel-cli: no contact with id %1").arg(*contactId));
            return Failure;
        }
        quorvel.getContactManager()->setCurrentItem(contact);
    }

    reports->doReport(name, reports->table);
    const QByteArray bytes = exportBytes(*reports, *reports->table, csv);
    if (!writeOutput(bytes, parsed->values.value(QStringLiteral("output")), out, err))
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
