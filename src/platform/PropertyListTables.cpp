// The reader's two tables: the keys of a file by their bytes (known keys
// first, in their given order), and the values of a key that repeat, so that
// records share one copy of each.
#include "platform/PropertyListInternal.h"

#include <QHashFunctions>

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace platform::plist {

// ------------------------------------------------------------------ KeyTable

namespace {
// Seeded per process (QHashSeed), so that no document can be made of keys
// or values that all fall on one slot of the tables below and make every
// look-up walk all of them.
inline size_t hashBytes(const char *bytes, qsizetype length)
{
    static const size_t seed = QHashSeed::globalSeed();
    return qHashBits(bytes, size_t(length), seed);
}
}  // namespace

KeyTable::KeyTable(const QStringList &known)
{
    rehash(64);
    for (const QString &key : known)
        lookup(key);
}

void KeyTable::rehash(size_t capacity)
{
    cells.assign(capacity, -1);
    const size_t mask = capacity - 1;
    for (int index = 0; index < int(utf8Names.size()); ++index) {
        const QByteArray &bytes = utf8Names.at(index);
        size_t slot = hashBytes(bytes.constData(), bytes.size()) & mask;
        while (cells[slot] >= 0)
            slot = (slot + 1) & mask;
        cells[slot] = index;
    }
}

int KeyTable::add(const QByteArray &utf8, const QString &name)
{
    const int index = int(names.size());
    names.append(name);
    utf8Names.append(utf8);
    if (size_t(names.size()) * 2 > cells.size()) {
        rehash(cells.size() * 2);
    } else {
        const size_t mask = cells.size() - 1;
        size_t slot = hashBytes(utf8.constData(), utf8.size()) & mask;
        while (cells[slot] >= 0)
            slot = (slot + 1) & mask;
        cells[slot] = index;
    }
    return index;
}

int KeyTable::lookup(const char *bytes, qsizetype length)
{
    const size_t mask = cells.size() - 1;
    size_t slot = hashBytes(bytes, length) & mask;
    while (cells[slot] >= 0) {
        const QByteArray &candidate = utf8Names.at(cells[slot]);
        if (candidate.size() == length && std::memcmp(candidate.constData(), bytes, size_t(length)) == 0)
            return cells[slot];
        slot = (slot + 1) & mask;
    }
    const QByteArray utf8(bytes, length);
    return add(utf8, QString::fromUtf8(utf8));
}

int KeyTable::lookup(const QString &key)
{
    const QByteArray utf8 = key.toUtf8();
    return lookup(utf8.constData(), utf8.size());
}

// ---------------------------------------------------------------- ValueTable

namespace {
constexpr size_t ValueSlots = size_t(1) << 15;
constexpr int MaxSharedValues = int(ValueSlots / 2);
// A key whose first tries find nothing shared (ids, order numbers, amounts)
// stops sharing early. Others are judged later, once a key with a few
// thousand different values (dates) has had the time to fill in: they keep
// sharing while at least one try in eight finds its value already there.
constexpr quint32 TriesBeforeFirstLook = 256;
constexpr quint32 TriesBeforeJudging = 4096;
}  // namespace

ValueTable::ValueTable()
    : empty(QStringLiteral(""))
{ }

bool ValueTable::keyShares(int key)
{
    if (!enabled || key < 0)
        return false;
    if (size_t(key) >= stats.size())
        stats.resize(size_t(key) + 1);
    return !stats[size_t(key)].off;
}

void ValueTable::noteHit(int key, bool hit)
{
    KeyStats &s = stats[size_t(key)];
    ++s.tries;
    if (hit)
        ++s.hits;
    if ((s.tries == TriesBeforeFirstLook && s.hits == 0) || (s.tries >= TriesBeforeJudging && s.hits * 8 < s.tries))
        s.off = true;
}

ValueTable::Slot *ValueTable::find(const char *bytes, qsizetype length, quint32 hash)
{
    if (cells.empty())
        cells.resize(ValueSlots);
    const size_t mask = ValueSlots - 1;
    size_t slot = hash & mask;
    for (;;) {
        Slot &s = cells[slot];
        if (!s.used)
            return used < MaxSharedValues ? &s : nullptr;
        if (s.hash == hash && s.length == length && std::memcmp(s.bytes, bytes, size_t(length)) == 0)
            return &s;
        slot = (slot + 1) & mask;
    }
}

QString ValueTable::fromAscii(int key, const char *bytes, qsizetype length)
{
    if (length == 0)
        return empty;
    if (length > MaxLength || !keyShares(key))
        return QString::fromLatin1(bytes, length);
    // The first byte of an entry tells its kind: 0 for Latin-1 bytes, 1 for
    // UTF-16 units (see share()), so the two kinds never match each other.
    char keyBytes[MaxLength + 1];
    keyBytes[0] = 0;
    std::memcpy(keyBytes + 1, bytes, size_t(length));
    const quint32 hash = quint32(hashBytes(keyBytes, length + 1));
    Slot *slot = find(keyBytes, length + 1, hash);
    if (slot && slot->used) {
        noteHit(key, true);
        return slot->text;
    }
    noteHit(key, false);
    QString text = QString::fromLatin1(bytes, length);
    if (slot) {
        slot->used = true;
        slot->hash = hash;
        slot->length = quint8(length + 1);
        std::memcpy(slot->bytes, keyBytes, size_t(length + 1));
        slot->text = text;
        ++used;
    }
    return text;
}

QString ValueTable::share(int key, const QString &text)
{
    if (text.isEmpty())
        return empty;
    const qsizetype length = text.size() * 2 + 1;
    if (length > MaxLength || !keyShares(key))
        return text;
    char keyBytes[MaxLength + 1];
    keyBytes[0] = 1;
    std::memcpy(keyBytes + 1, text.constData(), size_t(text.size() * 2));
    const quint32 hash = quint32(hashBytes(keyBytes, length));
    Slot *slot = find(keyBytes, length, hash);
    if (slot && slot->used) {
        noteHit(key, true);
        return slot->text;
    }
    noteHit(key, false);
    if (slot) {
        slot->used = true;
        slot->hash = hash;
        slot->length = quint8(length);
        std::memcpy(slot->bytes, keyBytes, size_t(length));
        slot->text = text;
        ++used;
    }
    return text;
}

}  // namespace platform::plist
