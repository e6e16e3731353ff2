// Which records a report reads: each name of "selectfrom" reads its own
// collection of the database, every record of it, the ones a list's search
// hides included.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/Bill.h"
#include "app/Quorvel.h"
#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "reports/ReportManager.h"
#include "tasks/Action.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <memory>

namespace {

// Each collection gets a different number of records, so that a report
// shows by its row count which one it read.
void fillEachCollection(Quorvel &quorvel)
{
    DatabaseBundle &database = quorvel.getDatabase();
    const auto fill = [&database](DatabaseBundle::File file, int count, auto make) {
        for (int i = 0; i < count; ++i)
            database.collection(file).add(make());
        // The list's search shows none of them.
        database.collection(file).filterBy([](const dataObject &) { return false; });
    };
    fill(DatabaseBundle::Contacts, 1, [] { return std::make_shared<Contact>(); });
    fill(DatabaseBundle::Orders, 2, [] { return std::make_shared<Order>(); });
    fill(DatabaseBundle::Items, 3, [] { return std::make_shared<Item>(); });
    fill(DatabaseBundle::Materials, 4, [] { return Material::withOrder(1); });
    fill(DatabaseBundle::Bills, 5, [] { return std::make_shared<Bill>(); });
    fill(DatabaseBundle::Actions, 6, [] { return std::make_shared<Action>(); });
}

void writeDefinition(const QString &name, const QString &source)
{
    const QVariantMap definition{{"selectfrom", source},
                                 {"colheadings", QStringList{"Id"}},
                                 {"colwidths", QStringList{"40"}},
                                 {"fields", QStringList{"id"}},
                                 {"totalcol", "-1"}};
    QDir().mkpath(platform::paths::reportsDir());
    QFile file(platform::paths::reportsDir() + QStringLiteral("/") + name + QStringLiteral(".xml"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(platform::plist::writeValue(definition));
}

}  // namespace

class ReportSourcesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadTheCollectionTheDefinitionNames_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("rows");
        QTest::newRow("contacts") << "contacts" << 1;
        QTest::newRow("orders") << "orders" << 2;
        QTest::newRow("items") << "items" << 3;
        QTest::newRow("order lines") << "itemspurchased" << 4;
        QTest::newRow("bills") << "bills" << 5;
        QTest::newRow("tasks") << "actions" << 6;
        QTest::newRow("no such records") << "suppliers" << 0;
        QTest::newRow("letter case counts") << "Orders" << 0;
    }
    void shouldReadTheCollectionTheDefinitionNames()
    {
        QFETCH(QString, source);
        QFETCH(int, rows);
        Quorvel quorvel;
        fillEachCollection(quorvel);
        writeDefinition(QStringLiteral("Source"), source);
        testlib::TestEnvironment::current().clearDiagnostics();
        ReportManager &reports = *quorvel.getReportManager();
        reports.doReport(QStringLiteral("Source"), reports.table);
        QCOMPARE(reports.getCount(), rows);
        QCOMPARE(reports.numberOfRowsInTableView(), rows);
        QCOMPARE(testlib::TestEnvironment::current().logLines().contains(QStringLiteral("no datasource")), rows == 0);
    }

    void shouldReadNothingWithoutAController()
    {
        writeDefinition(QStringLiteral("Source"), QStringLiteral("orders"));
        testlib::TestEnvironment::current().clearDiagnostics();
        ReportManager reports(nullptr);
        reports.doReport(QStringLiteral("Source"), reports.table);
        QCOMPARE(reports.getCount(), 0);
        QVERIFY(testlib::TestEnvironment::current().logLines().contains(QStringLiteral("no datasource")));
    }
};

QUORVEL_TEST(ReportSourcesTest)
#include "ReportSourcesTest.moc"
