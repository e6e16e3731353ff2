#include "TestMain.h"

#include "app/Quorvel.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/RepeatChecker.h"
#include "platform/Alerts.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <memory>
#include <thread>

using namespace std::chrono_literals;

// The checker's thread only waits and posts: the copies are made on the
// manager's thread, one per pass, and the checker stops at once when it goes.
class RepeatCheckerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Quorvel> quorvel;
    Order *monthly = nullptr;
    QList<QThread *> alertThreads;  // where each copy's alert was shown
    platform::AlertHandler previousAlerts;

    OrderManager &orders() { return *quorvel->getOrderManager(); }

    std::unique_ptr<RepeatChecker> startChecker(std::chrono::milliseconds before, std::chrono::milliseconds after)
    {
        auto checker = std::make_unique<RepeatChecker>(orders());
        checker->setDelays(before, after);
        checker->start();
        return checker;
    }

private Q_SLOTS:
    void init()
    {
        quorvel = std::make_unique<Quorvel>();
        const auto order = std::make_shared<Order>();
        monthly = order.get();
        monthly->setOrderNum(QStringLiteral("INV1"));
        monthly->setRepeats(true);
        monthly->setRepeatFrequency(QStringLiteral("month"));
        monthly->setLastRepeatDate(QStringLiteral("15/01/09"));  // years overdue on the test clock
        orders().add(order);
        alertThreads.clear();
        previousAlerts = platform::setAlertHandler([this](const platform::Alert &) {
            alertThreads << QThread::currentThread();
            return 1;
        });
    }
    void cleanup()
    {
        platform::setAlertHandler(previousAlerts);
        quorvel.reset();
    }

    void shouldCopyADueOrderOnTheManagersThreadOncePerPass()
    {
        const auto checker = startChecker(1ms, 1h);
        QTRY_COMPARE_WITH_TIMEOUT(orders().getCount(), 2, 500);
        QCOMPARE(alertThreads, QList<QThread *>{orders().thread()});
        QCOMPARE(monthly->getLastRepeatDate(), QStringLiteral("15/02/09"));
        QTest::qWait(50);  // the next pass waits the long delay
        QCOMPARE(orders().getCount(), 2);
    }

    void shouldStopAtOnceWhenDestroyed_data()
    {
        QTest::addColumn<bool>("afterAPass");
        QTest::newRow("during the wait before the first pass") << false;
        QTest::newRow("during the wait after a pass") << true;
    }
    void shouldStopAtOnceWhenDestroyed()
    {
        QFETCH(bool, afterAPass);
        auto checker = startChecker(afterAPass ? 1ms : 1h, 1h);
        if (afterAPass)
            QTRY_COMPARE_WITH_TIMEOUT(orders().getCount(), 2, 500);
        QElapsedTimer timer;
        timer.start();
        checker.reset();
        QVERIFY2(timer.elapsed() < 200, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(orders().getCount(), afterAPass ? 2 : 1);
    }

    void shouldDropAPassPostedBeforeItWasDestroyed()
    {
        auto checker = startChecker(1ms, 1h);
        std::this_thread::sleep_for(50ms);  // posted, but no event has been handled
        checker.reset();
        QCoreApplication::processEvents();
        QCOMPARE(orders().getCount(), 1);
    }
};

QUORVEL_TEST(RepeatCheckerTest)
#include "RepeatCheckerTest.moc"
