#include "platform/richtext/RtfTokenizer.h"

#include <limits>

namespace rtf {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

}  // namespace

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

RtfTokenizer::RtfTokenizer(QByteArrayView data)
    : m_data(data)
{ }

Token RtfTokenizer::next()
{
    Token token;
    const qsizetype size = m_data.size();
    const char *bytes = m_data.data();
    // Line ends between tokens mean nothing in RTF.
    while (m_position < size && (bytes[m_position] == '\n' || bytes[m_position] == '\r'))
        ++m_position;
    if (m_position >= size)
        return token;

    const char c = bytes[m_position];
    if (c == '{') {
        ++m_position;
        token.type = TokenType::GroupOpen;
        return token;
    }
    if (c == '}') {
        ++m_position;
        token.type = TokenType::GroupClose;
        return token;
    }
    if (c != '\\') {
        const qsizetype start = m_position;
        while (m_position < size) {
            const char d = bytes[m_position];
            if (d == '\\' || d == '{' || d == '}' || d == '\n' || d == '\r')
                break;
            ++m_position;
        }
        token.type = TokenType::Text;
        token.text = m_data.sliced(start, m_position - start);
        return token;
    }

    // A backslash.
    ++m_position;
    if (m_position >= size) {
        // A lone backslash at the very end: nothing.
        return token;
    }
    const char d = bytes[m_position];
    if (isLetter(d)) {
        const qsizetype start = m_position;
        while (m_position < size && isLetter(bytes[m_position]))
            ++m_position;
        qsizetype length = m_position - start;
        if (length > maxWordLength) {
            token.longWord = true;
            length = maxWordLength;
        }
        token.type = TokenType::ControlWord;
        token.text = m_data.sliced(start, length);

        bool negative = false;
        if (m_position + 1 < size && bytes[m_position] == '-' && isDigit(bytes[m_position + 1])) {
            negative = true;
            ++m_position;
        }
        if (m_position < size && isDigit(bytes[m_position])) {
            token.hasParam = true;
            qint64 value = 0;
            int digits = 0;
            while (m_position < size && isDigit(bytes[m_position])) {
                if (digits < maxNumberDigits)
                    value = value * 10 + (bytes[m_position] - '0');
                else
                    token.longNumber = true;
                ++digits;
                ++m_position;
            }
            if (negative)
                value = -value;
            if (value > std::numeric_limits<int>::max())
                value = std::numeric_limits<int>::max();
            if (value < std::numeric_limits<int>::min())
                value = std::numeric_limits<int>::min();
            token.param = int(value);
        }
        // One space after the word belongs to it.
        if (m_position < size && bytes[m_position] == ' ')
            ++m_position;
        return token;
    }

    ++m_position;
    if (d == '\'') {
        int value = 0;
        int digits = 0;
        while (digits < 2 && m_position < size) {
            const int h = hexValue(bytes[m_position]);
            if (h < 0)
                break;
            value = value * 16 + h;
            ++digits;
            ++m_position;
        }
        if (digits == 0) {
            // "\'" without a hex digit: a symbol that means nothing.
            token.type = TokenType::ControlSymbol;
            token.symbol = '\'';
            return token;
        }
        token.type = TokenType::HexByte;
        token.byte = static_cast<unsigned char>(value);
        return token;
    }
    token.type = TokenType::ControlSymbol;
    token.symbol = (d == '\r' || d == '\n') ? '\n' : d;
    return token;
}

QByteArrayView RtfTokenizer::takeBytes(qint64 count)
{
    const qint64 available = m_data.size() - m_position;
    if (count < 0)
        count = 0;
    if (count > available)
        count = available;
    const QByteArrayView bytes = m_data.sliced(m_position, qsizetype(count));
    m_position += qsizetype(count);
    return bytes;
}

}  // namespace rtf
