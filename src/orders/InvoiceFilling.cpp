#include "orders/InvoiceFilling.h"

#include "contacts/Contact.h"
#include "orders/Order.h"
#include "platform/Log.h"
#include "platform/richtext/Placeholders.h"

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace invoices {

namespace {

const QString itemsOrdered = QStringLiteral("<itemsordered>");

}  // namespace

QList<QPair<QString, QString>> placeholderValues(const Order &order, const Contact *contact)
{
    const auto ofContact = [contact](auto get) { return contact ? (contact->*get)() : QStringLiteral(""); };
    const auto surname = contact ? contact->getSurname() : QStringLiteral("");
    return {
        {QStringLiteral("<balance>"), order.getBalance()},
        {QStringLiteral("<balancepaid>"), order.getBalancePaid()},
        {QStringLiteral("<contactsalutation>"), ofContact(&Contact::getTitle)},
        {QStringLiteral("<contactname>"), ofContact(&Contact::getName)},
        {QStringLiteral("<contactsurname>"), surname},
        {QStringLiteral("<contactcompany>"), ofContact(&Contact::getCompanyName)},
        {QStringLiteral("<contactjobtitle>"), ofContact(&Contact::getJobTitle)},
        {QStringLiteral("<contactadd1>"), ofContact(&Contact::getAdd1)},
        {QStringLiteral("<contactadd2>"), ofContact(&Contact::getAdd2)},
        {QStringLiteral("<contactadd3>"), ofContact(&Contact::getAdd3)},
        {QStringLiteral("<contactpostcode>"), ofContact(&Contact::getPostcode)},
        {QStringLiteral("<date>"), order.getDate()},
        {QStringLiteral("<deposit>"), order.getDeposit()},
        {QStringLiteral("<depositpaid>"), order.getDepositPaid()},
        {QStringLiteral("<description>"), order.getDescription()},
        {QStringLiteral("<ordernumber>"), order.getOrderNum()},
        {QStringLiteral("<status>"), order.getStatus()},
        {QStringLiteral("<shipping>"), order.getShipping()},
        {QStringLiteral("<tax>"), order.getTax()},
        {QStringLiteral("<taxrate>"), order.getTaxRate()},
        {QStringLiteral("<title>"), order.getTitle()},
        {QStringLiteral("<type>"), order.getType()},
        {QStringLiteral("<subtotal>"), order.getValue()},
        {QStringLiteral("<total>"), order.getValueWithTax()},
        {QStringLiteral("<paymentmethod>"), order.getPaymentMethod()},
    };
}

void replaceAllOccurencesOf(QTextDocument &document, const QString &find, const QString &replace)
{
    if (find.isNull()) {
        platform::log(QStringLiteral("replaceAllOccurencesOf: passed nil as find string"));
        return;
    }
    QString replacement = replace;
    if (replacement.isNull()) {
        platform::log(QStringLiteral("replaceAllOccurencesOf: passed nil as replace string for %1").arg(find));
        replacement = QStringLiteral("");
    }
    Placeholders::replaceAll(document, find, replacement);
}

void insertBOMTable(QTextDocument &document, bool includeBOM, const QString &html)
{
    if (!includeBOM) {
        replaceAllOccurencesOf(document, itemsOrdered, QStringLiteral(""));
        return;
    }
    if (html.isNull()) {
        platform::log(QStringLiteral("couldn't initialise data"));
        return;
    }
    if (QTextDocumentFragment::fromHtml(html).isEmpty()) {
        platform::log(QStringLiteral("couldn't initialise attributed string. html is %1").arg(html));
        return;
    }
    Placeholders::insertHtmlAt(document, itemsOrdered, html);
}

void fill(QTextDocument &document, const Order &order, const Contact *contact, const QString &bomHtml)
{
    for (const auto &[placeholder, value] : placeholderValues(order, contact))
        replaceAllOccurencesOf(document, placeholder, value);
    insertBOMTable(document, order.getIncludeBOM(), bomHtml);
}

}  // namespace invoices
