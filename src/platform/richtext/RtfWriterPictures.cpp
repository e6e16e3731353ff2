// Pictures: the image resources of a document, kept as their own files in a
// package or written inline as PNG.
#include "platform/richtext/RtfWriterState.h"

#include <QBuffer>
#include <QColor>
#include <QFileInfo>
#include <QPixmap>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

namespace rtf::writing {

namespace {

QByteArray encodePng(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        return QByteArray();
    return png;
}

// The kind of image file the bytes hold, by their signature: only the kinds
// worth keeping as they are.
QByteArray fileKind(const QByteArray &bytes)
{
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (bytes.startsWith("\xff\xd8\xff"))
        return "jpg";
    if (bytes.startsWith(QByteArray("II*\0", 4)) || bytes.startsWith(QByteArray("MM\0*", 4)))
        return "tiff";
    return QByteArray();
}

}  // namespace

// Reads the image resource named by an image format. keepOriginal keeps the
// bytes of a PNG, JPEG or TIFF file as they are; otherwise (and for any other
// resource) the image is written as PNG. An empty Picture when there is no
// usable image.
Picture pictureFor(const QTextDocument &document, const QString &name, bool keepOriginal)
{
    Picture picture;
    const QVariant resource = document.resource(QTextDocument::ImageResource, QUrl(name));
    if (resource.userType() == QMetaType::QByteArray) {
        const QByteArray bytes = resource.toByteArray();
        picture.image = QImage::fromData(bytes);
        if (picture.image.isNull())
            return Picture();
        const QByteArray kind = fileKind(bytes);
        if (kind == "png" || (keepOriginal && !kind.isEmpty())) {
            picture.bytes = bytes;
            picture.extension = kind;
            return picture;
        }
    } else if (resource.userType() == QMetaType::QImage) {
        picture.image = resource.value<QImage>();
    } else if (resource.userType() == QMetaType::QPixmap) {
        picture.image = resource.value<QPixmap>().toImage();
    }
    if (picture.image.isNull())
        return Picture();
    picture.bytes = encodePng(picture.image);
    if (picture.bytes.isEmpty())
        return Picture();
    picture.extension = "png";
    return picture;
}

// The size a picture is shown at, in points: the format's width and height
// when it gives them (one of them scales the other), else the image's
// physical size from its resolution (72 dots per inch when it has none).
QSizeF displaySize(const QTextImageFormat &format, const QImage &image)
{
    const qreal dpmX = image.dotsPerMeterX() > 0 ? image.dotsPerMeterX() : 2834.6;
    const qreal dpmY = image.dotsPerMeterY() > 0 ? image.dotsPerMeterY() : 2834.6;
    QSizeF natural(image.width() * unitsPerInch / (dpmX * 0.0254), image.height() * unitsPerInch / (dpmY * 0.0254));
    const bool hasWidth = format.hasProperty(QTextFormat::ImageWidth) && format.width() > 0;
    const bool hasHeight = format.hasProperty(QTextFormat::ImageHeight) && format.height() > 0;
    if (hasWidth && hasHeight)
        return QSizeF(format.width(), format.height());
    if (hasWidth)
        return QSizeF(format.width(), image.width() > 0 ? format.width() * image.height() / image.width() : 0);
    if (hasHeight)
        return QSizeF(image.height() > 0 ? format.height() * image.width() / image.height() : 0, format.height());
    return natural;
}

void Writer::writePicture(const QTextImageFormat &format)
{
    const QString name = format.name();
    const Picture picture = pictureFor(m_document, name, m_package);
    if (picture.bytes.isEmpty())
        return;
    const QSizeF size = displaySize(format, picture.image);
    if (m_package) {
        const QString fileName = attachmentFor(name, picture);
        m_body.open();
        m_body.open();
        m_body.word("NeXTGraphic");
        m_body.raw(" ");
        m_body.raw(fileName.toLatin1());
        m_body.raw(" ");
        m_body.word("width", twips(size.width()));
        m_body.raw(" ");
        m_body.word("height", twips(size.height()));
        m_body.close();
        m_body.raw("\\'ac");
        m_body.close();
        return;
    }
    m_body.open();
    m_body.raw("\\*");
    m_body.word("shppict");
    m_body.open();
    m_body.word("pict");
    m_body.word("pngblip");
    m_body.word("picw", picture.image.width());
    m_body.word("pich", picture.image.height());
    m_body.word("picwgoal", twips(size.width()));
    m_body.word("pichgoal", twips(size.height()));
    m_body.hex(picture.bytes);
    m_body.close();
    m_body.close();
}

// The file name of a picture inside the package: one per resource, made
// of plain characters only, with the extension of its kind, and unique
// regardless of letter case.
QString Writer::attachmentFor(const QString &resourceName, const Picture &picture)
{
    if (const auto known = m_attachmentNames.constFind(resourceName); known != m_attachmentNames.constEnd())
        return known.value();

    QString base = QUrl(resourceName).fileName();
    if (base.isEmpty())
        base = resourceName.section(QLatin1Char('/'), -1);
    QString clean;
    for (const QChar c : std::as_const(base)) {
        const char16_t u = c.unicode();
        const bool plain = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '.'
            || u == '_' || u == '-' || u == ' ';
        clean.append(plain ? c : QLatin1Char('_'));
    }
    QString stem = clean;
    const QString suffix = QFileInfo(clean).suffix().toLower();
    const QString extension = QString::fromLatin1(picture.extension);
    const bool suffixFits = suffix == extension
        || (extension == QLatin1String("jpg") && suffix == QLatin1String("jpeg"))
        || (extension == QLatin1String("tiff") && suffix == QLatin1String("tif"));
    QString chosenSuffix = extension;
    if (!suffix.isEmpty()) {
        stem.chop(suffix.size() + 1);
        if (suffixFits)
            chosenSuffix = QFileInfo(clean).suffix();
    }
    stem = stem.trimmed();
    while (stem.startsWith(QLatin1Char('.')))
        stem.remove(0, 1);
    stem = stem.trimmed();
    if (stem.isEmpty())
        stem = QStringLiteral("image");
    stem.truncate(kMaxAttachmentNameLength);
    stem = stem.trimmed();

    QString fileName = stem + QLatin1Char('.') + chosenSuffix;
    for (int n = 2; m_usedNames.contains(fileName.toLower())
         || fileName.compare(QLatin1String("TXT.rtf"), Qt::CaseInsensitive) == 0;
         ++n)
        fileName = stem + QLatin1Char('_') + QString::number(n) + QLatin1Char('.') + chosenSuffix;
    m_usedNames.insert(fileName.toLower());
    m_attachmentNames.insert(resourceName, fileName);
    m_attachments.append(RtfAttachment{fileName, picture.bytes});
    return fileName;
}

}  // namespace rtf::writing
