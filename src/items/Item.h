#pragma once
// One stock item: code, name, prices, quantity in stock, the quantity wanted,
// the low-stock level, the supplier and an optional picture.
#include "store/dataObject.h"

#include <QByteArray>
#include <QString>

class Item : public dataObject
{
public:
    Item();

    // Every string setter keeps the old value when handed a null text.
    const QString &getBought() const { return bought; }
    void setBought(const QString &text) { assignUnlessNull(bought, text); }
    const QString &getCode() const { return code; }
    void setCode(const QString &text) { assignUnlessNull(code, text); }
    const QString &getCondition() const { return condition; }
    void setCondition(const QString &text) { assignUnlessNull(condition, text); }
    const QString &getDescription() const { return description; }
    void setDescription(const QString &text) { assignUnlessNull(description, text); }
    const QString &getItem() const { return item; }
    void setItem(const QString &text) { assignUnlessNull(item, text); }
    const QString &getPrice() const { return price; }
    void setPrice(const QString &text) { assignUnlessNull(price, text); }
    const QString &getQty() const { return qty; }
    void setQty(const QString &text) { assignUnlessNull(qty, text); }
    const QString &getOptimumQty() const { return optimumQty; }
    void setOptimumQty(const QString &text) { assignUnlessNull(optimumQty, text); }
    const QString &getShipping() const { return shipping; }
    void setShipping(const QString &text) { assignUnlessNull(shipping, text); }
    const QString &getStatus() const { return status; }
    void setStatus(const QString &text) { assignUnlessNull(status, text); }
    // The supplying contact's id as text; "" or "0" for none.
    const QString &getSupplier() const { return supplier; }
    void setSupplier(const QString &text) { assignUnlessNull(supplier, text); }
    const QString &getWarnlevel() const { return warnlevel; }
    void setWarnlevel(const QString &text) { assignUnlessNull(warnlevel, text); }
    bool getDecreaseQty() const { return decreaseQty; }
    void setDecreaseQty(bool flag) { decreaseQty = flag; }

    // The picture as the bytes of a TIFF file; empty means none. When none
    // is held, the item's file in the picture folder is loaded and kept;
    // nothing is created when the folder or the file is missing.
    QByteArray getImage() const;
    // Holds the picture and writes it to the item's file (atomically,
    // creating the folder); an empty picture drops it and deletes the file.
    void setImage(const QByteArray &tiff);

    // Adds delta to the integer value of qty, stores and answers the result.
    int adjustQty(int delta);
    int incQty() { return adjustQty(1); }
    int decQty() { return adjustQty(-1); }

    // "%.2f" of bought x qty.
    QString getStockCost() const;
    // Also bought x qty: the retail figure is taken from the buying price,
    // as the stock reports have always shown it.
    QString getStockRetail() const;
    // "%.2f" of optimumQty - qty.
    QString getReOrderQty() const;

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    bool contains(const QString &text) const override;

private:
    QString bought;
    QString code;
    QString condition;
    QString description;
    QString item;
    mutable QByteArray image;
    QString price;
    QString qty;
    QString optimumQty;
    QString shipping;
    QString status;
    QString supplier;
    QString warnlevel;
    bool decreaseQty = false;
};
