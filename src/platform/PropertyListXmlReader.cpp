// The full property-list reader, on QXmlStreamReader: any well-formed XML
// (comments, CDATA, processing instructions, DTD subsets, every encoding Qt
// knows). It reads what the quick scanner leaves to it, and it is the one
// that explains, with a line number, why a document cannot be read.
#include "platform/PropertyListInternal.h"

#include <QXmlStreamReader>

namespace platform::plist {

namespace {

const QString Yes = QStringLiteral("YES");
const QString No = QStringLiteral("NO");

bool isValueElement(QStringView name)
{
    return name == u"string" || name == u"integer" || name == u"real" || name == u"date" || name == u"true"
        || name == u"false" || name == u"data" || name == u"array" || name == u"dict";
}

class FullReader
{
public:
    FullReader(RecordReader::Private &reader, QByteArrayView document, RecordVisitor &recordVisitor)
        : d(reader),
          source(document, [&reader](const char *position) { reader.releaseBefore(position); }),
          xml(source.xml),
          visitor(recordVisitor)
    { }

    ReadStatus read(const QString &rootKey);

private:
    bool fail(const QString &reason, qint64 line = -1)
    {
        if (status.ok()) {
            status.reason = reason.isEmpty() ? QStringLiteral("unreadable property list") : reason;
            status.line = line >= 0 ? line : xml.lineNumber();
        }
        return false;
    }
    bool failXml() { return fail(xml.errorString(), source.faultLine()); }
    // The next start or end of an element, passing over comments, processing
    // instructions, the DTD and white space. False (with the reason kept)
    // on an XML fault, on text between elements, and at the end.
    bool next();
    bool startOf(const char *what);
    bool elementText(QString &text);
    bool records(const QString &rootKey);
    bool record();

    RecordReader::Private &d;
    XmlSource source;
    QXmlStreamReader &xml;
    RecordVisitor &visitor;
    ReadStatus status;
};

bool FullReader::next()
{
    for (;;) {
        switch (source.next()) {
        case QXmlStreamReader::StartElement:
        case QXmlStreamReader::EndElement:
            return true;
        case QXmlStreamReader::Characters: {
            if (xml.isWhitespace())
                continue;
            qint64 line = 0;
            const QString why = source.unexpectedText(line);
            return fail(why, line);
        }
        case QXmlStreamReader::EntityReference:
            return fail(QStringLiteral("unexpected entity &%1;").arg(xml.name().toString()));
        case QXmlStreamReader::Invalid:
            return failXml();
        case QXmlStreamReader::EndDocument:
            return fail(QStringLiteral("unexpected end of the document"));
        default:
            continue;  // the declaration, DTD, comments, processing instructions
        }
    }
}

// The next token must start an element (what: for the message).
bool FullReader::startOf(const char *what)
{
    if (!next())
        return false;
    if (xml.isStartElement())
        return true;
    return fail(QStringLiteral("expected %1, found </%2>").arg(QLatin1String(what), xml.name().toString()));
}

bool FullReader::elementText(QString &text)
{
    QString why;
    if (source.elementText(text, why))
        return true;
    return xml.hasError() ? failXml() : fail(why);
}

ReadStatus FullReader::read(const QString &rootKey)
{
    if (!startOf("<plist>"))
        return status;
    if (xml.name() != u"plist") {
        fail(QStringLiteral("not a property list (the document is <%1>)").arg(xml.name().toString()));
        return status;
    }
    if (!next())
        return status;
    if (!xml.isStartElement() || xml.name() != u"dict") {
        fail(xml.isStartElement()
                 ? QStringLiteral("the property list holds <%1>, not a dictionary").arg(xml.name().toString())
                 : QStringLiteral("the property list is empty"));
        return status;
    }
    bool found = false;
    for (;;) {
        if (!next())
            return status;
        if (xml.isEndElement())
            break;
        if (xml.name() != u"key") {
            fail(QStringLiteral("expected <key>, found <%1>").arg(xml.name().toString()));
            return status;
        }
        QString key;
        if (!elementText(key))
            return status;
        if (!startOf("a value"))
            return status;
        if (key == rootKey) {
            // The last array under the key counts, as in a dictionary.
            if (found)
                visitor.restart();
            found = true;
            if (!records(rootKey))
                return status;
        } else {
            if (!isValueElement(xml.name())) {
                fail(QStringLiteral("unknown element <%1>").arg(xml.name().toString()));
                return status;
            }
            QString why;
            if (!source.skipElement(why)) {
                xml.hasError() ? failXml() : fail(why);
                return status;
            }
        }
    }
    if (!found) {
        fail(QStringLiteral("no \"%1\" in the property list").arg(rootKey));
        return status;
    }
    if (!next())
        return status;
    if (xml.isStartElement()) {
        fail(QStringLiteral("unexpected <%1> after the dictionary").arg(xml.name().toString()));
        return status;
    }
    // The rest must be well-formed too: comments and white space only.
    QString why;
    if (!source.finish(why))
        xml.hasError() ? failXml() : fail(why);
    return status;
}

bool FullReader::records(const QString &rootKey)
{
    if (xml.name() != u"array")
        return fail(QStringLiteral("\"%1\" is not an array").arg(rootKey));
    for (;;) {
        if (!next())
            return false;
        if (xml.isEndElement())
            return true;
        if (xml.name() != u"dict")
            return fail(QStringLiteral("expected <dict> in \"%1\", found <%2>").arg(rootKey, xml.name().toString()));
        if (!record())
            return false;
    }
}

bool FullReader::record()
{
    std::vector<Field> &fields = d.fields;
    size_t count = 0;
    QString key;
    QString text;
    for (;;) {
        if (!next())
            return false;
        if (xml.isEndElement())
            break;
        if (xml.name() != u"key")
            return fail(QStringLiteral("expected <key>, found <%1>").arg(xml.name().toString()));
        if (!elementText(key))
            return false;
        if (!startOf("a value"))
            return false;
        const QStringView kind = xml.name();
        const int index = d.keys.lookup(key);
        if (kind == u"string") {
            if (!elementText(text))
                return false;
            text = d.values.share(index, text);
        } else if (kind == u"integer" || kind == u"real" || kind == u"date") {
            if (!elementText(text))
                return false;
            text = d.values.share(index, trimmedXml(text));
        } else if (kind == u"true" || kind == u"false") {
            const bool yes = kind == u"true";
            if (!elementText(text))
                return false;
            text = yes ? Yes : No;
        } else if (kind == u"array" || kind == u"dict" || kind == u"data") {
            QString why;
            if (!source.skipElement(why))
                return xml.hasError() ? failXml() : fail(why);
            continue;
        } else {
            return fail(QStringLiteral("unknown element <%1>").arg(kind.toString()));
        }
        if (count == fields.size())
            fields.emplace_back();
        fields[count].key = index;
        fields[count].value = text;
        ++count;
    }
    visitor.record(std::span<const Field>(fields.data(), count));
    return true;
}

}  // namespace

ReadStatus fullRead(RecordReader::Private &d, QByteArrayView document, const QString &rootKey, RecordVisitor &visitor)
{
    FullReader reader(d, document, visitor);
    return reader.read(rootKey);
}

}  // namespace platform::plist
