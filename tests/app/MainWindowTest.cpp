#include "Preferences.h"
#include "TestMain.h"

#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "app/widgets/MainWindow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

namespace {

// Chooses a period in the pop-up with the keyboard, as a user would.
void choosePeriod(QComboBox *periods, int index)
{
    QTest::keyClick(periods, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(periods, Qt::Key_Down);
}

}  // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldOfferEveryTabByItsIdentifier_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<int>("index");
        QTest::newRow("contacts") << "1" << 0;
        QTest::newRow("orders") << "2" << 1;
        QTest::newRow("stock") << "3" << 2;
        QTest::newRow("tasks") << "pro" << 3;
        QTest::newRow("accounts") << "pro2" << 4;
        QTest::newRow("reports") << "pro3" << 5;
    }
    void shouldOfferEveryTabByItsIdentifier()
    {
        QFETCH(QString, identifier);
        QFETCH(int, index);
        Quorvel quorvel;
        MainWindow window(quorvel);
        QCOMPARE(window.tabs()->count(), 6);
        QCOMPARE(window.tabWithIdentifier(identifier), window.tabs()->widget(index));
        QCOMPARE(MainWindow::identifierOf(window.tabs()->widget(index)), identifier);
    }

    void shouldHoldTheThreeAccountsSubTabs()
    {
        Quorvel quorvel;
        MainWindow window(quorvel);
        auto *accounts = window.tabWithIdentifier(QStringLiteral("pro2"))
                             ->findChild<QTabWidget *>(QStringLiteral("accountsTabView"));
        QVERIFY(accounts);
        QStringList identifiers;
        for (int i = 0; i < accounts->count(); ++i)
            identifiers << MainWindow::identifierOf(accounts->widget(i));
        QCOMPARE(identifiers, QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    }

    void shouldTakeAStartDateOnlyForThePeriodsMeasuredFromIt_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("all") << "All" << false;
        QTest::newRow("one week") << "1 Week" << true;
        QTest::newRow("one year") << "1 Year" << true;
        QTest::newRow("last calendar month") << "Last calendar month" << false;
    }
    void shouldTakeAStartDateOnlyForThePeriodsMeasuredFromIt()
    {
        QFETCH(QString, period);
        QFETCH(bool, enabled);
        Quorvel quorvel;
        testlib::startWithModules(quorvel);
        QVERIFY(quorvel.hasAccounts());
        MainWindow window(quorvel);
        QWidget *accounts = window.tabWithIdentifier(QStringLiteral("pro2"));
        auto *periods = accounts->findChild<QComboBox *>(QStringLiteral("billPeriodPopUp"));
        auto *from = accounts->findChild<QLineEdit *>(QStringLiteral("billFromDate"));
        QVERIFY(periods && from);
        const int index = periods->findText(period);
        QVERIFY(index >= 0);

        // First a period of the other kind, so that the field has to change.
        choosePeriod(periods,
                     periods->findText(enabled ? QStringLiteral("Current calendar month") : QStringLiteral("1 Week")));
        QCOMPARE(from->isEnabled(), !enabled);
        choosePeriod(periods, index);
        QCOMPARE(periods->currentText(), period);
        QCOMPARE(from->isEnabled(), enabled);
        QCOMPARE(quorvel.getBillManager()->fromDate->isEnabled(), enabled);
    }

    void shouldRememberItsSizeAndPlace()
    {
        Quorvel quorvel;
        {
            MainWindow window(quorvel);
            window.show();
            window.setGeometry(40, 50, 640, 420);
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            window.hide();
        }
        MainWindow again(quorvel);
        QCOMPARE(again.size(), QSize(640, 420));
    }
};

QUORVEL_TEST(MainWindowTest)
#include "MainWindowTest.moc"
