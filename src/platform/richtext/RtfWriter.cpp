#include "platform/richtext/RtfWriter.h"

#include "platform/richtext/RtfWriterOutput.h"

#include <QBuffer>
#include <QColor>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QPixmap>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

namespace {

// Width given to a table whose columns say nothing about their size: about
// 6.25 inches, which fits the text width of both A4 and US Letter paper with
// one-inch margins.
constexpr int kDefaultTableWidthTwips = 9000;
// The longest attachment name written into a package.
constexpr int kMaxAttachmentNameLength = 100;

int twips(qreal units)
{
    return qRound(units * 20.0);
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
    QSizeF natural(image.width() * 72.0 / (dpmX * 0.0254), image.height() * 72.0 / (dpmY * 0.0254));
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

// Whether the format paints with the brush: set, with a pattern, and not
// fully transparent (HTML's "transparent" comes as such a brush).
bool shows(const QTextFormat &format, QTextFormat::Property property)
{
    if (!format.hasProperty(property))
        return false;
    const QBrush brush = format.brushProperty(property);
    return brush.style() != Qt::NoBrush && brush.color().alpha() > 0;
}

QStringList familiesOf(const QTextCharFormat &format)
{
    QStringList families = format.property(QTextFormat::FontFamilies).toStringList();
    families.removeAll(QString());
    return families;
}

class Writer
{
public:
    Writer(const QTextDocument &document, bool package)
        : m_document(document),
          m_package(package)
    { }

    RtfWriteResult write()
    {
        QFont base = m_document.defaultFont();
        m_defaultFamily = base.family().isEmpty() ? QStringLiteral("Helvetica") : base.family();
        if (base.pointSizeF() > 0)
            m_defaultSize = base.pointSizeF();
        else if (base.pixelSize() > 0)
            m_defaultSize = base.pixelSize() * 0.75;
        fontIndex(m_defaultFamily);

        writeFrame(m_document.rootFrame());

        RtfOutput header;
        header.raw("{\\rtf1\\ansi\\ansicpg1252\\cocoartf2822\\deff0\\uc1\n");
        header.raw("{\\fonttbl");
        for (int i = 0; i < m_fonts.size(); ++i) {
            header.open();
            header.word("f", i);
            header.word("fnil");
            header.word("fcharset", 0);
            QString name = m_fonts.at(i);
            name.remove(QLatin1Char(';'));
            header.text(name);
            header.raw(";");
            header.close();
        }
        header.raw("}\n{\\colortbl;");
        for (const QRgb rgb : std::as_const(m_colours)) {
            header.word("red", qRed(rgb));
            header.word("green", qGreen(rgb));
            header.word("blue", qBlue(rgb));
            header.raw(";");
        }
        header.raw("}\n");

        RtfWriteResult result;
        result.rtf = header.bytes() + m_body.bytes() + "}\n";
        result.attachments = m_attachments;
        return result;
    }

private:
    struct Item
    {
        QTextBlock block;
        QTextTable *table = nullptr;
    };

    int fontIndex(const QString &family)
    {
        qsizetype index = m_fonts.indexOf(family);
        if (index < 0) {
            m_fonts.append(family);
            index = m_fonts.size() - 1;
        }
        return int(index);
    }

    // Index in the colour table; 0 is the automatic colour, so real colours
    // count from 1.
    int colourIndex(const QColor &colour)
    {
        const QRgb rgb = colour.rgb() | 0xff000000u;
        qsizetype index = m_colours.indexOf(rgb);
        if (index < 0) {
            m_colours.append(rgb);
            index = m_colours.size() - 1;
        }
        return int(index) + 1;
    }

    // The blocks and tables of a frame in document order; frames that are not
    // tables are flattened into their blocks.
    static void collect(QTextFrame *frame, QList<Item> &items, bool flattenTables)
    {
        for (QTextFrame::iterator it = frame->begin(); !it.atEnd(); ++it) {
            if (QTextFrame *child = it.currentFrame()) {
                if (auto *table = qobject_cast<QTextTable *>(child); table && !flattenTables)
                    items.append(Item{QTextBlock(), table});
                else if (table)
                    collectTable(table, items);
                else
                    collect(child, items, flattenTables);
            } else if (it.currentBlock().isValid()) {
                items.append(Item{it.currentBlock(), nullptr});
            }
        }
    }

    // A table inside a table cell: its cells' paragraphs one after the other.
    static void collectTable(QTextTable *table, QList<Item> &items)
    {
        for (int row = 0; row < table->rows(); ++row) {
            for (int column = 0; column < table->columns(); ++column) {
                const QTextTableCell cell = table->cellAt(row, column);
                if (cell.row() == row && cell.column() == column)
                    collectCell(cell, items);
            }
        }
    }

    // The paragraphs of a cell; tables inside it are flattened.
    static void collectCell(const QTextTableCell &cell, QList<Item> &items)
    {
        for (QTextFrame::iterator it = cell.begin(); !it.atEnd(); ++it) {
            if (QTextFrame *child = it.currentFrame()) {
                if (auto *inner = qobject_cast<QTextTable *>(child))
                    collectTable(inner, items);
                else
                    collect(child, items, true);
            } else if (it.currentBlock().isValid()) {
                items.append(Item{it.currentBlock(), nullptr});
            }
        }
    }

    void writeFrame(QTextFrame *frame)
    {
        QList<Item> items;
        collect(frame, items, false);
        for (qsizetype i = 0; i < items.size(); ++i) {
            const Item &item = items.at(i);
            if (item.table) {
                writeTable(item.table);
                continue;
            }
            const bool last = i + 1 == items.size();
            writeParagraph(item.block, false, last ? End::Nothing : End::Paragraph);
        }
    }

    enum class End { Nothing, Paragraph, Cell };

    void writeParagraph(const QTextBlock &block, bool inTable, End end)
    {
        const QTextBlockFormat format = block.blockFormat();
        m_body.word("pard");
        if (inTable)
            m_body.word("intbl");
        QTextList *list = block.textList();
        writeParagraphFormat(format, list);

        const bool empty = block.length() <= 1;
        if (list) {
            // The item's marker (a bullet, "3.") as text before a tab: the
            // hanging indent puts the text at the list's indent.
            m_body.open();
            writeCharacterFormat(block.charFormat());
            m_body.text(listMarker(list, block));
            m_body.word("tab");
            m_body.close();
        } else if (empty) {
            writeCharacterFormat(block.charFormat());
        }
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.isValid())
                writeFragment(fragment);
        }
        switch (end) {
        case End::Nothing:
            break;
        case End::Paragraph:
            m_body.word("par");
            break;
        case End::Cell:
            m_body.word("cell");
            break;
        }
        // An empty paragraph's formatting was set outside any group: take it
        // back so that it does not reach the next paragraph.
        if (empty && end != End::Nothing)
            m_body.word("plain");
        m_body.newline();
    }

    static QString listMarker(QTextList *list, const QTextBlock &block)
    {
        switch (list->format().style()) {
        case QTextListFormat::ListDisc:
            return QString(QChar(0x2022));
        case QTextListFormat::ListCircle:
            return QString(QChar(0x25E6));
        case QTextListFormat::ListSquare:
            return QString(QChar(0x25AA));
        default:
            return list->itemText(block);
        }
    }

    void writeParagraphFormat(const QTextBlockFormat &format, QTextList *list)
    {
        if (format.layoutDirection() == Qt::RightToLeft)
            m_body.word("rtlpar");
        const Qt::Alignment horizontal = format.alignment() & Qt::AlignHorizontal_Mask;
        if (horizontal & Qt::AlignJustify)
            m_body.word("qj");
        else if (horizontal & Qt::AlignHCenter)
            m_body.word("qc");
        else if (horizontal & Qt::AlignRight)
            m_body.word("qr");
        else
            m_body.word("ql");

        qreal left = format.leftMargin() + format.indent() * m_document.indentWidth();
        qreal first = format.textIndent();
        if (list) {
            left += qMax(1, list->format().indent()) * m_document.indentWidth();
            if (first == 0)
                first = -qMin<qreal>(18, left);
        }
        if (const int value = twips(left))
            m_body.word("li", value);
        if (const int value = twips(format.rightMargin()))
            m_body.word("ri", value);
        if (const int value = twips(first))
            m_body.word("fi", value);
        if (const int value = twips(format.topMargin()))
            m_body.word("sb", value);
        if (const int value = twips(format.bottomMargin()))
            m_body.word("sa", value);

        switch (format.lineHeightType()) {
        case QTextBlockFormat::ProportionalHeight:
            m_body.word("sl", qRound(format.lineHeight() * 2.4));
            m_body.word("slmult", 1);
            break;
        case QTextBlockFormat::FixedHeight:
            m_body.word("sl", -twips(format.lineHeight()));
            m_body.word("slmult", 0);
            break;
        case QTextBlockFormat::MinimumHeight:
            m_body.word("sl", twips(format.lineHeight()));
            m_body.word("slmult", 0);
            break;
        default:
            break;
        }

        if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
            m_body.word("pagebb");
        if (format.nonBreakableLines())
            m_body.word("keep");
        if (format.headingLevel() > 0 && format.headingLevel() <= 9)
            m_body.word("outlinelevel", format.headingLevel() - 1);
        if (shows(format, QTextFormat::BackgroundBrush))
            m_body.word("cbpat", colourIndex(format.background().color()));

        const QList<QTextOption::Tab> tabs = format.tabPositions();
        for (const QTextOption::Tab &tab : tabs) {
            switch (tab.type) {
            case QTextOption::RightTab:
                m_body.word("tqr");
                break;
            case QTextOption::CenterTab:
                m_body.word("tqc");
                break;
            case QTextOption::DelimiterTab:
                m_body.word("tqdec");
                break;
            case QTextOption::LeftTab:
                break;
            }
            m_body.word("tx", twips(tab.position));
        }
    }

    qreal pointSize(const QTextCharFormat &format) const
    {
        if (format.hasProperty(QTextFormat::FontPointSize) && format.fontPointSize() > 0)
            return format.fontPointSize();
        if (format.hasProperty(QTextFormat::FontPixelSize) && format.intProperty(QTextFormat::FontPixelSize) > 0)
            return format.intProperty(QTextFormat::FontPixelSize) * 0.75;
        return m_defaultSize;
    }

    void writeCharacterFormat(const QTextCharFormat &format)
    {
        const QStringList families = familiesOf(format);
        m_body.word("f", fontIndex(families.isEmpty() ? m_defaultFamily : families.first()));

        const qreal size = pointSize(format);
        const int halfPoints = qRound(size * 2.0);
        m_body.word("fs", halfPoints);
        const int milli = qRound(size * 1000.0);
        if (milli != halfPoints * 500)
            m_body.word("fsmilli", milli);

        if (format.fontWeight() >= QFont::DemiBold)
            m_body.word("b");
        if (format.fontItalic())
            m_body.word("i");
        switch (format.underlineStyle()) {
        case QTextCharFormat::NoUnderline:
            break;
        case QTextCharFormat::DashUnderline:
            m_body.word("ul");
            m_body.word("uldash");
            break;
        case QTextCharFormat::DotLine:
            m_body.word("ul");
            m_body.word("uld");
            break;
        case QTextCharFormat::DashDotLine:
            m_body.word("ul");
            m_body.word("uldashd");
            break;
        case QTextCharFormat::DashDotDotLine:
            m_body.word("ul");
            m_body.word("uldashdd");
            break;
        case QTextCharFormat::WaveUnderline:
            m_body.word("ul");
            m_body.word("ulwave");
            break;
        default:
            m_body.word("ul");
            break;
        }
        if (format.fontStrikeOut())
            m_body.word("strike");
        if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript)
            m_body.word("super");
        else if (format.verticalAlignment() == QTextCharFormat::AlignSubScript)
            m_body.word("sub");
        if (format.fontCapitalization() == QFont::AllUppercase)
            m_body.word("caps");
        else if (format.fontCapitalization() == QFont::SmallCaps)
            m_body.word("scaps");
        if (shows(format, QTextFormat::ForegroundBrush))
            m_body.word("cf", colourIndex(format.foreground().color()));
        if (shows(format, QTextFormat::BackgroundBrush)) {
            // TextEdit reads the background from \cb, LibreOffice from the
            // shading colour \chcbpat.
            const int index = colourIndex(format.background().color());
            m_body.word("cb", index);
            m_body.word("chcbpat", index);
        }
    }

    void writeFragment(const QTextFragment &fragment)
    {
        const QTextCharFormat format = fragment.charFormat();
        const QString text = fragment.text();
        if (format.isImageFormat()) {
            // Equal neighbouring pictures share one fragment: one object
            // replacement character each.
            for (const QChar c : text) {
                if (c == QChar::ObjectReplacementCharacter)
                    writePicture(format.toImageFormat());
            }
            return;
        }
        const QString href = format.isAnchor() ? format.anchorHref() : QString();
        if (!href.isEmpty()) {
            m_body.open();
            m_body.word("field");
            m_body.open();
            m_body.raw("\\*");
            m_body.word("fldinst");
            m_body.open();
            QString quoted = href;
            quoted.replace(QLatin1Char('"'), QLatin1String("%22"));
            m_body.text(QLatin1String("HYPERLINK \"") + quoted + QLatin1Char('"'));
            m_body.close();
            m_body.close();
            m_body.open();
            m_body.word("fldrslt");
        }
        m_body.open();
        writeCharacterFormat(format);
        m_body.text(text);
        m_body.close();
        if (!href.isEmpty()) {
            m_body.close();
            m_body.close();
        }
    }

    void writePicture(const QTextImageFormat &format)
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
    QString attachmentFor(const QString &resourceName, const Picture &picture)
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

    // Column right edges in twips from the table's width constraints: fixed
    // widths as given, percentages of the table's width, and what is left
    // shared equally by the others.
    QList<int> columnEdges(const QTextTable *table) const
    {
        const QTextTableFormat format = table->format();
        const int columns = table->columns();
        int tableWidth = kDefaultTableWidthTwips;
        if (format.width().type() == QTextLength::FixedLength && format.width().rawValue() > 0)
            tableWidth = twips(format.width().rawValue());
        else if (format.width().type() == QTextLength::PercentageLength && format.width().rawValue() > 0)
            tableWidth = qRound(kDefaultTableWidthTwips * qMin<qreal>(format.width().rawValue(), 100.0) / 100.0);

        QList<QTextLength> constraints = format.columnWidthConstraints();
        QList<int> widths(columns, 0);
        int given = 0;
        int open = 0;
        for (int c = 0; c < columns; ++c) {
            const QTextLength length = c < constraints.size() ? constraints.at(c) : QTextLength();
            if (length.type() == QTextLength::FixedLength && length.rawValue() > 0)
                widths[c] = twips(length.rawValue());
            else if (length.type() == QTextLength::PercentageLength && length.rawValue() > 0)
                widths[c] = qRound(tableWidth * qMin<qreal>(length.rawValue(), 100.0) / 100.0);
            if (widths[c] > 0)
                given += widths[c];
            else
                ++open;
        }
        const int share = open > 0 ? qMax(360, (tableWidth - given) / open) : 0;
        QList<int> edges;
        int edge = 0;
        for (int c = 0; c < columns; ++c) {
            edge += widths[c] > 0 ? widths[c] : share;
            edges.append(edge);
        }
        return edges;
    }

    void writeTable(QTextTable *table)
    {
        const QTextTableFormat format = table->format();
        const QList<int> edges = columnEdges(table);
        const bool borders = format.border() > 0 && format.borderStyle() != QTextFrameFormat::BorderStyle_None;
        const int borderWidth = qBound(1, twips(format.border()), 75);

        for (int row = 0; row < table->rows(); ++row) {
            // Every column has a cell of its own in every row, so that the
            // columns line up in any reader: a cell spanning columns starts
            // with \clmgf and goes on in \clmrg cells, a cell spanning rows
            // starts with \clvmgf and goes on in \clvmrg cells below.
            QList<QTextTableCell> cells;
            for (int column = 0; column < table->columns(); ++column)
                cells.append(table->cellAt(row, column));

            m_body.word("trowd");
            m_body.word("trgaph", twips(qMax<qreal>(0, format.cellPadding())));
            m_body.word("trleft", 0);
            const Qt::Alignment horizontal = format.alignment() & Qt::AlignHorizontal_Mask;
            if (horizontal & Qt::AlignHCenter)
                m_body.word("trqc");
            else if (horizontal & Qt::AlignRight)
                m_body.word("trqr");
            m_body.newline();
            for (int column = 0; column < cells.size(); ++column) {
                const QTextTableCell &cell = cells.at(column);
                if (cell.isValid()) {
                    if (cell.row() != row)
                        m_body.word("clvmrg");
                    else if (cell.rowSpan() > 1)
                        m_body.word("clvmgf");
                    if (cell.column() != column)
                        m_body.word("clmrg");
                    else if (cell.columnSpan() > 1)
                        m_body.word("clmgf");
                }
                if (borders) {
                    for (const char *side : {"clbrdrt", "clbrdrl", "clbrdrb", "clbrdrr"}) {
                        m_body.word(side);
                        m_body.word("brdrs");
                        m_body.word("brdrw", borderWidth);
                    }
                }
                const QTextTableCellFormat cellFormat = cell.format().toTableCellFormat();
                if (cell.isValid() && shows(cellFormat, QTextFormat::BackgroundBrush))
                    m_body.word("clcbpat", colourIndex(cellFormat.background().color()));
                m_body.word("cellx", edges.at(column));
                m_body.newline();
            }
            for (int column = 0; column < cells.size(); ++column) {
                const QTextTableCell &cell = cells.at(column);
                QList<Item> items;
                if (cell.isValid() && cell.row() == row && cell.column() == column)
                    collectCell(cell, items);
                if (items.isEmpty()) {
                    m_body.word("pard");
                    m_body.word("intbl");
                    m_body.word("cell");
                    m_body.newline();
                    continue;
                }
                for (qsizetype i = 0; i < items.size(); ++i)
                    writeParagraph(items.at(i).block, true, i + 1 == items.size() ? End::Cell : End::Paragraph);
            }
            m_body.word("row");
            m_body.newline();
        }
    }

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

}  // namespace

namespace RtfWriter {

RtfWriteResult writeRtf(const QTextDocument &document)
{
    return Writer(document, false).write();
}

RtfWriteResult writePackage(const QTextDocument &document)
{
    return Writer(document, true).write();
}

}  // namespace RtfWriter
