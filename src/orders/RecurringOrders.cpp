#include "orders/RecurringOrders.h"

#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/Formats.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

using namespace Qt::Literals::StringLiterals;
using platform::dayFirstFormat;
using platform::localised;
using platform::withArguments;

RecurringOrders::RecurringOrders(OrderManager &manager)
    : orders(manager)
{ }

std::shared_ptr<Order> RecurringOrders::copyForRepeat(Order &source)
{
    QuorvelServices *services = orders.getQuorvel();
    PrefsController *prefs = services->getPrefsController();
    const auto copy = std::make_shared<Order>();
    orders.add(copy);  // takes the next id at once
    copy->setOrderNum(prefs->getOrderPrefix() + QString::number(copy->getID()));
    // Dated as the order editor's date field shows "today".
    copy->setDate(orders.date->formatted(u"today"_s));
    copy->setTaxRate(platform::format2(prefs->getGlobalTaxRate()));
    copy->setTax(source.getTax());
    copy->setBalance(source.getBalance());
    copy->setContact(source.getContact());
    copy->setShipping(source.getShipping());
    copy->setStatus(source.getStatus());
    copy->setTitle(source.getTitle());
    copy->setValue(source.getValue());
    copy->setIncludeBOM(source.getIncludeBOM());
    copy->setSent(source.getSent());
    // Written into the order itself, so kept in one language in the file.
    copy->setDescription(withArguments(
        u"%@\r%@"_s, {withArguments(u"Recurrence of Order %@"_s, {source.getOrderNum()}), source.getDescription()}));
    // The total, as the editor makes it for any order: value, tax and
    // shipping added in that order in single precision.
    float total = platform::floatValue(copy->getValue()) + platform::floatValue(copy->getTax());
    total = total + platform::floatValue(copy->getShipping());
    copy->setValueWithTax(platform::format2(total));

    source.setLastRepeatDate(platform::formatDate(platform::now(), dayFirstFormat));
    services->getBOMManager()->duplicateMaterialsFromOrder(source.getID(), copy->getID());
    return copy;
}

void RecurringOrders::writeCopies()
{
    QuorvelServices *services = orders.getQuorvel();
    orders.filter();
    services->writeDatabase(&orders);
    services->writeDatabase(services->getBOMManager());
}

std::shared_ptr<Order> RecurringOrders::duplicate(const std::shared_ptr<Order> &source)
{
    if (!source || !orders.getQuorvel())
        return nullptr;
    const std::shared_ptr<Order> copy = copyForRepeat(*source);
    writeCopies();

    const QString term = orders.getQuorvel()->getPrefsController()->getTermOrder();
    platform::runAlert(withArguments(localised("Repeat %@"), {term}),
                       withArguments(localised("%@ '%@' has been duplicated. The number of the new %@ is %@"),
                                     {term, source->getTitle(), term, copy->getOrderNum()}),
                       localised("OK"));
    return copy;
}

QList<QPair<Order *, Order *>> RecurringOrders::checkForOverdueRepeats(const QDateTime &now)
{
    QList<QPair<Order *, Order *>> copies;
    if (!orders.getQuorvel())
        return copies;
    // Orders added during the pass, the copies too, wait for the next pass.
    const int count = orders.getCount();
    for (int i = 0; i < count; ++i) {
        auto *order = static_cast<Order *>(orders.getnthItem(i));
        if (!order || !order->getRepeats())
            continue;
        const std::optional<QDateTime> last = platform::parseDate(order->getLastRepeatDate(), dayFirstFormat);
        platform::log(withArguments(u"%@ is set to repeat. last repeat date is %@"_s,
                                    {order->getTitle(), order->getLastRepeatDate()}));
        // The editor always stamps a date when repetition is switched on; a
        // date that cannot be read (a file edited by hand) has no due date,
        // so the order is left alone rather than copied on every pass.
        if (!last) {
            platform::log(
                withArguments(u"%@ has a last repeat date that cannot be read: not repeated"_s, {order->getTitle()}));
            continue;
        }
        QDateTime next = *last;
        const QString &frequency = order->getRepeatFrequency();
        if (frequency == "month"_L1)
            next = platform::addMonths(*last, 1);
        else if (frequency == "week"_L1)
            next = platform::addDays(*last, 7);
        else if (frequency == "year"_L1)
            next = platform::addYears(*last, 1);
        if (now > next) {
            // One period per pass: an order overdue by several is caught up
            // one copy at a time.
            const std::shared_ptr<Order> copy = copyForRepeat(*order);
            order->setLastRepeatDate(platform::formatDate(next, dayFirstFormat));
            copies.append(qMakePair(order, copy.get()));
        }
    }
    if (copies.isEmpty())
        return copies;

    // One write and one alert for the whole pass, however many were due.
    writeCopies();
    const PrefsController *prefs = orders.getQuorvel()->getPrefsController();
    const QString term = prefs->getTermOrder();
    platform::Alert alert;
    alert.message = withArguments(localised("Repeat %@"), {term});
    alert.defaultButton = localised("OK");
    if (copies.size() == 1) {
        const auto &[source, copy] = copies.first();
        alert.informativeText = withArguments(localised("%@ '%@' has been duplicated. The number of the new %@ is %@"),
                                              {term, source->getTitle(), term, copy->getOrderNum()});
    } else {
        alert.informativeText
            = withArguments(localised("%i repeating %@ have been duplicated; their new numbers are listed below."),
                            {QString::number(copies.size()), prefs->getTermOrders()});
        QStringList lines;
        for (const auto &[source, copy] : std::as_const(copies))
            lines << withArguments(u"%@ '%@' \u2192 %@"_s,
                                   {source->getOrderNum(), source->getTitle(), copy->getOrderNum()});
        alert.details = lines.join(u'\n');
    }
    platform::runAlert(alert);
    return copies;
}

QString repeatSummary(const QString &lastRepeatDate, bool repeating, const QString &frequency, bool dayFirst)
{
    if (lastRepeatDate.isEmpty())
        return u""_s;
    const std::optional<QDateTime> last = platform::parseDate(lastRepeatDate, dayFirstFormat);
    // A date that cannot be read is shown as it is stored.
    const QString lastText = last ? platform::formatDate(*last, platform::userDateFormat(dayFirst)) : lastRepeatDate;
    QString text = withArguments(localised("Last repeated on %@. "), {lastText});
    if (last && repeating) {
        // The summary's own rule: a month for "month", a week otherwise.
        const QDateTime next = frequency == "month"_L1 ? platform::addMonths(*last, 1) : platform::addDays(*last, 7);
        text
            += withArguments(localised("Next due to be repeated on %@ "), {platform::formatDate(next, dayFirstFormat)});
    }
    return text;
}
