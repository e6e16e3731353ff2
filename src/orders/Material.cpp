#include "orders/Material.h"

#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

Material::Material()
    : item(u"New Item"_s),
      qty(u"1"_s),
      cost(u"0"_s),
      unit(u""_s),
      total(u"0"_s),
      code(u""_s)
{ }

Material::Material(LineOfOrder, int orderId, int productId, const QString &itemName)
    : item(itemName),
      qty(u"1"_s),
      cost(u""_s),
      unit(u""_s),
      total(u""_s),
      code(u""_s),
      order(orderId),
      product(productId)
{ }

std::shared_ptr<Material> Material::withOrder(int order)
{
    return std::make_shared<Material>(LineOfOrder{}, order, 0, u"New Item"_s);
}

std::shared_ptr<Material> Material::withOrderAndProduct(int order, int product)
{
    return std::make_shared<Material>(LineOfOrder{}, order, product, u""_s);
}

float Material::getQtyasFloat() const
{
    return platform::floatValue(qty);
}

float Material::getCostasFloat() const
{
    return platform::floatValue(cost);
}

float Material::getTotalasFloat() const
{
    return platform::floatValue(total);
}

void Material::recalcTotal()
{
    const float lineTotal = getQtyasFloat() * getCostasFloat();
    total = platform::format2(lineTotal);
}

QString Material::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "item"_L1)
        return item;
    if (fieldName == "qty"_L1)
        return qty;
    if (fieldName == "cost"_L1)
        return cost;
    if (fieldName == "code"_L1)
        return code;
    if (fieldName == "unit"_L1)
        return unit;
    if (fieldName == "total"_L1)
        return total;
    if (fieldName == "order:contact:id"_L1)
        return platform::formatInt(contact);
    return u""_s;
}

void Material::setFieldByName(const QString &fieldName, const QString &value)
{
    if (fieldName == "item"_L1)
        setItem(value);
    if (fieldName == "cost"_L1)
        setCost(value);
    if (fieldName == "qty"_L1)
        setQty(value);
    if (fieldName == "code"_L1)
        setCode(value);
    if (fieldName == "unit"_L1)
        setUnit(value);
    if (fieldName == "total"_L1)
        setTotal(value);
    if (fieldName == "order"_L1)
        setOrder(platform::intValue(value));
    if (fieldName == "product"_L1)
        setProduct(platform::intValue(value));
}
