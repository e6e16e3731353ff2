#include "store/DatabaseReading.h"

#include "platform/Numbers.h"
#include "store/DatabaseFileTables.h"

#include <QFileInfo>

using platform::plist::Field;
using platform::plist::ReadStatus;

namespace database {

namespace {

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

}  // namespace

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

}  // namespace database
