// The editor of a company's person driven through its widgets: choosing the
// company (the address follows), keeping and abandoning the edit, opening
// the company, and the person's orders beside the fields.
#include "DatabaseFiles.h"
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
#include "contacts/widgets/ContactEditorWindow.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "reports/ReportManager.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {

// The program's windows over a controller, without reading a database:
// two companies and a person who works for the first.
struct Program : testlib::FormDriver
{
    Quorvel quorvel;
    ContactManager &contacts = *quorvel.getContactManager();
    ApplicationWindows windows{quorvel};
    Contact *acme
        = add(QStringLiteral("Company"), QStringLiteral("Acme"), QStringLiteral("1 Mill Lane"), QStringLiteral("0111"));
    Contact *bolt
        = add(QStringLiteral("Company"), QStringLiteral("Bolt"), QStringLiteral("2 Dock Road"), QStringLiteral("0222"));
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

    // A new contact linked to a company from the contact editor: no company
    // is taken for the user, what was typed stays until a company is chosen,
    // and the person is written with its link, extension and web address
    // as soon as the editor is finished.
    void shouldLinkANewPersonToTheCompanyTheUserChoosesAndSaveAtOnce()
    {
        Program program;
        program.contacts.create();
        ContactEditorWindow *contactWindow = program.windows.contactEditorWindow();
        QVERIFY(QTest::qWaitForWindowExposed(contactWindow));
        for (const auto &[field, value] : {std::pair{"name", "Cy Dunn"}, {"phone", "0999"}}) {
            auto *edit = contactWindow->findChild<QLineEdit *>(QLatin1String(field));
            edit->selectAll();
            QTest::keyClicks(edit, QLatin1String(value));
        }
        QTest::mouseClick(contactWindow->findChild<QPushButton *>(QStringLiteral("linkToCompanyButton")),
                          Qt::LeftButton);
        QVERIFY(QTest::qWaitForWindowExposed(program.window()));
        auto *company = program.find<QComboBox>("company");
        QCOMPARE(company->currentIndex(), -1);
        QCOMPARE(program.text("phone"), QStringLiteral("0999"));

        company->setFocus();
        QTest::keyClick(company, Qt::Key_Down);
        QTest::keyClick(company, Qt::Key_Down);
        QCOMPARE(company->currentText(), QStringLiteral("Bolt"));
        program.type("extension", QStringLiteral("42"));
        program.type("website", QStringLiteral("cy.example"));
        program.click("okButton");

        const QByteArray saved = testlib::readFile(platform::paths::bundleFile(QStringLiteral("contacts.xml")));
        const qsizetype at = saved.indexOf("<string>Cy Dunn</string>");
        QVERIFY(at > 0);
        const QByteArray record = saved.mid(saved.lastIndexOf("<dict>", at),
                                            saved.indexOf("</dict>", at) - saved.lastIndexOf("<dict>", at));
        QVERIFY(record.contains("<key>company</key>\n\t\t\t<string>" + QByteArray::number(program.bolt->getID())
                                + "</string>"));
        QVERIFY(record.contains("<string>42</string>"));
        QVERIFY(record.contains("<string>cy.example</string>"));

        Contact *cy = program.contacts.getContactbyName(QStringLiteral("Cy Dunn"));
        QVERIFY(cy);
        program.contacts.editThisContact(cy);
        QCOMPARE(program.text("extension"), QStringLiteral("42"));
        QCOMPARE(program.text("website"), QStringLiteral("cy.example"));
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
