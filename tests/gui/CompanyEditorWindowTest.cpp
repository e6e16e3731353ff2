// The company editor driven through its widgets: typing a company and
// keeping it, leaving it as it was, the table of its people, and the
// address handed to the mail program and the pasteboard.
#include "FormDriver.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/TableModel.h"
#include "contacts/CompanyEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/CompanyContactEditorWindow.h"
#include "contacts/widgets/CompanyEditorWindow.h"
#include "platform/Workspace.h"

#include <QLineEdit>
#include <QTableView>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The program's windows over a controller, without reading a database.
struct Program : testlib::FormDriver
{
    Quorvel quorvel;
    ContactManager &contacts = *quorvel.getContactManager();
    ApplicationWindows windows{quorvel};

    CompanyEditorWindow *window() const { return windows.companyEditorWindow(); }
    QWidget *form() override { return window(); }

    Contact *add(const QString &kind, const QString &name, int company = 0)
    {
        auto contact = std::make_shared<Contact>();
        contact->setKind(kind);
        contact->setName(name);
        contact->setCompany(company);
        contacts.add(contact);
        return contact.get();
    }
    // Opens the company in its editor, as a double click in the list does.
    bool open(Contact *company)
    {
        contacts.editThisContact(company);
        return QTest::qWaitForWindowExposed(window());
    }
};

// The cell of the people table in that row under that field's column.
QString cell(QTableView *table, int row, const QString &field)
{
    auto *model = qobject_cast<TableModel *>(table->model());
    const int column = model ? model->columnWithIdentifier(field) : -1;
    return column < 0 ? QString() : model->index(row, column).data().toString();
}

}  // namespace

class CompanyEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldStoreTheTypedCompanyOnOkAndOnEnter_data()
    {
        QTest::addColumn<bool>("enter");
        QTest::newRow("OK button") << false;
        QTest::newRow("Enter") << true;
    }
    void shouldStoreTheTypedCompanyOnOkAndOnEnter()
    {
        QFETCH(bool, enter);
        Program program;
        Contact *company = program.add(QStringLiteral("Company"), QStringLiteral("Acme"));
        QVERIFY(program.open(company));
        QCOMPARE(program.find<QLineEdit>("name")->text(), QStringLiteral("Acme"));
        program.type("name", QStringLiteral("Acme Ltd"));
        program.type("add1", QStringLiteral("1 Mill Lane"));
        program.type("website", QStringLiteral("acme.example"));
        if (enter)
            QTest::keyClick(program.find<QLineEdit>("website"), Qt::Key_Return);
        else
            program.click("okButton");
        QVERIFY(!program.window()->isVisible());
        QCOMPARE(company->getName(), QStringLiteral("Acme Ltd"));
        QCOMPARE(company->getAdd1(), QStringLiteral("1 Mill Lane"));
        QCOMPARE(company->getWebsite(), QStringLiteral("acme.example"));
    }

    void shouldLeaveTheCompanyAsItWasOnEscapeCancelAndClose_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Escape") << QStringLiteral("escape");
        QTest::newRow("Cancel") << QStringLiteral("cancel");
        QTest::newRow("close box") << QStringLiteral("close");
    }
    void shouldLeaveTheCompanyAsItWasOnEscapeCancelAndClose()
    {
        QFETCH(QString, how);
        Program program;
        Contact *company = program.add(QStringLiteral("Company"), QStringLiteral("Acme"));
        QVERIFY(program.open(company));
        program.type("name", QStringLiteral("Other"));
        if (how == QLatin1String("escape"))
            QTest::keyClick(program.find<QLineEdit>("name"), Qt::Key_Escape);
        else if (how == QLatin1String("cancel"))
            program.click("cancelButton");
        else
            program.window()->close();
        QVERIFY(!program.window()->isVisible());
        QVERIFY(!program.quorvel.getCompanyEditor()->getEditorWindow()->isVisible());
        QCOMPARE(company->getName(), QStringLiteral("Acme"));
    }

    void shouldListItsPeopleAndOpenOneByDoubleClickOrEnter_data()
    {
        QTest::addColumn<bool>("enter");
        QTest::newRow("double click") << false;
        QTest::newRow("Enter") << true;
    }
    void shouldListItsPeopleAndOpenOneByDoubleClickOrEnter()
    {
        QFETCH(bool, enter);
        Program program;
        Contact *other = program.add(QStringLiteral("Company"), QStringLiteral("Other Firm"));
        Contact *company = program.add(QStringLiteral("Company"), QStringLiteral("Acme"));
        program.add(QStringLiteral("Company Contact"), QStringLiteral("Zoe Stone"), other->getID());
        program.add(QStringLiteral("Company Contact"), QStringLiteral("Ann Lee"), company->getID());
        Contact *bob = program.add(QStringLiteral("Company Contact"), QStringLiteral("Bob Ray"), company->getID());
        bob->setJobTitle(QStringLiteral("Buyer"));
        QVERIFY(program.open(company));

        auto *people = program.find<QTableView>("tableView");
        QCOMPARE(people->model()->rowCount(), 2);
        QCOMPARE(cell(people, 0, QStringLiteral("name")), QStringLiteral("Ann Lee"));
        QCOMPARE(cell(people, 1, QStringLiteral("name")), QStringLiteral("Bob Ray"));

        const QRect second = people->visualRect(people->model()->index(1, 0));
        QTest::mouseClick(people->viewport(), Qt::LeftButton, {}, second.center());
        if (enter)
            QTest::keyClick(people, Qt::Key_Return);
        else
            QTest::mouseDClick(people->viewport(), Qt::LeftButton, {}, second.center());

        CompanyContactEditorWindow *personWindow = program.windows.companyContactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(personWindow));
        QCOMPARE(personWindow->findChild<QLineEdit *>(QStringLiteral("name"))->text(), QStringLiteral("Bob Ray"));
        QCOMPARE(personWindow->findChild<QLineEdit *>(QStringLiteral("jobtitle"))->text(), QStringLiteral("Buyer"));
        QVERIFY(program.window()->isVisible());  // Enter in the table is not OK
        QCOMPARE(company->getName(), QStringLiteral("Acme"));
    }

    void shouldHandTheAddressToTheMailProgramAndThePasteboard()
    {
        Program program;
        Contact *company = program.add(QStringLiteral("Company"), QStringLiteral("Acme"));
        company->setAdd1(QStringLiteral("1 Mill Lane"));
        company->setPostcode(QStringLiteral("AB1 2CD"));
        QVERIFY(program.open(company));
        TestEnvironment::current().clearDiagnostics();
        program.type("email", QStringLiteral("sales@acme.example"));
        program.click("sendEmailButton");
        QCOMPARE(TestEnvironment::current().openedUrls(), QStringList{QStringLiteral("mailto:sales@acme.example")});
        program.click("copyContactButton");
        QCOMPARE(platform::pasteboardString(), QStringLiteral("Acme\r1 Mill Lane\r\r\rAB1 2CD\r"));
    }
};

QUORVEL_TEST(CompanyEditorWindowTest)
#include "CompanyEditorWindowTest.moc"
