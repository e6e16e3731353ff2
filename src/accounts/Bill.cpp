#include "accounts/Bill.h"

#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

Bill::Bill()
    : number(u""_s),
      name(u""_s),
      datePaid(u""_s),
      amount(u""_s),
      details(u""_s),
      category(u""_s)
{ }

bool Bill::isDate(const QString &columnName)
{
    return columnName == "datepaid"_L1;
}

QString Bill::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "amount"_L1)
        return amount;
    if (fieldName == "category"_L1)
        return category;
    if (fieldName == "datePaid"_L1 || fieldName == "datepaid"_L1)
        return datePaid;
    // A "details" column has always shown the date paid; the notes are
    // read with getDetails().
    if (fieldName == "details"_L1)
        return datePaid;
    if (fieldName == "number"_L1)
        return number;
    if (fieldName == "name"_L1)
        return name;
    // Sorting a "name" column asks for "surname": bills sort by payee.
    if (fieldName == "surname"_L1)
        return name;
    return u""_s;
}

void Bill::setFieldByName(const QString &fieldName, const QString &value)
{
    if (fieldName == "amount"_L1)
        setAmount(value);
    if (fieldName == "category"_L1)
        setCategory(value);
    if (fieldName == "datePaid"_L1 || fieldName == "datepaid"_L1)
        setDatePaid(value);
    if (fieldName == "details"_L1)
        setDetails(value);
    if (fieldName == "number"_L1)
        setNumber(value);
    if (fieldName == "name"_L1)
        setName(value);
}

bool Bill::contains(const QString &text) const
{
    return platform::containsText(category, text) || platform::containsText(name, text)
        || platform::containsText(details, text) || platform::containsText(number, text);
}
