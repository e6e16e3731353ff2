#pragma once
// One print setup for the whole program: the printer, paper and options the
// user chose last are offered again the next time anything is printed
// (lists, the notepad, invoices). A document prints fitted to the width of
// the page, in portrait, after a print dialog that is modal to its window
// only, so the rest of the program stays usable.
//
// Tests install a handler instead of the dialog.
#include <QWidget>
#include <functional>

class QPrinter;
class QTextDocument;

namespace printing {

// The program's one printer setup; made on first use with the paper of the
// user's country.
QPrinter &sharedPrinter();

// Shows the print dialog over the window and prints a copy of the document
// as it is now when the user accepts.
void printDocument(const QTextDocument &document, QWidget *window);

using DocumentPrintHandler = std::function<void(const QTextDocument &document, QWidget *window)>;
// Installs a handler instead of the dialog and answers the previous one
// (none: the dialog).
DocumentPrintHandler setDocumentPrintHandler(DocumentPrintHandler handler);

}  // namespace printing
