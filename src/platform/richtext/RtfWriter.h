#pragma once
// Writes a QTextDocument as RTF: what the reader reads back to the same
// text, formatting and pictures, and what LibreOffice Writer and TextEdit
// open as they should.
#include <QByteArray>
#include <QList>
#include <QString>

class QTextDocument;

struct RtfAttachment
{
    QString fileName;  // a plain name inside the package ("image1.png")
    QByteArray bytes;  // the file's contents
};

struct RtfWriteResult
{
    QByteArray rtf;  // the text of TXT.rtf or of the .rtf file
    QList<RtfAttachment> attachments;  // package form only: the pictures as files
};

namespace RtfWriter {

// Pictures embedded in the text (\pict, PNG): the plain .rtf form.
RtfWriteResult writeRtf(const QTextDocument &document);
// Pictures as files beside TXT.rtf, referenced with \NeXTGraphic: the
// .rtfd package form.
RtfWriteResult writePackage(const QTextDocument &document);

}  // namespace RtfWriter
