// Text of the document: bytes decoded in the group's code page, \u characters,
// and the runs and paragraphs they make with their formats.
#include "platform/richtext/RtfReaderState.h"

#include <QFont>
#include <QTextDocument>

namespace rtf::reading {

void Reader::textBytes(QByteArrayView bytes)
{
    GroupState &state = top();
    if (state.destination == Destination::Skip)
        return;
    if (state.starred) {
        state.starred = false;
        skipGroup();
        return;
    }
    if (m_unicodeSkipLeft > 0) {
        const qsizetype skip = std::min<qsizetype>(m_unicodeSkipLeft, bytes.size());
        m_unicodeSkipLeft -= int(skip);
        bytes = bytes.sliced(skip);
    }
    if (bytes.isEmpty())
        return;

    switch (state.destination) {
    case Destination::Text: {
        if (state.placeholderPending) {
            state.placeholderPending = false;
            if (static_cast<unsigned char>(bytes.front()) == 0xAC)
                bytes = bytes.sliced(1);
        }
        if (state.character.hidden || bytes.isEmpty())
            return;
        resolveSurrogate();
        ensureFormat();
        const int codePage = codePageOf(state.character);
        if (codePage != m_pendingCodePage) {
            flushBytes();
            m_pendingCodePage = codePage;
        }
        m_characters += bytes.size();
        if (m_characters > RtfReader::maxCharacters) {
            m_stopped = true;
            return;
        }
        m_pendingBytes.append(bytes);
        break;
    }
    case Destination::FontTable:
        for (const char byte : bytes) {
            if (byte == ';')
                finishFontEntry();
            else if (m_fontName.size() + m_fontText.size() < maxFontNameBytes)
                m_fontName.append(byte);
        }
        break;
    case Destination::ColourTable:
        for (const char byte : bytes) {
            if (byte == ';')
                finishColour();
        }
        break;
    case Destination::Picture:
        if (m_picture.tooLarge)
            break;
        for (const char byte : bytes) {
            const int digit = rtf::hexValue(byte);
            if (digit < 0)
                continue;
            if (m_picture.nibble < 0) {
                m_picture.nibble = digit;
                continue;
            }
            if (m_picture.data.size() >= RtfReader::maxPictureBytes) {
                m_picture.tooLarge = true;
                m_picture.data.clear();
                break;
            }
            m_picture.data.append(char(m_picture.nibble * 16 + digit));
            m_picture.nibble = -1;
        }
        break;
    case Destination::Attachment:
        if (!m_attachment.nameDone
            && m_attachment.pendingName.size() + m_attachment.name.size() < maxAttachmentNameBytes)
            m_attachment.pendingName.append(bytes);
        break;
    case Destination::FieldInstruction: {
        Field &field = m_fields[size_t(state.field)];
        const qsizetype room = maxFieldInstructionBytes - field.instruction.size() - field.pending.size();
        if (room > 0) {
            if (field.pending.isEmpty())
                field.codePage = codePageOf(state.character);
            field.pending.append(bytes.first(std::min(bytes.size(), room)));
        }
        break;
    }
    case Destination::Skip:
        break;
    }
}

void Reader::unicode(int value)
{
    GroupState &state = top();
    m_unicodeSkipLeft = state.unicodeSkip;
    qint64 code = value;
    if (code < 0)
        code += 65536;
    if (code <= 0 || code > 0x10FFFF)
        return;
    if (state.destination == Destination::Text && state.placeholderPending) {
        state.placeholderPending = false;
        if (code == 0xAC)
            return;
    }
    if (code >= 0xD800 && code <= 0xDBFF) {
        resolveSurrogate();
        m_highSurrogate = char16_t(code);
        return;
    }
    if (code >= 0xDC00 && code <= 0xDFFF) {
        if (m_highSurrogate) {
            const char32_t full = QChar::surrogateToUcs4(m_highSurrogate, char16_t(code));
            m_highSurrogate = 0;
            character(full);
        } else {
            character(QChar::ReplacementCharacter);
        }
        return;
    }
    character(char32_t(code));
}

void Reader::character(char32_t c)
{
    GroupState &state = top();
    switch (state.destination) {
    case Destination::Text:
        if (state.placeholderPending) {
            state.placeholderPending = false;
            if (c == 0xAC)
                return;
        }
        if (state.character.hidden)
            return;
        resolveSurrogate();
        appendCharacter(c);
        break;
    case Destination::FieldInstruction: {
        resolveSurrogate();
        Field &field = m_fields[size_t(state.field)];
        if (isShownCharacter(c) && field.instruction.size() + field.pending.size() < maxFieldInstructionBytes) {
            field.instruction += m_decoder.decode(field.pending, field.codePage);
            field.pending.clear();
            field.instruction += QString::fromUcs4(&c, 1);
        }
        break;
    }
    case Destination::FontTable:
        resolveSurrogate();
        if (c >= 0x20 && m_fontName.size() + m_fontText.size() < maxFontNameBytes) {
            m_fontText += m_decoder.decode(m_fontName, fontEntryCodePage());
            m_fontName.clear();
            m_fontText += QString::fromUcs4(&c, 1);
        }
        break;
    case Destination::Attachment:
        resolveSurrogate();
        if (!m_attachment.nameDone && c >= 0x20 && m_attachment.name.size() < maxAttachmentNameBytes) {
            m_attachment.name += m_decoder.decode(m_attachment.pendingName, m_attachment.codePage);
            m_attachment.pendingName.clear();
            m_attachment.name += QString::fromUcs4(&c, 1);
        }
        break;
    default:
        break;
    }
}

// ---------------------------------------------------------------- output

void Reader::resolveSurrogate()
{
    if (!m_highSurrogate)
        return;
    m_highSurrogate = 0;
    character(QChar::ReplacementCharacter);
}

void Reader::appendCharacter(char32_t c)
{
    if (c == QChar::ParagraphSeparator)
        c = QChar::LineSeparator;
    if (!isShownCharacter(c))
        return;
    ensureFormat();
    flushBytes();
    if (++m_characters > RtfReader::maxCharacters) {
        m_stopped = true;
        return;
    }
    if (QChar::requiresSurrogates(c)) {
        m_runText += QChar(QChar::highSurrogate(c));
        m_runText += QChar(QChar::lowSurrogate(c));
    } else {
        m_runText += QChar(char16_t(c));
    }
}

void Reader::ensureFormat()
{
    const CharState &state = top().character;
    if (m_haveFormat && state == m_formatState)
        return;
    flushRun();
    m_runFormat = charFormat(state);
    m_formatState = state;
    m_haveFormat = true;
}

void Reader::flushBytes()
{
    if (m_pendingBytes.isEmpty())
        return;
    m_runText += m_decoder.decode(m_pendingBytes, m_pendingCodePage);
    m_pendingBytes.clear();
}

void Reader::flushRun()
{
    flushBytes();
    if (m_runText.isEmpty())
        return;
    m_builder->addText(m_runText, m_runFormat);
    m_runText.clear();
}

void Reader::endParagraph()
{
    resolveSurrogate();
    flushRun();
    const GroupState &state = top();
    m_builder->endParagraph(blockFormat(state.paragraph), charFormat(state.character), state.paragraph.inTable);
}

void Reader::endCell()
{
    resolveSurrogate();
    flushRun();
    const GroupState &state = top();
    m_builder->endCell(blockFormat(state.paragraph), charFormat(state.character));
}

void Reader::endRow()
{
    resolveSurrogate();
    flushRun();
    m_builder->endRow(m_row);
}

QColor Reader::colour(int index) const
{
    if (index < 0 || index >= m_colours.size())
        return QColor();
    return m_colours.at(index);
}

int Reader::codePageOf(const CharState &state) const
{
    const auto font = m_fonts.constFind(state.font);
    if (font != m_fonts.constEnd() && font->codePage != codePageUnknown)
        return font->codePage;
    return m_documentCodePage;
}

QTextCharFormat Reader::charFormat(const CharState &state) const
{
    QTextCharFormat format;
    bool bold = state.bold;
    bool italic = state.italic;
    const auto font = m_fonts.constFind(state.font);
    if (font != m_fonts.constEnd()) {
        if (!font->family.isEmpty())
            format.setFontFamilies(QStringList{font->family});
        bold = bold || font->bold;
        italic = italic || font->italic;
    }
    format.setFontPointSize(state.milli > 0 ? state.milli / 1000.0 : state.halfPoints / 2.0);
    if (bold)
        format.setFontWeight(QFont::Bold);
    if (italic)
        format.setFontItalic(true);
    if (state.underline != QTextCharFormat::NoUnderline) {
        format.setUnderlineStyle(QTextCharFormat::UnderlineStyle(state.underline));
    }
    if (state.strike)
        format.setFontStrikeOut(true);
    if (state.vertical == 1)
        format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    else if (state.vertical == 2)
        format.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    const QColor foreground = colour(state.foreground);
    if (foreground.isValid())
        format.setForeground(foreground);
    const QColor background = colour(state.background);
    if (background.isValid())
        format.setBackground(background);
    if (state.caps == 1)
        format.setFontCapitalization(QFont::AllUppercase);
    else if (state.caps == 2)
        format.setFontCapitalization(QFont::SmallCaps);
    if (state.link >= 0 && size_t(state.link) < m_fields.size()) {
        format.setAnchor(true);
        format.setAnchorHref(m_fields[size_t(state.link)].href);
    }
    return format;
}

QTextBlockFormat Reader::blockFormat(const ParaState &state)
{
    QTextBlockFormat format;
    switch (state.alignment) {
    case 1:
        format.setAlignment(Qt::AlignRight);
        break;
    case 2:
        format.setAlignment(Qt::AlignHCenter);
        break;
    case 3:
        format.setAlignment(Qt::AlignJustify);
        break;
    default:
        break;
    }
    if (state.leftIndent)
        format.setLeftMargin(state.leftIndent / twipsPerUnit);
    if (state.rightIndent)
        format.setRightMargin(state.rightIndent / twipsPerUnit);
    if (state.firstIndent)
        format.setTextIndent(state.firstIndent / twipsPerUnit);
    if (state.spaceBefore)
        format.setTopMargin(state.spaceBefore / twipsPerUnit);
    if (state.spaceAfter)
        format.setBottomMargin(state.spaceAfter / twipsPerUnit);
    if (state.lineSpacing > 0 && state.lineMultiple)
        format.setLineHeight(state.lineSpacing * 100.0 / 240.0, QTextBlockFormat::ProportionalHeight);
    else if (state.lineSpacing < 0)
        format.setLineHeight(-state.lineSpacing / twipsPerUnit, QTextBlockFormat::FixedHeight);
    else if (state.lineSpacing > 0)
        format.setLineHeight(state.lineSpacing / twipsPerUnit, QTextBlockFormat::MinimumHeight);
    if (!state.tabs.isEmpty())
        format.setTabPositions(state.tabs);
    const QColor background = colour(state.background);
    if (state.background > 0 && background.isValid())
        format.setBackground(background);
    if (state.pageBreakBefore || m_pageBreakPending) {
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        m_pageBreakPending = false;
    }
    return format;
}

}  // namespace rtf::reading
