#pragma once
// The code pages of RTF text: which one a font's \fcharset or the header's
// \ansicpg, \mac and \pc name, and decoding runs of bytes in them.
#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>
#include <map>

namespace rtf {

// Windows code page numbers; macRoman is the Macintosh code page.
constexpr int codePageWindowsLatin1 = 1252;
constexpr int codePageMacRoman = 10000;
constexpr int codePageSymbol = -2;  // the Symbol font's own glyph order
constexpr int codePageUnknown = -1;

// The code page of a font's \fcharset (0 is ANSI, 77 Macintosh, 128
// Shift_JIS, 204 Cyrillic ...); codePageUnknown for 1 (the default, that is
// the document's) and for character sets without one.
int codePageForCharset(int charset);

// Whether a character of the text is kept: not the control characters
// other than the tab, nor the characters a QTextDocument uses for its own
// structure (a paragraph separator is read as a line separator).
bool isShownCharacter(char32_t c);

// Decodes byte runs in one code page after another, keeping one decoder per
// code page. Characters that are not shown are dropped.
class RtfTextDecoder
{
public:
    QString decode(QByteArrayView bytes, int codePage);

private:
    QStringDecoder *decoderFor(int codePage);
    std::map<int, QStringDecoder> m_decoders;
};

}  // namespace rtf
