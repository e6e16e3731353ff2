// The editor of a company, with no window: a new company is in the list at
// once, the fields it stores and those it only shows, and the table of the
// company's people.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "store/PrefsController.h"

#include <QTest>

class CompanyEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKeepANewCompanyInTheListWhenCancelled()
    {
        Quorvel quorvel;
        ContactManager &contacts = *quorvel.getContactManager();
        CompanyEditor &editor = *quorvel.getCompanyEditor();
        editor.create();
        QVERIFY(editor.isCreating());
        QVERIFY(editor.editorWindow->isVisible());
        editor.cancel();
        QVERIFY(!editor.editorWindow->isVisible());
        QCOMPARE(contacts.getCount(), 1);
        QCOMPARE(contacts.numberOfRowsInTableView(), 1);
        const Contact *shown = contacts.contactAtRow(0);
        QCOMPARE(shown->getKind(), QStringLiteral("Company"));
        QCOMPARE(shown->getName(), QStringLiteral(""));
        QCOMPARE(shown->getID(), 1);
    }

    void shouldStoreAllButTheTitleAndMobile_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("stored");
        QTest::newRow("name") << "name" << true;
        QTest::newRow("third address line") << "add3" << true;
        QTest::newRow("phone") << "phone" << true;
        QTest::newRow("website") << "website" << true;
        QTest::newRow("type chosen") << "type" << true;
        QTest::newRow("type left empty") << "no type" << false;
        QTest::newRow("mobile") << "mobile" << false;
        QTest::newRow("title") << "title" << false;
    }
    void shouldStoreAllButTheTitleAndMobile()
    {
        QFETCH(QString, field);
        QFETCH(bool, stored);
        Quorvel quorvel;
        auto acme = std::make_shared<Contact>();
        acme->makeCompany();
        acme->setTitle(QStringLiteral("Mr"));
        quorvel.getContactManager()->add(acme);
        CompanyEditor &editor = *quorvel.getCompanyEditor();
        editor.type->addItems({QStringLiteral("Customer"), QStringLiteral("Supplier"), QStringLiteral("")});
        editor.title->addItems({QStringLiteral("Mr"), QStringLiteral("Dr")});
        editor.edit(acme.get());
        const QHash<QString, TextField *> fields{{"name", editor.name},
                                                 {"add3", editor.add3},
                                                 {"phone", editor.phone},
                                                 {"website", editor.website},
                                                 {"mobile", editor.mobile}};
        const QString name = field == QLatin1String("no type") ? QStringLiteral("type") : field;
        const QString before = acme->getFieldByName(name);
        if (field == QLatin1String("type"))
            editor.type->userSelectItemAtIndex(1);
        else if (field == QLatin1String("no type"))
            editor.type->userSelectItemAtIndex(2);
        else if (field == QLatin1String("title"))
            editor.title->userSelectItemAtIndex(1);
        else
            fields.value(field)->userSetStringValue(QStringLiteral("typed"));
        editor.finish();
        QVERIFY(!editor.editorWindow->isVisible());
        QCOMPARE(acme->getFieldByName(name) != before, stored);
    }

    void shouldOfferTheContactTypesInBothCompanyEditors()
    {
        Quorvel quorvel;
        quorvel.getPrefsController()->listContactTypes->setString(QStringLiteral("Customer\nSupplier"));
        quorvel.getPrefsController()->populateLists();
        const QStringList types{"Customer", "Supplier"};
        QCOMPARE(quorvel.getCompanyEditor()->type->itemTitles(), types);
        QCOMPARE(quorvel.getCompanyContactEditor()->type->itemTitles(), types);
    }

    void shouldListTheCompanysPeopleAndExportThem()
    {
        Quorvel quorvel;
        ContactManager &contacts = *quorvel.getContactManager();
        const auto add = [&](int id, const char *name, const char *kind, int company) {
            auto contact = std::make_shared<Contact>();
            contact->setID(id);
            contact->setName(QString::fromUtf8(name));
            contact->setKind(QString::fromUtf8(kind));
            contact->setCompany(company);
            contact->setJobTitle(QStringLiteral("Clerk"));
            contacts.add(contact);
            return contact;
        };
        add(2, "Bob Hill", "Company Contact", 1);
        const std::shared_ptr<Contact> acme = add(1, "Acme", "Company", 0);
        add(3, "Cy Dunn", "Company Contact", 4);
        add(5, "Cat Ray", "Company Contact", 1);
        CompanyEditor &editor = *quorvel.getCompanyEditor();
        editor.edit(acme.get());
        QCOMPARE(editor.tableView, contacts.getTableView());
        TableView &people = *editor.tableView;
        QCOMPARE(people.dataSource()->numberOfRowsInTableView(), 2);
        QCOMPARE(people.dataSource()->getDataAsCSVusingTableView(people),
                 QStringLiteral("\"Name\",\"Job Title\",\"Extension\",\"Email\"\r"
                                "\"Bob Hill\",\"Clerk\",\"\",\"\"\r\"Cat Ray\",\"Clerk\",\"\",\"\"\r"));
    }
};

QUORVEL_TEST(CompanyEditorTest)
#include "CompanyEditorTest.moc"
