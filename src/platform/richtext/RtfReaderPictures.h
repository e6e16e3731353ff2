#pragma once
// Decoding the pictures of an RTF document (from \pict data or from a file
// attached to an .rtfd package) with every size checked before anything is
// decoded.
#include <QByteArray>
#include <QImage>
#include <QString>

namespace rtf {

struct DecodedPicture
{
    QImage image;
    QString problem;  // why there is no image, for the list of what was skipped
    QByteArray format;  // "png", "jpeg" ... as found in the bytes
};

// The format of picture bytes by their signature: "png", "jpeg", "tiff", or
// empty.
QByteArray pictureFormat(const QByteArray &bytes);

// Decodes the bytes (format empty: whatever Qt recognises in them). The size
// the picture claims is checked before it is decoded: a picture that would
// exceed the per-picture limits or the pixels left in *pixelBudget is not
// decoded; a decoded one is taken from the budget.
DecodedPicture decodePicture(const QByteArray &bytes, const QByteArray &format, qint64 *pixelBudget);

}  // namespace rtf
