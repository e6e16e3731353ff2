#pragma once
// The order editor: one window over the order manager's editor outlets.
// The order's own fields and description, the customer's details with the
// contact commands, the money (value, shipping, tax, deposit, balance) with
// the balance kept up to date as the figures are typed, the repeat settings
// and their summary, the attachments with their drop well, the choice of
// stationery, and the order's bill of materials, edited in place (these
// four on tabs, the bill of materials in front). OK stores
// the order; Cancel, Escape and the close box abandon it. The window
// remembers its size and place.
#include "app/widgets/EditorDialog.h"

#include <memory>

class MyImageView;
class OrderManager;
class PrefsController;
class QGroupBox;
class QLabel;
class QPushButton;
class QTabWidget;
class integrityTableView;
class kdKeyResponder;

class OrderEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit OrderEditorWindow(OrderManager &manager, QWidget *parent = nullptr);
    ~OrderEditorWindow() override;

    integrityTableView *materialsTable() const { return materials; }
    MyImageView *attachmentWell() const { return well; }

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QGroupBox *makeOrderGroup();
    QGroupBox *makeContactGroup();
    QGroupBox *makeMoneyGroup();
    // The repeat settings, the attachments, the bill of materials and the
    // stationery, one tab each; the materials tab carries the user's word.
    QTabWidget *makeBOMTabView();
    QWidget *makeRepeatPage();
    QWidget *makeAttachmentPage();
    QWidget *makeMaterialsPage(PrefsController *prefs);
    QWidget *makeInvoicePage();
    // Shows the user's word for an order.
    void showTerms();

    OrderManager &orders;
    std::unique_ptr<kdKeyResponder> materialsKeys;
    QGroupBox *orderGroup = nullptr;
    integrityTableView *materials = nullptr;
    MyImageView *well = nullptr;
    QPushButton *addTimeButton = nullptr;
};
