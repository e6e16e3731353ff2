#pragma once
// The bytes of an RTF text as the writer builds them: control words, groups
// and text escaped to plain ASCII.
#include <QByteArray>
#include <QStringView>

class RtfOutput
{
public:
    // A control word, with its number when it has one ("\\fs24").
    void word(const char *name);
    void word(const char *name, int number);
    void open();
    void close();
    // Bytes as they are (control symbols, names the caller made safe).
    void raw(const char *bytes);
    void raw(const QByteArray &bytes);
    // Text: backslash and braces escaped, tab and line separator as \tab and
    // \line, windows-1252 characters as \'hh and all others as \uN? (the
    // two halves of a surrogate pair each as one). Control characters and
    // the object replacement character are left out.
    void text(QStringView text);
    // Picture data as hexadecimal digits, in lines of 128.
    void hex(const QByteArray &bytes);
    void newline();

    const QByteArray &bytes() const { return m_bytes; }

private:
    void literal(char c);

    QByteArray m_bytes;
    // A control word was the last thing written: a following letter, digit,
    // space or hyphen would be read as part of it.
    bool m_afterWord = false;
};
