// The XML token source of the full property-list readers: QXmlStreamReader
// fed a block at a time, so that a large document is never decoded whole.
#include "platform/PropertyListInternal.h"

#include <algorithm>

namespace platform::plist {

namespace {

constexpr qsizetype BlockSize = qsizetype(1) << 20;

// The offset of the first byte that is not part of a valid UTF-8 sequence,
// -1 when there is none.
qsizetype firstInvalidUtf8(QByteArrayView bytes)
{
    const auto *s = reinterpret_cast<const unsigned char *>(bytes.data());
    const qsizetype n = bytes.size();
    qsizetype i = 0;
    while (i < n) {
        const unsigned char c = s[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        int more;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (c >= 0xC2 && c <= 0xDF) {
            more = 1;
        } else if (c >= 0xE0 && c <= 0xEF) {
            more = 2;
            if (c == 0xE0)
                low = 0xA0;
            else if (c == 0xED)
                high = 0x9F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            more = 3;
            if (c == 0xF0)
                low = 0x90;
            else if (c == 0xF4)
                high = 0x8F;
        } else {
            return i;
        }
        if (i + more >= n)
            return i;
        if (s[i + 1] < low || s[i + 1] > high)
            return i;
        for (int k = 2; k <= more; ++k) {
            if ((s[i + k] & 0xC0) != 0x80)
                return i;
        }
        i += more + 1;
    }
    return -1;
}

// Declared entities: a reference of three bytes can stand for thousands of
// characters, nested or not, in text, in attribute values and in the DTD
// itself, and the XML reader expands them all as it goes. To keep the whole
// expansion in proportion to the document, the characters one reference may
// expand to are limited to ExpansionBudget / (the number of references the
// document can hold), and never more than the reader's own limit.
constexpr qint64 ExpansionBudgetBase = qint64(4) << 20;  // characters
constexpr qint64 ExpansionBudgetPerByte = 4;
constexpr qint64 ReaderExpansionLimit = 4096;

// Whether every '&' and '%' of text in this encoding is a byte 0x26 or 0x25
// of the document (UTF-8, UTF-16, UTF-32 and the 8-bit sets that extend
// ASCII); in other encodings (UTF-7, EBCDIC ...) they may be written
// otherwise.
bool keepsAsciiMarkup(QStringView encoding)
{
    QString name = encoding.toString().toLower();
    name.remove(QLatin1Char('-')).remove(QLatin1Char('_'));
    static const char *const safe[]
        = {"utf8", "utf16", "utf32", "iso8859", "usascii", "ascii", "latin", "windows125", "cp125"};
    for (const char *prefix : safe) {
        if (name.startsWith(QLatin1String(prefix)))
            return true;
    }
    return false;
}

}  // namespace

XmlSource::XmlSource(QByteArrayView document, std::function<void(const char *)> consumed)
    : bytes(document),
      done(std::move(consumed))
{
    limitEntityExpansion();
    feed();
}

void XmlSource::limitEntityExpansion(QStringView encoding)
{
    // Every reference starts with '&' or '%' and takes three characters at
    // least, so a document holds no more references than it has of those
    // bytes (when the encoding writes them as in ASCII), nor more than a
    // third of its bytes.
    qint64 references = bytes.size() / 3;
    if (encoding.isEmpty() || keepsAsciiMarkup(encoding))
        references = std::min<qint64>(references, bytes.count('&') + bytes.count('%'));
    const qint64 budget = ExpansionBudgetBase + ExpansionBudgetPerByte * qint64(bytes.size());
    const qint64 limit = std::clamp<qint64>(budget / std::max<qint64>(references, 1), 1, ReaderExpansionLimit);
    xml.setEntityExpansionLimit(int(std::min<qint64>(limit, xml.entityExpansionLimit())));
}

void XmlSource::feed()
{
    // The reader may still be in the block fed last, not before it.
    if (done && fed > BlockSize)
        done(bytes.data() + fed - BlockSize);
    const qsizetype length = std::min(BlockSize, bytes.size() - fed);
    xml.addData(QByteArray::fromRawData(bytes.data() + fed, length));
    fed += length;
}

QXmlStreamReader::TokenType XmlSource::next()
{
    for (;;) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::Invalid && xml.error() == QXmlStreamReader::PrematureEndOfDocumentError
            && fed < bytes.size()) {
            feed();
            continue;
        }
        // The encoding is known before the DTD, the first place where an
        // entity can be expanded.
        if (token == QXmlStreamReader::StartDocument && !xml.documentEncoding().isEmpty())
            limitEntityExpansion(xml.documentEncoding());
        return token;
    }
}

bool XmlSource::elementText(QString &text, QString &why)
{
    text.clear();
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::Characters:
            text += xml.text();
            break;
        case QXmlStreamReader::EndElement:
            return true;
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::ProcessingInstruction:
            break;
        case QXmlStreamReader::EntityReference:
            why = QStringLiteral("unknown entity &%1;").arg(xml.name().toString());
            return false;
        case QXmlStreamReader::StartElement:
            why = QStringLiteral("unexpected <%1> inside text").arg(xml.name().toString());
            return false;
        case QXmlStreamReader::Invalid:
            why = xml.errorString();
            return false;
        default:
            why = QStringLiteral("unexpected end of the document");
            return false;
        }
    }
}

bool XmlSource::skipElement(QString &why)
{
    for (qint64 depth = 1; depth > 0;) {
        switch (next()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Invalid:
            why = xml.errorString();
            return false;
        case QXmlStreamReader::EndDocument:
            why = QStringLiteral("unexpected end of the document");
            return false;
        default:
            break;
        }
    }
    return true;
}

bool XmlSource::finish(QString &why)
{
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::Invalid:
            why = xml.errorString();
            return false;
        case QXmlStreamReader::EndDocument: {
            // The reader ends the document at the end of what it was given.
            // Anything after the last block fed must be white space, else
            // the whole document is checked again in one piece.
            const QByteArrayView rest = bytes.sliced(fed);
            if (std::all_of(rest.begin(), rest.end(), [](char c) { return isXmlSpace(char16_t(c)); }))
                return true;
            xml.clear();
            xml.addData(QByteArray::fromRawData(bytes.data(), bytes.size()));
            fed = bytes.size();
            while (!xml.atEnd())
                xml.readNext();
            if (xml.hasError()) {
                why = xml.errorString();
                return false;
            }
            return true;
        }
        default:
            break;
        }
    }
}

qint64 XmlSource::faultLine() const
{
    if (xml.errorString().contains(QLatin1String("encoded"))) {
        const qsizetype at = firstInvalidUtf8(bytes);
        if (at >= 0)
            return 1 + bytes.first(at).count('\n');
    }
    return xml.lineNumber();
}

QString XmlSource::unexpectedText(qint64 &line) const
{
    const QStringView text = xml.text();
    qsizetype first = 0;
    while (first < text.size() && isXmlSpace(text[first].unicode()))
        ++first;
    line = xml.lineNumber() - text.sliced(first).count(u'\n');
    return QStringLiteral("unexpected text \"%1\"").arg(text.sliced(first).left(20).toString().simplified());
}

}  // namespace platform::plist
