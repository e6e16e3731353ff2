#pragma once
// One stationery document filled for one order, in a window of its own where
// the text can still be edited before it goes out: printed (the program's
// one print setup), saved as a PDF, or e-mailed as a PDF that is also kept
// with the order's attachments.
//
// It is given, in this order, the stationery's name (setWhichStationary),
// the bill-of-materials list whose table goes in at "<itemsordered>"
// (setbomDataSource) and the order (setOrder): the order loads and fills
// the document and shows the window. The window itself (its text view and
// toolbar) is the widget layer's: it shows `invoiceTextView`, binds
// `window`, and prints through `printDocument`.
#include "platform/outlets/ToolbarItem.h"
#include "platform/outlets/Window.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class ListManager;
class Order;
class QTextDocument;
class QuorvelServices;

class CustomInvoiceController : public QObject
{
    Q_OBJECT
public:
    explicit CustomInvoiceController(QuorvelServices *services, QObject *parent = nullptr);
    ~CustomInvoiceController() override;

    void setWhichStationary(const QString &name);
    void setbomDataSource(ListManager *source);
    // Keeps the order, fills the document (windowDidLoad), centres the
    // window and shows it.
    void setOrder(std::shared_ptr<Order> order);

    // Reads the stationery and fills it. Answers whether the stationery could
    // be read; when it could not, the reason is logged and kept (problem()).
    bool windowDidLoad();
    void replaceAllOccurencesOf(const QString &find, const QString &replace);
    void insertBOMTable();

    // Prints the document as it stands (edits included).
    void print();
    // Asks where to save and writes the document there as a PDF. Answers
    // whether a file was written.
    bool saveAsPDF();
    // Writes the document as a PDF among the order's attachments
    // ("INV12.pdf", or "INV12 2.pdf" when a different file has that name)
    // and opens a new message to the contact with it attached. Answers the
    // file written, or "" when there was none.
    QString email();

    // The toolbar "quorvelCustomInvoiceToolBar": Print, Save as PDF, E-mail.
    static QString toolbarIdentifier() { return QStringLiteral("quorvelCustomInvoiceToolBar"); }
    QStringList toolbarAllowedItemIdentifiers(const QString &toolbar) const;
    QStringList toolbarDefaultItemIdentifiers(const QString &toolbar) const;
    ToolbarItem toolbarItemForItemIdentifier(const QString &identifier);

    const QString &getWhichStationary() const { return whichStationary; }
    Order *getOrder() const { return order.get(); }
    const QString &problem() const { return loadProblem; }
    // The name the document's PDF gets: the order number made safe for a
    // file name ("Order 12" when the order has none).
    QString pdfFileName() const;

    // The filled document; the widget layer's text view shows and edits it.
    QTextDocument *const invoiceTextView;
    Window *const window;

    // How a document is printed (the widget layer's print dialog); with
    // none, printing does nothing.
    std::function<void(QTextDocument &document)> printDocument;
    // Whether a resource image exists ("print"); with none, every image does.
    std::function<bool(const QString &name)> imageExists;
    // Told when a document was added to the order's attachments.
    std::function<void(int orderId)> onAttachmentAdded;

private:
    QuorvelServices *services;
    std::shared_ptr<Order> order;
    ListManager *bomDataSource = nullptr;
    QString whichStationary;
    QString loadProblem;
};
