#include "app/widgets/Printing.h"

#include "orders/DocumentOutput.h"

#include <QLocale>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

namespace printing {

namespace {

DocumentPrintHandler &installedHandler()
{
    static DocumentPrintHandler handler;
    return handler;
}

}  // namespace

QPrinter &sharedPrinter()
{
    static QPrinter *const printer = [] {
        auto *made = new QPrinter(QPrinter::HighResolution);
        made->setPageSize(QPageSize(documents::paperFor(QLocale())));
        made->setPageOrientation(QPageLayout::Portrait);
        return made;
    }();
    return *printer;
}

void printDocument(const QTextDocument &document, QWidget *window)
{
    if (installedHandler()) {
        installedHandler()(document, window);
        return;
    }
    QPrinter &printer = sharedPrinter();
    printer.setPageOrientation(QPageLayout::Portrait);
    auto *dialog = new QPrintDialog(&printer, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
    // The copy prints what the window showed when Print was chosen.
    QTextDocument *copy = document.clone(dialog);
    QObject::connect(dialog, qOverload<>(&QDialog::accepted), dialog, [copy] { copy->print(&sharedPrinter()); });
    dialog->open();
}

DocumentPrintHandler setDocumentPrintHandler(DocumentPrintHandler handler)
{
    DocumentPrintHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

}  // namespace printing
