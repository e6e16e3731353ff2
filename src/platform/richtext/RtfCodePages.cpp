#include "platform/richtext/RtfCodePages.h"

namespace rtf {

namespace {

// The name under which Qt (through ICU) knows a code page. Decoders are made
// by name: Qt 6.4's encodingForName() knows only the Unicode encodings.
const char *decoderName(int codePage)
{
    switch (codePage) {
    case 874:
        return "windows-874";
    case 932:
        return "windows-31j";
    case 936:
        return "windows-936";
    case 949:
        return "windows-949";
    case 950:
        return "windows-950";
    case 1250:
        return "windows-1250";
    case 1251:
        return "windows-1251";
    case 1252:
        return "windows-1252";
    case 1253:
        return "windows-1253";
    case 1254:
        return "windows-1254";
    case 1255:
        return "windows-1255";
    case 1256:
        return "windows-1256";
    case 1257:
        return "windows-1257";
    case 1258:
        return "windows-1258";
    case 437:
        return "IBM437";
    case 850:
        return "IBM850";
    case 852:
        return "IBM852";
    case 866:
        return "IBM866";
    case 10000:
        return "macintosh";
    case 10006:
        return "x-mac-greek";
    case 10007:
        return "x-mac-cyrillic";
    case 10029:
        return "x-mac-ce";
    case 65001:
        return "UTF-8";
    default:
        return nullptr;
    }
}

bool isAscii(QByteArrayView bytes)
{
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    return true;
}

// The Symbol font orders its glyphs its own way; of them only the bullet is
// common in documents (the marks of bulleted lists), the rest is read as
// Latin-1.
QString decodeSymbol(QByteArrayView bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c.unicode() == 0xB7)
            c = QChar(0x2022);
    }
    return text;
}

void cleanText(QString &text)
{
    qsizetype out = 0;
    QChar *data = text.data();
    const qsizetype length = text.size();
    for (qsizetype i = 0; i < length; ++i) {
        const char32_t u = data[i].unicode();
        if (u == QChar::ParagraphSeparator)
            data[out++] = QChar(QChar::LineSeparator);
        else if (isShownCharacter(u))
            data[out++] = data[i];
    }
    text.truncate(out);
}

}  // namespace

bool isShownCharacter(char32_t c)
{
    if (c == U'\t')
        return true;
    if (c < 0x20 || (c >= 0x7F && c <= 0x9F))
        return false;
    // The object replacement character stands for pictures only; U+FDD0 and
    // U+FDD1 mark where frames begin and end inside a QTextDocument.
    return c != QChar::ObjectReplacementCharacter && c != 0xFDD0 && c != 0xFDD1;
}

int codePageForCharset(int charset)
{
    switch (charset) {
    case 0:
        return 1252;
    case 2:
        return codePageSymbol;
    case 77:
        return 10000;
    case 128:
        return 932;
    case 129:
        return 949;
    case 134:
        return 936;
    case 136:
        return 950;
    case 161:
        return 1253;
    case 162:
        return 1254;
    case 163:
        return 1258;
    case 177:
        return 1255;
    case 178:
        return 1256;
    case 186:
        return 1257;
    case 204:
        return 1251;
    case 222:
        return 874;
    case 238:
        return 1250;
    case 254:
        return 437;
    case 255:
        return 850;
    default:
        return codePageUnknown;
    }
}

QStringDecoder *RtfTextDecoder::decoderFor(int codePage)
{
    auto found = m_decoders.find(codePage);
    if (found != m_decoders.end())
        return &found->second;
    const char *name = decoderName(codePage);
    QStringDecoder decoder(name ? name : "windows-1252", QStringDecoder::Flag::Stateless);
    if (!decoder.isValid())
        decoder = QStringDecoder("windows-1252", QStringDecoder::Flag::Stateless);
    return &m_decoders.emplace(codePage, std::move(decoder)).first->second;
}

QString RtfTextDecoder::decode(QByteArrayView bytes, int codePage)
{
    QString text;
    if (codePage == codePageSymbol) {
        text = decodeSymbol(bytes);
    } else if (isAscii(bytes)) {
        text = QString::fromLatin1(bytes);
    } else {
        QStringDecoder *decoder = decoderFor(codePage);
        decoder->resetState();
        text = decoder->decode(bytes);
    }
    cleanText(text);
    return text;
}

}  // namespace rtf
