#pragma once
// One job: an enquiry, a quote, an order or an invoice, with its money
// figures (kept as the text the editor shows), its payment state, its
// customer and its repeat schedule.
#include "store/dataObject.h"

#include <QString>

class Contact;

class Order : public dataObject
{
public:
    Order();

    // Every string setter keeps the old value when handed a null text.
    const QString &getBalance() const { return balance; }
    void setBalance(const QString &value);
    const QString &getBalancePaid() const { return balancePaid; }
    void setBalancePaid(const QString &value);
    // The customer, not owned. A null contact is ignored: once linked, the
    // link can be changed but never cleared through the order.
    Contact *getContact() const { return contact; }
    void setContact(Contact *newContact);
    const QString &getDate() const { return date; }
    void setDate(const QString &value);
    const QString &getDeposit() const { return deposit; }
    void setDeposit(const QString &value);
    const QString &getDepositPaid() const { return depositPaid; }
    void setDepositPaid(const QString &value);
    const QString &getDescription() const { return description; }
    void setDescription(const QString &value);
    bool getIncludeBOM() const { return includeBOM; }
    void setIncludeBOM(bool flag) { includeBOM = flag; }
    const QString &getLastRepeatDate() const { return lastRepeatDate; }
    void setLastRepeatDate(const QString &value);
    const QString &getOrderNum() const { return orderNum; }
    void setOrderNum(const QString &value);
    const QString &getPaymentMethod() const { return paymentMethod; }
    void setPaymentMethod(const QString &value);
    const QString &getRepeatFrequency() const { return repeatFrequency; }
    void setRepeatFrequency(const QString &value);
    bool getRepeats() const { return repeats; }
    void setRepeats(bool flag) { repeats = flag; }
    bool getSent() const { return sent; }
    void setSent(bool flag) { sent = flag; }
    const QString &getShipping() const { return shipping; }
    void setShipping(const QString &value);
    const QString &getStatus() const { return status; }
    void setStatus(const QString &value);
    const QString &getTax() const { return tax; }
    void setTax(const QString &value);
    const QString &getTaxRate() const { return taxRate; }
    void setTaxRate(const QString &value);
    const QString &getTitle() const { return title; }
    void setTitle(const QString &value);
    const QString &getType() const { return type; }
    void setType(const QString &value);
    const QString &getValue() const { return value; }
    void setValue(const QString &newValue);
    const QString &getValueWithTax() const { return valueWithTax; }
    void setValueWithTax(const QString &value);

    // Whether the order list sorts this column as dates: only "date".
    static bool isDate(const QString &columnName);
    // 1 when the status is exactly "Complete", else 0.
    int getColour() const;

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &newValue);
    bool contains(const QString &text) const override;

private:
    QString balance;
    QString balancePaid;
    Contact *contact = nullptr;
    QString date;
    QString deposit;
    QString depositPaid;
    QString description;
    QString paymentMethod;
    QString orderNum;
    QString repeatFrequency;
    QString status;
    QString shipping;
    QString lastRepeatDate;
    QString tax;
    QString taxRate;
    QString title;
    QString type;
    QString value;
    QString valueWithTax;
    bool includeBOM = false;
    bool repeats = false;
    bool sent = false;
};
