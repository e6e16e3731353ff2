#pragma once
// The main window: one tab per area of the business, each with its list,
// search field and filter, the menus and the main toolbar. The tabs carry
// the identifiers the rest of the program addresses them by ("1" contacts,
// "2" orders, "3" stock, "pro" tasks, "pro2" accounts with its sub-tabs
// "1" money out, "2" money in, "3" statement, "pro3" reports).
#include <QMainWindow>
#include <memory>
#include <vector>

class MainToolBar;
class PopUp;
class QComboBox;
class QLineEdit;
class QTabWidget;
class QVBoxLayout;
class Quorvel;
class TableView;
class TextField;
class integrityTableView;
class kdDataSource;
class kdKeyResponder;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(Quorvel &controller, QWidget *parent = nullptr);
    ~MainWindow() override;

    QTabWidget *tabs() const { return tabView; }
    // The tab page whose identifier is given, nullptr when there is none.
    QWidget *tabWithIdentifier(const QString &identifier) const;
    static QString identifierOf(const QWidget *page);
    MainToolBar *toolBar() const { return mainToolBar; }
    // Builds the toolbar again from the controller's lists (after the
    // preferences have decided the modules).
    void rebuildToolBar();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *makePage(const QString &identifier);
    integrityTableView *addList(QVBoxLayout *layout, const QString &name, TableView *table, kdDataSource *owner);
    QLineEdit *addSearchField(QLayout *layout, const QString &name, TextField *field);
    QComboBox *addFilter(QLayout *layout, const QString &name, PopUp *popUp);
    void buildMenus();

    Quorvel &quorvel;
    QTabWidget *tabView = nullptr;
    MainToolBar *mainToolBar = nullptr;
    std::vector<std::unique_ptr<kdKeyResponder>> keyResponders;
};
