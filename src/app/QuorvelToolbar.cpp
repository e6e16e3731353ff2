// The main toolbar's items: which the modules switched on allow, in their
// order, and each item's image, label and command; an item whose image is
// missing is left without them and says so on standard output.
#include "app/Quorvel.h"

#include "accounts/BillManager.h"
#include "contacts/CompanyEditor.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/OrderManager.h"
#include "platform/Localised.h"
#include "store/PrefsController.h"
#include "tasks/ActionManager.h"

#include <functional>
#include <vector>

using platform::localised;

namespace {

const QString printItem = QStringLiteral("printItemIdentifier");
const QString deleteItem = QStringLiteral("deleteItemIdentifier");
const QString editItem = QStringLiteral("editItemIdentifier");
const QString companyItem = QStringLiteral("companyItemIdentifier");
const QString contactItem = QStringLiteral("contactItemIdentifier");
const QString orderItem = QStringLiteral("orderItemIdentifier");
const QString itemItem = QStringLiteral("itemItemIdentifier");
const QString padItem = QStringLiteral("padItemIdentifier");
const QString todoItem = QStringLiteral("todoItemIdentifier");
const QString billItem = QStringLiteral("billItemIdentifier");
const QString htmlItem = QStringLiteral("htmlItemIdentifier");
const QString csvItem = QStringLiteral("csvItemIdentifier");
const QString checkoutItem = QStringLiteral("checkoutItemIdentifier");
const QString prefsItem = QStringLiteral("prefsItemIdentifier");
const QString helpItem = QStringLiteral("helpItemIdentifier");

}  // namespace

QStringList Quorvel::toolbarAllowedItemIdentifiers(const QString &toolbar) const
{
    if (toolbar != toolbarIdentifier())
        return {};
    QStringList identifiers{printItem, deleteItem, editItem, companyItem, contactItem, orderItem, itemItem, padItem};
    if (hasTime())
        identifiers.insert(6, todoItem);
    if (hasAccounts())
        identifiers.insert(6, billItem);
    if (hasData())
        identifiers << htmlItem << csvItem;
    identifiers << checkoutItem << prefsItem << helpItem;
    return identifiers;
}

QStringList Quorvel::toolbarDefaultItemIdentifiers(const QString &toolbar) const
{
    return toolbarAllowedItemIdentifiers(toolbar);
}

ToolbarItem Quorvel::toolbarItemForItemIdentifier(const QString &identifier) const
{
    struct Entry
    {
        QString identifier;
        const char *image;
        const char *missing;  // the line printed when the image is missing
        std::function<QString()> label;
        std::function<void()> action;
    };
    Quorvel *self = const_cast<Quorvel *>(this);
    const std::vector<Entry> table{
        {contactItem, "contact", "Image contact not found.", [] { return localised("New Contact"); },
         [self] { self->contactManager->create(); }},
        {companyItem, "company", "Image company not found.", [] { return localised("New Company"); },
         [self] { self->companyEditor->create(); }},
        {printItem, "print", "Image print not found.", [] { return localised("Print"); },
         [self] { self->printMenuItem(); }},
        {orderItem, "new", "Image new not found.",
         [self] { return PrefsController::newCommandTitle(self->prefsController->getTermOrder()); },
         [self] { self->orderManager->create(); }},
        {itemItem, "item", "Image item not found.",
         [self] { return PrefsController::newCommandTitle(self->prefsController->getTermItem()); },
         [self] { self->itemManager->create(); }},
        {deleteItem, "delete", "Image delete not found.", [] { return QStringLiteral("Delete"); },
         [self] { self->deleteMenuItem(); }},
        {editItem, "edit", "Image Edit not found.", [] { return QStringLiteral("Edit"); },
         [self] { self->editMenuItem(); }},
        {todoItem, "eggtimer", "Image todo not found.", [] { return localised("New Task"); },
         [self] { self->actionManager->create(); }},
        {htmlItem, "html", "Image html not found.", [] { return localised("To HTML"); },
         [self] { self->exportHTMLMenuItem(); }},
        {csvItem, "csv", "Image csv not found.", [] { return localised("To Spreadsheet"); },
         [self] { self->exportCSVMenuItem(); }},
        {prefsItem, "cog", "Image cog not found.", [] { return localised("Preferences"); },
         [self] { self->prefsController->openWindow(); }},
        {billItem, "envelope", "Image envelope not found.", [] { return localised("New Invoice"); },
         [self] { self->billManager->create(); }},
        {padItem, "pad", "Image pad not found.", [] { return localised("Notepad"); },
         [self] { self->notePad->makeKeyAndOrderFront(); }},
        {checkoutItem, "checkout", "Image checkout not found.", [] { return localised("Checkout"); },
         [self] { self->checkout(); }},
        {helpItem, "help", "Image help not found.", [] { return localised("Help"); }, [self] { self->help(); }},
    };

    ToolbarItem item;
    item.identifier = identifier;
    for (const Entry &entry : table) {
        if (entry.identifier != identifier)
            continue;
        const QString image = QString::fromLatin1(entry.image);
        if (!imageExists || !imageExists(image)) {
            if (standardOutput)
                standardOutput(QString::fromLatin1(entry.missing));
            return item;
        }
        item.image = image;
        item.label = entry.label();
        item.action = entry.action;
        return item;
    }
    return item;  // an identifier outside the table: nothing set
}
