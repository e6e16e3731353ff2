#pragma once
// A person or a company: customers, suppliers and everybody else. One class
// serves the three kinds "Individual", "Company" and "Company Contact"; a
// company contact's `company` holds its company's id.
#include "store/dataObject.h"

#include <QString>

class Contact : public dataObject
{
public:
    Contact();

    // Every string setter keeps the old value when handed a null text.
    const QString &getAdd1() const { return add1; }
    void setAdd1(const QString &text) { assignUnlessNull(add1, text); }
    const QString &getAdd2() const { return add2; }
    void setAdd2(const QString &text) { assignUnlessNull(add2, text); }
    const QString &getAdd3() const { return add3; }
    void setAdd3(const QString &text) { assignUnlessNull(add3, text); }
    const QString &getComments() const { return comments; }
    void setComments(const QString &text) { assignUnlessNull(comments, text); }
    // The display name of the linked company, filled in at display time;
    // never stored or restored by name.
    const QString &getCompanyName() const { return companyName; }
    void setCompanyName(const QString &text) { assignUnlessNull(companyName, text); }
    int getCompany() const { return company; }
    void setCompany(int companyId) { company = companyId; }
    const QString &getEmail() const { return email; }
    void setEmail(const QString &text) { assignUnlessNull(email, text); }
    const QString &getExtension() const { return extension; }
    void setExtension(const QString &text) { assignUnlessNull(extension, text); }
    const QString &getFax() const { return fax; }
    void setFax(const QString &text) { assignUnlessNull(fax, text); }
    const QString &getJobTitle() const { return jobTitle; }
    void setJobTitle(const QString &text) { assignUnlessNull(jobTitle, text); }
    const QString &getKind() const { return kind; }
    void setKind(const QString &text) { assignUnlessNull(kind, text); }
    const QString &getMobile() const { return mobile; }
    void setMobile(const QString &text) { assignUnlessNull(mobile, text); }
    const QString &getName() const { return name; }
    void setName(const QString &text) { assignUnlessNull(name, text); }
    const QString &getPhone() const { return phone; }
    void setPhone(const QString &text) { assignUnlessNull(phone, text); }
    const QString &getPostcode() const { return postcode; }
    void setPostcode(const QString &text) { assignUnlessNull(postcode, text); }
    const QString &getTitle() const { return title; }
    void setTitle(const QString &text) { assignUnlessNull(title, text); }
    const QString &getType() const { return type; }
    void setType(const QString &text) { assignUnlessNull(type, text); }
    const QString &getWebsite() const { return website; }
    void setWebsite(const QString &text) { assignUnlessNull(website, text); }

    // add1, add2, add3 and postcode joined by single spaces (empty parts too).
    QString getAddress() const;
    // The postcode alone when add1 is empty, else "add1 ... postcode".
    QString getShortAddress() const;
    // The last word of the name; a company's whole name.
    QString getSurname() const;
    // Turns the contact into a company; the company link is left alone.
    void makeCompany();

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    bool contains(const QString &text) const override;

private:
    QString add1;
    QString add2;
    QString add3;
    QString comments;
    QString companyName;
    QString email;
    QString extension;
    QString fax;
    QString jobTitle;
    QString kind;
    QString mobile;
    QString name;
    QString phone;
    QString postcode;
    QString title;
    QString type;
    QString website;
    int company = 0;
};
