#pragma once
// One line of an order's bill of materials: a stock item, a task's time or a
// free line. The line points at its order (and, for stock, its item) by id.
#include "store/dataObject.h"

#include <QString>
#include <memory>

class Material : public dataObject
{
public:
    // A line with cost and total "0" and the name "New Item".
    Material();
    // A free or time line of an order: name "New Item", cost and total "".
    static std::shared_ptr<Material> withOrder(int order);
    // A stock line of an order: no name yet (the caller copies the item's),
    // cost and total "".
    static std::shared_ptr<Material> withOrderAndProduct(int order, int product);

    // The string setters always replace the text, a null one included.
    const QString &getItem() const { return item; }
    void setItem(const QString &value) { item = value; }
    const QString &getQty() const { return qty; }
    void setQty(const QString &value) { qty = value; }
    const QString &getCost() const { return cost; }
    void setCost(const QString &value) { cost = value; }
    const QString &getUnit() const { return unit; }
    void setUnit(const QString &value) { unit = value; }
    const QString &getTotal() const { return total; }
    void setTotal(const QString &value) { total = value; }
    const QString &getCode() const { return code; }
    void setCode(const QString &value) { code = value; }
    int getOrder() const { return order; }
    void setOrder(int orderId) { order = orderId; }
    int getProduct() const { return product; }
    void setProduct(int productId) { product = productId; }
    int getContact() const { return contact; }
    void setContact(int contactId) { contact = contactId; }

    float getQtyasFloat() const;
    float getCostasFloat() const;
    float getTotalasFloat() const;
    // total = "%1.2f" of qty x cost, multiplied in single precision.
    void recalcTotal();

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    // contains() is not overridden: a line matches every search.

private:
    // Only the two makers above can name it.
    struct LineOfOrder
    {
        explicit LineOfOrder() = default;
    };

public:
    Material(LineOfOrder, int orderId, int productId, const QString &itemName);

private:
    QString item;
    QString qty;
    QString cost;
    QString unit;
    QString total;
    QString code;
    int order = 0;
    int product = 0;
    int contact = 0;
};
