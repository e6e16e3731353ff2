#include "TestMain.h"

#include "RecordFieldTable.h"
#include "accounts/Bill.h"
#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/DatabaseBundle.h"
#include "store/kdDataSource.h"
#include "tasks/Action.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <cstdio>
#include <unistd.h>

Q_DECLARE_METATYPE(DatabaseBundle::File)

namespace {

using File = DatabaseBundle::File;

// The six collections and a bundle over them.
struct Database
{
    kdDataSource contacts;
    kdDataSource orders;
    kdDataSource items;
    kdDataSource materials;
    kdDataSource bills;
    kdDataSource actions;
    DatabaseBundle bundle{contacts, orders, items, materials, bills, actions};
};

// Every stored field of each kind of record, to fill records and compare
// them whole.
using testlib::flagField;
using testlib::numberField;
#define TEXT(R, key, name)                                                                                             \
    {                                                                                                                  \
        key, &R::get##name, &R::set##name                                                                              \
    }

const testlib::RecordFieldTable<Contact> contactFields{
    {TEXT(Contact, "add1", Add1), TEXT(Contact, "add2", Add2), TEXT(Contact, "add3", Add3),
     TEXT(Contact, "comments", Comments), TEXT(Contact, "email", Email), TEXT(Contact, "extension", Extension),
     TEXT(Contact, "fax", Fax), TEXT(Contact, "jobtitle", JobTitle), TEXT(Contact, "kind", Kind),
     TEXT(Contact, "mobile", Mobile), TEXT(Contact, "name", Name), TEXT(Contact, "phone", Phone),
     TEXT(Contact, "postcode", Postcode), TEXT(Contact, "title", Title), TEXT(Contact, "type", Type),
     TEXT(Contact, "website", Website)},
    {numberField("company", &Contact::getCompany)}};

const testlib::RecordFieldTable<Order> orderFields{
    {TEXT(Order, "balance", Balance), TEXT(Order, "balancepaid", BalancePaid), TEXT(Order, "date", Date),
     TEXT(Order, "deposit", Deposit), TEXT(Order, "depositpaid", DepositPaid), TEXT(Order, "description", Description),
     TEXT(Order, "lastrepeatdate", LastRepeatDate), TEXT(Order, "ordernum", OrderNum),
     TEXT(Order, "paymentmethod", PaymentMethod), TEXT(Order, "repeatfrequency", RepeatFrequency),
     TEXT(Order, "shipping", Shipping), TEXT(Order, "status", Status), TEXT(Order, "tax", Tax),
     TEXT(Order, "taxrate", TaxRate), TEXT(Order, "title", Title), TEXT(Order, "type", Type),
     TEXT(Order, "value", Value), TEXT(Order, "valuewithtax", ValueWithTax)},
    {flagField("includeBOM", &Order::getIncludeBOM),
     flagField("repeats", &Order::getRepeats),
     flagField("sent", &Order::getSent),
     {"contact", [](const Order &o) {
          return o.getContact() ? QString::number(o.getContact()->getID()) : QStringLiteral("none");
      }}}};

const testlib::RecordFieldTable<Item> itemFields{
    {TEXT(Item, "bought", Bought), TEXT(Item, "code", Code), TEXT(Item, "condition", Condition),
     TEXT(Item, "description", Description), TEXT(Item, "item", Item), TEXT(Item, "price", Price),
     TEXT(Item, "qty", Qty), TEXT(Item, "optimumqty", OptimumQty), TEXT(Item, "shipping", Shipping),
     TEXT(Item, "status", Status), TEXT(Item, "supplier", Supplier), TEXT(Item, "warnlevel", Warnlevel)},
    {flagField("decreaseQty", &Item::getDecreaseQty)}};

const testlib::RecordFieldTable<Material> lineFields{
    {TEXT(Material, "item", Item), TEXT(Material, "code", Code), TEXT(Material, "qty", Qty),
     TEXT(Material, "cost", Cost), TEXT(Material, "unit", Unit), TEXT(Material, "total", Total)},
    {numberField("order", &Material::getOrder), numberField("product", &Material::getProduct),
     numberField("contact", &Material::getContact)}};

const testlib::RecordFieldTable<Bill> billFields{{TEXT(Bill, "number", Number), TEXT(Bill, "name", Name),
                                                  TEXT(Bill, "datepaid", DatePaid), TEXT(Bill, "amount", Amount),
                                                  TEXT(Bill, "details", Details), TEXT(Bill, "category", Category)}};

const testlib::RecordFieldTable<Action> actionFields{
    {TEXT(Action, "details", Details), TEXT(Action, "enddate", EndDate), TEXT(Action, "endtime", EndTime),
     TEXT(Action, "rate", Rate), TEXT(Action, "startdate", StartDate), TEXT(Action, "starttime", StartTime),
     TEXT(Action, "totalcharge", TotalCharge), TEXT(Action, "totaltime", TotalTime),
     TEXT(Action, "totaltimeunits", TotalTimeUnits), TEXT(Action, "title", Title)},
    {flagField("complete", &Action::isComplete), flagField("alarm", &Action::isAlarm),
     flagField("alarmacknowledged", &Action::isAlarmAcknowledged)}};
#undef TEXT

template <class Record>
bool describeAs(const dataObject *record, const testlib::RecordFieldTable<Record> &fields, QString &out)
{
    const auto *typed = dynamic_cast<const Record *>(record);
    if (!typed)
        return false;
    const QMap<QString, QString> all = fields.snapshot(*typed);
    QStringList parts;
    for (auto it = all.begin(); it != all.end(); ++it)
        parts << it.key() + QLatin1Char('=') + it.value();
    out = parts.join(QLatin1Char('|'));
    return true;
}

// Every stored field of a record, as one line, to compare records whole.
QString describe(const dataObject *record)
{
    QString out;
    describeAs(record, contactFields, out) || describeAs(record, orderFields, out)
        || describeAs(record, itemFields, out) || describeAs(record, lineFields, out)
        || describeAs(record, billFields, out) || describeAs(record, actionFields, out);
    return out;
}

QStringList describeAll(const kdDataSource &source)
{
    QStringList out;
    for (int n = 0; n < source.getCount(); ++n)
        out << describe(source.getnthItem(n));
    return out;
}

// Fills every field with its own text ("<field>/<text>"), so that a key read
// into the wrong field shows; every flag is set.
void fill(Database &db, const QString &text, int id)
{
    const QString suffix = QLatin1Char('/') + text;
    auto contact = std::make_shared<Contact>();
    contactFields.fill(*contact, suffix);
    contact->setID(id);
    contact->setCompany(id + 1);
    db.contacts.add(contact);

    auto order = std::make_shared<Order>();
    orderFields.fill(*order, suffix);
    order->setID(id + 100);
    order->setContact(contact.get());
    order->setIncludeBOM(true);
    order->setRepeats(true);
    order->setSent(true);
    db.orders.add(order);

    auto item = std::make_shared<Item>();
    itemFields.fill(*item, suffix);
    item->setID(id + 200);
    item->setDecreaseQty(true);
    db.items.add(item);

    auto line = std::make_shared<Material>();
    lineFields.fill(*line, suffix);
    line->setID(id + 300);
    line->setOrder(id + 100);
    line->setProduct(id + 200);
    line->setContact(id + 7);
    db.materials.add(line);

    auto bill = std::make_shared<Bill>();
    billFields.fill(*bill, suffix);
    bill->setID(id + 400);
    db.bills.add(bill);

    auto action = std::make_shared<Action>();
    actionFields.fill(*action, suffix);
    action->setID(id + 500);
    action->setComplete(true);
    action->setAlarm(true);
    action->setAlarmAcknowledged(true);
    db.actions.add(action);
}

kdDataSource &collectionOf(Database &db, File file)
{
    return db.bundle.collection(file);
}

QByteArray fileBytes(File file)
{
    QFile f(DatabaseBundle::filePath(file));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void putFile(File file, const QByteArray &bytes)
{
    QDir().mkpath(platform::paths::bundleDir());
    QFile f(DatabaseBundle::filePath(file));
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

// A file of records given as key/value lists, in the layout the program
// writes.
QByteArray recordsFile(File file, const QList<QList<std::pair<QString, QString>>> &records)
{
    platform::plist::RecordWriter writer(DatabaseBundle::rootKey(file));
    for (const auto &pairs : records) {
        writer.beginRecord();
        for (const auto &[key, value] : pairs)
            writer.addField(key, value);
        writer.endRecord();
    }
    return writer.finish();
}

// The keys of each record dictionary of a written file, in file order.
QList<QStringList> keysPerRecord(const QByteArray &bytes)
{
    QList<QStringList> out;
    const QString text = QString::fromUtf8(bytes);
    const QStringList records = text.split(QStringLiteral("\t\t<dict>\n"));
    static const QRegularExpression key(QStringLiteral("<key>([^<]*)</key>"));
    for (qsizetype r = 1; r < records.size(); ++r) {
        QStringList keys;
        for (const auto &match : key.globalMatch(records.at(r)))
            keys << match.captured(1);
        out << keys;
    }
    return out;
}

// Standard error while it lives goes to a file, to be read back.
class StderrCapture
{
public:
    StderrCapture()
    {
        std::fflush(stderr);
        file.open();
        saved = ::dup(2);
        ::dup2(file.handle(), 2);
    }
    ~StderrCapture() { finish(); }
    QString finish()
    {
        if (saved >= 0) {
            std::fflush(stderr);
            ::dup2(saved, 2);
            ::close(saved);
            saved = -1;
            file.seek(0);
            text = QString::fromUtf8(file.readAll());
        }
        return text;
    }

private:
    QTemporaryFile file;
    int saved = -1;
    QString text;
};

}  // namespace

class DatabaseBundleTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void shouldRoundTripEveryFile_data();
    void shouldRoundTripEveryFile();
    void shouldWriteTheKeysOfEachFileByItsRules_data();
    void shouldWriteTheKeysOfEachFileByItsRules();
    void shouldLeaveEmptyOptionalFieldsToTheirInitialValues();
    void shouldReadFlagsAsYesOnlyForExactlyYes_data();
    void shouldReadFlagsAsYesOnlyForExactlyYes();
    void shouldLinkOrdersToTheirContactsBeforeAddingThem();
    void shouldNumberLinesByCountAndKeepTheirStoredIds();
    void shouldDeriveTheContactOfALineStoredWithoutOne();
    void shouldReadInTheFixedOrderAndTellAfterEachFile_data();
    void shouldReadInTheFixedOrderAndTellAfterEachFile();
    void shouldReadValuesWrittenByOtherTools();
    void shouldNumberRecordsStoredWithoutId();
    void shouldNotCreateAnythingWhenReading();
    void shouldCreateTheBundleOnTheFirstWrite();
    void shouldLoadNothingFromAnUnreadableFileAndSayWhy_data();
    void shouldLoadNothingFromAnUnreadableFileAndSayWhy();
    void shouldKeepAnUnreadableFileAsideBeforeWritingIt();
    void shouldReportAFileThatCannotBeOpened();
    void shouldReportAFailedWrite();
};

void DatabaseBundleTest::init()
{
    QDir(platform::paths::quorvelDir()).removeRecursively();
}

void DatabaseBundleTest::shouldRoundTripEveryFile_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QStringLiteral("Ann Smith");
    QTest::newRow("markup") << QStringLiteral("a < b & c > d \"quoted\" 'single'");
    QTest::newRow("entity look-alikes") << QStringLiteral("&amp; &#38; &lt;tag&gt; ]]>");
    QTest::newRow("non-ASCII") << QStringLiteral("Zoë Ångström 日本 😀");
    QTest::newRow("line ends and tabs") << QStringLiteral("line one\nline two\r\nline three\rtab\there");
    QTest::newRow("blanks around") << QStringLiteral("  spaced  ");
}

void DatabaseBundleTest::shouldRoundTripEveryFile()
{
    QFETCH(QString, text);
    Database saved;
    fill(saved, text, 1);
    fill(saved, text + QStringLiteral(" again"), 40);
    QVERIFY(saved.bundle.writeDatabase());

    Database loaded;
    QVERIFY(loaded.bundle.readDatabase().ok());
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        const File file = File(f);
        const QStringList before = describeAll(collectionOf(saved, file));
        const QStringList after = describeAll(collectionOf(loaded, file));
        QVERIFY2(before == after,
                 qPrintable(DatabaseBundle::fileName(file) + QStringLiteral(":\n  ")
                            + before.join(QStringLiteral("\n  ")) + QStringLiteral("\nread back:\n  ")
                            + after.join(QStringLiteral("\n  "))));
    }
    // The order is linked to the very contact read with it.
    const auto *order = static_cast<const Order *>(loaded.orders.getnthItem(0));
    QCOMPARE(static_cast<const dataObject *>(order->getContact()), loaded.contacts.getnthItem(0));
    // Written again, the files come out byte for byte the same.
    const QByteArray first = fileBytes(DatabaseBundle::Orders);
    QVERIFY(loaded.bundle.writeDatabase());
    QCOMPARE(fileBytes(DatabaseBundle::Orders), first);
}

void DatabaseBundleTest::shouldWriteTheKeysOfEachFileByItsRules_data()
{
    QTest::addColumn<DatabaseBundle::File>("file");
    QTest::addColumn<QStringList>("keysOfAnEmptyRecord");

    // A record just made: only the keys that are always written, and the
    // optional fields whose initial value is not empty.
    QTest::newRow("contacts") << DatabaseBundle::Contacts << QStringList{"company", "id", "kind", "type"};
    QTest::newRow("orders") << DatabaseBundle::Orders
                            << QStringList{"contact", "id",   "includeBOM", "paymentmethod", "repeatfrequency",
                                           "repeats", "sent", "status",     "type"};
    QTest::newRow("items") << DatabaseBundle::Items << QStringList{"decreaseQty", "id"};
    QTest::newRow("lines") << DatabaseBundle::Materials
                           << QStringList{"contact", "cost", "id", "item", "order", "product", "qty", "total"};
    QTest::newRow("bills") << DatabaseBundle::Bills
                           << QStringList{"amount", "category", "datepaid", "details", "id", "name", "number"};
    QTest::newRow("tasks") << DatabaseBundle::Actions
                           << QStringList{"alarm",     "alarmacknowledged", "complete", "details",
                                          "enddate",   "endtime",           "id",       "rate",
                                          "startdate", "starttime",         "title",    "totalcharge",
                                          "totaltime", "totaltimeunits"};
}

void DatabaseBundleTest::shouldWriteTheKeysOfEachFileByItsRules()
{
    QFETCH(DatabaseBundle::File, file);
    QFETCH(QStringList, keysOfAnEmptyRecord);

    Database db;
    fill(db, QStringLiteral("x"), 1);
    std::shared_ptr<dataObject> fresh;
    switch (file) {
    case DatabaseBundle::Contacts:
        fresh = std::make_shared<Contact>();
        break;
    case DatabaseBundle::Orders:
        fresh = std::make_shared<Order>();
        break;
    case DatabaseBundle::Items:
        fresh = std::make_shared<Item>();
        break;
    case DatabaseBundle::Materials:
        fresh = std::make_shared<Material>();
        break;
    case DatabaseBundle::Bills:
        fresh = std::make_shared<Bill>();
        break;
    case DatabaseBundle::Actions:
        fresh = std::make_shared<Action>();
        break;
    }
    collectionOf(db, file).add(fresh);
    QVERIFY(db.bundle.writeDatabase(file));

    const QByteArray bytes = fileBytes(file);
    QVERIFY(bytes.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
                             "1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n"
                             "<dict>\n\t<key>"
                             + DatabaseBundle::rootKey(file).toUtf8() + "</key>\n\t<array>\n"));
    const QList<QStringList> keys = keysPerRecord(bytes);
    QCOMPARE(keys.size(), 2);
    // Every record's keys in sorted order; the filled record has them all.
    for (const QStringList &recordKeys : keys) {
        QStringList sorted = recordKeys;
        std::sort(sorted.begin(), sorted.end());
        QCOMPARE(recordKeys, sorted);
    }
    QVERIFY(keys.at(0).size() >= keysOfAnEmptyRecord.size());
    QCOMPARE(keys.at(1), keysOfAnEmptyRecord);
}

void DatabaseBundleTest::shouldLeaveEmptyOptionalFieldsToTheirInitialValues()
{
    Database db;
    auto contact = std::make_shared<Contact>();
    contact->setName(QStringLiteral("Ann"));
    contact->setEmail(QStringLiteral(""));
    db.contacts.add(contact);
    db.orders.add(std::make_shared<Order>());  // no contact
    auto line = std::make_shared<Material>();
    line->setItem(QStringLiteral(""));
    line->setQty(QStringLiteral(""));
    line->setCost(QStringLiteral(""));
    line->setTotal(QStringLiteral(""));
    db.materials.add(line);
    QVERIFY(db.bundle.writeDatabase());

    QVERIFY(!fileBytes(DatabaseBundle::Contacts).contains("<key>email</key>"));
    QVERIFY(fileBytes(DatabaseBundle::Orders).contains("\t\t\t<key>contact</key>\n\t\t\t<string>0</string>\n"));

    Database loaded;
    QVERIFY(loaded.bundle.readDatabase().ok());
    const auto *readContact = static_cast<const Contact *>(loaded.contacts.getnthItem(0));
    QCOMPARE(readContact->getEmail(), QStringLiteral(""));
    QVERIFY(!readContact->getEmail().isNull());
    QCOMPARE(readContact->getName(), QStringLiteral("Ann"));
    QCOMPARE(static_cast<const Order *>(loaded.orders.getnthItem(0))->getContact(), nullptr);
    // A line saved with empty texts comes back with a new line's texts.
    const auto *readLine = static_cast<const Material *>(loaded.materials.getnthItem(0));
    QCOMPARE(readLine->getItem(), QStringLiteral("New Item"));
    QCOMPARE(readLine->getQty(), QStringLiteral("1"));
    QCOMPARE(readLine->getCost(), QStringLiteral("0"));
    QCOMPARE(readLine->getTotal(), QStringLiteral("0"));
}

void DatabaseBundleTest::shouldReadFlagsAsYesOnlyForExactlyYes_data()
{
    QTest::addColumn<QString>("stored");  // null: the key is absent
    QTest::addColumn<bool>("expected");
    QTest::newRow("YES") << QStringLiteral("YES") << true;
    QTest::newRow("NO") << QStringLiteral("NO") << false;
    QTest::newRow("absent") << QString() << false;
    QTest::newRow("yes") << QStringLiteral("yes") << false;
    QTest::newRow("Yes") << QStringLiteral("Yes") << false;
    QTest::newRow("1") << QStringLiteral("1") << false;
    QTest::newRow("YES with a blank") << QStringLiteral("YES ") << false;
}

void DatabaseBundleTest::shouldReadFlagsAsYesOnlyForExactlyYes()
{
    QFETCH(QString, stored);
    QFETCH(bool, expected);

    const auto record = [&](const QStringList &flags) {
        QList<std::pair<QString, QString>> pairs{{QStringLiteral("id"), QStringLiteral("3")}};
        if (!stored.isNull()) {
            for (const QString &flag : flags)
                pairs.append({flag, stored});
        }
        return QList<QList<std::pair<QString, QString>>>{pairs};
    };
    putFile(DatabaseBundle::Items, recordsFile(DatabaseBundle::Items, record({QStringLiteral("decreaseQty")})));
    putFile(DatabaseBundle::Orders,
            recordsFile(DatabaseBundle::Orders,
                        record({QStringLiteral("includeBOM"), QStringLiteral("repeats"), QStringLiteral("sent")})));
    putFile(DatabaseBundle::Actions,
            recordsFile(
                DatabaseBundle::Actions,
                record({QStringLiteral("alarm"), QStringLiteral("alarmacknowledged"), QStringLiteral("complete")})));
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    const auto *item = static_cast<const Item *>(db.items.getnthItem(0));
    QCOMPARE(item->getDecreaseQty(), expected);
    const auto *order = static_cast<const Order *>(db.orders.getnthItem(0));
    QCOMPARE(order->getIncludeBOM(), expected);
    QCOMPARE(order->getRepeats(), expected);
    QCOMPARE(order->getSent(), expected);
    const auto *action = static_cast<const Action *>(db.actions.getnthItem(0));
    QCOMPARE(action->isAlarm(), expected);
    QCOMPARE(action->isAlarmAcknowledged(), expected);
    QCOMPARE(action->isComplete(), expected);
}

void DatabaseBundleTest::shouldLinkOrdersToTheirContactsBeforeAddingThem()
{
    putFile(DatabaseBundle::Contacts,
            recordsFile(DatabaseBundle::Contacts, {{{"id", "12"}, {"name", "Ann"}}, {{"id", "13"}, {"name", "Bob"}}}));
    putFile(DatabaseBundle::Orders,
            recordsFile(DatabaseBundle::Orders,
                        {{{"id", "1"}, {"contact", "13"}},
                         {{"id", "2"}, {"contact", "99"}},
                         {{"id", "3"}, {"contact", "0"}},
                         {{"id", "4"}}}));
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    const auto orderAt = [&](int n) { return static_cast<const Order *>(db.orders.getnthItem(n)); };
    QCOMPARE(static_cast<const dataObject *>(orderAt(0)->getContact()), db.contacts.getItemById(13));
    QCOMPARE(orderAt(1)->getContact(), nullptr);  // no contact 99
    QCOMPARE(orderAt(2)->getContact(), nullptr);
    QCOMPARE(orderAt(3)->getContact(), nullptr);

    // Through a hook: each order is handed over with its stored contact id
    // (0 when there is none) before it joins its collection.
    Database hooked;
    QList<std::pair<int, int>> calls;  // contact id, order id
    hooked.bundle.setConnectContactById([&](int contactId, Order *order) {
        QCOMPARE(hooked.orders.indexOf(order), qsizetype(-1));
        QCOMPARE(hooked.contacts.getCount(), 2);
        calls.append({contactId, order->getID()});
    });
    QVERIFY(hooked.bundle.readDatabase().ok());
    QCOMPARE(calls, (QList<std::pair<int, int>>{{13, 1}, {99, 2}, {0, 3}, {0, 4}}));
    QCOMPARE(hooked.orders.getCount(), 4);
    QCOMPARE(static_cast<const Order *>(hooked.orders.getnthItem(0))->getContact(), nullptr);
}

void DatabaseBundleTest::shouldNumberLinesByCountAndKeepTheirStoredIds()
{
    putFile(DatabaseBundle::Materials,
            recordsFile(DatabaseBundle::Materials,
                        {{{"id", "5"}, {"order", "1"}, {"contact", "2"}},
                         {{"id", "9"}, {"order", "1"}, {"contact", "2"}},
                         {{"id", "12"}, {"order", "1"}, {"contact", "2"}}}));
    putFile(DatabaseBundle::Orders, recordsFile(DatabaseBundle::Orders, {{{"id", "7"}}, {{"id", "3"}}}));
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    QCOMPARE(db.materials.getCount(), 3);
    QCOMPARE(db.materials.getnthItem(0)->getID(), 5);
    QCOMPARE(db.materials.getnthItem(1)->getID(), 9);
    QCOMPARE(db.materials.getnthItem(2)->getID(), 12);
    QCOMPARE(db.materials.getItemById(9), db.materials.getnthItem(1));
    auto added = std::make_shared<Material>();
    db.materials.add(added);
    QCOMPARE(added->getID(), 4);
    // The other collections go by their highest stored id.
    QCOMPARE(db.orders.getNextId(), 8);
}

void DatabaseBundleTest::shouldDeriveTheContactOfALineStoredWithoutOne()
{
    putFile(DatabaseBundle::Contacts, recordsFile(DatabaseBundle::Contacts, {{{"id", "12"}}}));
    putFile(DatabaseBundle::Orders,
            recordsFile(DatabaseBundle::Orders, {{{"id", "1"}, {"contact", "12"}}, {{"id", "2"}, {"contact", "0"}}}));
    putFile(DatabaseBundle::Materials,
            recordsFile(DatabaseBundle::Materials,
                        {{{"id", "1"}, {"order", "1"}},  // order with a contact
                         {{"id", "2"}, {"order", "2"}},  // order without
                         {{"id", "3"}, {"order", "77"}},  // no such order
                         {{"id", "4"}, {"order", "1"}, {"contact", "5"}},  // stored
                         {{"id", "5"}, {"order", "1"}, {"contact", "0"}}}));
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    QList<int> contacts;
    for (int n = 0; n < db.materials.getCount(); ++n)
        contacts << static_cast<const Material *>(db.materials.getnthItem(n))->getContact();
    QCOMPARE(contacts, (QList<int>{12, 0, 0, 5, 0}));

    // A hook is asked only for the lines without a stored contact, after the
    // line has its order and stored id.
    Database hooked;
    QList<std::pair<int, int>> asked;  // line id, order id
    hooked.bundle.setSetContactfor([&](Material *line) {
        asked.append({line->getID(), line->getOrder()});
        line->setContact(-1);
    });
    QVERIFY(hooked.bundle.readDatabase().ok());
    QCOMPARE(asked, (QList<std::pair<int, int>>{{1, 1}, {2, 2}, {3, 77}}));
    QCOMPARE(static_cast<const Material *>(hooked.materials.getnthItem(3))->getContact(), 5);
}

void DatabaseBundleTest::shouldReadInTheFixedOrderAndTellAfterEachFile_data()
{
    QTest::addColumn<bool>("parallel");
    QTest::newRow("files parsed in parallel") << true;
    QTest::newRow("one file after the other") << false;
}

void DatabaseBundleTest::shouldReadInTheFixedOrderAndTellAfterEachFile()
{
    QFETCH(bool, parallel);
    Database saved;
    for (int n = 1; n <= 30; ++n)
        fill(saved, QStringLiteral("record %1").arg(n), n * 1000);
    QVERIFY(saved.bundle.writeDatabase());

    Database db;
    db.bundle.setParallelReading(parallel);
    QStringList seen;
    db.bundle.setAfterReading([&](File file) {
        // What each file links to is in place when it is read; what follows
        // it is not there yet.
        QStringList counts;
        for (int f = 0; f < DatabaseBundle::FileCount; ++f)
            counts << QString::number(db.bundle.collection(File(f)).getCount());
        seen << DatabaseBundle::fileName(file) + QLatin1Char(' ') + counts.join(QLatin1Char(','));
    });
    QVERIFY(db.bundle.readDatabase().ok());
    QCOMPARE(seen,
             (QStringList{"contacts.xml 30,0,0,0,0,0", "orders.xml 30,30,0,0,0,0", "items.xml 30,30,30,0,0,0",
                          "itemsordered.xml 30,30,30,30,0,0", "bills.xml 30,30,30,30,30,0",
                          "actions.xml 30,30,30,30,30,30"}));
    for (int f = 0; f < DatabaseBundle::FileCount; ++f)
        QCOMPARE(describeAll(db.bundle.collection(File(f))), describeAll(saved.bundle.collection(File(f))));

    // With no bundle at all, every file is still told about.
    QDir(platform::paths::quorvelDir()).removeRecursively();
    Database empty;
    int told = 0;
    empty.bundle.setAfterReading([&](File) { ++told; });
    QVERIFY(empty.bundle.readDatabase().ok());
    QCOMPARE(told, 6);
}

void DatabaseBundleTest::shouldReadValuesWrittenByOtherTools()
{
    // Written as a tool might: numbers and flags as their own kinds, tabs,
    // keys in any order, a key this program does not know.
    putFile(
        DatabaseBundle::Orders,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n\t<key>orders</key>\n\t<array>\n"
        "\t\t<dict>\n\t\t\t<key>title</key>\n\t\t\t<string>Repair &amp; paint</string>\n"
        "\t\t\t<key>id</key>\n\t\t\t<integer>42</integer>\n\t\t\t<key>sent</key>\n\t\t\t<true/>\n"
        "\t\t\t<key>repeats</key>\n\t\t\t<false/>\n\t\t\t<key>value</key>\n\t\t\t<real>12.50</real>\n"
        "\t\t\t<key>colour</key>\n\t\t\t<string>red</string>\n\t\t\t<key>description</key>\n\t\t\t<string/>\n"
        "\t\t</dict>\n\t</array>\n</dict>\n</plist>\n");
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    QCOMPARE(db.orders.getCount(), 1);
    const auto *order = static_cast<const Order *>(db.orders.getnthItem(0));
    QCOMPARE(order->getID(), 42);
    QCOMPARE(order->getTitle(), QStringLiteral("Repair & paint"));
    QCOMPARE(order->getSent(), true);
    QCOMPARE(order->getRepeats(), false);
    QCOMPARE(order->getValue(), QStringLiteral("12.50"));
    QCOMPARE(order->getDescription(), QStringLiteral(""));
}

void DatabaseBundleTest::shouldNumberRecordsStoredWithoutId()
{
    putFile(DatabaseBundle::Contacts,
            recordsFile(DatabaseBundle::Contacts, {{{"id", "4"}}, {{"name", "no id"}}, {{"id", "2"}}}));
    putFile(DatabaseBundle::Materials, recordsFile(DatabaseBundle::Materials, {{{"id", "8"}}, {{"item", "no id"}}}));
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    QCOMPARE(db.contacts.getnthItem(1)->getID(), 5);  // numbered when added
    QCOMPARE(db.contacts.getNextId(), 6);
    // A line's stored id replaces its number, and a missing id reads as 0.
    QCOMPARE(db.materials.getnthItem(0)->getID(), 8);
    QCOMPARE(db.materials.getnthItem(1)->getID(), 0);
    QCOMPARE(db.materials.getNextId(), 3);
}

void DatabaseBundleTest::shouldNotCreateAnythingWhenReading()
{
    Database db;
    QVERIFY(db.bundle.readDatabase().ok());
    QVERIFY(!QFileInfo::exists(platform::paths::quorvelDir()));
    for (int f = 0; f < DatabaseBundle::FileCount; ++f)
        QCOMPARE(db.bundle.collection(File(f)).getCount(), 0);
}

void DatabaseBundleTest::shouldCreateTheBundleOnTheFirstWrite()
{
    Database db;
    fill(db, QStringLiteral("x"), 1);
    QVERIFY(db.bundle.writeDatabase(DatabaseBundle::Orders));
    QVERIFY(QFileInfo(platform::paths::bundleDir()).isDir());
    QCOMPARE(QDir(platform::paths::bundleDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList{QStringLiteral("orders.xml")});
    QVERIFY(db.bundle.writeDatabase());
    QCOMPARE(
        QDir(platform::paths::bundleDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).size(), 6);
}

void DatabaseBundleTest::shouldLoadNothingFromAnUnreadableFileAndSayWhy_data()
{
    QTest::addColumn<DatabaseBundle::File>("file");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");  // "line N: why", as the message gives it

    Database db;
    fill(db, QStringLiteral("good"), 1);
    fill(db, QStringLiteral("good"), 50);
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        const File file = File(f);
        const QByteArray good = db.bundle.fileContents(file);
        const QByteArray name = DatabaseBundle::fileName(file).toUtf8();
        QTest::addRow("%s truncated", name.constData())
            << file << good.left(good.size() * 2 / 3)
            << QStringLiteral("Premature end of document (the file is left as it is)");
        QTest::addRow("%s not a property list", name.constData())
            << file << QByteArray("id,name\n1,Ann\n") << QStringLiteral("line 1: ");
        QTest::addRow("%s under another key", name.constData())
            << file
            << QByteArray(good).replace("<key>" + DatabaseBundle::rootKey(file).toUtf8() + "</key>", "<key>x</key>")
            << QStringLiteral("no \"%1\" in the property list").arg(DatabaseBundle::rootKey(file));
    }
    QByteArray broken = db.bundle.fileContents(DatabaseBundle::Orders);
    const qsizetype at = broken.indexOf("</string>", broken.indexOf("<key>title</key>"));
    broken.replace(at, 9, "</strin>");
    const qint64 line = broken.left(at).count('\n') + 1;
    QTest::newRow("orders.xml end tag misspelt")
        << DatabaseBundle::Orders << broken << QStringLiteral("line %1: Opening and ending tag mismatch").arg(line);
    QTest::newRow("orders.xml empty") << DatabaseBundle::Orders << QByteArray() << QStringLiteral("Premature end");
}

void DatabaseBundleTest::shouldLoadNothingFromAnUnreadableFileAndSayWhy()
{
    QFETCH(DatabaseBundle::File, file);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);

    Database saved;
    fill(saved, QStringLiteral("fine"), 1);
    QVERIFY(saved.bundle.writeDatabase());
    putFile(file, bytes);

    Database db;
    StderrCapture capture;
    const DatabaseBundle::ReadResult result = db.bundle.readDatabase();
    const QString printed = capture.finish();

    QCOMPARE(result.failures.size(), 1);
    const DatabaseBundle::Failure &failure = result.failures.first();
    QCOMPARE(failure.file, file);
    QCOMPARE(failure.path, DatabaseBundle::filePath(file));
    QVERIFY(!failure.reason.isEmpty());
    QVERIFY2(failure.message().contains(reason), qPrintable(failure.message()));
    QVERIFY(failure.message().startsWith(QStringLiteral("cannot read ") + DatabaseBundle::filePath(file)
                                         + QStringLiteral(": ")));
    QCOMPARE(printed, QStringLiteral("quorvel: ") + failure.message() + QLatin1Char('\n'));
    QVERIFY(db.bundle.isUnreadable(file));

    // Nothing from that file, everything from the others.
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        const int expected = File(f) == file ? 0 : 1;
        QCOMPARE(db.bundle.collection(File(f)).getCount(), expected);
    }
    QCOMPARE(fileBytes(file), bytes);
}

void DatabaseBundleTest::shouldKeepAnUnreadableFileAsideBeforeWritingIt()
{
    Database saved;
    fill(saved, QStringLiteral("fine"), 1);
    QVERIFY(saved.bundle.writeDatabase());
    const QByteArray damaged = saved.bundle.fileContents(DatabaseBundle::Orders).left(300);
    putFile(DatabaseBundle::Orders, damaged);

    Database db;
    {
        StderrCapture quiet;
        QCOMPARE(db.bundle.readDatabase().failures.size(), 1);
    }
    // Writing another file leaves it alone.
    QVERIFY(db.bundle.writeDatabase(DatabaseBundle::Contacts));
    QCOMPARE(fileBytes(DatabaseBundle::Orders), damaged);

    StderrCapture capture;
    db.orders.add(std::make_shared<Order>());
    QVERIFY(db.bundle.writeDatabase(DatabaseBundle::Orders));
    const QString aside
        = DatabaseBundle::filePath(DatabaseBundle::Orders) + QStringLiteral(".unreadable-20260115-100000");
    QFile kept(aside);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), damaged);
    QVERIFY(!db.bundle.isUnreadable(DatabaseBundle::Orders));
    QCOMPARE(capture.finish(),
             QStringLiteral("quorvel: kept the unreadable %1 as %2\n")
                 .arg(DatabaseBundle::filePath(DatabaseBundle::Orders), aside));

    // The new file is whole, and the next write just replaces it.
    Database again;
    QVERIFY(again.bundle.readDatabase().ok());
    QCOMPARE(again.orders.getCount(), 1);
    QVERIFY(db.bundle.writeDatabase());
    const QStringList entries = QDir(platform::paths::bundleDir()).entryList(QDir::Files);
    QCOMPARE(entries.filter(QStringLiteral(".unreadable-")), QStringList{QFileInfo(aside).fileName()});

    // A second unreadable file at the same moment does not replace the first.
    putFile(DatabaseBundle::Orders, "<plist>");
    Database third;
    {
        StderrCapture quiet;
        QVERIFY(!third.bundle.readDatabase().ok());
        QVERIFY(third.bundle.writeDatabase());
    }
    QFile second(aside + QStringLiteral("-2"));
    QVERIFY(second.open(QIODevice::ReadOnly));
    QCOMPARE(second.readAll(), QByteArray("<plist>"));
    kept.seek(0);
    QCOMPARE(kept.readAll(), damaged);
}

void DatabaseBundleTest::shouldReportAFileThatCannotBeOpened()
{
    // A folder where the file should be: it exists and cannot be read.
    QVERIFY(QDir().mkpath(DatabaseBundle::filePath(DatabaseBundle::Bills)));
    Database db;
    DatabaseBundle::ReadResult result;
    {
        StderrCapture quiet;
        result = db.bundle.readDatabase();
    }
    QCOMPARE(result.failures.size(), 1);
    QCOMPARE(result.failures.first().file, DatabaseBundle::Bills);
    QVERIFY(db.bundle.isUnreadable(DatabaseBundle::Bills));
    {
        StderrCapture quiet;
        QVERIFY(db.bundle.writeDatabase(DatabaseBundle::Bills));
    }
    QVERIFY(QFileInfo(DatabaseBundle::filePath(DatabaseBundle::Bills) + QStringLiteral(".unreadable-20260115-100000"))
                .isDir());
    QVERIFY(QFileInfo(DatabaseBundle::filePath(DatabaseBundle::Bills)).isFile());

    // A file without read permission (not testable as the superuser, who
    // reads it anyway).
    putFile(DatabaseBundle::Items, "<plist/>");
    QFile::setPermissions(DatabaseBundle::filePath(DatabaseBundle::Items), QFileDevice::WriteOwner);
    QFile probe(DatabaseBundle::filePath(DatabaseBundle::Items));
    if (probe.open(QIODevice::ReadOnly))
        QSKIP("files without read permission can still be read here");
    Database locked;
    StderrCapture quiet;
    result = locked.bundle.readDatabase();
    QCOMPARE(result.failures.size(), 1);
    QCOMPARE(result.failures.first().file, DatabaseBundle::Items);
    QVERIFY(result.failures.first().reason.contains(QStringLiteral("ermission")));
}

void DatabaseBundleTest::shouldReportAFailedWrite()
{
    // A plain file where the "Quorvel" folder should be.
    QVERIFY(QDir().mkpath(platform::paths::applicationSupportDir()));
    QFile blocker(platform::paths::quorvelDir());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    Database db;
    fill(db, QStringLiteral("x"), 1);
    StderrCapture capture;
    QVERIFY(!db.bundle.writeDatabase(DatabaseBundle::Orders));
    QVERIFY(db.bundle.lastWriteError().contains(platform::paths::bundleDir()));
    QCOMPARE(capture.finish(), QStringLiteral("quorvel: ") + db.bundle.lastWriteError() + QLatin1Char('\n'));
    QVERIFY(!db.bundle.writeDatabase());
    QVERIFY(QFile::remove(platform::paths::quorvelDir()));
}

QUORVEL_TEST(DatabaseBundleTest)
#include "DatabaseBundleTest.moc"
