// Nothing is lost, through the program's own windows: a change reaches the
// disk within seconds without Quit (so a program killed then loses nothing),
// a write that fails at any step leaves the old file, keeps the records and
// says so once, Quit asks what to do with what it cannot save, and a second
// start on the same data folder brings the first to the front.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "app/SaveKeeper.h"
#include "app/widgets/SingleInstance.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/DatabaseLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>

using platform::plist::WriteStep;
using testlib::TestEnvironment;
using Program = testlib::RunningProgram;

namespace {

QByteArray onDisk(const char *file)
{
    return testlib::readFile(platform::paths::bundleFile(QLatin1String(file)));
}

// Makes writes of the file fail at one step while it lives.
struct Fault
{
    platform::plist::WriteFault previous;
    Fault(const char *file, WriteStep step)
        : previous(platform::plist::setWriteFault([file, step](WriteStep at, const QString &path) {
              return at == step && path == platform::paths::bundleFile(QLatin1String(file))
                  ? std::optional<QString>(QStringLiteral("disk full"))
                  : std::nullopt;
          }))
    { }
    ~Fault() { platform::plist::setWriteFault(previous); }
};

// The alerts that said a file could not be saved (opening an order may ask
// about its tax rate first).
QList<platform::Alert> savingAlerts()
{
    QList<platform::Alert> said;
    for (const platform::Alert &alert : TestEnvironment::current().alertsShown()) {
        if (alert.message.contains(QLatin1String("could not save")))
            said << alert;
    }
    return said;
}

// Renames the first order in the editor and presses OK.
void renameFirstOrder(Program &program, const QString &title)
{
    program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
    program.named(QStringLiteral("editAction"))->trigger();
    QWidget *editor = program.windows.orderEditorWindow();
    auto *field = editor->findChild<QLineEdit *>(QStringLiteral("title"));
    field->setText(title);
    Q_EMIT field->textEdited(title);
    editor->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
}

}  // namespace

class SavingTest : public QObject
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

    void shouldSaveAChangeWithinSecondsWithoutQuit()
    {
        Program program;
        QVERIFY(onDisk("actions.xml").contains("Ring Ann"));
        Program::deleteSelected(program.list(QStringLiteral("pro"), QStringLiteral("actionTableView"), 0));
        // Killed now, the program would lose nothing: the file already says so.
        QTRY_VERIFY_WITH_TIMEOUT(!onDisk("actions.xml").contains("Ring Ann"), 5000);
        QVERIFY(onDisk("actions.xml").contains("Order glass"));
        QTRY_VERIFY(!program.quorvel.getSaveKeeper()->isPending());
        // The run's first write kept the files as they were.
        QVERIFY(!QDir(platform::paths::quorvelDir() + QStringLiteral("/Backups")).isEmpty());
    }

    void shouldKeepTheOldFileAndSaySoWhenAWriteFails_data()
    {
        QTest::addColumn<WriteStep>("step");
        QTest::newRow("open") << WriteStep::Open;
        QTest::newRow("reserve") << WriteStep::Reserve;
        QTest::newRow("write") << WriteStep::Write;
        QTest::newRow("sync") << WriteStep::Sync;
        QTest::newRow("commit") << WriteStep::Commit;
    }
    void shouldKeepTheOldFileAndSaySoWhenAWriteFails()
    {
        QFETCH(WriteStep, step);
        Program program;
        const QByteArray before = onDisk("orders.xml");
        {
            Fault fault("orders.xml", step);
            renameFirstOrder(program, QStringLiteral("Kitchen refit"));
            QCOMPARE(onDisk("orders.xml"), before);
            const QList<platform::Alert> alerts = savingAlerts();
            QCOMPARE(alerts.size(), 1);
            QCOMPARE(alerts.first().message, QStringLiteral("Quorvel could not save orders.xml."));
            QVERIFY(alerts.first().informativeText.contains(QStringLiteral("disk full")));
            // Failing again is not said again.
            renameFirstOrder(program, QStringLiteral("Kitchen refit 2"));
            QCOMPARE(savingAlerts().size(), 1);
        }
        // The records stayed; the next save writes them.
        renameFirstOrder(program, QStringLiteral("Kitchen refit 3"));
        QVERIFY(onDisk("orders.xml").contains("Kitchen refit 3"));
        QVERIFY(program.quorvel.getSaveKeeper()->failingFiles().isEmpty());
    }

    void shouldAskAtQuitWhatToDoWithWhatCannotBeSaved_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("written");
        QTest::newRow("try again, after room was made") << 1 << true;
        QTest::newRow("quit anyway") << -1 << false;
        QTest::newRow("save a copy elsewhere") << 0 << false;
    }
    void shouldAskAtQuitWhatToDoWithWhatCannotBeSaved()
    {
        QFETCH(int, answer);
        QFETCH(bool, written);
        const QString elsewhere = TestEnvironment::current().root() + QStringLiteral("/usb");
        QDir(elsewhere).removeRecursively();
        QDir().mkpath(elsewhere);
        Program program;
        auto fault = std::make_unique<Fault>("bills.xml", WriteStep::Write);
        Program::deleteSelected(program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), 0));
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().scriptFilePanelAnswers({elsewhere});
        int questions = 0;
        const platform::AlertHandler previous = platform::setAlertHandler([&](const platform::Alert &alert) {
            if (alert.message == QLatin1String("Some of your changes could not be saved.")) {
                ++questions;
                if (answer == 1)
                    fault.reset();  // room was made on the disk
            }
            return questions == 1 && alert.message == QLatin1String("Some of your changes could not be saved.") ? answer
                                                                                                                : 1;
        });
        program.windows.terminate();
        platform::setAlertHandler(previous);
        QCOMPARE(questions, 1);
        QCOMPARE(onDisk("bills.xml").contains("Rent"), !written);
        if (answer == 0) {
            const QByteArray copy = testlib::readFile(elsewhere + QStringLiteral("/quorveldatabase.qvldb/bills.xml"));
            QVERIFY(copy.contains("Power") && !copy.contains("Rent"));
            QVERIFY(
                QFileInfo::exists(elsewhere + QStringLiteral("/quorveldatabase.qvldb/Attachments/Order10/plan.txt")));
        }
    }

    void shouldBringTheRunningProgramToTheFrontFromASecondStart()
    {
        int shown = 0;
        SingleInstance running;
        QVERIFY(running.listen(DatabaseLock::serverName(), [&shown] { ++shown; }));
        QProcess second;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        second.setProcessEnvironment(environment);
        second.start(QStringLiteral(QUORVEL_PROGRAM_PATH),
                     {QStringLiteral("--data-dir"), platform::paths::applicationSupportDir()});
        QVERIFY(second.waitForStarted());
        // The first answers while the second waits for it.
        QTRY_VERIFY_WITH_TIMEOUT(second.state() == QProcess::NotRunning, 20000);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(shown, 1);
    }

    void shouldLoseNothingWhenKilledAfterAChange()
    {
        // The program runs in a process of its own (this test's own
        // executable, running changeAndWaitToBeKilled), makes a change and
        // is killed with SIGKILL once the change is on disk.
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QUORVEL_KILLED_PROGRAM_DATA"), platform::paths::applicationSupportDir());
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("-class"), QStringLiteral("SavingTest"), QStringLiteral("changeAndWaitToBeKilled")});
        QVERIFY(child.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(onDisk("orders.xml").contains("Killed kitchen"), 30000);
        child.kill();
        QVERIFY(child.waitForFinished(10000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        // Every file reads back whole, the change is there, the rest as it was.
        const QList<QVariantMap> orders = testlib::recordsOnDisk(QStringLiteral("orders.xml"));
        QCOMPARE(orders.size(), 3);
        QCOMPARE(std::count_if(orders.begin(), orders.end(),
                               [](const QVariantMap &order) {
                                   return order.value(QStringLiteral("title")) == QLatin1String("Killed kitchen");
                               }),
                 1);
        for (const char *file : {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml",
                                 "actions.xml"})
            QVERIFY2(!testlib::recordsOnDisk(QLatin1String(file)).isEmpty(), file);
        // The dead program's lock is taken over.
        DatabaseLock lock;
        QVERIFY(lock.tryLock());
    }
    void changeAndWaitToBeKilled()
    {
        const QString data = qEnvironmentVariable("QUORVEL_KILLED_PROGRAM_DATA");
        if (data.isEmpty())
            QSKIP("the program that shouldLoseNothingWhenKilledAfterAChange kills");
        platform::paths::setApplicationSupportDir(data);
        DatabaseLock lock;
        QVERIFY(lock.tryLock());
        Program program;
        renameFirstOrder(program, QStringLiteral("Killed kitchen"));
        QTest::qWait(120000);
        QFAIL("not killed");
    }
};

QUORVEL_TEST(SavingTest)
#include "SavingTest.moc"
