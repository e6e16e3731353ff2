// Dates and money as a user meets them in the program started as a user
// starts it: a new order from the File menu is dated today in the user's
// date order, a deposit leaves a balance with two decimals, and the orders
// file holds what the window showed; in the accounts, a start date typed as
// a word becomes a date. The test environment's clock stands at 15 January
// 2026, 10:00.
#include "FormDriver.h"
#include "Preferences.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "orders/OrderManager.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/DatabaseBundle.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QVariantMap>

namespace {

// A user's start: the welcome panel answered before, the date order chosen
// in the preferences, every module on.
void storeStart(bool monthFirst)
{
    QSettings settings = testlib::preferences();
    settings.clear();
    settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    settings.setValue(QStringLiteral("QuorvelDateFormat"), monthFirst ? QStringLiteral("1") : QStringLiteral("0"));
    settings.setValue(QStringLiteral("QuorvelTaxRate"), QStringLiteral("20"));
    settings.sync();
    QDir().mkpath(platform::paths::bundleFile(QStringLiteral("notepad.rtfd")));
}

// The orders of the orders file, each a dictionary of its fields.
QList<QVariantMap> ordersInFile()
{
    const QVariant root = platform::plist::readValueFile(DatabaseBundle::filePath(DatabaseBundle::Orders));
    QList<QVariantMap> orders;
    const QVariantList records = root.toMap().value(DatabaseBundle::rootKey(DatabaseBundle::Orders)).toList();
    for (const QVariant &record : records)
        orders << record.toMap();
    return orders;
}

struct Program : testlib::FormDriver
{
    Quorvel quorvel;
    ApplicationWindows windows{quorvel};
    QWidget *form() override { return windows.orderEditorWindow(); }
    void trigger(const char *name)
    {
        auto *action = windows.mainWindow()->findChild<QAction *>(QLatin1String(name));
        QVERIFY2(action, name);
        action->trigger();
    }
};

}  // namespace

class DatesAndMoneyProgramTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        testlib::TestEnvironment::current().clearAlerts();
        QDir(platform::paths::quorvelDir()).removeRecursively();
    }

    void shouldWriteANewOrderDatedTodayWithItsMoneyInTwoDecimals_data()
    {
        QTest::addColumn<bool>("monthFirst");
        QTest::addColumn<QString>("today");
        QTest::newRow("day first") << false << "15/01/26";
        QTest::newRow("month first") << true << "01/15/26";
    }
    void shouldWriteANewOrderDatedTodayWithItsMoneyInTwoDecimals()
    {
        QFETCH(bool, monthFirst);
        QFETCH(QString, today);
        storeStart(monthFirst);
        Program program;
        program.windows.start();
        program.trigger("newOrderAction");
        QWidget *editor = program.form();
        QVERIFY(QTest::qWaitForWindowExposed(editor));
        QCOMPARE(program.text("date"), today);
        QCOMPARE(program.find<QLineEdit>("depositPaid")->placeholderText(),
                 monthFirst ? QStringLiteral("mm/dd/yy") : QStringLiteral("dd/mm/yy"));

        program.type("title", QStringLiteral("Garden wall"));
        program.type("value", QStringLiteral("385.33"));
        program.click("calculateTaxButton");
        QCOMPARE(program.text("taxAmount"), QStringLiteral("77.07"));
        program.type("deposit", QStringLiteral("100"));
        program.type("depositPaid", QStringLiteral("yesterday"));
        QCOMPARE(program.text("balance"), QStringLiteral("362.40"));
        program.click("okButton");
        QVERIFY(editor->isHidden());

        const QList<QVariantMap> orders = ordersInFile();
        QCOMPARE(orders.size(), 1);
        const QVariantMap &order = orders.first();
        QCOMPARE(order.value(QStringLiteral("title")).toString(), QStringLiteral("Garden wall"));
        QCOMPARE(order.value(QStringLiteral("date")).toString(), today);
        QCOMPARE(order.value(QStringLiteral("value")).toString(), QStringLiteral("385.33"));
        QCOMPARE(order.value(QStringLiteral("deposit")).toString(), QStringLiteral("100.00"));
        QCOMPARE(order.value(QStringLiteral("depositpaid")).toString(),
                 monthFirst ? QStringLiteral("01/14/26") : QStringLiteral("14/01/26"));
        QCOMPARE(order.value(QStringLiteral("balance")).toString(), QStringLiteral("362.40"));
        QCOMPARE(order.value(QStringLiteral("valuewithtax")).toString(), QStringLiteral("462.40"));

        // The list shows the date, not a word.
        program.windows.mainWindow()->tabs()->setCurrentWidget(
            program.windows.mainWindow()->tabWithIdentifier(QStringLiteral("2")));
        QCOMPARE(program.quorvel.getOrderManager()->objectValueForTableColumn(QStringLiteral("date"), 0), today);
        program.windows.terminate();
    }

    void shouldTurnAStartDateTypedAsAWordIntoTheDate()
    {
        storeStart(false);
        Program program;
        program.windows.start();
        QWidget *accounts = program.windows.mainWindow()->tabWithIdentifier(QStringLiteral("pro2"));
        auto *periods = testlib::findNamed<QComboBox>(accounts, "billPeriodPopUp");
        auto *from = testlib::findNamed<QLineEdit>(accounts, "billFromDate");
        QTest::keyClick(periods, Qt::Key_Home);
        for (int i = periods->findText(QStringLiteral("1 Week")); i > 0; --i)
            QTest::keyClick(periods, Qt::Key_Down);
        QVERIFY(from->isEnabled());
        QCOMPARE(from->placeholderText(), QStringLiteral("dd/mm/yy"));
        from->setFocus();
        QTest::keyClicks(from, QStringLiteral("last week"));
        QTest::keyClick(from, Qt::Key_Return);
        QCOMPARE(from->text(), QStringLiteral("08/01/26"));
        QCOMPARE(program.quorvel.getBillManager()->fromDate->stringValue(), QStringLiteral("08/01/26"));
        program.windows.terminate();
    }
};

QUORVEL_TEST(DatesAndMoneyProgramTest)
#include "DatesAndMoneyProgramTest.moc"
