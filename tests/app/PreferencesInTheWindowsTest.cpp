// The preferences as a user meets them in the windows that the program's own
// start-up builds: the modules as they are on the welcome panel of a later
// start, and the statuses offered for colouring before anything was ever
// saved.
#include "FormDriver.h"
#include "Preferences.h"
#include "TestMain.h"

#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/PrefsWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using testlib::findNamed;
using testlib::preferences;

namespace {

void store(const char *key, const QString &value)
{
    preferences().setValue(QLatin1String(key), value);
}

QString stored(const char *key)
{
    return preferences().value(QLatin1String(key)).toString();
}

void triggerMenu(const ApplicationWindows &windows, const QString &name)
{
    if (QAction *action = findNamed<QAction>(windows.mainWindow(), qPrintable(name)))
        action->trigger();
}

QStringList itemTexts(const QComboBox *menu)
{
    QStringList texts;
    for (int i = 0; menu && i < menu->count(); ++i)
        texts << menu->itemText(i);
    return texts;
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

    void shouldOfferTheStatusesForColouringBeforeAnythingWasSaved_data()
    {
        QTest::addColumn<QString>("statuses");  // stored; none: the window's own list
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("offered");
        const QStringList standard{"Enquiry", "Quote", "Order", "Invoiced", "Complete"};
        QTest::newRow("fresh folder, menu") << QString() << "preferencesAction" << standard;
        QTest::newRow("fresh folder, toolbar") << QString() << "prefsItemIdentifier" << standard;
        QTest::newRow("statuses stored, no notepad")
            << "Quoted\nBuilt" << "preferencesAction" << QStringList{"Quoted", "Built"};
    }
    void shouldOfferTheStatusesForColouringBeforeAnythingWasSaved()
    {
        QFETCH(QString, statuses);
        QFETCH(QString, command);
        QFETCH(QStringList, offered);
        store("QuorvelWelcome", QStringLiteral("YES"));
        if (!statuses.isNull())
            store("QuorvelStatuses", statuses);
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        QVERIFY(!QFileInfo::exists(PrefsController::notepadPath()));

        triggerMenu(windows, command);
        PrefsWindow *prefs = windows.prefsWindow();
        QVERIFY(QTest::qWaitForWindowExposed(prefs));
        prefs->tabs()->setCurrentWidget(findNamed<QWidget>(prefs, "prefsTab_colours"));
        auto *status = findNamed<QComboBox>(prefs, "statusColourAssignmentPopUpButton");
        QVERIFY(status);
        QCOMPARE(itemTexts(status), offered);
        QCOMPARE(status->currentText(), offered.first());

        // The first status can be given its colour at once.
        QTest::mouseClick(findNamed<QPushButton>(prefs, "setColourButton"), Qt::LeftButton);
        const QList<QMap<QString, QString>> colours = PrefsController::flagColours();
        QCOMPARE(colours.size(), 1);
        QCOMPARE(colours.first().value(QStringLiteral("Status")), offered.first());
    }
};

QUORVEL_TEST(PreferencesInTheWindowsTest)
#include "PreferencesInTheWindowsTest.moc"
