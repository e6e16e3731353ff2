#pragma once
// The application controller: owns one instance of every manager, starts
// the program (preferences, date formatter, toolbar, report chooser,
// database), routes the global menu commands (delete, edit, export, print,
// checkout) to the table the user is looking at, answers the managers'
// cross-collection lookups, and saves everything at quit.
//
// It holds no widget: the main window, the notepad and the tab views are
// outlets that the widget layer binds.
#include "contacts/ContactsCsv.h"
#include "platform/outlets/TabView.h"
#include "platform/outlets/ToolbarItem.h"
#include "platform/outlets/Window.h"
#include "store/Backups.h"
#include "store/DatabaseBundle.h"
#include "store/DeletionHistory.h"
#include "store/QuorvelServices.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class ActionManager;
class BillManager;
class BOMManager;
class CheckoutManager;
class CompanyContactEditor;
class CompanyEditor;
class Contact;
class ContactManager;
class Item;
class ItemManager;
class OrderManager;
class Picker;
class PrefsController;
class ReportManager;
class SupplierDataSource;
class TableDataSource;
class kdDataSource;
class kdDateFormatter;

class SaveKeeper;

class Quorvel : public QObject, public QuorvelServices
{
    Q_OBJECT
public:
    explicit Quorvel(QObject *parent = nullptr);
    ~Quorvel() override;

    static QString toolbarIdentifier() { return QStringLiteral("quorvelLiteMainToolBar"); }

    // Start-up, in order: preferences, date formatter, toolbar, report
    // chooser, database (each list filtered after its file).
    void awakeFromNib();
    // Closing the main window quits: answers false (the window itself does
    // not close) after asking the application to terminate.
    bool windowShouldClose();
    // Stores the preferences and the notepad, then writes all six files.
    // Answers true: the program may end now.
    bool applicationShouldTerminate();
    // The whole database, with the records as the program holds them, in a
    // folder the user chooses; answers whether it was saved.
    bool saveCopyOfDatabase();
    void applicationWillTerminate() { }
    // Documents given to the program are accepted and ignored.
    bool applicationOpenFile(const QString &path);

    DatabaseBundle::ReadResult readDatabase();
    // Writes the file of the manager that sends it, all six when the
    // controller itself sends it, nothing for any other sender.
    bool writeDatabase(const QObject *sender) override;
    // Accepted and ignored: a deletion reaches the disk with the next write.
    void setChangeFlag() override { }
    DatabaseBundle &getDatabase() override { return *database; }
    // Every write of the database, the saves of changes within seconds too.
    SaveKeeper *getSaveKeeper() const { return saver.get(); }
    // Whether reading the database starts the two worker threads: the order
    // manager's repeat checker and the task manager's alarm watch (on unless
    // switched off; the command line makes its one pass itself and rings no
    // alarms).
    void setStartRepeatChecker(bool on) { startRepeatChecker = on; }

    // Routing.
    TableDataSource *determineFrontDataSource() const;
    Outlet *determineFrontView() const;
    void deleteMenuItem();
    void editMenuItem();
    void checkout() override;
    void bringOrdersToFront() override;
    // Export of the front view's table. With no file name chosen nothing is
    // written; a failed write is logged. Answer whether a file was written.
    bool exportCSVMenuItem();
    bool exportHTMLMenuItem();
    void printMenuItem();
    void help();

    // Imports. The first-generation database: after the warning, or at
    // once; answers whether anything was imported. Contacts from a CSV file:
    // the file is chosen, its columns matched to contact fields (the
    // chooseContactColumns hook shows the preview; without one the headings
    // decide), and the new contacts written.
    // Restore from Backup: the backup chosen (chooseBackup shows the list)
    // is put back after everything is saved and kept as a backup of its own,
    // and the program reads the database again.
    bool restoreFromBackup();
    bool restoreBackup(const QString &name);
    std::function<std::optional<QString>(const QList<backups::Backup> &list)> chooseBackup;

    bool importQuorvelDatabaseWithWarning();
    bool importQuorvelDatabase();
    void importContacts();
    bool openPanelDidEnd(const QString &path);
    // The preview of a CSV file's first rows: answers the field each column
    // goes to, or none when the user cancelled.
    std::function<std::optional<QList<contactsCsv::Field>>(const contactsCsv::Preview &preview)> chooseContactColumns;
    void editContactForCurrentOrder() override;
    // Brings back the last record deleted from any list (Edit > Undo Delete).
    void undoDelete();
    DeletionHistory *getDeletionHistory() const { return deletionHistory; }

    // Toolbar (the controller is its delegate).
    QStringList toolbarAllowedItemIdentifiers(const QString &toolbar) const;
    QStringList toolbarDefaultItemIdentifiers(const QString &toolbar) const;
    ToolbarItem toolbarItemForItemIdentifier(const QString &identifier) const;
    void customiseToolbar() { }
    // Whether the program has an image of that name (the toolbar's images);
    // tests may replace it.
    std::function<bool(const QString &name)> imageExists;
    // Where the toolbar's "Image ... not found." lines go (standard output
    // unless replaced).
    std::function<void(const QString &text)> standardOutput;

    // Lookups and accessors used by the managers.
    ContactManager *getContactManager() const override { return contactManager.get(); }
    ActionManager *getActionManager() const override { return actionManager.get(); }
    BillManager *getBillManager() const override { return billManager.get(); }
    BOMManager *getBOMManager() const override { return bomManager.get(); }
    ItemManager *getItemManager() const override { return itemManager.get(); }
    OrderManager *getOrderManager() const override { return orderManager.get(); }
    CheckoutManager *getCheckoutManager() const override { return checkoutManager.get(); }
    SupplierDataSource *getSupplierDataSource() const override { return supplierDataSource.get(); }
    ReportManager *getReportManager() const { return reportManager.get(); }
    CompanyEditor *getCompanyEditor() const override { return companyEditor.get(); }
    CompanyContactEditor *getCompanyContactEditor() const override { return companyContactEditor.get(); }
    Picker *getPicker() const override { return picker.get(); }
    PrefsController *getPrefsController() const override { return prefsController.get(); }
    kdDateFormatter *getDateFormatter() const { return dateFormatter.get(); }

    Contact *getContactbyId(const QString &id) const override;
    QString getContactNameforId(const QString &id) const override;
    QString getContactIdForName(const QString &name) const override;
    int getContactIdForOrder(int orderId) const override;
    QString getCurrentContactIdAsString() const override;
    Item *getProductbyId(int id) const override;
    int getCurrentOrder() const override;
    void setCurrentOrder(int orderId) override;
    void connectContact(Contact *contact, int orderId) override;
    bool hasTime() const override;
    bool hasData() const override;
    bool hasAccounts() const override;
    void requestOrderManagerResign() override;
    void requestCheckoutManagerResign() override;
    bool isCheckout(const QObject *sender) const override;

    // Outlets of the main window and the notepad.
    Window *mainWindow;
    Window *notePad;
    TabView *mainTabView;
    TabView *accountsTabView;

Q_SIGNALS:
    // Asks the application to end (the widget layer quits the event loop
    // after applicationShouldTerminate()).
    void terminateRequested();
    // Asks the platform to open a help page.
    void helpRequested();

private:
    std::unique_ptr<PrefsController> prefsController;
    std::unique_ptr<ContactManager> contactManager;
    std::unique_ptr<OrderManager> orderManager;
    std::unique_ptr<ItemManager> itemManager;
    std::unique_ptr<BOMManager> bomManager;
    std::unique_ptr<ActionManager> actionManager;
    std::unique_ptr<BillManager> billManager;
    std::unique_ptr<ReportManager> reportManager;
    std::unique_ptr<CheckoutManager> checkoutManager;
    std::unique_ptr<SupplierDataSource> supplierDataSource;
    std::unique_ptr<CompanyEditor> companyEditor;
    std::unique_ptr<CompanyContactEditor> companyContactEditor;
    std::unique_ptr<Picker> picker;
    std::unique_ptr<kdDateFormatter> dateFormatter;
    std::unique_ptr<DatabaseBundle> database;
    std::unique_ptr<SaveKeeper> saver;
    DeletionHistory *deletionHistory;
    bool startRepeatChecker = true;
};
