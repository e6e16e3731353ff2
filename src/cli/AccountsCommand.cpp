#include "cli/AccountsCommand.h"

#include "accounts/Bill.h"
#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "cli/CliOptions.h"
#include "cli/CliOutput.h"
#include "cli/CliUsage.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/Localised.h"
#include "platform/Paths.h"
#include "platform/StringTable.h"
#include "reports/ReportManager.h"
#include "store/DatabaseBundle.h"
#include "store/PrefsController.h"
#include "store/TableView.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSettings>
#include <iterator>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace cli {

namespace {

// The items of the period pop-up in their order, before translation.
constexpr const char *periodTitles[]
    = {"All", "1 Week", "1 Month", "1 Year", "Current calendar month", "Last calendar month"};
constexpr int periodCount = int(std::size(periodTitles));

// The periods measured from the start date.
bool isRelative(int period)
{
    return period >= 1 && period <= 3;
}

// The pop-up item a title names, in English or as the pop-up shows it in the
// user's language; -1 for none.
int periodIndex(const QString &title)
{
    for (int i = 0; i < periodCount; ++i) {
        if (title == QLatin1String(periodTitles[i]) || title == platform::localised(periodTitles[i]))
            return i;
    }
    return -1;
}

QString periodList()
{
    QStringList titles;
    for (const char *title : periodTitles)
        titles << QString::fromLatin1(title);
    return titles.join(u", "_s);
}

// "YYYY-MM-DDTHH:MM" in local time; invalid for anything else.
QDateTime parseMoment(const QString &text)
{
    static const QRegularExpression form(u"^\\d{4}-\\d{2}-\\d{2}T\\d{2}:\\d{2}$"_s);
    if (!form.match(text).hasMatch())
        return {};
    return QDateTime::fromString(text, u"yyyy-MM-dd'T'HH:mm"_s);
}

// Whether the user keeps dates day first, as the preferences store it.
bool storedDayFirst()
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    return settings.value(u"QuorvelDateFormat"_s).toString() != "1"_L1;
}

// Whether a bill answers that column name with one of its fields.
bool isBillColumn(const QString &identifier)
{
    Bill probe;
    const QString mark = u"x"_s;
    probe.setNumber(mark);
    probe.setName(mark);
    probe.setDatePaid(mark);
    probe.setAmount(mark);
    probe.setDetails(mark);
    probe.setCategory(mark);
    return !probe.getFieldByName(identifier).isEmpty();
}

}  // namespace

int accountsCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    const auto parsed = parseOptions(
        arguments, {u"period"_s, u"from"_s, u"search"_s, u"now"_s, u"table"_s, u"columns"_s, u"format"_s, u"output"_s},
        why);
    if (!parsed)
        return usageError(err, why);
    if (!parsed->positional.isEmpty())
        return usageError(err, u"accounts takes no argument \"%1\" (only options)"_s.arg(parsed->positional.first()));
    const QMap<QString, QString> *options = &parsed->values;
    // The pop-up's titles may be given as the user's language shows them.
    platform::installStringTable();

    const QString periodTitle = options->value(u"period"_s, u"All"_s);
    const int period = periodIndex(periodTitle);
    if (period < 0)
        return usageError(err, u"unknown period \"%1\" (%2)"_s.arg(periodTitle, periodList()));
    const QString table = options->value(u"table"_s, u"bills"_s);
    if (table != "bills"_L1 && table != "moneyin"_L1 && table != "statement"_L1)
        return usageError(err, u"unknown table \"%1\" (bills, moneyin or statement)"_s.arg(table));
    const QString format = options->value(u"format"_s, u"csv"_s);
    if (format != "csv"_L1 && format != "html"_L1)
        return usageError(err, u"unknown format \"%1\" (csv or html)"_s.arg(format));
    if (options->contains(u"columns"_s) && table != "bills"_L1)
        return usageError(err, u"--columns chooses the columns of the bills table only"_s);
    if (options->contains(u"now"_s)) {
        const QDateTime moment = parseMoment(options->value(u"now"_s));
        if (!moment.isValid())
            return usageError(err, u"--now needs a moment written YYYY-MM-DDTHH:MM"_s);
        // The calendar months are counted from that moment.
        platform::setFixedNow(moment);
    }
    const bool dayFirst = storedDayFirst();
    const QString &dateFormat = platform::userDateFormat(dayFirst);
    const QString from = options->value(u"from"_s);
    if (!from.isEmpty() && !platform::parseDate(from, dateFormat))
        return usageError(err,
                          u"--from needs a date written %1, the date order of the preferences"_s.arg(
                              dayFirst ? u"dd/mm/yy"_s : u"mm/dd/yy"_s));
    // The accounts tab shows nothing while a period measured from the start
    // date has none; an empty table would say otherwise.
    if (isRelative(period) && from.isEmpty())
        return usageError(
            err, u"the period \"%1\" needs --from DATE, its first day"_s.arg(QLatin1String(periodTitles[period])));

    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        say(err, u"quorvel-cli: no database at %1"_s.arg(platform::paths::bundleDir()));
        return Failure;
    }

    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    BillManager &bills = *quorvel.getBillManager();
    std::optional<QList<TableColumn>> columns = bills.table->tableColumns();
    if (options->contains(u"columns"_s)) {
        columns = parseColumns(options->value(u"columns"_s), bills.table->tableColumns(), why);
        if (!columns)
            return usageError(err, why);
        for (const TableColumn &column : *columns) {
            if (!isBillColumn(column.identifier))
                return usageError(err, u"the bills table has no column \"%1\""_s.arg(column.identifier));
        }
    }

    const DatabaseBundle::ReadResult read = quorvel.getDatabase().readDatabase();
    for (const DatabaseBundle::Failure &failure : read.failures)
        say(err,
            u"quorvel-cli: %1 could not be read; the accounts are made without its records"_s.arg(
                DatabaseBundle::fileName(failure.file)));

    PrefsController &prefs = *quorvel.getPrefsController();
    prefs.setUKFormat(dayFirst);
    prefs.setHasAccounts(true);
    // As at the program's start: the built-in report definitions are
    // installed before money in is first written into the reports folder.
    quorvel.getReportManager()->populateFilter();

    bills.periodPopUp->selectItemAtIndex(period);
    bills.fromDate->setStringValue(from);
    bills.searchField->setStringValue(options->value(u"search"_s));
    bills.filter();

    const bool csv = format == "csv"_L1;
    QByteArray bytes;
    if (table == "bills"_L1) {
        TableView shown;
        shown.setColumns(*columns);
        bytes = exportBytes(bills, shown, csv);
    } else {
        const TableView &view = table == "moneyin"_L1 ? *bills.getInTableView() : *bills.getSttTableView();
        // Money in exists once its definition could be written and run.
        if (!bills.getReportManager() || !view.dataSource()) {
            say(err,
                u"quorvel-cli: money in could not be made: MoneyIn.xml could not be written in %1"_s.arg(
                    platform::paths::reportsDir()));
            return Failure;
        }
        bytes = exportBytes(*view.dataSource(), view, csv);
    }
    if (!writeOutput(bytes, options->value(u"output"_s), out, err))
        return Failure;
    return read.ok() ? Success : UnreadableFile;
}

}  // namespace cli
