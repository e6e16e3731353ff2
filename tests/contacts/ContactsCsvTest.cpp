// Contacts from CSV files: the headings common address books write, and the
// contacts a file makes (people under their companies, rows skipped and
// counted, a dry run that makes none).
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "contacts/Contact.h"
#include "contacts/ContactsCsv.h"
#include "store/kdDataSource.h"

#include <QTest>

using contactsCsv::Field;
using testlib::TestEnvironment;

namespace {

QString csvFile(const QByteArray &bytes)
{
    const QString path = TestEnvironment::current().root() + QStringLiteral("/contacts.csv");
    testlib::writeFile(path, bytes);
    return path;
}

const Contact *named(const kdDataSource &contacts, const QString &name)
{
    for (int n = 0; n < contacts.getCount(); ++n) {
        const auto *contact = static_cast<const Contact *>(contacts.getnthItem(n));
        if (contact->getName() == name)
            return contact;
    }
    return nullptr;
}

}  // namespace

class ContactsCsvTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKnowTheHeadingsAddressBooksWrite_data()
    {
        QTest::addColumn<QString>("heading");
        QTest::addColumn<Field>("field");
        // Outlook
        QTest::newRow("First Name") << "First Name" << Field::FirstName;
        QTest::newRow("E-mail Address") << "E-mail Address" << Field::Email;
        QTest::newRow("Business Phone") << "Business Phone" << Field::Phone;
        QTest::newRow("Mobile Phone") << "Mobile Phone" << Field::Mobile;
        QTest::newRow("Business Street") << "Business Street" << Field::Add1;
        QTest::newRow("Business Postal Code") << "Business Postal Code" << Field::Postcode;
        QTest::newRow("Job Title") << "Job Title" << Field::JobTitle;
        // Google
        QTest::newRow("Given Name") << "Given Name" << Field::FirstName;
        QTest::newRow("E-mail 1 - Value") << "E-mail 1 - Value" << Field::Email;
        QTest::newRow("Organization 1 - Name") << "Organization 1 - Name" << Field::Company;
        QTest::newRow("Address 1 - City") << "Address 1 - City" << Field::Add2;
        // The contact record's own names, and German ones
        QTest::newRow("add3") << "add3" << Field::Add3;
        QTest::newRow("postcode") << "postcode" << Field::Postcode;
        QTest::newRow("Nachname") << "Nachname" << Field::LastName;
        QTest::newRow("PLZ") << "PLZ" << Field::Postcode;
        // Case, blanks and punctuation do not matter; unknown headings go nowhere
        QTest::newRow("any case") << "  ZIP code " << Field::Postcode;
        QTest::newRow("unknown") << "Birthday" << Field::Ignore;
    }
    void shouldKnowTheHeadingsAddressBooksWrite()
    {
        QFETCH(QString, heading);
        QFETCH(Field, field);
        QCOMPARE(contactsCsv::fieldForHeading(heading), field);
    }

    void shouldNameEveryFieldForTheCommandLine()
    {
        for (const Field field : contactsCsv::allFields())
            QCOMPARE(contactsCsv::fieldForKey(contactsCsv::keyOf(field)), std::optional<Field>(field));
        QCOMPARE(contactsCsv::fieldForKey(QStringLiteral("JOBTITLE")), std::optional<Field>(Field::JobTitle));
        QVERIFY(!contactsCsv::fieldForKey(QStringLiteral("birthday")));
    }

    void shouldMakeContactsPutPeopleUnderTheirCompanyAndCountWhatWasSkipped()
    {
        const QString path = csvFile(
            "First Name,Last Name,Company,E-mail Address,Business Street,Business City,Notes,Birthday\r\n"
            "Jane,Doe,Acme Ltd,jane@acme.example,\"1 High St\nUnit 2\",Ashford,\"line one\nline two\",1 May\r\n"
            "Tom,Ray,ACME LTD,,,,,\r\n"
            ",,Acme Ltd,,9 Dock Rd,Bexley,,\r\n"
            ",,,,,,,\r\n"
            ",,,,5 Nowhere,,,\r\n"
            ",,,lone@example.org\r\n"
            "Ann,Lee,,,,,,,extra\r\n");
        const contactsCsv::Preview preview = contactsCsv::preview(path);
        QCOMPARE(preview.headings.size(), 8);
        QCOMPARE(preview.rows.size(), 7);
        kdDataSource contacts;
        auto before = std::make_shared<Contact>();
        before->setName(QStringLiteral("Already here"));
        contacts.add(before);
        const contactsCsv::Outcome outcome = contactsCsv::import(path, preview.mapping, contacts, false);
        QCOMPARE(outcome.imported, 5);
        QCOMPARE(outcome.companiesMade, 1);
        QCOMPARE(outcome.skippedEmpty, 1);
        QCOMPARE(outcome.skippedUnnamed, 1);
        QCOMPARE(outcome.shortRows, 1);
        QCOMPARE(outcome.longRows, 1);
        QCOMPARE(outcome.problem, QString());
        // The new contacts, after the one already there, with fresh ids; the
        // company row filled the company made for Jane instead of a second one.
        QCOMPARE(contacts.getCount(), 1 + 5);
        const Contact *acme = named(contacts, QStringLiteral("Acme Ltd"));
        QVERIFY(acme);
        QCOMPARE(acme->getKind(), QStringLiteral("Company"));
        QCOMPARE(acme->getAdd1(), QStringLiteral("9 Dock Rd"));
        const Contact *jane = named(contacts, QStringLiteral("Jane Doe"));
        QVERIFY(jane);
        QCOMPARE(jane->getKind(), QStringLiteral("Company Contact"));
        QCOMPARE(jane->getCompany(), acme->getID());
        QCOMPARE(jane->getAdd1(), QStringLiteral("1 High St, Unit 2"));
        QCOMPARE(jane->getComments(), QStringLiteral("line one\nline two"));
        QCOMPARE(named(contacts, QStringLiteral("Tom Ray"))->getCompany(), acme->getID());
        QCOMPARE(named(contacts, QStringLiteral("lone@example.org"))->getEmail(), QStringLiteral("lone@example.org"));
        QCOMPARE(named(contacts, QStringLiteral("Ann Lee"))->getKind(), QStringLiteral("Individual"));
        QVERIFY(jane->getID() > before->getID());
        // Every value read is logged with its heading.
        QVERIFY(TestEnvironment::current().logLines().contains(QStringLiteral("E-mail Address: jane@acme.example")));
    }

    void shouldMakeNothingOnADryRunOrWithEveryColumnIgnored()
    {
        const QString path = csvFile("Name,Company\nJane,Acme\n");
        kdDataSource contacts;
        const contactsCsv::Outcome dry = contactsCsv::import(path, {Field::Name, Field::Company}, contacts, true);
        QCOMPARE(dry.imported, 1);
        QCOMPARE(dry.companiesMade, 1);
        QCOMPARE(contacts.getCount(), 0);
        const contactsCsv::Outcome ignored = contactsCsv::import(path, {Field::Ignore, Field::Ignore}, contacts, false);
        QCOMPARE(ignored.imported, 0);
        QCOMPARE(ignored.skippedUnnamed, 1);
        QCOMPARE(contacts.getCount(), 0);
    }

    void shouldSayWhyAFileCannotBeImported_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("The file is empty.");
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) << QStringLiteral("not a text file");
    }
    void shouldSayWhyAFileCannotBeImported()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, problem);
        const QString path = csvFile(bytes);
        const contactsCsv::Preview preview = contactsCsv::preview(path);
        QVERIFY(preview.headings.isEmpty());
        QVERIFY2(preview.problem.contains(problem), qPrintable(preview.problem));
        kdDataSource contacts;
        QVERIFY(contactsCsv::import(path, {}, contacts, false).problem.contains(problem));
        QCOMPARE(contacts.getCount(), 0);
    }
};

QUORVEL_TEST(ContactsCsvTest)
#include "ContactsCsvTest.moc"
