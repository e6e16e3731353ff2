#include "store/Parser.h"

#include "platform/Paths.h"
#include "store/kdToolBox.h"

#include <QFile>
#include <climits>
#include <cstdio>

void Parser::initWithFilePath(const QString &path)
{
    QByteArray bytes;
    QFile file(platform::paths::expandTilde(path));
    // A file too large for the byte counter is treated as unreadable.
    if (file.open(QIODevice::ReadOnly) && file.size() <= qint64(INT_MAX))
        bytes = file.readAll();
    if (bytes.size() > qsizetype(INT_MAX))
        bytes.clear();
    initWithData(bytes);
    std::printf("%d bytes read\n", int(l));
    std::fflush(stdout);
}

void Parser::initWithData(const QByteArray &bytes)
{
    data = bytes.size() > qsizetype(INT_MAX) ? QByteArray() : bytes;
    l = quint32(data.size());
    indent = 0;
}

bool Parser::getNextByte()
{
    if (quint32(counter) >= l)
        return false;
    aBuffer = static_cast<unsigned char>(data.at(counter));
    ++counter;
    return true;
}

std::unique_ptr<XmlTag> Parser::getTag(bool afterOpen)
{
    auto tag = std::make_unique<XmlTag>();
    if (!afterOpen) {
        while (aBuffer != '<') {
            if (!getNextByte())
                return nullptr;
        }
    }
    char text[maxTagLength];
    int size = 0;
    for (;;) {
        if (!getNextByte())
            return nullptr;
        if (aBuffer == '/') {
            tag->setClosing(true);
            continue;
        }
        if (aBuffer == '>')
            break;
        if (size < maxTagLength)  // longer tag texts keep their first bytes
            text[size++] = char(aBuffer);
    }
    tag->setData(QString::fromLatin1(text, size));
    return tag;
}

std::optional<QString> Parser::getData()
{
    char buffer[maxValueLength];
    int size = 0;
    bool ascii = true;
    for (;;) {
        if (!getNextByte())
            return std::nullopt;
        if (aBuffer == '<')
            break;
        if (aBuffer > 127)
            ascii = false;
        if (size < maxValueLength)  // longer values keep their first bytes
            buffer[size++] = char(aBuffer);
    }
    if (!ascii) {
        // Not readable as ASCII: the reading ends here, as at the end of input.
        counter = qint32(l);
        return std::nullopt;
    }

    // Only line feeds and carriage returns are trimmed; spaces and tabs stay.
    int first = 0;
    int last = size;
    while (first < last && (buffer[first] == '\n' || buffer[first] == '\r'))
        ++first;
    while (last > first && (buffer[last - 1] == '\n' || buffer[last - 1] == '\r'))
        --last;
    QString value = QString::fromLatin1(buffer + first, last - first);
    if (value.isNull())
        value = QStringLiteral("");  // an empty value is "", not nothing

    // One occurrence of each entity, in this order: "&amp;lt;" reads "<" and
    // "a &amp; b &amp; c" reads "a & b &amp; c". Old files depend on it.
    value = kdToolBox::replaceSubstring(QStringLiteral("&amp;"), QStringLiteral("&"), value);
    value = kdToolBox::replaceSubstring(QStringLiteral("&lt;"), QStringLiteral("<"), value);
    value = kdToolBox::replaceSubstring(QStringLiteral("&gt;"), QStringLiteral(">"), value);
    content = value;
    return value;
}

std::unique_ptr<DbItem> Parser::getItem()
{
    auto item = std::make_unique<DbItem>();
    item->setNewParent(false);
    QString fieldName;
    while (indent < 4) {
        const std::unique_ptr<XmlTag> tag = getTag(false);
        if (!tag)
            return nullptr;
        if (!tag->isClosing()) {
            ++indent;
            if (indent == 2) {
                grandParent = tag->getData();
            } else if (indent == 3) {
                parent = tag->getData();
                item->setNewParent(true);
            }
            fieldName = tag->getData();
        } else {
            --indent;
            if (indent == 0)
                return nullptr;  // the document element closed
        }
    }
    std::optional<QString> value = getData();
    if (!value)
        return nullptr;
    item->setData(*value);
    item->setName(fieldName);
    item->setParentName(parent);
    item->setGrandParentName(grandParent);
    getTag(true);  // the field's closing tag
    --indent;
    return item;
}
