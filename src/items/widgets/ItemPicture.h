#pragma once
// Converts between the images the stock editor shows and the TIFF bytes
// that an item keeps as its picture.
#include <QByteArray>
#include <QImage>

namespace ItemPicture {

// The image encoded as a TIFF file; empty when it cannot be encoded.
QByteArray tiffData(const QImage &image);
// The image decoded from a picture file's bytes; a null image when none.
QImage image(const QByteArray &data);

}  // namespace ItemPicture
