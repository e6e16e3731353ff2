// The report engine over a controller's records: conditions, totals, merging
// of like rows, the built-in definitions, the chooser and its folder, and
// definitions that are broken.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "FakeServices.h"
#include "checkout/CheckoutManager.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "reports/ReportItem.h"
#include "reports/ReportManager.h"
#include "store/Picker.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using testlib::TestEnvironment;

namespace {

// The report engine with the managers whose records it reads, over a
// stand-in for the controller whose database is those managers.
struct Shop
{
    testlib::FakeServices services;
    ContactManager contacts{&services};
    OrderManager orders{&services};
    BOMManager bom{&services};
    ItemManager items{&services};
    CheckoutManager checkout{&services};
    kdDataSource bills, tasks;
    Picker picker;
    ReportManager reports{&services};
    Shop()
    {
        services.contacts = &contacts;
        services.orders = &orders;
        services.bom = &bom;
        services.items = &items;
        services.checkoutManager = &checkout;
        services.picker = &picker;
        services.useCollections(contacts, orders, items, bom, bills, tasks);
    }
    ContactManager *getContactManager() { return &contacts; }
    OrderManager *getOrderManager() { return &orders; }
    BOMManager *getBOMManager() { return &bom; }
    ItemManager *getItemManager() { return &items; }
    ReportManager *getReportManager() { return &reports; }
};

QString reportsFolder()
{
    return platform::paths::reportsDir();
}

void writeDefinition(const QString &name, const QByteArray &bytes)
{
    QDir().mkpath(reportsFolder());
    QFile file(reportsFolder() + QStringLiteral("/") + name + QStringLiteral(".xml"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

void writeDefinition(const QString &name, const QVariantMap &definition)
{
    writeDefinition(name, platform::plist::writeValue(definition));
}

// Two columns over the lines: item and quantity, totalled on the quantity.
QVariantMap linesDefinition(bool merged)
{
    QVariantMap definition{{"selectfrom", "itemspurchased"},
                           {"colheadings", QStringList{"Item", "Qty"}},
                           {"colwidths", QStringList{"100", "60"}},
                           {"fields", QStringList{"item", "qty"}},
                           {"totalcol", "2"}};
    if (merged) {
        definition.insert("collationmatchcol", "1");
        definition.insert("collationqtycol", "2");
    }
    return definition;
}

// The table as exported: headings, then every row with the total rows.
QString csv(const ReportManager &reports)
{
    return reports.getDataAsCSVusingTableView(*reports.table);
}

// Every result row: its id, values and value types.
QStringList snapshot(const ReportManager &reports)
{
    QStringList rows;
    for (int i = 0; i < reports.getCount(); ++i) {
        const auto *row = static_cast<const ReportItem *>(reports.getnthItem(i));
        rows << QString::number(row->getID()) + u'|' + row->getFields().join(u'|') + u'|'
                + row->getAttributes().join(u',');
    }
    rows << QStringLiteral("highest %1").arg(reports.getHighestId());
    return rows;
}

// Collation as the merging loop describes it: every pair, the same position
// again after a merge.
void pairwiseCollate(ReportManager &reports, const QString &match, const QString &qty)
{
    for (int i = 0; i < reports.getCount(); ++i) {
        for (int j = i + 1; j < reports.getCount(); ++j) {
            auto *first = static_cast<ReportItem *>(reports.getnthItem(i));
            auto *second = static_cast<ReportItem *>(reports.getnthItem(j));
            if (first->getFieldByName(match) == second->getFieldByName(match) && reports.merge(first, second, qty))
                --j;
        }
    }
}

QStringList mergeLines()
{
    return TestEnvironment::current().logLines().filter(QStringLiteral("couldn't merge"));
}

void addLine(Shop &shop, int order, int contact, const QString &item, const QString &qty,
             const QString &cost = QString(), const QString &total = QString())
{
    auto line = Material::withOrder(order);
    line->setContact(contact);
    line->setItem(item);
    line->setCode(item.isEmpty() ? QString() : item.left(1) + QStringLiteral("-1"));
    line->setQty(qty);
    line->setCost(cost);
    line->setTotal(total);
    shop.getBOMManager()->add(line);
}

// A small business: three contacts, four orders, three items, four lines.
void fillBusiness(Shop &shop)
{
    const auto contact = [&](const char *name, const char *type, const char *phone) {
        auto record = std::make_shared<Contact>();
        record->setName(QString::fromUtf8(name));
        record->setType(QString::fromUtf8(type));
        record->setPhone(QString::fromUtf8(phone));
        shop.getContactManager()->add(record);
        return record;
    };
    Contact *ann = contact("Ann Lee", "Customer", "0101").get();
    contact("Bolt Supplies", "Supplier", "0202");
    Contact *cy = contact("Cy Dunn", "Customer", "0303").get();
    const auto order = [&](const char *number, const char *date, Contact *who, const char *value, const char *balance,
                           const char *paid) {
        auto record = std::make_shared<Order>();
        record->setOrderNum(QString::fromUtf8(number));
        record->setDate(QString::fromUtf8(date));
        record->setTitle(QStringLiteral("Job ") + QString::fromUtf8(number));
        record->setStatus(QStringLiteral("Complete"));
        if (who)
            record->setContact(who);
        record->setValueWithTax(QString::fromUtf8(value));
        record->setBalance(QString::fromUtf8(balance));
        record->setBalancePaid(QString::fromUtf8(paid));
        shop.getOrderManager()->add(record);
    };
    order("INV1", "01/03/08", ann, "120.00", "120.00", "");
    order("INV2", "05/03/08", ann, "50.00", "50.00", "10/03/08");
    order("INV3", "07/03/08", cy, "1,250.50", "1,250.50", "");
    order("INV4", "09/03/08", nullptr, "0.00", "0.00", "");
    const auto item
        = [&](const char *code, const char *name, const char *qty, const char *optimum, const char *bought) {
              auto record = std::make_shared<Item>();
              record->setCode(QString::fromUtf8(code));
              record->setItem(QString::fromUtf8(name));
              record->setQty(QString::fromUtf8(qty));
              record->setOptimumQty(QString::fromUtf8(optimum));
              record->setBought(QString::fromUtf8(bought));
              shop.getItemManager()->add(record);
          };
    item("W-1", "Widget", "4", "10", "2.50");
    item("B-1", "Bolt", "20", "10", "0.10");
    item("N-1", "Nut", "", "5", "1");
    addLine(shop, 1, 1, QStringLiteral("Widget"), QStringLiteral("2"), QStringLiteral("2.50"), QStringLiteral("5.00"));
    addLine(shop, 3, 3, QStringLiteral("Bolt"), QStringLiteral("10"), QStringLiteral("0.10"), QStringLiteral("1.00"));
    addLine(shop, 2, 1, QStringLiteral("Widget"), QStringLiteral("3"), QStringLiteral("2.50"), QStringLiteral("7.50"));
    addLine(shop, 1, 1, QString(), QStringLiteral("1"), QString(), QStringLiteral("0.50"));
}

}  // namespace

class ReportManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearDiagnostics();
        QDir(reportsFolder()).removeRecursively();
    }

    void shouldDecideAClauseByTheRecordsValue_data()
    {
        QTest::addColumn<QString>("found");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("holds");
        QTest::newRow("empty paid date is text") << ""
                                                 << "!"
                                                 << "" << false;
        QTest::newRow("a paid date differs from nothing") << "03/04/08"
                                                          << "!"
                                                          << "" << true;
        QTest::newRow("same day is later") << "01/03/08"
                                           << ">"
                                           << "01/03/08" << true;
        QTest::newRow("same day is not before") << "08/03/08"
                                                << "<"
                                                << "08/03/08" << false;
        QTest::newRow("day before is before") << "07/03/08"
                                              << "<"
                                              << "08/03/08" << true;
        QTest::newRow("dates read day first") << "02/01/08"
                                              << ">"
                                              << "01/02/08" << false;
        QTest::newRow("date compared as text") << "01/03/08"
                                               << "="
                                               << "1/3/08" << false;
        QTest::newRow("one-digit day is a number") << "1/3/08"
                                                   << "="
                                                   << "1.0" << true;
        QTest::newRow("four-digit year is a date") << "01/03/2008"
                                                   << "!"
                                                   << "01/03/08" << true;
        QTest::newRow("100 is not above 100") << "100"
                                              << ">"
                                              << "100" << false;
        QTest::newRow("100.5 is above 100") << "100.5"
                                            << ">"
                                            << "100" << true;
        QTest::newRow("text is always above") << "abc"
                                              << ">"
                                              << "100" << true;
        QTest::newRow("text is always below") << "abc"
                                              << "<"
                                              << "100" << true;
        QTest::newRow("numbers equal as numbers") << "12"
                                                  << "="
                                                  << "12.0" << true;
        QTest::newRow("text equal only as text") << "Customer"
                                                 << "="
                                                 << "customer" << false;
        QTest::newRow("no contact open") << "-1"
                                         << "="
                                         << "currentcontact" << true;
        QTest::newRow("unknown operator holds") << "5"
                                                << "~"
                                                << "9" << true;
    }
    void shouldDecideAClauseByTheRecordsValue()
    {
        QFETCH(QString, found);
        QFETCH(QString, op);
        QFETCH(QString, value);
        QFETCH(bool, holds);
        Shop shop;
        ReportItem record;
        record.addField(found);
        ReportManager::Clause clause;
        clause.field = QStringLiteral("field1");
        clause.op = op;
        clause.value = value;
        QCOMPARE(shop.getReportManager()->meetsCriteria(record, {clause}), holds);
        // The same clause read from a definition.
        const QVariantList where{QVariant(QStringList{QStringLiteral("field1"), op, value})};
        const auto prepared = shop.getReportManager()->clausesFrom(where, QStringLiteral("where"));
        QCOMPARE(shop.getReportManager()->meetsCriteria(record, prepared), holds);
    }

    void shouldReadDatesInTheDateFieldsFormat()
    {
        ReportManager reports(nullptr);
        QVERIFY(reports.dateIsLaterThanDate(QStringLiteral("01/03/08"), QStringLiteral("01/03/08")));
        QVERIFY(!reports.dateIsLaterThanDate(QStringLiteral("02/01/08"), QStringLiteral("01/02/08")));
        TextField monthFirst;
        monthFirst.setDateFormat(QStringLiteral("%m/%d/%y"));
        reports.setFromDate(&monthFirst);
        QVERIFY(reports.dateIsLaterThanDate(QStringLiteral("02/01/08"), QStringLiteral("01/02/08")));
    }

    void shouldAddTheTotalRowsOnlyForATotalledColumn()
    {
        Shop shop;
        addLine(shop, 1, 0, QStringLiteral("Bolt"), QStringLiteral("1,200.50"));
        addLine(shop, 1, 0, QStringLiteral("Nut"), QStringLiteral("2"));
        QVariantMap definition = linesDefinition(false);
        writeDefinition(QStringLiteral("Lines"), definition);
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Lines"), reports.table);
        QCOMPARE(csv(reports),
                 QStringLiteral("\"Item\",\"Qty\"\r\"Bolt\",\"1,200.50\"\r\"Nut\",\"2\"\r"
                                "\"\",\"_____\"\r\"\",\"1202.50\"\r"));
        definition.insert(QStringLiteral("totalcol"), QStringLiteral("-1"));
        writeDefinition(QStringLiteral("Lines"), definition);
        reports.doReport(QStringLiteral("Lines"), reports.table);
        QCOMPARE(reports.numberOfRowsInTableView(), 2);
        QCOMPARE(reports.table->tableColumns().at(1).width, 60);
    }

    void shouldTotalNothingWhenNoRecordIsRead_data()
    {
        QTest::addColumn<QString>("source");
        QTest::newRow("a source misspelt") << QStringLiteral("ietms");
        QTest::newRow("an empty collection") << QStringLiteral("bills");
    }
    void shouldTotalNothingWhenNoRecordIsRead()
    {
        QFETCH(QString, source);
        Shop shop;
        QVariantMap definition = linesDefinition(true);
        definition.insert(QStringLiteral("selectfrom"), source);
        writeDefinition(QStringLiteral("Lines"), definition);
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Lines"), reports.table);
        QCOMPARE(csv(reports), QStringLiteral("\"Item\",\"Qty\"\r\"\",\"_____\"\r\"\",\"0.00\"\r"));
    }

    void shouldMergeLikeRowsAfterTheTotal()
    {
        Shop shop;
        addLine(shop, 1, 0, QStringLiteral("Widget"), QStringLiteral("2"));
        addLine(shop, 1, 0, QStringLiteral("Widget"), QStringLiteral("3"));
        addLine(shop, 1, 0, QStringLiteral("Bolt"), QStringLiteral("1"));
        addLine(shop, 1, 0, QStringLiteral("Nut"), QStringLiteral("lots"));
        addLine(shop, 1, 0, QStringLiteral("Nut"), QStringLiteral("4"));
        writeDefinition(QStringLiteral("Merged"), linesDefinition(true));
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Merged"), reports.table);
        QCOMPARE(csv(reports),
                 QStringLiteral("\"Item\",\"Qty\"\r\"Widget\",\"5.00\"\r\"Bolt\",\"1\"\r\"Nut\",\"lots\"\r"
                                "\"Nut\",\"4\"\r\"\",\"_____\"\r\"\",\"10.00\"\r"));
        QCOMPARE(mergeLines(), QStringList{"couldn't merge lots and 4"});
    }

    void shouldMergeExactlyAsEveryPairIsMerged_data()
    {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("lines");
        for (int seed = 1; seed <= 6; ++seed)
            QTest::addRow("seed %d", seed) << seed << (seed % 2 ? 150 : 600);
    }
    void shouldMergeExactlyAsEveryPairIsMerged()
    {
        QFETCH(int, seed);
        QFETCH(int, lines);
        const QStringList names{"Widget", "Bolt", "Nut", "Cog", "", "Gear", "Pin"};
        const QStringList amounts{"1", "2",     "3",    "2.5",  "0.333",    "1,000", " 7 boxes", "abc",
                                  "",  "-4.25", "1e38", "3e38", "99999999", "0.005", "12"};
        QRandomGenerator random(static_cast<quint32>(seed));
        Shop shop;
        for (int i = 0; i < lines; ++i) {
            const int pick = int(random.bounded(amounts.size() + 20));
            addLine(shop, 1, 0, names.at(random.bounded(names.size())),
                    pick < amounts.size() ? amounts.at(pick) : QString::number(random.bounded(1, 50)));
        }
        writeDefinition(QStringLiteral("Plain"), linesDefinition(false));
        writeDefinition(QStringLiteral("Merged"), linesDefinition(true));
        ReportManager literal(&shop.services), merged(&shop.services), collated(&shop.services);
        literal.doReport(QStringLiteral("Plain"), literal.table);
        TestEnvironment::current().clearDiagnostics();
        pairwiseCollate(literal, QStringLiteral("field1"), QStringLiteral("field2"));
        const QStringList literalLines = mergeLines();

        // What is logged: the loop's first lines, then a count of the rest.
        QStringList expectedLines = literalLines.mid(0, ReportManager::mergeLogLimit);
        if (literalLines.size() > ReportManager::mergeLogLimit)
            expectedLines << QStringLiteral("couldn't merge %1 more pairs of rows; those lines are left out")
                                 .arg(literalLines.size() - ReportManager::mergeLogLimit);
        TestEnvironment::current().clearDiagnostics();
        merged.doReport(QStringLiteral("Merged"), merged.table);
        QCOMPARE(snapshot(merged), snapshot(literal));
        QCOMPARE(mergeLines(), expectedLines);
        QCOMPARE(csv(merged), csv(literal));

        collated.doReport(QStringLiteral("Plain"), collated.table);
        TestEnvironment::current().clearDiagnostics();
        collated.collate(QStringLiteral("field1"), QStringLiteral("field2"));
        QCOMPARE(snapshot(collated), snapshot(literal));
        QCOMPARE(mergeLines(), expectedLines);
    }

    void shouldLeaveAnUnknownSourceEmpty()
    {
        Shop shop;
        fillBusiness(shop);
        QVariantMap definition = linesDefinition(false);
        definition.insert(QStringLiteral("selectfrom"), QStringLiteral("suppliers"));
        writeDefinition(QStringLiteral("Suppliers"), definition);
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Suppliers"), reports.table);
        QCOMPARE(reports.getCount(), 0);
        QCOMPARE(reports.table->tableColumns().size(), 2);
        QVERIFY(TestEnvironment::current().logLines().contains(QStringLiteral("no datasource")));
    }

    void shouldGoOnWithNothingWhenTheDefinitionIsMissing()
    {
        Shop shop;
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Nope"), reports.table);
        const QString path = platform::paths::quorvelDir() + QStringLiteral("/Reports/Nope.xml");
        QCOMPARE(TestEnvironment::current().logLines(),
                 QStringList({"doing report Nope", "couldn't open file: " + path, "no datasource"}));
        QVERIFY(reports.table->tableColumns().isEmpty());
        QCOMPARE(reports.numberOfRowsInTableView(), 2);  // the total rows are still counted
    }

    void shouldRunEachBuiltInReport_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("contact");
        QTest::addColumn<QString>("table");
        QTest::newRow("Outstanding Balances")
            << "Outstanding Balances" << -1
            << "\"Order\",\"Date\",\"Customer\",\"Title\",\"Status\",\"Balance\"\r"
               "\"INV1\",\"01/03/08\",\"Ann Lee\",\"Job INV1\",\"Complete\",\"120.00\"\r"
               "\"INV3\",\"07/03/08\",\"Cy Dunn\",\"Job INV3\",\"Complete\",\"1,250.50\"\r"
               "\"\",\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"\",\"1370.50\"\r";
        QTest::newRow("Current Customers")
            << "Current Customers" << -1
            << "\"Name\",\"Phone\",\"Mobile\",\"Email\",\"Address\",\"Town\",\"Postcode\"\r"
               "\"Ann Lee\",\"0101\",\"\",\"\",\"\",\"\",\"\"\r\"Cy Dunn\",\"0303\",\"\",\"\",\"\",\"\",\"\"\r";
        QTest::newRow("Current Items Purchased")
            << "Current Items Purchased" << -1
            << "\"Item\",\"Code\",\"Quantity\",\"Unit Cost\",\"Line Total\"\r"
               "\"Widget\",\"W-1\",\"2\",\"2.50\",\"5.00\"\r\"Bolt\",\"B-1\",\"10\",\"0.10\",\"1.00\"\r"
               "\"Widget\",\"W-1\",\"3\",\"2.50\",\"7.50\"\r\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"13."
               "50\"\r";
        QTest::newRow("Top Sellers")
            << "Top Sellers" << -1
            << "\"Item\",\"Code\",\"Quantity Sold\"\r\"Widget\",\"W-1\",\"5.00\"\r\"Bolt\",\"B-1\",\"10\"\r"
               "\"\",\"\",\"_____\"\r\"\",\"\",\"15.00\"\r";
        QTest::newRow("Stocktake")
            << "Stocktake" << -1
            << "\"Code\",\"Item\",\"In Stock\",\"Cost Each\",\"Stock Value\"\r"
               "\"W-1\",\"Widget\",\"4\",\"2.50\",\"10.00\"\r\"B-1\",\"Bolt\",\"20\",\"0.10\",\"2.00\"\r"
               "\"N-1\",\"Nut\",\"\",\"1\",\"0.00\"\r\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"12.00\"\r";
        QTest::newRow("Reorder Quantities")
            << "Reorder Quantities" << -1
            << "\"Code\",\"Item\",\"In Stock\",\"Optimum\",\"Re-order\"\r"
               "\"W-1\",\"Widget\",\"4\",\"10\",\"6.00\"\r\"N-1\",\"Nut\",\"\",\"5\",\"5.00\"\r"
               "\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"11.00\"\r";
        QTest::newRow("OrdersforOpenContact")
            << "OrdersforOpenContact" << 1
            << "\"Order\",\"Date\",\"Title\",\"Status\",\"Total\",\"Balance\"\r"
               "\"INV1\",\"01/03/08\",\"Job INV1\",\"Complete\",\"120.00\",\"120.00\"\r"
               "\"INV2\",\"05/03/08\",\"Job INV2\",\"Complete\",\"50.00\",\"50.00\"\r"
               "\"\",\"\",\"\",\"\",\"_____\",\"\"\r\"\",\"\",\"\",\"\",\"170.00\",\"\"\r";
        QTest::newRow("ItemsforOpenContact")
            << "ItemsforOpenContact" << 1
            << "\"Item\",\"Code\",\"Quantity\",\"Unit Cost\",\"Line Total\"\r"
               "\"Widget\",\"W-1\",\"2\",\"2.50\",\"5.00\"\r\"Widget\",\"W-1\",\"3\",\"2.50\",\"7.50\"\r"
               "\"\",\"\",\"1\",\"\",\"0.50\"\r\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"13.00\"\r";
        QTest::newRow("contact report with no contact open")
            << "ItemsforOpenContact" << 0
            << "\"Item\",\"Code\",\"Quantity\",\"Unit Cost\",\"Line Total\"\r"
               "\"\",\"\",\"\",\"\",\"_____\"\r\"\",\"\",\"\",\"\",\"0.00\"\r";
    }
    void shouldRunEachBuiltInReport()
    {
        QFETCH(QString, name);
        QFETCH(int, contact);
        QFETCH(QString, table);
        Shop shop;
        fillBusiness(shop);
        if (contact > 0)
            shop.getContactManager()->setCurrentItem(
                static_cast<Contact *>(shop.getContactManager()->getItemById(contact)));
        ReportManager &reports = *shop.getReportManager();
        reports.populateFilter();
        reports.doReport(name, reports.table);
        QCOMPARE(csv(reports), table);
        QCOMPARE(TestEnvironment::current().logLines().filter(QStringLiteral("report ")).size(), 1);  // no problem said
    }

    void shouldSortByAClickedColumnAsItReadsWithTheTotalsLast()
    {
        Shop shop;
        for (const char *qty : {"9", "10", "2"})
            addLine(shop, 1, 0, QStringLiteral("Bolt"), QString::fromLatin1(qty));
        writeDefinition(QStringLiteral("Lines"), linesDefinition(false));
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Lines"), reports.table);
        reports.table->userClickColumn(QStringLiteral("field2"));
        QStringList column;
        for (int row = 0; row < reports.numberOfRowsInTableView(); ++row)
            column << reports.objectValueForTableColumn(QStringLiteral("field2"), row);
        // "Ascending" puts the greatest first, as every list sorts; numbers as numbers.
        QCOMPARE(column, QStringList({"10", "9", "2", "_____", "21.00"}));
    }

    void shouldInstallTheBuiltInDefinitionsOnceAndListTheFolder()
    {
        ReportManager reports(nullptr);
        reports.populateFilter();
        const QString folder = reportsFolder();
        QStringList expected{"reports folder doesn't exist, creating it and copying reports."};
        for (const char *name : {"Outstanding Balances", "Current Customers", "Current Items Purchased", "Top Sellers",
                                 "OrdersforOpenContact", "ItemsforOpenContact", "Stocktake", "Reorder Quantities"})
            expected << QStringLiteral("copied :/core/reports/%1.xml to %2/%1.xml").arg(QLatin1String(name), folder);
        QCOMPARE(TestEnvironment::current().logLines(), expected);
        QCOMPARE(reports.filter->itemTitles(),
                 QStringList({"Current Customers", "Current Items Purchased", "Outstanding Balances",
                              "Reorder Quantities", "Stocktake", "Top Sellers"}));

        // A user's own edit stays; a contact report that went is put back.
        writeDefinition(QStringLiteral("Stocktake"), QByteArray("mine"));
        writeDefinition(QStringLiteral(".hidden"), QByteArray("x"));
        writeDefinition(QStringLiteral("MoneyIn"), QByteArray("x"));
        writeDefinition(QStringLiteral("aardvark"), QByteArray("x"));
        QFile::remove(folder + QStringLiteral("/ItemsforOpenContact.xml"));
        TestEnvironment::current().clearDiagnostics();
        reports.populateFilter();
        QCOMPARE(
            TestEnvironment::current().logLines(),
            QStringList(
                {QStringLiteral("copied :/core/reports/ItemsforOpenContact.xml to %1/ItemsforOpenContact.xml")
                     .arg(folder),
                 QStringLiteral("failed to copy :/core/reports/Stocktake.xml to %1/Stocktake.xml").arg(folder),
                 QStringLiteral("failed to copy :/core/reports/Reorder Quantities.xml to %1/Reorder Quantities.xml")
                     .arg(folder)}));
        QFile mine(folder + QStringLiteral("/Stocktake.xml"));
        QVERIFY(mine.open(QIODevice::ReadOnly));
        QCOMPARE(mine.readAll(), QByteArray("mine"));
        QCOMPARE(reports.filter->itemTitles().first(), QStringLiteral("aardvark"));
        QCOMPARE(reports.filter->itemTitles().size(), 7);
    }

    void shouldFindTheFolderInEitherSpelling()
    {
        const QString folder = platform::paths::quorvelDir() + QStringLiteral("/Reports");
        QDir().mkpath(folder);
        ReportManager reports(nullptr);
        reports.populateFilter();
        // An existing folder gets only the definitions copied at every start.
        QVERIFY(QFileInfo::exists(folder + QStringLiteral("/Stocktake.xml")));
        QVERIFY(!QFileInfo::exists(folder + QStringLiteral("/Top Sellers.xml")));
        QVERIFY(!QFileInfo::exists(platform::paths::quorvelDir() + QStringLiteral("/reports")));
        QDir(folder).removeRecursively();
    }

    void shouldRunTheChosenReportWhenTheUserPicksOne()
    {
        Shop shop;
        fillBusiness(shop);
        ReportManager &reports = *shop.getReportManager();
        reports.populateFilter();
        reports.filter->userSelectItemAtIndex(reports.filter->indexOfItemWithTitle(QStringLiteral("Top Sellers")));
        QCOMPARE(reports.getCount(), 2);
        QCOMPARE(reports.table->tableColumns().size(), 3);
    }

    void shouldMakeWhatItCanOfABrokenDefinition_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("said");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("tableRows");
        const QByteArray head = "<plist version=\"1.0\"><dict><key>selectfrom</key><string>itemspurchased</string>"
                                "<key>colheadings</key><array><string>Item</string><string>Qty</string></array>"
                                "<key>fields</key><array><string>item</string><string>qty</string></array>";
        const QByteArray widths = "<key>colwidths</key><array><string>90</string><string>40</string></array>";
        const QByteArray tail = "</dict></plist>";
        QTest::newRow("not a property list")
            << QByteArray("<plist><dict><key>") << "couldn't read report definition" << 0 << 2;
        QTest::newRow("not a dictionary")
            << QByteArray("<plist version=\"1.0\"><array/></plist>") << "it is not a dictionary" << 0 << 2;
        QTest::newRow("a width missing") << head + "<key>colwidths</key><array><string>90</string></array>" + tail
                                         << "\"colwidths\" has 1 widths for 2 headings" << 2 << 3;
        QTest::newRow("total that is no column") << head + widths + "<key>totalcol</key><string>abc</string>" + tail
                                                 << "\"totalcol\" is not a column number: \"abc\"" << 2 << 3;
        QTest::newRow("clause of two texts") << head + widths
                + "<key>where</key><array><array><string>qty</string><string>=</string></array></array>" + tail
                                             << "clause 1 of \"where\" is not three texts" << 2 << 3;
        QTest::newRow("unknown operator") << head + widths
                + "<key>where</key><array><array><string>qty</string><string>~</string><string>1</string></array></"
                  "array>"
                + tail << "clause 1 of \"where\" has the unknown operator \"~\"; it always holds"
                                          << 2 << 3;
        QTest::newRow("short second fields")
            << head + widths + "<key>fields2</key><array><string>code</string></array><key>where2</key><array/>" + tail
            << "\"fields2\" has 1 names, fewer than the 2 of \"fields\"" << 2 << 6;
        QTest::newRow("merging on no column") << head + widths
                + "<key>collationmatchcol</key><string>one</string><key>collationqtycol</key><string>2</string>" + tail
                                              << "\"collationmatchcol\" is not a column number" << 2 << 3;
    }
    void shouldMakeWhatItCanOfABrokenDefinition()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, said);
        QFETCH(int, columns);
        QFETCH(int, tableRows);
        Shop shop;
        addLine(shop, 1, 0, QStringLiteral("Bolt"), QStringLiteral("1"));
        addLine(shop, 1, 0, QStringLiteral("Bolt"), QStringLiteral("2"));
        addLine(shop, 1, 0, QStringLiteral("Nut"), QStringLiteral("3"));
        writeDefinition(QStringLiteral("Broken"), bytes);
        ReportManager &reports = *shop.getReportManager();
        reports.doReport(QStringLiteral("Broken"), reports.table);
        const QStringList lines = TestEnvironment::current().logLines();
        QVERIFY2(!lines.filter(said).isEmpty(), qPrintable(lines.join(u'\n')));
        QCOMPARE(reports.table->tableColumns().size(), columns);
        QCOMPARE(reports.numberOfRowsInTableView(), tableRows);
    }
};

QUORVEL_TEST(ReportManagerTest)
#include "ReportManagerTest.moc"
