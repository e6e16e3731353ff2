#include "store/DatabaseWriting.h"

#include "platform/PropertyList.h"
#include "store/DatabaseFileTables.h"
#include "store/kdDataSource.h"

#include <algorithm>
#include <iterator>
#include <limits>

using platform::plist::RecordWriter;

namespace database {

namespace {

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

void writeContacts(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<ContactKeyCount> out(writer, ContactKeys);
    for (int n = from; n < to; ++n) {
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

void writeOrders(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<OrderKeyCount> out(writer, OrderKeys);
    for (int n = from; n < to; ++n) {
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

void writeItems(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<ItemKeyCount> out(writer, ItemKeys);
    for (int n = from; n < to; ++n) {
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

void writeMaterials(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<MaterialKeyCount> out(writer, MaterialKeys);
    for (int n = from; n < to; ++n) {
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

void writeBills(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<BillKeyCount> out(writer, BillKeys);
    for (int n = from; n < to; ++n) {
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

void writeActions(RecordWriter &writer, const kdDataSource &source, int from, int to)
{
    RecordOut<ActionKeyCount> out(writer, ActionKeys);
    for (int n = from; n < to; ++n) {
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

}  // namespace

FileBuilder::FileBuilder(DatabaseBundle::File kind, const kdDataSource &records)
    : file(kind),
      source(records)
{
    restart();
}

FileBuilder::~FileBuilder() = default;

void FileBuilder::restart()
{
    writer = std::make_unique<RecordWriter>(DatabaseBundle::rootKey(file),
                                            qsizetype(source.getCount()) * BytesPerRecord[file],
                                            RecordWriter::KeysComeSorted);
    next = 0;
    generation = source.getGeneration();
}

bool FileBuilder::step(int records)
{
    if (generation != source.getGeneration())
        restart();
    const int count = source.getCount();
    const int to = int(std::min<qint64>(count, qint64(next) + records));
    switch (file) {
    case DatabaseBundle::Contacts:
        writeContacts(*writer, source, next, to);
        break;
    case DatabaseBundle::Orders:
        writeOrders(*writer, source, next, to);
        break;
    case DatabaseBundle::Items:
        writeItems(*writer, source, next, to);
        break;
    case DatabaseBundle::Materials:
        writeMaterials(*writer, source, next, to);
        break;
    case DatabaseBundle::Bills:
        writeBills(*writer, source, next, to);
        break;
    case DatabaseBundle::Actions:
        writeActions(*writer, source, next, to);
        break;
    }
    next = to;
    return next >= count;
}

QByteArray FileBuilder::finish()
{
    return writer->finish();
}

QByteArray fileBytes(DatabaseBundle::File file, const kdDataSource &source)
{
    FileBuilder builder(file, source);
    builder.step(std::numeric_limits<int>::max());
    return builder.finish();
}

}  // namespace database
