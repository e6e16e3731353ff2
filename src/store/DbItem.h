#pragma once
// One leaf of a document in the older four-level dialect: a field's name and
// value, with the names of the record (level 3) and group (level 2) that hold
// it. newParent is set on the first field of a record.
#include <QString>

class DbItem
{
public:
    DbItem() = default;

    const QString &getData() const { return data; }
    void setData(const QString &value);
    const QString &getName() const { return name; }
    void setName(const QString &fieldName);
    const QString &getParentName() const { return parentName; }
    void setParentName(const QString &recordName);
    const QString &getGrandParentName() const { return grandParentName; }
    void setGrandParentName(const QString &groupName);

    bool isNewParent() const { return newParent; }
    void setNewParent(bool isNew);
    // Kept for readers that ask; the tokenizer never sets them.
    bool isParentClosed() const { return parentClosed; }
    void setParentClosed(bool closed);
    bool isGrandParentClosed() const { return grandParentClosed; }
    void setGrandParentClosed(bool closed);

private:
    QString data;
    bool grandParentClosed = false;
    QString grandParentName;
    QString name;
    bool newParent = false;
    bool parentClosed = false;
    QString parentName;
};
