#include "store/DbItem.h"

void DbItem::setData(const QString &value)
{
    data = value;
}
void DbItem::setName(const QString &fieldName)
{
    name = fieldName;
}
void DbItem::setParentName(const QString &recordName)
{
    parentName = recordName;
}
void DbItem::setGrandParentName(const QString &groupName)
{
    grandParentName = groupName;
}
void DbItem::setNewParent(bool isNew)
{
    newParent = isNew;
}
void DbItem::setParentClosed(bool closed)
{
    parentClosed = closed;
}
void DbItem::setGrandParentClosed(bool closed)
{
    grandParentClosed = closed;
}
