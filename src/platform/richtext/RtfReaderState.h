#pragma once
// What the RTF reader keeps while it reads one document: the limits it holds
// any input to, the state of each open group (character and paragraph
// formatting, the destination its text goes to), the tables of the header,
// the picture or attachment being read, and the reader itself. Only the
// reader's own files (RtfReader*.cpp) include this; the rest of the program
// reads RTF through RtfReader.h.
//
// The reader's work is shared out by job: RtfReader.cpp runs the tokens and
// the groups, RtfReaderWords.cpp acts on control words by their group of
// keywords, RtfReaderText.cpp turns text into formatted runs, and
// RtfReaderResources.cpp finishes fonts, colours, fields, pictures and
// attachments.
#include "platform/richtext/RtfCodePages.h"
#include "platform/richtext/RtfReader.h"
#include "platform/richtext/RtfReaderBuilder.h"
#include "platform/richtext/RtfReaderKeywords.h"
#include "platform/richtext/RtfTokenizer.h"
#include "platform/richtext/RtfUnits.h"

#include <QColor>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextOption>
#include <algorithm>
#include <optional>
#include <vector>

class QTextDocument;

namespace rtf::reading {

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

inline int clampTwips(int value)
{
    return std::clamp(value, -maxTwips, maxTwips);
}

// Takes a PostScript font name apart into its family, bold and italic.
void splitPostScriptName(FontEntry &font);

// Reads one document's tokens into a QTextDocument.
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
    void documentWord(Keyword keyword, const Token &token);
    void destinationWord(Keyword keyword);
    void characterWord(Keyword keyword, const Token &token);
    void paragraphWord(Keyword keyword, const Token &token);
    void breakWord(Keyword keyword);
    void tableWord(Keyword keyword, const Token &token);
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

}  // namespace rtf::reading
