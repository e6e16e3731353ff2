// Quitting ends the program: the Quit command of the real windows ends the
// event loop after everything is written, and the installed program itself,
// told by the system that the session ends, saves and exits.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "Preferences.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>

using testlib::TestEnvironment;

namespace {

const char *const bundleFiles[]
    = {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"};

// Runs the event loop until something ends it; a loop nothing ends is ended
// after `limit` with the code 99.
int runEventLoop(int limitMs)
{
    QTimer failsafe;
    failsafe.setSingleShot(true);
    QObject::connect(&failsafe, &QTimer::timeout, [] { QCoreApplication::exit(99); });
    failsafe.start(limitMs);
    return QApplication::exec();
}

}  // namespace

class QuitTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldEndTheEventLoopAfterSavingWhenQuitIsChosen()
    {
        testlib::preferences().setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        auto order = std::make_shared<Order>();
        order->setOrderNum(QStringLiteral("INV1"));
        quorvel.getOrderManager()->add(order);

        auto *quit = windows.mainWindow()->findChild<QAction *>(QStringLiteral("quitAction"));
        QVERIFY(quit);
        QCOMPARE(quit->shortcut(), QKeySequence(QKeySequence::Quit));
        QTimer::singleShot(0, quit, &QAction::trigger);
        QCOMPARE(runEventLoop(10000), 0);
        QVERIFY(testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml"))).contains("INV1"));
        for (const char *name : bundleFiles)
            QVERIFY2(QFileInfo::exists(platform::paths::bundleFile(QLatin1String(name))), name);
    }

    void shouldSaveAndExitWhenTheSessionEnds()
    {
        QTemporaryDir data;
        QVERIFY(data.isValid());
        // A saved start: no welcome panel waits for an answer.
        QVERIFY(testlib::writeFile(data.path() + QStringLiteral("/Quorvel/preferences/Quorvel/Quorvel.conf"),
                                   "[General]\nQuorvelWelcome=YES\n"));
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("HOME"), TestEnvironment::current().homeDir());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(QUORVEL_PROGRAM_PATH),
                      {QStringLiteral("--data-dir"), data.path(), QStringLiteral("--startup-time")});
        QVERIFY(program.waitForStarted(10000));
        // The program says when its window is usable.
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += program.readAllStandardError()).contains("usable main window"), 30000);

        ::kill(pid_t(program.processId()), SIGTERM);
        QVERIFY(program.waitForFinished(30000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        const QString bundle = data.path() + QStringLiteral("/Quorvel/quorveldatabase.qvldb/");
        for (const char *name : bundleFiles)
            QVERIFY2(QFileInfo::exists(bundle + QLatin1String(name)), name);
    }
};

QUORVEL_TEST(QuitTest)
#include "QuitTest.moc"
