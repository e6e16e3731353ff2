#include "platform/richtext/RtfReaderPictures.h"

#include "platform/richtext/RtfReader.h"

#include <QBuffer>
#include <QImageReader>

namespace rtf {

QByteArray pictureFormat(const QByteArray &bytes)
{
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (bytes.startsWith("\xff\xd8\xff"))
        return "jpeg";
    if (bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4)))
        return "tiff";
    return {};
}

DecodedPicture decodePicture(const QByteArray &bytes, const QByteArray &format, qint64 *pixelBudget)
{
    DecodedPicture result;
    if (bytes.size() > RtfReader::maxPictureBytes) {
        result.problem = QStringLiteral("picture of %1 bytes skipped").arg(bytes.size());
        return result;
    }
    QByteArray data = bytes;
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setDecideFormatFromContent(format.isEmpty());
    if (!reader.canRead()) {
        result.problem = QStringLiteral("damaged or unknown picture skipped");
        return result;
    }
    result.format = reader.format();
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty()) {
        result.problem = QStringLiteral("picture without a size skipped");
        return result;
    }
    const qint64 pixels = qint64(size.width()) * size.height();
    if (size.width() > RtfReader::maxPictureSide || size.height() > RtfReader::maxPictureSide
        || pixels > RtfReader::maxPicturePixels) {
        result.problem = QStringLiteral("picture of %1 x %2 pixels skipped").arg(size.width()).arg(size.height());
        return result;
    }
    if (pixelBudget && pixels > *pixelBudget) {
        result.problem
            = QStringLiteral("picture of %1 x %2 pixels skipped: the document's pictures are too large together")
                  .arg(size.width())
                  .arg(size.height());
        return result;
    }
    QImage image;
    if (!reader.read(&image) || image.isNull()) {
        result.problem = QStringLiteral("damaged %1 picture skipped").arg(QString::fromLatin1(result.format));
        return result;
    }
    if (image.width() > RtfReader::maxPictureSide || image.height() > RtfReader::maxPictureSide
        || qint64(image.width()) * image.height() > RtfReader::maxPicturePixels) {
        result.problem = QStringLiteral("picture of %1 x %2 pixels skipped").arg(image.width()).arg(image.height());
        return result;
    }
    if (pixelBudget)
        *pixelBudget -= qint64(image.width()) * image.height();
    result.image = image;
    return result;
}

}  // namespace rtf
