#include "FormDriver.h"
#include "Preferences.h"
#include "TestMain.h"

#include "app/widgets/PrefsWindow.h"
#include "app/widgets/WelcomePanel.h"
#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <optional>

using testlib::preferences;

class PrefsWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        preferences().clear();
        QDir(platform::paths::quorvelDir()).removeRecursively();
        preferences().setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    }

    void shouldStoreATaxRateTypedIntoTheWindowWhenOKIsPressed()
    {
        PrefsController prefs;
        PrefsWindow window(prefs);
        prefs.openWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *rate = testlib::findNamed<QLineEdit>(&window, "taxRate");
        QVERIFY(rate);
        QCOMPARE(rate->text(), QStringLiteral("20"));
        rate->selectAll();
        QTest::keyClicks(rate, QStringLiteral("17.5"));
        QCOMPARE(prefs.getGlobalTaxRate(), 17.5f);  // used before it is stored

        QTest::mouseClick(testlib::findNamed<QPushButton>(&window, "okButton"), Qt::LeftButton);
        QCOMPARE(preferences().value(QStringLiteral("QuorvelTaxRate")).toString(), QStringLiteral("17.5"));
        QVERIFY(!window.isVisible());
    }

    void shouldShowTheUsersWordsOnTheOrderAndItemTabs()
    {
        preferences().setValue(QStringLiteral("QuorvelTermOrders"), QStringLiteral("Jobs"));
        preferences().setValue(QStringLiteral("QuorvelTermItems"), QStringLiteral("Parts"));
        PrefsController prefs;
        PrefsWindow window(prefs);
        prefs.readDefaults();
        QCOMPARE(window.tabs()->tabText(1), QStringLiteral("Jobs"));
        QCOMPARE(window.tabs()->tabText(2), QStringLiteral("Parts"));
    }

    void shouldShowTheChosenStatusColourInTheWell()
    {
        PrefsController prefs;
        PrefsWindow window(prefs);
        prefs.listStatuses->setString(QStringLiteral("Quote\nOrder"));
        prefs.populateLists();
        prefs.statusColourAssignmentPopUpButton->selectItemAtIndex(1);
        prefs.openWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // "Set Colour..." opens the colour chooser; what is chosen there is
        // kept for the status. Cancelled, nothing is kept.
        const auto choose = [&window](std::optional<QColor> colour) {
            QTimer::singleShot(0, &window, [colour] {
                auto *chooser = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
                QVERIFY(chooser);
                if (!colour) {
                    chooser->reject();
                    return;
                }
                chooser->setCurrentColor(*colour);
                chooser->accept();
            });
            QTest::mouseClick(testlib::findNamed<QPushButton>(&window, "setColourButton"), Qt::LeftButton);
        };
        choose(std::nullopt);
        QCOMPARE(PrefsController::flagColours().size(), 0);
        choose(QColor::fromRgbF(0, 1, 0, 1));
        QCOMPARE(PrefsController::flagColours().size(), 1);

        auto *status = testlib::findNamed<QComboBox>(&window, "statusColourAssignmentPopUpButton");
        QVERIFY(status);
        status->setFocus();
        QTest::keyClick(status, Qt::Key_Up);  // "Quote": no colour yet
        QVERIFY(prefs.colourStatusAssignmentWell->color() == RgbaColour({1, 1, 1, 1}));
        QTest::keyClick(status, Qt::Key_Down);
        QVERIFY(prefs.colourStatusAssignmentWell->color() == RgbaColour({0, 1, 0, 1}));
    }

    void shouldStoreTheModulesTickedOnTheWelcomePanel()
    {
        preferences().clear();
        PrefsController prefs;
        WelcomePanel panel(prefs);
        QTimer::singleShot(0, &panel, [&panel] {
            QTest::mouseClick(testlib::findNamed<QCheckBox>(&panel, "proTimeMmtButton2"), Qt::LeftButton);
            QTest::keyClick(&panel, Qt::Key_Return);
        });
        prefs.readDefaults();
        QCOMPARE(preferences().value(QStringLiteral("QuorvelTimeMmt")).toString(), QStringLiteral("YES"));
        QCOMPARE(preferences().value(QStringLiteral("QuorvelDataMmt")).toString(), QStringLiteral("NO"));
        QVERIFY(!panel.isVisible());
    }
};

QUORVEL_TEST(PrefsWindowTest)
#include "PrefsWindowTest.moc"
