#pragma once
// The plain invoice sheet of one order, as it prints: the header, the
// customer's address, the figures, the bill of materials and the footer.
// Print, Save as PDF, and the header and footer opened for editing in the
// user's rich-text editor (the sheet is read again when the window is shown
// next). It owns its Invoice and goes when closed; Escape closes it.
#include <QDialog>

class Invoice;
class QTextEdit;
class QuorvelServices;

class InvoiceSheetWindow : public QDialog
{
    Q_OBJECT
public:
    explicit InvoiceSheetWindow(QuorvelServices *services, QWidget *parent = nullptr);
    ~InvoiceSheetWindow() override;

    Invoice &invoice() const { return *sheet; }
    // Lays the sheet out again from the invoice's fields.
    void showSheet();

private:
    Invoice *sheet;
    QTextEdit *view;
};
