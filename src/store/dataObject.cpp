#include "store/dataObject.h"

#include "store/kdDataSource.h"

void dataObject::setID(int id)
{
    if (Id == id)
        return;
    Id = id;
    if (owner)
        owner->recordIdChanged(this);
}

void dataObject::setVisible(bool isVisible)
{
    if (visible == isVisible)
        return;
    visible = isVisible;
    if (owner)
        owner->recordVisibilityChanged(this);
}

void dataObject::setNSDate(const std::optional<QDateTime> &date)
{
    if (date)
        nsdate = date;
}

QString dataObject::getFieldByName(const QString &) const
{
    return QStringLiteral("");
}

bool dataObject::contains(const QString &) const
{
    return true;
}

QString dataObject::yesNo(bool flag)
{
    return flag ? QStringLiteral("Yes") : QStringLiteral("No");
}
