#pragma once
// The user's settings: tax rate and statement, currency, date format,
// number prefixes, the low-stock level, the user's words for order, item
// and bill of materials, the three lists (invoice categories, statuses,
// contact types), the colour of each status, and which optional modules
// (time, data, accounts) are on. It also owns the notepad, a rich-text page
// kept in the database bundle as "notepad.rtfd".
//
// Settings live in the per-user preferences (QSettings, organisation and
// application "Quorvel") under the keys "QuorvelWelcome" ... "QuorvelFlagColours".
// They are read once at start (readDefaults) and stored by OKButton. The
// getters read the preferences window's fields, not the stored values: a
// value typed into the window is used at once.
#include "platform/outlets/Button.h"
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/ColorWell.h"
#include "platform/outlets/Matrix.h"
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TabView.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

class QuorvelServices;

class PrefsController : public QObject
{
    Q_OBJECT
public:
    explicit PrefsController(QObject *parent = nullptr);

    // The preferences' organisation and application name ("Quorvel").
    static QString settingsName();
    // How many dated backups of the database are kept ("QuorvelBackupCount",
    // 10 when it was never set; 0 keeps none).
    static int backupCount();
    // The date order the user chose, as a format ("%d/%m/%y" or
    // "%m/%d/%y"), of the controller's preferences; day first without them.
    static QString dateFormatOf(const QuorvelServices *services);
    // The title of a command that makes a new record in the user's word:
    // "New " followed by the word, alike on the toolbar and in the File menu.
    static QString newCommandTitle(const QString &term);

    // Start-up: welcome panel on a first start, stored values into the
    // window's fields, date format, the user's words on the interface,
    // module check boxes, the notepad and the modules (removing the tabs of
    // modules that are off), then the menus.
    void readDefaults();
    // Takes the window off screen and stores everything, the notepad too.
    void OKButton();
    // Writes the notepad into the database folder (made when missing).
    void saveNotepad();
    // Brings the window to the front. The statuses to colour are offered
    // even before the menus were first filled (a start without a notepad
    // leaves them empty).
    void openWindow();

    bool hasTime() const { return time; }
    bool hasData() const { return data; }
    bool hasAccounts() const { return accounts; }
    bool isUKFormat() const { return ukFormat; }
    // The command line sets the two itself: it makes the accounts whether or
    // not the accounts tab is shown, in the date order stored in the preferences.
    void setHasAccounts(bool on) { accounts = on; }
    // Day first ("%d/%m/%y", "dd/mm/yy") or month first ("%m/%d/%y",
    // "mm/dd/yy"): isUKFormat, the date format of every date field and the
    // text of every format label.
    void setUKFormat(bool dayFirst);

    float getGlobalTaxRate() const;
    QString getTaxStatement() const;  // trimmed of blanks and newlines at both ends
    QString getCurrency() const;
    QString getOrderPrefix() const;
    QString getItemPrefix() const;
    QString getStockWarn() const;
    QString getTermOrder() const;
    QString getTermOrders() const;
    QString getTermItem() const;
    QString getTermItems() const;
    QString getTermBOM() const;
    // The list text split at "\n" (an empty text gives one empty entry).
    QStringList getStatusList() const;
    QStringList getInvoiceCategoryList() const;
    // The same, except that an empty text gives none.
    std::optional<QStringList> getContactTypeList() const;

    void populateLists();

    // The status colour pop-up changed: show its colour in the well.
    void statusSelectorHasChanged();
    // Store the well's colour for the selected status.
    void setColorForStatus();
    // The colour a list row of that status is painted in: the first stored
    // entry whose "Status" equals it exactly, with alpha 1 (opaque); none
    // when no entry matches. Answered from a copy of the stored array that
    // setColorForStatus keeps up to date, so painting never reads the
    // preferences file.
    std::optional<RgbaColour> colourForStatus(const QString &status) const;
    // The stored "QuorvelFlagColours" entries, each with the five keys.
    static QList<QMap<QString, QString>> flagColours();

    // The notepad file in the bundle.
    static QString notepadPath();

    // Outlets of the preferences window, the welcome panel and the notepad
    // (owned here).
    Window *prefsWindow;
    TabView *prefsTabView;
    TextField *taxRate;
    TextField *taxStatement;
    TextField *currencyField;
    TextField *orderPrefixField;
    TextField *itemPrefixField;
    TextField *stockWarn;
    TextField *termOrder;
    TextField *termOrders;
    TextField *termItem;
    TextField *termItems;
    TextField *termBOM;
    Matrix *dateFormat;  // column 0 "dd/mm/yy", column 1 "mm/dd/yy"
    TextView *listInvoiceCategories;
    TextView *listStatuses;
    TextView *listContactTypes;
    CheckBox *proAccountMmtButton;
    CheckBox *proDataMmtButton;
    CheckBox *proTimeMmtButton;
    PopUp *statusColourAssignmentPopUpButton;
    ColorWell *colourStatusAssignmentWell;
    Window *welcomePanel;
    CheckBox *proAccountMmtButton2;
    CheckBox *proDataMmtButton2;
    CheckBox *proTimeMmtButton2;
    CheckBox *dontShowWelcomeButton;
    TextView *notepadView;

    // Outlets of other windows that the preferences fill or relabel. Those
    // that only the preferences use are made here and bound by the widget
    // layer where it builds those windows: the order editor's bill-of-
    // materials tab view, its heading and its button that picks stock items,
    // the tab views of the contact and company-contact editors, and the File
    // menu's New commands for orders and items. The others are outlets of
    // other controllers, handed over by the application controller (the
    // order manager hands over its status menu itself). Any that is none is
    // skipped.
    TabView *mainTabView = nullptr;
    TabView *contactTabView = nullptr;
    TabView *companyContactTabView = nullptr;
    TabView *BOMTabView = nullptr;
    Button *selectFromItemsButton = nullptr;
    TextField *BOMTextField = nullptr;
    Window *itemWindow = nullptr;
    Window *orderWindow = nullptr;
    Button *itemMenuItem = nullptr;
    Button *orderMenuItem = nullptr;
    // The date fields of the other windows, which take the user's date
    // format, and labels that name that format.
    QList<TextField *> dateFields;
    QList<TextField *> dateFormatTexts;
    PopUp *invoiceListPopUpButton = nullptr;
    PopUp *statusListPopUpButton = nullptr;
    PopUp *contactTypePopUpButton = nullptr;
    // The type menus of the company editors.
    QList<PopUp *> companyTypePopUpButtons;

private:
    bool time = false;
    bool data = false;
    bool accounts = false;
    bool ukFormat = true;
    mutable std::optional<QList<QMap<QString, QString>>> colourCache;
};
