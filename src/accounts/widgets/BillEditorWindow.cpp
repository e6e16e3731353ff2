#include "accounts/widgets/BillEditorWindow.h"

#include "accounts/BillManager.h"
#include "app/widgets/EditorWidgets.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QFormLayout>

using platform::localised;

BillEditorWindow::BillEditorWindow(BillManager &bills, QWidget *parent)
    : EditorDialog(
        QStringLiteral("billEditorWindow"), localised("Invoice"), [owner = &bills] { owner->cancel(); }, parent)
{
    auto *layout = new QFormLayout;
    editor::Form form{layout};
    form.field(bills.invoiceNumber, QStringLiteral("invoiceNumber"), localised("&Number:"));
    form.field(bills.name, QStringLiteral("name"), localised("&Name:"));
    form.field(bills.datePaid, QStringLiteral("datePaid"), localised("&Date:"));
    form.field(bills.amount, QStringLiteral("amount"), localised("&Amount:"));
    form.popUp(bills.category, QStringLiteral("category"), localised("C&ategory:"))->setMinimumContentsLength(16);
    form.notes(bills.details, QStringLiteral("details"), localised("Details:"));
    layOut(layout, nullptr, [owner = &bills] { owner->finish(); });
    attach(bills.editorWindow, QStringLiteral("QuorvelBillEditorWindowGeometry"), QSize(420, 360));
}
