// The bytes the RTF writer produces: header, escaping, formatting words,
// paragraphs, tables and pictures in both forms.
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/RtfWriter.h"

#include <QPixmap>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

using namespace richtextchecks;

namespace {

// Counts a control word standing alone (not the start of a longer word).
int countWord(const QByteArray &rtf, const char *word)
{
    const QRegularExpression pattern(QStringLiteral("\\\\%1(?![a-z])").arg(QLatin1String(word)));
    return int(QString::fromLatin1(rtf).count(pattern));
}

// Whether every brace that is not escaped has its partner, never closing
// more groups than are open.
bool bracesBalance(const QByteArray &rtf)
{
    int depth = 0;
    for (qsizetype i = 0; i < rtf.size(); ++i) {
        const char c = rtf.at(i);
        if (c == '\\') {
            ++i;
        } else if (c == '{') {
            ++depth;
        } else if (c == '}') {
            if (--depth < 0)
                return false;
        }
    }
    return depth == 0;
}

// The hexadecimal picture data that follows the given words, decoded.
QByteArray pictureBytes(const QByteArray &rtf, const QByteArray &after)
{
    const qsizetype start = rtf.indexOf(after);
    if (start < 0)
        return QByteArray();
    const qsizetype end = rtf.indexOf('}', start);
    QByteArray hex = rtf.mid(start + after.size(), end - start - after.size());
    // The words' numbers come first (\picwgoal...): skip to the first line break.
    hex = hex.mid(hex.indexOf('\n'));
    hex.replace('\n', QByteArray());
    return QByteArray::fromHex(hex);
}

QImage testImage()
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    image.setPixel(1, 0, qRgb(0, 255, 0));
    image.setPixel(2, 0, qRgb(0, 0, 255));
    image.setPixel(0, 1, qRgba(10, 20, 30, 128));
    image.setPixel(1, 1, qRgb(255, 255, 255));
    image.setPixel(2, 1, qRgb(0, 0, 0));
    return image;
}

void insertPicture(QTextDocument &document, const QString &name, const QVariant &resource, qreal width = 0,
                   qreal height = 0)
{
    document.addResource(QTextDocument::ImageResource, QUrl(name), resource);
    QTextImageFormat format;
    format.setName(name);
    if (width > 0)
        format.setWidth(width);
    if (height > 0)
        format.setHeight(height);
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertImage(format);
}

}  // namespace

class RtfWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartWithTheHeaderAndTables()
    {
        QTextDocument document;
        prepare(document);
        document.setPlainText(QStringLiteral("Hello"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY(rtf.startsWith("{\\rtf1\\ansi\\ansicpg1252\\cocoartf2822\\deff0\\uc1"));
        QVERIFY(rtf.contains("{\\fonttbl{\\f0\\fnil\\fcharset0 Helvetica;}}"));
        QVERIFY(rtf.contains("{\\colortbl;}"));
        QVERIFY(rtf.contains("\\pard\\ql{\\f0\\fs24 Hello}"));
        QVERIFY(rtf.trimmed().endsWith('}'));
        QVERIFY(bracesBalance(rtf));
    }

    void shouldEscapeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("backslash") << QStringLiteral("a\\b") << QByteArray("a\\\\b");
        QTest::newRow("braces") << QStringLiteral("x{y}z") << QByteArray("x\\{y\\}z");
        QTest::newRow("latin letter") << QStringLiteral("caf\u00e9") << QByteArray("caf\\'e9");
        QTest::newRow("euro and dash of windows-1252") << QStringLiteral("x\u20ac\u2014") << QByteArray("x\\'80\\'97");
        QTest::newRow("greek") << QStringLiteral("x\u03a9y") << QByteArray("x\\u937?y");
        QTest::newRow("above 32767 is negative") << QStringLiteral("x\uff21") << QByteArray("x\\u-223?");
        QTest::newRow("surrogate pair") << QString::fromUtf8("x\xf0\x9f\x98\x80") << QByteArray("x\\u-10179?\\u-8704?");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QByteArray("a\\tab b");
        QTest::newRow("line break") << QStringLiteral("a\u2028b") << QByteArray("a\\line b");
        QTest::newRow("digits after a control word") << QStringLiteral("a\t1") << QByteArray("a\\tab 1");
        QTest::newRow("control character dropped") << QStringLiteral("a\u0001b") << QByteArray("ab");
    }

    void shouldEscapeText()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(text);
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY2(rtf.contains("{\\f0\\fs24 " + expected + "}"), rtf.constData());
        QVERIFY(bracesBalance(rtf));
    }

    void shouldWriteOnlyAsciiBytes()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        QTextCharFormat format;
        format.setFontFamilies({QString::fromUtf8("Hiragino \xe6\x98\x8e\xe6\x9c\x9d")});
        cursor.insertText(
            QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e \xd0\x9f\xd1\x80\xd0\xb8\xd0\xb2\xd0\xb5\xd1\x82 "
                              "\xd8\xb9\xd8\xb1\xd8\xa8\xd9\x8a \xf0\x9f\x8e\x89 \xc3\xa9\xc3\xa0 \xe2\x82\xac\x7f"),
            format);
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        for (const char c : rtf)
            QVERIFY2(static_cast<unsigned char>(c) < 0x80, rtf.constData());
        QVERIFY(rtf.contains("{\\f1\\fnil\\fcharset0 Hiragino \\u26126?\\u26397?;}"));
    }

    void shouldWriteCharacterFormats_data()
    {
        QTest::addColumn<QTextFormat>("format");
        QTest::addColumn<QByteArray>("run");
        QTest::addColumn<QByteArray>("header");

        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        QTest::newRow("bold") << QTextFormat(bold) << QByteArray("{\\f0\\fs24\\b X}") << QByteArray();
        QTextCharFormat italic;
        italic.setFontItalic(true);
        QTest::newRow("italic") << QTextFormat(italic) << QByteArray("{\\f0\\fs24\\i X}") << QByteArray();
        QTextCharFormat underline;
        underline.setFontUnderline(true);
        QTest::newRow("underline") << QTextFormat(underline) << QByteArray("{\\f0\\fs24\\ul X}") << QByteArray();
        QTextCharFormat dashed;
        dashed.setUnderlineStyle(QTextCharFormat::DashUnderline);
        QTest::newRow("dashed underline")
            << QTextFormat(dashed) << QByteArray("{\\f0\\fs24\\ul\\uldash X}") << QByteArray();
        QTextCharFormat strike;
        strike.setFontStrikeOut(true);
        QTest::newRow("strike-through") << QTextFormat(strike) << QByteArray("{\\f0\\fs24\\strike X}") << QByteArray();
        QTextCharFormat super;
        super.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
        QTest::newRow("superscript") << QTextFormat(super) << QByteArray("{\\f0\\fs24\\super X}") << QByteArray();
        QTextCharFormat sub;
        sub.setVerticalAlignment(QTextCharFormat::AlignSubScript);
        QTest::newRow("subscript") << QTextFormat(sub) << QByteArray("{\\f0\\fs24\\sub X}") << QByteArray();
        QTextCharFormat family;
        family.setFontFamilies({QStringLiteral("Courier New")});
        QTest::newRow("font family") << QTextFormat(family) << QByteArray("{\\f1\\fs24 X}")
                                     << QByteArray("{\\f1\\fnil\\fcharset0 Courier New;}");
        QTextCharFormat size;
        size.setFontPointSize(14);
        QTest::newRow("size") << QTextFormat(size) << QByteArray("{\\f0\\fs28 X}") << QByteArray();
        QTextCharFormat half;
        half.setFontPointSize(10.5);
        QTest::newRow("half-point size") << QTextFormat(half) << QByteArray("{\\f0\\fs21 X}") << QByteArray();
        QTextCharFormat fraction;
        fraction.setFontPointSize(14.1);
        QTest::newRow("fractional size") << QTextFormat(fraction) << QByteArray("{\\f0\\fs28\\fsmilli14100 X}")
                                         << QByteArray();
        QTextCharFormat colour;
        colour.setForeground(QColor(255, 0, 0));
        QTest::newRow("text colour") << QTextFormat(colour) << QByteArray("{\\f0\\fs24\\cf1 X}")
                                     << QByteArray("{\\colortbl;\\red255\\green0\\blue0;}");
        QTextCharFormat background;
        background.setBackground(QColor(0, 128, 255));
        QTest::newRow("background colour") << QTextFormat(background) << QByteArray("{\\f0\\fs24\\cb1\\chcbpat1 X}")
                                           << QByteArray("{\\colortbl;\\red0\\green128\\blue255;}");
        QTextCharFormat many;
        many.setFontWeight(QFont::Bold);
        many.setFontItalic(true);
        many.setForeground(QColor(0, 0, 255));
        many.setBackground(QColor(255, 255, 0));
        QTextCharFormat transparent;
        transparent.setBackground(QColor(Qt::transparent));
        QTest::newRow("transparent background")
            << QTextFormat(transparent) << QByteArray("{\\f0\\fs24 X}") << QByteArray("{\\colortbl;}");
        QTest::newRow("together") << QTextFormat(many) << QByteArray("{\\f0\\fs24\\b\\i\\cf1\\cb2\\chcbpat2 X}")
                                  << QByteArray("{\\colortbl;\\red0\\green0\\blue255;\\red255\\green255\\blue0;}");
    }

    void shouldWriteCharacterFormats()
    {
        QFETCH(QTextFormat, format);
        QFETCH(QByteArray, run);
        QFETCH(QByteArray, header);
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("X"), format.toCharFormat());
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY2(rtf.contains(run), rtf.constData());
        if (!header.isEmpty())
            QVERIFY2(rtf.contains(header), rtf.constData());
    }

    void shouldShareFontAndColourEntries()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        QTextCharFormat red;
        red.setForeground(QColor(255, 0, 0));
        red.setFontFamilies({QStringLiteral("Times")});
        QTextCharFormat plain;
        cursor.insertText(QStringLiteral("a"), red);
        cursor.insertText(QStringLiteral("b"), plain);
        cursor.insertText(QStringLiteral("c"), red);
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QCOMPARE(rtf.count("\\red255\\green0\\blue0;"), 1);
        QCOMPARE(rtf.count("Times;"), 1);
        QVERIFY(rtf.contains("{\\f1\\fs24\\cf1 a}{\\f0\\fs24 b}{\\f1\\fs24\\cf1 c}"));
    }

    void shouldWriteParagraphFormats_data()
    {
        QTest::addColumn<QTextFormat>("format");
        QTest::addColumn<QByteArray>("words");

        QTextBlockFormat centre;
        centre.setAlignment(Qt::AlignHCenter);
        QTest::newRow("centred") << QTextFormat(centre) << QByteArray("\\pard\\qc{");
        QTextBlockFormat right;
        right.setAlignment(Qt::AlignRight);
        QTest::newRow("right") << QTextFormat(right) << QByteArray("\\pard\\qr{");
        QTextBlockFormat justify;
        justify.setAlignment(Qt::AlignJustify);
        QTest::newRow("justified") << QTextFormat(justify) << QByteArray("\\pard\\qj{");
        QTextBlockFormat indents;
        // Lengths in 1/96 inch: 48 is half an inch, 720 twips.
        indents.setLeftMargin(48);
        indents.setRightMargin(24);
        indents.setTextIndent(-24);
        QTest::newRow("indents") << QTextFormat(indents) << QByteArray("\\pard\\ql\\li720\\ri360\\fi-360{");
        QTextBlockFormat spacing;
        spacing.setTopMargin(16);
        spacing.setBottomMargin(8);
        QTest::newRow("spacing") << QTextFormat(spacing) << QByteArray("\\pard\\ql\\sb240\\sa120{");
        QTextBlockFormat proportional;
        proportional.setLineHeight(150, QTextBlockFormat::ProportionalHeight);
        QTest::newRow("line height") << QTextFormat(proportional) << QByteArray("\\pard\\ql\\sl360\\slmult1{");
        QTextBlockFormat exact;
        exact.setLineHeight(24, QTextBlockFormat::FixedHeight);
        QTest::newRow("exact line height") << QTextFormat(exact) << QByteArray("\\pard\\ql\\sl-360\\slmult0{");
        QTextBlockFormat tabs;
        tabs.setTabPositions({QTextOption::Tab(48, QTextOption::LeftTab), QTextOption::Tab(96, QTextOption::RightTab),
                              QTextOption::Tab(192, QTextOption::CenterTab)});
        QTest::newRow("tab stops") << QTextFormat(tabs) << QByteArray("\\pard\\ql\\tx720\\tqr\\tx1440\\tqc\\tx2880{");
    }

    void shouldWriteParagraphFormats()
    {
        QFETCH(QTextFormat, format);
        QFETCH(QByteArray, words);
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.setBlockFormat(format.toBlockFormat());
        cursor.insertText(QStringLiteral("X"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY2(rtf.contains(words + "\\f0\\fs24 X}"), rtf.constData());
    }

    void shouldSeparateParagraphsWithParAndLinesWithLine()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("one"));
        cursor.insertBlock();
        cursor.insertText(QStringLiteral("two\u2028still two"));
        cursor.insertBlock();
        cursor.insertBlock();
        cursor.insertText(QStringLiteral("four"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QCOMPARE(countWord(rtf, "pard"), 4);
        // Between paragraphs only: none after the last.
        QCOMPARE(countWord(rtf, "par"), 3);
        QCOMPARE(countWord(rtf, "line"), 1);
        QVERIFY(rtf.endsWith("{\\f0\\fs24 four}\n}\n"));
    }

    void shouldWriteATable()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("before"));
        QTextTable *table = cursor.insertTable(2, 3);
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column)
                table->cellAt(row, column)
                    .firstCursorPosition()
                    .insertText(QStringLiteral("r%1c%2").arg(row).arg(column));
        }
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QCOMPARE(countWord(rtf, "trowd"), 2);
        QCOMPARE(rtf.count("\\cellx"), 6);
        QCOMPARE(countWord(rtf, "cell"), 6);
        QCOMPARE(countWord(rtf, "intbl"), 6);
        QCOMPARE(countWord(rtf, "row"), 2);
        QVERIFY(bracesBalance(rtf));

        // Cells in reading order, each ended by \cell; rows ended by \row.
        const QRegularExpression cells(QStringLiteral("r(\\d)c(\\d)\\}\\\\cell"));
        QStringList order;
        for (const QRegularExpressionMatch &match : cells.globalMatch(QString::fromLatin1(rtf)))
            order << match.captured(1) + match.captured(2);
        QCOMPARE(order, QStringList({"00", "01", "02", "10", "11", "12"}));
        QVERIFY(rtf.indexOf("r02}\\cell") < rtf.indexOf("\\row"));

        // Right edges grow from left to right.
        const QRegularExpression edges(QStringLiteral("\\\\cellx(\\d+)"));
        QList<int> values;
        for (const QRegularExpressionMatch &match : edges.globalMatch(QString::fromLatin1(rtf)))
            values << match.captured(1).toInt();
        QCOMPARE(values.size(), 6);
        QVERIFY(values[0] > 0 && values[0] < values[1] && values[1] < values[2]);
        QCOMPARE(values.mid(3), values.mid(0, 3));
        // The paragraph before the table is ended before the first row.
        QVERIFY(rtf.indexOf("before}\\par") < rtf.indexOf("\\trowd"));
    }

    void shouldMarkMergedCells()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        QTextTable *table = cursor.insertTable(2, 3);
        table->mergeCells(0, 0, 1, 2);  // across the first two columns
        table->mergeCells(0, 2, 2, 1);  // down the last column
        table->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("wide"));
        table->cellAt(0, 2).firstCursorPosition().insertText(QStringLiteral("tall"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QByteArrayList cells;
        for (const QByteArray &line : rtf.split('\n')) {
            if (line.contains("\\cellx"))
                cells << line;
        }
        // Every row has a cell for every column, on the same edges.
        QCOMPARE(cells.size(), 6);
        QVERIFY(cells.at(0).startsWith("\\clmgf\\"));
        QVERIFY(cells.at(1).startsWith("\\clmrg\\"));
        QVERIFY(cells.at(2).startsWith("\\clvmgf\\"));
        QVERIFY(!cells.at(3).startsWith("\\cl") || cells.at(3).startsWith("\\clbrdr"));
        QVERIFY(cells.at(5).startsWith("\\clvmrg\\"));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(cells.at(i).mid(cells.at(i).indexOf("\\cellx")),
                     cells.at(i + 3).mid(cells.at(i + 3).indexOf("\\cellx")));
        QCOMPARE(countWord(rtf, "cell"), 6);
        // The merged-away cells are empty.
        QVERIFY(rtf.contains("wide}\\cell\n\\pard\\intbl\\cell\n\\pard\\intbl\\ql{\\f0\\fs24 tall}\\cell"));
    }

    void shouldFlattenATableInsideACell()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        QTextTable *outer = cursor.insertTable(1, 2);
        outer->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("left"));
        QTextCursor inside = outer->cellAt(0, 1).firstCursorPosition();
        inside.insertText(QStringLiteral("top"));
        QTextTable *inner = inside.insertTable(2, 1);
        inner->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("in1"));
        inner->cellAt(1, 0).firstCursorPosition().insertText(QStringLiteral("in2"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QCOMPARE(countWord(rtf, "trowd"), 1);
        QCOMPARE(countWord(rtf, "cell"), 2);
        QCOMPARE(countWord(rtf, "row"), 1);
        // The inner cells become paragraphs of the outer cell, in order.
        const qsizetype top = rtf.indexOf(" top}");
        const qsizetype in1 = rtf.indexOf(" in1}\\par");
        const qsizetype in2 = rtf.indexOf(" in2}");
        QVERIFY(top > 0 && top < in1 && in1 < in2);
        QVERIFY(rtf.indexOf("\\cell", in2) < rtf.indexOf("\\row"));
        QVERIFY(bracesBalance(rtf));
    }

    void shouldEmbedPicturesAsPng_data()
    {
        QTest::addColumn<QVariant>("resource");
        const QByteArray png = imageBytes(testImage(), "PNG");
        const QByteArray bmp = imageBytes(testImage().convertToFormat(QImage::Format_RGB32), "BMP");
        QTest::newRow("image") << QVariant(testImage());
        QTest::newRow("pixmap") << QVariant(QPixmap::fromImage(testImage()));
        QTest::newRow("png file bytes") << QVariant(png);
        QTest::newRow("bmp file bytes") << QVariant(bmp);
    }

    void shouldEmbedPicturesAsPng()
    {
        QFETCH(QVariant, resource);
        QTextDocument document;
        prepare(document);
        insertPicture(document, QStringLiteral("pic"), resource, 40, 30);
        const RtfWriteResult written = RtfWriter::writeRtf(document);
        QVERIFY(written.attachments.isEmpty());
        const QByteArray words = "{\\*\\shppict{\\pict\\pngblip\\picw3\\pich2\\picwgoal600\\pichgoal450";
        QVERIFY2(written.rtf.contains(words), written.rtf.constData());
        const QByteArray png = pictureBytes(written.rtf, words);
        QVERIFY(png.startsWith("\x89PNG"));
        QImage expected = testImage();
        if (resource.userType() == QMetaType::QByteArray)
            expected = QImage::fromData(resource.toByteArray());
        QVERIFY(samePixels(QImage::fromData(png), expected));
        QVERIFY(bracesBalance(written.rtf));
    }

    void shouldGiveAPictureWithoutSizeItsNaturalSize()
    {
        QTextDocument document;
        prepare(document);
        QImage image = testImage();
        image.setDotsPerMeterX(3780);  // 96 dots per inch: 3 pixels are 2.25 points
        image.setDotsPerMeterY(3780);
        insertPicture(document, QStringLiteral("pic"), image);
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY2(rtf.contains("\\picw3\\pich2\\picwgoal45\\pichgoal30"), rtf.constData());
    }

    void shouldPngEncodePicturesGivenAsJpegBytes()
    {
        const QByteArray jpeg = imageBytes(filledImage(40, 30, QColor(200, 100, 50)), "JPEG");
        QVERIFY(!jpeg.isEmpty());
        QTextDocument document;
        prepare(document);
        insertPicture(document, QStringLiteral("photo.jpg"), jpeg);
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        const QByteArray words = "\\pngblip\\picw40\\pich30";
        QVERIFY(rtf.contains(words));
        QVERIFY(samePixels(QImage::fromData(pictureBytes(rtf, words)), QImage::fromData(jpeg)));
        QVERIFY(!rtf.contains("jpegblip"));
    }

    void shouldWritePackagePicturesAsFiles()
    {
        QTextDocument document;
        prepare(document);
        insertPicture(document, QStringLiteral("Pasted Graphic.png"), testImage(), 160, 120);
        const RtfWriteResult written = RtfWriter::writePackage(document);
        QVERIFY2(written.rtf.contains("{{\\NeXTGraphic Pasted Graphic.png \\width2400 \\height1800}\\'ac}"),
                 written.rtf.constData());
        QVERIFY(!written.rtf.contains("\\pict"));
        QCOMPARE(written.attachments.size(), 1);
        QCOMPARE(written.attachments.at(0).fileName, QStringLiteral("Pasted Graphic.png"));
        QVERIFY(samePixels(QImage::fromData(written.attachments.at(0).bytes), testImage()));
    }

    void shouldKeepTheBytesOfJpegAndTiffInAPackage_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("fileName");
        QTest::newRow("jpeg") << QByteArray("JPEG") << QStringLiteral("photo.jpeg") << QStringLiteral("photo.jpeg");
        QTest::newRow("tiff") << QByteArray("TIFF") << QStringLiteral("scan.tif") << QStringLiteral("scan.tif");
        QTest::newRow("tiff named without extension")
            << QByteArray("TIFF") << QStringLiteral("scan") << QStringLiteral("scan.tiff");
        QTest::newRow("jpeg named png") << QByteArray("JPEG") << QStringLiteral("wrong.png")
                                        << QStringLiteral("wrong.jpg");
    }

    void shouldKeepTheBytesOfJpegAndTiffInAPackage()
    {
        QFETCH(QByteArray, format);
        QFETCH(QString, name);
        QFETCH(QString, fileName);
        const QByteArray bytes = imageBytes(filledImage(16, 8, QColor(20, 120, 220)), format.constData());
        QVERIFY(!bytes.isEmpty());
        QTextDocument document;
        prepare(document);
        insertPicture(document, name, bytes);
        const RtfWriteResult written = RtfWriter::writePackage(document);
        QCOMPARE(written.attachments.size(), 1);
        QCOMPARE(written.attachments.at(0).fileName, fileName);
        QCOMPARE(written.attachments.at(0).bytes, bytes);
        QVERIFY(written.rtf.contains("\\NeXTGraphic " + fileName.toLatin1() + " \\width"));
    }

    void shouldNameAttachmentsSafelyAndOnce()
    {
        QTextDocument document;
        prepare(document);
        insertPicture(document, QStringLiteral("../../etc/passwd.png"), testImage());
        insertPicture(document, QStringLiteral("one/pic.png"), testImage());
        insertPicture(document, QStringLiteral("two/PIC.png"), testImage());
        insertPicture(document, QStringLiteral("one/pic.png"), testImage());  // the same resource again
        insertPicture(document, QString::fromUtf8("\xe5\x9b\xbe {x}\\y.png"), testImage());
        insertPicture(document, QStringLiteral("TXT.rtf"), testImage());
        const RtfWriteResult written = RtfWriter::writePackage(document);
        QStringList names;
        for (const RtfAttachment &attachment : written.attachments)
            names << attachment.fileName;
        QCOMPARE(names, QStringList({"passwd.png", "pic.png", "PIC_2.png", "_ _x__y.png", "TXT.png"}));
        QCOMPARE(written.rtf.count("\\NeXTGraphic"), 6);
        QCOMPARE(written.rtf.count("\\NeXTGraphic pic.png "), 2);
        QVERIFY(bracesBalance(written.rtf));
    }

    void shouldLeaveOutPicturesThatCannotBeRead()
    {
        QTextDocument document;
        prepare(document);
        insertPicture(document, QStringLiteral("broken.png"), QByteArray("not an image at all"));
        QTextCursor cursor(&document);
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(QStringLiteral("text"));
        const RtfWriteResult written = RtfWriter::writePackage(document);
        QVERIFY(written.attachments.isEmpty());
        QVERIFY(!written.rtf.contains("NeXTGraphic"));
        QVERIFY(written.rtf.contains(" text}"));
        QVERIFY(!RtfWriter::writeRtf(document).rtf.contains("\\pict"));
    }

    void shouldWriteListItemsWithTheirMarkers()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertList(QTextListFormat::ListDisc);
        cursor.insertText(QStringLiteral("apple"));
        cursor.insertBlock();
        cursor.insertText(QStringLiteral("pear"));
        cursor.insertBlock(QTextBlockFormat());
        cursor.insertList(QTextListFormat::ListDecimal);
        cursor.insertText(QStringLiteral("first"));
        cursor.insertBlock();
        cursor.insertText(QStringLiteral("second"));
        cursor.insertBlock(QTextBlockFormat());
        cursor.insertText(QStringLiteral("after"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        // A hanging indent of a quarter inch at the list's indent of 40 units.
        QVERIFY2(rtf.count("\\pard\\ql\\li600\\fi-360{") == 4, rtf.constData());
        QVERIFY2(rtf.contains("\\'95\\tab}{"), rtf.constData());
        QCOMPARE(rtf.count("\\'95\\tab}"), 2);
        QVERIFY(rtf.contains(" 1.\\tab}"));
        QVERIFY(rtf.contains(" 2.\\tab}"));
        QVERIFY(rtf.contains("\\pard\\ql{\\f0\\fs24 after}"));
    }

    void shouldWriteALinkAsAField()
    {
        QTextDocument document;
        prepare(document);
        document.setHtml(QStringLiteral("<p>see <a href=\"https://example.com/a\\b\">the site</a></p>"));
        const QByteArray rtf = RtfWriter::writeRtf(document).rtf;
        QVERIFY2(rtf.contains("{\\field{\\*\\fldinst{HYPERLINK \"https://example.com/a\\\\b\"}}{\\fldrslt{"),
                 rtf.constData());
        QVERIFY(rtf.contains(" the site}}}"));
        QVERIFY(bracesBalance(rtf));
    }
};

QUORVEL_TEST(RtfWriterTest)
#include "RtfWriterTest.moc"
