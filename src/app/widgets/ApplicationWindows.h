#pragma once
// The program's windows over one controller: the main window, the notepad,
// the preferences, the welcome panel, the picker and the editors of every
// kind of record (orders, items, tasks, bills, contacts, companies and a
// company's people), the checkout, bound to the controller's outlets, and
// the windows printing opens. `start()` runs the
// controller's start-up with the windows in place and shows the main
// window; a request to quit saves everything (the controller's
// applicationShouldTerminate) and ends the event loop.
#include <QObject>
#include <memory>

class AlarmNotifier;
class BillEditorWindow;
class CheckoutWindow;
class CompanyContactEditorWindow;
class CompanyEditorWindow;
class DocumentWindows;
class ContactEditorWindow;
class ItemEditorWindow;
class MainWindow;
class NotepadWindow;
class OrderEditorWindow;
class PickerWindow;
class PrefsWindow;
class Quorvel;
class TaskEditorWindow;
class WelcomePanel;

class ApplicationWindows : public QObject
{
    Q_OBJECT
public:
    explicit ApplicationWindows(Quorvel &controller, QObject *parent = nullptr);
    ~ApplicationWindows() override;

    void start();
    // The main window to the front, restored when it was minimised (a
    // second start of the program on the same data folder asks for it).
    void showMainWindow();
    // Saves everything and quits the event loop (once).
    void terminate();
    bool hasTerminated() const { return terminated; }

    MainWindow *mainWindow() const { return main.get(); }
    NotepadWindow *notepadWindow() const { return notepad.get(); }
    PrefsWindow *prefsWindow() const { return prefs.get(); }
    WelcomePanel *welcomePanel() const { return welcome.get(); }
    PickerWindow *pickerWindow() const { return picker.get(); }
    OrderEditorWindow *orderEditorWindow() const { return orderEditor.get(); }
    ItemEditorWindow *itemEditorWindow() const { return itemEditor.get(); }
    TaskEditorWindow *taskEditorWindow() const { return taskEditor.get(); }
    BillEditorWindow *billEditorWindow() const { return billEditor.get(); }
    ContactEditorWindow *contactEditorWindow() const { return contactEditor.get(); }
    CompanyEditorWindow *companyEditorWindow() const { return companyEditor.get(); }
    CompanyContactEditorWindow *companyContactEditorWindow() const { return companyContactEditor.get(); }
    DocumentWindows *documentWindows() const { return documents.get(); }
    CheckoutWindow *checkoutWindow() const { return checkout.get(); }

private:
    Quorvel &quorvel;
    std::unique_ptr<MainWindow> main;
    std::unique_ptr<NotepadWindow> notepad;
    std::unique_ptr<PrefsWindow> prefs;
    std::unique_ptr<WelcomePanel> welcome;
    std::unique_ptr<PickerWindow> picker;
    std::unique_ptr<OrderEditorWindow> orderEditor;
    std::unique_ptr<ItemEditorWindow> itemEditor;
    std::unique_ptr<TaskEditorWindow> taskEditor;
    std::unique_ptr<BillEditorWindow> billEditor;
    std::unique_ptr<ContactEditorWindow> contactEditor;
    std::unique_ptr<CompanyEditorWindow> companyEditor;
    std::unique_ptr<CompanyContactEditorWindow> companyContactEditor;
    std::unique_ptr<AlarmNotifier> alarmNotifier;
    std::unique_ptr<DocumentWindows> documents;
    std::unique_ptr<CheckoutWindow> checkout;
    bool terminated = false;
};
