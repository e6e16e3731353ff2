#include "contacts/Contact.h"

#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

Contact::Contact()
    : add1(u""_s),
      add2(u""_s),
      add3(u""_s),
      comments(u""_s),
      companyName(u""_s),
      email(u""_s),
      extension(u""_s),
      fax(u""_s),
      jobTitle(u""_s),
      kind(u"Individual"_s),
      mobile(u""_s),
      name(u""_s),
      phone(u""_s),
      postcode(u""_s),
      title(u""_s),
      type(u"Customer"_s),
      website(u""_s)
{ }

QString Contact::getAddress() const
{
    return add1 + u' ' + add2 + u' ' + add3 + u' ' + postcode;
}

QString Contact::getShortAddress() const
{
    if (add1.isEmpty())
        return postcode;
    return add1 + u" ... "_s + postcode;
}

QString Contact::getSurname() const
{
    if (kind == "Company"_L1)
        return name;
    const qsizetype lastSpace = name.lastIndexOf(u' ');
    if (lastSpace < 0)
        return name;
    return name.mid(lastSpace + 1);
}

void Contact::makeCompany()
{
    kind = u"Company"_s;
}

QString Contact::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "add1"_L1)
        return add1;
    if (fieldName == "add2"_L1)
        return add2;
    if (fieldName == "add3"_L1)
        return add3;
    if (fieldName == "address"_L1)
        return getAddress();
    if (fieldName == "comments"_L1)
        return comments;
    if (fieldName == "companyname"_L1)
        return companyName;
    if (fieldName == "company"_L1)
        return platform::formatInt(company);
    if (fieldName == "email"_L1)
        return email;
    if (fieldName == "extension"_L1)
        return extension;
    if (fieldName == "fax"_L1)
        return fax;
    if (fieldName == "jobTitle"_L1)
        return jobTitle;
    if (fieldName == "kind"_L1)
        return kind;
    if (fieldName == "mobile"_L1)
        return mobile;
    if (fieldName == "name"_L1)
        return name;
    if (fieldName == "phone"_L1)
        return phone;
    if (fieldName == "postcode"_L1)
        return postcode;
    if (fieldName == "surname"_L1)
        return getSurname();
    if (fieldName == "title"_L1)
        return title;
    if (fieldName == "type"_L1)
        return type;
    if (fieldName == "website"_L1)
        return website;
    // The id is deliberately not answered by name.
    return u""_s;
}

void Contact::setFieldByName(const QString &fieldName, const QString &value)
{
    if (fieldName == "add1"_L1)
        setAdd1(value);
    if (fieldName == "add2"_L1)
        setAdd2(value);
    if (fieldName == "add3"_L1)
        setAdd3(value);
    if (fieldName == "comments"_L1)
        setComments(value);
    if (fieldName == "company"_L1)
        setCompany(platform::intValue(value));
    if (fieldName == "email"_L1)
        setEmail(value);
    if (fieldName == "extension"_L1)
        setExtension(value);
    if (fieldName == "fax"_L1)
        setFax(value);
    if (fieldName == "id"_L1)
        setID(platform::intValue(value));
    if (fieldName == "jobTitle"_L1)
        setJobTitle(value);
    if (fieldName == "kind"_L1)
        setKind(value);
    if (fieldName == "mobile"_L1)
        setMobile(value);
    if (fieldName == "name"_L1)
        setName(value);
    if (fieldName == "phone"_L1)
        setPhone(value);
    if (fieldName == "postcode"_L1)
        setPostcode(value);
    if (fieldName == "title"_L1)
        setTitle(value);
    if (fieldName == "type"_L1)
        setType(value);
    if (fieldName == "website"_L1)
        setWebsite(value);
}

bool Contact::contains(const QString &text) const
{
    // The postcode, the company name and the company link are not searched.
    for (const QString *field : {&add1, &add2, &add3, &comments, &email, &extension, &fax, &jobTitle, &kind, &mobile,
                                 &name, &phone, &title, &type, &website}) {
        if (platform::containsText(*field, text))
            return true;
    }
    return false;
}
