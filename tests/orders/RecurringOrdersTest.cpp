// Repeating orders: the copy of an order, one pass of the repeat checker at
// a given moment, and the editor's summary line.
#include "DatabaseFiles.h"
#include "FakeServices.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "checkout/CheckoutManager.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Dates.h"
#include "platform/Paths.h"
#include "store/Picker.h"
#include "store/PrefsController.h"

#include <QSettings>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The order editor with the managers it asks for, over a stand-in for the
// controller.
struct Shop
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    OrderManager orders{&services};
    BOMManager bom{&services};
    ItemManager items{&services};
    CheckoutManager checkout{&services};
    Picker picker;
    Shop()
    {
        services.contacts = &contacts;
        services.orders = &orders;
        services.bom = &bom;
        services.items = &items;
        services.checkoutManager = &checkout;
        services.picker = &picker;
        // The date fields in the user's order, day first until the
        // preferences are read, as the program wires them.
        PrefsController *prefs = services.getPrefsController();
        prefs->dateFields = {orders.date,   orders.depositPaid,   orders.balancePaid,
                             checkout.date, checkout.depositPaid, checkout.balancePaid};
        prefs->setUKFormat(prefs->isUKFormat());
    }
    ContactManager *getContactManager() { return &contacts; }
    OrderManager *getOrderManager() { return &orders; }
    BOMManager *getBOMManager() { return &bom; }
    ItemManager *getItemManager() { return &items; }
    PrefsController *getPrefsController() { return services.getPrefsController(); }
    void setCurrentOrder(int orderId) { services.setCurrentOrder(orderId); }
};

template <class Program>
Order *addRepeatingOrder(Program &shop, const QString &frequency, const QString &lastRepeatDate)
{
    auto order = std::make_shared<Order>();
    order->setTitle(QStringLiteral("Windows"));
    order->setRepeats(true);
    order->setRepeatFrequency(frequency);
    order->setLastRepeatDate(lastRepeatDate);
    order->setTaxRate(QStringLiteral("20.00"));
    shop.getOrderManager()->add(order);
    order->setOrderNum(QStringLiteral("INV%1").arg(order->getID()));
    return order.get();
}

QDateTime at(const QString &text)
{
    return *platform::parseDate(text, QStringLiteral("%d/%m/%y %H:%M"));
}

}  // namespace

class RecurringOrdersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
        QSettings(PrefsController::settingsName(), PrefsController::settingsName()).clear();
    }

    void shouldCopyTheOrderAndItsLinesButNotItsPayments()
    {
        Shop shop;
        shop.getPrefsController()->termOrder->setStringValue(QStringLiteral("Job"));
        Order *source = addRepeatingOrder(shop, QStringLiteral("week"), QStringLiteral("01/01/26"));
        source->setDescription(QStringLiteral("Front and back"));
        for (const auto &[name, value] : {std::pair{"value", "40"},
                                          {"tax", "8.00"},
                                          {"status", "Invoiced"},
                                          {"deposit", "16"},
                                          {"paymentmethod", "cash"},
                                          {"type", "Invoice"}})
            source->setFieldByName(QLatin1String(name), QLatin1String(value));
        source->setSent(true);
        shop.getBOMManager()->add(Material::withOrder(source->getID()));

        const Order *copy = shop.getOrderManager()->duplicate(source);
        QCOMPARE(shop.getOrderManager()->getCount(), 2);
        QCOMPARE(copy->getOrderNum(), QStringLiteral("INV2"));
        QCOMPARE(copy->getDescription(), QStringLiteral("Recurrence of Order INV1\rFront and back"));
        const QStringList fields{copy->getDate(),  copy->getValue(),   copy->getTax(),           copy->getStatus(),
                                 copy->getTitle(), copy->getDeposit(), copy->getPaymentMethod(), copy->getType()};
        // Dated today, as the order editor's date field writes it.
        QCOMPARE(fields, (QStringList{"15/01/26", "40", "8.00", "Invoiced", "Windows", "", "web", "Order"}));
        QVERIFY(copy->getSent() && !copy->getRepeats());
        QCOMPARE(source->getLastRepeatDate(), QStringLiteral("15/01/26"));  // today
        QCOMPARE(static_cast<Material *>(shop.getBOMManager()->getnthItem(1))->getOrder(), copy->getID());

        const platform::Alert alert = TestEnvironment::current().alertsShown().value(0);
        QCOMPARE(alert.message, QStringLiteral("Repeat Job"));
        QCOMPARE(alert.informativeText,
                 QStringLiteral("Job 'Windows' has been duplicated. The number of the new Job is INV2"));
    }

    void shouldRepeatOnceTheNextDateHasPassed_data()
    {
        QTest::addColumn<QString>("frequency");
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("lastAfter");  // unchanged: no copy
        QTest::newRow("month") << "month"
                               << "15/01/09"
                               << "15/02/09 00:01"
                               << "15/02/09";
        QTest::newRow("month, exactly due") << "month"
                                            << "15/01/09"
                                            << "15/02/09 00:00"
                                            << "15/01/09";
        QTest::newRow("end of month") << "month"
                                      << "31/01/09"
                                      << "01/03/09 00:00"
                                      << "28/02/09";
        QTest::newRow("week") << "week"
                              << "01/01/26"
                              << "08/01/26 09:00"
                              << "08/01/26";
        QTest::newRow("year, a month on") << "year"
                                          << "15/01/09"
                                          << "16/02/09 00:00"
                                          << "15/01/09";
        QTest::newRow("year") << "year"
                              << "15/01/09"
                              << "16/01/10 00:00"
                              << "15/01/10";
        QTest::newRow("unreadable date") << "week"
                                         << "soon"
                                         << "16/01/26 00:00"
                                         << "soon";
    }
    void shouldRepeatOnceTheNextDateHasPassed()
    {
        QFETCH(QString, frequency);
        QFETCH(QString, last);
        QFETCH(QString, now);
        QFETCH(QString, lastAfter);
        Shop shop;
        Order *order = addRepeatingOrder(shop, frequency, last);
        const auto copies = shop.getOrderManager()->checkForOverdueRepeats(at(now));
        QCOMPARE(copies.size(), lastAfter == last ? 0 : 1);
        QCOMPARE(shop.getOrderManager()->getCount(), 1 + int(copies.size()));
        QCOMPARE(order->getLastRepeatDate(), lastAfter);
        QCOMPARE(TestEnvironment::current().logLines().value(0),
                 QStringLiteral("Windows is set to repeat. last repeat date is %1").arg(last));
    }

    void shouldCatchUpOneCopyPerPass()
    {
        Shop shop;
        Order *order = addRepeatingOrder(shop, QStringLiteral("week"), QStringLiteral("25/12/25"));
        QStringList dates;
        for (int pass = 0; pass < 4; ++pass) {
            shop.getOrderManager()->checkForOverdueRepeats(at(QStringLiteral("15/01/26 10:00")));
            dates << order->getLastRepeatDate();
        }
        QCOMPARE(dates, (QStringList{"01/01/26", "08/01/26", "15/01/26", "15/01/26"}));
        QCOMPARE(shop.getOrderManager()->getCount(), 1 + 3);
    }

    // However many orders are due, a pass ends with one write of the orders
    // and lines (the due dates and the copied lines on disk at once) and
    // one alert that lists the copies.
    void shouldWriteAndAlertOnceForAWholePass_data()
    {
        QTest::addColumn<int>("due");
        QTest::newRow("one") << 1;
        QTest::newRow("three") << 3;
        QTest::newRow("fifty") << 50;
    }
    void shouldWriteAndAlertOnceForAWholePass()
    {
        QFETCH(int, due);
        // What reaches the disk: the whole controller, which writes.
        Quorvel shop;
        shop.getPrefsController()->termOrders->setStringValue(QStringLiteral("Jobs"));
        for (int n = 0; n < due; ++n) {
            Order *order = addRepeatingOrder(shop, QStringLiteral("month"), QStringLiteral("15/11/25"));
            for (const auto &[name, value] : {std::pair{"value", "100"}, {"tax", "17.50"}, {"shipping", "4.5"}})
                order->setFieldByName(QLatin1String(name), QLatin1String(value));
            auto line = Material::withOrder(order->getID());
            line->setItem(QStringLiteral("Glass %1").arg(n));
            shop.getBOMManager()->add(line);
        }
        addRepeatingOrder(shop, QStringLiteral("year"), QStringLiteral("15/11/25"));  // not due

        const auto copies = shop.getOrderManager()->checkForOverdueRepeats(at(QStringLiteral("15/01/26 10:00")));
        QCOMPARE(int(copies.size()), due);
        const QList<platform::Alert> alerts = TestEnvironment::current().alertsShown();
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(alerts.first().message, QStringLiteral("Repeat Order"));
        if (due == 1) {
            QVERIFY(alerts.first().details.isEmpty());
        } else {
            QCOMPARE(
                alerts.first().informativeText,
                QStringLiteral("%1 repeating Jobs have been duplicated; their new numbers are listed below.").arg(due));
            const QStringList lines = alerts.first().details.split(QLatin1Char('\n'));
            QCOMPARE(int(lines.size()), due);
            QCOMPARE(lines.last(),
                     QStringLiteral("INV%1 'Windows' \u2192 %2").arg(due).arg(copies.last().second->getOrderNum()));
        }
        // The copies have their total, like any order: value, tax and shipping.
        for (const auto &[source, copy] : copies)
            QCOMPARE(copy->getValueWithTax(), QStringLiteral("122.00"));

        const QByteArray orders = testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml")));
        QCOMPARE(int(orders.count("<string>15/12/25</string>")), due);  // the due date moved on by a month
        QCOMPARE(int(orders.count("<string>122.00</string>")), due);
        const QByteArray lines = testlib::readFile(platform::paths::bundleFile(QStringLiteral("itemsordered.xml")));
        QCOMPARE(int(lines.count("<string>Glass 0</string>")), 2);  // the line and its copy
    }

    void shouldSummariseTheLastAndNextRepeat_data()
    {
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<QString>("frequency");
        QTest::addColumn<bool>("repeating");
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("summary");
        QTest::newRow("monthly") << false << "month" << true << "15/01/09"
                                 << "Last repeated on 15/01/09. Next due to be repeated on 15/02/09 ";
        QTest::newRow("yearly shows a week") << false << "year" << true << "15/01/09"
                                             << "Last repeated on 15/01/09. Next due to be repeated on 22/01/09 ";
        QTest::newRow("US dates") << true << "week" << true << "15/01/09"
                                  << "Last repeated on 01/15/09. Next due to be repeated on 22/01/09 ";
        QTest::newRow("not repeating") << false << "week" << false << "15/01/09"
                                       << "Last repeated on 15/01/09. ";
        QTest::newRow("never repeated") << false << "week" << true << ""
                                        << "";
    }
    void shouldSummariseTheLastAndNextRepeat()
    {
        QFETCH(bool, monthFirst);
        QFETCH(QString, frequency);
        QFETCH(bool, repeating);
        QFETCH(QString, last);
        QFETCH(QString, summary);
        QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
        settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        settings.setValue(QStringLiteral("QuorvelDateFormat"), monthFirst ? QStringLiteral("1") : QStringLiteral("0"));
        settings.sync();
        Shop shop;
        shop.getPrefsController()->readDefaults();
        OrderManager &manager = *shop.getOrderManager();
        manager.repeatInformativeTextField->setConnected(true);
        manager.repeatFrequency->setConnected(true);
        addRepeatingOrder(shop, frequency, last)->setRepeats(repeating);
        manager.table->selectRow(0);
        manager.edit();
        QCOMPARE(manager.repeatInformativeTextField->stringValue(), summary);
    }
};

QUORVEL_TEST(RecurringOrdersTest)
#include "RecurringOrdersTest.moc"
