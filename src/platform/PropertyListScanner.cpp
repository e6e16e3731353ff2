// The quick property-list scanner: reads the layout that this program and the
// common tools write straight from the file's bytes. It is strict on purpose:
// whatever it does not know for certain how to read (comments, CDATA, a
// DOCTYPE with an internal subset, other entities, other encodings, white
// space inside tags, any fault) makes it give up, and the full XML reader
// reads the document instead, so that both always give the same result.
#include "platform/PropertyListInternal.h"

#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace platform::plist {

namespace {

// Release the pages of a mapped file every this many bytes read.
constexpr qsizetype ReleaseEvery = qsizetype(16) << 20;

// Classes of the bytes of element text.
enum : quint8 {
    Ordinary = 0,
    OpenTag,  // '<': end of the text
    NeedsWork,  // '&', carriage return, or a byte of a multi-byte character
    CloseAngle,  // '>': fine unless it ends "]]>"
    Forbidden,  // a control character XML does not allow
};

struct ByteClasses
{
    quint8 of[256];
    constexpr ByteClasses()
        : of()
    {
        for (int c = 0; c < 256; ++c) {
            if (c >= 0x80)
                of[c] = NeedsWork;
            else if (c < 0x20)
                of[c] = (c == '\t' || c == '\n') ? Ordinary : Forbidden;
            else
                of[c] = Ordinary;
        }
        of[int('\r')] = NeedsWork;
        of[int('&')] = NeedsWork;
        of[int('<')] = OpenTag;
        of[int('>')] = CloseAngle;
    }
};
constexpr ByteClasses classes;

inline bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

inline bool isAllowedChar(char32_t u)
{
    if (u < 0x20)
        return u == 0x9 || u == 0xA || u == 0xD;
    if (u <= 0xD7FF)
        return true;
    if (u < 0xE000)
        return false;
    if (u <= 0xFFFD)
        return true;
    return u >= 0x10000 && u <= 0x10FFFF;
}

inline char16_t *putChar(char16_t *w, char32_t u)
{
    if (u < 0x10000) {
        *w++ = char16_t(u);
    } else {
        u -= 0x10000;
        *w++ = char16_t(0xD800 + (u >> 10));
        *w++ = char16_t(0xDC00 + (u & 0x3FF));
    }
    return w;
}

// Decodes element text with entities, carriage returns or multi-byte
// characters. False when it holds anything the full reader should judge.
bool decodeText(const char *s, const char *end, QString &out)
{
    out.resize(end - s);  // never more code units than bytes
    char16_t *const first = reinterpret_cast<char16_t *>(out.data());
    char16_t *w = first;
    while (s < end) {
        const unsigned char c = static_cast<unsigned char>(*s);
        if (c < 0x80) {
            if (c == '&') {
                const char *semi
                    = static_cast<const char *>(std::memchr(s, ';', size_t(std::min<qsizetype>(end - s, 12))));
                if (!semi)
                    return false;
                const char *name = s + 1;
                const qsizetype length = semi - name;
                char32_t u = 0;
                if (length == 3 && std::memcmp(name, "amp", 3) == 0)
                    u = '&';
                else if (length == 2 && std::memcmp(name, "lt", 2) == 0)
                    u = '<';
                else if (length == 2 && std::memcmp(name, "gt", 2) == 0)
                    u = '>';
                else if (length == 4 && std::memcmp(name, "quot", 4) == 0)
                    u = '"';
                else if (length == 4 && std::memcmp(name, "apos", 4) == 0)
                    u = '\'';
                else if (length >= 2 && name[0] == '#') {
                    const bool hex = name[1] == 'x';
                    const char *digit = name + (hex ? 2 : 1);
                    if (digit == semi || semi - digit > 8)
                        return false;
                    for (; digit < semi; ++digit) {
                        const char d = *digit;
                        int v;
                        if (d >= '0' && d <= '9')
                            v = d - '0';
                        else if (hex && d >= 'a' && d <= 'f')
                            v = d - 'a' + 10;
                        else if (hex && d >= 'A' && d <= 'F')
                            v = d - 'A' + 10;
                        else
                            return false;
                        u = u * (hex ? 16 : 10) + char32_t(v);
                    }
                    if (!isAllowedChar(u))
                        return false;
                } else {
                    return false;
                }
                w = putChar(w, u);
                s = semi + 1;
            } else if (c == '\r') {
                // XML reads a line end as a line feed, whatever the file used.
                *w++ = u'\n';
                ++s;
                if (s < end && *s == '\n')
                    ++s;
            } else {
                *w++ = char16_t(c);
                ++s;
            }
            continue;
        }
        // A multi-byte UTF-8 sequence, checked strictly.
        char32_t u;
        int more;
        char32_t least;
        if (c >= 0xC2 && c <= 0xDF) {
            u = c & 0x1F;
            more = 1;
            least = 0x80;
        } else if (c >= 0xE0 && c <= 0xEF) {
            u = c & 0x0F;
            more = 2;
            least = 0x800;
        } else if (c >= 0xF0 && c <= 0xF4) {
            u = c & 0x07;
            more = 3;
            least = 0x10000;
        } else {
            return false;
        }
        if (end - s <= more)
            return false;
        for (int i = 1; i <= more; ++i) {
            const unsigned char next = static_cast<unsigned char>(s[i]);
            if ((next & 0xC0) != 0x80)
                return false;
            u = (u << 6) | (next & 0x3F);
        }
        if (u < least || !isAllowedChar(u))
            return false;
        w = putChar(w, u);
        s += more + 1;
    }
    out.truncate(w - first);
    return true;
}

class Scanner
{
public:
    Scanner(RecordReader::Private &reader, QByteArrayView document, RecordVisitor &recordVisitor)
        : d(reader),
          p(document.data()),
          end(document.data() + document.size()),
          visitor(recordVisitor)
    { }

    bool document(const QString &rootKey);

private:
    // Literal bytes at the current position; consumed when they match.
    template <size_t N> bool take(const char (&literal)[N])
    {
        constexpr qsizetype length = qsizetype(N - 1);
        if (end - p >= length && std::memcmp(p, literal, size_t(length)) == 0) {
            p += length;
            return true;
        }
        return false;
    }
    void skipSpace()
    {
        while (p < end && isSpace(*p))
            ++p;
    }
    bool requireSpace()
    {
        if (p >= end || !isSpace(*p))
            return false;
        skipSpace();
        return true;
    }

    bool xmlDeclaration();
    bool doctype();
    bool quoted(const char *&start, qsizetype &length);
    bool equals();
    bool name();

    // Element text up to the next '<'. needsWork: it must be decoded.
    bool text(const char *&start, qsizetype &length, bool &needsWork);
    // The text as a string for the given key (-1: not to be shared).
    bool textValue(int key, const char *start, qsizetype length, bool needsWork, QString &out);
    // The decoded text as a value: shared with an equal one when there is
    // one, else the buffer itself, trimmed to its size.
    QString handOut(int key, QString &decoded)
    {
        if (decoded.capacity() - decoded.size() > 8)
            decoded.squeeze();
        QString result = d.values.share(key, decoded);
        if (result.constData() == decoded.constData())
            decoded = QString();
        return result;
    }
    bool key(const char *&start, qsizetype &length, bool &needsWork);
    // One value in a dictionary: a string or another scalar.
    bool value(int key, QString &out);
    bool records();

    RecordReader::Private &d;
    const char *p;
    const char *const end;
    RecordVisitor &visitor;
    QString scratch;
};

bool Scanner::name()
{
    const auto nameStart
        = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':'; };
    if (p >= end || !nameStart(*p))
        return false;
    ++p;
    while (p < end && (nameStart(*p) || (*p >= '0' && *p <= '9') || *p == '-' || *p == '.'))
        ++p;
    return true;
}

bool Scanner::equals()
{
    skipSpace();
    if (p >= end || *p != '=')
        return false;
    ++p;
    skipSpace();
    return true;
}

// A quoted literal of printable ASCII without '<' or '&'.
bool Scanner::quoted(const char *&start, qsizetype &length)
{
    if (p >= end || (*p != '"' && *p != '\''))
        return false;
    const char quote = *p++;
    start = p;
    while (p < end && *p != quote) {
        const char c = *p;
        if (c < 0x20 || c > 0x7E || c == '<' || c == '&')
            return false;
        ++p;
    }
    if (p >= end)
        return false;
    length = p - start;
    ++p;
    return true;
}

// <?xml version="1.0" [encoding="UTF-8"] [standalone="yes|no"] ?>
bool Scanner::xmlDeclaration()
{
    const char *value;
    qsizetype length;
    if (!requireSpace() || !take("version") || !equals() || !quoted(value, length))
        return false;
    if (length != 3 || std::memcmp(value, "1.0", 3) != 0)
        return false;
    bool spaced = requireSpace();
    if (spaced && take("encoding")) {
        if (!equals() || !quoted(value, length) || length != 5 || qstrnicmp(value, "utf-8", 5) != 0)
            return false;
        spaced = requireSpace();
    }
    if (spaced && take("standalone")) {
        if (!equals() || !quoted(value, length))
            return false;
        if (!(length == 3 && std::memcmp(value, "yes", 3) == 0) && !(length == 2 && std::memcmp(value, "no", 2) == 0))
            return false;
        skipSpace();
    }
    return take("?>");
}

// <!DOCTYPE name [PUBLIC "pubid" "system" | SYSTEM "system"]>, no internal subset.
bool Scanner::doctype()
{
    if (!requireSpace() || !name())
        return false;
    const bool spaced = requireSpace();
    const char *literal;
    qsizetype length;
    if (spaced && take("PUBLIC")) {
        if (!requireSpace() || !quoted(literal, length))
            return false;
        for (qsizetype i = 0; i < length; ++i) {
            const char c = literal[i];
            const bool pubid = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
                || std::strchr(" -'()+,./:=?;!*#@$_%", c) != nullptr;
            if (!pubid)
                return false;
        }
        if (!requireSpace() || !quoted(literal, length))
            return false;
        skipSpace();
    } else if (spaced && take("SYSTEM")) {
        if (!requireSpace() || !quoted(literal, length))
            return false;
        skipSpace();
    }
    return take(">");
}

bool Scanner::text(const char *&start, qsizetype &length, bool &needsWork)
{
    start = p;
    needsWork = false;
    for (;;) {
#ifdef __SSE2__
        const __m128i lt = _mm_set1_epi8('<');
        const __m128i amp = _mm_set1_epi8('&');
        const __m128i gt = _mm_set1_epi8('>');
        const __m128i low = _mm_set1_epi8(0x20);
        while (end - p >= 16) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
            // Bytes below 0x20 and from 0x80 up are both "less than 0x20"
            // in a signed comparison.
            const __m128i special = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, lt), _mm_cmpeq_epi8(v, amp)),
                                                 _mm_or_si128(_mm_cmpeq_epi8(v, gt), _mm_cmplt_epi8(v, low)));
            const int mask = _mm_movemask_epi8(special);
            if (mask == 0) {
                p += 16;
                continue;
            }
            p += __builtin_ctz(unsigned(mask));
            break;
        }
#endif
        if (p >= end)
            return false;
        switch (classes.of[static_cast<unsigned char>(*p)]) {
        case Ordinary:
            ++p;
            break;
        case OpenTag:
            length = p - start;
            return true;
        case NeedsWork:
            needsWork = true;
            ++p;
            break;
        case CloseAngle:
            if (p - start >= 2 && p[-1] == ']' && p[-2] == ']')
                return false;
            ++p;
            break;
        default:
            return false;
        }
    }
}

bool Scanner::textValue(int key, const char *start, qsizetype length, bool needsWork, QString &out)
{
    if (!needsWork) {
        out = d.values.fromAscii(key, start, length);
        return true;
    }
    if (!decodeText(start, start + length, scratch))
        return false;
    out = handOut(key, scratch);
    return true;
}

bool Scanner::key(const char *&start, qsizetype &length, bool &needsWork)
{
    if (take("<key>"))
        return text(start, length, needsWork) && take("</key>");
    if (take("<key/>")) {
        start = p;
        length = 0;
        needsWork = false;
        return true;
    }
    return false;
}

bool Scanner::value(int key, QString &out)
{
    static const QString yes = QStringLiteral("YES");
    static const QString no = QStringLiteral("NO");
    if (end - p < 2 || *p != '<')
        return false;
    const char *start;
    qsizetype length;
    bool needsWork;
    const auto trimmed = [&]() {
        if (!needsWork) {
            while (length > 0 && isSpace(*start)) {
                ++start;
                --length;
            }
            while (length > 0 && isSpace(start[length - 1]))
                --length;
            out = d.values.fromAscii(key, start, length);
            return true;
        }
        if (!decodeText(start, start + length, scratch))
            return false;
        scratch = trimmedXml(scratch);
        out = handOut(key, scratch);
        return true;
    };
    switch (p[1]) {
    case 's':
        if (take("<string>"))
            return text(start, length, needsWork) && take("</string>") && textValue(key, start, length, needsWork, out);
        if (take("<string/>")) {
            out = d.values.fromAscii(key, p, 0);
            return true;
        }
        return false;
    case 'i':
        return take("<integer>") && text(start, length, needsWork) && take("</integer>") && trimmed();
    case 'r':
        return take("<real>") && text(start, length, needsWork) && take("</real>") && trimmed();
    case 'd':
        return take("<date>") && text(start, length, needsWork) && take("</date>") && trimmed();
    case 't':
        if (!take("<true/>"))
            return false;
        out = yes;
        return true;
    case 'f':
        if (!take("<false/>"))
            return false;
        out = no;
        return true;
    default:
        return false;
    }
}

bool Scanner::records()
{
    if (take("<array/>"))
        return true;
    if (!take("<array>"))
        return false;
    std::vector<Field> &fields = d.fields;
    for (;;) {
        skipSpace();
        if (take("</array>"))
            return true;
        if (take("<dict/>")) {
            visitor.record({});
            continue;
        }
        if (!take("<dict>"))
            return false;
        size_t count = 0;
        for (;;) {
            skipSpace();
            if (take("</dict>"))
                break;
            const char *keyStart;
            qsizetype keyLength;
            bool keyNeedsWork;
            if (!key(keyStart, keyLength, keyNeedsWork))
                return false;
            int index;
            if (!keyNeedsWork) {
                index = d.keys.lookup(keyStart, keyLength);
            } else {
                QString decoded;
                if (!decodeText(keyStart, keyStart + keyLength, decoded))
                    return false;
                index = d.keys.lookup(decoded);
            }
            skipSpace();
            if (count == fields.size())
                fields.emplace_back();
            Field &field = fields[count];
            if (!value(index, field.value))
                return false;
            field.key = index;
            ++count;
        }
        visitor.record(std::span<const Field>(fields.data(), count));
        if (d.mappedBase && p - d.releasedUpTo > ReleaseEvery)
            d.releaseBefore(p);
    }
}

bool Scanner::document(const QString &rootKey)
{
    take("\xEF\xBB\xBF");
    if (take("<?xml") && !xmlDeclaration())
        return false;
    skipSpace();
    if (take("<!DOCTYPE") && !doctype())
        return false;
    skipSpace();
    if (!take("<plist"))
        return false;
    if (requireSpace() && take("version")) {
        const char *value;
        qsizetype length;
        if (!equals() || !quoted(value, length))
            return false;
        skipSpace();
    }
    if (!take(">"))
        return false;
    skipSpace();
    if (!take("<dict>"))
        return false;

    const QByteArray wanted = rootKey.toUtf8();
    bool found = false;
    QString ignored;
    for (;;) {
        skipSpace();
        if (take("</dict>"))
            break;
        const char *keyStart;
        qsizetype keyLength;
        bool keyNeedsWork;
        if (!key(keyStart, keyLength, keyNeedsWork))
            return false;
        bool isRoot;
        if (!keyNeedsWork) {
            isRoot = keyLength == wanted.size() && std::memcmp(keyStart, wanted.constData(), size_t(keyLength)) == 0;
        } else {
            QString decoded;
            if (!decodeText(keyStart, keyStart + keyLength, decoded))
                return false;
            isRoot = decoded == rootKey;
        }
        skipSpace();
        if (isRoot) {
            // A second array under the same key would replace the first.
            if (found || !records())
                return false;
            found = true;
        } else if (!value(-1, ignored)) {
            return false;
        }
    }
    skipSpace();
    if (!take("</plist>"))
        return false;
    skipSpace();
    return found && p == end;
}

}  // namespace

QuickResult quickRead(RecordReader::Private &d, QByteArrayView document, const QString &rootKey, RecordVisitor &visitor)
{
    Scanner scanner(d, document, visitor);
    return scanner.document(rootKey) ? QuickResult::Read : QuickResult::LeaveToFullReader;
}

}  // namespace platform::plist
