#pragma once
// Splits RTF bytes into tokens: braces, control words with their number,
// control symbols, \'hh bytes and runs of plain text. Every token is found
// in time proportional to its length and nothing is read outside the
// buffer; over-long control words and numbers are cut to a fixed size and
// flagged.
#include <QByteArrayView>

namespace rtf {

enum class TokenType {
    End,  // the buffer is exhausted
    GroupOpen,  // {
    GroupClose,  // }
    ControlWord,  // \word or \word-12 (name in text, number in param)
    ControlSymbol,  // \ followed by one non-letter (in symbol); backslash-LF and backslash-CR give '\n'
    HexByte,  // \'hh (the byte in byte)
    Text,  // a run of bytes that are neither braces, backslashes nor line ends
};

struct Token
{
    TokenType type = TokenType::End;
    QByteArrayView text;  // the run of a Text token, the name of a ControlWord (at most maxWordLength letters)
    int param = 0;  // the number of a ControlWord, clamped to the int range
    bool hasParam = false;
    char symbol = 0;
    unsigned char byte = 0;
    bool longWord = false;  // the control word had more letters than maxWordLength
    bool longNumber = false;  // its number had more digits than maxNumberDigits
};

class RtfTokenizer
{
public:
    static constexpr int maxWordLength = 32;
    static constexpr int maxNumberDigits = 10;

    explicit RtfTokenizer(QByteArrayView data);

    Token next();
    // The next count bytes as they are (the data of \bin), fewer when the
    // buffer ends first.
    QByteArrayView takeBytes(qint64 count);
    qsizetype position() const { return m_position; }
    qsizetype size() const { return m_data.size(); }
    QByteArrayView rest() const { return m_data.sliced(m_position); }

private:
    QByteArrayView m_data;
    qsizetype m_position = 0;
};

// The value of a hexadecimal digit, -1 for any other byte.
int hexValue(char c);

}  // namespace rtf
