#pragma once
// The main window: one tab per area of the business. The tabs carry the
// identifiers the rest of the program addresses them by ("1" contacts,
// "2" orders, "3" stock, "pro" tasks, "pro2" accounts with its sub-tabs
// "1" money in, "2" money out, "3" statement, "pro3" reports).
#include <QMainWindow>

class QTabWidget;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);

    QTabWidget *tabs() const { return tabView; }
    // The tab page whose identifier is given, nullptr when there is none.
    QWidget *tabWithIdentifier(const QString &identifier) const;
    static QString identifierOf(const QWidget *page);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *makePage(const QString &identifier, const QString &title);
    void restorePlacement();
    void savePlacement() const;

    QTabWidget *tabView = nullptr;
};
