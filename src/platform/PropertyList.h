#pragma once
// XML property lists, as the platform reads and writes them.
//
// The database files are property lists whose root is a dictionary with one
// key holding an array of dictionaries of strings (one dictionary per
// record). RecordReader reads that shape and hands the records to a visitor
// one at a time, as (key, value) pairs, without building a map per record.
// It accepts any well-formed XML property list of that shape: comments,
// CDATA, entities and character references, a DOCTYPE with an internal
// subset, other tools' layout, <integer>/<real>/<date> values (their text),
// <true/>/<false/> ("YES"/"NO"). A value of any other kind inside a record
// (array, dict, data) is skipped like an unknown key.
//
// Reading is bounded on any input: no crash, no hang, memory in proportion
// to the input. A document that cannot be read answers a reason and, where
// there is one, a line number.
//
// RecordWriter builds a file of the same shape in one buffer, in the layout
// the platform writes (tab indentation, the keys of each record dictionary in
// sorted order); writeFileAtomically puts it on disk.
//
// readValue/writeValue read and write small general property lists
// (dictionaries, arrays, strings and the other scalar kinds) as QVariant.
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <optional>
#include <QStringList>
#include <QStringView>
#include <QVariant>

#include <memory>
#include <span>

namespace platform::plist {

// Why a document could not be read. ok() when it could.
struct ReadStatus
{
    QString reason;  // empty when the document was read
    qint64 line = 0;  // the line of the fault, 0 when there is none

    bool ok() const { return reason.isEmpty(); }
    // "line 12: expected </string>", or the reason alone without a line.
    QString message() const;
};

// One (key, value) pair of a record. The key is an index into the reader's
// key table: the keys given to the reader come first, in the order given,
// then every other key met, in the order met (see RecordReader::keyName).
struct Field
{
    int key = -1;
    QString value;
};

class RecordVisitor
{
public:
    virtual ~RecordVisitor() = default;
    // Every record delivered so far is void: the reading starts over from the
    // first record (the quick reader met something it leaves to the full XML
    // reader, or the document names the root key twice, the last one
    // counting). Records delivered before a failed read are void as well.
    virtual void restart() = 0;
    // One record dictionary, its pairs in document order (a key written twice
    // comes twice; the later one is meant to win). The span and its strings
    // are only valid during the call; the strings may be copied (cheaply).
    virtual void record(std::span<const Field> fields) = 0;
};

class RecordReader
{
public:
    // knownKeys get the indexes 0, 1, ... in this order.
    explicit RecordReader(const QStringList &knownKeys = {});
    ~RecordReader();
    RecordReader(const RecordReader &) = delete;
    RecordReader &operator=(const RecordReader &) = delete;

    int knownKeyCount() const;
    int keyCount() const;
    QString keyName(int key) const;

    // Reads the array of record dictionaries under rootKey.
    ReadStatus read(QByteArrayView document, const QString &rootKey, RecordVisitor &visitor);
    // The same over a file's bytes. A file that cannot be opened answers the
    // system's reason.
    ReadStatus readFile(const QString &path, const QString &rootKey, RecordVisitor &visitor);

    // Whether the last read was finished by the full XML reader.
    bool usedFullReader() const;
    // Tests and the benchmark: the quick scanner can be switched off (the
    // full reader then reads everything), and the sharing of short repeated
    // values can be switched off.
    void setQuickScanEnabled(bool enabled);
    void setSharingEnabled(bool enabled);

    struct Private;

private:
    std::unique_ptr<Private> d;
};

// Builds a record file: a root dictionary with one key whose value is an
// array of dictionaries of strings.
class RecordWriter
{
public:
    enum KeyOrder {
        SortKeys,  // the keys of a record may come in any order
        KeysComeSorted,  // the caller gives them sorted: no need to check
    };
    // expectedSize: a guess of the file's size, to reserve the buffer once.
    explicit RecordWriter(const QString &rootKey, qsizetype expectedSize = 0, KeyOrder order = SortKeys);
    ~RecordWriter();
    RecordWriter(const RecordWriter &) = delete;
    RecordWriter &operator=(const RecordWriter &) = delete;

    void beginRecord();
    // The key and value are kept by reference until endRecord(): both must
    // stay alive until then. Keys are written in sorted order whatever the
    // order of the calls, unless the writer was told they come sorted.
    void addField(QStringView key, const QString &value);
    void endRecord();
    // The whole file. The writer is empty afterwards.
    QByteArray finish();

    struct Private;

private:
    std::unique_ptr<Private> d;
};

// Appends text to an XML document in UTF-8 with "&", "<" and ">" escaped,
// a carriage return kept as "&#13;" (a reader would otherwise turn it into a
// line feed), and every character that XML cannot carry (control characters
// other than tab, line feed and carriage return, U+FFFE, U+FFFF, unpaired
// surrogates) replaced by U+FFFD, so that whatever is written can be read.
void appendEscaped(QByteArray &out, QStringView text);

// Writes the bytes to the path through a temporary file that replaces the
// old one only when complete; the file and then its folder are synced to disk
// before this answers true. On failure the old file is left as it was and
// errorText (when given) says why.
bool writeFileAtomically(const QString &path, QByteArrayView data, QString *errorText = nullptr);

// Removes what writes of `path` cut short by a crash left beside it (the
// unfinished copies writeFileAtomically names after the file where the file
// system cannot keep them nameless); answers how many. Only the one writer
// of a folder may call it.
int removeUnfinishedWrites(const QString &path);

// The steps of writeFileAtomically, for tests that make one of them fail:
// a fault answers the reason the step fails with, or none to let it go on.
enum class WriteStep { Open, Reserve, Write, Sync, Commit, FolderSync };
using WriteFault = std::function<std::optional<QString>(WriteStep step, const QString &path)>;
WriteFault setWriteFault(WriteFault fault);

// General property lists: <dict> as QVariantMap, <array> as QVariantList,
// <string> as QString, <integer> as qlonglong (text that is not a 64-bit
// integer is an error), <real> as double, <true/>/<false/> as bool, <date>
// as QDateTime (UTC), <data> as QByteArray. Nesting deeper than 256 levels is
// refused.
QVariant readValue(QByteArrayView document, ReadStatus *status = nullptr);
QVariant readValueFile(const QString &path, ReadStatus *status = nullptr);
// The reverse: QVariantMap/QVariantHash (keys sorted), QVariantList and
// QStringList, QString, bool, the integer kinds, double/float, QDateTime,
// QByteArray. Any other kind of value is refused: the answer is empty and
// errorText (when given) says why.
QByteArray writeValue(const QVariant &value, QString *errorText = nullptr);

}  // namespace platform::plist
