// The whole program on a temporary data folder, driven through its real
// windows: a first start with the welcome panel, the preferences and the
// notepad, a list searched and a record deleted from the keyboard, quitting,
// and a second start that finds everything again.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainToolBar.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/NotepadWindow.h"
#include "app/widgets/PrefsWindow.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

using testlib::TestEnvironment;

namespace {

QString settingsValue(const char *key)
{
    return QSettings(PrefsController::settingsName(), PrefsController::settingsName())
        .value(QLatin1String(key))
        .toString();
}

QStringList tabIdentifiers(const QTabWidget *tabs)
{
    QStringList identifiers;
    for (int i = 0; i < tabs->count(); ++i)
        identifiers << MainWindow::identifierOf(tabs->widget(i));
    return identifiers;
}

QStringList toolbarIdentifiers(const MainWindow *window)
{
    QStringList identifiers;
    for (const QAction *action : window->toolBar()->actions())
        identifiers << action->objectName();
    return identifiers;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void triggerMenu(MainWindow *window, const char *name)
{
    auto *action = window->findChild<QAction *>(QLatin1String(name));
    QVERIFY2(action, name);
    action->trigger();
}

}  // namespace

class ProgramTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKeepWhatTheUserDidThroughTheWindowsAcrossAQuit()
    {
        // First start: the welcome panel asks for the modules.
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        bool welcomed = false;
        QTimer::singleShot(0, this, [&welcomed] {
            auto *panel = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(panel);
            QCOMPARE(panel->objectName(), QStringLiteral("welcomePanel"));
            panel->findChild<QCheckBox *>(QStringLiteral("proTimeMmtButton2"))->click();
            panel->findChild<QCheckBox *>(QStringLiteral("dontShowWelcomeButton"))->click();
            panel->findChild<QPushButton *>(QStringLiteral("welcomeStartButton"))->click();
            welcomed = true;
        });
        windows.start();
        QVERIFY(welcomed);
        QCOMPARE(settingsValue("QuorvelTimeMmt"), QStringLiteral("YES"));
        QCOMPARE(settingsValue("QuorvelDataMmt"), QStringLiteral("NO"));
        QCOMPARE(settingsValue("QuorvelAccountMmt"), QStringLiteral("NO"));
        QCOMPARE(settingsValue("QuorvelWelcome"), QStringLiteral("YES"));

        MainWindow *window = windows.mainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // No notepad yet: every module stays off until the notepad has been saved.
        QCOMPARE(toolbarIdentifiers(window).join(QLatin1Char(' ')),
                 QStringLiteral("printItemIdentifier deleteItemIdentifier editItemIdentifier companyItemIdentifier "
                                "contactItemIdentifier orderItemIdentifier itemItemIdentifier padItemIdentifier "
                                "checkoutItemIdentifier prefsItemIdentifier helpItemIdentifier"));

        // The notepad from the toolbar.
        window->toolBar()->findChild<QAction *>(QStringLiteral("padItemIdentifier"))->trigger();
        auto *notepad = windows.notepadWindow()->findChild<QTextEdit *>(QStringLiteral("notepadView"));
        QVERIFY(notepad && notepad->isVisible());
        notepad->setFocus();
        QTest::keyClicks(notepad, QStringLiteral("Ring the printer man"));

        // The preferences from the menu: a new tax rate and the user's word for an order.
        triggerMenu(window, "preferencesAction");
        QWidget *prefs = windows.prefsWindow();
        QVERIFY(prefs->isVisible());
        auto *rate = prefs->findChild<QLineEdit *>(QStringLiteral("taxRate"));
        rate->selectAll();
        QTest::keyClicks(rate, QStringLiteral("17.5"));
        auto *term = prefs->findChild<QLineEdit *>(QStringLiteral("termOrder"));
        term->selectAll();
        QTest::keyClicks(term, QStringLiteral("Job"));
        QTest::mouseClick(prefs->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
        QVERIFY(!prefs->isVisible());
        QCOMPARE(settingsValue("QuorvelTaxRate"), QStringLiteral("17.5"));
        QVERIFY(QFileInfo::exists(platform::paths::bundleFile(QStringLiteral("notepad.rtfd"))));

        // Three orders; a search narrows the list, and one is deleted from the keyboard.
        for (const auto &[number, title] :
             {std::pair{"INV1", "Kitchen"}, {"INV2", "Kitchen sink"}, {"JOB3", "Garden"}}) {
            auto order = std::make_shared<Order>();
            order->setOrderNum(QLatin1String(number));
            order->setTitle(QLatin1String(title));
            quorvel.getOrderManager()->add(order);
        }
        quorvel.getOrderManager()->filter();
        window->tabs()->setCurrentWidget(window->tabWithIdentifier(QStringLiteral("2")));
        auto *search = window->findChild<QLineEdit *>(QStringLiteral("orderSearchField"));
        auto *table = window->findChild<QTableView *>(QStringLiteral("orderTableView"));
        QCOMPARE(table->model()->rowCount(), 3);
        search->setFocus();
        QTest::keyClicks(search, QStringLiteral("kitch"));
        QCOMPARE(table->model()->rowCount(), 2);
        table->setFocus();
        table->selectRow(1);
        TestEnvironment::current().scriptAlertAnswers({1});
        QTest::keyClick(table, Qt::Key_Backspace);
        QCOMPARE(TestEnvironment::current().alertsShown().last().message, QStringLiteral("Delete Order"));
        QCOMPARE(table->model()->rowCount(), 1);
        QCOMPARE(quorvel.getOrderManager()->getCount(), 2);

        // The Delete command of the menu reaches the focused list too.
        table->setFocus();
        table->selectRow(0);
        TestEnvironment::current().scriptAlertAnswers({0});
        triggerMenu(window, "deleteAction");
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 2);
        QCOMPARE(quorvel.getOrderManager()->getCount(), 2);  // cancelled

        // Quit from the menu: everything is written, with no question.
        triggerMenu(window, "quitAction");
        QVERIFY(windows.hasTerminated());
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 2);
        const QByteArray orders = fileBytes(platform::paths::bundleFile(QStringLiteral("orders.xml")));
        QVERIFY(orders.contains("<string>INV1</string>"));
        QVERIFY(!orders.contains("<string>INV2</string>"));
        QVERIFY(orders.contains("<string>JOB3</string>"));
        for (const char *name : {"contacts.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"})
            QVERIFY2(QFileInfo::exists(platform::paths::bundleFile(QLatin1String(name))), name);
        QCOMPARE(settingsValue("QuorvelTermOrder"), QStringLiteral("Job"));
    }

    void shouldStartAgainWithTheNotepadTheModulesAndTheWords()
    {
        // Runs after the first start above, in the same data folder.
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        QVERIFY(QApplication::activeModalWidget() == nullptr);  // no welcome panel this time
        MainWindow *window = windows.mainWindow();

        QCOMPARE(quorvel.getOrderManager()->getCount(), 2);
        QVERIFY(windows.notepadWindow()
                    ->findChild<QTextEdit *>(QStringLiteral("notepadView"))
                    ->toPlainText()
                    .contains(QStringLiteral("Ring the printer man")));
        QVERIFY(quorvel.hasTime() && !quorvel.hasData() && !quorvel.hasAccounts());
        QCOMPARE(tabIdentifiers(window->tabs()), (QStringList{"1", "2", "3", "pro"}));
        const QStringList toolbar = toolbarIdentifiers(window);
        QVERIFY(toolbar.contains(QStringLiteral("todoItemIdentifier")));
        QVERIFY(!toolbar.contains(QStringLiteral("billItemIdentifier")));
        QVERIFY(!toolbar.contains(QStringLiteral("csvItemIdentifier")));
        const auto *newOrder = window->toolBar()->findChild<QAction *>(QStringLiteral("orderItemIdentifier"));
        QCOMPARE(newOrder->text(), QStringLiteral("New Job"));
        QCOMPARE(quorvel.getPrefsController()->getGlobalTaxRate(), 17.5f);
        windows.terminate();
    }
};

QUORVEL_TEST(ProgramTest)
#include "ProgramTest.moc"
