// General property lists as QVariant: small documents such as the report
// definitions, read whole with the full XML reader.
#include "platform/PropertyList.h"

#include "platform/PropertyListInternal.h"

#include <QDateTime>
#include <QFile>
#include <QTimeZone>
#include <QXmlStreamReader>

namespace platform::plist {

namespace {

constexpr int MaxDepth = 256;

class ValueReader
{
public:
    explicit ValueReader(QByteArrayView document)
        : source(document),
          xml(source.xml)
    { }

    QVariant read();
    ReadStatus status;

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
    bool next();
    bool text(QString &out);
    // Reads the element just started; its value in out.
    bool value(QVariant &out, int depth);

    XmlSource source;
    QXmlStreamReader &xml;
};

bool ValueReader::next()
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
            continue;
        }
    }
}

bool ValueReader::text(QString &out)
{
    QString why;
    if (source.elementText(out, why))
        return true;
    return xml.hasError() ? failXml() : fail(why);
}

bool ValueReader::value(QVariant &out, int depth)
{
    if (depth > MaxDepth)
        return fail(QStringLiteral("nested too deeply"));
    const QString kind = xml.name().toString();
    QString content;
    if (kind == u"dict") {
        QVariantMap map;
        for (;;) {
            if (!next())
                return false;
            if (xml.isEndElement())
                break;
            if (xml.name() != u"key")
                return fail(QStringLiteral("expected <key>, found <%1>").arg(xml.name().toString()));
            QString key;
            if (!text(key))
                return false;
            if (!next())
                return false;
            if (!xml.isStartElement())
                return fail(QStringLiteral("the key \"%1\" has no value").arg(key));
            QVariant item;
            if (!value(item, depth + 1))
                return false;
            map.insert(key, item);
        }
        out = map;
        return true;
    }
    if (kind == u"array") {
        QVariantList list;
        for (;;) {
            if (!next())
                return false;
            if (xml.isEndElement())
                break;
            QVariant item;
            if (!value(item, depth + 1))
                return false;
            list.append(item);
        }
        out = list;
        return true;
    }
    if (kind == u"true" || kind == u"false") {
        if (!text(content))
            return false;
        out = kind == u"true";
        return true;
    }
    if (!text(content))
        return false;
    if (kind == u"string") {
        out = content;
        return true;
    }
    content = trimmedXml(content);
    if (kind == u"integer") {
        bool ok = false;
        const qlonglong number = content.toLongLong(&ok);
        if (!ok)
            return fail(QStringLiteral("\"%1\" is not an integer").arg(content.left(40)));
        out = number;
        return true;
    }
    if (kind == u"real") {
        bool ok = false;
        const double number = content.toDouble(&ok);
        if (!ok)
            return fail(QStringLiteral("\"%1\" is not a number").arg(content.left(40)));
        out = number;
        return true;
    }
    if (kind == u"date") {
        QDateTime moment = QDateTime::fromString(content, Qt::ISODate);
        if (!moment.isValid())
            return fail(QStringLiteral("\"%1\" is not a date").arg(content.left(40)));
        out = moment.toUTC();
        return true;
    }
    if (kind == u"data") {
        QByteArray base64 = content.toLatin1();
        base64.replace(' ', QByteArray())
            .replace('\t', QByteArray())
            .replace('\n', QByteArray())
            .replace('\r', QByteArray());
        auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            return fail(QStringLiteral("invalid base64 data"));
        out = *decoded;
        return true;
    }
    return fail(QStringLiteral("unknown element <%1>").arg(kind));
}

QVariant ValueReader::read()
{
    if (!next())
        return QVariant();
    if (!xml.isStartElement() || xml.name() != u"plist") {
        fail(QStringLiteral("not a property list (the document is <%1>)").arg(xml.name().toString()));
        return QVariant();
    }
    if (!next())
        return QVariant();
    if (!xml.isStartElement()) {
        fail(QStringLiteral("the property list is empty"));
        return QVariant();
    }
    QVariant result;
    if (!value(result, 0))
        return QVariant();
    if (!next())
        return QVariant();
    if (xml.isStartElement()) {
        fail(QStringLiteral("unexpected <%1> after the value").arg(xml.name().toString()));
        return QVariant();
    }
    QString why;
    if (!source.finish(why)) {
        xml.hasError() ? failXml() : fail(why);
        return QVariant();
    }
    return result;
}

class ValueWriter
{
public:
    bool value(const QVariant &v, int depth);
    QByteArray out;
    QString error;

private:
    void indent(int depth) { out.append(QByteArray(depth, '\t')); }
    void element(const char *tag, QStringView text, int depth)
    {
        indent(depth);
        out.append('<').append(tag).append('>');
        appendEscaped(out, text);
        out.append("</").append(tag).append(">\n");
    }
    template <typename Map> bool dict(const Map &map, int depth);
};

template <typename Map> bool ValueWriter::dict(const Map &map, int depth)
{
    indent(depth);
    if (map.isEmpty()) {
        out.append("<dict/>\n");
        return true;
    }
    out.append("<dict>\n");
    QStringList keys = map.keys();
    std::sort(keys.begin(), keys.end());
    for (const QString &key : keys) {
        element("key", key, depth + 1);
        if (!value(map.value(key), depth + 1))
            return false;
    }
    indent(depth);
    out.append("</dict>\n");
    return true;
}

bool ValueWriter::value(const QVariant &v, int depth)
{
    if (depth > MaxDepth) {
        error = QStringLiteral("nested too deeply");
        return false;
    }
    switch (v.metaType().id()) {
    case QMetaType::QVariantMap:
        return dict(v.toMap(), depth);
    case QMetaType::QVariantHash:
        return dict(v.toHash(), depth);
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        const QVariantList list = v.toList();
        indent(depth);
        if (list.isEmpty()) {
            out.append("<array/>\n");
            return true;
        }
        out.append("<array>\n");
        for (const QVariant &item : list) {
            if (!value(item, depth + 1))
                return false;
        }
        indent(depth);
        out.append("</array>\n");
        return true;
    }
    case QMetaType::QString:
        element("string", v.toString(), depth);
        return true;
    case QMetaType::Bool:
        indent(depth);
        out.append(v.toBool() ? "<true/>\n" : "<false/>\n");
        return true;
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
        element("integer", QString::number(v.toLongLong()), depth);
        return true;
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
        element("integer", QString::number(v.toULongLong()), depth);
        return true;
    case QMetaType::Double:
    case QMetaType::Float:
        element("real", QString::number(v.toDouble(), 'g', 17), depth);
        return true;
    case QMetaType::QDateTime:
        element("date", v.toDateTime().toUTC().toString(Qt::ISODate), depth);
        return true;
    case QMetaType::QByteArray:
        element("data", QString::fromLatin1(v.toByteArray().toBase64()), depth);
        return true;
    default:
        error = QStringLiteral("a value of type %1 cannot be written in a property list")
                    .arg(QLatin1String(v.metaType().name() ? v.metaType().name() : "(none)"));
        return false;
    }
}

}  // namespace

QVariant readValue(QByteArrayView document, ReadStatus *status)
{
    ValueReader reader(document);
    QVariant result = reader.read();
    if (status)
        *status = reader.status;
    return reader.status.ok() ? result : QVariant();
}

QVariant readValueFile(const QString &path, ReadStatus *status)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (status)
            *status = ReadStatus{file.errorString(), 0};
        return QVariant();
    }
    const QByteArray bytes = file.readAll();
    return readValue(bytes, status);
}

QByteArray writeValue(const QVariant &value, QString *errorText)
{
    ValueWriter writer;
    writer.out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                 "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                 "<plist version=\"1.0\">\n";
    if (!writer.value(value, 0)) {
        if (errorText)
            *errorText = writer.error;
        return QByteArray();
    }
    writer.out.append("</plist>\n");
    return writer.out;
}

}  // namespace platform::plist
