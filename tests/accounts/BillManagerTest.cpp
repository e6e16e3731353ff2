// The accounts of a running controller, with no window: the bills table
// and its total rows, the periods on both sides (bills and money in), the
// bill editor's categories and the double entry after a cancelled new bill.
#include "Preferences.h"
#include "TableCells.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/Bill.h"
#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QTest>
#include <memory>

using testlib::columnCells;
using testlib::TestEnvironment;

namespace {

// A controller with the accounts module on and dates day first.
std::unique_ptr<Quorvel> accounts()
{
    auto quorvel = std::make_unique<Quorvel>();
    testlib::startWithModules(*quorvel);
    return quorvel;
}

Bill *addBill(BillManager &bills, const QString &payee, const QString &paid, const QString &amount)
{
    auto bill = std::make_shared<Bill>();
    bill->setName(payee);
    bill->setDatePaid(paid);
    bill->setAmount(amount);
    bills.add(bill);
    return bill.get();
}

void addOrder(Quorvel &quorvel, const QString &title, const QString &depositPaid, const QString &balancePaid)
{
    auto order = std::make_shared<Order>();
    order->setTitle(title);
    order->setDeposit(QStringLiteral("10"));
    order->setDepositPaid(depositPaid);
    order->setBalance(QStringLiteral("100"));
    order->setBalancePaid(balancePaid);
    quorvel.getOrderManager()->add(order);
}

void choosePeriod(BillManager &bills, const QString &title, const QString &from)
{
    bills.fromDate->userSetStringValue(from);
    bills.periodPopUp->userSelectItemAtIndex(bills.periodPopUp->indexOfItemWithTitle(title));
}

}  // namespace

class BillManagerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { platform::setFixedNow(TestEnvironment::fixedNow()); }

    void shouldFollowTheVisibleBillsWithARuleAndTheirTotal()
    {
        auto quorvel = accounts();
        BillManager &bills = *quorvel->getBillManager();
        QCOMPARE(columnCells(bills, QStringLiteral("amount")),
                 (QStringList{QStringLiteral("_____"), QStringLiteral("0.00")}));

        addBill(bills, QStringLiteral("Acme"), QStringLiteral("01/03/08"), QStringLiteral("1,200.50"));
        addBill(bills, QStringLiteral("Parts"), QStringLiteral("02/03/08"), QStringLiteral("99.5"));
        addBill(bills, QStringLiteral("Rent"), QStringLiteral("03/03/08"), QStringLiteral("7"));
        bills.searchField->userSetStringValue(QStringLiteral("a"));
        QCOMPARE(columnCells(bills, QStringLiteral("amount")), (QStringList{"1,200.50", "99.5", "_____", "1300.00"}));
        QCOMPARE(columnCells(bills, QStringLiteral("name")), (QStringList{"Acme", "Parts", "", ""}));
        bills.table->selectRow(2);
        bills.edit();
        QVERIFY(!bills.editorWindow->isVisible());
    }

    void shouldShowTheBillsAndMoneyInOfAPeriod_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QStringList>("billsShown");
        QTest::addColumn<QStringList>("moneyIn");
        const QDateTime march(QDate(2008, 3, 20), QTime(10, 0));
        QTest::newRow("one week: eight days of bills, seven of money in")
            << "1 Week"
            << "01/03/08" << march << QStringList{"01/03/08", "08/03/08"} << QStringList{"01/03/08", "07/03/08", ""};
        QTest::newRow("one month") << "1 Month"
                                   << "09/02/08" << march << QStringList{"29/02/08", "01/03/08", "08/03/08", "09/03/08"}
                                   << QStringList{"29/02/08", "01/03/08", "07/03/08", "08/03/08", ""};
        QTest::newRow("current calendar month keeps the next first day")
            << "Current calendar month"
            << "" << QDateTime(QDate(2008, 2, 10), QTime(12, 0)) << QStringList{"29/02/08", "01/03/08"}
            << QStringList{"29/02/08", ""};
        QTest::newRow("last calendar month")
            << "Last calendar month"
            << "" << march << QStringList{"29/02/08", "01/03/08"} << QStringList{"29/02/08", ""};
        QTest::newRow("all shows undated bills too")
            << "All"
            << "01/03/08" << march << QStringList{"29/02/08", "01/03/08", "08/03/08", "09/03/08", ""}
            << QStringList{"29/02/08", "01/03/08", "07/03/08", "08/03/08", ""};
    }
    void shouldShowTheBillsAndMoneyInOfAPeriod()
    {
        QFETCH(QString, period);
        QFETCH(QString, from);
        QFETCH(QDateTime, now);
        QFETCH(QStringList, billsShown);
        QFETCH(QStringList, moneyIn);
        platform::setFixedNow(now);
        auto quorvel = accounts();
        BillManager &bills = *quorvel->getBillManager();
        for (const char *day : {"29/02/08", "01/03/08", "08/03/08", "09/03/08", ""})
            addBill(bills, QStringLiteral("Payee"), QLatin1String(day), QStringLiteral("5"));
        addOrder(*quorvel, QStringLiteral("A"), QStringLiteral("29/02/08"), QStringLiteral("01/03/08"));
        addOrder(*quorvel, QStringLiteral("B"), QStringLiteral("07/03/08"), QStringLiteral("08/03/08"));
        addOrder(*quorvel, QStringLiteral("C"), QString(), QString());

        choosePeriod(bills, period, from);
        QStringList shown = columnCells(bills, QStringLiteral("datepaid"));
        shown.removeLast();
        shown.removeLast();
        QCOMPARE(shown, billsShown);
        QVERIFY(bills.getReportManager());
        QStringList received = columnCells(*bills.getInTableView()->dataSource(), QStringLiteral("field3"));
        received.removeLast();
        received.sort();
        QStringList expected = moneyIn;
        expected.sort();
        QCOMPARE(received, expected);
        QCOMPARE(bills.fromDate->isEnabled(), period.startsWith(QLatin1Char('1')));
        QCOMPARE(bills.fromDate->stringValue(), from);
        QVERIFY(QFile::exists(QDir(platform::paths::reportsDir()).filePath(QStringLiteral("MoneyIn.xml"))));
    }

    void shouldWaitForAStartDateBeforeARelativePeriod()
    {
        auto quorvel = accounts();
        BillManager &bills = *quorvel->getBillManager();
        addBill(bills, QStringLiteral("Old"), QStringLiteral("01/01/07"), QStringLiteral("5"));
        bills.periodPopUp->userSelectItemAtIndex(bills.periodPopUp->indexOfItemWithTitle(QStringLiteral("1 Year")));
        QCOMPARE(bills.numberOfRowsInTableView(), 3);
        QVERIFY(!bills.getReportManager());
        bills.fromDate->userSetStringValue(QStringLiteral("01/06/07"));
        QCOMPARE(bills.numberOfRowsInTableView(), 2);
        QCOMPARE(bills.getReportManager()->getTotalCol(), QStringLiteral("field2"));
    }

    void shouldOfferEveryCategoryMetOnABillAndKeepTheChosenOne()
    {
        auto quorvel = accounts();
        BillManager &bills = *quorvel->getBillManager();
        Bill *bill = addBill(bills, QStringLiteral("Acme"), QStringLiteral("01/03/08"), QStringLiteral("5"));
        bill->setCategory(QStringLiteral("Postage"));
        bills.filter();
        bills.table->selectRow(0);
        bills.edit();
        QVERIFY(bills.category->indexOfItemWithTitle(QStringLiteral("Postage")) >= 0);
        QCOMPARE(bills.category->titleOfSelectedItem(), QStringLiteral("Postage"));

        bills.create();
        QCOMPARE(bills.category->indexOfSelectedItem(), -1);
        bills.name->userSetStringValue(QStringLiteral("Post office"));
        bills.category->userSelectItemAtIndex(bills.category->indexOfItemWithTitle(QStringLiteral("Postage")));
        bills.finish();
        QCOMPARE(bills.getCount(), 2);
        QCOMPARE(static_cast<Bill *>(bills.getnthItem(1))->getCategory(), QStringLiteral("Postage"));
        QVERIFY(QFile::exists(platform::paths::bundleFile(QStringLiteral("bills.xml"))));
    }

    void shouldAddTheNextFinishedBillTwiceAfterACancelledNewOne()
    {
        auto quorvel = accounts();
        BillManager &bills = *quorvel->getBillManager();
        addBill(bills, QStringLiteral("Acme"), QStringLiteral("01/03/08"), QStringLiteral("5"));
        bills.filter();
        bills.create();
        bills.cancel();
        QVERIFY(bills.isCreating());
        bills.table->selectRow(0);
        bills.edit();
        bills.amount->userSetStringValue(QStringLiteral("6"));
        bills.finish();
        QCOMPARE(columnCells(bills, QStringLiteral("name")), (QStringList{"Acme", "Acme", "", ""}));
        QCOMPARE(columnCells(bills, QStringLiteral("amount")).last(), QStringLiteral("12.00"));
        // Listed twice is the same bill, with its own id: an edit shows in both rows.
        QCOMPARE(bills.getnthItem(1), bills.getnthItem(0));
        bills.edit();
        bills.amount->userSetStringValue(QStringLiteral("7"));
        bills.finish();
        QCOMPARE(bills.getCount(), 2);
        QCOMPARE(columnCells(bills, QStringLiteral("amount")).last(), QStringLiteral("14.00"));
    }
};

QUORVEL_TEST(BillManagerTest)
#include "BillManagerTest.moc"
