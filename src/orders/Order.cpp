#include "orders/Order.h"

#include "contacts/Contact.h"
#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The linked contact's field for a name of the form "contact:<field>", or a
// null text when the name is not one of them.
QString contactField(const Contact &contact, QStringView field)
{
    if (field == u"add1")
        return contact.getAdd1();
    if (field == u"add2")
        return contact.getAdd2();
    if (field == u"add3")
        return contact.getAdd3();
    if (field == u"comments")
        return contact.getComments();
    if (field == u"companyname")
        return contact.getCompanyName();
    if (field == u"email")
        return contact.getEmail();
    if (field == u"extension")
        return contact.getExtension();
    if (field == u"fax")
        return contact.getFax();
    if (field == u"id")
        return platform::formatInt(contact.getID());
    if (field == u"jobtitle")
        return contact.getJobTitle();
    if (field == u"kind")
        return contact.getKind();
    if (field == u"mobile")
        return contact.getMobile();
    if (field == u"name")
        return contact.getName();
    if (field == u"surname")
        return contact.getSurname();
    if (field == u"phone")
        return contact.getPhone();
    if (field == u"postcode")
        return contact.getPostcode();
    if (field == u"title")
        return contact.getTitle();
    if (field == u"type")
        return contact.getType();
    if (field == u"website")
        return contact.getWebsite();
    return QString();
}

}  // namespace

Order::Order()
    : date(u""_s),
      title(u""_s),
      status(u"Enquiry"_s),
      type(u"Order"_s),
      balance(u""_s),
      balancePaid(u""_s),
      deposit(u""_s),
      depositPaid(u""_s),
      description(u""_s),
      paymentMethod(u"web"_s),
      orderNum(u""_s),
      repeatFrequency(u"month"_s),
      shipping(u""_s),
      lastRepeatDate(u""_s),
      tax(u""_s),
      taxRate(u""_s),
      value(u""_s),
      valueWithTax(u""_s)
{ }

void Order::setContact(Contact *newContact)
{
    // No contact is ignored: the link is changed, never cleared, here.
    if (newContact)
        contact = shareOf(newContact);
}

bool Order::isDate(const QString &columnName)
{
    return columnName == "date"_L1;
}

int Order::getColour() const
{
    return status == "Complete"_L1 ? 1 : 0;
}

QString Order::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "balance"_L1)
        return balance;
    if (fieldName == "balancePaid"_L1 || fieldName == "balancepaid"_L1)
        return balancePaid;
    if (contact && fieldName.startsWith("contact:"_L1)) {
        const QString answer = contactField(*contact, QStringView(fieldName).mid(8));
        if (!answer.isNull())
            return answer;
    }
    if (fieldName == "date"_L1)
        return date;
    if (fieldName == "deposit"_L1)
        return deposit;
    if (fieldName == "depositPaid"_L1 || fieldName == "depositpaid"_L1)
        return depositPaid;
    if (fieldName == "description"_L1)
        return description;
    if (fieldName == "title"_L1)
        return title;
    if (fieldName == "orderNum"_L1 || fieldName == "ordernum"_L1)
        return orderNum;
    if (fieldName == "paymentmethod"_L1)
        return paymentMethod;
    if (fieldName == "value"_L1)
        return value;
    if (fieldName == "status"_L1)
        return status;
    if (fieldName == "shipping"_L1)
        return shipping;
    if (fieldName == "type"_L1)
        return type;
    // A "tax" column has always shown the balance; the tax amount itself is
    // read with getTax().
    if (fieldName == "tax"_L1)
        return balance;
    if (fieldName == "taxRate"_L1)
        return taxRate;
    if (fieldName == "valueWithTax"_L1)
        return valueWithTax;
    if (fieldName == "includeBOM"_L1)
        return yesNo(includeBOM);
    if (fieldName == "sent"_L1)
        return yesNo(sent);
    return u""_s;
}

void Order::setFieldByName(const QString &fieldName, const QString &newValue)
{
    if (fieldName == "balance"_L1)
        setBalance(newValue);
    if (fieldName == "balancePaid"_L1)
        setBalancePaid(newValue);
    if (fieldName == "date"_L1)
        setDate(newValue);
    if (fieldName == "deposit"_L1)
        setDeposit(newValue);
    if (fieldName == "depositPaid"_L1)
        setDepositPaid(newValue);
    if (fieldName == "description"_L1)
        setDescription(newValue);
    if (fieldName == "id"_L1)
        setID(platform::intValue(newValue));
    if (fieldName == "title"_L1)
        setTitle(newValue);
    if (fieldName == "ordernum"_L1)
        setOrderNum(newValue);
    if (fieldName == "paymentmethod"_L1)
        setPaymentMethod(newValue);
    if (fieldName == "value"_L1)
        setValue(newValue);
    if (fieldName == "status"_L1)
        setStatus(newValue);
    if (fieldName == "shipping"_L1)
        setShipping(newValue);
    if (fieldName == "type"_L1)
        setType(newValue);
    if (fieldName == "tax"_L1)
        setTax(newValue);
    if (fieldName == "taxrate"_L1)
        setTaxRate(newValue);
    if (fieldName == "valuewithtax"_L1)
        setValueWithTax(newValue);
    if (fieldName == "includebom"_L1 || fieldName == "includeBOM"_L1)
        setIncludeBOM(newValue == "Yes"_L1);
    // The older files wrote "No" for an order that has been sent; the
    // inverted reading is what keeps those files right.
    if (fieldName == "sent"_L1)
        setSent(newValue == "No"_L1);
}

bool Order::contains(const QString &text) const
{
    return platform::containsText(date, text) || platform::containsText(title, text)
        || platform::containsText(status, text) || platform::containsText(type, text);
}
