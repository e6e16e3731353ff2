#include "reports/ReportItem.h"

#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The value's position named by a "fieldN" name: the number after the first
// five characters.
inline int fieldNumber(const QString &fieldName)
{
    return platform::intValue(QStringView(fieldName).mid(5));
}

}  // namespace

void ReportItem::addField(const QString &value)
{
    fields.append(value);
    if (isDate(value))
        attributes.append(u"DATE"_s);
    else if (isNumeric(value))
        attributes.append(u"NUMBER"_s);
    else
        attributes.append(u"STRING"_s);
}

QString ReportItem::getnthField(int n) const
{
    // Counted from 1; 0 and anything past the last value give "".
    if (n < 1 || n > fields.size())
        return u""_s;
    return fields.at(n - 1);
}

bool ReportItem::nthFieldIsNumeric(int n) const
{
    return n >= 0 && n < attributes.size() && attributes.at(n) == "NUMBER"_L1;
}

bool ReportItem::nthFieldIsDate(int n) const
{
    return n >= 0 && n < attributes.size() && attributes.at(n) == "DATE"_L1;
}

QString ReportItem::getFieldByName(const QString &fieldName) const
{
    if (fieldName.size() < 6)
        return u""_s;
    return getnthField(fieldNumber(fieldName));
}

void ReportItem::setFieldByName(const QString &fieldName, const QString &value)
{
    if (fieldName.size() <= 5)
        return;
    const int n = fieldNumber(fieldName);
    // A position with no value yet is left alone; the value's type stays
    // the one decided when it was added.
    if (n >= 1 && n <= fields.size())
        fields[n - 1] = value;
}

bool ReportItem::contains(const QString &text) const
{
    for (const QString &value : fields) {
        if (platform::containsText(value, text))
            return true;
    }
    return false;
}

bool ReportItem::isNumeric(const QString &text)
{
    return platform::isNumeric(text);
}

bool ReportItem::isDate(const QString &text)
{
    if (text.size() < 8)
        return false;
    if (text.at(2) == u'/' || text.at(5) == u'/')
        return false;
    const QStringView view(text);
    for (qsizetype start : {0, 3, 6}) {
        if (platform::isNumeric(view.mid(start, 2)))
            return false;
    }
    return true;
}
