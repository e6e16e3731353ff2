#include "platform/richtext/RtfWriterOutput.h"

namespace {

// windows-1252 bytes 0x80-0x9F (0 where the code page leaves the byte
// undefined); bytes 0xA0-0xFF are the Latin-1 characters of the same value.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// The windows-1252 byte of a character, or 0 when the code page has none.
int cp1252Byte(char16_t c)
{
    if (c >= 0xA0 && c <= 0xFF)
        return c;
    for (int i = 0; i < 32; ++i) {
        if (kCp1252High[i] == c)
            return 0x80 + i;
    }
    return 0;
}

const char kHexDigits[] = "0123456789abcdef";

}  // namespace

void RtfOutput::word(const char *name)
{
    m_bytes += '\\';
    m_bytes += name;
    m_afterWord = true;
}

void RtfOutput::word(const char *name, int number)
{
    m_bytes += '\\';
    m_bytes += name;
    m_bytes += QByteArray::number(number);
    m_afterWord = true;
}

void RtfOutput::open()
{
    m_bytes += '{';
    m_afterWord = false;
}

void RtfOutput::close()
{
    m_bytes += '}';
    m_afterWord = false;
}

void RtfOutput::raw(const char *bytes)
{
    m_bytes += bytes;
    m_afterWord = false;
}

void RtfOutput::raw(const QByteArray &bytes)
{
    m_bytes += bytes;
    m_afterWord = false;
}

void RtfOutput::newline()
{
    m_bytes += '\n';
    m_afterWord = false;
}

void RtfOutput::literal(char c)
{
    // One space ends the control word before any text; it belongs to the
    // word and is not shown.
    if (m_afterWord)
        m_bytes += ' ';
    m_bytes += c;
    m_afterWord = false;
}

void RtfOutput::text(QStringView text)
{
    for (const QChar qc : text) {
        const char16_t c = qc.unicode();
        if (c == u'\t') {
            word("tab");
        } else if (c == QChar::LineSeparator) {
            word("line");
        } else if (c < 0x20 || c == 0x7F || c == QChar::ObjectReplacementCharacter || c == QChar::ParagraphSeparator
                   || c == 0xFDD0 || c == 0xFDD1) {
            // Control characters and the markers of objects and frames have
            // no place in the text.
        } else if (c == u'\\' || c == u'{' || c == u'}') {
            m_bytes += '\\';
            m_bytes += char(c);
            m_afterWord = false;
        } else if (c < 0x80) {
            literal(char(c));
        } else if (const int byte = cp1252Byte(c)) {
            m_bytes += "\\'";
            m_bytes += kHexDigits[byte >> 4];
            m_bytes += kHexDigits[byte & 0xF];
            m_afterWord = false;
        } else {
            // \u takes a signed 16-bit number; the "?" is the one fallback
            // character that \uc1 announces.
            word("u", c > 0x7FFF ? int(c) - 0x10000 : int(c));
            m_bytes += '?';
            m_afterWord = false;
        }
    }
}

void RtfOutput::hex(const QByteArray &bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (i % 64 == 0)
            m_bytes += '\n';
        const auto b = static_cast<unsigned char>(bytes.at(i));
        m_bytes += kHexDigits[b >> 4];
        m_bytes += kHexDigits[b & 0xF];
    }
    m_bytes += '\n';
    m_afterWord = false;
}
