// Importing a first-generation database: records committed kind by kind as
// the file lists them, orders linked to the contacts read before them, the
// collections emptied first, and the database folder kept beside itself
// before anything is emptied.
#include "DatabaseFiles.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Order.h"
#include "store/LegacyImport.h"
#include "store/kdDataSource.h"

#include <QDir>
#include <QTest>

using testlib::TestEnvironment;

namespace {

struct Collections
{
    kdDataSource contacts, orders, items, materials, bills, actions;
    legacyImport::Collections all() { return {contacts, orders, items, materials, bills, actions}; }
};

QString legacyFile(const QByteArray &body)
{
    const QString path = TestEnvironment::current().root() + QStringLiteral("/legacy/quorveldatabase.xml");
    testlib::writeFile(path, "<quorvel>" + body + "</quorvel>");
    return path;
}

// The files under the folder by their path inside it, with their bytes.
QMap<QString, QByteArray> relativeFiles(const QString &folder)
{
    QMap<QString, QByteArray> files;
    const QMap<QString, QByteArray> all = testlib::filesIn(folder);
    for (auto it = all.cbegin(); it != all.cend(); ++it)
        files.insert(QDir(folder).relativeFilePath(it.key()), it.value());
    return files;
}

const Contact *contactAt(const kdDataSource &contacts, int n)
{
    return static_cast<const Contact *>(contacts.getnthItem(n));
}

}  // namespace

class LegacyImportTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldLinkAnOrderToAContactReadBeforeIt_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("linkedTo");
        const QByteArray contacts = "<contacts><contact><id>1</id><name>Ann</name></contact>"
                                    "<contact><id>2</id><name>Bo</name></contact></contacts>";
        QTest::newRow("the second contact") << contacts
                + "<orders><order><id>9</id><contactId>2</contactId>"
                  "<ordernum>INV9</ordernum></order></orders>"
                                            << QStringLiteral("Bo");
        QTest::newRow("contactId 0") << contacts + "<orders><order><id>9</id><contactId>0</contactId></order></orders>"
                                     << QString();
        QTest::newRow("a contact listed after the order")
            << QByteArray("<orders><order><id>9</id><contactId>1</contactId></order></orders>") + contacts << QString();
    }
    void shouldLinkAnOrderToAContactReadBeforeIt()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, linkedTo);
        Collections to;
        const legacyImport::Counts counts = legacyImport::importFile(legacyFile(body), to.all());
        QCOMPARE(counts.contacts, 2);
        QCOMPARE(counts.orders, 1);
        const auto *order = static_cast<const Order *>(to.orders.getnthItem(0));
        QCOMPARE(order->getID(), 9);
        QCOMPARE(order->getContact() ? order->getContact()->getName() : QString(), linkedTo);
        QCOMPARE(counts.linked, linkedTo.isEmpty() ? 0 : 1);
    }

    void shouldReplaceWhatWasThereAndKeepEachKindApart()
    {
        Collections to;
        for (int n = 0; n < 3; ++n)
            to.contacts.add(std::make_shared<Contact>());
        to.items.add(std::make_shared<Item>());
        const QByteArray body
            = "<contacts><contact><name>Ann</name><add1>1 High St</add1></contact></contacts>"
              "<products><product><id>4</id><code>B1</code><item>Bolt</item></product>"
              "<product><id>5</id><item>Nut</item></product></products>"
              "<gadgets><gadget><name>dropped</name></gadget></gadgets>"
              "<bills><bill><name>Rent</name><amount>500.00</amount></bill></bills>"
              "<actions><action><title>Ring Ann</title></action></actions>"
              "<materials><material><order>9</order><item>Bolt</item><qty>2</qty></material></materials>";
        const legacyImport::Counts counts = legacyImport::importFile(legacyFile(body), to.all());
        QCOMPARE(counts.records(), 6);
        QCOMPARE(to.contacts.getCount(), 1);
        // The ids start again: a record without one takes 1.
        QCOMPARE(contactAt(to.contacts, 0)->getID(), 1);
        QCOMPARE(contactAt(to.contacts, 0)->getAdd1(), QStringLiteral("1 High St"));
        QCOMPARE(to.items.getCount(), 2);
        QCOMPARE(static_cast<const Item *>(to.items.getnthItem(0))->getCode(), QStringLiteral("B1"));
        QCOMPARE(to.bills.getCount(), 1);
        QCOMPARE(to.actions.getCount(), 1);
        QCOMPARE(to.materials.getCount(), 1);
    }

    void shouldLeaveTheCollectionsEmptyForAnEmptyFile()
    {
        Collections to;
        to.orders.add(std::make_shared<Order>());
        QCOMPARE(legacyImport::importFile(legacyFile(""), to.all()).records(), 0);
        QCOMPARE(to.orders.getCount(), 0);
    }

    void shouldKeepTheDatabaseFolderBesideItselfFirst()
    {
        const QString bundle = TestEnvironment::current().root() + QStringLiteral("/keep/quorveldatabase.qvldb");
        const QDateTime now(QDate(2026, 1, 15), QTime(10, 0, 5));
        QString why;
        QCOMPARE(legacyImport::keepCopyOfBundle(bundle, now, &why), QString());  // nothing to keep
        testlib::writeFile(bundle + QStringLiteral("/orders.xml"), "orders");
        testlib::writeFile(bundle + QStringLiteral("/Attachments/Order1/plan.txt"), "plan");
        const QString copy = legacyImport::keepCopyOfBundle(bundle, now, &why);
        QCOMPARE(copy, bundle + QStringLiteral(".before-import-20260115-100005"));
        QCOMPARE(relativeFiles(copy), relativeFiles(bundle));
        QCOMPARE(relativeFiles(copy).size(), 2);
        // A second import in the same second keeps its own copy.
        QCOMPARE(legacyImport::keepCopyOfBundle(bundle, now, &why),
                 bundle + QStringLiteral(".before-import-20260115-100005-2"));
    }
};

QUORVEL_TEST(LegacyImportTest)
#include "LegacyImportTest.moc"
