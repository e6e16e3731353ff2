#include "accounts/BillManager.h"

#include "accounts/Bill.h"
#include "accounts/StatementManager.h"
#include "platform/Clock.h"
#include "platform/DateReading.h"
#include "platform/Dates.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

#include <QDir>
#include <QHash>

using namespace Qt::Literals::StringLiterals;
using platform::localised;

namespace {

// A moment as the log has always shown it: "2008-03-08 00:00:00 +0000".
QString description(const QDateTime &moment)
{
    const int offset = moment.offsetFromUtc() / 60;
    const int hours = qAbs(offset) / 60;
    const int minutes = qAbs(offset) % 60;
    return moment.toString(u"yyyy-MM-dd HH:mm:ss"_s)
        + QString::asprintf(" %c%02d%02d", offset < 0 ? '-' : '+', hours, minutes);
}

QVariantList clause(const QString &field, const QString &op, const QString &value)
{
    return {field, op, value};
}

}  // namespace

BillManager::BillManager(QuorvelServices *controller, QObject *parent)
    : ListManager(controller, u"bills"_s, u"Delete Bill"_s, parent),
      periodPopUp(new PopUp(this)),
      fromDate(new TextField(this)),
      inTable(new TableView(this)),
      sttTable(new TableView(this)),
      editorWindow(new Window(this)),
      invoiceNumber(new TextField(this)),
      name(new TextField(this)),
      datePaid(new TextField(this)),
      amount(new TextField(this)),
      category(new PopUp(this)),
      details(new TextView(this)),
      statementManager(std::make_unique<StatementManager>(inTable, table))
{
    sttTable->setColumns(TableView::columnsFrom({{"name", ""}, {"amount", ""}}));
    sttTable->setDataSource(statementManager.get());
    periodPopUp->addItems({localised("All"), localised("1 Week"), localised("1 Month"), localised("1 Year"),
                           localised("Current calendar month"), localised("Last calendar month")});
    periodPopUp->selectItemAtIndex(0);
    // "All" takes no start date.
    fromDate->setEnabled(false);
    editorWindow->setTitle(localised("Invoice"));
    amount->setMoney(true);
    // The search field is wired by ListManager.
    connect(periodPopUp, &PopUp::activated, this, [this] { filter(); });
    connect(fromDate, &TextField::edited, this, [this] { filter(); });
}

BillManager::~BillManager() = default;

QString BillManager::userDateFormat() const
{
    // The start date's own format, which the preferences give it.
    if (platform::isDayFormat(fromDate->dateFormat()))
        return fromDate->dateFormat();
    return platform::userDateFormat(!quorvel || quorvel->getPrefsController()->isUKFormat());
}

// ---------------------------------------------------------------------------
// The editor

void BillManager::create()
{
    creating = true;
    currentItem = std::make_shared<Bill>();
    setItem(currentItem.get());
    show();
}

void BillManager::edit()
{
    const int row = table->selectedRow();
    if (row < 0 || row >= kdDataSource::numberOfRowsInTableView())
        return;
    auto *bill = static_cast<Bill *>(getnthVisibleItem(row));
    if (!bill)
        return;
    setItem(bill);
    show();
}

void BillManager::setItem(Bill *bill)
{
    if (!bill)
        return;
    currentItem = shareOf(bill);
    invoiceNumber->setStringValue(bill->getNumber());
    name->setStringValue(bill->getName());
    datePaid->setStringValue(bill->getDatePaid());
    amount->setStringValue(bill->getAmount());
    details->setString(bill->getDetails());
    // The pop-up offers the user's categories and every category met on a
    // bill opened here.
    if (quorvel) {
        for (const QString &title : quorvel->getPrefsController()->getInvoiceCategoryList()) {
            if (!title.isEmpty() && category->indexOfItemWithTitle(title) < 0)
                category->addItem(title);
        }
    }
    const QString &chosen = bill->getCategory();
    if (!chosen.isEmpty() && category->indexOfItemWithTitle(chosen) < 0)
        category->addItem(chosen);
    category->selectItemAtIndex(category->indexOfItemWithTitle(chosen));
}

void BillManager::finish()
{
    const std::shared_ptr<Bill> bill = currentItem;
    if (!bill)
        return;
    bill->setNumber(invoiceNumber->stringValue());
    bill->setName(name->stringValue());
    bill->setDatePaid(datePaid->stringValue());
    bill->setAmount(amount->stringValue());
    bill->setDetails(details->string());
    const QString chosen = category->titleOfSelectedItem();
    if (!chosen.isEmpty())
        bill->setCategory(chosen);

    // A cancelled new bill leaves `creating` set: the next bill finished,
    // even one opened from the list, is then listed a second time (the same
    // record, with its id).
    if (creating) {
        creating = false;
        add(bill);
    }
    hide();
    filter();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void BillManager::cancel()
{
    hide();
}

void BillManager::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void BillManager::hide()
{
    editorWindow->orderOut();
}

// ---------------------------------------------------------------------------
// The period

void BillManager::filter()
{
    if (!quorvel || !quorvel->hasAccounts())
        return;
    const QString format = userDateFormat();
    const QString search = searchField->stringValue();
    QString from = fromDate->stringValue();
    const QString period = periodPopUp->titleOfSelectedItem();

    const bool week = period == localised("1 Week");
    const bool month = period == localised("1 Month");
    const bool year = period == localised("1 Year");
    // 1. The start date counts only for the periods measured from it.
    if (week || month || year) {
        fromDate->setEnabled(true);
        if (from.isEmpty())
            return;
    } else {
        fromDate->setEnabled(false);
    }

    // 2.-5. The end of the period, and the start of the calendar months.
    std::optional<QDateTime> to;
    if (!from.isEmpty() && (week || month || year)) {
        const std::optional<QDateTime> start = platform::parseDate(from, format);
        if (week)
            platform::log(u"calculating one week from "_s + from);
        else if (month)
            platform::log(u"calculating one month from "_s + from);
        else
            platform::log(u"calculating one year from "_s + from);
        if (start) {
            to = week   ? platform::addDays(*start, 7)
                : month ? platform::addMonths(*start, 1)
                        : platform::addYears(*start, 1);
            platform::log(u"dateTo is "_s + description(*to));
        }
    }
    if (period == localised("All")) {
        from = u""_s;
        to.reset();
    }
    const bool thisMonth = period == localised("Current calendar month");
    const bool lastMonth = period == localised("Last calendar month");
    if (thisMonth || lastMonth) {
        const QDateTime now = platform::now();
        QDateTime first = platform::addDays(now, 1 - now.date().day());
        if (lastMonth)
            first = platform::addMonths(first, -1);
        from = platform::formatDate(first, format);
        to = platform::addMonths(first, 1);
    }

    // 6.-8. The bills: a bound that is missing restricts nothing; a bill
    // without a readable date is shown only when no bound applies.
    std::optional<QDateTime> start;
    if (!from.isEmpty())
        start = platform::parseDate(from, format);
    const std::optional<qint64> startMs = start ? std::optional<qint64>(start->toMSecsSinceEpoch()) : std::nullopt;
    const std::optional<qint64> endMs = to ? std::optional<qint64>(to->toMSecsSinceEpoch()) : std::nullopt;
    // Each date text is read once: bills share their dates, and reading one
    // as local time asks the system for its time zone every time.
    QHash<QString, std::optional<qint64>> paidMoments;
    filterBy([&](const dataObject &record) {
        if (!search.isEmpty() && !record.contains(search))
            return false;
        if (!startMs && !endMs)
            return true;
        const QString &paidText = static_cast<const Bill &>(record).getDatePaid();
        auto known = paidMoments.constFind(paidText);
        if (known == paidMoments.cend()) {
            const std::optional<QDateTime> paid = platform::parseDate(paidText, format);
            known
                = paidMoments.insert(paidText, paid ? std::optional<qint64>(paid->toMSecsSinceEpoch()) : std::nullopt);
        }
        if (!*known)
            return false;
        const qint64 paidMs = **known;
        if (startMs && paidMs < *startMs)
            return false;
        if (endMs && paidMs > *endMs)
            return false;
        return true;
    });
    reloadData();

    // 9.-10. Money in of the same period.
    runMoneyIn(from, to);
}

QVariantMap BillManager::moneyInDefinition(const QString &from, const QString &to)
{
    const auto clauses = [&from, &to](const QString &field) {
        QVariantList where{QVariant(clause(field, u"!"_s, u""_s))};
        if (!to.isNull())
            where.append(QVariant(clause(field, u"<"_s, to)));
        if (!from.isEmpty())
            where.append(QVariant(clause(field, u">"_s, from)));
        return where;
    };
    QVariantMap definition;
    definition.insert(u"colheadings"_s, QStringList{u"Name"_s, u"Received"_s, u"Datepaid"_s});
    definition.insert(u"colwidths"_s, QStringList{u"280"_s, u"80"_s, u"100"_s});
    definition.insert(u"fields"_s, QStringList{u"title"_s, u"deposit"_s, u"depositpaid"_s});
    definition.insert(u"fields2"_s, QStringList{u"title"_s, u"balance"_s, u"balancepaid"_s});
    definition.insert(u"selectfrom"_s, u"orders"_s);
    definition.insert(u"totalcol"_s, u"2"_s);
    definition.insert(u"where"_s, clauses(u"depositpaid"_s));
    definition.insert(u"where2"_s, clauses(u"balancepaid"_s));
    return definition;
}

void BillManager::runMoneyIn(const QString &from, const std::optional<QDateTime> &to)
{
    const QString toText = to ? platform::formatDate(*to, userDateFormat()) : QString();
    const QByteArray bytes = platform::plist::writeValue(moneyInDefinition(from, toText));
    const QString folder = platform::paths::reportsDir();
    const bool written = !bytes.isEmpty() && QDir().mkpath(folder)
        && platform::plist::writeFileAtomically(QDir(folder).filePath(u"MoneyIn.xml"_s), bytes);
    if (!written) {
        platform::log(u"moneyin xml not written successfully"_s);
        return;
    }
    if (!reportManager) {
        reportManager = std::make_unique<ReportManager>(quorvel);
        reportManager->setQuorvel(quorvel);
        reportManager->setFromDate(fromDate);
    }
    reportManager->doReport(u"MoneyIn"_s, inTable);
    sttTable->reloadData();
}

// ---------------------------------------------------------------------------
// The bills table

float BillManager::total() const
{
    float sum = 0.0f;
    const int visible = kdDataSource::numberOfRowsInTableView();
    for (int row = 0; row < visible; ++row) {
        const auto *bill = static_cast<const Bill *>(getnthVisibleItem(row));
        if (bill)
            sum += platform::floatValue(platform::withoutCommas(bill->getAmount()));
    }
    return sum;
}

int BillManager::numberOfRowsInTableView() const
{
    return kdDataSource::numberOfRowsInTableView() + 2;
}

QString BillManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    const int visible = kdDataSource::numberOfRowsInTableView();
    if (row < visible)
        return ListManager::objectValueForTableColumn(columnId, row);
    if (columnId != "amount"_L1)
        return u""_s;
    if (row == visible)
        return u"_____"_s;
    if (row == visible + 1)
        return platform::format2(total());
    return u""_s;
}

void BillManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    sortAsRead(columnId, ascending, PrefsController::dateFormatOf(quorvel));
    reloadData();
}

QString BillManager::describe(const dataObject &record) const
{
    const QString called = record.getFieldByName(u"name"_s);
    return localised("Bill") + u' ' + (called.isEmpty() ? record.getFieldByName(u"number"_s) : called);
}
