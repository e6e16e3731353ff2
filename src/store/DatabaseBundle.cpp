#include "store/DatabaseBundle.h"

#include "accounts/Bill.h"
#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "platform/Clock.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/kdDataSource.h"
#include "tasks/Action.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

using platform::plist::Field;
using platform::plist::ReadStatus;
using platform::plist::RecordWriter;

namespace {

const QString Yes = QStringLiteral("YES");
const QString No = QStringLiteral("NO");

// The keys of each file. The enums follow the lists, which are in the sorted
// order the files are written in.
enum ContactKey {
    cAdd1,
    cAdd2,
    cAdd3,
    cComments,
    cCompany,
    cEmail,
    cExtension,
    cFax,
    cId,
    cJobTitle,
    cKind,
    cMobile,
    cName,
    cPhone,
    cPostcode,
    cTitle,
    cType,
    cWebsite,
    ContactKeyCount
};
const QStringList ContactKeys
    = {QStringLiteral("add1"),    QStringLiteral("add2"),     QStringLiteral("add3"),      QStringLiteral("comments"),
       QStringLiteral("company"), QStringLiteral("email"),    QStringLiteral("extension"), QStringLiteral("fax"),
       QStringLiteral("id"),      QStringLiteral("jobtitle"), QStringLiteral("kind"),      QStringLiteral("mobile"),
       QStringLiteral("name"),    QStringLiteral("phone"),    QStringLiteral("postcode"),  QStringLiteral("title"),
       QStringLiteral("type"),    QStringLiteral("website")};

enum OrderKey {
    oBalance,
    oBalancePaid,
    oContact,
    oDate,
    oDeposit,
    oDepositPaid,
    oDescription,
    oId,
    oIncludeBOM,
    oLastRepeatDate,
    oOrderNum,
    oPaymentMethod,
    oRepeatFrequency,
    oRepeats,
    oSent,
    oShipping,
    oStatus,
    oTax,
    oTaxRate,
    oTitle,
    oType,
    oValue,
    oValueWithTax,
    OrderKeyCount
};
const QStringList OrderKeys = {QStringLiteral("balance"),
                               QStringLiteral("balancepaid"),
                               QStringLiteral("contact"),
                               QStringLiteral("date"),
                               QStringLiteral("deposit"),
                               QStringLiteral("depositpaid"),
                               QStringLiteral("description"),
                               QStringLiteral("id"),
                               QStringLiteral("includeBOM"),
                               QStringLiteral("lastrepeatdate"),
                               QStringLiteral("ordernum"),
                               QStringLiteral("paymentmethod"),
                               QStringLiteral("repeatfrequency"),
                               QStringLiteral("repeats"),
                               QStringLiteral("sent"),
                               QStringLiteral("shipping"),
                               QStringLiteral("status"),
                               QStringLiteral("tax"),
                               QStringLiteral("taxrate"),
                               QStringLiteral("title"),
                               QStringLiteral("type"),
                               QStringLiteral("value"),
                               QStringLiteral("valuewithtax")};

enum ItemKey {
    iBought,
    iCode,
    iCondition,
    iDecreaseQty,
    iDescription,
    iId,
    iItem,
    iOptimumQty,
    iPrice,
    iQty,
    iShipping,
    iStatus,
    iSupplier,
    iWarnlevel,
    ItemKeyCount
};
const QStringList ItemKeys = {QStringLiteral("bought"),      QStringLiteral("code"),        QStringLiteral("condition"),
                              QStringLiteral("decreaseQty"), QStringLiteral("description"), QStringLiteral("id"),
                              QStringLiteral("item"),        QStringLiteral("optimumqty"),  QStringLiteral("price"),
                              QStringLiteral("qty"),         QStringLiteral("shipping"),    QStringLiteral("status"),
                              QStringLiteral("supplier"),    QStringLiteral("warnlevel")};

enum MaterialKey { mCode, mContact, mCost, mId, mItem, mOrder, mProduct, mQty, mTotal, mUnit, MaterialKeyCount };
const QStringList MaterialKeys
    = {QStringLiteral("code"),  QStringLiteral("contact"), QStringLiteral("cost"),    QStringLiteral("id"),
       QStringLiteral("item"),  QStringLiteral("order"),   QStringLiteral("product"), QStringLiteral("qty"),
       QStringLiteral("total"), QStringLiteral("unit")};

enum BillKey { bAmount, bCategory, bDatePaid, bDetails, bId, bName, bNumber, BillKeyCount };
const QStringList BillKeys
    = {QStringLiteral("amount"), QStringLiteral("category"), QStringLiteral("datepaid"), QStringLiteral("details"),
       QStringLiteral("id"),     QStringLiteral("name"),     QStringLiteral("number")};

enum ActionKey {
    aAlarm,
    aAlarmAcknowledged,
    aComplete,
    aDetails,
    aEndDate,
    aEndTime,
    aId,
    aRate,
    aStartDate,
    aStartTime,
    aTitle,
    aTotalCharge,
    aTotalTime,
    aTotalTimeUnits,
    ActionKeyCount
};
const QStringList ActionKeys = {QStringLiteral("alarm"),     QStringLiteral("alarmacknowledged"),
                                QStringLiteral("complete"),  QStringLiteral("details"),
                                QStringLiteral("enddate"),   QStringLiteral("endtime"),
                                QStringLiteral("id"),        QStringLiteral("rate"),
                                QStringLiteral("startdate"), QStringLiteral("starttime"),
                                QStringLiteral("title"),     QStringLiteral("totalcharge"),
                                QStringLiteral("totaltime"), QStringLiteral("totaltimeunits")};

const QStringList &keysOf(DatabaseBundle::File file)
{
    static const QStringList *const all[]
        = {&ContactKeys, &OrderKeys, &ItemKeys, &MaterialKeys, &BillKeys, &ActionKeys};
    return *all[file];
}

// The text fields of each record kind that go by key, with their accessors.
template <typename Record> struct TextField
{
    int key;
    const QString &(Record::*get)() const;
    void (Record::*set)(const QString &);
};

const TextField<Contact> ContactTexts[] = {
    {cAdd1, &Contact::getAdd1, &Contact::setAdd1},
    {cAdd2, &Contact::getAdd2, &Contact::setAdd2},
    {cAdd3, &Contact::getAdd3, &Contact::setAdd3},
    {cComments, &Contact::getComments, &Contact::setComments},
    {cEmail, &Contact::getEmail, &Contact::setEmail},
    {cExtension, &Contact::getExtension, &Contact::setExtension},
    {cFax, &Contact::getFax, &Contact::setFax},
    {cJobTitle, &Contact::getJobTitle, &Contact::setJobTitle},
    {cKind, &Contact::getKind, &Contact::setKind},
    {cMobile, &Contact::getMobile, &Contact::setMobile},
    {cName, &Contact::getName, &Contact::setName},
    {cPhone, &Contact::getPhone, &Contact::setPhone},
    {cPostcode, &Contact::getPostcode, &Contact::setPostcode},
    {cTitle, &Contact::getTitle, &Contact::setTitle},
    {cType, &Contact::getType, &Contact::setType},
    {cWebsite, &Contact::getWebsite, &Contact::setWebsite},
};

const TextField<Order> OrderTexts[] = {
    {oBalance, &Order::getBalance, &Order::setBalance},
    {oBalancePaid, &Order::getBalancePaid, &Order::setBalancePaid},
    {oDate, &Order::getDate, &Order::setDate},
    {oDeposit, &Order::getDeposit, &Order::setDeposit},
    {oDepositPaid, &Order::getDepositPaid, &Order::setDepositPaid},
    {oDescription, &Order::getDescription, &Order::setDescription},
    {oLastRepeatDate, &Order::getLastRepeatDate, &Order::setLastRepeatDate},
    {oOrderNum, &Order::getOrderNum, &Order::setOrderNum},
    {oPaymentMethod, &Order::getPaymentMethod, &Order::setPaymentMethod},
    {oRepeatFrequency, &Order::getRepeatFrequency, &Order::setRepeatFrequency},
    {oShipping, &Order::getShipping, &Order::setShipping},
    {oStatus, &Order::getStatus, &Order::setStatus},
    {oTax, &Order::getTax, &Order::setTax},
    {oTaxRate, &Order::getTaxRate, &Order::setTaxRate},
    {oTitle, &Order::getTitle, &Order::setTitle},
    {oType, &Order::getType, &Order::setType},
    {oValue, &Order::getValue, &Order::setValue},
    {oValueWithTax, &Order::getValueWithTax, &Order::setValueWithTax},
};

const TextField<Item> ItemTexts[] = {
    {iBought, &Item::getBought, &Item::setBought},
    {iCode, &Item::getCode, &Item::setCode},
    {iCondition, &Item::getCondition, &Item::setCondition},
    {iDescription, &Item::getDescription, &Item::setDescription},
    {iItem, &Item::getItem, &Item::setItem},
    {iOptimumQty, &Item::getOptimumQty, &Item::setOptimumQty},
    {iPrice, &Item::getPrice, &Item::setPrice},
    {iQty, &Item::getQty, &Item::setQty},
    {iShipping, &Item::getShipping, &Item::setShipping},
    {iStatus, &Item::getStatus, &Item::setStatus},
    {iSupplier, &Item::getSupplier, &Item::setSupplier},
    {iWarnlevel, &Item::getWarnlevel, &Item::setWarnlevel},
};

const TextField<Material> MaterialTexts[] = {
    {mCode, &Material::getCode, &Material::setCode},    {mCost, &Material::getCost, &Material::setCost},
    {mItem, &Material::getItem, &Material::setItem},    {mQty, &Material::getQty, &Material::setQty},
    {mTotal, &Material::getTotal, &Material::setTotal}, {mUnit, &Material::getUnit, &Material::setUnit},
};

const TextField<Bill> BillTexts[] = {
    {bAmount, &Bill::getAmount, &Bill::setAmount},
    {bCategory, &Bill::getCategory, &Bill::setCategory},
    {bDatePaid, &Bill::getDatePaid, &Bill::setDatePaid},
    {bDetails, &Bill::getDetails, &Bill::setDetails},
    {bName, &Bill::getName, &Bill::setName},
    {bNumber, &Bill::getNumber, &Bill::setNumber},
};

const TextField<Action> ActionTexts[] = {
    {aDetails, &Action::getDetails, &Action::setDetails},
    {aEndDate, &Action::getEndDate, &Action::setEndDate},
    {aEndTime, &Action::getEndTime, &Action::setEndTime},
    {aRate, &Action::getRate, &Action::setRate},
    {aStartDate, &Action::getStartDate, &Action::setStartDate},
    {aStartTime, &Action::getStartTime, &Action::setStartTime},
    {aTitle, &Action::getTitle, &Action::setTitle},
    {aTotalCharge, &Action::getTotalCharge, &Action::setTotalCharge},
    {aTotalTime, &Action::getTotalTime, &Action::setTotalTime},
    {aTotalTimeUnits, &Action::getTotalTimeUnits, &Action::setTotalTimeUnits},
};

// ------------------------------------------------------------------ reading

// A line stored without "contact".
constexpr int NoContact = INT_MIN;

// One file parsed into records, not yet in their collection.
struct Parsed
{
    bool exists = false;
    ReadStatus status;
    std::vector<std::shared_ptr<dataObject>> records;
    std::vector<int> numbers;  // orders: the contact id; lines: the stored id
    std::vector<int> contacts;  // lines: the stored contact id, or NoContact
};

// The integer value of a key's text; 0 when the key is absent.
inline int integer(const QString *text)
{
    return text ? platform::intValue(*text) : 0;
}
inline bool isYes(const QString *text)
{
    return text && *text == Yes;
}

class FileParser : public platform::plist::RecordVisitor
{
public:
    FileParser(DatabaseBundle::File kind, Parsed &result)
        : file(kind),
          out(result),
          keyCount(int(keysOf(kind).size()))
    { }

    void restart() override
    {
        out.records.clear();
        out.numbers.clear();
        out.contacts.clear();
    }

    void record(std::span<const Field> fields) override
    {
        std::fill(slot, slot + keyCount, nullptr);
        for (const Field &field : fields) {
            if (field.key >= 0 && field.key < keyCount)
                slot[field.key] = &field.value;  // the last of a key written twice wins
        }
        switch (file) {
        case DatabaseBundle::Contacts:
            contact();
            break;
        case DatabaseBundle::Orders:
            order();
            break;
        case DatabaseBundle::Items:
            item();
            break;
        case DatabaseBundle::Materials:
            material();
            break;
        case DatabaseBundle::Bills:
            bill();
            break;
        case DatabaseBundle::Actions:
            action();
            break;
        }
    }

private:
    // The setter is called only for keys that are there.
    template <typename Record, size_t N> void setTexts(Record &record, const TextField<Record> (&texts)[N])
    {
        for (const TextField<Record> &text : texts) {
            if (const QString *value = slot[text.key])
                (record.*text.set)(*value);
        }
    }

    void contact()
    {
        auto record = std::make_shared<Contact>();
        record->setID(integer(slot[cId]));
        record->setCompany(integer(slot[cCompany]));
        setTexts(*record, ContactTexts);
        out.records.push_back(std::move(record));
    }

    void order()
    {
        auto record = std::make_shared<Order>();
        record->setID(integer(slot[oId]));
        // The contact is linked when the order joins its collection, before
        // anything else sees the order.
        out.numbers.push_back(integer(slot[oContact]));
        setTexts(*record, OrderTexts);
        if (isYes(slot[oIncludeBOM]))
            record->setIncludeBOM(true);
        if (isYes(slot[oSent]))
            record->setSent(true);
        if (isYes(slot[oRepeats]))
            record->setRepeats(true);
        out.records.push_back(std::move(record));
    }

    void item()
    {
        auto record = std::make_shared<Item>();
        record->setID(integer(slot[iId]));
        setTexts(*record, ItemTexts);
        if (isYes(slot[iDecreaseQty]))
            record->setDecreaseQty(true);
        out.records.push_back(std::move(record));
    }

    void material()
    {
        // The id is given after the line has joined its collection.
        auto record = std::make_shared<Material>();
        out.numbers.push_back(integer(slot[mId]));
        record->setOrder(integer(slot[mOrder]));
        out.contacts.push_back(slot[mContact] ? integer(slot[mContact]) : NoContact);
        record->setProduct(integer(slot[mProduct]));
        setTexts(*record, MaterialTexts);
        out.records.push_back(std::move(record));
    }

    void bill()
    {
        auto record = std::make_shared<Bill>();
        record->setID(integer(slot[bId]));
        setTexts(*record, BillTexts);
        out.records.push_back(std::move(record));
    }

    void action()
    {
        auto record = std::make_shared<Action>();
        record->setID(integer(slot[aId]));
        if (isYes(slot[aComplete]))
            record->setComplete(true);
        if (isYes(slot[aAlarmAcknowledged]))
            record->setAlarmAcknowledged(true);
        if (isYes(slot[aAlarm]))
            record->setAlarm(true);
        setTexts(*record, ActionTexts);
        out.records.push_back(std::move(record));
    }

    static constexpr int MaxKeys = 32;
    static_assert(ContactKeyCount <= MaxKeys && OrderKeyCount <= MaxKeys && ItemKeyCount <= MaxKeys
                  && MaterialKeyCount <= MaxKeys && BillKeyCount <= MaxKeys && ActionKeyCount <= MaxKeys);

    DatabaseBundle::File file;
    Parsed &out;
    int keyCount;
    const QString *slot[MaxKeys] = {};
};

void parseFile(DatabaseBundle::File file, Parsed &out, bool sharing)
{
    const QString path = DatabaseBundle::filePath(file);
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return;
    out.exists = true;
    if (info.isDir()) {
        out.status = ReadStatus{QStringLiteral("it is a folder"), 0};
        return;
    }
    platform::plist::RecordReader reader(keysOf(file));
    reader.setSharingEnabled(sharing);
    FileParser parser(file, out);
    out.status = reader.readFile(path, DatabaseBundle::rootKey(file), parser);
    if (!out.status.ok())
        parser.restart();
}

// ------------------------------------------------------------------ writing

// Rough bytes per record of each file, to size the buffer once.
constexpr qsizetype BytesPerRecord[] = {640, 1100, 700, 480, 380, 760};

// The values of one record by key; a key without a value is left out. The
// keys are emitted in the order of their list, which is the sorted order.
template <int KeyCount> class RecordOut
{
public:
    RecordOut(RecordWriter &recordWriter, const QStringList &recordKeys)
        : writer(recordWriter),
          keys(recordKeys)
    { }

    void clear() { std::fill(std::begin(values), std::end(values), nullptr); }
    void always(int key, const QString &value) { values[key] = &value; }
    void optional(int key, const QString &value)
    {
        if (!value.isEmpty())
            values[key] = &value;
    }
    void flag(int key, bool on) { values[key] = on ? &Yes : &No; }
    template <typename Record, size_t N> void optionalTexts(const Record &record, const TextField<Record> (&texts)[N])
    {
        for (const TextField<Record> &text : texts)
            optional(text.key, (record.*text.get)());
    }
    template <typename Record, size_t N> void allTexts(const Record &record, const TextField<Record> (&texts)[N])
    {
        for (const TextField<Record> &text : texts)
            always(text.key, (record.*text.get)());
    }
    void write()
    {
        writer.beginRecord();
        for (int key = 0; key < KeyCount; ++key) {
            if (values[key])
                writer.addField(keys.at(key), *values[key]);
        }
        writer.endRecord();
    }

private:
    RecordWriter &writer;
    const QStringList &keys;
    const QString *values[KeyCount] = {};
};

template <typename Record> const Record *recordAt(const kdDataSource &source, int n)
{
    return dynamic_cast<const Record *>(source.getnthItem(n));
}

void writeContacts(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<ContactKeyCount> out(writer, ContactKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Contact *record = recordAt<Contact>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        const QString company = QString::number(record->getCompany());
        out.clear();
        out.optionalTexts(*record, ContactTexts);
        out.always(cCompany, company);
        out.always(cId, id);
        out.write();
    }
}

void writeOrders(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<OrderKeyCount> out(writer, OrderKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Order *record = recordAt<Order>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        const QString contact = QString::number(record->getContact() ? record->getContact()->getID() : 0);
        out.clear();
        out.optionalTexts(*record, OrderTexts);
        out.always(oContact, contact);
        out.always(oId, id);
        out.flag(oIncludeBOM, record->getIncludeBOM());
        out.flag(oRepeats, record->getRepeats());
        out.flag(oSent, record->getSent());
        out.write();
    }
}

void writeItems(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<ItemKeyCount> out(writer, ItemKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Item *record = recordAt<Item>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        out.clear();
        out.optionalTexts(*record, ItemTexts);
        out.flag(iDecreaseQty, record->getDecreaseQty());
        out.always(iId, id);
        out.write();
    }
}

void writeMaterials(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<MaterialKeyCount> out(writer, MaterialKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Material *record = recordAt<Material>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        const QString order = QString::number(record->getOrder());
        const QString product = QString::number(record->getProduct());
        const QString contact = QString::number(record->getContact());
        out.clear();
        out.optionalTexts(*record, MaterialTexts);
        out.always(mContact, contact);
        out.always(mId, id);
        out.always(mOrder, order);
        out.always(mProduct, product);
        out.write();
    }
}

void writeBills(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<BillKeyCount> out(writer, BillKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Bill *record = recordAt<Bill>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        out.clear();
        out.allTexts(*record, BillTexts);
        out.always(bId, id);
        out.write();
    }
}

void writeActions(RecordWriter &writer, const kdDataSource &source)
{
    RecordOut<ActionKeyCount> out(writer, ActionKeys);
    const int count = source.getCount();
    for (int n = 0; n < count; ++n) {
        const Action *record = recordAt<Action>(source, n);
        if (!record)
            continue;
        const QString id = QString::number(record->getID());
        out.clear();
        out.allTexts(*record, ActionTexts);
        out.flag(aAlarm, record->isAlarm());
        out.flag(aAlarmAcknowledged, record->isAlarmAcknowledged());
        out.flag(aComplete, record->isComplete());
        out.always(aId, id);
        out.write();
    }
}

void report(const QString &line)
{
    std::fprintf(stderr, "quorvel: %s\n", qUtf8Printable(line));
    std::fflush(stderr);
}

}  // namespace

// ------------------------------------------------------------ DatabaseBundle

QString DatabaseBundle::fileName(File file)
{
    static const char *const names[]
        = {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"};
    return QString::fromLatin1(names[file]);
}

QString DatabaseBundle::rootKey(File file)
{
    static const char *const keys[] = {"contacts", "orders", "products", "materials", "bills", "actions"};
    return QString::fromLatin1(keys[file]);
}

QString DatabaseBundle::filePath(File file)
{
    return platform::paths::bundleFile(fileName(file));
}

DatabaseBundle::DatabaseBundle(kdDataSource &contacts, kdDataSource &orders, kdDataSource &items,
                               kdDataSource &materials, kdDataSource &bills, kdDataSource &actions)
    : collections{&contacts, &orders, &items, &materials, &bills, &actions}
{ }

void DatabaseBundle::setConnectContactById(ConnectContactById hook)
{
    connectHook = std::move(hook);
}
void DatabaseBundle::setSetContactfor(SetContactFor hook)
{
    contactForHook = std::move(hook);
}
void DatabaseBundle::setAfterReading(AfterReading hook)
{
    afterHook = std::move(hook);
}

void DatabaseBundle::connectContactById(int contactId, Order *order) const
{
    if (!order)
        return;
    order->setContact(dynamic_cast<Contact *>(collection(Contacts).getItemById(contactId)));
}

void DatabaseBundle::setContactfor(Material *line) const
{
    if (!line)
        return;
    const auto *order = dynamic_cast<const Order *>(collection(Orders).getItemById(line->getOrder()));
    line->setContact(order && order->getContact() ? order->getContact()->getID() : 0);
}

QString DatabaseBundle::Failure::message() const
{
    QString why = reason;
    if (why.endsWith(QLatin1Char('.')))
        why.chop(1);
    const QString where = line > 0 ? QStringLiteral("line %1: ").arg(line) : QString();
    return QStringLiteral("cannot read %1: %2%3 (the file is left as it is)").arg(path, where, why);
}

DatabaseBundle::ReadResult DatabaseBundle::readDatabase()
{
    std::array<Parsed, FileCount> parsed;

    // Parse: the files are independent, so several threads may share them,
    // the largest first.
    std::vector<File> queue = {Contacts, Orders, Items, Materials, Bills, Actions};
    const int workers = parallel ? std::clamp(QThread::idealThreadCount(), 1, FileCount) : 1;
    if (workers > 1) {
        std::vector<qint64> sizes(FileCount);
        for (File file : queue)
            sizes[file] = QFileInfo(filePath(file)).size();
        std::stable_sort(queue.begin(), queue.end(), [&](File a, File b) { return sizes[a] > sizes[b]; });
        std::atomic<int> next{0};
        const auto work = [&]() {
            for (int n; (n = next.fetch_add(1)) < FileCount;)
                parseFile(queue[size_t(n)], parsed[queue[size_t(n)]], sharing);
        };
        std::vector<std::thread> threads;
        for (int t = 1; t < workers; ++t)
            threads.emplace_back(work);
        work();
        for (std::thread &thread : threads)
            thread.join();
    } else {
        for (File file : queue)
            parseFile(file, parsed[file], sharing);
    }

    // Link, in the fixed order, so that each file finds what it refers to.
    ReadResult result;
    for (int f = 0; f < FileCount; ++f) {
        const File file = File(f);
        Parsed &p = parsed[f];
        unreadable[f] = false;
        if (p.exists && !p.status.ok()) {
            Failure failure;
            failure.file = file;
            failure.path = filePath(file);
            failure.reason = p.status.reason;
            failure.line = p.status.line;
            result.failures.append(failure);
            unreadable[f] = true;
            report(failure.message());
        }
        kdDataSource &target = collection(file);
        for (size_t n = 0; n < p.records.size(); ++n) {
            std::shared_ptr<dataObject> record = std::move(p.records[n]);
            if (file == Orders) {
                auto *order = static_cast<Order *>(record.get());
                if (connectHook)
                    connectHook(p.numbers[n], order);
                else
                    connectContactById(p.numbers[n], order);
                target.add(std::move(record));
            } else if (file == Materials) {
                auto *line = static_cast<Material *>(record.get());
                target.add(std::move(record));
                line->setID(p.numbers[n]);
                if (p.contacts[n] != NoContact)
                    line->setContact(p.contacts[n]);
                else if (contactForHook)
                    contactForHook(line);
                else
                    setContactfor(line);
            } else {
                target.add(std::move(record));
            }
        }
        p.records.clear();
        p.records.shrink_to_fit();
        if (afterHook)
            afterHook(file);
    }
    return result;
}

QByteArray DatabaseBundle::fileContents(File file) const
{
    const kdDataSource &source = collection(file);
    RecordWriter writer(rootKey(file), qsizetype(source.getCount()) * BytesPerRecord[file],
                        RecordWriter::KeysComeSorted);
    switch (file) {
    case Contacts:
        writeContacts(writer, source);
        break;
    case Orders:
        writeOrders(writer, source);
        break;
    case Items:
        writeItems(writer, source);
        break;
    case Materials:
        writeMaterials(writer, source);
        break;
    case Bills:
        writeBills(writer, source);
        break;
    case Actions:
        writeActions(writer, source);
        break;
    }
    return writer.finish();
}

bool DatabaseBundle::fail(const QString &message)
{
    if (writeError.isEmpty())
        writeError = message;
    report(message);
    return false;
}

bool DatabaseBundle::setAside(File file)
{
    const QString path = filePath(file);
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        unreadable[file] = false;  // gone already: nothing to keep
        return true;
    }
    const QString base
        = path + QStringLiteral(".unreadable-") + platform::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside = base;
    for (int n = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++n)
        aside = base + QStringLiteral("-%1").arg(n);
    if (!QDir().rename(path, aside))
        return fail(
            QStringLiteral("cannot keep the unreadable %1 aside as %2, so it is not overwritten").arg(path, aside));
    report(QStringLiteral("kept the unreadable %1 as %2").arg(path, aside));
    unreadable[file] = false;
    return true;
}

bool DatabaseBundle::writeDatabase(File file)
{
    writeError.clear();
    const QString folder = platform::paths::bundleDir();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    return writeFile(file, fileContents(file));
}

bool DatabaseBundle::writeFile(File file, const QByteArray &contents)
{
    if (unreadable[file] && !setAside(file))
        return false;
    const QString path = filePath(file);
    QString why;
    if (!platform::plist::writeFileAtomically(path, contents, &why))
        return fail(QStringLiteral("cannot write %1: %2").arg(path, why));
    return true;
}

bool DatabaseBundle::writeDatabase()
{
    writeError.clear();
    const QString folder = platform::paths::bundleDir();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    // Each file is built while the one before it goes to disk; the files
    // are still written one after the other, in order.
    bool all = true;
    QByteArray current = fileContents(File(0));
    for (int f = 0; f < FileCount; ++f) {
        QByteArray following;
        std::thread builder;
        if (f + 1 < FileCount)
            builder = std::thread([&] { following = fileContents(File(f + 1)); });
        if (!writeFile(File(f), current))
            all = false;
        current = QByteArray();
        if (builder.joinable())
            builder.join();
        current = std::move(following);
    }
    return all;
}
