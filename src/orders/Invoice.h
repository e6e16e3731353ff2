#pragma once
// The plain invoice sheet: a fixed form with the customer's address block,
// the order's title and figures, its bill of materials, and a header and a
// footer the user edits as rich-text files in the support folder
// ("invoiceHeader.rtf" or ".rtfd", "invoiceFooter.rtf" or ".rtfd"; the
// program puts its own there when neither form exists). The figures carry
// the preferences' currency symbol, except shipping; an empty figure leaves
// its field as it was. The address block never names the contact's company.
//
// What prints is the sheet as one document (sheetDocument()): the header,
// the fields, the table and the footer.
#include "platform/outlets/TextField.h"
#include "platform/outlets/Window.h"
#include "store/TableView.h"

#include <QObject>
#include <functional>

class Contact;
class Order;
class QTextDocument;
class QuorvelServices;
class TableDataSource;

class Invoice : public QObject
{
    Q_OBJECT
public:
    explicit Invoice(QuorvelServices *quorvel, QObject *parent = nullptr);
    ~Invoice() override;

    void createHeaderAndFooterIfNecessary();
    // Opens the header (footer) file with the user's rich-text editor.
    void editInvoiceHeader();
    void editInvoiceFooter();
    void setDataSource(TableDataSource *source);
    void setDetailsForThisOrder(const Order *order, const Contact *contact);

    // The sheet as it prints, made anew from the fields each time.
    QTextDocument *sheetDocument();
    // Prints the sheet (portrait, fitted to the page).
    void print();

    TextField *balanceAmount;
    TextField *balancePaid;
    TextField *billingAddress;
    TableView *bomTable;
    TextField *depositAmount;
    TextField *depositPaid;
    QTextDocument *footerText;
    TextField *fullValue;
    TextField *fullValueWithTax;  // never filled
    QTextDocument *headerText;
    TextField *invoiceTitle;
    Window *invoiceWindow;
    TextField *shipping;
    TextField *title;  // never filled

    // How a document is printed (the widget layer's print dialog).
    std::function<void(QTextDocument &document)> printDocument;

private:
    QuorvelServices *quorvel;
    QTextDocument *sheet;
};
