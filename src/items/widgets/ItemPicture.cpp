#include "items/widgets/ItemPicture.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

namespace ItemPicture {

QByteArray tiffData(const QImage &image)
{
    if (image.isNull())
        return {};
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    if (!writer.write(image))
        return {};
    return data;
}

QImage image(const QByteArray &data)
{
    if (data.isEmpty())
        return {};
    QImage decoded;
    decoded.loadFromData(data);
    return decoded;
}

}  // namespace ItemPicture
