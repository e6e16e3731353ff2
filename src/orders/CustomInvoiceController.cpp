#include "orders/CustomInvoiceController.h"

#include "contacts/Contact.h"
#include "orders/DocumentOutput.h"
#include "orders/InvoiceFilling.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/Stationery.h"
#include "platform/Alerts.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Workspace.h"
#include "platform/richtext/RichTextFile.h"
#include "store/ListManager.h"
#include "store/TableView.h"

#include <QDir>
#include <QFileInfo>
#include <QTextDocument>

using platform::localised;

namespace {

const QString printItem = QStringLiteral("printItemIdentifier");
const QString pdfItem = QStringLiteral("pdfItemIdentifier");
const QString emailItem = QStringLiteral("emailItemIdentifier");

// A text that names no folder: separators and control characters become
// spaces, and a name that is all dots gets none.
QString fileNameFrom(const QString &text)
{
    QString name;
    for (const QChar c : text)
        name += (c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':') || c.unicode() < 32)
            ? QLatin1Char(' ')
            : c;
    name = name.trimmed();
    while (name.startsWith(QLatin1Char('.')))
        name.remove(0, 1);
    return name.trimmed();
}

}  // namespace

CustomInvoiceController::CustomInvoiceController(QuorvelServices *servicesGiven, QObject *parent)
    : QObject(parent),
      invoiceTextView(new QTextDocument(this)),
      window(new Window(this)),
      services(servicesGiven)
{ }

CustomInvoiceController::~CustomInvoiceController() = default;

void CustomInvoiceController::setWhichStationary(const QString &name)
{
    whichStationary = name;
}

void CustomInvoiceController::setbomDataSource(ListManager *source)
{
    bomDataSource = source;
}

void CustomInvoiceController::setOrder(std::shared_ptr<Order> given)
{
    order = std::move(given);
    if (!windowDidLoad())
        platform::runAlert(localised("The stationery \"%1\" could not be read.").arg(whichStationary), loadProblem);
    window->center();
    window->makeKeyAndOrderFront();
}

bool CustomInvoiceController::windowDidLoad()
{
    loadProblem.clear();
    bool loaded = false;
    if (!stationery::isSafeName(whichStationary)) {
        loadProblem = localised("\"%1\" is not a name of stationery.").arg(whichStationary);
    } else {
        QString error;
        loaded = RichTextFile::load(stationery::documentPath(whichStationary), *invoiceTextView, &error);
        if (!loaded)
            loadProblem = error;
    }
    if (!loaded) {
        platform::log(QStringLiteral("couldn't read the stationery %1: %2").arg(whichStationary, loadProblem));
        invoiceTextView->clear();
    }
    if (order) {
        for (const auto &[placeholder, value] : invoices::placeholderValues(*order, order->getContact()))
            replaceAllOccurencesOf(placeholder, value);
        insertBOMTable();
    }
    invoiceTextView->setModified(false);
    invoiceTextView->setMetaInformation(QTextDocument::DocumentTitle,
                                        order ? whichStationary + QLatin1Char(' ') + order->getOrderNum()
                                              : whichStationary);
    window->setTitle(whichStationary);
    return loaded;
}

void CustomInvoiceController::replaceAllOccurencesOf(const QString &find, const QString &replace)
{
    invoices::replaceAllOccurencesOf(*invoiceTextView, find, replace);
}

void CustomInvoiceController::insertBOMTable()
{
    if (!order)
        return;
    const QString html = bomDataSource && bomDataSource->table
        ? bomDataSource->getDataAsHTMLusingTableView(*bomDataSource->table)
        : QString();
    invoices::insertBOMTable(*invoiceTextView, order->getIncludeBOM(), html);
}

void CustomInvoiceController::print()
{
    if (printDocument)
        printDocument(*invoiceTextView);
}

QString CustomInvoiceController::pdfFileName() const
{
    QString stem = order ? fileNameFrom(order->getOrderNum()) : QString();
    if (stem.isEmpty())
        stem = order ? QStringLiteral("Order %1").arg(order->getID()) : QStringLiteral("Document");
    return stem + QStringLiteral(".pdf");
}

bool CustomInvoiceController::saveAsPDF()
{
    platform::FilePanelRequest request;
    request.kind = platform::FilePanelRequest::Save;
    request.title = localised("Save as PDF");
    request.fileTypes = QStringList{QStringLiteral("pdf")};
    request.suggestedName = pdfFileName();
    const std::optional<QString> path = platform::runFilePanel(request);
    if (!path)
        return false;
    QString error;
    if (!documents::writePdfFile(*invoiceTextView, *path, &error)) {
        platform::runAlert(localised("The PDF could not be saved."),
                           localised("%1 could not be written: %2").arg(*path, error));
        return false;
    }
    return true;
}

QString CustomInvoiceController::email()
{
    if (!order)
        return QString();
    const QString folder = OrderManager::attachmentFolder(order->getID());
    QDir().mkpath(folder);
    const QString stem = QFileInfo(pdfFileName()).completeBaseName();
    QString path = folder + QLatin1Char('/') + pdfFileName();
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = folder + QStringLiteral("/%1 %2.pdf").arg(stem).arg(n);
    QString error;
    if (!documents::writePdfFile(*invoiceTextView, path, &error)) {
        platform::runAlert(localised("The document could not be e-mailed."),
                           localised("%1 could not be written: %2").arg(path, error));
        return QString();
    }
    if (onAttachmentAdded)
        onAttachmentAdded(order->getID());
    const Contact *contact = order->getContact();
    platform::EmailMessage message;
    message.to = contact ? contact->getEmail().trimmed() : QString();
    message.subject = (whichStationary + QLatin1Char(' ') + order->getOrderNum()).trimmed();
    message.attachment = path;
    if (!platform::composeEmail(message))
        platform::runAlert(localised("No mail program could be opened."),
                           localised("The document is kept with the order's attachments: %1").arg(path));
    return path;
}

QStringList CustomInvoiceController::toolbarAllowedItemIdentifiers(const QString &toolbar) const
{
    if (toolbar != toolbarIdentifier())
        return {};
    return {printItem, pdfItem, emailItem};
}

QStringList CustomInvoiceController::toolbarDefaultItemIdentifiers(const QString &toolbar) const
{
    return toolbarAllowedItemIdentifiers(toolbar);
}

ToolbarItem CustomInvoiceController::toolbarItemForItemIdentifier(const QString &identifier)
{
    struct Entry
    {
        const QString &identifier;
        const char *image;
        const char *missing;
        QString label;
        std::function<void()> action;
    };
    const Entry entries[] = {
        {printItem, "print", "Image print not found.", localised("Print"), [this] { print(); }},
        {pdfItem, "pdf", "Image pdf not found.", localised("Save as PDF..."), [this] { saveAsPDF(); }},
        {emailItem, "envelope", "Image envelope not found.", localised("E-mail..."), [this] { email(); }},
    };
    ToolbarItem item;
    item.identifier = identifier;
    for (const Entry &entry : entries) {
        if (entry.identifier != identifier)
            continue;
        const QString image = QString::fromLatin1(entry.image);
        if (imageExists && !imageExists(image)) {
            platform::standardOutput(QString::fromLatin1(entry.missing) + QLatin1Char('\n'));
            return item;
        }
        item.image = image;
        item.label = entry.label;
        item.action = entry.action;
    }
    return item;
}
