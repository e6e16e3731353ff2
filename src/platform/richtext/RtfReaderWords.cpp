// What a control word does, by the group of keywords it belongs to.
#include "platform/richtext/RtfReaderState.h"

#include <QTextDocument>

namespace rtf::reading {

void Reader::fontTableWord(Keyword keyword, const Token &token)
{
    switch (keyword) {
    case Keyword::Font:
        finishFontEntry();
        m_fontNumber = token.param;
        break;
    case Keyword::FontCharset:
        if (!m_fontCodePageGiven)
            m_fontEntry.codePage = codePageForCharset(token.param);
        break;
    case Keyword::FontCodePage:
        m_fontEntry.codePage = token.param;
        m_fontCodePageGiven = true;
        break;
    default:
        break;
    }
}

void Reader::pictureWord(Keyword keyword, const Token &token)
{
    switch (keyword) {
    case Keyword::PngBlip:
    case Keyword::JpegBlip:
    case Keyword::OtherBlip:
        m_picture.blip = keyword;
        break;
    case Keyword::PictureGoalWidth:
        m_picture.goalWidth = clampTwips(token.param);
        break;
    case Keyword::PictureGoalHeight:
        m_picture.goalHeight = clampTwips(token.param);
        break;
    case Keyword::PictureScaleX:
        m_picture.scaleX = std::clamp(token.param, 1, 10000);
        break;
    case Keyword::PictureScaleY:
        m_picture.scaleY = std::clamp(token.param, 1, 10000);
        break;
    case Keyword::Picture:
    case Keyword::NeXTGraphic:
        skipGroup();
        break;
    default:
        break;
    }
}

// A control word in the document's text, acted on by its group of keywords.
// Words of the font and colour tables, pictures and attachments mean nothing
// here and are passed over.
void Reader::textWord(Keyword keyword, const Token &token)
{
    switch (groupOf(keyword)) {
    case KeywordGroup::Document:
        documentWord(keyword, token);
        break;
    case KeywordGroup::Destination:
        destinationWord(keyword);
        break;
    case KeywordGroup::Character:
        characterWord(keyword, token);
        break;
    case KeywordGroup::Paragraph:
        paragraphWord(keyword, token);
        break;
    case KeywordGroup::Break:
        breakWord(keyword);
        break;
    case KeywordGroup::Table:
        tableWord(keyword, token);
        break;
    case KeywordGroup::None:
    case KeywordGroup::FontTable:
    case KeywordGroup::ColourTable:
    case KeywordGroup::Picture:
    case KeywordGroup::Attachment:
        break;
    }
}

// The document's character set, default font and tab stops.
void Reader::documentWord(Keyword keyword, const Token &token)
{
    GroupState &state = top();
    CharState &c = state.character;
    const int param = token.param;
    switch (keyword) {
    case Keyword::Ansi:
        m_documentCodePage = codePageWindowsLatin1;
        break;
    case Keyword::Mac:
        m_documentCodePage = codePageMacRoman;
        break;
    case Keyword::Pc:
        m_documentCodePage = 437;
        break;
    case Keyword::Pca:
        m_documentCodePage = 850;
        break;
    case Keyword::AnsiCodePage:
        if (token.hasParam && param > 0)
            m_documentCodePage = param;
        break;
    case Keyword::DefaultFont:
        m_defaultFont = param;
        c.font = param;
        break;
    case Keyword::DefaultTab:
        if (param > 0) {
            QTextOption option = m_document.defaultTextOption();
            option.setTabStopDistance(std::min(param, maxTwips) / twipsPerUnit);
            m_document.setDefaultTextOption(option);
        }
        break;
    default:
        break;
    }
}

// A group that starts a table of the header, a picture, an attachment or a field.
void Reader::destinationWord(Keyword keyword)
{
    GroupState &state = top();
    CharState &c = state.character;
    switch (keyword) {
    case Keyword::FontTable:
        startDestination(Destination::FontTable);
        m_fontNumber = -1;
        break;
    case Keyword::ColourTable:
        startDestination(Destination::ColourTable);
        m_colours.clear();
        m_red = m_green = m_blue = -1;
        break;
    case Keyword::Picture:
        if (m_picture.active) {
            skipGroup();
        } else {
            startDestination(Destination::Picture);
            m_picture = PictureState();
            m_picture.active = true;
        }
        break;
    case Keyword::NeXTGraphic:
        if (m_attachment.active) {
            skipGroup();
        } else {
            startDestination(Destination::Attachment);
            m_attachment = AttachmentState();
            m_attachment.active = true;
            m_attachment.codePage = codePageOf(c);
        }
        break;
    case Keyword::Field:
        m_fields.push_back(Field());
        state.field = int(m_fields.size()) - 1;
        break;
    case Keyword::FieldInstruction:
        if (state.field < 0)
            skipGroup();
        else
            startDestination(Destination::FieldInstruction);
        break;
    case Keyword::FieldResult:
        if (state.field >= 0 && !m_fields[size_t(state.field)].href.isEmpty())
            c.link = state.field;
        break;
    default:
        break;
    }
}

// Character formatting of the group.
void Reader::characterWord(Keyword keyword, const Token &token)
{
    GroupState &state = top();
    CharState &c = state.character;
    const int param = token.param;
    const bool on = !token.hasParam || param != 0;
    switch (keyword) {
    case Keyword::Plain: {
        const int link = c.link;
        c = CharState();
        c.font = m_defaultFont;
        c.link = link;
        break;
    }
    case Keyword::Bold:
        c.bold = on;
        break;
    case Keyword::Italic:
        c.italic = on;
        break;
    case Keyword::Underline:
        c.underline = on ? QTextCharFormat::SingleUnderline : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineDotted:
        c.underline = on ? QTextCharFormat::DotLine : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineDashed:
        c.underline = on ? QTextCharFormat::DashUnderline : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineDashDot:
        c.underline = on ? QTextCharFormat::DashDotLine : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineDashDotDot:
        c.underline = on ? QTextCharFormat::DashDotDotLine : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineWave:
        c.underline = on ? QTextCharFormat::WaveUnderline : QTextCharFormat::NoUnderline;
        break;
    case Keyword::UnderlineNone:
        c.underline = QTextCharFormat::NoUnderline;
        break;
    case Keyword::Strike:
    case Keyword::StrikeDouble:
        c.strike = on;
        break;
    case Keyword::Super:
        c.vertical = on ? 1 : 0;
        break;
    case Keyword::Sub:
        c.vertical = on ? 2 : 0;
        break;
    case Keyword::NoSuperSub:
        c.vertical = 0;
        break;
    case Keyword::Up:
        c.vertical = on ? 1 : 0;
        break;
    case Keyword::Down:
        c.vertical = on ? 2 : 0;
        break;
    case Keyword::Font:
        c.font = param;
        break;
    case Keyword::FontSize:
        c.halfPoints = token.hasParam ? std::clamp(param, 2, 3276) : 24;
        c.milli = 0;
        break;
    case Keyword::FontSizeMilli:
        c.milli = param > 0 ? std::clamp(param, 1000, 1638000) : 0;
        break;
    case Keyword::Foreground:
        c.foreground = param;
        break;
    case Keyword::Background:
        c.background = param;
        break;
    case Keyword::Hidden:
        c.hidden = on;
        break;
    case Keyword::Caps:
        c.caps = on ? 1 : 0;
        break;
    case Keyword::SmallCaps:
        c.caps = on ? 2 : 0;
        break;
    default:
        break;
    }
}

// Paragraph formatting of the group.
void Reader::paragraphWord(Keyword keyword, const Token &token)
{
    GroupState &state = top();
    ParaState &p = state.paragraph;
    const int param = token.param;
    const bool on = !token.hasParam || param != 0;
    switch (keyword) {
    case Keyword::ParagraphDefaults:
        p = ParaState();
        break;
    case Keyword::AlignLeft:
        p.alignment = 0;
        break;
    case Keyword::AlignRight:
        p.alignment = 1;
        break;
    case Keyword::AlignCentre:
        p.alignment = 2;
        break;
    case Keyword::AlignJustify:
        p.alignment = 3;
        break;
    case Keyword::LeftIndent:
        p.leftIndent = clampTwips(param);
        break;
    case Keyword::RightIndent:
        p.rightIndent = clampTwips(param);
        break;
    case Keyword::FirstIndent:
        p.firstIndent = clampTwips(param);
        break;
    case Keyword::SpaceBefore:
        p.spaceBefore = clampTwips(param);
        break;
    case Keyword::SpaceAfter:
        p.spaceAfter = clampTwips(param);
        break;
    case Keyword::LineSpacing:
        p.lineSpacing = clampTwips(param);
        break;
    case Keyword::LineSpacingMultiple:
        p.lineMultiple = on;
        break;
    case Keyword::TabRight:
        p.tabType = QTextOption::RightTab;
        break;
    case Keyword::TabCentre:
        p.tabType = QTextOption::CenterTab;
        break;
    case Keyword::TabDecimal:
        p.tabType = QTextOption::DelimiterTab;
        break;
    case Keyword::TabPosition:
    case Keyword::BarTab:
        if (p.tabs.size() < maxTabStops && param >= 0) {
            const QChar delimiter = p.tabType == QTextOption::DelimiterTab ? QLatin1Char('.') : QChar();
            p.tabs.append(QTextOption::Tab(clampTwips(param) / twipsPerUnit, p.tabType, delimiter));
        }
        p.tabType = QTextOption::LeftTab;
        break;
    case Keyword::InTable:
        p.inTable = on;
        break;
    case Keyword::TableLevel:
        p.inTable = param > 0;
        break;
    case Keyword::ParagraphBackground:
        p.background = param;
        break;
    case Keyword::PageBreakBefore:
        p.pageBreakBefore = on;
        break;
    default:
        break;
    }
}

// Special characters, and the ends of paragraphs, lines and pages.
void Reader::breakWord(Keyword keyword)
{
    switch (keyword) {
    case Keyword::Paragraph:
    case Keyword::Section:
        endParagraph();
        break;
    case Keyword::Page:
        endParagraph();
        m_pageBreakPending = true;
        break;
    case Keyword::Line:
        character(QChar::LineSeparator);
        break;
    case Keyword::Tab:
        character(U'\t');
        break;
    case Keyword::EmDash:
        character(0x2014);
        break;
    case Keyword::EnDash:
        character(0x2013);
        break;
    case Keyword::EmSpace:
        character(0x2003);
        break;
    case Keyword::EnSpace:
        character(0x2002);
        break;
    case Keyword::QuarterSpace:
        character(0x2005);
        break;
    case Keyword::Bullet:
        character(0x2022);
        break;
    case Keyword::LeftQuote:
        character(0x2018);
        break;
    case Keyword::RightQuote:
        character(0x2019);
        break;
    case Keyword::LeftDoubleQuote:
        character(0x201C);
        break;
    case Keyword::RightDoubleQuote:
        character(0x201D);
        break;
    case Keyword::ZeroWidthJoiner:
        character(0x200D);
        break;
    case Keyword::ZeroWidthNonJoiner:
        character(0x200C);
        break;
    case Keyword::LeftToRightMark:
        character(0x200E);
        break;
    case Keyword::RightToLeftMark:
        character(0x200F);
        break;
    default:
        break;
    }
}

// Row and cell definitions, and the ends of cells and rows.
void Reader::tableWord(Keyword keyword, const Token &token)
{
    GroupState &state = top();
    CharState &c = state.character;
    ParaState &p = state.paragraph;
    const int param = token.param;
    switch (keyword) {
    case Keyword::RowDefaults:
        m_row = RtfRowDefinition();
        m_cell = RtfCellDefinition();
        m_cellBorderPending = false;
        break;
    case Keyword::CellEdge:
        m_cell.rightEdge = clampTwips(param);
        if (m_row.cells.size() < maxCellDefinitions)
            m_row.cells.append(m_cell);
        m_cell = RtfCellDefinition();
        m_cellBorderPending = false;
        break;
    case Keyword::Cell:
        endCell();
        break;
    case Keyword::Row:
        endRow();
        break;
    case Keyword::NestedCell:
    case Keyword::NestedRow:
        // Tables inside tables are read flat: their cells become
        // paragraphs of the outer cell.
        flushRun();
        m_builder->endParagraph(blockFormat(p), charFormat(c), true);
        break;
    case Keyword::RowGap:
        m_row.gap = std::clamp(param, 0, 20 * 200);
        break;
    case Keyword::RowLeft:
        m_row.left = clampTwips(param);
        break;
    case Keyword::RowLeftAligned:
        m_row.alignment = Qt::AlignLeft;
        break;
    case Keyword::RowCentred:
        m_row.alignment = Qt::AlignHCenter;
        break;
    case Keyword::RowRightAligned:
        m_row.alignment = Qt::AlignRight;
        break;
    case Keyword::CellBorder:
        m_cellBorderPending = true;
        break;
    case Keyword::BorderVisible:
        if (m_cellBorderPending)
            m_row.borders = true;
        m_cellBorderPending = false;
        break;
    case Keyword::BorderNone:
        m_cellBorderPending = false;
        break;
    case Keyword::CellBackground:
        m_cell.background = colour(param);
        break;
    case Keyword::CellMergeFirst:
        m_cell.mergeFirst = true;
        break;
    case Keyword::CellMerged:
        m_cell.merged = true;
        break;
    case Keyword::CellVerticalFirst:
        m_cell.verticalFirst = true;
        break;
    case Keyword::CellVerticalMerged:
        m_cell.verticalMerged = true;
        break;
    default:
        break;
    }
}

}  // namespace rtf::reading
