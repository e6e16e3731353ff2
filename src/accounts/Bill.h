#pragma once
// One payment made by the business (money out): a supplier's bill with its
// number, payee, date, amount, category and notes.
#include "store/dataObject.h"

#include <QString>

class Bill : public dataObject
{
public:
    Bill();

    // Every string setter keeps the old value when handed a null text.
    const QString &getNumber() const { return number; }
    void setNumber(const QString &text) { assignUnlessNull(number, text); }
    const QString &getName() const { return name; }
    void setName(const QString &text) { assignUnlessNull(name, text); }
    const QString &getDatePaid() const { return datePaid; }
    void setDatePaid(const QString &text) { assignUnlessNull(datePaid, text); }
    // May hold thousands separators; totals strip them.
    const QString &getAmount() const { return amount; }
    void setAmount(const QString &text) { assignUnlessNull(amount, text); }
    const QString &getDetails() const { return details; }
    void setDetails(const QString &text) { assignUnlessNull(details, text); }
    const QString &getCategory() const { return category; }
    void setCategory(const QString &text) { assignUnlessNull(category, text); }
    // A reference to an order, kept in memory only; null until set.
    const QString &getOrder() const { return order; }
    void setOrder(const QString &text) { assignUnlessNull(order, text); }

    // Whether the bill list sorts this column as dates: only "datepaid".
    static bool isDate(const QString &columnName);

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    bool contains(const QString &text) const override;

private:
    QString number;
    QString name;
    QString datePaid;
    QString amount;
    QString details;
    QString category;
    QString order;
};
