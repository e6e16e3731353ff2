// The editor of a company's person driven through its widgets: choosing the
// company (the address follows), keeping and abandoning the edit, opening
// the company, and the person's orders beside the fields.
#include "FormDriver.h"
#include "TableCells.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "contacts/CompanyContactEditor.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/CompanyContactEditorWindow.h"
#include "contacts/widgets/CompanyEditorWindow.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "reports/ReportManager.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

namespace {

// The program's windows over a controller, without reading a database:
// two companies and a person who works for the first.
struct Program : testlib::FormDriver {
    Quorvel quorvel;
    ContactManager &contacts = *quorvel.getContactManager();
    ApplicationWindows windows{quorvel};
    Contact *acme = add(QStringLiteral("Company"), QStringLiteral("Acme"), QStringLiteral("1 Mill Lane"),
                        QStringLiteral("0111"));
    Contact *bolt = add(QStringLiteral("Company"), QStringLiteral("Bolt"), QStringLiteral("2 Dock Road"),
                        QStringLiteral("0222"));
    Contact *ann = add(QStringLiteral("Company Contact"), QStringLiteral("Ann Lee"), QString(), QString());

    Program() { ann->setCompany(acme->getID()); }

    Contact *add(const QString &kind, const QString &name, const QString &add1, const QString &phone)
    {
        auto contact = std::make_shared<Contact>();
        contact->setKind(kind);
        contact->setName(name);
        contact->setAdd1(add1);
        contact->setPhone(phone);
        contacts.add(contact);
        return contact.get();
    }

    CompanyContactEditorWindow *window() const { return windows.companyContactEditorWindow(); }

    QWidget *form() override { return window(); }
    bool openAnn()
    {
        contacts.editThisContact(ann);
        return QTest::qWaitForWindowExposed(window());
    }
};

}  // namespace

class CompanyContactEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldShowTheChosenCompanysAddressAndStoreItOnOk()
    {
        Program program;
        QVERIFY(program.openAnn());
        auto *company = program.find<QComboBox>("company");
        QCOMPARE(company->currentText(), QStringLiteral("Acme"));
        QCOMPARE(program.text("add1"), QStringLiteral("1 Mill Lane"));

        QTest::keyClick(company, Qt::Key_Down);
        QCOMPARE(company->currentText(), QStringLiteral("Bolt"));
        QCOMPARE(program.text("add1"), QStringLiteral("2 Dock Road"));
        QCOMPARE(program.text("phone"), QStringLiteral("0222"));
        program.type("jobtitle", QStringLiteral("Buyer"));
        program.click("okButton");

        QVERIFY(!program.window()->isVisible());
        QCOMPARE(program.ann->getCompany(), program.bolt->getID());
        QCOMPARE(program.ann->getAdd1(), QStringLiteral("2 Dock Road"));
        QCOMPARE(program.ann->getPhone(), QStringLiteral("0222"));
        QCOMPARE(program.ann->getJobTitle(), QStringLiteral("Buyer"));
    }

    void shouldLeaveThePersonAsTheyWereOnEscapeAndCancel_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Escape") << true;
        QTest::newRow("Cancel") << false;
    }
    void shouldLeaveThePersonAsTheyWereOnEscapeAndCancel()
    {
        QFETCH(bool, escape);
        Program program;
        QVERIFY(program.openAnn());
        QTest::keyClick(program.find<QComboBox>("company"), Qt::Key_Down);
        program.type("name", QStringLiteral("Ann Ray"));
        if (escape)
            QTest::keyClick(program.find<QLineEdit>("name"), Qt::Key_Escape);
        else
            program.click("cancelButton");
        QVERIFY(!program.window()->isVisible());
        QCOMPARE(program.ann->getName(), QStringLiteral("Ann Lee"));
        QCOMPARE(program.ann->getCompany(), program.acme->getID());
    }

    void shouldOpenTheChosenCompanyInItsEditor()
    {
        Program program;
        QVERIFY(program.openAnn());
        QTest::keyClick(program.find<QComboBox>("company"), Qt::Key_Down);
        program.click("editCompanyButton");
        CompanyEditorWindow *companyWindow = program.windows.companyEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(companyWindow));
        QCOMPARE(companyWindow->findChild<QLineEdit *>(QStringLiteral("name"))->text(), QStringLiteral("Bolt"));
    }

    void shouldShowThePersonsOrdersBesideTheFields_data()
    {
        QTest::addColumn<bool>("fromTheCompany");
        QTest::newRow("opened from the list") << false;
        // The company stays the contact manager's current contact then.
        QTest::newRow("opened from the company's people") << true;
    }
    void shouldShowThePersonsOrdersBesideTheFields()
    {
        QFETCH(bool, fromTheCompany);
        Program program;
        program.quorvel.getReportManager()->populateFilter();  // installs the report definitions
        auto order = std::make_shared<Order>();
        order->setTitle(QStringLiteral("Shelving"));
        order->setContact(program.ann);
        program.quorvel.getOrderManager()->add(order);
        auto someoneElse = std::make_shared<Order>();
        someoneElse->setTitle(QStringLiteral("Lamps"));
        someoneElse->setContact(program.acme);
        program.quorvel.getOrderManager()->add(someoneElse);

        if (fromTheCompany) {
            program.contacts.editThisContact(program.acme);
            program.contacts.getTableView()->selectRow(0);
            program.contacts.companyContactDoubleClick();
            QVERIFY(QTest::qWaitForWindowExposed(program.window()));
            QCOMPARE(program.contacts.getCurrentItem(), program.acme);
        } else {
            QVERIFY(program.openAnn());
        }
        auto *orders = program.find<QTableView>("orderTableView");
        QVERIFY(testlib::modelShows(*orders->model(), QStringLiteral("Shelving")));
        QVERIFY(!testlib::modelShows(*orders->model(), QStringLiteral("Lamps")));
    }
};

QUORVEL_TEST(CompanyContactEditorWindowTest)
#include "CompanyContactEditorWindowTest.moc"
