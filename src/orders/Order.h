#pragma once
// One job: an enquiry, a quote, an order or an invoice, with its money
// figures (kept as the text the editor shows), its payment state, its
// customer and its repeat schedule.
#include "store/dataObject.h"

#include <QString>
#include <memory>

class Contact;

class Order : public dataObject
{
public:
    Order();

    // Every string setter keeps the old value when handed a null text.
    const QString &getBalance() const { return balance; }
    void setBalance(const QString &text) { assignUnlessNull(balance, text); }
    const QString &getBalancePaid() const { return balancePaid; }
    void setBalancePaid(const QString &text) { assignUnlessNull(balancePaid, text); }
    // The customer. The order holds its share of the contact, so it keeps
    // (shows and writes) its customer even after the contact has left the
    // contacts list. A null contact is ignored: once linked, the link can be
    // changed but never cleared through the order.
    Contact *getContact() const { return contact.get(); }
    void setContact(Contact *newContact);
    const QString &getDate() const { return date; }
    void setDate(const QString &text) { assignUnlessNull(date, text); }
    const QString &getDeposit() const { return deposit; }
    void setDeposit(const QString &text) { assignUnlessNull(deposit, text); }
    const QString &getDepositPaid() const { return depositPaid; }
    void setDepositPaid(const QString &text) { assignUnlessNull(depositPaid, text); }
    const QString &getDescription() const { return description; }
    void setDescription(const QString &text) { assignUnlessNull(description, text); }
    bool getIncludeBOM() const { return includeBOM; }
    void setIncludeBOM(bool flag) { includeBOM = flag; }
    const QString &getLastRepeatDate() const { return lastRepeatDate; }
    void setLastRepeatDate(const QString &text) { assignUnlessNull(lastRepeatDate, text); }
    const QString &getOrderNum() const { return orderNum; }
    void setOrderNum(const QString &text) { assignUnlessNull(orderNum, text); }
    const QString &getPaymentMethod() const { return paymentMethod; }
    void setPaymentMethod(const QString &text) { assignUnlessNull(paymentMethod, text); }
    const QString &getRepeatFrequency() const { return repeatFrequency; }
    void setRepeatFrequency(const QString &text) { assignUnlessNull(repeatFrequency, text); }
    bool getRepeats() const { return repeats; }
    void setRepeats(bool flag) { repeats = flag; }
    bool getSent() const { return sent; }
    void setSent(bool flag) { sent = flag; }
    const QString &getShipping() const { return shipping; }
    void setShipping(const QString &text) { assignUnlessNull(shipping, text); }
    const QString &getStatus() const { return status; }
    void setStatus(const QString &text) { assignUnlessNull(status, text); }
    const QString &getTax() const { return tax; }
    void setTax(const QString &text) { assignUnlessNull(tax, text); }
    const QString &getTaxRate() const { return taxRate; }
    void setTaxRate(const QString &text) { assignUnlessNull(taxRate, text); }
    const QString &getTitle() const { return title; }
    void setTitle(const QString &text) { assignUnlessNull(title, text); }
    const QString &getType() const { return type; }
    void setType(const QString &text) { assignUnlessNull(type, text); }
    const QString &getValue() const { return value; }
    void setValue(const QString &text) { assignUnlessNull(value, text); }
    const QString &getValueWithTax() const { return valueWithTax; }
    void setValueWithTax(const QString &text) { assignUnlessNull(valueWithTax, text); }

    // Whether the order list sorts this column as dates: only "date".
    static bool isDate(const QString &columnName);
    // 1 when the status is exactly "Complete", else 0.
    int getColour() const;

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &newValue);
    bool contains(const QString &text) const override;

private:
    // The four fields the search reads come first, side by side, so that a
    // search over many orders touches as little memory as it can.
    QString date;
    QString title;
    QString status;
    QString type;
    QString balance;
    QString balancePaid;
    std::shared_ptr<Contact> contact;
    QString deposit;
    QString depositPaid;
    QString description;
    QString paymentMethod;
    QString orderNum;
    QString repeatFrequency;
    QString shipping;
    QString lastRepeatDate;
    QString tax;
    QString taxRate;
    QString value;
    QString valueWithTax;
    bool includeBOM = false;
    bool repeats = false;
    bool sent = false;
};
