#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/MainWindow.h"

#include <QSettings>
#include <QTabWidget>
#include <QTest>

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
        auto *accounts = window.tabWithIdentifier(QStringLiteral("pro2"))->findChild<QTabWidget *>(QStringLiteral("accountsTabView"));
        QVERIFY(accounts);
        QStringList identifiers;
        for (int i = 0; i < accounts->count(); ++i)
            identifiers << MainWindow::identifierOf(accounts->widget(i));
        QCOMPARE(identifiers, QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
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
