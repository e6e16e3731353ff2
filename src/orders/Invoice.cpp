#include "orders/Invoice.h"

#include "contacts/Contact.h"
#include "orders/Order.h"
#include "orders/Stationery.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "platform/Workspace.h"
#include "platform/richtext/RichTextFile.h"
#include "store/ListColumns.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"
#include "store/TableDataSource.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

using platform::localised;

namespace {

void readRichText(const QString &path, QTextDocument &document)
{
    QString error;
    if (!RichTextFile::load(path, document, &error)) {
        platform::log(QStringLiteral("couldn't read %1: %2").arg(path, error));
        document.clear();
    }
}

// A field's text as HTML, its lines kept.
QString html(const TextField *field)
{
    return field->stringValue().toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

}  // namespace

Invoice::Invoice(QuorvelServices *controller, QObject *parent)
    : QObject(parent),
      balanceAmount(new TextField(this)),
      balancePaid(new TextField(this)),
      billingAddress(new TextField(this)),
      bomTable(new TableView(this)),
      depositAmount(new TextField(this)),
      depositPaid(new TextField(this)),
      footerText(new QTextDocument(this)),
      fullValue(new TextField(this)),
      fullValueWithTax(new TextField(this)),
      headerText(new QTextDocument(this)),
      invoiceTitle(new TextField(this)),
      invoiceWindow(new Window(this)),
      shipping(new TextField(this)),
      title(new TextField(this)),
      quorvel(controller),
      sheet(new QTextDocument(this))
{
    QList<TableColumn> columns = ListColumns::defaultsFor(QStringLiteral("materials"));
    for (TableColumn &column : columns)
        column.title = localised(column.title);
    bomTable->setColumns(columns);
    invoiceWindow->setTitle(localised("Invoice"));
}

Invoice::~Invoice() = default;

void Invoice::createHeaderAndFooterIfNecessary()
{
    stationery::createHeaderAndFooterIfNecessary();
}

void Invoice::editInvoiceHeader()
{
    createHeaderAndFooterIfNecessary();
    platform::openFile(stationery::headerPath());
}

void Invoice::editInvoiceFooter()
{
    createHeaderAndFooterIfNecessary();
    platform::openFile(stationery::footerPath());
}

void Invoice::setDataSource(TableDataSource *source)
{
    bomTable->setDataSource(source);
    bomTable->reloadData();
}

void Invoice::setDetailsForThisOrder(const Order *order, const Contact *contact)
{
    if (!order)
        return;
    if (contact) {
        QString block = contact->getName() + QLatin1Char('\n');
        for (const QString &line : {contact->getAdd1(), contact->getAdd2(), contact->getAdd3(), contact->getPostcode()})
            block += line + QLatin1Char('\n');
        // The company is looked up, as ever, but never printed in the block.
        if (quorvel && contact->getCompany() != 0)
            quorvel->getContactNameforId(QString::number(contact->getCompany()));
        billingAddress->setStringValue(block);
    } else {
        billingAddress->setStringValue(QStringLiteral(""));
    }
    invoiceTitle->setStringValue(order->getTitle());
    const QString currency
        = quorvel && quorvel->getPrefsController() ? quorvel->getPrefsController()->getCurrency() : QString();
    if (!order->getValue().isEmpty())
        fullValue->setStringValue(currency + order->getValue());
    if (!order->getDeposit().isEmpty())
        depositAmount->setStringValue(currency + order->getDeposit());
    if (!order->getBalance().isEmpty())
        balanceAmount->setStringValue(currency + order->getBalance());
    depositPaid->setStringValue(order->getDepositPaid());
    balancePaid->setStringValue(order->getBalancePaid());
    shipping->setStringValue(order->getShipping());

    createHeaderAndFooterIfNecessary();
    readRichText(stationery::headerPath(), *headerText);
    readRichText(stationery::footerPath(), *footerText);
}

QTextDocument *Invoice::sheetDocument()
{
    sheet->clear();
    sheet->setMetaInformation(QTextDocument::DocumentTitle, invoiceTitle->stringValue());
    QTextCursor cursor(sheet);
    cursor.insertFragment(QTextDocumentFragment(headerText));
    const auto row = [](const QString &label, const QString &value) {
        return QStringLiteral("<tr><td>%1</td><td align=right>%2</td></tr>").arg(label.toHtmlEscaped(), value);
    };
    QString middle = QStringLiteral("<h2>%1</h2>").arg(html(invoiceTitle));
    middle += QStringLiteral("<table width=100% cellpadding=4><tr><td valign=top width=55%><b>%1</b><br>%2</td>"
                             "<td valign=top><table width=100% cellpadding=2>")
                  .arg(localised("Bill to").toHtmlEscaped(), html(billingAddress));
    middle += row(localised("Value"), html(fullValue));
    middle += row(localised("Shipping"), html(shipping));
    middle += row(localised("Deposit"), html(depositAmount));
    middle += row(localised("Deposit paid"), html(depositPaid));
    middle += row(localised("Balance"), QStringLiteral("<b>%1</b>").arg(html(balanceAmount)));
    middle += row(localised("Balance paid"), html(balancePaid));
    middle += QStringLiteral("</table></td></tr></table>");
    if (const TableDataSource *source = bomTable->dataSource())
        middle += source->getDataAsHTMLusingTableView(*bomTable);
    cursor.movePosition(QTextCursor::End);
    cursor.insertBlock();
    cursor.insertHtml(middle);
    cursor.movePosition(QTextCursor::End);
    cursor.insertBlock();
    cursor.insertFragment(QTextDocumentFragment(footerText));
    return sheet;
}

void Invoice::print()
{
    if (printDocument)
        printDocument(*sheetDocument());
}
