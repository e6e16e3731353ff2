#pragma once
// The checkout window, made for a shop counter: a code field at the top
// (typed or read by a barcode scanner, Enter adds the item), the customer,
// the sale's lines, and its totals in large figures; every command has a
// key. The tender panel opens over it with the sum due, the tendered field
// (Enter accepts, Escape cancels) and the change or the balance remaining.
// Closing the window with unsaved changes asks whether to save them.
#include <QMainWindow>

class CheckoutManager;
class QDialog;
class QLineEdit;
class QTableView;

class CheckoutWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit CheckoutWindow(CheckoutManager &manager, QWidget *parent = nullptr);
    ~CheckoutWindow() override;

    QDialog *tenderPanel() const { return tender; }
    QLineEdit *codeField() const { return code; }
    QTableView *linesView() const { return lines; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeCodeRow();
    QWidget *makeCustomerGroup();
    QWidget *makeSaleGroup();
    QWidget *makeLinesGroup();
    QWidget *makeTotalsGroup();
    QWidget *makeCommandRow();
    void makeTenderPanel();

    CheckoutManager &checkout;
    QLineEdit *code = nullptr;
    QTableView *lines = nullptr;
    QDialog *tender = nullptr;
};
