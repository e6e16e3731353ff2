#include "platform/PropertyList.h"

#include "platform/PropertyListInternal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace platform::plist {

// ---------------------------------------------------------------- ReadStatus

QString ReadStatus::message() const
{
    if (line > 0)
        return QStringLiteral("line %1: %2").arg(line).arg(reason);
    return reason;
}

QString trimmedXml(const QString &text)
{
    qsizetype start = 0;
    qsizetype stop = text.size();
    while (start < stop && isXmlSpace(text.at(start).unicode()))
        ++start;
    while (stop > start && isXmlSpace(text.at(stop - 1).unicode()))
        --stop;
    if (start == 0 && stop == text.size())
        return text;
    return text.mid(start, stop - start);
}

// -------------------------------------------------------------- RecordReader

void RecordReader::Private::releaseBefore(const char *position)
{
    if (!mappedBase)
        return;
    const quintptr page = quintptr(sysconf(_SC_PAGESIZE));
    const quintptr from = (quintptr(releasedUpTo) + page - 1) & ~(page - 1);
    const quintptr to = quintptr(position) & ~(page - 1);
    if (to > from) {
        // The pages are those of a read-only mapping of the file: dropping
        // them only gives the memory back; they are read again if needed.
        ::madvise(reinterpret_cast<void *>(from), to - from, MADV_DONTNEED);
        releasedUpTo = reinterpret_cast<const char *>(to);
    }
}

RecordReader::RecordReader(const QStringList &knownKeys)
    : d(std::make_unique<Private>(knownKeys))
{
    d->knownKeys = d->keys.size();
}

RecordReader::~RecordReader() = default;

int RecordReader::knownKeyCount() const
{
    return d->knownKeys;
}
int RecordReader::keyCount() const
{
    return d->keys.size();
}

QString RecordReader::keyName(int key) const
{
    if (key < 0 || key >= d->keys.size())
        return QString();
    return d->keys.name(key);
}

bool RecordReader::usedFullReader() const
{
    return d->fullReaderUsed;
}
void RecordReader::setQuickScanEnabled(bool enabled)
{
    d->quickScan = enabled;
}
void RecordReader::setSharingEnabled(bool enabled)
{
    d->values.setEnabled(enabled);
}

ReadStatus RecordReader::read(QByteArrayView document, const QString &rootKey, RecordVisitor &visitor)
{
    d->fullReaderUsed = false;
    if (d->quickScan) {
        if (quickRead(*d, document, rootKey, visitor) == QuickResult::Read)
            return ReadStatus();
        visitor.restart();
    }
    d->fullReaderUsed = true;
    d->releasedUpTo = d->mappedBase;  // the full reader starts from the top again
    return fullRead(*d, document, rootKey, visitor);
}

ReadStatus RecordReader::readFile(const QString &path, const QString &rootKey, RecordVisitor &visitor)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ReadStatus{file.errorString(), 0};
    const qint64 size = file.size();
    if (size > 0) {
        if (uchar *mapped = file.map(0, size)) {
            ::madvise(mapped, size_t(size), MADV_SEQUENTIAL);
            d->mappedBase = d->releasedUpTo = reinterpret_cast<const char *>(mapped);
            const ReadStatus status = read(QByteArrayView(d->mappedBase, size), rootKey, visitor);
            d->mappedBase = d->releasedUpTo = nullptr;
            file.unmap(mapped);
            return status;
        }
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return ReadStatus{file.errorString(), 0};
    return read(bytes, rootKey, visitor);
}

// ------------------------------------------------------------------- writing

namespace {

// Bytes of the XML that a code unit below 128 needs: 0 = itself, else an
// escape (or U+FFFD for characters XML cannot carry).
enum : quint8 { Plain = 0, Amp, Lt, Gt, Cr, Bad };

struct EscapeTable
{
    quint8 kind[128];
    constexpr EscapeTable()
        : kind()
    {
        for (int c = 0; c < 128; ++c)
            kind[c] = (c < 0x20 && c != '\t' && c != '\n' && c != '\r') ? Bad : Plain;
        kind[int('&')] = Amp;
        kind[int('<')] = Lt;
        kind[int('>')] = Gt;
        kind[int('\r')] = Cr;
    }
};
constexpr EscapeTable escapes;

inline char *putReplacement(char *w)
{
    *w++ = char(0xEF);
    *w++ = char(0xBF);
    *w++ = char(0xBD);
    return w;
}

// Writes the escaped UTF-8 of the text at w; at most 5 bytes per code unit.
char *writeEscaped(char *w, const char16_t *s, qsizetype n)
{
    const char16_t *end = s + n;
    while (s < end) {
#ifdef __SSE2__
        // Eight code units at a time while they are plain ASCII.
        const __m128i notAscii = _mm_set1_epi16(short(0xFF80));
        const __m128i space = _mm_set1_epi16(0x20);
        const __m128i amp = _mm_set1_epi16('&');
        const __m128i lt = _mm_set1_epi16('<');
        const __m128i gt = _mm_set1_epi16('>');
        while (end - s >= 8) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(s));
            const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(v, notAscii), _mm_setzero_si128());
            const __m128i special = _mm_or_si128(_mm_or_si128(_mm_cmplt_epi16(v, space), _mm_cmpeq_epi16(v, amp)),
                                                 _mm_or_si128(_mm_cmpeq_epi16(v, lt), _mm_cmpeq_epi16(v, gt)));
            if (_mm_movemask_epi8(_mm_andnot_si128(special, ascii)) != 0xFFFF)
                break;
            _mm_storel_epi64(reinterpret_cast<__m128i *>(w), _mm_packus_epi16(v, v));
            w += 8;
            s += 8;
        }
        if (s >= end)
            break;
#endif
        const char16_t c = *s;
        if (c < 0x80) {
            switch (escapes.kind[c]) {
            case Plain:
                *w++ = char(c);
                break;
            case Amp:
                std::memcpy(w, "&amp;", 5);
                w += 5;
                break;
            case Lt:
                std::memcpy(w, "&lt;", 4);
                w += 4;
                break;
            case Gt:
                std::memcpy(w, "&gt;", 4);
                w += 4;
                break;
            case Cr:
                std::memcpy(w, "&#13;", 5);
                w += 5;
                break;
            default:
                w = putReplacement(w);
                break;
            }
            ++s;
        } else if (c < 0x800) {
            *w++ = char(0xC0 | (c >> 6));
            *w++ = char(0x80 | (c & 0x3F));
            ++s;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            if (c <= 0xDBFF && s + 1 < end && s[1] >= 0xDC00 && s[1] <= 0xDFFF) {
                const char32_t u = 0x10000 + ((char32_t(c) - 0xD800) << 10) + (char32_t(s[1]) - 0xDC00);
                *w++ = char(0xF0 | (u >> 18));
                *w++ = char(0x80 | ((u >> 12) & 0x3F));
                *w++ = char(0x80 | ((u >> 6) & 0x3F));
                *w++ = char(0x80 | (u & 0x3F));
                s += 2;
            } else {
                w = putReplacement(w);
                ++s;
            }
        } else if (c >= 0xFFFE) {
            w = putReplacement(w);
            ++s;
        } else {
            *w++ = char(0xE0 | (c >> 12));
            *w++ = char(0x80 | ((c >> 6) & 0x3F));
            *w++ = char(0x80 | (c & 0x3F));
            ++s;
        }
    }
    return w;
}

// A growing byte buffer written through a pointer: a file is built from
// millions of small pieces, so appending must cost next to nothing.
class Buffer
{
public:
    explicit Buffer(qsizetype expected)
    {
        bytes.resize(std::max<qsizetype>(expected, 4096));
        rebase(0);
    }

    void ensure(qsizetype more)
    {
        if (limit - w >= more)
            return;
        const qsizetype size = w - bytes.data();
        bytes.resize(std::max(bytes.size() * 2, size + more + 4096));
        rebase(size);
    }
    void put(const char *text, qsizetype length)
    {
        ensure(length);
        std::memcpy(w, text, size_t(length));
        w += length;
    }
    template <size_t N> void put(const char (&text)[N]) { put(text, qsizetype(N - 1)); }
    void tabs(int count)
    {
        ensure(count);
        for (int i = 0; i < count; ++i)
            *w++ = '\t';
    }
    void escaped(QStringView text)
    {
        ensure(text.size() * 5);
        w = writeEscaped(w, reinterpret_cast<const char16_t *>(text.utf16()), text.size());
    }
    QByteArray take()
    {
        bytes.resize(w - bytes.data());
        QByteArray out = std::move(bytes);
        bytes = QByteArray();
        w = limit = nullptr;
        return out;
    }

private:
    void rebase(qsizetype size)
    {
        w = bytes.data() + size;
        limit = bytes.data() + bytes.size();
    }

    QByteArray bytes;
    char *w = nullptr;
    char *limit = nullptr;
};

const char Header[]
    = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
      "<plist version=\"1.0\">\n";

}  // namespace

void appendEscaped(QByteArray &out, QStringView text)
{
    const qsizetype start = out.size();
    out.resize(start + text.size() * 5);
    char *end = writeEscaped(out.data() + start, reinterpret_cast<const char16_t *>(text.utf16()), text.size());
    out.resize(end - out.constData());
}

struct RecordWriter::Private
{
    explicit Private(qsizetype expected)
        : out(expected)
    { }
    Buffer out;
    bool sortKeys = true;
    std::vector<std::pair<QStringView, const QString *>> pending;
    qsizetype records = 0;
    bool inRecord = false;
};

RecordWriter::RecordWriter(const QString &rootKey, qsizetype expectedSize, KeyOrder order)
    : d(std::make_unique<Private>(expectedSize + 1024))
{
    d->sortKeys = order == SortKeys;
    d->out.put(Header);
    d->out.put("<dict>\n\t<key>");
    d->out.escaped(rootKey);
    d->out.put("</key>\n");
}

RecordWriter::~RecordWriter() = default;

void RecordWriter::beginRecord()
{
    if (d->records == 0)
        d->out.put("\t<array>\n");
    ++d->records;
    d->pending.clear();
    d->inRecord = true;
}

void RecordWriter::addField(QStringView key, const QString &value)
{
    d->pending.emplace_back(key, &value);
}

void RecordWriter::endRecord()
{
    auto &pending = d->pending;
    Buffer &out = d->out;
    d->inRecord = false;
    if (pending.empty()) {
        out.put("\t\t<dict/>\n");
        return;
    }
    const auto byKey = [](const auto &a, const auto &b) { return a.first < b.first; };
    if (d->sortKeys) {
        if (!std::is_sorted(pending.begin(), pending.end(), byKey))
            std::stable_sort(pending.begin(), pending.end(), byKey);
    } else {
        Q_ASSERT(std::is_sorted(pending.begin(), pending.end(), byKey));
    }
    out.put("\t\t<dict>\n");
    for (const auto &[key, value] : pending) {
        out.put("\t\t\t<key>");
        out.escaped(key);
        out.put("</key>\n\t\t\t<string>");
        out.escaped(*value);
        out.put("</string>\n");
    }
    out.put("\t\t</dict>\n");
    pending.clear();
}

QByteArray RecordWriter::finish()
{
    if (d->inRecord)
        endRecord();
    if (d->records == 0)
        d->out.put("\t<array/>\n");
    else
        d->out.put("\t</array>\n");
    d->out.put("</dict>\n</plist>\n");
    d->records = 0;
    return d->out.take();
}

namespace {
WriteFault &installedFault()
{
    static WriteFault fault;
    return fault;
}
std::optional<QString> faultAt(WriteStep step, const QString &path)
{
    return installedFault() ? installedFault()(step, path) : std::nullopt;
}
}  // namespace

WriteFault setWriteFault(WriteFault fault)
{
    WriteFault previous = std::move(installedFault());
    installedFault() = std::move(fault);
    return previous;
}

int removeUnfinishedWrites(const QString &path)
{
    const QFileInfo info(path);
    // The toolkit names an unfinished copy "NAME.XXXXXX".
    const QRegularExpression unfinished(QLatin1Char('^') + QRegularExpression::escape(info.fileName())
                                        + QStringLiteral("\\.[A-Za-z0-9]{6}$"));
    QDir folder = info.absoluteDir();
    int removed = 0;
    const QStringList names = folder.entryList({info.fileName() + QStringLiteral(".??????")},
                                               QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (unfinished.match(name).hasMatch() && folder.remove(name))
            ++removed;
    }
    return removed;
}

bool writeFileAtomically(const QString &path, QByteArrayView data, QString *errorText)
{
    const auto failed = [errorText](const QString &why) {
        if (errorText)
            *errorText = why;
        return false;
    };
    if (const auto why = faultAt(WriteStep::Open, path))
        return failed(*why);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failed(file.errorString());
    // A step that fails leaves the old file as it was.
    const auto fault = [&](WriteStep step) {
        const auto why = faultAt(step, path);
        if (why)
            file.cancelWriting();
        return why;
    };
    if (const auto why = fault(WriteStep::Reserve))
        return failed(*why);
#ifdef Q_OS_LINUX
    // Reserving the whole size first spares the file system from growing
    // the file block by block (and finds a full disk before any writing).
    // Where that is not supported, the write goes on without it.
    if (!data.isEmpty() && ::fallocate(file.handle(), 0, 0, off_t(data.size())) != 0 && errno == ENOSPC) {
        file.cancelWriting();
        return failed(QString::fromLocal8Bit(strerror(ENOSPC)));
    }
#endif
    if (const auto why = fault(WriteStep::Write))
        return failed(*why);
    qsizetype written = 0;
    while (written < data.size()) {
        const qint64 n = file.write(data.data() + written, data.size() - written);
        if (n <= 0) {
            const QString why = file.errorString();
            file.cancelWriting();
            return failed(why);
        }
        written += qsizetype(n);
    }
    if (const auto why = fault(WriteStep::Sync))
        return failed(*why);
    if (!file.flush() || ::fsync(file.handle()) != 0) {
        const QString why = file.errorString().isEmpty() ? QString::fromLocal8Bit(strerror(errno)) : file.errorString();
        file.cancelWriting();
        return failed(why);
    }
    if (const auto why = fault(WriteStep::Commit))
        return failed(*why);
    if (!file.commit())
        return failed(file.errorString());
    if (const auto why = faultAt(WriteStep::FolderSync, path))
        return failed(*why);
    // The new name only lasts once the folder holding it is on disk too.
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return failed(QString::fromLocal8Bit(strerror(errno)));
    const bool synced = ::fsync(fd) == 0;
    const int savedErrno = errno;
    ::close(fd);
    if (!synced)
        return failed(QString::fromLocal8Bit(strerror(savedErrno)));
    return true;
}

}  // namespace platform::plist
