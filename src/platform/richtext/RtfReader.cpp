#include "platform/richtext/RtfReader.h"

#include "platform/richtext/RtfCodePages.h"
#include "platform/richtext/RtfReaderBuilder.h"
#include "platform/richtext/RtfReaderKeywords.h"
#include "platform/richtext/RtfReaderPictures.h"
#include "platform/richtext/RtfTokenizer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QHash>
#include <QSet>
#include <QTextDocument>
#include <QTextOption>
#include <QUrl>
#include <algorithm>
#include <optional>
#include <vector>

namespace {

using namespace rtf;

// Lengths beyond this many twips (about 70 m) are taken as this.
constexpr int maxTwips = 2000000;
constexpr int maxTabStops = 64;
// The largest size a picture is shown at, in points (about 3.5 m).
constexpr qreal maxPicturePoints = 10000;
// The smallest, so that no side of a picture shrinks to nothing.
constexpr qreal minPicturePoints = 1;
constexpr qsizetype maxFontNameBytes = 256;
constexpr qsizetype maxFieldInstructionBytes = 4096;
constexpr qsizetype maxAttachmentNameBytes = 1024;
constexpr int maxFonts = 20000;
constexpr int maxColours = 20000;
constexpr int maxCellDefinitions = 1024;
constexpr qsizetype maxSkippedLines = 100;

enum class Destination {
    Text,  // the document's text
    Skip,  // nothing of the group is read (but \bin data is stepped over)
    FontTable,
    ColourTable,
    Picture,  // \pict data
    Attachment,  // \NeXTGraphic file name
    FieldInstruction,  // \fldinst: kept for hyperlinks, not shown
};

struct CharState
{
    int font = -1;
    int halfPoints = 24;
    int milli = 0;  // \fsmilli, thousandths of a point; 0 when not given
    bool bold = false;
    bool italic = false;
    int underline = QTextCharFormat::NoUnderline;
    bool strike = false;
    int vertical = 0;  // 1 superscript, 2 subscript
    int foreground = 0;
    int background = 0;
    bool hidden = false;
    int caps = 0;  // 1 all capitals, 2 small capitals
    int link = -1;  // the field whose result this is, when it is a hyperlink

    bool operator==(const CharState &) const = default;
};

struct ParaState
{
    int alignment = 0;  // 0 left, 1 right, 2 centre, 3 justified
    int leftIndent = 0;
    int rightIndent = 0;
    int firstIndent = 0;
    int spaceBefore = 0;
    int spaceAfter = 0;
    int lineSpacing = 0;
    bool lineMultiple = false;
    QList<QTextOption::Tab> tabs;
    QTextOption::TabType tabType = QTextOption::LeftTab;
    bool inTable = false;
    int background = 0;
    bool pageBreakBefore = false;
};

struct GroupState
{
    CharState character;
    ParaState paragraph;
    int unicodeSkip = 1;
    Destination destination = Destination::Text;
    bool ownsDestination = false;  // the destination started in this group
    bool starred = false;  // \* seen, no word yet
    bool placeholderPending = false;  // an attachment just ended: its 0xAC placeholder follows
    int field = -1;
};

struct FontEntry
{
    QString family;
    int codePage = codePageUnknown;
    bool bold = false;
    bool italic = false;
};

struct Field
{
    QString instruction;
    QByteArray pending;  // bytes of the instruction not decoded yet
    int codePage = codePageWindowsLatin1;
    QString href;
};

struct PictureState
{
    bool active = false;
    QByteArray data;
    int nibble = -1;
    Keyword blip = Keyword::Unknown;
    int goalWidth = 0;
    int goalHeight = 0;
    int scaleX = 100;
    int scaleY = 100;
    bool tooLarge = false;
};

struct AttachmentState
{
    bool active = false;
    bool nameDone = false;
    QString name;
    QByteArray pendingName;
    int codePage = codePageWindowsLatin1;
    int width = 0;
    int height = 0;
};

int clampTwips(int value)
{
    return std::clamp(value, -maxTwips, maxTwips);
}

// Cocoa writes PostScript names: "Helvetica-Bold" is Helvetica in bold,
// "Arial-BoldItalicMT" Arial in bold italic. Suffixes are taken off until
// none is left, so that the family that remains reads the same again.
void splitPostScriptName(FontEntry &font)
{
    struct Suffix
    {
        const char *text;
        bool bold;
        bool italic;
    };
    static const Suffix suffixes[] = {
        {"-BoldOblique", true, true}, {"-BoldItalic", true, true}, {"-Bold", true, false},
        {"-Oblique", false, true},    {"-Italic", false, true},    {"-Roman", false, false},
        {"-Regular", false, false},
    };
    static const QHash<QString, QString> familyNames = {
        {QStringLiteral("ArialMT"), QStringLiteral("Arial")},
        {QStringLiteral("TimesNewRomanPSMT"), QStringLiteral("Times New Roman")},
        {QStringLiteral("TimesNewRomanPS"), QStringLiteral("Times New Roman")},
        {QStringLiteral("CourierNewPSMT"), QStringLiteral("Courier New")},
        {QStringLiteral("CourierNewPS"), QStringLiteral("Courier New")},
        {QStringLiteral("HelveticaNeue"), QStringLiteral("Helvetica Neue")},
        {QStringLiteral("LucidaGrande"), QStringLiteral("Lucida Grande")},
    };
    QString name = font.family;
    for (bool changed = true; changed;) {
        changed = false;
        if (name.endsWith(QLatin1String("MT")) && name.contains(QLatin1Char('-'))) {
            name.chop(2);
            changed = true;
        }
        for (const Suffix &suffix : suffixes) {
            if (name.endsWith(QLatin1String(suffix.text))) {
                name.chop(qsizetype(qstrlen(suffix.text)));
                font.bold = font.bold || suffix.bold;
                font.italic = font.italic || suffix.italic;
                changed = true;
                break;
            }
        }
        const auto known = familyNames.constFind(name);
        if (known != familyNames.constEnd()) {
            name = known.value();
            changed = true;
        }
        const QString trimmed = name.trimmed();
        if (trimmed != name) {
            name = trimmed;
            changed = true;
        }
    }
    font.family = name;
}

class Reader
{
public:
    Reader(QByteArrayView data, QTextDocument &document, const QString &packageDir, QStringList &skipped)
        : m_tokens(data),
          m_document(document),
          m_packageDir(packageDir),
          m_skipped(skipped)
    { }

    bool read();

private:
    GroupState &top() { return m_stack.back(); }
    void note(const QString &line);

    void openGroup();
    void closeGroup();
    void controlWord(const Token &token);
    void controlSymbol(char symbol);
    void textBytes(QByteArrayView bytes);
    void unicode(int value);
    void character(char32_t c);
    void binary(int length);

    void startDestination(Destination destination);
    void skipGroup() { startDestination(Destination::Skip); }
    void textWord(Keyword keyword, const Token &token);
    void fontTableWord(Keyword keyword, const Token &token);
    void pictureWord(Keyword keyword, const Token &token);

    void ensureFormat();
    void flushBytes();
    void flushRun();
    void resolveSurrogate();
    void appendCharacter(char32_t c);
    void endParagraph();
    void endCell();
    void endRow();

    QTextCharFormat charFormat(const CharState &state) const;
    QTextBlockFormat blockFormat(const ParaState &state);
    QColor colour(int index) const;
    int codePageOf(const CharState &state) const;

    void finishFontEntry();
    int fontEntryCodePage() const
    {
        return m_fontEntry.codePage == codePageUnknown ? m_documentCodePage : m_fontEntry.codePage;
    }
    void finishColour();
    void finishPicture();
    void finishAttachment();
    void finishFieldInstruction(int field);
    QString loadAttachment(const QString &name, QString *problem);
    void insertPicture(const QString &resourceName, qreal width, qreal height);
    QString uniqueResourceName(const QString &preferred);
    void finish(const GroupState &last);

    RtfTokenizer m_tokens;
    QTextDocument &m_document;
    QString m_packageDir;
    QStringList &m_skipped;
    QSet<QString> m_noted;

    std::vector<GroupState> m_stack;
    int m_overflow = 0;  // groups open beyond maxDepth
    int m_skipDepth = 0;  // groups open inside a skipped group
    int m_unicodeSkipLeft = 0;
    char16_t m_highSurrogate = 0;
    bool m_stopped = false;

    int m_documentCodePage = codePageWindowsLatin1;
    int m_defaultFont = -1;
    QHash<int, FontEntry> m_fonts;
    int m_fontNumber = -1;
    QByteArray m_fontName;  // bytes not decoded yet
    QString m_fontText;  // what is decoded
    FontEntry m_fontEntry;
    bool m_fontCodePageGiven = false;
    QList<QColor> m_colours;
    int m_red = -1;
    int m_green = -1;
    int m_blue = -1;
    std::vector<Field> m_fields;
    PictureState m_picture;
    AttachmentState m_attachment;
    QHash<QString, QString> m_attachmentResources;  // file name -> resource name ("" when it failed)
    QSet<QString> m_resourceNames;
    int m_pictureCount = 0;
    qint64 m_pixelBudget = RtfReader::maxDocumentPixels;

    RtfRowDefinition m_row;
    RtfCellDefinition m_cell;
    bool m_cellBorderPending = false;
    bool m_pageBreakPending = false;

    RtfTextDecoder m_decoder;
    std::optional<RtfReaderBuilder> m_builder;
    QByteArray m_pendingBytes;
    int m_pendingCodePage = codePageWindowsLatin1;
    QString m_runText;
    QTextCharFormat m_runFormat;
    CharState m_formatState;
    bool m_haveFormat = false;
    qint64 m_characters = 0;
};

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

void Reader::textWord(Keyword keyword, const Token &token)
{
    GroupState &state = top();
    CharState &c = state.character;
    ParaState &p = state.paragraph;
    const int param = token.param;
    const bool on = !token.hasParam || param != 0;
    switch (keyword) {
    // Header
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
            option.setTabStopDistance(std::min(param, maxTwips) / 20.0);
            m_document.setDefaultTextOption(option);
        }
        break;

    // Destinations
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

    // Character formatting
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

    // Paragraph formatting
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
            p.tabs.append(QTextOption::Tab(clampTwips(param) / 20.0, p.tabType, delimiter));
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

    // Characters and breaks
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

    // Tables
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
        format.setLeftMargin(state.leftIndent / 20.0);
    if (state.rightIndent)
        format.setRightMargin(state.rightIndent / 20.0);
    if (state.firstIndent)
        format.setTextIndent(state.firstIndent / 20.0);
    if (state.spaceBefore)
        format.setTopMargin(state.spaceBefore / 20.0);
    if (state.spaceAfter)
        format.setBottomMargin(state.spaceAfter / 20.0);
    if (state.lineSpacing > 0 && state.lineMultiple)
        format.setLineHeight(state.lineSpacing * 100.0 / 240.0, QTextBlockFormat::ProportionalHeight);
    else if (state.lineSpacing < 0)
        format.setLineHeight(-state.lineSpacing / 20.0, QTextBlockFormat::FixedHeight);
    else if (state.lineSpacing > 0)
        format.setLineHeight(state.lineSpacing / 20.0, QTextBlockFormat::MinimumHeight);
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

// ---------------------------------------------------------------- tables of the header

void Reader::finishFontEntry()
{
    if (m_fontNumber >= 0 || !m_fontName.isEmpty() || !m_fontText.isEmpty()) {
        FontEntry entry = m_fontEntry;
        entry.family = (m_fontText + m_decoder.decode(m_fontName, fontEntryCodePage())).simplified();
        splitPostScriptName(entry);
        if (m_fontNumber >= 0 && (m_fonts.size() < maxFonts || m_fonts.contains(m_fontNumber)))
            m_fonts.insert(m_fontNumber, entry);
    }
    m_fontNumber = -1;
    m_fontName.clear();
    m_fontText.clear();
    m_fontEntry = FontEntry();
    m_fontCodePageGiven = false;
}

void Reader::finishColour()
{
    if (m_colours.size() < maxColours) {
        if (m_red < 0 && m_green < 0 && m_blue < 0)
            m_colours.append(QColor());  // the automatic colour
        else
            m_colours.append(QColor(std::max(m_red, 0), std::max(m_green, 0), std::max(m_blue, 0)));
    }
    m_red = m_green = m_blue = -1;
}

void Reader::finishFieldInstruction(int field)
{
    if (field < 0 || size_t(field) >= m_fields.size())
        return;
    Field &f = m_fields[size_t(field)];
    f.instruction += m_decoder.decode(f.pending, f.codePage);
    f.pending.clear();
    const QString instruction = QString(f.instruction).remove(QLatin1Char('\t')).trimmed();
    if (!instruction.startsWith(QLatin1String("HYPERLINK"), Qt::CaseInsensitive))
        return;
    // HYPERLINK "url" or HYPERLINK \l "bookmark"
    bool local = false;
    qsizetype i = 9;
    while (i < instruction.size()) {
        const QChar ch = instruction.at(i);
        if (ch.isSpace()) {
            ++i;
            continue;
        }
        if (ch == QLatin1Char('\\')) {
            if (i + 1 < instruction.size() && instruction.at(i + 1) == QLatin1Char('l'))
                local = true;
            i += 2;
            continue;
        }
        QString target;
        if (ch == QLatin1Char('"')) {
            const qsizetype end = instruction.indexOf(QLatin1Char('"'), i + 1);
            target = instruction.mid(i + 1, end < 0 ? -1 : end - i - 1);
        } else {
            qsizetype end = i;
            while (end < instruction.size() && !instruction.at(end).isSpace())
                ++end;
            target = instruction.mid(i, end - i);
        }
        if (!target.isEmpty())
            f.href = local ? QLatin1Char('#') + target : target;
        return;
    }
}

// ---------------------------------------------------------------- pictures

QString Reader::uniqueResourceName(const QString &preferred)
{
    QString name = preferred;
    int number = 2;
    while (m_resourceNames.contains(name)) {
        const qsizetype dot = preferred.lastIndexOf(QLatin1Char('.'));
        if (dot > 0)
            name = preferred.left(dot) + QLatin1Char('-') + QString::number(number) + preferred.mid(dot);
        else
            name = preferred + QLatin1Char('-') + QString::number(number);
        ++number;
    }
    m_resourceNames.insert(name);
    return name;
}

void Reader::insertPicture(const QString &resourceName, qreal width, qreal height)
{
    resolveSurrogate();
    flushRun();
    // A picture given one side gets the other in its proportions; one
    // larger than maxPicturePoints is shown smaller, in its proportions, and
    // no side is shown smaller than minPicturePoints.
    const QSize pixels = m_document.resource(QTextDocument::ImageResource, QUrl(resourceName)).value<QImage>().size();
    if (!pixels.isEmpty()) {
        if (width <= 0 && height <= 0) {
            if (pixels.width() > maxPicturePoints || pixels.height() > maxPicturePoints) {
                width = pixels.width();
                height = pixels.height();
            }
        } else if (width <= 0) {
            width = height * pixels.width() / pixels.height();
        } else if (height <= 0) {
            height = width * pixels.height() / pixels.width();
        }
    }
    QTextImageFormat format;
    format.setName(resourceName);
    if (width > 0 && height > 0) {
        const qreal factor = std::min({qreal(1), maxPicturePoints / width, maxPicturePoints / height});
        format.setWidth(std::max(width * factor, minPicturePoints));
        format.setHeight(std::max(height * factor, minPicturePoints));
    }
    m_builder->addImage(format);
}

void Reader::finishPicture()
{
    PictureState picture = std::move(m_picture);
    m_picture = PictureState();
    if (picture.tooLarge) {
        note(QStringLiteral("picture of more than %1 bytes skipped").arg(RtfReader::maxPictureBytes));
        return;
    }
    const QByteArray format = pictureFormat(picture.data);
    if (format != "png" && format != "jpeg") {
        if (picture.blip == Keyword::OtherBlip)
            note(QStringLiteral("picture in a format other than PNG or JPEG skipped"));
        else if (!picture.data.isEmpty())
            note(QStringLiteral("damaged picture skipped"));
        return;
    }
    DecodedPicture decoded = decodePicture(picture.data, format, &m_pixelBudget);
    if (decoded.image.isNull()) {
        note(decoded.problem);
        return;
    }
    ++m_pictureCount;
    const QString name = uniqueResourceName(QStringLiteral("picture%1.%2")
                                                .arg(m_pictureCount)
                                                .arg(format == "png" ? QStringLiteral("png") : QStringLiteral("jpg")));
    m_document.addResource(QTextDocument::ImageResource, QUrl(name), decoded.image);
    qreal width = 0;
    qreal height = 0;
    if (picture.goalWidth > 0)
        width = picture.goalWidth / 20.0 * picture.scaleX / 100.0;
    else if (picture.scaleX != 100)
        width = decoded.image.width() * picture.scaleX / 100.0;
    if (picture.goalHeight > 0)
        height = picture.goalHeight / 20.0 * picture.scaleY / 100.0;
    else if (picture.scaleY != 100)
        height = decoded.image.height() * picture.scaleY / 100.0;
    insertPicture(name, width, height);
}

QString Reader::loadAttachment(const QString &name, QString *problem)
{
    if (m_packageDir.isEmpty()) {
        *problem = QStringLiteral("attachment %1 outside a package skipped").arg(name);
        return QString();
    }
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))
        || name == QLatin1String(".") || name == QLatin1String("..") || name.contains(QChar(0))) {
        *problem = QStringLiteral("attachment name \"%1\" refused").arg(name);
        return QString();
    }
    const QFileInfo info(QDir(m_packageDir).filePath(name));
    const QString package = QFileInfo(m_packageDir).canonicalFilePath();
    const QString file = info.canonicalFilePath();
    if (!info.isFile() || file.isEmpty() || package.isEmpty() || !file.startsWith(package + QLatin1Char('/'))) {
        *problem = QStringLiteral("attachment %1 not found").arg(name);
        return QString();
    }
    if (info.size() > RtfReader::maxPictureBytes) {
        *problem = QStringLiteral("attachment %1 of %2 bytes skipped").arg(name).arg(info.size());
        return QString();
    }
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("attachment %1 cannot be read").arg(name);
        return QString();
    }
    const QByteArray bytes = input.read(RtfReader::maxPictureBytes);
    DecodedPicture decoded = decodePicture(bytes, QByteArray(), &m_pixelBudget);
    if (decoded.image.isNull()) {
        *problem = QStringLiteral("attachment %1: %2").arg(name, decoded.problem);
        return QString();
    }
    const QString resource = uniqueResourceName(name);
    m_document.addResource(QTextDocument::ImageResource, QUrl(resource), decoded.image);
    return resource;
}

void Reader::finishAttachment()
{
    AttachmentState attachment = std::move(m_attachment);
    m_attachment = AttachmentState();
    QString name = attachment.name + m_decoder.decode(attachment.pendingName, attachment.codePage);
    name = name.trimmed();

    QString resource;
    const auto known = m_attachmentResources.constFind(name);
    if (known != m_attachmentResources.constEnd()) {
        resource = known.value();
    } else {
        QString problem;
        resource = loadAttachment(name, &problem);
        if (resource.isEmpty() && !attachment.pendingName.isEmpty() && attachment.name.isEmpty()) {
            // A name written in UTF-8 rather than in the document's code page.
            const QString utf8 = QString::fromUtf8(attachment.pendingName).trimmed();
            if (utf8 != name) {
                QString second;
                resource = loadAttachment(utf8, &second);
            }
        }
        if (resource.isEmpty())
            note(problem);
        m_attachmentResources.insert(name, resource);
    }
    if (resource.isEmpty())
        return;
    insertPicture(resource, attachment.width > 0 ? attachment.width / 20.0 : 0,
                  attachment.height > 0 ? attachment.height / 20.0 : 0);
}

}  // namespace

namespace RtfReader {

RtfReadResult read(const QByteArray &rtf, QTextDocument &document, const QString &packageDir)
{
    RtfReadResult result;
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    Reader reader(rtf, document, packageDir, result.skipped);
    result.ok = reader.read();
    document.setUndoRedoEnabled(undo);
    return result;
}

}  // namespace RtfReader
