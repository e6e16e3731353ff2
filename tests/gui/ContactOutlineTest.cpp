#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/MainWindow.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/ContactOutline.h"

#include <QImage>
#include <QTableView>
#include <QTest>
#include <memory>

using testlib::TestEnvironment;

namespace {

std::shared_ptr<Contact> newContact(const char *name, const char *kind, int company = 0)
{
    auto contact = std::make_shared<Contact>();
    contact->setName(QString::fromLatin1(name));
    contact->setKind(QString::fromLatin1(kind));
    contact->setCompany(company);
    return contact;
}

}  // namespace

// The contacts tab of the main window as an outline: a company (with two
// people) and an individual. Rows: Acme Ltd, Bea Cole, Dan Eve, Ann Lee.
class ContactOutlineTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Quorvel> quorvel;
    std::unique_ptr<MainWindow> window;
    ContactManager *contacts = nullptr;
    QTableView *view = nullptr;
    ContactOutline *outline = nullptr;

    int rows() const { return view->model()->rowCount(); }
    int selectedRow() const { return contacts->getCompanyOutline()->selectedRow(); }
    QString nameAt(int row) const
    {
        const Contact *contact = contacts->contactAtRow(row);
        return contact ? contact->getName() : QString();
    }

    // The leftmost pixel of the name cell, from x on, that is not the
    // table's background; -1 when there is none.
    int firstInkIn(const QImage &image, int row, int from = 0) const
    {
        const QRect cell = view->visualRect(view->model()->index(row, outline->nameColumn()));
        const QRgb base = view->palette().color(QPalette::Base).rgb();
        for (int x = qMax(from, cell.left() + 1); x < cell.right(); ++x)
            for (int y = cell.top() + 1; y < cell.bottom(); ++y)
                if (image.pixel(x, y) != base)
                    return x;
        return -1;
    }

private Q_SLOTS:
    void init()
    {
        quorvel = std::make_unique<Quorvel>();
        contacts = quorvel->getContactManager();
        const std::shared_ptr<Contact> acme = newContact("Acme Ltd", "Company");
        contacts->add(acme);
        contacts->add(newContact("Ann Lee", "Individual"));
        contacts->add(newContact("Bea Cole", "Company Contact", acme->getID()));
        contacts->add(newContact("Dan Eve", "Company Contact", acme->getID()));
        contacts->filter();
        window = std::make_unique<MainWindow>(*quorvel);
        window->resize(800, 400);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        view = window->findChild<QTableView *>(QStringLiteral("contactOutline"));
        QVERIFY(view);
        outline = view->findChild<ContactOutline *>();
        QVERIFY(outline);
    }
    void cleanup()
    {
        window.reset();
        quorvel.reset();
    }

    void shouldShowEachCompanysPeopleAfterIt()
    {
        QCOMPARE(rows(), 4);
        const QStringList shown{nameAt(0), nameAt(1), nameAt(2), nameAt(3)};
        QCOMPARE(shown, QStringList({"Acme Ltd", "Bea Cole", "Dan Eve", "Ann Lee"}));
    }

    void shouldOpenAndCloseTheSelectedCompanyWithTheArrowKeys_data()
    {
        QTest::addColumn<bool>("collapsedFirst");
        QTest::addColumn<int>("selected");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("rowsAfter");
        QTest::addColumn<QString>("selectedAfter");
        QTest::newRow("left closes a company") << false << 0 << int(Qt::Key_Left) << 2 << "Acme Ltd";
        QTest::newRow("right opens a company") << true << 0 << int(Qt::Key_Right) << 4 << "Acme Ltd";
        QTest::newRow("left on a person goes to its company") << false << 2 << int(Qt::Key_Left) << 4 << "Acme Ltd";
        QTest::newRow("left on an individual does nothing") << false << 3 << int(Qt::Key_Left) << 4 << "Ann Lee";
        QTest::newRow("right on a person does nothing") << false << 1 << int(Qt::Key_Right) << 4 << "Bea Cole";
    }
    void shouldOpenAndCloseTheSelectedCompanyWithTheArrowKeys()
    {
        QFETCH(bool, collapsedFirst);
        QFETCH(int, selected);
        QFETCH(int, key);
        QFETCH(int, rowsAfter);
        QFETCH(QString, selectedAfter);
        if (collapsedFirst)
            outline->setRowExpanded(0, false);
        contacts->getCompanyOutline()->selectRow(selected);

        QTest::keyClick(view, Qt::Key(key));

        QCOMPARE(rows(), rowsAfter);
        QCOMPARE(nameAt(selectedRow()), selectedAfter);
        QCOMPARE(view->selectionModel()->selectedRows().value(0).row(), selectedRow());
    }

    void shouldToggleACompanyOnAClickOnItsTriangleKeepingTheSelection()
    {
        contacts->getCompanyOutline()->selectRow(3);  // Ann Lee, after the people
        const QPoint triangle = outline->disclosureRect(0).center();
        QVERIFY(!triangle.isNull());

        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, triangle);
        QCOMPARE(rows(), 2);
        QCOMPARE(nameAt(selectedRow()), QStringLiteral("Ann Lee"));

        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, triangle);
        QCOMPARE(rows(), 4);
        QCOMPARE(nameAt(selectedRow()), QStringLiteral("Ann Lee"));
        QVERIFY(!contacts->editorWindow->isVisible());
    }

    void shouldSelectTheCompanyOnAClickOnItsName()
    {
        const QRect name = view->visualRect(view->model()->index(0, outline->nameColumn()));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(name.right() - 4, name.center().y()));
        QCOMPARE(rows(), 4);
        QCOMPARE(selectedRow(), 0);
    }

    void shouldSelectTheCompanyWhenItsSelectedPersonIsHidden()
    {
        contacts->getCompanyOutline()->selectRow(2);  // Dan Eve
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, outline->disclosureRect(0).center());
        QCOMPARE(rows(), 2);
        QCOMPARE(nameAt(selectedRow()), QStringLiteral("Acme Ltd"));
    }

    void shouldDrawTheTriangleAndIndentAPersonOneLevel()
    {
        view->clearFocus();  // no focus frame around a cell
        const QRect triangle = outline->disclosureRect(0);
        QVERIFY(triangle.width() >= 10);
        const QImage image = view->viewport()->grab().toImage();
        const int individual = firstInkIn(image, 3);
        QVERIFY2(individual > triangle.right(), "an individual leaves the triangle's room blank");
        const int company = firstInkIn(image, 0);
        QVERIFY2(company > triangle.left() && company < triangle.center().x(),
                 "a company row starts with its triangle");
        QCOMPARE(firstInkIn(image, 0, triangle.right() + 1), individual);  // its name where an individual's is
        QVERIFY2(firstInkIn(image, 1) >= individual + 10, "a person's name sits one level in");
        QVERIFY(outline->disclosureRect(3).isEmpty());
    }

    void shouldStillDeleteTheSelectedRowWithTheDeleteKey()
    {
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().scriptAlertAnswers({1});
        contacts->getCompanyOutline()->selectRow(1);  // Bea Cole
        QTest::keyClick(view, Qt::Key_Delete);
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QCOMPARE(contacts->getCount(), 3);
        QCOMPARE(rows(), 3);
        QCOMPARE(nameAt(1), QStringLiteral("Dan Eve"));
    }
};

QUORVEL_TEST(ContactOutlineTest)
#include "ContactOutlineTest.moc"
