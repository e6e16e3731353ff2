#include "store/PrefsController.h"

#include "store/QuorvelServices.h"

#include "platform/Dates.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "store/kdToolBox.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSettings>
#include <QVariant>

using platform::localised;

namespace {

const QString keyWelcome = QStringLiteral("QuorvelWelcome");
const QString keyAccountMmt = QStringLiteral("QuorvelAccountMmt");
const QString keyDataMmt = QStringLiteral("QuorvelDataMmt");
const QString keyTimeMmt = QStringLiteral("QuorvelTimeMmt");
const QString keyTaxRate = QStringLiteral("QuorvelTaxRate");
const QString keyTaxStatement = QStringLiteral("QuorvelTaxStatement");
const QString keyDateFormat = QStringLiteral("QuorvelDateFormat");
const QString keyCurrency = QStringLiteral("QuorvelCurrency");
const QString keyOrderPrefix = QStringLiteral("QuorvelOrderPrefix");
const QString keyItemPrefix = QStringLiteral("QuorvelItemPrefix");
const QString keyStockWarn = QStringLiteral("QuorvelStockWarn");
const QString keyTermOrder = QStringLiteral("QuorvelTermOrder");
const QString keyTermOrders = QStringLiteral("QuorvelTermOrders");
const QString keyTermItem = QStringLiteral("QuorvelTermItem");
const QString keyTermItems = QStringLiteral("QuorvelTermItems");
const QString keyTermBOM = QStringLiteral("QuorvelTermBOM");
const QString keyInvoiceCategories = QStringLiteral("QuorvelInvoiceCategories");
const QString keyStatuses = QStringLiteral("QuorvelStatuses");
const QString keyContactTypes = QStringLiteral("QuorvelContactTypes");
const QString keyFlagColours = QStringLiteral("QuorvelFlagColours");

const QString yes = QStringLiteral("YES");
const QString no = QStringLiteral("NO");

const QString statusKey = QStringLiteral("Status");
const QString redKey = QStringLiteral("redComponent");
const QString greenKey = QStringLiteral("greenComponent");
const QString blueKey = QStringLiteral("blueComponent");
const QString alphaKey = QStringLiteral("alphaComponent");

// The tabs of the main window that belong to the optional modules.
const QString accountsTab = QStringLiteral("pro2");
const QString dataTab = QStringLiteral("pro3");
const QString timeTab = QStringLiteral("pro");

QSettings preferences()
{
    return QSettings(PrefsController::settingsName(), PrefsController::settingsName());
}

// A stored value into a text field, only when the key is present.
void fillField(const QSettings &settings, const QString &key, TextField *field)
{
    if (field && settings.contains(key))
        field->setStringValue(settings.value(key).toString());
}

void fillView(const QSettings &settings, const QString &key, TextView *view)
{
    if (view && settings.contains(key))
        view->setString(settings.value(key).toString());
}

QString yesOrNo(const CheckBox *box)
{
    return box && box->state() ? yes : no;
}

void relabel(TabView *tabs, int index, const QString &label)
{
    if (tabs)
        tabs->setLabel(index, label);
}

// The status is compared exactly; no selection matches nothing.
bool hasStatus(const QVariantMap &entry, const QString &status)
{
    return !status.isNull() && entry.value(statusKey).toString() == status;
}

RgbaColour opaqueColourOf(const QMap<QString, QString> &entry)
{
    return {platform::floatValue(entry.value(redKey)), platform::floatValue(entry.value(greenKey)),
            platform::floatValue(entry.value(blueKey)), 1.0f};
}

QMap<QString, QString> entryOf(const QVariantMap &map)
{
    QMap<QString, QString> entry;
    for (auto it = map.constBegin(); it != map.constEnd(); ++it)
        entry.insert(it.key(), it.value().toString());
    return entry;
}

// The system's currency symbol; the dollar sign where the system names none
// (the "C" locale).
QString systemCurrencySymbol()
{
    const QString symbol = QLocale::system().currencySymbol(QLocale::CurrencySymbol);
    return symbol.isEmpty() ? QStringLiteral("$") : symbol;
}

}  // namespace

PrefsController::PrefsController(QObject *parent)
    : QObject(parent),
      prefsWindow(new Window(this)),
      prefsTabView(new TabView(this)),
      taxRate(new TextField(this)),
      taxStatement(new TextField(this)),
      currencyField(new TextField(this)),
      orderPrefixField(new TextField(this)),
      itemPrefixField(new TextField(this)),
      stockWarn(new TextField(this)),
      termOrder(new TextField(this)),
      termOrders(new TextField(this)),
      termItem(new TextField(this)),
      termItems(new TextField(this)),
      termBOM(new TextField(this)),
      dateFormat(new Matrix({QStringLiteral("dd/mm/yy"), QStringLiteral("mm/dd/yy")}, this)),
      listInvoiceCategories(new TextView(this)),
      listStatuses(new TextView(this)),
      listContactTypes(new TextView(this)),
      proAccountMmtButton(new CheckBox(this)),
      proDataMmtButton(new CheckBox(this)),
      proTimeMmtButton(new CheckBox(this)),
      statusColourAssignmentPopUpButton(new PopUp(this)),
      colourStatusAssignmentWell(new ColorWell(this)),
      welcomePanel(new Window(this)),
      proAccountMmtButton2(new CheckBox(this)),
      proDataMmtButton2(new CheckBox(this)),
      proTimeMmtButton2(new CheckBox(this)),
      dontShowWelcomeButton(new CheckBox(this)),
      notepadView(new TextView(this))
{
    // The controls of other windows that only the preferences relabel.
    BOMTabView = new TabView(this);
    BOMTextField = new TextField(this);
    selectFromItemsButton = new Button(this);
    contactTabView = new TabView(this);
    companyContactTabView = new TabView(this);
    orderMenuItem = new Button(this);
    itemMenuItem = new Button(this);

    // What the window shows before anything is stored.
    prefsWindow->setTitle(localised("Preferences"));
    welcomePanel->setTitle(localised("Welcome to Quorvel"));
    taxRate->setStringValue(QStringLiteral("20"));
    taxStatement->setStringValue(QStringLiteral(""));
    currencyField->setStringValue(systemCurrencySymbol());
    orderPrefixField->setStringValue(QStringLiteral("INV"));
    itemPrefixField->setStringValue(QStringLiteral("ITM"));
    stockWarn->setStringValue(QStringLiteral("5"));
    termOrder->setStringValue(localised("Order"));
    termOrders->setStringValue(localised("Orders"));
    termItem->setStringValue(localised("Item"));
    termItems->setStringValue(localised("Items"));
    termBOM->setStringValue(localised("Bill of Materials"));
    listInvoiceCategories->setString(
        QStringList({localised("Stationery"), localised("Travel"), localised("Utilities"), localised("Other")})
            .join(QLatin1Char('\n')));
    listStatuses->setString(QStringList({localised("Enquiry"), localised("Quote"), localised("Order"),
                                         localised("Invoiced"), localised("Complete")})
                                .join(QLatin1Char('\n')));
    listContactTypes->setString(
        QStringList({localised("Customer"), localised("Supplier"), localised("Other")}).join(QLatin1Char('\n')));
    dateFormat->selectCellAtColumn(0);
    proAccountMmtButton->setTitle(localised("Accounts Management"));
    proDataMmtButton->setTitle(localised("Data Management"));
    proTimeMmtButton->setTitle(localised("Time Management"));
    proAccountMmtButton2->setTitle(localised("Accounts Management"));
    proDataMmtButton2->setTitle(localised("Data Management"));
    proTimeMmtButton2->setTitle(localised("Time Management"));
    dontShowWelcomeButton->setTitle(localised("Don't show this again"));
}

QString PrefsController::settingsName()
{
    return QStringLiteral("Quorvel");
}

QString PrefsController::newCommandTitle(const QString &term)
{
    return QStringLiteral("New ") + term;
}

QString PrefsController::notepadPath()
{
    return platform::paths::bundleFile(QStringLiteral("notepad.rtfd"));
}

void PrefsController::readDefaults()
{
    QSettings settings = preferences();

    // 1. The welcome panel, unless the user asked not to see it again.
    if (settings.value(keyWelcome).toString() != yes) {
        const struct
        {
            const QString &key;
            CheckBox *panelBox;
            CheckBox *windowBox;
        } modules[] = {
            {keyAccountMmt, proAccountMmtButton2, proAccountMmtButton},
            {keyDataMmt, proDataMmtButton2, proDataMmtButton},
            {keyTimeMmt, proTimeMmtButton2, proTimeMmtButton},
        };
        // The panel shows the modules as they are: ticked when stored "YES",
        // so that pressing Start again keeps them.
        for (const auto &module : modules)
            module.panelBox->setState(settings.value(module.key).toString() == yes);
        welcomePanel->center();
        welcomePanel->runModal();
        for (const auto &module : modules) {
            const bool on = module.panelBox->state();
            settings.setValue(module.key, on ? yes : no);
            module.windowBox->setState(on);
        }
        if (dontShowWelcomeButton->state())
            settings.setValue(keyWelcome, yes);
    }

    // 2. Tax and the date format's column.
    fillField(settings, keyTaxRate, taxRate);
    fillField(settings, keyTaxStatement, taxStatement);
    if (settings.contains(keyDateFormat))
        dateFormat->selectCellAtColumn(settings.value(keyDateFormat).toString() == QLatin1String("1") ? 1 : 0);

    // 3. The date format on the date fields and their labels.
    setUKFormat(dateFormat->selectedColumn() != 1);

    // 4. The remaining fields and the three lists.
    fillField(settings, keyCurrency, currencyField);
    fillField(settings, keyOrderPrefix, orderPrefixField);
    fillField(settings, keyItemPrefix, itemPrefixField);
    fillField(settings, keyStockWarn, stockWarn);
    fillField(settings, keyTermOrder, termOrder);
    fillField(settings, keyTermOrders, termOrders);
    fillField(settings, keyTermItem, termItem);
    fillField(settings, keyTermItems, termItems);
    fillField(settings, keyTermBOM, termBOM);
    fillView(settings, keyInvoiceCategories, listInvoiceCategories);
    fillView(settings, keyStatuses, listStatuses);
    fillView(settings, keyContactTypes, listContactTypes);

    // 5. The user's words on the interface.
    const QString orders = termOrders->stringValue();
    const QString items = termItems->stringValue();
    const QString bom = termBOM->stringValue();
    relabel(prefsTabView, 1, orders);
    relabel(prefsTabView, 2, items);
    relabel(mainTabView, 1, orders);
    relabel(mainTabView, 2, items);
    relabel(contactTabView, 2, orders);
    relabel(contactTabView, 3, bom);
    relabel(companyContactTabView, 2, orders);
    relabel(companyContactTabView, 3, bom);
    relabel(BOMTabView, 2, bom);
    if (selectFromItemsButton)
        selectFromItemsButton->setTitle(
            kdToolBox::replaceSubstring(QStringLiteral("%@"), items, localised("Select From %@")));
    if (BOMTextField)
        BOMTextField->setStringValue(bom);
    if (itemWindow)
        itemWindow->setTitle(termItem->stringValue());
    // The menu items read as the toolbar's: "New Job" rather than "Job".
    if (itemMenuItem)
        itemMenuItem->setTitle(newCommandTitle(termItem->stringValue()));
    if (orderWindow)
        orderWindow->setTitle(termOrder->stringValue());
    if (orderMenuItem)
        orderMenuItem->setTitle(newCommandTitle(termOrder->stringValue()));

    // 6. Module check boxes: switched on by "YES", never off here.
    if (settings.value(keyAccountMmt).toString() == yes)
        proAccountMmtButton->setState(true);
    if (settings.value(keyDataMmt).toString() == yes)
        proDataMmtButton->setState(true);
    if (settings.value(keyTimeMmt).toString() == yes)
        proTimeMmtButton->setState(true);

    // 7. The modules. A bundle whose notepad was never saved from the
    // preferences has every module off and the menus unfilled; with the
    // notepad, an absent key counts as on.
    time = false;
    data = false;
    accounts = false;
    const QString notepad = notepadPath();
    if (!QFileInfo::exists(notepad))
        return;
    notepadView->readRTFDFromFile(notepad);
    time = true;
    data = true;
    accounts = true;
    const auto isOff
        = [&settings](const QString &key) { return settings.contains(key) && settings.value(key).toString() != yes; };
    if (isOff(keyAccountMmt)) {
        if (mainTabView)
            mainTabView->removeTabViewItemWithIdentifier(accountsTab);
        accounts = false;
    }
    if (isOff(keyDataMmt)) {
        if (mainTabView)
            mainTabView->removeTabViewItemWithIdentifier(dataTab);
        data = false;
    }
    if (isOff(keyTimeMmt)) {
        if (mainTabView)
            mainTabView->removeTabViewItemWithIdentifier(timeTab);
        time = false;
    }
    populateLists();
}

void PrefsController::setUKFormat(bool dayFirst)
{
    const QString label = dayFirst ? QStringLiteral("dd/mm/yy") : QStringLiteral("mm/dd/yy");
    const QString &format = platform::userDateFormat(dayFirst);
    for (TextField *text : std::as_const(dateFormatTexts)) {
        if (text)
            text->setStringValue(label);
    }
    for (TextField *field : std::as_const(dateFields)) {
        if (field)
            field->setDateFormat(format);
    }
    ukFormat = dayFirst;
}

void PrefsController::OKButton()
{
    prefsWindow->orderOut();

    {
        QSettings settings = preferences();
        settings.setValue(keyTaxRate, taxRate->stringValue());
        settings.setValue(keyTaxStatement, taxStatement->stringValue());
        settings.setValue(keyCurrency, currencyField->stringValue());
        settings.setValue(keyOrderPrefix, orderPrefixField->stringValue());
        settings.setValue(keyItemPrefix, itemPrefixField->stringValue());
        settings.setValue(keyDateFormat, dateFormat->selectedColumn() == 1 ? QStringLiteral("1") : QStringLiteral("0"));
        settings.setValue(keyStockWarn, stockWarn->stringValue());
        settings.setValue(keyTermOrder, termOrder->stringValue());
        settings.setValue(keyTermOrders, termOrders->stringValue());
        settings.setValue(keyTermItem, termItem->stringValue());
        settings.setValue(keyTermItems, termItems->stringValue());
        settings.setValue(keyTermBOM, termBOM->stringValue());
        settings.setValue(keyInvoiceCategories, listInvoiceCategories->string());
        settings.setValue(keyStatuses, listStatuses->string());
        settings.setValue(keyContactTypes, listContactTypes->string());
        settings.setValue(keyAccountMmt, yesOrNo(proAccountMmtButton));
        settings.setValue(keyDataMmt, yesOrNo(proDataMmtButton));
        settings.setValue(keyTimeMmt, yesOrNo(proTimeMmtButton));
    }

    saveNotepad();
    populateLists();
}

void PrefsController::saveNotepad()
{
    // The notepad lives in the database bundle, which may not exist yet.
    QDir().mkpath(platform::paths::quorvelDir());
    QDir().mkpath(platform::paths::bundleDir());
    const QString notepad = notepadPath();
    if (!notepadView->writeRTFDToFile(notepad) && notepadView->isConnected())
        platform::log(QStringLiteral("The notepad could not be saved to %1").arg(notepad));
}

void PrefsController::openWindow()
{
    if (statusColourAssignmentPopUpButton->numberOfItems() == 0) {
        statusColourAssignmentPopUpButton->addItems(getStatusList());
        statusSelectorHasChanged();
    }
    prefsWindow->makeKeyAndOrderFront();
}

float PrefsController::getGlobalTaxRate() const
{
    return taxRate->floatValue();
}

QString PrefsController::getTaxStatement() const
{
    return taxStatement->stringValue().trimmed();
}

QString PrefsController::dateFormatOf(const QuorvelServices *services)
{
    const PrefsController *prefs = services ? services->getPrefsController() : nullptr;
    return platform::userDateFormat(!prefs || prefs->isUKFormat());
}

int PrefsController::backupCount()
{
    const QSettings settings(settingsName(), settingsName());
    bool ok = false;
    const int count = settings.value(QStringLiteral("QuorvelBackupCount")).toInt(&ok);
    return ok && count >= 0 ? count : 10;
}

QString PrefsController::getCurrency() const
{
    return currencyField->stringValue();
}

QString PrefsController::getOrderPrefix() const
{
    return orderPrefixField->stringValue();
}

QString PrefsController::getItemPrefix() const
{
    return itemPrefixField->stringValue();
}

QString PrefsController::getStockWarn() const
{
    return stockWarn->stringValue();
}

QString PrefsController::getTermOrder() const
{
    return termOrder->stringValue();
}

QString PrefsController::getTermOrders() const
{
    return termOrders->stringValue();
}

QString PrefsController::getTermItem() const
{
    return termItem->stringValue();
}

QString PrefsController::getTermItems() const
{
    return termItems->stringValue();
}

QString PrefsController::getTermBOM() const
{
    return termBOM->stringValue();
}

QStringList PrefsController::getStatusList() const
{
    return listStatuses->string().split(QLatin1Char('\n'));
}

QStringList PrefsController::getInvoiceCategoryList() const
{
    return listInvoiceCategories->string().split(QLatin1Char('\n'));
}

std::optional<QStringList> PrefsController::getContactTypeList() const
{
    const QString text = listContactTypes->string();
    if (text.isEmpty())
        return std::nullopt;
    return text.split(QLatin1Char('\n'));
}

void PrefsController::populateLists()
{
    if (invoiceListPopUpButton) {
        invoiceListPopUpButton->removeAllItems();
        invoiceListPopUpButton->addItems(getInvoiceCategoryList());
    }
    const QStringList statuses = getStatusList();
    for (PopUp *menu : {statusListPopUpButton, statusColourAssignmentPopUpButton}) {
        if (!menu)
            continue;
        menu->removeAllItems();
        menu->addItems(statuses);
    }
    // The type menus are not emptied first: each call adds the types again
    // behind those already there.
    if (const std::optional<QStringList> types = getContactTypeList()) {
        if (contactTypePopUpButton)
            contactTypePopUpButton->addItems(*types);
        for (PopUp *menu : std::as_const(companyTypePopUpButtons))
            if (menu)
                menu->addItems(*types);
    }
}

void PrefsController::statusSelectorHasChanged()
{
    const QString status = statusColourAssignmentPopUpButton->titleOfSelectedItem();
    RgbaColour colour;  // white when no entry matches
    const QVariantList stored = preferences().value(keyFlagColours).toList();
    for (const QVariant &value : stored) {
        const QVariantMap entry = value.toMap();
        if (hasStatus(entry, status))
            colour = opaqueColourOf(entryOf(entry));  // the last match wins
    }
    colourStatusAssignmentWell->setColor(colour);
}

void PrefsController::setColorForStatus()
{
    const QString status = statusColourAssignmentPopUpButton->titleOfSelectedItem();
    if (status.isNull())
        return;
    const RgbaColour colour = colourStatusAssignmentWell->color();
    QVariantMap newEntry;
    newEntry.insert(statusKey, status);
    newEntry.insert(redKey, platform::format6(colour.red));
    newEntry.insert(greenKey, platform::format6(colour.green));
    newEntry.insert(blueKey, platform::format6(colour.blue));
    newEntry.insert(alphaKey, platform::format6(colour.alpha));

    QSettings settings = preferences();
    QVariantList entries = settings.value(keyFlagColours).toList();
    bool replaced = false;
    for (QVariant &value : entries) {
        if (hasStatus(value.toMap(), status)) {
            value = newEntry;
            replaced = true;
        }
    }
    if (!replaced)
        entries.append(newEntry);
    settings.setValue(keyFlagColours, entries);
    colourCache.reset();
}

std::optional<RgbaColour> PrefsController::colourForStatus(const QString &status) const
{
    if (!colourCache)
        colourCache = flagColours();
    for (const QMap<QString, QString> &entry : *colourCache) {
        if (entry.value(statusKey) == status)
            return opaqueColourOf(entry);
    }
    return std::nullopt;
}

QList<QMap<QString, QString>> PrefsController::flagColours()
{
    QList<QMap<QString, QString>> entries;
    const QVariantList stored = preferences().value(keyFlagColours).toList();
    for (const QVariant &value : stored) {
        if (value.canConvert<QVariantMap>())
            entries.append(entryOf(value.toMap()));
    }
    return entries;
}
