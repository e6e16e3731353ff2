// What the three contact editors (individuals, companies, a company's
// people) do alike: the fields they show for the open contact, the postal
// block they copy and the e-mail they start.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "platform/Workspace.h"

#include <QTest>

using testlib::TestEnvironment;

namespace {

Contact *addContact(ContactManager &contacts, int id, const QString &name, const QString &kind, int company = 0)
{
    auto contact = std::make_shared<Contact>();
    contact->setID(id);
    contact->setName(name);
    contact->setKind(kind);
    contact->setCompany(company);
    contact->setTitle(QStringLiteral("Dr"));
    contact->setEmail(name.section(u' ', 0, 0).toLower() + QStringLiteral("@example.org"));
    contact->setMobile(QStringLiteral("07700 ") + QString::number(id));
    contact->setAdd1(QString::number(id) + QStringLiteral(" High St"));
    contact->setPostcode(QStringLiteral("AB") + QString::number(id));
    contact->setPhone(QStringLiteral("0100 ") + QString::number(id));
    contacts.add(contact);
    return contact.get();
}

// The editor that shows contacts of that kind.
ContactFields &editorFor(Quorvel &quorvel, const QString &kind)
{
    if (kind == u"Company")
        return *quorvel.getCompanyEditor();
    if (kind == u"Company Contact")
        return *quorvel.getCompanyContactEditor();
    return *quorvel.getContactManager();
}

}  // namespace

class ContactFieldsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { TestEnvironment::current().clearDiagnostics(); }

    void shouldShowTheOpenContactInItsEditor_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("mobile");
        // A company's person shows the company's address and phone.
        QTest::addColumn<QString>("add1");
        QTest::addColumn<QString>("phone");
        QTest::newRow("individual") << "Individual"
                                    << "Ann Lee"
                                    << "ann@example.org"
                                    << "07700 3"
                                    << "3 High St"
                                    << "0100 3";
        QTest::newRow("company") << "Company"
                                 << "Acme Ltd"
                                 << "acme@example.org"
                                 << "07700 1"
                                 << "1 High St"
                                 << "0100 1";
        QTest::newRow("company's person") << "Company Contact"
                                          << "Bob Hill"
                                          << "bob@example.org"
                                          << "07700 2"
                                          << "1 High St"
                                          << "0100 1";
    }
    void shouldShowTheOpenContactInItsEditor()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, email);
        QFETCH(QString, mobile);
        QFETCH(QString, add1);
        QFETCH(QString, phone);
        Quorvel quorvel;
        ContactManager &contacts = *quorvel.getContactManager();
        addContact(contacts, 1, QStringLiteral("Acme Ltd"), QStringLiteral("Company"));
        addContact(contacts, 2, QStringLiteral("Bob Hill"), QStringLiteral("Company Contact"), 1);
        addContact(contacts, 3, QStringLiteral("Ann Lee"), QStringLiteral("Individual"));

        contacts.editThisContact(contacts.getContactbyName(name));
        ContactFields &editor = editorFor(quorvel, kind);
        QVERIFY(editor.editorWindow->isVisible());
        QCOMPARE(editor.getCurrentItem()->getName(), name);
        QCOMPARE(editor.name->stringValue(), name);
        QCOMPARE(editor.email->stringValue(), email);
        QCOMPARE(editor.mobile->stringValue(), mobile);
        QCOMPARE(editor.add1->stringValue(), add1);
        QCOMPARE(editor.phone->stringValue(), phone);
    }

    void shouldCopyTheOpenContactAndMailTheAddressInTheField_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("individual") << "Individual";
        QTest::newRow("company") << "Company";
        QTest::newRow("company's person") << "Company Contact";
    }
    void shouldCopyTheOpenContactAndMailTheAddressInTheField()
    {
        QFETCH(QString, kind);
        Quorvel quorvel;
        ContactManager &contacts = *quorvel.getContactManager();
        ContactFields &editor = editorFor(quorvel, kind);
        // Nothing open: no mail program.
        editor.sendEmail();
        QVERIFY(TestEnvironment::current().openedUrls().isEmpty());

        addContact(contacts, 1, QStringLiteral("Acme Ltd"), QStringLiteral("Company"));
        Contact *contact = addContact(contacts, 4, QStringLiteral("Eve Ray"), kind, 1);
        contacts.editThisContact(contact);
        QCOMPARE(editor.getCurrentItem(), contact);

        // The block is the record's, not what the fields show.
        editor.name->userSetStringValue(QStringLiteral("Typed"));
        editor.copyContact();
        QCOMPARE(platform::pasteboardString(), QStringLiteral("Dr Eve Ray\r4 High St\r\r\rAB4\r"));

        editor.email->userSetStringValue(QStringLiteral("new@example.org"));
        editor.sendEmail();
        QCOMPARE(TestEnvironment::current().openedUrls(), QStringList{QStringLiteral("mailto:new@example.org")});
    }
};

QUORVEL_TEST(ContactFieldsTest)
#include "ContactFieldsTest.moc"
