#include "Preferences.h"
#include "TestMain.h"

#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>
#include <functional>

using testlib::preferences;

namespace {

void store(const QString &key, const QVariant &value)
{
    preferences().setValue(key, value);
}

QString stored(const QString &key)
{
    return preferences().value(key).toString();
}

void makeNotepad()
{
    QVERIFY(QDir().mkpath(PrefsController::notepadPath()));
}

QVariantMap flag(const QString &status, const QString &red, const QString &green, const QString &blue)
{
    return {{QStringLiteral("Status"), status},
            {QStringLiteral("redComponent"), red},
            {QStringLiteral("greenComponent"), green},
            {QStringLiteral("blueComponent"), blue},
            {QStringLiteral("alphaComponent"), QStringLiteral("0.200000")}};
}

using Getter = std::function<QString(const PrefsController &)>;

}  // namespace

Q_DECLARE_METATYPE(Getter)
Q_DECLARE_METATYPE(RgbaColour)

class PrefsControllerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        preferences().clear();
        QDir(platform::paths::quorvelDir()).removeRecursively();
        store(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    }

    void shouldStoreTheModulesTickedOnTheWelcomePanelOfAFirstStart_data()
    {
        QTest::addColumn<QString>("declined");
        QTest::addColumn<bool>("dontShow");
        QTest::addColumn<int>("runs");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("welcome");
        QTest::newRow("time only") << QString() << false << 1 << "YES" << QString();
        QTest::newRow("not again") << QString() << true << 1 << "YES"
                                   << "YES";
        QTest::newRow("declined before") << "YES" << false << 0 << QString() << "YES";
    }
    void shouldStoreTheModulesTickedOnTheWelcomePanelOfAFirstStart()
    {
        QFETCH(QString, declined);
        QFETCH(bool, dontShow);
        QFETCH(int, runs);
        QFETCH(QString, time);
        QFETCH(QString, welcome);
        preferences().clear();
        if (!declined.isNull())
            store(QStringLiteral("QuorvelWelcome"), declined);
        PrefsController prefs;
        int shown = 0;
        connect(prefs.welcomePanel, &Window::modalRequested, this, [&](int *) {
            ++shown;
            prefs.proTimeMmtButton2->userSetState(true);
            prefs.dontShowWelcomeButton->userSetState(dontShow);
        });
        prefs.readDefaults();
        QCOMPARE(shown, runs);
        QCOMPARE(stored(QStringLiteral("QuorvelTimeMmt")), time);
        QCOMPARE(stored(QStringLiteral("QuorvelAccountMmt")), runs ? QStringLiteral("NO") : QString());
        QCOMPARE(stored(QStringLiteral("QuorvelDataMmt")), runs ? QStringLiteral("NO") : QString());
        QCOMPARE(prefs.proTimeMmtButton->state(), runs == 1);
        QCOMPARE(stored(QStringLiteral("QuorvelWelcome")), welcome);
    }

    void shouldFillAFieldFromItsStoredValueAndKeepTheDefaultWithoutOne_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<Getter>("getter");
        QTest::addColumn<QString>("firstStart");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("read");
        QTest::newRow("order prefix") << "QuorvelOrderPrefix" << Getter(&PrefsController::getOrderPrefix) << "INV"
                                      << "J-"
                                      << "J-";
        QTest::newRow("item prefix") << "QuorvelItemPrefix" << Getter(&PrefsController::getItemPrefix) << "ITM"
                                     << "P"
                                     << "P";
        QTest::newRow("items word") << "QuorvelTermItems" << Getter(&PrefsController::getTermItems) << "Items"
                                    << "Parts"
                                    << "Parts";
        QTest::newRow("tax statement, trimmed")
            << "QuorvelTaxStatement" << Getter(&PrefsController::getTaxStatement) << ""
            << " VAT  no. 12 \n"
            << "VAT  no. 12";
        QTest::newRow("tax rate") << "QuorvelTaxRate" << Getter([](const PrefsController &p) {
            return QString::number(p.getGlobalTaxRate());
        }) << "20"
                                  << "17.5%"
                                  << "17.5";
        QTest::newRow("contact types") << "QuorvelContactTypes" << Getter([](const PrefsController &p) {
            return p.getContactTypeList()->join(u'|');
        }) << "Customer|Supplier|Other"
                                       << "Trade\nPublic"
                                       << "Trade|Public";
    }
    void shouldFillAFieldFromItsStoredValueAndKeepTheDefaultWithoutOne()
    {
        QFETCH(QString, key);
        QFETCH(Getter, getter);
        QFETCH(QString, firstStart);
        QFETCH(QString, value);
        QFETCH(QString, read);
        {
            PrefsController prefs;
            prefs.readDefaults();
            QCOMPARE(getter(prefs), firstStart);
        }
        store(key, value);
        PrefsController prefs;
        prefs.readDefaults();
        QCOMPARE(getter(prefs), read);
    }

    void shouldApplyTheStoredDateFormat_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("uk");
        QTest::newRow("month first") << QVariant(QStringLiteral("1")) << "mm/dd/yy"
                                     << "%m/%d/%y" << false;
        QTest::newRow("day first") << QVariant(QStringLiteral("0")) << "dd/mm/yy"
                                   << "%d/%m/%y" << true;
        QTest::newRow("absent") << QVariant() << "dd/mm/yy"
                                << "%d/%m/%y" << true;
    }
    void shouldApplyTheStoredDateFormat()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, label);
        QFETCH(QString, format);
        QFETCH(bool, uk);
        if (value.isValid())
            store(QStringLiteral("QuorvelDateFormat"), value);
        PrefsController prefs;
        TextField field;
        TextField text;
        prefs.dateFields = {&field};
        prefs.dateFormatTexts = {&text};
        prefs.readDefaults();
        QCOMPARE(text.stringValue(), label);
        QCOMPARE(field.dateFormat(), format);
        QCOMPARE(prefs.isUKFormat(), uk);
    }

    void shouldSwitchTheModulesOnlyWhenTheNotepadExists_data()
    {
        QTest::addColumn<bool>("notepad");
        QTest::addColumn<QString>("accountsValue");
        QTest::addColumn<QStringList>("tabs");
        QTest::addColumn<bool>("accounts");
        QTest::addColumn<bool>("others");
        const QStringList all{"1", "2", "3", "pro", "pro2", "pro3"};
        QTest::newRow("no notepad") << false << "NO" << all << false << false;
        QTest::newRow("accounts off") << true << "NO" << QStringList{"1", "2", "3", "pro", "pro3"} << false << true;
        QTest::newRow("accounts on") << true << "YES" << all << true << true;
        QTest::newRow("keys absent") << true << QString() << all << true << true;
    }
    void shouldSwitchTheModulesOnlyWhenTheNotepadExists()
    {
        QFETCH(bool, notepad);
        QFETCH(QString, accountsValue);
        QFETCH(QStringList, tabs);
        QFETCH(bool, accounts);
        QFETCH(bool, others);
        if (notepad)
            makeNotepad();
        if (!accountsValue.isNull())
            store(QStringLiteral("QuorvelAccountMmt"), accountsValue);
        PrefsController prefs;
        TabView mainTabs;
        mainTabs.setTabs({"1", "2", "3", "pro", "pro2", "pro3"}, {});
        PopUp statusMenu;
        prefs.mainTabView = &mainTabs;
        prefs.statusListPopUpButton = &statusMenu;
        QStringList loaded;
        connect(prefs.notepadView, &TextView::readRequested, this, [&](const QString &path, bool *ok) {
            loaded << path;
            *ok = true;
        });
        prefs.readDefaults();
        QCOMPARE(mainTabs.identifiers(), tabs);
        QCOMPARE(prefs.hasAccounts(), accounts);
        QCOMPARE(prefs.hasTime(), others);
        QCOMPARE(prefs.hasData(), others);
        QCOMPARE(loaded, notepad ? QStringList{PrefsController::notepadPath()} : QStringList());
        QCOMPARE(statusMenu.numberOfItems(), notepad ? 5 : 0);
    }

    void shouldStoreEveryValueAndWriteTheNotepadOnOK()
    {
        PrefsController prefs;
        prefs.prefsWindow->makeKeyAndOrderFront();
        prefs.taxStatement->userSetStringValue(QStringLiteral("VAT no. 123"));
        prefs.dateFormat->userSelectColumn(1);
        prefs.proDataMmtButton->userSetState(true);
        prefs.listStatuses->userSetString(QStringLiteral("Open\nShut"));
        connect(prefs.notepadView, &TextView::writeRequested, this, [](const QString &path, bool *ok) {
            QFile file(path);
            *ok = file.open(QIODevice::WriteOnly) && file.write("{\\rtf1 notes}") > 0;
        });
        prefs.OKButton();

        QVERIFY(!prefs.prefsWindow->isVisible());
        QCOMPARE(stored(QStringLiteral("QuorvelTaxStatement")), QStringLiteral("VAT no. 123"));
        QCOMPARE(stored(QStringLiteral("QuorvelDateFormat")), QStringLiteral("1"));
        QCOMPARE(stored(QStringLiteral("QuorvelDataMmt")), QStringLiteral("YES"));
        QCOMPARE(stored(QStringLiteral("QuorvelTimeMmt")), QStringLiteral("NO"));
        QCOMPARE(stored(QStringLiteral("QuorvelStatuses")), QStringLiteral("Open\nShut"));
        for (const char *key :
             {"TaxRate", "Currency", "OrderPrefix", "ItemPrefix", "StockWarn", "TermOrder", "TermOrders", "TermItem",
              "TermItems", "TermBOM", "InvoiceCategories", "ContactTypes", "AccountMmt"})
            QVERIFY2(preferences().contains(QLatin1String("Quorvel") + QLatin1String(key)), key);
        QVERIFY(QFile::exists(platform::paths::bundleDir() + QStringLiteral("/notepad.rtfd")));
        QCOMPARE(prefs.statusColourAssignmentPopUpButton->itemTitles(), QStringList({"Open", "Shut"}));
    }

    void shouldAddTheContactTypesAgainEachTimeOKIsPressed()
    {
        PrefsController prefs;
        PopUp contactTypes;
        contactTypes.addItem(QStringLiteral("Trade"));
        prefs.contactTypePopUpButton = &contactTypes;
        prefs.listContactTypes->setString(QStringLiteral("A\nB"));
        prefs.OKButton();
        prefs.OKButton();
        QCOMPARE(contactTypes.itemTitles(), QStringList({"Trade", "A", "B", "A", "B"}));

        prefs.listContactTypes->setString(QStringLiteral(""));
        prefs.listStatuses->setString(QStringLiteral(""));
        prefs.populateLists();
        QVERIFY(!prefs.getContactTypeList().has_value());
        QCOMPARE(contactTypes.numberOfItems(), 5);
        QCOMPARE(prefs.getStatusList(), QStringList({QString()}));
        QCOMPARE(prefs.statusColourAssignmentPopUpButton->itemTitles(), QStringList({QString()}));
    }

    void shouldReplaceEveryEntryOfTheStatusWhenAColourIsSet_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<QStringList>("statuses");
        QTest::newRow("two entries replaced") << "Quote" << QStringList{"Quote", "Order", "Quote"};
        QTest::newRow("new status appended") << "Invoiced" << QStringList{"Quote", "Order", "Quote", "Invoiced"};
    }
    void shouldReplaceEveryEntryOfTheStatusWhenAColourIsSet()
    {
        QFETCH(QString, status);
        QFETCH(QStringList, statuses);
        store(
            QStringLiteral("QuorvelFlagColours"),
            QVariantList{flag("Quote", "1.0", "0", "0"), flag("Order", "0", "1.0", "0"), flag("Quote", "0", "0", "1")});
        PrefsController prefs;
        QVERIFY(prefs.colourForStatus(status) != RgbaColour({0.5f, 0.25f, 1, 1}));
        prefs.statusColourAssignmentPopUpButton->addItems({"Quote", "Order", "Invoiced"});
        prefs.statusColourAssignmentPopUpButton->selectItemWithTitle(status);
        prefs.colourStatusAssignmentWell->userSetColor({0.5f, 0.25f, 1, 1});
        prefs.setColorForStatus();

        const QList<QMap<QString, QString>> entries = PrefsController::flagColours();
        QStringList names;
        for (const auto &entry : entries) {
            names << entry.value("Status");
            if (entry.value("Status") == status) {
                QCOMPARE(entry.value("redComponent"), QStringLiteral("0.500000"));
                QCOMPARE(entry.value("greenComponent"), QStringLiteral("0.250000"));
                QCOMPARE(entry.value("alphaComponent"), QStringLiteral("1.000000"));
            }
        }
        QCOMPARE(names, statuses);
        QCOMPARE(entries.at(1).value("greenComponent"), QStringLiteral("1.0"));
        QVERIFY(prefs.colourForStatus(status) == RgbaColour({0.5f, 0.25f, 1, 1}));
    }

    void shouldShowTheLastStoredColourOfTheChosenStatusInTheWell_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<RgbaColour>("well");
        QTest::newRow("last of two, opaque") << "Quote" << RgbaColour{0, 0, 1, 1};
        QTest::newRow("no entry: white") << "Order" << RgbaColour{1, 1, 1, 1};
    }
    void shouldShowTheLastStoredColourOfTheChosenStatusInTheWell()
    {
        QFETCH(QString, status);
        QFETCH(RgbaColour, well);
        store(QStringLiteral("QuorvelFlagColours"),
              QVariantList{flag("Quote", "1.000000", "0", "0"), flag("Quote", "0", "0", "1.000000")});
        PrefsController prefs;
        prefs.colourStatusAssignmentWell->setColor({0.1f, 0.1f, 0.1f, 0.1f});
        prefs.statusColourAssignmentPopUpButton->addItems({"Quote", "Order"});
        prefs.statusColourAssignmentPopUpButton->userSelectItemAtIndex(
            prefs.statusColourAssignmentPopUpButton->indexOfItemWithTitle(status));
        prefs.statusSelectorHasChanged();
        QVERIFY(prefs.colourStatusAssignmentWell->color() == well);
        if (status == QLatin1String("Quote"))
            QVERIFY(prefs.colourForStatus(status) == RgbaColour({1, 0, 0, 1}));  // rows take the first
    }

    void shouldRelabelTheInterfaceWithTheUsersWords()
    {
        store(QStringLiteral("QuorvelTermOrders"), QStringLiteral("Jobs"));
        store(QStringLiteral("QuorvelTermItems"), QStringLiteral("Parts"));
        store(QStringLiteral("QuorvelTermBOM"), QStringLiteral("Parts List"));
        store(QStringLiteral("QuorvelTermItem"), QStringLiteral("Part"));
        store(QStringLiteral("QuorvelTermOrder"), QStringLiteral("Job"));
        PrefsController prefs;
        prefs.contactTabView->setTabs({"a", "b", "c", "d"}, {"A", "B", "C", "D"});
        Window itemWindow;
        prefs.itemWindow = &itemWindow;
        prefs.prefsTabView->setTabs({"general", "orders", "items"}, {"General", "Orders", "Items"});
        prefs.readDefaults();
        QCOMPARE(prefs.selectFromItemsButton->title(), QStringLiteral("Select From Parts"));
        QCOMPARE(itemWindow.title(), QStringLiteral("Part"));
        // The menu items read as the toolbar's New commands.
        QCOMPARE(prefs.itemMenuItem->title(), QStringLiteral("New Part"));
        QCOMPARE(prefs.orderMenuItem->title(), QStringLiteral("New Job"));
        QCOMPARE(prefs.prefsTabView->labelAt(1), QStringLiteral("Jobs"));
        QCOMPARE(prefs.prefsTabView->labelAt(2), QStringLiteral("Parts"));
        QCOMPARE(prefs.contactTabView->labelAt(2), QStringLiteral("Jobs"));
        QCOMPARE(prefs.contactTabView->labelAt(3), QStringLiteral("Parts List"));
    }
};

QUORVEL_TEST(PrefsControllerTest)
#include "PrefsControllerTest.moc"
