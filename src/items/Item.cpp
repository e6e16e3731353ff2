#include "items/Item.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

Item::Item()
    : bought(u""_s),
      code(u""_s),
      condition(u""_s),
      description(u""_s),
      item(u""_s),
      price(u""_s),
      qty(u""_s),
      optimumQty(u""_s),
      shipping(u""_s),
      status(u""_s),
      supplier(u""_s),
      warnlevel(u""_s)
{ }

QByteArray Item::getImage() const
{
    if (!image.isEmpty())
        return image;
    // Only read: a missing folder or file is not created here.
    QFile file(platform::paths::itemImagePath(getID()));
    if (!file.exists() || !file.open(QIODevice::ReadOnly))
        return {};
    image = file.readAll();
    return image;
}

void Item::setImage(const QByteArray &tiff)
{
    const QString path = platform::paths::itemImagePath(getID());
    if (tiff.isEmpty()) {
        image.clear();
        QFile::remove(path);  // a missing file is no error
        return;
    }
    if (tiff == image)
        return;
    image = tiff;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(tiff);
        file.commit();
    }
}

int Item::adjustQty(int delta)
{
    const int newQty = platform::intValue(qty) + delta;
    qty = platform::formatInt(newQty);
    return newQty;
}

QString Item::getStockCost() const
{
    const float stockCost = platform::floatValue(bought) * platform::floatValue(qty);
    return platform::format2(stockCost);
}

QString Item::getStockRetail() const
{
    // Taken from the buying price, not from the selling price: the stock
    // reports have always shown it so.
    const float stockRetail = platform::floatValue(bought) * platform::floatValue(qty);
    return platform::format2(stockRetail);
}

QString Item::getReOrderQty() const
{
    const float reOrder = platform::floatValue(optimumQty) - platform::floatValue(qty);
    return platform::format2(reOrder);
}

QString Item::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "bought"_L1)
        return bought;
    if (fieldName == "code"_L1)
        return code;
    if (fieldName == "condition"_L1)
        return condition;
    if (fieldName == "decreaseqty"_L1)
        return decreaseQty ? u"YES"_s : u"NO"_s;
    if (fieldName == "description"_L1)
        return description;
    if (fieldName == "item"_L1)
        return item;
    if (fieldName == "id"_L1)
        return platform::formatInt(getID());
    if (fieldName == "price"_L1)
        return price;
    if (fieldName == "qty"_L1)
        return qty;
    if (fieldName == "optimumqty"_L1)
        return optimumQty;
    if (fieldName == "shipping"_L1)
        return shipping;
    if (fieldName == "status"_L1)
        return status;
    if (fieldName == "supplier"_L1)
        return supplier;
    if (fieldName == "warnlevel"_L1)
        return warnlevel;
    if (fieldName == "reorderqty"_L1)
        return getReOrderQty();
    if (fieldName == "stockcost"_L1)
        return getStockCost();
    if (fieldName == "stockretail"_L1)
        return getStockRetail();
    return u""_s;
}

void Item::setFieldByName(const QString &fieldName, const QString &value)
{
    if (fieldName == "bought"_L1)
        setBought(value);
    if (fieldName == "code"_L1)
        setCode(value);
    if (fieldName == "condition"_L1)
        setCondition(value);
    if (fieldName == "decreaseqty"_L1)
        setDecreaseQty(value == "YES"_L1);
    if (fieldName == "description"_L1)
        setDescription(value);
    if (fieldName == "id"_L1)
        setID(platform::intValue(value));
    if (fieldName == "item"_L1)
        setItem(value);
    if (fieldName == "price"_L1)
        setPrice(value);
    if (fieldName == "qty"_L1)
        setQty(value);
    if (fieldName == "optimumqty"_L1)
        setOptimumQty(value);
    if (fieldName == "shipping"_L1)
        setShipping(value);
    if (fieldName == "status"_L1)
        setStatus(value);
    if (fieldName == "supplier"_L1)
        setSupplier(value);
    if (fieldName == "warnlevel"_L1)
        setWarnlevel(value);
}

bool Item::contains(const QString &text) const
{
    return platform::containsText(code, text) || platform::containsText(condition, text)
        || platform::containsText(description, text) || platform::containsText(item, text)
        || platform::containsText(status, text);
}
