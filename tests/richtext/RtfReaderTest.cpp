// Reading RTF into a QTextDocument: paragraph marks, Unicode and code pages,
// character and paragraph formats, destinations that are skipped, fields,
// tables, pictures and package attachments, and documents in the style of
// TextEdit, LibreOffice Writer and AbiWord (tests/data/rtf).
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/RtfReader.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

using namespace richtextchecks;

namespace {

QByteArray dataFile(const QString &name)
{
    QFile file(QStringLiteral(QUORVEL_TEST_DATA "/rtf/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data %s", qPrintable(name));
    return file.readAll();
}

// A body fragment inside a minimal document with two fonts and three colours.
QByteArray document(const QByteArray &body)
{
    return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}{\\f1\\fswiss Arial;}"
           "{\\f2\\fswiss Helvetica-Bold;}{\\f3\\fswiss Helvetica-Oblique;}{\\f4\\fswiss Helvetica-BoldOblique;}"
           "{\\f5\\fswiss Arial-BoldItalicMT;}{\\f6\\fswiss Gill Sans-Bold-Italic;}}"
           "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}"
        + body + "}";
}

quint32 crc32(QByteArrayView bytes)
{
    quint32 crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return crc ^ 0xFFFFFFFFu;
}

// A PNG whose header claims the given size, with a few bytes of data: what a
// reader must not decode blindly.
QByteArray pngClaiming(quint32 width, quint32 height)
{
    auto be32 = [](quint32 v) {
        QByteArray b(4, '\0');
        b[0] = char(v >> 24);
        b[1] = char(v >> 16);
        b[2] = char(v >> 8);
        b[3] = char(v);
        return b;
    };
    auto chunk = [&](const QByteArray &type, const QByteArray &data) {
        return be32(quint32(data.size())) + type + data + be32(crc32(type + data));
    };
    QByteArray header = be32(width) + be32(height);
    header += QByteArray("\x08\x02\x00\x00\x00", 5);
    // A few bytes of a deflate stream of zeros.
    const QByteArray idat = QByteArray::fromHex("789cedc1010d000000c2a0f74f6d0e37a00000000000000000be0d");
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", header) + chunk("IDAT", idat)
        + chunk("IEND", QByteArray());
}

}  // namespace

class RtfReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseWhatIsNotRtf_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("plain text") << QByteArray("Hello {\\rtf1 world}");
        QTest::newRow("cut header") << QByteArray("{\\rt");
        QTest::newRow("html") << QByteArray("<html><body>x</body></html>");
    }
    void shouldRefuseWhatIsNotRtf()
    {
        QFETCH(QByteArray, input);
        QTextDocument doc;
        doc.setPlainText(QStringLiteral("old content"));
        const RtfReadResult result = RtfReader::read(input, doc);
        QVERIFY(!result.ok);
        QCOMPARE(doc.toPlainText(), QString());
    }

    void shouldReplaceTheDocumentsContent()
    {
        QTextDocument doc;
        doc.setPlainText(QStringLiteral("old content"));
        const RtfReadResult result = RtfReader::read(document("new"), doc);
        QVERIFY(result.ok);
        QVERIFY(result.skipped.isEmpty());
        QCOMPARE(blockTexts(doc), QStringList{QStringLiteral("new")});
    }

    void shouldBreakParagraphsAndLines_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("blocks");
        QTest::newRow("\\par") << QByteArray("one\\par two") << QStringList{"one", "two"};
        QTest::newRow("backslash-LF") << QByteArray("one\\\ntwo") << QStringList{"one", "two"};
        QTest::newRow("backslash-CR") << QByteArray("one\\\rtwo") << QStringList{"one", "two"};
        QTest::newRow("backslash-CRLF") << QByteArray("one\\\r\ntwo") << QStringList{"one", "two"};
        QTest::newRow("raw line ends are nothing") << QByteArray("one\ntw\r\no") << QStringList{"onetwo"};
        QTest::newRow("\\line stays in the paragraph")
            << QByteArray("one\\line two") << QStringList{QStringLiteral("one") + QChar::LineSeparator + "two"};
        QTest::newRow("\\tab") << QByteArray("a\\tab b") << QStringList{"a\tb"};
        QTest::newRow("a paragraph separator is a line separator")
            << QByteArray("a\\u8233?b") << QStringList{QStringLiteral("a\u2028b")};
        QTest::newRow("mark at the end leaves an empty paragraph") << QByteArray("one\\par ") << QStringList{"one", ""};
        QTest::newRow("empty paragraphs") << QByteArray("\\par\\par x") << QStringList{"", "", "x"};
        QTest::newRow("\\pard does not break") << QByteArray("one \\pard two") << QStringList{"one two"};
        QTest::newRow("\\sect and \\page break") << QByteArray("a\\sect b\\page c") << QStringList{"a", "b", "c"};
        QTest::newRow("space after a word belongs to it") << QByteArray("\\b  x") << QStringList{" x"};
        QTest::newRow("escaped braces and backslash") << QByteArray("\\{a\\}\\\\") << QStringList{"{a}\\"};
        QTest::newRow("symbols") << QByteArray("a\\~b\\_c") << QStringList{QStringLiteral("a\u00A0b\u2011c")};
        QTest::newRow("named characters")
            << QByteArray("\\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote")
            << QStringList{QStringLiteral("\u2014\u2013\u2022\u2018\u2019\u201C\u201D")};
        QTest::newRow("empty document") << QByteArray() << QStringList{""};
    }
    void shouldBreakParagraphsAndLines()
    {
        QFETCH(QByteArray, body);
        QFETCH(QStringList, blocks);
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(document(body), doc);
        QVERIFY(result.ok);
        QCOMPARE(blockTexts(doc), blocks);
    }

    void shouldReadUnicodeAndItsFallback_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::newRow("\\u with one fallback byte") << QByteArray("caf\\u233?x") << QStringLiteral("caf\u00E9x");
        QTest::newRow("negative \\u is 65536 more") << QByteArray("\\u-223?") << QStringLiteral("\uFF21");
        QTest::newRow("surrogate pair") << QByteArray("<\\u-10179?\\u-8704?>") << QStringLiteral("<\U0001F600>");
        QTest::newRow("lone high surrogate") << QByteArray("<\\u-10179?>") << QStringLiteral("<\uFFFD>");
        QTest::newRow("lone low surrogate") << QByteArray("<\\u-8704?>") << QStringLiteral("<\uFFFD>");
        QTest::newRow("\\uc2 skips two bytes") << QByteArray("\\uc2\\u233abc") << QStringLiteral("\u00E9c");
        QTest::newRow("\\uc0 skips nothing") << QByteArray("\\uc0\\u233?") << QStringLiteral("\u00E9?");
        QTest::newRow("a hex byte is one unit") << QByteArray("\\uc2\\u233\\'e9\\'e9x") << QStringLiteral("\u00E9x");
        QTest::newRow("a control word is one unit") << QByteArray("\\u233\\emdash x") << QStringLiteral("\u00E9x");
        QTest::newRow("a brace stops the skipping") << QByteArray("{\\uc3\\u233 a}bc") << QStringLiteral("\u00E9bc");
        QTest::newRow("\\uc is restored at the brace") << QByteArray("{\\uc0 x}\\u233?y") << QStringLiteral("x\u00E9y");
        QTest::newRow("a letter after the number is text") << QByteArray("\\uc0\\u945a") << QStringLiteral("\u03B1a");
        QTest::newRow("a letter after the number is the fallback") << QByteArray("\\u945a") << QStringLiteral("\u03B1");
        QTest::newRow("\\uc0 and \\uc1 switched mid-text")
            << QByteArray("\\uc0\\u1087\\u1088\\uc1\\u1080?\\u1074?") << QStringLiteral("\u043F\u0440\u0438\u0432");
        QTest::newRow("hex byte in windows-1252") << QByteArray("caf\\'e9 \\'80") << QStringLiteral("caf\u00E9 \u20AC");
        QTest::newRow("control characters are dropped")
            << QByteArray("a\\'00\\'07\\u7?\x7f\\'81\\u129?b") << QStringLiteral("ab");
        QTest::newRow("the document's own markers are dropped")
            << QByteArray("a\\u-4?\\u-560?\\u-559?b") << QStringLiteral("ab");
        QTest::newRow("value beyond Unicode is dropped") << QByteArray("a\\u2000000?b") << QStringLiteral("ab");
    }
    void shouldReadUnicodeAndItsFallback()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        QTextDocument doc;
        QVERIFY(RtfReader::read(document(body), doc).ok);
        QCOMPARE(doc.toPlainText(), text);
    }

    void shouldDecodeCodePages_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");
        QTest::newRow("windows-1251 from \\ansicpg and from \\fcharset204")
            << dataFile("cyrillic-1251.rtf")
            << QStringLiteral("\u041F\u0440\u0438\u0432\u0435\u0442, \u043C\u0438\u0440\n"
                              "\u0414\u043E \u0441\u0432\u0438\u0434\u0430\u043D\u0438\u044F\n");
        QTest::newRow("Shift_JIS double bytes across escapes, \\fcharset0 before \\ansicpg")
            << dataFile("shift-jis.rtf") << QStringLiteral("\u65E5\u672C\u8A9E \u30BD\u30D5\u30C8 ABC\nplain \u00E9\n");
        QTest::newRow("\\mac") << dataFile("textedit-mac.rtf") << QStringLiteral("Caf\u00E9 cr\u00E8me \u2022 done");
        QTest::newRow("\\fcharset77 in a \\ansi document") << QByteArray(
            "{\\rtf1\\ansi{\\fonttbl\\f0\\fnil\\fcharset77 Geneva;\\f1\\fnil Arial;}\\f0 \\'8e\\f1 \\'8e}")
                                                           << QStringLiteral("\u00E9\u017D");
        QTest::newRow("\\cpg of a font") << QByteArray("{\\rtf1\\ansi{\\fonttbl{\\f0\\cpg1253 Arial;}}\\f0 \\'e1}")
                                         << QStringLiteral("\u03B1");
        QTest::newRow("Symbol font bullet")
            << QByteArray("{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset2 Symbol;}{\\f1 Arial;}}{\\f0 \\'b7}\\f1\\tab x}")
            << QStringLiteral("\u2022\tx");
        QTest::newRow("unknown code page is read as windows-1252")
            << QByteArray("{\\rtf1\\ansi\\ansicpg99999 \\'e9}") << QStringLiteral("\u00E9");
        QTest::newRow("\\pc") << QByteArray("{\\rtf1\\pc \\'82}") << QStringLiteral("\u00E9");
    }
    void shouldDecodeCodePages()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QString, text);
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(rtf, doc);
        QVERIFY(result.ok);
        QCOMPARE(doc.toPlainText(), text);
    }

    void shouldReadFontNamesInTheirCodePage()
    {
        QTextDocument doc;
        QVERIFY(RtfReader::read(dataFile("shift-jis.rtf"), doc).ok);
        QCOMPARE(formatOf(doc, QStringLiteral("\u65E5")).fontFamilies().toStringList(),
                 QStringList{QStringLiteral("\uFF2D\uFF33 \u660E\u671D")});
        QCOMPARE(formatOf(doc, QStringLiteral("plain")).fontFamilies().toStringList(), QStringList{"Arial"});

        QVERIFY(RtfReader::read("{\\rtf1\\ansi{\\fonttbl{\\f0 Caf\\'e9 \\u1040?\\u-10179?\\u-8704?;}}\\f0 X}", doc).ok);
        QCOMPARE(formatOf(doc, QStringLiteral("X")).fontFamilies().toStringList(),
                 QStringList{QStringLiteral("Caf\u00E9 \u0410\U0001F600")});
    }

    void shouldReadCharacterFormats_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("property");
        QTest::addColumn<QVariant>("expected");  // invalid: the property is not set
        const int weight = QTextFormat::FontWeight;
        QTest::newRow("bold") << QByteArray("\\b X") << weight << QVariant(int(QFont::Bold));
        QTest::newRow("bold off") << QByteArray("\\b\\b0 X") << weight << QVariant();
        QTest::newRow("bold ends with the group") << QByteArray("{\\b a}X") << weight << QVariant();
        QTest::newRow("\\plain resets") << QByteArray("\\b\\i\\plain X") << weight << QVariant();
        QTest::newRow("italic") << QByteArray("\\i X") << int(QTextFormat::FontItalic) << QVariant(true);
        const int underline = QTextFormat::TextUnderlineStyle;
        QTest::newRow("underline") << QByteArray("\\ul X") << underline
                                   << QVariant(int(QTextCharFormat::SingleUnderline));
        QTest::newRow("word underline") << QByteArray("\\ulw X") << underline
                                        << QVariant(int(QTextCharFormat::SingleUnderline));
        QTest::newRow("dotted underline")
            << QByteArray("\\uld X") << underline << QVariant(int(QTextCharFormat::DotLine));
        QTest::newRow("wave underline") << QByteArray("\\ulwave X") << underline
                                        << QVariant(int(QTextCharFormat::WaveUnderline));
        QTest::newRow("\\ulnone") << QByteArray("\\ul\\ulnone X") << underline << QVariant();
        QTest::newRow("\\ul0") << QByteArray("\\ul\\ul0 X") << underline << QVariant();
        QTest::newRow("strike") << QByteArray("\\strike X") << int(QTextFormat::FontStrikeOut) << QVariant(true);
        QTest::newRow("double strike") << QByteArray("\\striked1 X") << int(QTextFormat::FontStrikeOut)
                                       << QVariant(true);
        const int vertical = QTextFormat::TextVerticalAlignment;
        QTest::newRow("\\super") << QByteArray("\\super X") << vertical
                                 << QVariant(int(QTextCharFormat::AlignSuperScript));
        QTest::newRow("\\sub") << QByteArray("\\sub X") << vertical << QVariant(int(QTextCharFormat::AlignSubScript));
        QTest::newRow("\\nosupersub") << QByteArray("\\super\\nosupersub X") << vertical << QVariant();
        QTest::newRow("\\up") << QByteArray("\\up6 X") << vertical << QVariant(int(QTextCharFormat::AlignSuperScript));
        QTest::newRow("\\dn") << QByteArray("\\dn6 X") << vertical << QVariant(int(QTextCharFormat::AlignSubScript));
        QTest::newRow("\\up0") << QByteArray("\\up6\\up0 X") << vertical << QVariant();
        const int size = QTextFormat::FontPointSize;
        QTest::newRow("twelve points by default") << QByteArray("X") << size << QVariant(12.0);
        QTest::newRow("\\fs in half points") << QByteArray("\\fs28 X") << size << QVariant(14.0);
        QTest::newRow("\\fsmilli") << QByteArray("\\fs28\\fsmilli14100 X") << size << QVariant(14.1);
        QTest::newRow("\\fs after \\fsmilli") << QByteArray("\\fs28\\fsmilli14100\\fs20 X") << size << QVariant(10.0);
        QTest::newRow("\\plain size") << QByteArray("\\fs40\\plain X") << size << QVariant(12.0);
        const int families = QTextFormat::FontFamilies;
        QTest::newRow("\\deff font") << QByteArray("X") << families << QVariant(QStringList{"Times New Roman"});
        QTest::newRow("\\f") << QByteArray("\\f1 X") << families << QVariant(QStringList{"Arial"});
        QTest::newRow("\\plain goes back to \\deff")
            << QByteArray("\\f1\\plain X") << families << QVariant(QStringList{"Times New Roman"});
        QTest::newRow("PostScript -Bold family")
            << QByteArray("\\f2 X") << families << QVariant(QStringList{"Helvetica"});
        QTest::newRow("PostScript -Bold weight") << QByteArray("\\f2 X") << weight << QVariant(int(QFont::Bold));
        QTest::newRow("PostScript -Oblique") << QByteArray("\\f3 X") << int(QTextFormat::FontItalic) << QVariant(true);
        QTest::newRow("PostScript -BoldOblique family")
            << QByteArray("\\f4 X") << families << QVariant(QStringList{"Helvetica"});
        QTest::newRow("PostScript -BoldOblique italic")
            << QByteArray("\\f4 X") << int(QTextFormat::FontItalic) << QVariant(true);
        QTest::newRow("PostScript -BoldItalicMT family")
            << QByteArray("\\f5 X") << families << QVariant(QStringList{"Arial"});
        QTest::newRow("PostScript -BoldItalicMT weight")
            << QByteArray("\\f5 X") << weight << QVariant(int(QFont::Bold));
        QTest::newRow("two suffixes family") << QByteArray("\\f6 X") << families << QVariant(QStringList{"Gill Sans"});
        QTest::newRow("two suffixes italic") << QByteArray("\\f6 X") << int(QTextFormat::FontItalic) << QVariant(true);
        QTest::newRow("two suffixes weight") << QByteArray("\\f6 X") << weight << QVariant(int(QFont::Bold));
        QTest::newRow("unknown font") << QByteArray("\\f9 X") << families << QVariant();
        const int foreground = QTextFormat::ForegroundBrush;
        const int background = QTextFormat::BackgroundBrush;
        QTest::newRow("\\cf") << QByteArray("\\cf1 X") << foreground << QVariant(QColor(255, 0, 0));
        QTest::newRow("\\cf0 is automatic") << QByteArray("\\cf1\\cf0 X") << foreground << QVariant();
        QTest::newRow("\\cf beyond the table") << QByteArray("\\cf7 X") << foreground << QVariant();
        QTest::newRow("\\cb") << QByteArray("\\cb2 X") << background << QVariant(QColor(0, 0, 255));
        QTest::newRow("\\highlight") << QByteArray("\\highlight1 X") << background << QVariant(QColor(255, 0, 0));
        QTest::newRow("\\chcbpat") << QByteArray("\\chcbpat2 X") << background << QVariant(QColor(0, 0, 255));
        QTest::newRow("\\caps") << QByteArray("\\caps X") << int(QTextFormat::FontCapitalization)
                                << QVariant(int(QFont::AllUppercase));
        QTest::newRow("\\scaps") << QByteArray("\\scaps X") << int(QTextFormat::FontCapitalization)
                                 << QVariant(int(QFont::SmallCaps));
    }
    void shouldReadCharacterFormats()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, property);
        QFETCH(QVariant, expected);
        QTextDocument doc;
        QVERIFY(RtfReader::read(document(body), doc).ok);
        const QTextCharFormat format = formatOf(doc, QStringLiteral("X"));
        QVERIFY(format.isValid());
        if (!expected.isValid()) {
            QVERIFY2(!format.hasProperty(property), qPrintable(format.property(property).toString()));
        } else if (expected.userType() == QMetaType::QColor) {
            QVERIFY(format.hasProperty(property));
            QCOMPARE(format.property(property).userType() == QMetaType::QBrush ? format.brushProperty(property).color()
                                                                               : format.colorProperty(property),
                     expected.value<QColor>());
        } else if (expected.userType() == QMetaType::Double) {
            QCOMPARE(format.doubleProperty(property), expected.toDouble());
        } else if (expected.userType() == QMetaType::QStringList) {
            QCOMPARE(format.property(property).toStringList(), expected.toStringList());
        } else {
            QCOMPARE(format.property(property), expected);
        }
    }

    void shouldHideHiddenText()
    {
        QTextDocument doc;
        QVERIFY(RtfReader::read(document("a{\\v hidden}b\\v c\\v0 d"), doc).ok);
        QCOMPARE(doc.toPlainText(), QStringLiteral("abd"));
    }

    void shouldReadParagraphFormats_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("property");
        QTest::addColumn<QVariant>("expected");  // invalid: the property is not set
        const int alignment = QTextFormat::BlockAlignment;
        QTest::newRow("left by default") << QByteArray("X\\par") << alignment << QVariant();
        QTest::newRow("\\qc") << QByteArray("\\qc X\\par") << alignment << QVariant(int(Qt::AlignHCenter));
        QTest::newRow("\\qr") << QByteArray("\\qr X\\par") << alignment << QVariant(int(Qt::AlignRight));
        QTest::newRow("\\qj") << QByteArray("\\qj X\\par") << alignment << QVariant(int(Qt::AlignJustify));
        QTest::newRow("\\ql after \\qc") << QByteArray("\\qc\\ql X\\par") << alignment << QVariant();
        QTest::newRow("set at the mark") << QByteArray("X\\qc\\par") << alignment << QVariant(int(Qt::AlignHCenter));
        QTest::newRow("kept to the next paragraph")
            << QByteArray("\\qc a\\par X") << alignment << QVariant(int(Qt::AlignHCenter));
        QTest::newRow("\\pard resets without a \\par") << QByteArray("\\qc a\\par\\pard X") << alignment << QVariant();
        QTest::newRow("TextEdit: backslash-LF then \\pard")
            << QByteArray("\\pard\\qc a\\\n\\pard\\pardirnatural X") << alignment << QVariant();
        QTest::newRow("\\li in twips") << QByteArray("\\li720 X") << int(QTextFormat::BlockLeftMargin)
                                       << QVariant(720 / 15.0);
        QTest::newRow("\\lin") << QByteArray("\\lin360 X") << int(QTextFormat::BlockLeftMargin) << QVariant(360 / 15.0);
        QTest::newRow("\\ri") << QByteArray("\\ri360 X") << int(QTextFormat::BlockRightMargin) << QVariant(360 / 15.0);
        QTest::newRow("\\fi negative") << QByteArray("\\fi-360 X") << int(QTextFormat::TextIndent) << QVariant(-360 / 15.0);
        QTest::newRow("\\sb") << QByteArray("\\sb240 X") << int(QTextFormat::BlockTopMargin) << QVariant(240 / 15.0);
        QTest::newRow("\\sa") << QByteArray("\\sa120 X") << int(QTextFormat::BlockBottomMargin) << QVariant(120 / 15.0);
        QTest::newRow("\\pard resets indents")
            << QByteArray("\\li720\\pard X") << int(QTextFormat::BlockLeftMargin) << QVariant();
        QTest::newRow("\\sl multiple") << QByteArray("\\sl360\\slmult1 X") << int(QTextFormat::LineHeight)
                                       << QVariant(150.0);
        QTest::newRow("\\sl multiple type") << QByteArray("\\sl360\\slmult1 X") << int(QTextFormat::LineHeightType)
                                            << QVariant(int(QTextBlockFormat::ProportionalHeight));
        QTest::newRow("\\sl exact") << QByteArray("\\sl-480 X") << int(QTextFormat::LineHeight) << QVariant(480 / 15.0);
        QTest::newRow("\\sl exact type") << QByteArray("\\sl-480 X") << int(QTextFormat::LineHeightType)
                                         << QVariant(int(QTextBlockFormat::FixedHeight));
        QTest::newRow("\\sl at least type") << QByteArray("\\sl300 X") << int(QTextFormat::LineHeightType)
                                            << QVariant(int(QTextBlockFormat::MinimumHeight));
        QTest::newRow("\\sl0 is single") << QByteArray("\\sl0 X") << int(QTextFormat::LineHeight) << QVariant();
        QTest::newRow("\\cbpat") << QByteArray("\\cbpat2 X") << int(QTextFormat::BackgroundBrush)
                                 << QVariant(QColor(0, 0, 255));
        QTest::newRow("\\page breaks before the next") << QByteArray("a\\page X") << int(QTextFormat::PageBreakPolicy)
                                                       << QVariant(int(QTextFormat::PageBreak_AlwaysBefore));
        QTest::newRow("\\pagebb") << QByteArray("\\pagebb X") << int(QTextFormat::PageBreakPolicy)
                                  << QVariant(int(QTextFormat::PageBreak_AlwaysBefore));
    }
    void shouldReadParagraphFormats()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, property);
        QFETCH(QVariant, expected);
        QTextDocument doc;
        QVERIFY(RtfReader::read(document(body), doc).ok);
        QVERIFY(!doc.find(QStringLiteral("X")).isNull());
        const QTextBlockFormat format = blockFormatOf(doc, QStringLiteral("X"));
        if (!expected.isValid()) {
            QVERIFY2(!format.hasProperty(property), qPrintable(format.property(property).toString()));
        } else if (expected.userType() == QMetaType::QColor) {
            QCOMPARE(format.brushProperty(property).color(), expected.value<QColor>());
        } else if (expected.userType() == QMetaType::Double) {
            QCOMPARE(format.doubleProperty(property), expected.toDouble());
        } else {
            QCOMPARE(format.intProperty(property), expected.toInt());
        }
    }

    void shouldReadTabStops()
    {
        QTextDocument doc;
        QVERIFY(
            RtfReader::read(
                document("\\pard\\tx720\\tqr\\tx2880\\tqc\\tldot\\tx4320\\tqdec\\tx5000 a\\tab b\\par\\pard c"), doc)
                .ok);
        const QList<QTextOption::Tab> tabs = blockFormatOf(doc, QStringLiteral("a")).tabPositions();
        QCOMPARE(tabs.size(), 4);
        QCOMPARE(tabs.at(0).position, 720 / 15.0);
        QCOMPARE(tabs.at(0).type, QTextOption::LeftTab);
        QCOMPARE(tabs.at(1).position, 2880 / 15.0);
        QCOMPARE(tabs.at(1).type, QTextOption::RightTab);
        QCOMPARE(tabs.at(2).position, 4320 / 15.0);
        QCOMPARE(tabs.at(2).type, QTextOption::CenterTab);
        QCOMPARE(tabs.at(3).type, QTextOption::DelimiterTab);
        QCOMPARE(tabs.at(3).delimiter, QChar(QLatin1Char('.')));
        QVERIFY(blockFormatOf(doc, QStringLiteral("c")).tabPositions().isEmpty());
    }

    void shouldTakeTheDefaultTabWidth()
    {
        QTextDocument doc;
        QVERIFY(RtfReader::read("{\\rtf1\\ansi\\deftab709 a}", doc).ok);
        QCOMPARE(doc.defaultTextOption().tabStopDistance(), 709 / 15.0);
    }

    void shouldSkipDestinations_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("skipped");  // a line expected in skipped, or empty for a clean document
        QTest::newRow("unknown \\* destination") << QByteArray("a{\\*\\unknownthing hidden {nested} text}b") << "ab"
                                                 << "unknown destination \\unknownthing skipped";
        QTest::newRow("\\* before a known skipped one") << QByteArray("a{\\*\\generator Writer 1.0;}b") << "ab"
                                                        << "";
        QTest::newRow("info") << QByteArray("a{\\info{\\title T}{\\author A}}b") << "ab"
                              << "";
        QTest::newRow("stylesheet") << QByteArray("a{\\stylesheet{\\s0 Normal;}{\\s1 Heading;}}b") << "ab"
                                    << "";
        QTest::newRow("header and footer") << QByteArray("a{\\header H}{\\footerl F}b") << "ab"
                                           << "";
        QTest::newRow("footnote") << QByteArray("a{\\super\\chftn}{\\footnote note}b") << "ab"
                                  << "";
        QTest::newRow("expanded colour table") << QByteArray("a{\\*\\expandedcolortbl;;\\csgray\\c0;}b") << "ab"
                                               << "";
        QTest::newRow("page style table") << QByteArray("a{\\*\\pgdsctbl{\\pgdsc0 Default Page Style;}}b") << "ab"
                                          << "";
        QTest::newRow("nonshppict") << QByteArray("a{\\nonshppict{\\pict\\wmetafile8 0102}}b") << "ab"
                                    << "";
        QTest::newRow("field shows its result")
            << QByteArray("a{\\field{\\*\\fldinst{ PAGE }}{\\fldrslt{3}}}b") << "a3b"
            << "";
        QTest::newRow("field instruction without \\*")
            << QByteArray("a{\\field{\\fldinst DATE}{\\fldrslt today}}b") << "atodayb"
            << "";
        QTest::newRow("fldinst outside a field") << QByteArray("a{\\fldinst DATE}b") << "ab"
                                                 << "";
        QTest::newRow("\\bin inside a skipped group steps over braces")
            << QByteArray("a{\\*\\blob \\bin6 }}}{{{ more}b") << "ab"
            << "unknown destination \\blob skipped";
        QTest::newRow("\\bin in the text is not shown") << QByteArray("a\\bin3 }{xb") << "ab"
                                                        << "";
        QTest::newRow("\\bin longer than the file") << QByteArray("a{\\*\\blob \\bin99 xyz") << "a"
                                                    << "\\bin data longer than the file";
        QTest::newRow("\\* then text") << QByteArray("a{\\*text}b") << "ab"
                                       << "";
        QTest::newRow("listtext is shown")
            << QByteArray("{\\listtext\\'95\\tab}item") << QStringLiteral("\u2022\titem") << "";
        QTest::newRow("pntext is shown") << QByteArray("{\\pntext 1.\\tab}item") << QStringLiteral("1.\titem") << "";
        QTest::newRow("pn is not") << QByteArray("{\\*\\pn\\pnlvlblt{\\pntxtb x}}item") << QStringLiteral("item") << "";
        QTest::newRow("object shows its result")
            << QByteArray("a{\\object\\objemb{\\*\\objclass Paint}{\\*\\objdata 0102}{\\result b}}c") << "abc"
            << "";
    }
    void shouldSkipDestinations()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        QFETCH(QString, skipped);
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(document(body), doc);
        QVERIFY(result.ok);
        QCOMPARE(doc.toPlainText(), text);
        if (skipped.isEmpty())
            QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        else
            QVERIFY2(result.skipped.contains(skipped), qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldListEachProblemOnce()
    {
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(document("{\\*\\foo a}{\\*\\foo b}{\\*\\bar c}"), doc);
        QCOMPARE(result.skipped,
                 (QStringList{"unknown destination \\foo skipped", "unknown destination \\bar skipped"}));
    }

    void shouldLinkHyperlinkFields_data()
    {
        QTest::addColumn<QByteArray>("instruction");
        QTest::addColumn<QString>("href");
        QTest::newRow("quoted") << QByteArray("HYPERLINK \"https://example.org/a b\"") << "https://example.org/a b";
        QTest::newRow("bare") << QByteArray("HYPERLINK http://example.org/") << "http://example.org/";
        QTest::newRow("local") << QByteArray("HYPERLINK \\\\l \"section1\"") << "#section1";
        QTest::newRow("split over groups") << QByteArray("{HYPERLINK }{\"mailto:a@b.c\"}") << "mailto:a@b.c";
    }
    void shouldLinkHyperlinkFields()
    {
        QFETCH(QByteArray, instruction);
        QFETCH(QString, href);
        QTextDocument doc;
        QVERIFY(
            RtfReader::read(document("{\\field{\\*\\fldinst " + instruction + "}{\\fldrslt {\\ul X}}} after"), doc).ok);
        QCOMPARE(doc.toPlainText(), QStringLiteral("X after"));
        const QTextCharFormat link = formatOf(doc, QStringLiteral("X"));
        QVERIFY(link.isAnchor());
        QCOMPARE(link.anchorHref(), href);
        QCOMPARE(link.underlineStyle(), QTextCharFormat::SingleUnderline);
        QVERIFY(!formatOf(doc, QStringLiteral("after")).isAnchor());
    }

    void shouldReadATable()
    {
        QTextDocument doc;
        const QByteArray body
            = "before\\par"
              "\\trowd\\trgaph108\\trleft0\\clbrdrt\\brdrs\\clcbpat2\\cellx2880\\clbrdrt\\brdrs\\cellx7200"
              "\\pard\\intbl A1\\cell\\pard\\intbl\\qr B1\\par second line\\cell\\row"
              "\\trowd\\trgaph108\\cellx2880\\cellx7200"
              "\\pard\\intbl {\\b A2}\\cell\\pard\\intbl B2\\cell\\row"
              "\\pard after";
        const RtfReadResult result = RtfReader::read(document(body), doc);
        QVERIFY(result.ok);
        QVERIFY(result.skipped.isEmpty());

        const QTextCursor cell = doc.find(QStringLiteral("A1"));
        QTextTable *table = cell.currentTable();
        QVERIFY(table);
        QCOMPARE(table->rows(), 2);
        QCOMPARE(table->columns(), 2);
        QCOMPARE(cellText(table, 0, 0), QStringLiteral("A1"));
        QCOMPARE(cellText(table, 0, 1), QStringLiteral("B1") + QChar::ParagraphSeparator + "second line");
        QCOMPARE(cellText(table, 1, 0), QStringLiteral("A2"));
        QCOMPARE(cellText(table, 1, 1), QStringLiteral("B2"));
        QCOMPARE(formatOf(doc, QStringLiteral("A2")).fontWeight(), int(QFont::Bold));
        QCOMPARE(blockFormatOf(doc, QStringLiteral("B1")).alignment(), Qt::AlignRight);

        const QTextTableFormat format = table->format();
        QCOMPARE(format.border(), 1.0);
        QCOMPARE(format.cellPadding(), 108 / 15.0);
        QCOMPARE(format.columnWidthConstraints().size(), 2);
        QCOMPARE(format.columnWidthConstraints().at(0).rawValue(), 2880 / 15.0);
        QCOMPARE(format.columnWidthConstraints().at(1).rawValue(), (7200 - 2880) / 15.0);
        QCOMPARE(table->cellAt(0, 0).format().background().color(), QColor(0, 0, 255));
        QCOMPARE(table->cellAt(0, 1).format().background().style(), Qt::NoBrush);

        // The paragraphs around the table stay outside it.
        QVERIFY(!doc.find(QStringLiteral("before")).currentTable());
        QVERIFY(!doc.find(QStringLiteral("after")).currentTable());
        QVERIFY(doc.find(QStringLiteral("before")).position() < cell.position());
        QVERIFY(doc.find(QStringLiteral("after")).position() > cell.position());
    }

    void shouldReadTablesThatAreNotQuiteRight_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("columns");
        QTest::addColumn<QString>("lastCell");
        QTest::newRow("no \\row at the end")
            << QByteArray("\\trowd\\cellx1000\\cellx2000\\intbl a\\cell b\\cell") << 1 << 2 << "b";
        QTest::newRow("more cells than \\cellx")
            << QByteArray("\\trowd\\cellx1000\\intbl a\\cell b\\cell c\\cell\\row") << 1 << 3 << "c";
        QTest::newRow("rows of different lengths") << QByteArray(
            "\\trowd\\cellx1000\\intbl a\\cell\\row\\trowd\\cellx1000\\cellx2000\\intbl b\\cell c\\cell\\row")
                                                   << 2 << 2 << "c";
        QTest::newRow("text before \\row") << QByteArray("\\trowd\\cellx1000\\intbl a\\cell b\\row") << 1 << 2 << "b";
        QTest::newRow("\\cell without \\intbl") << QByteArray("a\\cell b\\cell\\row") << 1 << 2 << "b";
    }
    void shouldReadTablesThatAreNotQuiteRight()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, rows);
        QFETCH(int, columns);
        QFETCH(QString, lastCell);
        QTextDocument doc;
        QVERIFY(RtfReader::read(document(body), doc).ok);
        QTextTable *table = firstTable(doc);
        QVERIFY(table);
        QCOMPARE(table->rows(), rows);
        QCOMPARE(table->columns(), columns);
        QCOMPARE(cellText(table, rows - 1, columns - 1), lastCell);
    }

    void shouldJoinCellsBeyondTheColumnLimit()
    {
        QByteArray body = "\\trowd";
        for (int i = 0; i < 200; ++i)
            body += "\\intbl c" + QByteArray::number(i) + "\\cell";
        body += "\\row";
        QTextDocument doc;
        QVERIFY(RtfReader::read(document(body), doc).ok);
        QTextTable *table = doc.find(QStringLiteral("c0")).currentTable();
        QVERIFY(table);
        QCOMPARE(table->columns(), 64);
        const QStringList texts = cellText(table, 0, 63).split(QChar::ParagraphSeparator);
        QCOMPARE(texts.size(), 200 - 63);
        QCOMPARE(texts.first(), QStringLiteral("c63"));
        QCOMPARE(texts.last(), QStringLiteral("c199"));
    }

    void shouldReadNestedTableTextIntoTheOuterCell()
    {
        QTextDocument doc;
        QVERIFY(
            RtfReader::read(document("\\trowd\\cellx3000\\intbl outer\\par\\itap2 x\\nestcell y\\nestcell"
                                     "{\\*\\nesttableprops\\trowd\\cellx1000\\cellx2000\\nestrow}{\\nonesttables\\par}"
                                     "\\itap1\\cell\\row"),
                            doc)
                .ok);
        QTextTable *table = doc.find(QStringLiteral("outer")).currentTable();
        QVERIFY(table);
        QVERIFY(doc.find(QStringLiteral("x")).currentTable() == table);
        QVERIFY(doc.find(QStringLiteral("y")).currentTable() == table);
    }

    void shouldMergeCells()
    {
        QTextDocument doc;
        QVERIFY(
            RtfReader::read(
                document(
                    "\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\cellx3000\\intbl wide\\cell more\\cell c\\cell\\row"
                    "\\trowd\\clvmgf\\cellx1000\\cellx2000\\cellx3000\\intbl tall\\cell b\\cell c\\cell\\row"
                    "\\trowd\\clvmrg\\cellx1000\\cellx2000\\cellx3000\\intbl\\cell b\\cell c\\cell\\row"
                    "\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\cellx3000\\pard\\intbl\\qc\\sa140\\cell\\pard\\intbl"
                    "\\cell"
                    "\\pard\\intbl last\\cell\\row"),
                doc)
                .ok);
        QTextTable *table = doc.find(QStringLiteral("wide")).currentTable();
        QVERIFY(table);
        QCOMPARE(table->rows(), 4);
        QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
        QCOMPARE(table->cellAt(1, 0).rowSpan(), 2);
        // The text of a covered cell follows that of the cell covering it.
        QCOMPARE(cellText(table, 0, 0), QStringLiteral("wide") + QChar::ParagraphSeparator + "more");
        // An empty merged cell keeps its paragraph's format.
        QTextTableCell empty = table->cellAt(3, 0);
        QCOMPARE(empty.columnSpan(), 2);
        QCOMPARE(empty.firstCursorPosition().blockFormat().alignment(), Qt::AlignHCenter);
        QCOMPARE(empty.firstCursorPosition().blockFormat().bottomMargin(), 140 / 15.0);
    }

    void shouldReadPictures_data()
    {
        QTest::addColumn<QByteArray>("picture");  // the group, %1 standing for the hex of a 4 x 3 PNG, %2 of a JPEG
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<QSizeF>("shown");  // in 1/96 inch; empty: no size given
        QTest::newRow("png hex with goal size")
            << QByteArray("{\\pict\\pngblip\\picw4\\pich3\\picwgoal1440\\pichgoal1080 %1}") << QSize(4, 3)
            << QSizeF(1440 / 15.0, 1080 / 15.0);
        QTest::newRow("jpeg hex") << QByteArray("{\\pict\\jpegblip\\picwgoal600\\pichgoal450\n%2\n}") << QSize(4, 3)
                                  << QSizeF(600 / 15.0, 450 / 15.0);
        QTest::newRow("scaled") << QByteArray(
            "{\\pict\\pngblip\\picwgoal1440\\pichgoal1080\\picscalex50\\picscaley200 %1}")
                                << QSize(4, 3) << QSizeF(720 / 15.0, 2160 / 15.0);
        QTest::newRow("scaled without goal")
            << QByteArray("{\\pict\\pngblip\\picscalex200\\picscaley200 %1}") << QSize(4, 3) << QSizeF(8, 6);
        QTest::newRow("no size") << QByteArray("{\\pict\\pngblip %1}") << QSize(4, 3) << QSizeF();
        QTest::newRow("width only") << QByteArray("{\\pict\\pngblip\\picwgoal1600 %1}") << QSize(4, 3)
                                    << QSizeF(1600 / 15.0, 1200 / 15.0);
        QTest::newRow("height only") << QByteArray("{\\pict\\pngblip\\pichgoal1200 %1}") << QSize(4, 3)
                                     << QSizeF(1600 / 15.0, 1200 / 15.0);
        QTest::newRow("too large to show")
            << QByteArray("{\\pict\\pngblip\\picwgoal800000\\pichgoal300000 %1}") << QSize(4, 3) << QSizeF(10000, 3750);
        QTest::newRow("too large and too thin")
            << QByteArray("{\\pict\\pngblip\\picwgoal800000\\pichgoal1 %1}") << QSize(4, 3) << QSizeF(10000, 1);
        QTest::newRow("shppict read, nonshppict skipped") << QByteArray(
            "{\\*\\shppict{\\pict\\pngblip\\picwgoal80\\pichgoal60 %1}}{\\nonshppict{\\pict\\wmetafile8 0102}}")
                                                          << QSize(4, 3) << QSizeF(80 / 15.0, 60 / 15.0);
        QTest::newRow("format found from the bytes")
            << QByteArray("{\\pict\\wmetafile8 %1}") << QSize(4, 3) << QSizeF();
        QTest::newRow("\\bin data") << QByteArray("{\\pict\\pngblip\\picwgoal40\\pichgoal30\\bin%3 %4}") << QSize(4, 3)
                                    << QSizeF(40 / 15.0, 30 / 15.0);
    }
    void shouldReadPictures()
    {
        QFETCH(QByteArray, picture);
        QFETCH(QSize, pixels);
        QFETCH(QSizeF, shown);
        const QByteArray png = imageBytes(filledImage(4, 3, Qt::red), "PNG");
        const QByteArray jpeg = imageBytes(filledImage(4, 3, Qt::red), "JPEG");
        picture.replace("%1", png.toHex()).replace("%2", jpeg.toHex()).replace("%3", QByteArray::number(png.size()));
        picture.replace("%4", png);
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(document("before " + picture + " after"), doc);
        QVERIFY(result.ok);
        QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        QCOMPARE(doc.toPlainText(), QStringLiteral("before ") + QChar::ObjectReplacementCharacter + " after");
        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 1);
        const QImage image = imageResource(doc, found.first().name());
        QCOMPARE(image.size(), pixels);
        QCOMPARE(QColor(image.pixel(1, 1)).red() > 200, true);
        if (shown.isEmpty()) {
            QVERIFY(!found.first().hasProperty(QTextFormat::ImageWidth));
            QVERIFY(!found.first().hasProperty(QTextFormat::ImageHeight));
        } else {
            QCOMPARE(found.first().width(), shown.width());
            QCOMPARE(found.first().height(), shown.height());
        }
    }

    void shouldGiveEachPictureItsOwnName()
    {
        const QString png = QString::fromLatin1(imageBytes(filledImage(4, 3, Qt::red), "PNG").toHex());
        const QString blue = QString::fromLatin1(imageBytes(filledImage(2, 2, Qt::blue), "PNG").toHex());
        QTextDocument doc;
        QVERIFY(RtfReader::read(
                    document(QStringLiteral("{\\pict\\pngblip %1}{\\pict\\pngblip %2}").arg(png, blue).toLatin1()), doc)
                    .ok);
        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 2);
        QVERIFY(found.at(0).name() != found.at(1).name());
        QCOMPARE(imageResource(doc, found.at(0).name()).size(), QSize(4, 3));
        QCOMPARE(imageResource(doc, found.at(1).name()).size(), QSize(2, 2));
    }

    void shouldSkipPicturesThatCannotBeShown_data()
    {
        QTest::addColumn<QByteArray>("picture");
        QTest::addColumn<QString>("skipped");
        QTest::newRow("metafile") << QByteArray("{\\pict\\wmetafile8\\picw10\\pich10 0100090000037c00}")
                                  << "picture in a format other than PNG or JPEG skipped";
        QTest::newRow("damaged png") << QByteArray("{\\pict\\pngblip 89504e470d0a1a0a0000000d4948}")
                                     << "picture without a size skipped";
        QTest::newRow("not a picture") << QByteArray("{\\pict\\pngblip 0102030405}") << "damaged picture skipped";
        QTest::newRow("png claiming 100000 x 100000 pixels")
            << QByteArray("{\\pict\\pngblip " + pngClaiming(100000, 100000).toHex() + "}")
            << "picture of 100000 x 100000 pixels skipped";
        QTest::newRow("png claiming 30001 x 1 pixels")
            << QByteArray("{\\pict\\pngblip " + pngClaiming(30001, 1).toHex() + "}")
            << "picture of 30001 x 1 pixels skipped";
    }
    void shouldSkipPicturesThatCannotBeShown()
    {
        QFETCH(QByteArray, picture);
        QFETCH(QString, skipped);
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        const RtfReadResult result = RtfReader::read(document("a" + picture + "b"), doc);
        QVERIFY(timer.elapsed() < 2000);
        QVERIFY(result.ok);
        QCOMPARE(doc.toPlainText(), QStringLiteral("ab"));
        QVERIFY(images(doc).isEmpty());
        QVERIFY2(result.skipped.contains(skipped), qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldStopAPictureAtItsByteLimit()
    {
        // Hex digits for more bytes than a picture may have: the picture is
        // dropped and the text after it is still read.
        QByteArray hex(2 * RtfReader::maxPictureBytes + 4, 'a');
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        const RtfReadResult result = RtfReader::read(document("a{\\pict\\pngblip " + hex + "}b"), doc);
        // Generous: 128 MB of hex digits are gone through one by one.
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(doc.toPlainText(), QStringLiteral("ab"));
        QVERIFY2(result.skipped.contains(
                     QStringLiteral("picture of more than %1 bytes skipped").arg(RtfReader::maxPictureBytes)),
                 qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldStopABinaryPictureAtItsByteLimit()
    {
        const QByteArray data(RtfReader::maxPictureBytes + 1, '\x89');
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        const RtfReadResult result = RtfReader::read(
            document("a{\\pict\\pngblip\\bin" + QByteArray::number(data.size()) + " " + data + "}b"), doc);
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(doc.toPlainText(), QStringLiteral("ab"));
        QVERIFY2(result.skipped.contains(
                     QStringLiteral("picture of more than %1 bytes skipped").arg(RtfReader::maxPictureBytes)),
                 qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldReadATextEditPackage()
    {
        QTemporaryDir package;
        QVERIFY(package.isValid());
        QVERIFY(writeFile(package.filePath(QStringLiteral("Pasted Graphic.png")),
                          imageBytes(filledImage(8, 6, Qt::green), "PNG")));
        QVERIFY(
            writeFile(package.filePath(QStringLiteral("photo.tiff")), imageBytes(filledImage(5, 7, Qt::blue), "TIFF")));

        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(dataFile("textedit-attachment-TXT.rtf"), doc, package.path());
        QVERIFY(result.ok);
        QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        const QString object(QChar::ObjectReplacementCharacter);
        // The 0xAC placeholders are not shown.
        QCOMPARE(blockTexts(doc), (QStringList{"Before the picture", object + "between", object + "after"}));
        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 2);
        QCOMPARE(found.at(0).name(), QStringLiteral("Pasted Graphic.png"));
        QCOMPARE(found.at(0).width(), 2400 / 15.0);
        QCOMPARE(found.at(0).height(), 1800 / 15.0);
        QCOMPARE(imageResource(doc, found.at(0).name()).size(), QSize(8, 6));
        QCOMPARE(found.at(1).name(), QStringLiteral("photo.tiff"));
        QCOMPARE(found.at(1).width(), 1200 / 15.0);
        QCOMPARE(found.at(1).height(), 900 / 15.0);
        const QImage photo = imageResource(doc, found.at(1).name());
        QCOMPARE(photo.size(), QSize(5, 7));
        QCOMPARE(QColor(photo.pixel(2, 2)), QColor(Qt::blue));
    }

    void shouldShareOneAttachmentNamedTwice()
    {
        QTemporaryDir package;
        QVERIFY(writeFile(package.filePath(QStringLiteral("a.png")), imageBytes(filledImage(3, 3, Qt::red), "PNG")));
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(
            document(
                "{{\\NeXTGraphic a.png \\width60 \\height60}\\'ac}{{\\NeXTGraphic a.png \\width60 \\height60}\\'ac}"),
            doc, package.path());
        QVERIFY(result.skipped.isEmpty());
        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 2);
        QCOMPARE(found.at(0).name(), found.at(1).name());
    }

    void shouldKeepAttachmentsInsideThePackage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("withPackage");
        QTest::addColumn<QString>("skipped");
        QTest::newRow("parent folder") << "../outside.png" << true << "attachment name \"../outside.png\" refused";
        QTest::newRow("absolute path") << "/tmp/outside.png" << true << "attachment name \"/tmp/outside.png\" refused";
        QTest::newRow("sub folder") << "sub/inside.png" << true << "attachment name \"sub/inside.png\" refused";
        QTest::newRow("dot dot") << ".." << true << "attachment name \"..\" refused";
        QTest::newRow("missing file") << "missing.png" << true << "attachment missing.png not found";
        QTest::newRow("link to outside") << "link.png" << true << "attachment link.png not found";
        QTest::newRow("not a picture") << "notes.txt" << true
                                       << "attachment notes.txt: damaged or unknown picture skipped";
        QTest::newRow("plain rtf") << "inside.png" << false << "attachment inside.png outside a package skipped";
    }
    void shouldKeepAttachmentsInsideThePackage()
    {
        QFETCH(QString, name);
        QFETCH(bool, withPackage);
        QFETCH(QString, skipped);
        QTemporaryDir root;
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("doc.rtfd/sub")));
        const QString package = root.filePath(QStringLiteral("doc.rtfd"));
        const QByteArray png = imageBytes(filledImage(3, 3, Qt::red), "PNG");
        for (const QString &file : {root.filePath("outside.png"), package + "/sub/inside.png", package + "/inside.png"})
            QVERIFY(writeFile(file, png));
        QVERIFY(writeFile(package + "/notes.txt", "just words"));
        QVERIFY(QFile::link(root.filePath("outside.png"), package + "/link.png"));

        QTextDocument doc;
        const RtfReadResult result
            = RtfReader::read(document("a{{\\NeXTGraphic " + name.toLatin1() + " \\width60 \\height60}\\'ac}b"), doc,
                              withPackage ? package : QString());
        QVERIFY(result.ok);
        QCOMPARE(doc.toPlainText(), QStringLiteral("ab"));
        QVERIFY(images(doc).isEmpty());
        QVERIFY2(result.skipped.contains(skipped), qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldReadATextEditDocument()
    {
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(dataFile("textedit.rtf"), doc);
        QVERIFY(result.ok);
        QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        QCOMPARE(
            blockTexts(doc),
            (QStringList{"Plain text in Helvetica.", "Centred bold", "Red italic", "", "Fourteen point one",
                         QStringLiteral("Caf\u00E9 \u00AC with\ttab") + QChar::LineSeparator + "and a line break"}));

        const QTextCharFormat plain = formatOf(doc, QStringLiteral("Plain"));
        QCOMPARE(plain.fontFamilies().toStringList(), QStringList{"Helvetica"});
        QCOMPARE(plain.fontPointSize(), 12.0);
        QVERIFY(!plain.hasProperty(QTextFormat::FontWeight));
        QVERIFY(!plain.hasProperty(QTextFormat::ForegroundBrush));
        const QList<QTextOption::Tab> tabs = blockFormatOf(doc, QStringLiteral("Plain")).tabPositions();
        QCOMPARE(tabs.size(), 12);
        QCOMPARE(tabs.first().position, 566 / 15.0);

        const QTextCharFormat bold = formatOf(doc, QStringLiteral("Centred"));
        QCOMPARE(bold.fontFamilies().toStringList(), QStringList{"Helvetica"});
        QCOMPARE(bold.fontWeight(), int(QFont::Bold));
        QCOMPARE(blockFormatOf(doc, QStringLiteral("Centred")).alignment(), Qt::AlignHCenter);

        const QTextCharFormat red = formatOf(doc, QStringLiteral("Red"));
        QVERIFY(red.fontItalic());
        QCOMPARE(red.foreground().color(), QColor(251, 2, 7));
        QVERIFY(!blockFormatOf(doc, QStringLiteral("Red")).hasProperty(QTextFormat::BlockAlignment));

        QCOMPARE(formatOf(doc, QStringLiteral("Fourteen")).fontPointSize(), 14.1);
        const QTextCharFormat times = formatOf(doc, QStringLiteral("Caf"));
        QCOMPARE(times.fontFamilies().toStringList(), QStringList{"Times"});
        QCOMPARE(times.fontPointSize(), 12.0);
    }

    void shouldReadALibreOfficeDocument()
    {
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(dataFile("libreoffice.rtf"), doc);
        QVERIFY(result.ok);
        QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        QCOMPARE(blockTexts(doc),
                 (QStringList{"First paragraph with bold and italic words.", "A heading", "Right aligned and indented",
                              QStringLiteral("\u2022\tA bullet item"),
                              QStringLiteral("A link and a highlighted word and Greek \u0394."), "Item", "Price",
                              "Widget", "12.50",
                              QChar(QChar::ObjectReplacementCharacter) + QStringLiteral(" after the picture."), ""}));

        const QTextCharFormat body = formatOf(doc, QStringLiteral("First"));
        QCOMPARE(body.fontFamilies().toStringList(), QStringList{"Liberation Serif"});
        QCOMPARE(body.fontPointSize(), 12.0);
        QCOMPARE(formatOf(doc, QStringLiteral("bold")).fontWeight(), int(QFont::Bold));
        QVERIFY(formatOf(doc, QStringLiteral("italic")).fontItalic());
        QVERIFY(!formatOf(doc, QStringLiteral("words")).fontItalic());
        const QTextBlockFormat first = blockFormatOf(doc, QStringLiteral("First"));
        QCOMPARE(first.bottomMargin(), 140 / 15.0);
        QCOMPARE(first.lineHeightType(), int(QTextBlockFormat::ProportionalHeight));
        QCOMPARE(first.lineHeight(), 115.0);

        const QTextCharFormat heading = formatOf(doc, QStringLiteral("A heading"));
        QCOMPARE(heading.fontFamilies().toStringList(), QStringList{"Liberation Sans"});
        QCOMPARE(heading.fontPointSize(), 14.0);
        QCOMPARE(blockFormatOf(doc, QStringLiteral("A heading")).topMargin(), 240 / 15.0);

        const QTextBlockFormat right = blockFormatOf(doc, QStringLiteral("Right aligned"));
        QCOMPARE(right.alignment(), Qt::AlignRight);
        QCOMPARE(right.leftMargin(), 720 / 15.0);
        QCOMPARE(right.rightMargin(), 360 / 15.0);
        QCOMPARE(right.textIndent(), -360 / 15.0);

        const QTextCharFormat link = formatOf(doc, QStringLiteral("A link"));
        QCOMPARE(link.anchorHref(), QStringLiteral("https://example.org/page"));
        QCOMPARE(link.foreground().color(), QColor(0, 0, 128));
        QCOMPARE(formatOf(doc, QStringLiteral("word and")).background().color(), QColor(255, 255, 0));

        QTextTable *table = doc.find(QStringLiteral("Item"), 0, QTextDocument::FindCaseSensitively).currentTable();
        QVERIFY(table);
        QCOMPARE(table->rows(), 2);
        QCOMPARE(table->columns(), 2);
        QCOMPARE(table->format().border(), 1.0);
        QCOMPARE(table->cellAt(0, 0).format().background().color(), QColor(221, 221, 221));
        QCOMPARE(formatOf(doc, QStringLiteral("Price")).fontWeight(), int(QFont::Bold));
        QCOMPARE(blockFormatOf(doc, QStringLiteral("12.50")).alignment(), Qt::AlignRight);
        QVERIFY(!doc.find(QStringLiteral("after the picture")).currentTable());

        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().width(), 1440 / 15.0);
        QCOMPARE(found.first().height(), 1080 / 15.0);
        QCOMPARE(imageResource(doc, found.first().name()).size(), QSize(4, 3));
    }

    void shouldReadAnAbiWordDocument()
    {
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(dataFile("abiword.rtf"), doc);
        QVERIFY(result.ok);
        QVERIFY2(result.skipped.isEmpty(), qPrintable(result.skipped.join(QLatin1Char('\n'))));
        QCOMPARE(
            blockTexts(doc),
            (QStringList{QStringLiteral("Na\u00EFve caf\u00E9 \u043F\u0440\u0438\u0432\u0435\u0442 \U0001F600 \uFF21"),
                         "E = mc2 and H2O, struck green underlined",
                         QStringLiteral("Picture: ") + QChar::ObjectReplacementCharacter + " done."}));
        QCOMPARE(formatOf(doc, QStringLiteral("Na")).fontFamilies().toStringList(), QStringList{"Times New Roman"});
        QCOMPARE(formatOf(doc, QStringLiteral("E =")).fontFamilies().toStringList(), QStringList{"Arial"});
        QCOMPARE(formatOf(doc, QStringLiteral("E =")).fontPointSize(), 10.0);
        QCOMPARE(blockFormatOf(doc, QStringLiteral("E =")).alignment(), Qt::AlignHCenter);
        QCOMPARE(formatOf(doc, QStringLiteral("2 and")).verticalAlignment(), QTextCharFormat::AlignSuperScript);
        QCOMPARE(formatOf(doc, QStringLiteral("2O")).verticalAlignment(), QTextCharFormat::AlignSubScript);
        QVERIFY(formatOf(doc, QStringLiteral("struck")).fontStrikeOut());
        const QTextCharFormat green = formatOf(doc, QStringLiteral("green"));
        QCOMPARE(green.underlineStyle(), QTextCharFormat::SingleUnderline);
        QCOMPARE(green.foreground().color(), QColor(0, 128, 0));
        const QList<QTextImageFormat> found = images(doc);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().width(), 1200 / 15.0);
        QCOMPARE(imageResource(doc, found.first().name()).size(), QSize(4, 3));
    }

    void shouldReadBrokenDocumentsAsFarAsTheyGo_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QStringList>("blocks");
        QTest::addColumn<QString>("skipped");
        QTest::newRow("missing final brace")
            << dataFile("missing-brace.rtf") << QStringList{"First paragraph", "Second bold"}
            << "missing closing brace";
        QTest::newRow("text after the final brace")
            << dataFile("text-after-brace.rtf") << QStringList{"Complete document."}
            << "text after the final brace ignored";
        QTest::newRow("only the header") << QByteArray("{\\rtf1") << QStringList{""} << "missing closing brace";
        QTest::newRow("cut in a picture")
            << QByteArray("{\\rtf1 a{\\pict\\pngblip 89504e47") << QStringList{"a"} << "damaged picture skipped";
        QTest::newRow("cut in a control word")
            << QByteArray("{\\rtf1 a\\pa") << QStringList{"a"} << "missing closing brace";
        QTest::newRow("cut in a hex byte") << QByteArray("{\\rtf1 a\\'") << QStringList{"a"} << "missing closing brace";
        QTest::newRow("lone backslash at the end")
            << QByteArray("{\\rtf1 a\\") << QStringList{"a"} << "missing closing brace";
        QTest::newRow("a hex byte with one digit") << QByteArray("{\\rtf1 a\\'4}") << QStringList{"a"} << "";
        QTest::newRow("too many closing braces")
            << QByteArray("{\\rtf1 a}}}b") << QStringList{"a"} << "text after the final brace ignored";
    }
    void shouldReadBrokenDocumentsAsFarAsTheyGo()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QStringList, blocks);
        QFETCH(QString, skipped);
        QTextDocument doc;
        const RtfReadResult result = RtfReader::read(rtf, doc);
        QVERIFY(result.ok);
        QCOMPARE(blockTexts(doc), blocks);
        if (skipped.isEmpty())
            QVERIFY(result.skipped.isEmpty());
        else
            QVERIFY2(result.skipped.contains(skipped), qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldReadHostileInputQuickly_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("skipped");
        QTest::newRow("100,000 nested braces")
            << QByteArray("{\\rtf1 before") + QByteArray(100000, '{') + "deep" + QByteArray(100000, '}') + " after}"
            << "before after" << QStringLiteral("groups nested deeper than %1 skipped").arg(RtfReader::maxDepth);
        QTest::newRow("100,000 nested braces never closed")
            << QByteArray("{\\rtf1 before") + QByteArray(100000, '{') + "deep"
            << "before"
            << "missing closing brace";
        QTest::newRow("\\bin2147483647") << QByteArray("{\\rtf1 before\\bin2147483647 xyz}") << "before"
                                         << "\\bin data longer than the file";
        QTest::newRow("1000-letter control word")
            << QByteArray("{\\rtf1 before \\") + QByteArray(1000, 'x') + " after}"
            << "before after" << QStringLiteral("control word of more than 32 letters cut");
        QTest::newRow("40-digit number") << QByteArray("{\\rtf1 before \\fs") + QByteArray(40, '9') + " after}"
                                         << "before after" << QStringLiteral("number of more than 10 digits cut");
        QTest::newRow("40-digit negative \\u") << QByteArray("{\\rtf1 before\\u-") + QByteArray(40, '9') + "? after}"
                                               << "before after" << QStringLiteral("number of more than 10 digits cut");
        QTest::newRow("huge \\uc") << QByteArray("{\\rtf1 before\\uc2147483647\\u233 abcdefgh}")
                                   << QStringLiteral("before\u00E9") << "";
        QTest::newRow("text after the final brace")
            << QByteArray("{\\rtf1 before after}") + QByteArray(100000, 'x') << "before after"
            << "text after the final brace ignored";
        QTest::newRow("100,000 unknown destinations")
            << QByteArray("{\\rtf1 before") + QByteArray("{\\*\\x{\\y}}").repeated(100000) + " after}"
            << "before after"
            << "unknown destination \\x skipped";
        QTest::newRow("50,000 open pictures")
            << QByteArray("{\\rtf1 before") + QByteArray("{\\pict ").repeated(50000) + "}"
            << "before"
            << "missing closing brace";
        QTest::newRow("20,000 cells in a row")
            << QByteArray("{\\rtf1 before\\trowd") + QByteArray("\\cellx1").repeated(2000)
                + QByteArray("\\intbl x\\cell").repeated(20000) + "\\row\\pard after}"
            << ""
            << "";
    }
    void shouldReadHostileInputQuickly()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QString, text);
        QFETCH(QString, skipped);
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        const RtfReadResult result = RtfReader::read(rtf, doc);
        const qint64 elapsed = timer.elapsed();
        QVERIFY2(elapsed < 2000, qPrintable(QStringLiteral("%1 ms").arg(elapsed)));
        QVERIFY(result.ok);
        if (!text.isEmpty())
            QCOMPARE(doc.toPlainText(), text);
        if (!skipped.isEmpty())
            QVERIFY2(result.skipped.contains(skipped), qPrintable(result.skipped.join(QLatin1Char('\n'))));
    }

    void shouldSplitAnEndlessTable()
    {
        // 1,600 rows of 64 one-word cells: the table is cut into tables of
        // a bounded number of cells, and nothing is lost.
        QByteArray rtf = "{\\rtf1\\trowd" + QByteArray("\\cellx1").repeated(64);
        rtf += (QByteArray("\\intbl x\\cell").repeated(64) + "\\row").repeated(1600) + "\\pard after}";
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(RtfReader::read(rtf, doc).ok);
        QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
        int tables = 0;
        int cells = 0;
        for (QTextFrame *child : doc.rootFrame()->childFrames()) {
            if (auto *table = qobject_cast<QTextTable *>(child)) {
                ++tables;
                cells += table->rows() * table->columns();
                QVERIFY(table->rows() * table->columns() <= 100000);
            }
        }
        QCOMPARE(tables, 2);
        QCOMPARE(cells, 64 * 1600);
        QCOMPARE(doc.toPlainText().count(QLatin1Char('x')), 64 * 1600);
    }

    void shouldReadAMegabyteQuickly()
    {
        // About 1 MB in 10,000 paragraphs of several runs each.
        QByteArray body;
        for (int i = 0; i < 10000; ++i)
            body += "\\pard\\qj\\li" + QByteArray::number(i % 5 * 100) + " Paragraph " + QByteArray::number(i)
                + " with {\\b bold}, {\\i italic} and {\\cf1 red} words, caf\\'e9 \\u8364? and a long tail of plain "
                  "text.\\par\n";
        const QByteArray rtf = document(body);
        QVERIFY(rtf.size() > 1000000);
        QTextDocument doc;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(RtfReader::read(rtf, doc).ok);
        const qint64 elapsed = timer.elapsed();
        QVERIFY2(elapsed < 2000, qPrintable(QStringLiteral("%1 ms").arg(elapsed)));
        QCOMPARE(doc.blockCount(), 10001);
        QCOMPARE(formatOf(doc, QStringLiteral("bold")).fontWeight(), int(QFont::Bold));
    }
};

QUORVEL_TEST(RtfReaderTest)
#include "RtfReaderTest.moc"
