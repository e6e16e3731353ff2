#include "platform/richtext/RtfReader.h"

#include "platform/richtext/RtfReaderState.h"

#include <QTextDocument>

namespace rtf::reading {

void Reader::note(const QString &line)
{
    if (m_noted.contains(line))
        return;
    if (m_skipped.size() >= maxSkippedLines) {
        if (m_skipped.size() == maxSkippedLines)
            m_skipped.append(QStringLiteral("further problems not listed"));
        return;
    }
    m_noted.insert(line);
    m_skipped.append(line);
}

bool Reader::read()
{
    // "{\rtf" at the start, after any white space.
    const QByteArrayView rest = m_tokens.rest();
    qsizetype start = 0;
    while (start < rest.size()
           && (rest[start] == ' ' || rest[start] == '\t' || rest[start] == '\r' || rest[start] == '\n'))
        ++start;
    if (!rest.sliced(start).startsWith("{\\rtf"))
        return false;

    m_builder.emplace(m_document);
    m_stack.reserve(64);
    GroupState last;
    bool closed = false;
    for (;;) {
        const Token token = m_tokens.next();
        if (token.type == TokenType::End)
            break;
        if (m_stack.empty()) {
            if (token.type == TokenType::GroupOpen) {
                m_stack.emplace_back();
            }
            continue;
        }
        switch (token.type) {
        case TokenType::GroupOpen:
            openGroup();
            break;
        case TokenType::GroupClose:
            if (m_overflow > 0) {
                --m_overflow;
                break;
            }
            if (m_skipDepth > 0) {
                --m_skipDepth;
                break;
            }
            if (m_stack.size() == 1) {
                flushBytes();
                last = m_stack.back();
                closeGroup();
                closed = true;
            } else {
                closeGroup();
            }
            break;
        case TokenType::ControlWord:
            if (token.longWord)
                note(QStringLiteral("control word of more than %1 letters cut").arg(RtfTokenizer::maxWordLength));
            if (token.longNumber)
                note(QStringLiteral("number of more than %1 digits cut").arg(RtfTokenizer::maxNumberDigits));
            if (m_overflow > 0) {
                if (token.text == "bin" && token.hasParam)
                    m_tokens.takeBytes(token.param);
                break;
            }
            controlWord(token);
            break;
        case TokenType::ControlSymbol:
            if (m_overflow == 0)
                controlSymbol(token.symbol);
            break;
        case TokenType::HexByte:
            if (m_overflow == 0) {
                const char byte = char(token.byte);
                textBytes(QByteArrayView(&byte, 1));
            }
            break;
        case TokenType::Text:
            if (m_overflow == 0)
                textBytes(token.text);
            break;
        case TokenType::End:
            break;
        }
        if (closed || m_stopped)
            break;
    }

    if (m_stopped) {
        note(QStringLiteral("text beyond %1 characters skipped").arg(RtfReader::maxCharacters));
        last = m_stack.empty() ? GroupState() : m_stack.front();
    } else if (!closed) {
        note(QStringLiteral("missing closing brace"));
        // Close what is open, so that a picture or field in progress ends.
        m_overflow = 0;
        m_skipDepth = 0;
        while (m_stack.size() > 1)
            closeGroup();
        if (!m_stack.empty()) {
            flushBytes();
            last = m_stack.back();
        }
    } else {
        const QByteArrayView after = m_tokens.rest();
        for (const char c : after) {
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '\0') {
                note(QStringLiteral("text after the final brace ignored"));
                break;
            }
        }
    }
    finish(last);
    return true;
}

void Reader::finish(const GroupState &last)
{
    // What is still pending goes out in the state of the outermost group.
    if (m_stack.empty())
        m_stack.push_back(last);
    resolveSurrogate();
    flushRun();
    const QTextCharFormat mark = charFormat(last.character);
    m_builder->finish(blockFormat(last.paragraph), mark, last.paragraph.inTable);
    m_builder.reset();
}

// ---------------------------------------------------------------- groups

void Reader::openGroup()
{
    if (m_overflow > 0) {
        ++m_overflow;
        return;
    }
    if (top().destination == Destination::Skip) {
        ++m_skipDepth;
        return;
    }
    m_unicodeSkipLeft = 0;
    flushBytes();
    if (int(m_stack.size()) >= RtfReader::maxDepth) {
        m_overflow = 1;
        note(QStringLiteral("groups nested deeper than %1 skipped").arg(RtfReader::maxDepth));
        return;
    }
    GroupState state = top();
    state.ownsDestination = false;
    state.starred = false;
    state.placeholderPending = false;
    m_stack.push_back(std::move(state));
}

void Reader::closeGroup()
{
    m_unicodeSkipLeft = 0;
    flushBytes();
    const GroupState &group = top();
    bool attachmentEnded = false;
    if (group.destination == Destination::FontTable)
        finishFontEntry();
    if (group.ownsDestination) {
        switch (group.destination) {
        case Destination::Picture:
            finishPicture();
            break;
        case Destination::Attachment:
            finishAttachment();
            attachmentEnded = true;
            break;
        case Destination::FieldInstruction:
            finishFieldInstruction(group.field);
            break;
        default:
            break;
        }
    }
    m_stack.pop_back();
    if (attachmentEnded && !m_stack.empty())
        top().placeholderPending = true;
}

void Reader::startDestination(Destination destination)
{
    GroupState &state = top();
    if (state.destination == destination && state.ownsDestination)
        return;
    if (destination != Destination::Text)
        flushBytes();
    state.destination = destination;
    state.ownsDestination = true;
}

// ---------------------------------------------------------------- tokens

void Reader::binary(int length)
{
    if (length <= 0)
        return;
    const qint64 available = m_tokens.size() - m_tokens.position();
    if (length > available)
        note(QStringLiteral("\\bin data longer than the file"));
    const QByteArrayView bytes = m_tokens.takeBytes(length);
    if (top().destination == Destination::Picture && m_picture.active && !m_picture.tooLarge) {
        if (m_picture.data.size() + bytes.size() > RtfReader::maxPictureBytes)
            m_picture.tooLarge = true;
        else
            m_picture.data.append(bytes);
    }
}

void Reader::controlWord(const Token &token)
{
    const Keyword keyword = keywordFor(token.text);
    GroupState &state = top();
    if (state.destination == Destination::Skip) {
        if (keyword == Keyword::Bin && token.hasParam)
            binary(token.param);
        return;
    }
    if (m_unicodeSkipLeft > 0) {
        // A control word is one unit of the text that stands in for \u.
        --m_unicodeSkipLeft;
        if (keyword == Keyword::Bin && token.hasParam)
            m_tokens.takeBytes(token.param);
        return;
    }
    if (state.starred) {
        state.starred = false;
        switch (keyword) {
        case Keyword::FontTable:
        case Keyword::ColourTable:
        case Keyword::Picture:
        case Keyword::ShapePicture:
        case Keyword::NonShapePicture:
        case Keyword::NeXTGraphic:
        case Keyword::Field:
        case Keyword::FieldInstruction:
        case Keyword::FieldResult:
        case Keyword::SkippedDestination:
        case Keyword::ShownDestination:
            break;
        default:
            note(QStringLiteral("unknown destination \\%1 skipped").arg(QString::fromLatin1(token.text)));
            skipGroup();
            return;
        }
    }

    switch (keyword) {
    case Keyword::Bin:
        binary(token.hasParam ? token.param : 0);
        return;
    case Keyword::UnicodeSkip:
        state.unicodeSkip = std::clamp(token.param, 0, 100);
        return;
    case Keyword::Unicode:
        if (token.hasParam)
            unicode(token.param);
        return;
    case Keyword::SkippedDestination:
    case Keyword::NonShapePicture:
        skipGroup();
        return;
    default:
        break;
    }

    switch (state.destination) {
    case Destination::Text:
        textWord(keyword, token);
        break;
    case Destination::FontTable:
        fontTableWord(keyword, token);
        break;
    case Destination::ColourTable: {
        const int value = std::clamp(token.param, 0, 255);
        if (keyword == Keyword::Red)
            m_red = value;
        else if (keyword == Keyword::Green)
            m_green = value;
        else if (keyword == Keyword::Blue)
            m_blue = value;
        break;
    }
    case Destination::Picture:
        pictureWord(keyword, token);
        break;
    case Destination::Attachment:
        m_attachment.nameDone = true;
        if (keyword == Keyword::AttachmentWidth)
            m_attachment.width = clampTwips(token.param);
        else if (keyword == Keyword::AttachmentHeight)
            m_attachment.height = clampTwips(token.param);
        break;
    case Destination::FieldInstruction:
    case Destination::Skip:
        break;
    }
}

void Reader::controlSymbol(char symbol)
{
    GroupState &state = top();
    if (state.destination == Destination::Skip)
        return;
    if (m_unicodeSkipLeft > 0) {
        --m_unicodeSkipLeft;
        return;
    }
    if (symbol == '*') {
        state.starred = true;
        return;
    }
    if (state.starred) {
        // "\*" must be followed by the destination's word.
        state.starred = false;
        skipGroup();
        return;
    }
    switch (symbol) {
    case '\\':
    case '{':
    case '}':
        textBytes(QByteArrayView(&symbol, 1));
        break;
    case '~':
        character(0x00A0);
        break;
    case '_':
        character(0x2011);
        break;
    case '-':
        character(0x00AD);
        break;
    case '\n':
        if (state.destination == Destination::Text)
            endParagraph();
        break;
    case '\t':
        character(U'\t');
        break;
    default:
        break;
    }
}

}  // namespace rtf::reading

namespace RtfReader {

RtfReadResult read(const QByteArray &rtf, QTextDocument &document, const QString &packageDir)
{
    RtfReadResult result;
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    rtf::reading::Reader reader(rtf, document, packageDir, result.skipped);
    result.ok = reader.read();
    document.setUndoRedoEnabled(undo);
    return result;
}

}  // namespace RtfReader
