#pragma once
// Reads RTF into a QTextDocument: what TextEdit, LibreOffice Writer and
// AbiWord write, and the program's own output. Any input, however damaged
// or hostile, is read in time proportional to its size, never outside its
// buffer, with every nesting depth, word length, number and embedded size
// capped; what could not be read is skipped and listed.
#include <QByteArray>
#include <QString>
#include <QStringList>

class QTextDocument;

struct RtfReadResult
{
    // False when the text is not RTF at all (no "{\rtf" at its start); the
    // document is then left empty.
    bool ok = false;
    // What was skipped or repaired, one short line each, for the log
    // ("unknown destination \\foo skipped", "picture of 80000000 bytes skipped",
    // "missing closing brace"...). Empty for a clean document.
    QStringList skipped;
};

namespace RtfReader {

// The limits of what is read. Groups nested deeper than maxDepth are
// skipped whole; a picture (or an attached picture file) of more than
// maxPictureBytes bytes, or whose size in pixels is beyond maxPictureSide on
// a side or maxPicturePixels in all, is skipped before it is decoded; the
// pictures of one document hold at most maxDocumentPixels pixels together.
// Lengths (indents, spacing, tab stops, picture sizes) are given to the
// document in points.
constexpr int maxDepth = 256;
constexpr qint64 maxPictureBytes = 64 * 1024 * 1024;
constexpr int maxPictureSide = 30000;
constexpr qint64 maxPicturePixels = 50 * 1000 * 1000;
constexpr qint64 maxDocumentPixels = 200 * 1000 * 1000;
// The most characters one document gives; the rest of a longer one is
// skipped.
constexpr qint64 maxCharacters = 64 * 1024 * 1024;

// Replaces the document's content with the RTF. Pictures become image
// resources of the document (QTextDocument::addResource with an ImageResource
// URL, referenced by a QTextImageFormat of the same name). packageDir is the
// folder of an .rtfd package, where \NeXTGraphic attachments are looked up
// (only inside it); empty for a plain .rtf.
RtfReadResult read(const QByteArray &rtf, QTextDocument &document, const QString &packageDir = QString());

}  // namespace RtfReader
