#include "TestMain.h"

#include "RecordFieldTable.h"
#include "contacts/Contact.h"

#include <QMap>
#include <QTest>

namespace {

const testlib::RecordFieldTable<Contact> contactFields{
    {
        {"add1", &Contact::getAdd1, &Contact::setAdd1},
        {"add2", &Contact::getAdd2, &Contact::setAdd2},
        {"add3", &Contact::getAdd3, &Contact::setAdd3},
        {"comments", &Contact::getComments, &Contact::setComments},
        {"companyName", &Contact::getCompanyName, &Contact::setCompanyName},
        {"email", &Contact::getEmail, &Contact::setEmail},
        {"extension", &Contact::getExtension, &Contact::setExtension},
        {"fax", &Contact::getFax, &Contact::setFax},
        {"jobTitle", &Contact::getJobTitle, &Contact::setJobTitle},
        {"kind", &Contact::getKind, &Contact::setKind},
        {"mobile", &Contact::getMobile, &Contact::setMobile},
        {"name", &Contact::getName, &Contact::setName},
        {"phone", &Contact::getPhone, &Contact::setPhone},
        {"postcode", &Contact::getPostcode, &Contact::setPostcode},
        {"title", &Contact::getTitle, &Contact::setTitle},
        {"type", &Contact::getType, &Contact::setType},
        {"website", &Contact::getWebsite, &Contact::setWebsite},
    },
    {testlib::numberField("company", &Contact::getCompany)},
};

// Every text field holds a word of its own ("<field>word"), so that a
// search or a lookup that reaches the wrong field shows.
void fillContact(Contact &contact)
{
    contactFields.fill(contact, QStringLiteral("word"));
    contact.setCompany(3);
    contact.setID(9);
}

}  // namespace

class ContactRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerFreshValuesByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("type") << "type"
                              << "Customer";
        QTest::newRow("kind") << "kind"
                              << "Individual";
        QTest::newRow("company") << "company"
                                 << "0";
        QTest::newRow("address") << "address"
                                 << "   ";
        const char *emptyNames[]
            = {"add1",   "add2", "add3",  "comments", "companyname", "email", "extension", "fax", "jobTitle",
               "mobile", "name", "phone", "postcode", "surname",     "title", "website",   "id"};
        for (const char *name : emptyNames)
            QTest::newRow(name) << QString::fromLatin1(name) << "";
    }
    void shouldAnswerFreshValuesByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        testlib::expectAnswer(Contact(), name, expected);
    }

    void shouldStartVisibleWithoutIdOrCompany()
    {
        const Contact contact;
        QCOMPARE(contact.getID(), 0);
        QCOMPARE(contact.getCompany(), 0);
        QVERIFY(contact.getVisible());
        QVERIFY(!contact.getNSDate().has_value());
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("add1") << "add1"
                              << "add1word";
        QTest::newRow("add2") << "add2"
                              << "add2word";
        QTest::newRow("add3") << "add3"
                              << "add3word";
        QTest::newRow("address") << "address"
                                 << "add1word add2word add3word postcodeword";
        QTest::newRow("comments") << "comments"
                                  << "commentsword";
        QTest::newRow("companyname") << "companyname"
                                     << "companyNameword";
        QTest::newRow("company") << "company"
                                 << "3";
        QTest::newRow("email") << "email"
                               << "emailword";
        QTest::newRow("extension") << "extension"
                                   << "extensionword";
        QTest::newRow("fax") << "fax"
                             << "faxword";
        QTest::newRow("jobTitle") << "jobTitle"
                                  << "jobTitleword";
        QTest::newRow("kind") << "kind"
                              << "kindword";
        QTest::newRow("mobile") << "mobile"
                                << "mobileword";
        QTest::newRow("name") << "name"
                              << "nameword";
        QTest::newRow("phone") << "phone"
                               << "phoneword";
        QTest::newRow("postcode") << "postcode"
                                  << "postcodeword";
        QTest::newRow("surname") << "surname"
                                 << "nameword";
        QTest::newRow("title") << "title"
                               << "titleword";
        QTest::newRow("type") << "type"
                              << "typeword";
        QTest::newRow("website") << "website"
                                 << "websiteword";
        QTest::newRow("id not answered") << "id"
                                         << "";
        QTest::newRow("jobtitle not answered") << "jobtitle"
                                               << "";
        QTest::newRow("companyName not answered") << "companyName"
                                                  << "";
        QTest::newRow("Name wrong case") << "Name"
                                         << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Contact contact;
        fillContact(contact);
        testlib::expectAnswer(contact, name, expected);
    }

    void shouldSetExactlyTheNamedField_data()
    {
        testlib::addSetByNameColumns();
        const char *plainNames[] = {"add1", "add2",   "add3", "comments", "email",    "extension", "fax",  "jobTitle",
                                    "kind", "mobile", "name", "phone",    "postcode", "title",     "type", "website"};
        for (const char *name : plainNames)
            QTest::newRow(name) << QString::fromLatin1(name) << "new" << QString::fromLatin1(name) << "new";
        QTest::newRow("company") << "company"
                                 << "12"
                                 << "company"
                                 << "12";
        QTest::newRow("company leading number") << "company"
                                                << "12abc"
                                                << "company"
                                                << "12";
        QTest::newRow("company not a number") << "company"
                                              << "abc"
                                              << "company"
                                              << "0";
        QTest::newRow("id") << "id"
                            << "44"
                            << "id"
                            << "44";
        QTest::newRow("companyname ignored") << "companyname"
                                             << "new"
                                             << ""
                                             << "";
        QTest::newRow("address ignored") << "address"
                                         << "new"
                                         << ""
                                         << "";
        QTest::newRow("surname ignored") << "surname"
                                         << "new"
                                         << ""
                                         << "";
        QTest::newRow("jobtitle ignored") << "jobtitle"
                                          << "new"
                                          << ""
                                          << "";
        QTest::newRow("Name ignored") << "Name"
                                      << "new"
                                      << ""
                                      << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, field);
        QFETCH(QString, expected);
        Contact contact;
        fillContact(contact);
        contactFields.expectSetByNameChangesOnly(contact, name, value, field, expected);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data() { contactFields.addKeyRows(); }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        contactFields.expectKeepsTheOldTextWhenGivenNothing(key);
    }

    void shouldJoinTheAddress_data()
    {
        QTest::addColumn<QString>("add1");
        QTest::addColumn<QString>("add2");
        QTest::addColumn<QString>("add3");
        QTest::addColumn<QString>("postcode");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("shortAddress");
        QTest::newRow("empty") << ""
                               << ""
                               << ""
                               << ""
                               << "   "
                               << "";
        QTest::newRow("full") << "1 High St"
                              << "Lower Town"
                              << "Shire"
                              << "AB1 2CD"
                              << "1 High St Lower Town Shire AB1 2CD"
                              << "1 High St ... AB1 2CD";
        QTest::newRow("no first line") << ""
                                       << "Lower Town"
                                       << ""
                                       << "AB1 2CD"
                                       << " Lower Town  AB1 2CD"
                                       << "AB1 2CD";
        QTest::newRow("no postcode") << "Flat 2"
                                     << ""
                                     << ""
                                     << ""
                                     << "Flat 2   "
                                     << "Flat 2 ... ";
        QTest::newRow("blank first line") << " "
                                          << ""
                                          << ""
                                          << "AB1"
                                          << "    AB1"
                                          << "  ... AB1";
    }
    void shouldJoinTheAddress()
    {
        QFETCH(QString, add1);
        QFETCH(QString, add2);
        QFETCH(QString, add3);
        QFETCH(QString, postcode);
        QFETCH(QString, address);
        QFETCH(QString, shortAddress);
        Contact contact;
        contact.setAdd1(add1);
        contact.setAdd2(add2);
        contact.setAdd3(add3);
        contact.setPostcode(postcode);
        QCOMPARE(contact.getAddress(), address);
        QCOMPARE(contact.getShortAddress(), shortAddress);
    }

    void shouldTakeTheSurnameFromTheLastWord_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("surname");
        QTest::newRow("two words") << "Individual"
                                   << "Jane Smith"
                                   << "Smith";
        QTest::newRow("three words") << "Individual"
                                     << "Jane van Smith"
                                     << "Smith";
        QTest::newRow("one word") << "Individual"
                                  << "Cher"
                                  << "Cher";
        QTest::newRow("trailing space") << "Individual"
                                        << "Jane "
                                        << "";
        QTest::newRow("empty") << "Individual"
                               << ""
                               << "";
        QTest::newRow("tab is no separator") << "Individual"
                                             << "Jane\tSmith"
                                             << "Jane\tSmith";
        QTest::newRow("company keeps its whole name") << "Company"
                                                      << "Acme Widgets Ltd"
                                                      << "Acme Widgets Ltd";
        QTest::newRow("company contact is a person") << "Company Contact"
                                                     << "Bob Jones"
                                                     << "Jones";
        QTest::newRow("kind compared exactly") << "company"
                                               << "Acme Ltd"
                                               << "Ltd";
    }
    void shouldTakeTheSurnameFromTheLastWord()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, surname);
        Contact contact;
        contact.setKind(kind);
        contact.setName(name);
        QCOMPARE(contact.getSurname(), surname);
        QCOMPARE(contact.getFieldByName(QStringLiteral("surname")), surname);
    }

    void shouldMakeACompanyWithoutTouchingTheRest()
    {
        Contact contact;
        fillContact(contact);
        contact.setKind(QStringLiteral("Company Contact"));
        contact.setName(QStringLiteral("Acme Widgets"));
        QMap<QString, QString> wanted = contactFields.snapshot(contact);
        wanted[QStringLiteral("kind")] = QStringLiteral("Company");
        contact.makeCompany();
        QCOMPARE(contactFields.snapshot(contact), wanted);
        QCOMPARE(contact.getSurname(), QStringLiteral("Acme Widgets"));
    }

    void shouldSearchTheListedFieldsOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        const char *searched[] = {"add1", "add2",   "add3", "comments", "email", "extension", "fax",    "jobTitle",
                                  "kind", "mobile", "name", "phone",    "title", "type",      "website"};
        for (const char *key : searched)
            QTest::newRow(key) << QString::fromLatin1(key) + QStringLiteral("word") << true;
        QTest::newRow("other letter case") << "EMAILWORD" << true;
        QTest::newRow("piece of a field") << "bileW" << true;
        QTest::newRow("postcode not searched") << "postcodeword" << false;
        QTest::newRow("company name not searched") << "companyNameword" << false;
        QTest::newRow("nothing typed") << "" << false;
        QTest::newRow("absent") << "zebra" << false;
    }
    void shouldSearchTheListedFieldsOnly()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        Contact contact;
        fillContact(contact);
        QCOMPARE(contact.contains(text), found);
    }

    void shouldNotFindAPostcodeOrCompanyId()
    {
        Contact contact;
        contact.setPostcode(QStringLiteral("AB1 2CD"));
        contact.setCompany(4711);
        QVERIFY(!contact.contains(QStringLiteral("ab1")));
        QVERIFY(!contact.contains(QStringLiteral("4711")));
        // kind and type are searched, so a fresh contact is found by them.
        QVERIFY(contact.contains(QStringLiteral("customer")));
        QVERIFY(contact.contains(QStringLiteral("individual")));
    }
};

QUORVEL_TEST(ContactRecordTest)
#include "ContactRecordTest.moc"
