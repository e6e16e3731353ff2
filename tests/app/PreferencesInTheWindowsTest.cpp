// The preferences as a user meets them in the windows that the program's own
// start-up builds: the modules as they are on the welcome panel of a later
// start.
#include "FormDriver.h"
#include "Preferences.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/PrefsWindow.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using testlib::findNamed;
using testlib::preferences;

namespace {

QString stored(const char *key)
{
    return preferences().value(QLatin1String(key)).toString();
}

// Answers the welcome panel once it runs: notes which module boxes it shows
// ticked, ticks those given, and presses Start.
struct WelcomeAnswer {
    QStringList shownTicked;
    bool answered = false;

    void at(QObject *context, const QStringList &tick)
    {
        QTimer::singleShot(0, context, [this, tick] {
            auto *panel = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(panel);
            QCOMPARE(panel->objectName(), QStringLiteral("welcomePanel"));
            for (const char *name : {"proTimeMmtButton2", "proAccountMmtButton2", "proDataMmtButton2"}) {
                auto *box = findNamed<QCheckBox>(panel, name);
                QVERIFY(box);
                if (box->isChecked())
                    shownTicked << QLatin1String(name);
                if (tick.contains(QLatin1String(name)) && !box->isChecked())
                    box->click();
            }
            findNamed<QPushButton>(panel, "welcomeStartButton")->click();
            answered = true;
        });
    }
};

}  // namespace

class PreferencesInTheWindowsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        preferences().clear();
        QDir(platform::paths::quorvelDir()).removeRecursively();
    }

    void shouldShowTheModulesAsTheyAreWhenTheWelcomePanelComesBack_data()
    {
        QTest::addColumn<QStringList>("ticked");
        QTest::addColumn<QStringList>("keys");  // time, accounts, data
        QTest::newRow("none") << QStringList() << QStringList{"NO", "NO", "NO"};
        QTest::newRow("time") << QStringList{"proTimeMmtButton2"} << QStringList{"YES", "NO", "NO"};
        QTest::newRow("accounts and data") << QStringList{"proAccountMmtButton2", "proDataMmtButton2"}
                                           << QStringList{"NO", "YES", "YES"};
        QTest::newRow("all three") << QStringList{"proTimeMmtButton2", "proAccountMmtButton2", "proDataMmtButton2"}
                                   << QStringList{"YES", "YES", "YES"};
    }
    void shouldShowTheModulesAsTheyAreWhenTheWelcomePanelComesBack()
    {
        QFETCH(QStringList, ticked);
        QFETCH(QStringList, keys);
        const auto storedModules = [] {
            return QStringList{stored("QuorvelTimeMmt"), stored("QuorvelAccountMmt"), stored("QuorvelDataMmt")};
        };
        {
            // A first start: nothing ticked yet; "Don't show this again" is left alone.
            Quorvel quorvel;
            ApplicationWindows windows(quorvel);
            WelcomeAnswer first;
            first.at(this, ticked);
            windows.start();
            QVERIFY(first.answered);
            QCOMPARE(first.shownTicked, QStringList());
            QCOMPARE(storedModules(), keys);
            windows.terminate();
        }
        // The next start shows the panel again, with the modules as stored;
        // pressing Start keeps them.
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        WelcomeAnswer again;
        again.at(this, {});
        windows.start();
        QVERIFY(again.answered);
        QCOMPARE(again.shownTicked, ticked);
        QCOMPARE(storedModules(), keys);
        for (const char *name : {"proTimeMmtButton", "proAccountMmtButton", "proDataMmtButton"}) {
            const auto *box = findNamed<QCheckBox>(windows.prefsWindow(), name);
            QVERIFY(box);
            QCOMPARE(box->isChecked(), ticked.contains(QLatin1String(name) + QLatin1Char('2')));
        }
    }

};

QUORVEL_TEST(PreferencesInTheWindowsTest)
#include "PreferencesInTheWindowsTest.moc"
