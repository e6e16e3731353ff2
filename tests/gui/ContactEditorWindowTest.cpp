#include "FormDriver.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/CompanyContactEditorWindow.h"
#include "contacts/widgets/CompanyEditorWindow.h"
#include "contacts/widgets/ContactEditorWindow.h"
#include "platform/Workspace.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The program's windows over a controller, without reading a database.
struct Program : testlib::FormDriver
{
    Quorvel quorvel;
    ContactManager &contacts = *quorvel.getContactManager();
    ApplicationWindows windows{quorvel};
    QWidget *form() override { return windows.contactEditorWindow(); }
};

}  // namespace

// The editor of individual contacts, driven as a user would.
class ContactEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldStoreATypedContactOnOk()
    {
        Program program;
        program.contacts.create();
        ContactEditorWindow *window = program.windows.contactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        program.type("name", QStringLiteral("Ann Lee"));
        program.type("add1", QStringLiteral("1 High St"));
        program.click("okButton");
        QVERIFY(!window->isVisible());
        QCOMPARE(program.contacts.getCount(), 1);
        QCOMPARE(program.contacts.objectValueForTableColumn(QStringLiteral("add1"), 0), QStringLiteral(" 1 High St"));
    }

    void shouldOfferTheUsualTitlesAndKeepAnyOther_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("a usual title chosen") << "" << "Dr" << "Dr";
        QTest::newRow("a title of its own typed") << "" << "Rev" << "Rev";
        QTest::newRow("a stored title of its own left as it is") << "Sir" << "" << "Sir";
    }
    void shouldOfferTheUsualTitlesAndKeepAnyOther()
    {
        QFETCH(QString, stored);
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        Program program;
        auto contact = std::make_shared<Contact>();
        contact->setName(QStringLiteral("Ann Lee"));
        contact->setTitle(stored);
        program.contacts.add(contact);
        program.contacts.setItem(contact.get());
        ContactEditorWindow *window = program.windows.contactEditorWindow();
        program.contacts.show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        auto *title = program.find<QComboBox>("title");
        QVERIFY(title->isEditable());
        for (const char *usual : {"Mr", "Mrs", "Ms", "Dr"})
            QVERIFY2(title->findText(QLatin1String(usual)) >= 0, usual);
        QCOMPARE(title->currentText(), stored);
        if (!typed.isEmpty()) {
            title->setFocus();
            title->lineEdit()->selectAll();
            QTest::keyClicks(title->lineEdit(), typed);
            QTest::keyClick(title->lineEdit(), Qt::Key_Return);
        }
        program.click("okButton");
        QCOMPARE(contact->getTitle(), kept);
    }

    void shouldPasteIntoTheFieldsAndDropTheContactOnEscape()
    {
        Program program;
        program.contacts.create();
        ContactEditorWindow *window = program.windows.contactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        platform::setPasteboardString(QStringLiteral("Ann\n1 High St\nFlat 2\nAB1"));
        program.click("pasteContactButton");
        QCOMPARE(program.find<QLineEdit>("add2")->text(), QStringLiteral("Flat 2"));
        QCOMPARE(program.find<QLineEdit>("postcode")->text(), QStringLiteral("AB1"));
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(!window->isVisible());
        QCOMPARE(program.contacts.getCount(), 0);
    }

    void shouldOpenTheMailProgramOnTheTypedAddress()
    {
        Program program;
        program.contacts.create();
        QVERIFY(QTest::qWaitForWindowExposed(program.windows.contactEditorWindow()));
        TestEnvironment::current().clearDiagnostics();
        program.type("email", QStringLiteral("ann@example.com"));
        program.click("sendEmailButton");
        QCOMPARE(TestEnvironment::current().openedUrls(), QStringList{QStringLiteral("mailto:ann@example.com")});
    }

    void shouldOpenTheContactInTheOtherEditorAtTheSamePlace_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("kind");
        QTest::newRow("Link to Company") << QStringLiteral("linkToCompanyButton") << QStringLiteral("Company Contact");
        QTest::newRow("Make Company") << QStringLiteral("makeCompanyButton") << QStringLiteral("Company");
    }
    void shouldOpenTheContactInTheOtherEditorAtTheSamePlace()
    {
        QFETCH(QString, button);
        QFETCH(QString, kind);
        Program program;
        program.contacts.create();
        ContactEditorWindow *window = program.windows.contactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        const QRect place(131, 142, 880, 680);
        window->setGeometry(place);
        program.type("name", QStringLiteral("Ann Lee"));
        program.click(button.toLatin1().constData());

        QWidget *other = kind == QLatin1String("Company")
            ? static_cast<QWidget *>(program.windows.companyEditorWindow())
            : program.windows.companyContactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(other));
        QVERIFY(!window->isVisible());
        QCOMPARE(other->geometry(), place);
        QCOMPARE(other->findChild<QLineEdit *>(QStringLiteral("name"))->text(), QStringLiteral("Ann Lee"));
        QCOMPARE(program.contacts.getCount(), 1);
        auto *contact = static_cast<Contact *>(program.contacts.getnthItem(0));
        QCOMPARE(contact->getName(), QStringLiteral("Ann Lee"));
        QCOMPARE(contact->getKind(), kind);
    }
};

QUORVEL_TEST(ContactEditorWindowTest)
#include "ContactEditorWindowTest.moc"
