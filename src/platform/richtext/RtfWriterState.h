#pragma once
// What the RTF writer keeps while it writes one document: the font and colour
// tables it gathers, the body it writes, and the pictures a package carries.
// Only the writer's own files (RtfWriter*.cpp) include this; the rest of the
// program writes RTF through RtfWriter.h.
//
// RtfWriter.cpp writes the header, paragraphs and character formats,
// RtfWriterTables.cpp the tables, and RtfWriterPictures.cpp the pictures.
#include "platform/richtext/RtfUnits.h"
#include "platform/richtext/RtfWriter.h"
#include "platform/richtext/RtfWriterOutput.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QList>
#include <QSet>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QTextBlock>
#include <QTextFormat>

class QColor;
class QTextDocument;
class QTextFrame;
class QTextList;
class QTextTable;
class QTextTableCell;

namespace rtf::writing {

// Width given to a table whose columns say nothing about their size: about
// 6.25 inches, which fits the text width of both A4 and US Letter paper with
// one-inch margins.
constexpr int kDefaultTableWidthTwips = 9000;
// The longest attachment name written into a package.
constexpr int kMaxAttachmentNameLength = 100;

inline int twips(qreal units)
{
    return qRound(units * twipsPerUnit);
}

// A picture ready to be written: its file bytes in one of the formats the
// reader and the common editors understand, and its decoded image for the
// natural size.
struct Picture
{
    QByteArray bytes;
    QByteArray extension;  // "png", "jpg" or "tiff"
    QImage image;
};

// Reads the image resource named by an image format. keepOriginal keeps the
// bytes of a PNG, JPEG or TIFF file as they are; otherwise (and for any other
// resource) the image is written as PNG. An empty Picture when there is no
// usable image.
Picture pictureFor(const QTextDocument &document, const QString &name, bool keepOriginal);
// The size a picture is shown at, in points.
QSizeF displaySize(const QTextImageFormat &format, const QImage &image);
// Whether the format paints with the brush: set, with a pattern, and not
// fully transparent.
bool shows(const QTextFormat &format, QTextFormat::Property property);

// Writes one document as RTF, or as the RTF of a package with its pictures.
class Writer
{
public:
    Writer(const QTextDocument &document, bool package)
        : m_document(document),
          m_package(package)
    { }

    RtfWriteResult write();

private:
    struct Item
    {
        QTextBlock block;
        QTextTable *table = nullptr;
    };

    int fontIndex(const QString &family);

    // Index in the colour table; 0 is the automatic colour, so real colours
    // count from 1.
    int colourIndex(const QColor &colour);

    // The blocks and tables of a frame in document order; frames that are not
    // tables are flattened into their blocks.
    static void collect(QTextFrame *frame, QList<Item> &items, bool flattenTables);

    // A table inside a table cell: its cells' paragraphs one after the other.
    static void collectTable(QTextTable *table, QList<Item> &items);

    // The paragraphs of a cell; tables inside it are flattened.
    static void collectCell(const QTextTableCell &cell, QList<Item> &items);

    void writeFrame(QTextFrame *frame);

    enum class End { Nothing, Paragraph, Cell };

    void writeParagraph(const QTextBlock &block, bool inTable, End end);

    static QString listMarker(QTextList *list, const QTextBlock &block);

    void writeParagraphFormat(const QTextBlockFormat &format, QTextList *list);

    qreal pointSize(const QTextCharFormat &format) const;

    void writeCharacterFormat(const QTextCharFormat &format);

    void writeFragment(const QTextFragment &fragment);

    void writePicture(const QTextImageFormat &format);

    // The file name of a picture inside the package: one per resource, made
    // of plain characters only, with the extension of its kind, and unique
    // regardless of letter case.
    QString attachmentFor(const QString &resourceName, const Picture &picture);

    // Column right edges in twips from the table's width constraints: fixed
    // widths as given, percentages of the table's width, and what is left
    // shared equally by the others.
    QList<int> columnEdges(const QTextTable *table) const;

    void writeTable(QTextTable *table);

    const QTextDocument &m_document;
    const bool m_package;
    RtfOutput m_body;
    QString m_defaultFamily;
    qreal m_defaultSize = 12.0;
    QStringList m_fonts;
    QList<QRgb> m_colours;
    QHash<QString, QString> m_attachmentNames;
    QSet<QString> m_usedNames;
    QList<RtfAttachment> m_attachments;
};

}  // namespace rtf::writing
