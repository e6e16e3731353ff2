#pragma once
// Shared state of the property-list record reader: its key table, the table
// of shared short values, and the two readers (the quick scanner and the
// full XML reader) that fill the visitor.
#include "platform/PropertyList.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QXmlStreamReader>

#include <cstdint>
#include <functional>
#include <vector>

namespace platform::plist {

// The keys met so far, each with an index; looked up by their UTF-8 bytes.
class KeyTable
{
public:
    explicit KeyTable(const QStringList &known);

    int size() const { return int(names.size()); }
    const QString &name(int key) const { return names.at(key); }
    // The index of the key with these UTF-8 bytes, adding it when new.
    int lookup(const char *bytes, qsizetype length);
    int lookup(const QString &key);

private:
    int add(const QByteArray &utf8, const QString &name);
    void rehash(size_t capacity);

    QList<QString> names;
    QList<QByteArray> utf8Names;
    std::vector<int> cells;  // -1 = empty, else an index into names
};

// Short values that repeat (flags, statuses, dates, prices) share one string.
// Sharing is given up per key when that key's values hardly ever repeat
// (ids, order numbers), so that the table keeps the values worth keeping.
class ValueTable
{
public:
    static constexpr int MaxLength = 24;

    ValueTable();
    void setEnabled(bool on) { enabled = on; }
    // A string for these ASCII/Latin-1 bytes (no decoding needed).
    QString fromAscii(int key, const char *bytes, qsizetype length);
    // A string for this decoded text, shared when short and repeated.
    QString share(int key, const QString &text);

private:
    struct Slot
    {
        QString text;
        quint32 hash = 0;
        quint8 length = 0;
        bool used = false;
        char bytes[MaxLength + 1];  // a kind byte, then the value's bytes
    };
    struct KeyStats
    {
        quint32 tries = 0;
        quint32 hits = 0;
        bool off = false;
    };
    bool keyShares(int key);
    void noteHit(int key, bool hit);
    // Finds the slot of these bytes (or the empty slot where they belong);
    // nullptr when the table is full and they are not in it.
    Slot *find(const char *bytes, qsizetype length, quint32 hash);

    bool enabled = true;
    std::vector<Slot> cells;
    int used = 0;
    std::vector<KeyStats> stats;
    QString empty;
};

struct RecordReader::Private
{
    explicit Private(const QStringList &known)
        : keys(known)
    { }

    KeyTable keys;
    int knownKeys = 0;
    ValueTable values;
    std::vector<Field> fields;  // the record being read, reused
    bool quickScan = true;
    bool fullReaderUsed = false;

    // The document when it is a mapped file: the quick scanner gives back
    // the pages it has read, so that a large file never sits in memory whole.
    const char *mappedBase = nullptr;
    const char *releasedUpTo = nullptr;
    void releaseBefore(const char *position);
};

enum class QuickResult { Read, LeaveToFullReader };

// The quick scanner: the subset of XML that this program and the common
// tools write. Anything else, including any fault, is left to the full
// reader, which reads the whole document again.
QuickResult quickRead(RecordReader::Private &d, QByteArrayView document, const QString &rootKey,
                      RecordVisitor &visitor);
// The full reader (QXmlStreamReader).
ReadStatus fullRead(RecordReader::Private &d, QByteArrayView document, const QString &rootKey, RecordVisitor &visitor);

// A QXmlStreamReader fed with the document a block at a time, so that it
// never holds more than a block of it decoded, with the helpers both full
// readers use.
class XmlSource
{
public:
    // consumed, when given, is told how far the reader has surely gone
    // past the document's bytes (the quick scanner's page release).
    explicit XmlSource(QByteArrayView document, std::function<void(const char *)> consumed = {});

    QXmlStreamReader xml;

    // The next token; more of the document is fed in when the reader runs
    // out of it.
    QXmlStreamReader::TokenType next();
    // The text of the element just started, up to its end: character data,
    // CDATA and declared entities; comments and processing instructions are
    // passed over. An element inside or an entity that cannot be resolved is
    // a fault: the answer is false with the reason in why.
    bool elementText(QString &text, QString &why);
    // Passes over the element just started, whatever it holds.
    bool skipElement(QString &why);
    // Reads to the end of the document; false with the reason when what
    // follows the root element is not well-formed.
    bool finish(QString &why);
    // The line of the fault the reader stopped at. An encoding fault is
    // placed where the bad bytes are.
    qint64 faultLine() const;
    // A description of text found where only elements may stand, and the
    // line where it starts.
    QString unexpectedText(qint64 &line) const;

private:
    void feed();
    // Keeps what declared entities expand to in proportion to the document
    // (see the source); the document's encoding, when it names one, may
    // lower the limit.
    void limitEntityExpansion(QStringView encoding = {});

    QByteArrayView bytes;
    qsizetype fed = 0;
    std::function<void(const char *)> done;
};

// XML white space.
inline bool isXmlSpace(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}
QString trimmedXml(const QString &text);

}  // namespace platform::plist
