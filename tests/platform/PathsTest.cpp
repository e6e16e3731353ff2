#include "TestEnvironment.h"
#include "TestMain.h"

#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace paths = platform::paths;

class PathsTest : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();
    void shouldDeriveTheBundleFromTheSupportFolder();
    void shouldFallBackToXdgDataHome();
    void shouldFallBackToLocalShareInTheHomeFolder();
    void shouldExpandATilde_data();
    void shouldExpandATilde();
    void shouldFindAChildFolderIgnoringCase_data();
    void shouldFindAChildFolderIgnoringCase();
    void shouldPreferTheExactSpellingWhenBothExist();
    void shouldNeverCreateAnything();
    void shouldAnswerTheFixedMomentWhenPinned();
    void shouldAnswerTheDefaultButtonWithoutAHandler();
};

void PathsTest::cleanup()
{
    auto &environment = testlib::TestEnvironment::current();
    paths::setApplicationSupportDir(environment.supportDir());
    paths::setHomeDir(environment.homeDir());
}

void PathsTest::shouldDeriveTheBundleFromTheSupportFolder()
{
    QTemporaryDir support;
    paths::setApplicationSupportDir(support.path());
    QCOMPARE(paths::applicationSupportDir(), support.path());
    QCOMPARE(paths::quorvelDir(), support.path() + "/Quorvel");
    QCOMPARE(paths::bundleDir(), support.path() + "/Quorvel/quorveldatabase.qvldb");
    QCOMPARE(paths::bundleFile("orders.xml"), support.path() + "/Quorvel/quorveldatabase.qvldb/orders.xml");
    QCOMPARE(paths::itemImagePath(42), support.path() + "/Quorvel/quorveldatabase.qvldb/ItemImages/42.tiff");
    QCOMPARE(paths::attachmentsDir(), support.path() + "/Quorvel/quorveldatabase.qvldb/Attachments");
    QCOMPARE(paths::reportsDir(), support.path() + "/Quorvel/reports");
    QCOMPARE(paths::legacyDatabaseFile(), paths::homeDir() + "/Quorvel/quorveldatabase.xml");
}

void PathsTest::shouldFallBackToXdgDataHome()
{
    QTemporaryDir xdg;
    const QByteArray saved = qgetenv("XDG_DATA_HOME");
    const bool had = qEnvironmentVariableIsSet("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(xdg.path()));
    paths::setApplicationSupportDir(QString());
    const QString support = paths::applicationSupportDir();
    const QString bundle = paths::bundleDir();
    if (had)
        qputenv("XDG_DATA_HOME", saved);
    else
        qunsetenv("XDG_DATA_HOME");
    QCOMPARE(support, xdg.path());
    QCOMPARE(bundle, xdg.path() + "/Quorvel/quorveldatabase.qvldb");
}

void PathsTest::shouldFallBackToLocalShareInTheHomeFolder()
{
    QTemporaryDir home;
    const QByteArray saved = qgetenv("XDG_DATA_HOME");
    const bool had = qEnvironmentVariableIsSet("XDG_DATA_HOME");
    qunsetenv("XDG_DATA_HOME");
    paths::setApplicationSupportDir(QString());
    paths::setHomeDir(home.path());
    const QString support = paths::applicationSupportDir();
    if (had)
        qputenv("XDG_DATA_HOME", saved);
    QCOMPARE(support, home.path() + "/.local/share");
}

void PathsTest::shouldExpandATilde_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    const QString home = testlib::TestEnvironment::current().homeDir();
    QTest::newRow("tilde alone") << "~" << home;
    QTest::newRow("tilde slash") << "~/Documents/a.csv" << home + "/Documents/a.csv";
    QTest::newRow("another user") << "~bob/a"
                                  << "~bob/a";
    QTest::newRow("absolute") << "/tmp/~/a"
                              << "/tmp/~/a";
    QTest::newRow("relative") << "a/b"
                              << "a/b";
}

void PathsTest::shouldExpandATilde()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(paths::expandTilde(path), expected);
}

void PathsTest::shouldFindAChildFolderIgnoringCase_data()
{
    QTest::addColumn<QString>("existing");  // folder made on disk, "" for none
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lower case on disk") << "attachments"
                                        << "Attachments"
                                        << "attachments";
    QTest::newRow("capitalised on disk") << "Reports"
                                         << "reports"
                                         << "Reports";
    QTest::newRow("odd case on disk") << "REPORTS"
                                      << "reports"
                                      << "REPORTS";
    QTest::newRow("nothing on disk") << ""
                                     << "Attachments"
                                     << "Attachments";
    QTest::newRow("only a different name") << "Attachment"
                                           << "Attachments"
                                           << "Attachments";
}

void PathsTest::shouldFindAChildFolderIgnoringCase()
{
    QFETCH(QString, existing);
    QFETCH(QString, asked);
    QFETCH(QString, expected);
    QTemporaryDir parent;
    if (!existing.isEmpty())
        QVERIFY(QDir(parent.path()).mkdir(existing));
    QCOMPARE(paths::caseInsensitiveChild(parent.path(), asked), parent.path() + "/" + expected);
}

void PathsTest::shouldPreferTheExactSpellingWhenBothExist()
{
    QTemporaryDir support;
    paths::setApplicationSupportDir(support.path());
    QVERIFY(QDir().mkpath(paths::bundleDir() + "/attachments"));
    QCOMPARE(paths::attachmentsDir(), paths::bundleDir() + "/attachments");
    QVERIFY(QDir().mkpath(paths::quorvelDir() + "/Reports"));
    QCOMPARE(paths::reportsDir(), paths::quorvelDir() + "/Reports");
    QVERIFY(QDir().mkpath(paths::quorvelDir() + "/reports"));
    QCOMPARE(paths::reportsDir(), paths::quorvelDir() + "/reports");
}

void PathsTest::shouldNeverCreateAnything()
{
    QTemporaryDir support;
    paths::setApplicationSupportDir(support.path());
    paths::bundleDir();
    paths::bundleFile("contacts.xml");
    paths::itemImagesDir();
    paths::itemImagePath(1);
    paths::attachmentsDir();
    paths::reportsDir();
    paths::legacyDatabaseFile();
    QVERIFY(QDir(support.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).isEmpty());
}

void PathsTest::shouldAnswerTheFixedMomentWhenPinned()
{
    const QDateTime pinned(QDate(2030, 5, 6), QTime(7, 8));
    platform::setFixedNow(pinned);
    QCOMPARE(platform::now(), pinned);
    platform::setFixedNow(QDateTime());
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime real = platform::now();
    QVERIFY(real >= before);
    QVERIFY(real.secsTo(QDateTime::currentDateTime()) < 5);
    platform::setFixedNow(testlib::TestEnvironment::fixedNow());
}

void PathsTest::shouldAnswerTheDefaultButtonWithoutAHandler()
{
    platform::AlertHandler previous = platform::setAlertHandler(nullptr);
    const int answer = platform::runAlert("Printed on standard error", "No window here", "Yes", "No");
    platform::setAlertHandler(previous);
    QCOMPARE(answer, 1);
}

QUORVEL_TEST(PathsTest)
#include "PathsTest.moc"
