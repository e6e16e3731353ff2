// The preferences as a user meets them in the windows that the program's own
// start-up builds: the user's words on every control they relabel, the
// modules as they are on the welcome panel of a later start, and the
// statuses offered for colouring before anything was ever saved.
#include "FormDriver.h"
#include "Preferences.h"
#include "TestMain.h"

#include "accounts/widgets/BillEditorWindow.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/PrefsWindow.h"
#include "contacts/widgets/CompanyContactEditorWindow.h"
#include "contacts/widgets/ContactEditorWindow.h"
#include "items/widgets/ItemEditorWindow.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
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

QWidget *windowNamed(const ApplicationWindows &windows, const QString &name)
{
    const QList<QWidget *> all{windows.mainWindow(),          windows.prefsWindow(),
                               windows.orderEditorWindow(),   windows.itemEditorWindow(),
                               windows.contactEditorWindow(), windows.companyContactEditorWindow(),
                               windows.billEditorWindow()};
    for (QWidget *window : all) {
        if (window->objectName() == name)
            return window;
    }
    qWarning("no window named %s", qPrintable(name));
    return nullptr;
}

void triggerMenu(const ApplicationWindows &windows, const QString &name)
{
    if (QAction *action = findNamed<QAction>(windows.mainWindow(), qPrintable(name)))
        action->trigger();
}

// Opens a window the way a user does: a command of the main window, or
// "linkToCompany", a new contact handed over to the company-contact editor.
void open(const ApplicationWindows &windows, const QString &how)
{
    if (how.isEmpty())
        return;
    if (how == QLatin1String("linkToCompany")) {
        triggerMenu(windows, QStringLiteral("newContactAction"));
        QTest::mouseClick(findNamed<QPushButton>(windows.contactEditorWindow(), "linkToCompanyButton"), Qt::LeftButton);
        return;
    }
    triggerMenu(windows, how);
}

QStringList itemTexts(const QComboBox *menu)
{
    QStringList texts;
    for (int i = 0; menu && i < menu->count(); ++i)
        texts << menu->itemText(i);
    return texts;
}

// What the control shows: a window's title, an action's or a button's text,
// a label, a tab's label, or a pop-up's items joined by "|".
QString shownText(QWidget *window, const QString &kind, const QString &name, int tab)
{
    const QByteArray widget = name.toLatin1();
    if (kind == QLatin1String("title"))
        return window->windowTitle();
    if (kind == QLatin1String("action")) {
        const auto *action = findNamed<QAction>(window, widget.constData());
        return action ? action->text() : QString();
    }
    if (kind == QLatin1String("button")) {
        const auto *button = findNamed<QAbstractButton>(window, widget.constData());
        return button ? button->text() : QString();
    }
    if (kind == QLatin1String("label")) {
        const auto *label = findNamed<QLabel>(window, widget.constData());
        return label ? label->text() : QString();
    }
    if (kind == QLatin1String("tab")) {
        const auto *tabs = findNamed<QTabWidget>(window, widget.constData());
        return tabs ? tabs->tabText(tab) : QString();
    }
    return itemTexts(findNamed<QComboBox>(window, widget.constData())).join(QLatin1Char('|'));
}

// Answers the welcome panel once it runs: notes which module boxes it shows
// ticked, ticks those given, and presses Start.
struct WelcomeAnswer
{
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

    void shouldShowTheUsersWordsWhereverTheProgramNamesThem_data()
    {
        QTest::addColumn<QString>("opening");  // how the window is opened
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("shown");
        const QString main = QStringLiteral("mainWindow");
        const QString order = QStringLiteral("orderEditorWindow");
        QTest::newRow("File menu: New Order") << "" << main << "action"
                                              << "newOrderAction" << -1 << "New Job";
        QTest::newRow("File menu: New Item") << "" << main << "action"
                                             << "newItemAction" << -1 << "New Part";
        QTest::newRow("toolbar: New Order") << "" << main << "action"
                                            << "orderItemIdentifier" << -1 << "New Job";
        QTest::newRow("main window: orders tab") << "" << main << "tab"
                                                 << "mainTabView" << 1 << "Jobs";
        QTest::newRow("main window: stock tab") << "" << main << "tab"
                                                << "mainTabView" << 2 << "Parts";
        QTest::newRow("preferences: orders tab") << "preferencesAction"
                                                 << "prefsWindow"
                                                 << "tab"
                                                 << "prefsTabView" << 1 << "Jobs";
        QTest::newRow("preferences: items tab") << "preferencesAction"
                                                << "prefsWindow"
                                                << "tab"
                                                << "prefsTabView" << 2 << "Parts";
        QTest::newRow("order editor: title") << "newOrderAction" << order << "title"
                                             << "" << -1 << "Job";
        QTest::newRow("order editor: stock button") << "newOrderAction" << order << "button"
                                                    << "pickMaterialButton" << -1 << "Select From Parts";
        QTest::newRow("order editor: materials tab") << "newOrderAction" << order << "tab"
                                                     << "BOMTabView" << 2 << "Parts List";
        QTest::newRow("order editor: materials heading") << "newOrderAction" << order << "label"
                                                         << "BOMTextField" << -1 << "Parts List";
        // Looked at before an order is opened: a new order's own status is
        // added to the menu when the user's list lacks it.
        QTest::newRow("order editor: statuses") << "" << order << "menu"
                                                << "status" << -1 << "Quoted|Built|Paid";
        QTest::newRow("item editor: title") << ""
                                            << "itemEditorWindow"
                                            << "title"
                                            << "" << -1 << "Part";
        QTest::newRow("item editor opened: title") << "newItemAction"
                                                   << "itemEditorWindow"
                                                   << "title"
                                                   << "" << -1 << "Part";
        QTest::newRow("contact editor: orders tab") << "newContactAction"
                                                    << "contactEditorWindow"
                                                    << "tab"
                                                    << "contactTabView" << 2 << "Jobs";
        QTest::newRow("contact editor: lines tab") << "newContactAction"
                                                   << "contactEditorWindow"
                                                   << "tab"
                                                   << "contactTabView" << 3 << "Parts List";
        QTest::newRow("company contact editor: orders tab") << "linkToCompany"
                                                            << "companyContactEditorWindow"
                                                            << "tab"
                                                            << "companyContactTabView" << 2 << "Jobs";
        QTest::newRow("company contact editor: lines tab") << "linkToCompany"
                                                           << "companyContactEditorWindow"
                                                           << "tab"
                                                           << "companyContactTabView" << 3 << "Parts List";
    }
    void shouldShowTheUsersWordsWhereverTheProgramNamesThem()
    {
        QFETCH(QString, opening);
        QFETCH(QString, window);
        QFETCH(QString, kind);
        QFETCH(QString, control);
        QFETCH(int, tab);
        QFETCH(QString, shown);
        store("QuorvelWelcome", QStringLiteral("YES"));
        store("QuorvelTermOrder", QStringLiteral("Job"));
        store("QuorvelTermOrders", QStringLiteral("Jobs"));
        store("QuorvelTermItem", QStringLiteral("Part"));
        store("QuorvelTermItems", QStringLiteral("Parts"));
        store("QuorvelTermBOM", QStringLiteral("Parts List"));
        store("QuorvelStatuses", QStringLiteral("Quoted\nBuilt\nPaid"));
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();

        open(windows, opening);
        QWidget *shownIn = windowNamed(windows, window);
        QVERIFY(shownIn);
        if (!opening.isEmpty())
            QVERIFY(QTest::qWaitForWindowExposed(shownIn));
        QCOMPARE(shownText(shownIn, kind, control, tab), shown);
    }

    // A category dropped from the list in the preferences leaves the bill
    // editor's menu when OK is pressed.
    void shouldOfferTheBillEditorTheCategoriesOfTheLastOK()
    {
        store("QuorvelWelcome", QStringLiteral("YES"));
        store("QuorvelInvoiceCategories", QStringLiteral("Fuel\nTools"));
        QVERIFY(QDir().mkpath(PrefsController::notepadPath()));  // saved from the preferences before
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        BillEditorWindow *bill = windows.billEditorWindow();
        auto *categories = findNamed<QComboBox>(bill, "category");
        QVERIFY(categories);
        triggerMenu(windows, QStringLiteral("newInvoiceAction"));
        QVERIFY(QTest::qWaitForWindowExposed(bill));
        QCOMPARE(itemTexts(categories), QStringList({"Fuel", "Tools"}));
        QTest::mouseClick(findNamed<QPushButton>(bill, "cancelButton"), Qt::LeftButton);

        triggerMenu(windows, QStringLiteral("preferencesAction"));
        auto *list = findNamed<QPlainTextEdit>(windows.prefsWindow(), "listInvoiceCategories");
        QVERIFY(list);
        list->selectAll();
        QTest::keyClicks(list, QStringLiteral("Fuel"));
        QTest::keyClick(list, Qt::Key_Return);
        QTest::keyClicks(list, QStringLiteral("Rent"));
        QTest::mouseClick(findNamed<QPushButton>(windows.prefsWindow(), "okButton"), Qt::LeftButton);

        triggerMenu(windows, QStringLiteral("newInvoiceAction"));
        QVERIFY(QTest::qWaitForWindowExposed(bill));
        QCOMPARE(itemTexts(categories), QStringList({"Fuel", "Rent"}));
    }

    void shouldShowTheModulesAsTheyAreWhenTheWelcomePanelComesBack_data()
    {
        QTest::addColumn<QStringList>("ticked");
        QTest::addColumn<QStringList>("keys");  // time, accounts, data
        QTest::newRow("none") << QStringList() << QStringList{"NO", "NO", "NO"};
        QTest::newRow("time") << QStringList{"proTimeMmtButton2"} << QStringList{"YES", "NO", "NO"};
        QTest::newRow("accounts and data")
            << QStringList{"proAccountMmtButton2", "proDataMmtButton2"} << QStringList{"NO", "YES", "YES"};
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
        QTest::newRow("statuses stored, no notepad") << "Quoted\nBuilt"
                                                     << "preferencesAction" << QStringList{"Quoted", "Built"};
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

        // The first status can be given its colour at once (chosen in the
        // colour chooser that Set Colour opens).
        QTimer::singleShot(0, prefs, [] {
            auto *chooser = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
            QVERIFY(chooser);
            chooser->setCurrentColor(Qt::red);
            chooser->accept();
        });
        QTest::mouseClick(findNamed<QPushButton>(prefs, "setColourButton"), Qt::LeftButton);
        const QList<QMap<QString, QString>> colours = PrefsController::flagColours();
        QCOMPARE(colours.size(), 1);
        QCOMPARE(colours.first().value(QStringLiteral("Status")), offered.first());
    }
};

QUORVEL_TEST(PreferencesInTheWindowsTest)
#include "PreferencesInTheWindowsTest.moc"
