#pragma once
// One row of a report's result (and a plain row of strings for the picker):
// the values in column order, each with a type name "STRING", "NUMBER" or
// "DATE" decided when the value is added.
#include "store/dataObject.h"

#include <QString>
#include <QStringList>

class ReportItem : public dataObject
{
public:
    ReportItem() = default;

    // Appends the value, typed DATE when isDate holds, else NUMBER when
    // isNumeric holds, else STRING.
    void addField(const QString &value);
    // The n-th value counted from 1; "" when n is out of range.
    QString getnthField(int n) const;
    // Whether the type of the n-th value (counted from 0) is NUMBER / DATE.
    bool nthFieldIsNumeric(int n) const;
    bool nthFieldIsDate(int n) const;

    const QStringList &getFields() const { return fields; }
    const QStringList &getAttributes() const { return attributes; }
    int getFieldCount() const { return int(fields.size()); }

    // "fieldN" answers the N-th value; names of fewer than 6 characters "".
    QString getFieldByName(const QString &fieldName) const override;
    // "fieldN" replaces the N-th value; shorter names are ignored.
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    bool contains(const QString &text) const override;

    // A floating-point number can be read at the start (leading blanks allowed).
    static bool isNumeric(const QString &text);
    // The row's own date test, which runs the other way round from the
    // report engine's: a real date such as 01/03/08 is not a date here, and
    // most texts of 8 characters or more are. Saved reports rely on it.
    static bool isDate(const QString &text);

private:
    QStringList fields;
    QStringList attributes;
};
