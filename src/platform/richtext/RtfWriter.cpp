#include "platform/richtext/RtfWriter.h"

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

// Whether the format paints with the brush: set, with a pattern, and not
// fully transparent (HTML's "transparent" comes as such a brush).
bool shows(const QTextFormat &format, QTextFormat::Property property)
{
    if (!format.hasProperty(property))
        return false;
    const QBrush brush = format.brushProperty(property);
    return brush.style() != Qt::NoBrush && brush.color().alpha() > 0;
}

namespace {

QStringList familiesOf(const QTextCharFormat &format)
{
    QStringList families = format.property(QTextFormat::FontFamilies).toStringList();
    families.removeAll(QString());
    return families;
}

}  // namespace

RtfWriteResult Writer::write()
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

int Writer::fontIndex(const QString &family)
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
int Writer::colourIndex(const QColor &colour)
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
void Writer::collect(QTextFrame *frame, QList<Item> &items, bool flattenTables)
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

void Writer::writeFrame(QTextFrame *frame)
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

void Writer::writeParagraph(const QTextBlock &block, bool inTable, End end)
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

QString Writer::listMarker(QTextList *list, const QTextBlock &block)
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

void Writer::writeParagraphFormat(const QTextBlockFormat &format, QTextList *list)
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
            first = -qMin<qreal>(unitsPerInch / 4, left);
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

qreal Writer::pointSize(const QTextCharFormat &format) const
{
    if (format.hasProperty(QTextFormat::FontPointSize) && format.fontPointSize() > 0)
        return format.fontPointSize();
    if (format.hasProperty(QTextFormat::FontPixelSize) && format.intProperty(QTextFormat::FontPixelSize) > 0)
        return format.intProperty(QTextFormat::FontPixelSize) * 0.75;
    return m_defaultSize;
}

void Writer::writeCharacterFormat(const QTextCharFormat &format)
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

void Writer::writeFragment(const QTextFragment &fragment)
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

}  // namespace rtf::writing

namespace RtfWriter {

RtfWriteResult writeRtf(const QTextDocument &document)
{
    return rtf::writing::Writer(document, false).write();
}

RtfWriteResult writePackage(const QTextDocument &document)
{
    return rtf::writing::Writer(document, true).write();
}

}  // namespace RtfWriter
