// The editor of a company's person, with no window: the menu of companies,
// the company's address taken over on finishing, the fields that are shown
// but not stored, and the company's own editor.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"

#include <QTest>

namespace {

Contact *addCompany(ContactManager &contacts, int id, const QString &name, const QString &add1, const QString &phone)
{
    auto company = std::make_shared<Contact>();
    company->setID(id);
    company->makeCompany();
    company->setName(name);
    company->setAdd1(add1);
    company->setPostcode(add1 + QStringLiteral(" PC"));
    company->setPhone(phone);
    contacts.add(company);
    return company.get();
}

// Acme (1), Bolt (5), a second Acme (8), and Dee of Bolt with her own
// street and phone, extension, web address and type.
Contact *fill(ContactManager &contacts)
{
    addCompany(contacts, 1, QStringLiteral("Acme"), QStringLiteral("1 Acme Rd"), QStringLiteral("0101"));
    addCompany(contacts, 5, QStringLiteral("Bolt"), QStringLiteral("5 Bolt St"), QStringLiteral("0505"));
    addCompany(contacts, 8, QStringLiteral("Acme"), QStringLiteral("8 Other Rd"), QStringLiteral("0808"));
    auto dee = std::make_shared<Contact>();
    dee->setID(6);
    dee->setKind(QStringLiteral("Company Contact"));
    dee->setCompany(5);
    dee->setName(QStringLiteral("Dee Fox"));
    dee->setAdd1(QStringLiteral("her own street"));
    dee->setPhone(QStringLiteral("her own phone"));
    dee->setExtension(QStringLiteral("12"));
    dee->setWebsite(QStringLiteral("dee.example"));
    dee->setType(QStringLiteral("Customer"));
    contacts.add(dee);
    return dee.get();
}

}  // namespace

class CompanyContactEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldLinkThePersonToTheChosenCompanyAndTakeItsAddress_data()
    {
        QTest::addColumn<int>("linkedTo");
        QTest::addColumn<int>("chosenIndex");  // -1: the menu is left as it is
        QTest::addColumn<int>("company");
        QTest::addColumn<QString>("add1");
        QTest::addColumn<QString>("phone");
        QTest::newRow("the company shown") << 5 << -1 << 5 << "5 Bolt St"
                                           << "0505";
        QTest::newRow("another company chosen") << 5 << 0 << 1 << "1 Acme Rd"
                                                << "0101";
        QTest::newRow("two of that name: the first") << 8 << -1 << 1 << "1 Acme Rd"
                                                     << "0101";
        QTest::newRow("no such company: none chosen, her own address kept") << 9 << -1 << 9 << "her own street"
                                                                            << "her own phone";
        QTest::newRow("no company yet, one chosen") << 0 << 1 << 5 << "5 Bolt St"
                                                    << "0505";
    }
    void shouldLinkThePersonToTheChosenCompanyAndTakeItsAddress()
    {
        QFETCH(int, linkedTo);
        QFETCH(int, chosenIndex);
        QFETCH(int, company);
        QFETCH(QString, add1);
        QFETCH(QString, phone);
        Quorvel quorvel;
        Contact *dee = fill(*quorvel.getContactManager());
        dee->setCompany(linkedTo);
        CompanyContactEditor &editor = *quorvel.getCompanyContactEditor();
        editor.edit(dee);
        QCOMPARE(editor.company->itemTitles(), (QStringList{"Acme", "Bolt", "Acme"}));
        if (linkedTo == 9 || linkedTo == 0)
            QCOMPARE(editor.company->indexOfSelectedItem(), -1);
        if (chosenIndex >= 0)
            editor.company->userSelectItemAtIndex(chosenIndex);
        editor.finish();
        QVERIFY(!editor.editorWindow->isVisible());
        QCOMPARE(dee->getCompany(), company);
        QCOMPARE(dee->getAdd1(), add1);
        QCOMPARE(dee->getPhone(), phone);
    }

    void shouldStoreOnlyThePersonsOwnFields_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("stored");
        QTest::newRow("job title") << "jobTitle" << true;
        QTest::newRow("mobile") << "mobile" << true;
        QTest::newRow("e-mail") << "email" << true;
        QTest::newRow("extension") << "extension" << true;
        QTest::newRow("website") << "website" << true;
        QTest::newRow("type") << "type" << false;
    }
    void shouldStoreOnlyThePersonsOwnFields()
    {
        QFETCH(QString, field);
        QFETCH(bool, stored);
        Quorvel quorvel;
        Contact *dee = fill(*quorvel.getContactManager());
        CompanyContactEditor &editor = *quorvel.getCompanyContactEditor();
        editor.type->addItems({QStringLiteral("Customer"), QStringLiteral("Supplier")});
        editor.edit(dee);
        const QString before = dee->getFieldByName(field);
        const QHash<QString, TextField *> fields{{"jobTitle", editor.jobtitle},
                                                 {"mobile", editor.mobile},
                                                 {"email", editor.email},
                                                 {"extension", editor.extension},
                                                 {"website", editor.website}};
        if (field == QLatin1String("type"))
            editor.type->userSelectItemAtIndex(1);
        else
            fields.value(field)->userSetStringValue(QStringLiteral("typed"));
        editor.finish();
        QCOMPARE(dee->getFieldByName(field) != before, stored);
    }

    void shouldBeCreatingWhateverItIsTold()
    {
        Quorvel quorvel;
        CompanyContactEditor &editor = *quorvel.getCompanyContactEditor();
        QVERIFY(!editor.isCreating());
        editor.setCreating(false);
        QVERIFY(editor.isCreating());
    }

    void shouldOpenTheCompanyAndShowItsNewAddressWhenItIsFinished()
    {
        Quorvel quorvel;
        Contact *dee = fill(*quorvel.getContactManager());
        CompanyContactEditor &editor = *quorvel.getCompanyContactEditor();
        editor.edit(dee);
        editor.editCompanyButton();
        CompanyEditor &companies = *quorvel.getCompanyEditor();
        QVERIFY(companies.editorWindow->isVisible());
        QCOMPARE(companies.getCurrentItem()->getID(), 5);
        companies.add1->userSetStringValue(QStringLiteral("New Bolt St"));
        companies.finish();
        QCOMPARE(editor.add1->stringValue(), QStringLiteral("New Bolt St"));
    }
};

QUORVEL_TEST(CompanyContactEditorTest)
#include "CompanyContactEditorTest.moc"
