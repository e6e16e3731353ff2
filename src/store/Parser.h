#pragma once
// The streaming reader of the program's older four-level XML dialect:
// document element, group, record, field with plain text. It serves the
// import of a first-generation database and the table layout files.
//
// A parser reads one file whole and then walks it one byte at a time, with
// no lookahead beyond the current byte; it only moves forward. Typical use:
//
//     Parser parser;
//     parser.initWithFilePath(path);
//     while (auto item = parser.getItem())
//         ... item->getParentName(), item->isNewParent(), item->getName() ...
//
// Limits: a tag text keeps its first 20 bytes and a value its first 10000;
// the rest of an over-long tag or value is read and dropped. Tag texts are
// taken as Latin-1; values must be 7-bit ASCII: a byte above 127 makes the
// value unreadable, and the reading ends there as at the end of input.
#include "store/DbItem.h"
#include "store/XmlTag.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

class Parser
{
public:
    static constexpr int maxTagLength = 20;
    static constexpr int maxValueLength = 10000;

    Parser() = default;

    // Expands a leading "~", reads the whole file (a missing or unreadable
    // file reads as empty), prints "<n> bytes read" on standard output and
    // starts outside the document element. Use a parser for one file only.
    void initWithFilePath(const QString &path);
    // The same over bytes already in memory, without the message.
    void initWithData(const QByteArray &bytes);

    quint32 length() const { return l; }
    // How many bytes have been taken so far.
    quint32 position() const { return quint32(counter); }

    // Takes the next byte into aBuffer; false at the end of the input.
    bool getNextByte();

    // Reads one tag. With afterOpen false, first skips to the next "<"
    // (none when aBuffer already holds one). Nothing at the end of input.
    std::unique_ptr<XmlTag> getTag(bool afterOpen);

    // Reads one field value up to the "<" of its closing tag (left in
    // aBuffer): trimmed of line feeds and carriage returns at both ends, the
    // first "&amp;", then the first "&lt;", then the first "&gt;" undone.
    // Nothing at the end of input or when the value is not ASCII.
    std::optional<QString> getData();

    // The next leaf of the document; nothing at its end or at the end of
    // the input. The caller owns the item.
    std::unique_ptr<DbItem> getItem();

    // The names of the latest group and record opened, and the latest value.
    const QString &getGrandParent() const { return grandParent; }
    const QString &getParent() const { return parent; }
    const QString &getContent() const { return content; }
    int getIndent() const { return indent; }

private:
    QByteArray data;
    QString grandParent;
    QString parent;
    QString content;
    unsigned char aBuffer = 0;
    quint32 l = 0;
    qint32 indent = 0;
    qint32 counter = 0;
};
