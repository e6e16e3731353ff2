// Dated backups of the database: hard links where the file system allows,
// only the newest kept, and a restore that keeps what it replaces first.
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "platform/Paths.h"
#include "store/Backups.h"
#include "store/DatabaseLock.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QTest>

#include <sys/stat.h>

using testlib::TestEnvironment;

namespace {

const QDateTime noon(QDate(2026, 1, 15), QTime(12, 0, 0));

void writeBundle(const QByteArray &orders)
{
    testlib::writeFile(platform::paths::bundleFile(QStringLiteral("orders.xml")), orders);
    testlib::writeFile(platform::paths::bundleFile(QStringLiteral("contacts.xml")),
                       testlib::plistOf("contacts", {{{"id", "1"}}, {{"id", "2"}}}));
}

ino_t inode(const QString &path)
{
    struct stat info
    { };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_ino : 0;
}

}  // namespace

class BackupsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QDir(platform::paths::quorvelDir()).removeRecursively(); }

    void shouldKeepTheFilesAsTheyAreByLinkingThem()
    {
        QCOMPARE(backups::make(noon, 10), QString());  // nothing to keep yet
        writeBundle(testlib::plistOf("orders", {{{"id", "7"}}}));
        const QString name = backups::make(noon, 10);
        QCOMPARE(name, QStringLiteral("20260115-120000"));
        const QString kept = backups::folder() + QLatin1Char('/') + name + QStringLiteral("/orders.xml");
        QCOMPARE(inode(kept), inode(platform::paths::bundleFile(QStringLiteral("orders.xml"))));
        const QList<backups::Backup> list = backups::list();
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.first().made, noon);
        QCOMPARE(list.first().records[0], 2);  // contacts
        QCOMPARE(list.first().records[1], 1);  // orders
        QCOMPARE(list.first().records[2], -1);  // no items file
        // None kept when the preference says none.
        QCOMPARE(backups::make(noon.addSecs(60), 0), QString());
        QCOMPARE(backups::list().size(), 1);
    }

    void shouldKeepOnlyTheNewest()
    {
        writeBundle(testlib::plistOf("orders", {}));
        for (int n = 0; n < 5; ++n)
            backups::make(noon.addSecs(n), 3);
        const QList<backups::Backup> list = backups::list();
        QCOMPARE(list.size(), 3);
        QCOMPARE(list.first().name, QStringLiteral("20260115-120004"));
        QCOMPARE(list.last().name, QStringLiteral("20260115-120002"));
        // Two in one second both stay.
        QCOMPARE(backups::make(noon.addSecs(4), 10), QStringLiteral("20260115-120004-2"));
    }

    void shouldRestoreAfterKeepingWhatItReplaces()
    {
        const QByteArray before = testlib::plistOf("orders", {{{"id", "1"}}});
        writeBundle(before);
        const QString old = backups::make(noon, 1);
        const QByteArray after = testlib::plistOf("orders", {{{"id", "1"}}, {{"id", "2"}}});
        // The writer replaces the file by a new one.
        QFile::remove(platform::paths::bundleFile(QStringLiteral("orders.xml")));
        testlib::writeFile(platform::paths::bundleFile(QStringLiteral("orders.xml")), after);
        QString kept, why;
        QVERIFY2(backups::restore(old, noon.addSecs(30), 1, &kept, &why), qPrintable(why));
        QCOMPARE(testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml"))), before);
        QCOMPARE(kept, QStringLiteral("20260115-120030"));
        QCOMPARE(testlib::readFile(backups::folder() + QLatin1Char('/') + kept + QStringLiteral("/orders.xml")), after);
        // The backup restored is still there (however few are kept).
        QVERIFY(QFileInfo::exists(backups::folder() + QLatin1Char('/') + old));
    }

    void shouldRefuseNamesThatAreNoBackup_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a path up") << QStringLiteral("../quorveldatabase.qvldb");
        QTest::newRow("absolute") << QStringLiteral("/etc");
        QTest::newRow("not there") << QStringLiteral("20250101-000000");
        QTest::newRow("empty") << QString();
    }
    void shouldRefuseNamesThatAreNoBackup()
    {
        QFETCH(QString, name);
        writeBundle(testlib::plistOf("orders", {}));
        const QByteArray orders = testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml")));
        QString kept, why;
        QVERIFY(!backups::restore(name, noon, 10, &kept, &why));
        QVERIFY(why.contains(QStringLiteral("no backup")));
        QCOMPARE(testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml"))), orders);
    }

    void shouldHoldTheDatabaseForOneWriterAndTakeOverAStaleLock()
    {
        DatabaseLock first;
        QVERIFY(first.tryLock());
        DatabaseLock second;
        QVERIFY(!second.tryLock());
        QVERIFY(second.holder().contains(QString::number(QCoreApplication::applicationPid())));
        first.unlock();
        QVERIFY(second.tryLock());
        second.unlock();
        // A lock left by a program that is gone (a process id no program has).
        testlib::writeFile(DatabaseLock::lockPath(),
                           "2147483000\nquorvel\n" + QSysInfo::machineHostName().toUtf8() + "\n");
        DatabaseLock third;
        QVERIFY(third.tryLock());
    }
};

QUORVEL_TEST(BackupsTest)
#include "BackupsTest.moc"
