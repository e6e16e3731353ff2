// A whole sale at the counter through the program's own windows, from the
// keyboard: the checkout opened from the main window, items added by their
// code (an unknown one said in the window), the tender panel, and the sale
// on disk after the next write of the orders.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "checkout/widgets/CheckoutWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

using testlib::TestEnvironment;
using Program = testlib::RunningProgram;

namespace {

QString labelText(const QWidget *window, const char *name)
{
    const auto *label = window->findChild<QLabel *>(QLatin1String(name));
    return label ? label->text() : QStringLiteral("(no %1)").arg(QLatin1String(name));
}

}  // namespace

class CheckoutWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
    }

    void shouldRingUpASaleFromTheKeyboard()
    {
        Program program;
        program.named(QStringLiteral("checkoutAction"))->trigger();
        CheckoutWindow *window = program.windows.checkoutWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->activateWindow();
        QLineEdit *code = window->codeField();
        QTRY_VERIFY(code->hasFocus());
        const QString number = labelText(window, "orderNumber");

        QTest::keyClicks(code, QStringLiteral("itm20"));
        QTest::keyClick(code, Qt::Key_Return);
        QTest::keyClicks(code, QStringLiteral("ITM20"));
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(window->linesView()->model()->rowCount(), 2);
        QCOMPARE(window->linesView()->model()->index(0, 0).data().toString(), QStringLiteral("Bolt"));
        QVERIFY(window->isWindowModified());
        QVERIFY(labelText(window, "codeEntryMessage").contains(QStringLiteral("Bolt")));
        QCOMPARE(labelText(window, "value"), QStringLiteral("4.00"));
        const QString total = labelText(window, "valueWithTax");
        QCOMPARE(labelText(window, "balance"), total);

        QTest::keyClicks(code, QStringLiteral("NOPE"));
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(labelText(window, "codeEntryMessage"), QStringLiteral("No item has the code \"NOPE\"."));
        QCOMPARE(window->linesView()->model()->rowCount(), 2);
        QVERIFY(TestEnvironment::current().alertsShown().isEmpty());

        // The tender panel: the due sum, then what was handed over and Enter.
        QTest::keyClick(code, Qt::Key_F12);
        QDialog *panel = window->tenderPanel();
        QTRY_VERIFY(panel->isVisible());  // a button's key clicks it a moment later
        QVERIFY(QTest::qWaitForWindowExposed(panel));
        QCOMPARE(labelText(panel, "tenderDue"), total);
        auto *tendered = panel->findChild<QLineEdit *>(QStringLiteral("tenderTendered"));
        QTRY_VERIFY(tendered->hasFocus());
        QTest::keyClicks(tendered, QStringLiteral("20"));
        QCOMPARE(labelText(panel, "tenderInformativeText"), QStringLiteral("Change Due"));
        QTest::keyClick(tendered, Qt::Key_Return);
        QTRY_VERIFY(!panel->isVisible());
        // The next sale is ready, and the window no longer holds changes.
        QVERIFY(labelText(window, "orderNumber") != number);
        QCOMPARE(window->linesView()->model()->rowCount(), 0);
        QVERIFY(!window->isWindowModified());

        // The sale reaches the disk with the next write of the orders.
        QVERIFY(testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("ordernum"), number).isEmpty());
        program.windows.terminate();
        const QVariantMap sale
            = testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("ordernum"), number);
        QCOMPARE(sale.value(QStringLiteral("balancepaid")).toString(), QStringLiteral("15/01/26"));
        QCOMPARE(sale.value(QStringLiteral("valuewithtax")).toString(), total);
        QCOMPARE(testlib::recordOnDisk(QStringLiteral("items.xml"), QStringLiteral("item"), QStringLiteral("Bolt"))
                     .value(QStringLiteral("qty"))
                     .toString(),
                 QStringLiteral("8"));
    }

    void shouldAskBeforeClosingASaleWithChanges()
    {
        Program program;
        program.named(QStringLiteral("checkoutAction"))->trigger();
        CheckoutWindow *window = program.windows.checkoutWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTest::keyClicks(window->codeField(), QStringLiteral("ITM21"));
        QTest::keyClick(window->codeField(), Qt::Key_Return);
        TestEnvironment::current().scriptAlertAnswers({-1});
        QTest::keyClick(window->codeField(), Qt::Key_Escape);
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QCOMPARE(TestEnvironment::current().alertsShown().first().message, QStringLiteral("Close Checkout"));
        QVERIFY(window->isVisible());
        TestEnvironment::current().scriptAlertAnswers({0});
        QTest::keyClick(window->codeField(), Qt::Key_Escape);
        QTRY_VERIFY(!window->isVisible());
    }
};

QUORVEL_TEST(CheckoutWindowTest)
#include "CheckoutWindowTest.moc"
