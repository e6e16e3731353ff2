// A first start, on a data folder with no database yet, has everything a
// later start has running.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "Preferences.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "platform/Paths.h"
#include "tasks/ActionManager.h"

#include <QFileInfo>
#include <QTest>

class FirstStartTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldWatchAlarmsWithoutADatabase()
    {
        testlib::preferences().setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        QVERIFY(!QFileInfo::exists(platform::paths::bundleDir()));
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        QVERIFY(quorvel.getActionManager()->isWatchingAlarms());
    }
};

QUORVEL_TEST(FirstStartTest)
#include "FirstStartTest.moc"
