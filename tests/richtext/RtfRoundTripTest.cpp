// What the writer writes, the reader reads back: text, character and
// paragraph formats, tables and pictures in both forms; and writing what was
// read gives the same bytes again.
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/RtfReader.h"
#include "platform/richtext/RtfWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <functional>

using FormatCheck = std::function<bool(const QTextCharFormat &)>;
Q_DECLARE_METATYPE(FormatCheck)

using namespace richtextchecks;

namespace {

// Reads RTF; a package's attachments are written to a folder first.
struct Reading
{
    QTemporaryDir folder;
    RtfReadResult result;
};

void readBack(const RtfWriteResult &written, QTextDocument &document, Reading &reading)
{
    prepare(document);
    for (const RtfAttachment &attachment : written.attachments)
        QVERIFY(writeFile(reading.folder.filePath(attachment.fileName), attachment.bytes));
    reading.result
        = RtfReader::read(written.rtf, document, written.attachments.isEmpty() ? QString() : reading.folder.path());
    QVERIFY(reading.result.ok);
    QVERIFY2(reading.result.skipped.isEmpty(), qPrintable(reading.result.skipped.join(QLatin1Char('\n'))));
}

QImage testImage()
{
    QImage image(5, 4, QImage::Format_ARGB32);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x)
            image.setPixel(x, y, qRgba(x * 50, y * 60, 255 - x * 40, 255 - y * 30));
    }
    return image;
}

// A document with some of everything the writer writes.
void makeRichDocument(QTextDocument &document)
{
    prepare(document);
    QTextCursor cursor(&document);
    QTextBlockFormat title;
    title.setAlignment(Qt::AlignHCenter);
    title.setBottomMargin(6);
    cursor.setBlockFormat(title);
    QTextCharFormat big;
    big.setFontPointSize(20);
    big.setFontWeight(QFont::Bold);
    big.setForeground(QColor(10, 40, 150));
    cursor.insertText(QStringLiteral("Title {with} \\braces"), big);

    QTextBlockFormat body;
    body.setLeftMargin(18);
    body.setTextIndent(9);
    body.setTabPositions({QTextOption::Tab(144, QTextOption::RightTab)});
    cursor.insertBlock(body);
    QTextCharFormat plain;
    QTextCharFormat italic;
    italic.setFontItalic(true);
    italic.setFontFamilies({QStringLiteral("Times")});
    QTextCharFormat marked;
    marked.setBackground(QColor(255, 240, 0));
    marked.setFontUnderline(true);
    cursor.insertText(QStringLiteral("plain "), plain);
    cursor.insertText(QString::fromUtf8("italic caf\xc3\xa9 \xce\xa9 \xef\xbc\xa1 \xf0\x9f\x98\x80"), italic);
    cursor.insertText(QStringLiteral("\tmarked\u2028next line"), marked);

    cursor.insertBlock(QTextBlockFormat());
    QTextTable *table = cursor.insertTable(2, 2);
    table->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("a1"));
    table->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("b1"), italic);
    table->cellAt(1, 0).firstCursorPosition().insertText(QStringLiteral("a2"));
    table->cellAt(1, 1).firstCursorPosition().insertText(QStringLiteral("b2"));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("after the table "));

    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("dot.png")), testImage());
    QTextImageFormat image;
    image.setName(QStringLiteral("dot.png"));
    image.setWidth(50);
    image.setHeight(40);
    cursor.insertImage(image);
    cursor.insertText(QStringLiteral(" the end"), plain);

    QTextBlockFormat heading;
    heading.setLineHeight(150, QTextBlockFormat::ProportionalHeight);
    heading.setRightMargin(30);
    cursor.insertBlock(heading);
    QTextCharFormat small;
    small.setFontPointSize(9.5);
    small.setFontStrikeOut(true);
    cursor.insertText(QStringLiteral("struck "), small);
    QTextCharFormat raised;
    raised.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    raised.setFontPointSize(14.1);
    cursor.insertText(QStringLiteral("up"), raised);
    QTextCharFormat lowered;
    lowered.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    lowered.setUnderlineStyle(QTextCharFormat::DashUnderline);
    cursor.insertText(QStringLiteral("down"), lowered);

    // An empty paragraph keeps its own size.
    QTextCharFormat tall;
    tall.setFontPointSize(30);
    cursor.insertBlock(QTextBlockFormat(), tall);
    cursor.insertBlock(QTextBlockFormat(), plain);
    cursor.insertText(QStringLiteral("merged cells:"), plain);
    QTextTable *merged = cursor.insertTable(3, 3);
    merged->mergeCells(0, 0, 1, 2);
    merged->mergeCells(0, 2, 2, 1);
    merged->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("wide"));
    merged->cellAt(0, 2).firstCursorPosition().insertText(QStringLiteral("tall"));
    merged->cellAt(1, 0).firstCursorPosition().insertText(QStringLiteral("x"));
    merged->cellAt(2, 1).firstCursorPosition().insertText(QStringLiteral("y"));
    QTextTableCellFormat shaded;
    shaded.setBackground(QColor(220, 230, 240));
    merged->cellAt(2, 2).setFormat(shaded);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("last"), plain);
}

}  // namespace

class RtfRoundTripTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadBackTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("paragraphs") << QStringLiteral("one\ntwo\n\nfour");
        QTest::newRow("escaped characters") << QStringLiteral("back\\slash {braces} done");
        QTest::newRow("windows-1252") << QString::fromUtf8(
            "caf\xc3\xa9 \xe2\x82\xac 5 \xe2\x80\x94 \xe2\x80\x9cquoted\xe2\x80\x9d");
        QTest::newRow("beyond windows-1252")
            << QString::fromUtf8("\xce\xa9\xce\xbc \xd0\x9f\xd1\x80 \xe6\x97\xa5\xe6\x9c\xac \xef\xbc\xa1");
        QTest::newRow("surrogate pair") << QString::fromUtf8("smile \xf0\x9f\x98\x80 and \xf0\x9d\x84\x9e");
        QTest::newRow("tabs and line breaks") << QStringLiteral("a\tb\u2028c\td");
        QTest::newRow("spaces kept") << QStringLiteral("  two leading, three   inside, trailing  ");
        QTest::newRow("digits and hyphens after tabs") << QStringLiteral("\t1\t-2\t a");
    }

    void shouldReadBackTheText()
    {
        QFETCH(QString, text);
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(text);
        QTextDocument loaded;
        Reading reading;
        readBack(RtfWriter::writeRtf(document), loaded, reading);
        QCOMPARE(loaded.toPlainText(), document.toPlainText());
        QCOMPARE(loaded.blockCount(), document.blockCount());
    }

    void shouldReadBackCharacterFormats_data()
    {
        QTest::addColumn<QTextFormat>("format");
        QTest::addColumn<FormatCheck>("check");
        QTextCharFormat f;

        f = QTextCharFormat();
        f.setFontWeight(QFont::Bold);
        QTest::newRow("bold") << QTextFormat(
            f) << FormatCheck([](const QTextCharFormat &r) { return r.fontWeight() >= QFont::DemiBold; });
        f = QTextCharFormat();
        f.setFontItalic(true);
        QTest::newRow("italic") << QTextFormat(f)
                                << FormatCheck([](const QTextCharFormat &r) { return r.fontItalic(); });
        f = QTextCharFormat();
        f.setFontUnderline(true);
        QTest::newRow("underline") << QTextFormat(f)
                                   << FormatCheck([](const QTextCharFormat &r) { return r.fontUnderline(); });
        f = QTextCharFormat();
        f.setFontStrikeOut(true);
        QTest::newRow("strike-through") << QTextFormat(f)
                                        << FormatCheck([](const QTextCharFormat &r) { return r.fontStrikeOut(); });
        f = QTextCharFormat();
        f.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
        QTest::newRow("superscript") << QTextFormat(f) << FormatCheck([](const QTextCharFormat &r) {
            return r.verticalAlignment() == QTextCharFormat::AlignSuperScript;
        });
        f = QTextCharFormat();
        f.setVerticalAlignment(QTextCharFormat::AlignSubScript);
        QTest::newRow("subscript") << QTextFormat(f) << FormatCheck([](const QTextCharFormat &r) {
            return r.verticalAlignment() == QTextCharFormat::AlignSubScript;
        });
        f = QTextCharFormat();
        f.setFontFamilies({QStringLiteral("Courier New")});
        QTest::newRow("font family") << QTextFormat(f) << FormatCheck([](const QTextCharFormat &r) {
            return r.property(QTextFormat::FontFamilies).toStringList().value(0) == QLatin1String("Courier New");
        });
        f = QTextCharFormat();
        f.setFontPointSize(17);
        QTest::newRow("size") << QTextFormat(
            f) << FormatCheck([](const QTextCharFormat &r) { return qFuzzyCompare(r.fontPointSize(), 17.0); });
        f = QTextCharFormat();
        f.setFontPointSize(10.5);
        QTest::newRow("half-point size") << QTextFormat(
            f) << FormatCheck([](const QTextCharFormat &r) { return qFuzzyCompare(r.fontPointSize(), 10.5); });
        f = QTextCharFormat();
        f.setFontPointSize(14.1);
        QTest::newRow("fractional size") << QTextFormat(
            f) << FormatCheck([](const QTextCharFormat &r) { return qFuzzyCompare(r.fontPointSize(), 14.1); });
        f = QTextCharFormat();
        f.setForeground(QColor(12, 200, 99));
        QTest::newRow("text colour") << QTextFormat(f) << FormatCheck([](const QTextCharFormat &r) {
            return r.foreground().style() != Qt::NoBrush && r.foreground().color() == QColor(12, 200, 99);
        });
        f = QTextCharFormat();
        f.setBackground(QColor(250, 240, 5));
        QTest::newRow("background colour") << QTextFormat(f) << FormatCheck([](const QTextCharFormat &r) {
            return r.background().style() != Qt::NoBrush && r.background().color() == QColor(250, 240, 5);
        });
    }

    void shouldReadBackCharacterFormats()
    {
        QFETCH(QTextFormat, format);
        QFETCH(FormatCheck, check);
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("before "));
        cursor.insertText(QStringLiteral("FORMATTED"), format.toCharFormat());
        cursor.insertText(QStringLiteral(" after"), QTextCharFormat());
        QTextDocument loaded;
        Reading reading;
        readBack(RtfWriter::writeRtf(document), loaded, reading);
        QCOMPARE(loaded.toPlainText(), QStringLiteral("before FORMATTED after"));
        QVERIFY(check(formatOf(loaded, QStringLiteral("FORMATTED"))));
        // The formatting ends with its run.
        QVERIFY(!check(formatOf(loaded, QStringLiteral("after"))));
        QVERIFY(!check(formatOf(loaded, QStringLiteral("before"))));
    }

    void shouldReadBackParagraphFormats()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        QTextBlockFormat first;
        first.setAlignment(Qt::AlignHCenter);
        first.setTopMargin(12);
        first.setBottomMargin(6);
        cursor.setBlockFormat(first);
        cursor.insertText(QStringLiteral("centred"));
        QTextBlockFormat second;
        second.setAlignment(Qt::AlignJustify);
        second.setLeftMargin(36);
        second.setRightMargin(18);
        second.setTextIndent(-18);
        second.setTabPositions(
            {QTextOption::Tab(72, QTextOption::LeftTab), QTextOption::Tab(216, QTextOption::RightTab)});
        cursor.insertBlock(second);
        cursor.insertText(QStringLiteral("justified\tand\ttabbed"));
        QTextBlockFormat third;
        third.setAlignment(Qt::AlignRight);
        cursor.insertBlock(third);
        cursor.insertText(QStringLiteral("right"));
        cursor.insertBlock(QTextBlockFormat());
        cursor.insertText(QStringLiteral("left again"));

        QTextDocument loaded;
        Reading reading;
        readBack(RtfWriter::writeRtf(document), loaded, reading);
        QCOMPARE(loaded.blockCount(), 4);
        const QTextBlockFormat a = loaded.findBlockByNumber(0).blockFormat();
        QCOMPARE(a.alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
        QCOMPARE(a.topMargin(), 12.0);
        QCOMPARE(a.bottomMargin(), 6.0);
        const QTextBlockFormat b = loaded.findBlockByNumber(1).blockFormat();
        QCOMPARE(b.alignment() & Qt::AlignHorizontal_Mask, Qt::AlignJustify);
        QCOMPARE(b.leftMargin(), 36.0);
        QCOMPARE(b.rightMargin(), 18.0);
        QCOMPARE(b.textIndent(), -18.0);
        const QList<QTextOption::Tab> tabs = b.tabPositions();
        QCOMPARE(tabs.size(), 2);
        QCOMPARE(tabs.at(0).position, 72.0);
        QCOMPARE(tabs.at(0).type, QTextOption::LeftTab);
        QCOMPARE(tabs.at(1).position, 216.0);
        QCOMPARE(tabs.at(1).type, QTextOption::RightTab);
        QCOMPARE(loaded.findBlockByNumber(2).blockFormat().alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
        const QTextBlockFormat d = loaded.findBlockByNumber(3).blockFormat();
        QVERIFY(!(d.alignment() & (Qt::AlignRight | Qt::AlignHCenter | Qt::AlignJustify)));
        QCOMPARE(d.leftMargin(), 0.0);
    }

    void shouldReadBackATable()
    {
        QTextDocument document;
        prepare(document);
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("above"));
        QTextTable *table = cursor.insertTable(3, 2);
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column)
                table->cellAt(row, column)
                    .firstCursorPosition()
                    .insertText(QStringLiteral("cell %1,%2").arg(row).arg(column));
        }
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(QStringLiteral("below"));

        QTextDocument loaded;
        Reading reading;
        readBack(RtfWriter::writeRtf(document), loaded, reading);
        QTextTable *read = firstTable(loaded);
        QVERIFY(read);
        QCOMPARE(read->rows(), 3);
        QCOMPARE(read->columns(), 2);
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column)
                QCOMPARE(read->cellAt(row, column).firstCursorPosition().block().text(),
                         QStringLiteral("cell %1,%2").arg(row).arg(column));
        }
        QVERIFY(loaded.toPlainText().startsWith(QStringLiteral("above")));
        QVERIFY(loaded.toPlainText().endsWith(QStringLiteral("below")));
    }

    void shouldReadBackPictures_data()
    {
        QTest::addColumn<bool>("package");
        QTest::newRow("embedded") << false;
        QTest::newRow("package") << true;
    }

    void shouldReadBackPictures()
    {
        QFETCH(bool, package);
        QTextDocument document;
        prepare(document);
        document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("picture.png")), testImage());
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("see "));
        QTextImageFormat format;
        format.setName(QStringLiteral("picture.png"));
        format.setWidth(25);
        format.setHeight(20);
        cursor.insertImage(format);
        cursor.insertText(QStringLiteral(" here"));

        const RtfWriteResult written = package ? RtfWriter::writePackage(document) : RtfWriter::writeRtf(document);
        QCOMPARE(written.attachments.size(), package ? 1 : 0);
        QTextDocument loaded;
        Reading reading;
        readBack(written, loaded, reading);
        QCOMPARE(loaded.toPlainText(), QStringLiteral("see \uFFFC here"));
        QTextCursor at(&loaded);
        at.setPosition(5);
        const QTextCharFormat read = at.charFormat();
        QVERIFY(read.isImageFormat());
        const QTextImageFormat image = read.toImageFormat();
        QCOMPARE(image.width(), 25.0);
        QCOMPARE(image.height(), 20.0);
        const QVariant resource = loaded.resource(QTextDocument::ImageResource, QUrl(image.name()));
        QImage pixels = resource.value<QImage>();
        if (pixels.isNull() && resource.userType() == QMetaType::QByteArray)
            pixels = QImage::fromData(resource.toByteArray());
        QVERIFY(samePixels(pixels, testImage()));
    }

    void shouldWriteWhatItReadToTheSameBytes_data()
    {
        QTest::addColumn<bool>("package");
        QTest::newRow("embedded") << false;
        QTest::newRow("package") << true;
    }

    void shouldWriteWhatItReadToTheSameBytes()
    {
        QFETCH(bool, package);
        QTextDocument document;
        makeRichDocument(document);
        const RtfWriteResult first = package ? RtfWriter::writePackage(document) : RtfWriter::writeRtf(document);
        QTextDocument loaded;
        Reading reading;
        readBack(first, loaded, reading);
        const RtfWriteResult second = package ? RtfWriter::writePackage(loaded) : RtfWriter::writeRtf(loaded);
        // Line by line, so that a difference shows where it is.
        const QList<QByteArray> secondLines = second.rtf.split('\n');
        const QList<QByteArray> firstLines = first.rtf.split('\n');
        for (qsizetype i = 0; i < qMin(firstLines.size(), secondLines.size()); ++i)
            QCOMPARE(secondLines.at(i), firstLines.at(i));
        QCOMPARE(second.rtf, first.rtf);
        QCOMPARE(second.attachments.size(), first.attachments.size());
        for (qsizetype i = 0; i < first.attachments.size(); ++i) {
            QCOMPARE(second.attachments.at(i).fileName, first.attachments.at(i).fileName);
            QCOMPARE(second.attachments.at(i).bytes, first.attachments.at(i).bytes);
        }
        // And the text is what was written.
        QCOMPARE(loaded.toPlainText(), document.toPlainText());
    }
};

QUORVEL_TEST(RtfRoundTripTest)
#include "RtfRoundTripTest.moc"
