// Writes a sample document with the rich-text writer: headings, character
// formatting, colours, indents, tab stops, a table and a picture. Used by
// scripts/check-rtf-in-libreoffice to see how another program opens what
// this one writes.
//
//     richtext_sample OUT.rtf|OUT.rtfd
#include "platform/richtext/RichTextFile.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <cstdio>
#include <functional>

namespace {

QTextCharFormat base()
{
    QTextCharFormat format;
    format.setFontFamilies({QStringLiteral("DejaVu Serif")});
    format.setFontPointSize(12);
    return format;
}

void heading(QTextCursor &cursor, const QString &text, qreal size, bool first = false)
{
    QTextBlockFormat block;
    block.setTopMargin(first ? 0 : 12);
    block.setBottomMargin(6);
    block.setHeadingLevel(size >= 20 ? 1 : 2);
    if (size >= 20)
        block.setAlignment(Qt::AlignHCenter);
    QTextCharFormat format = base();
    format.setFontFamilies({QStringLiteral("DejaVu Sans")});
    format.setFontPointSize(size);
    format.setFontWeight(QFont::Bold);
    format.setForeground(QColor(0x1f, 0x3a, 0x93));
    if (first)
        cursor.setBlockFormat(block);
    else
        cursor.insertBlock(block);
    cursor.insertText(text, format);
}

void paragraph(QTextCursor &cursor, const QTextBlockFormat &block = QTextBlockFormat())
{
    QTextBlockFormat format = block;
    format.setBottomMargin(6);
    cursor.insertBlock(format);
}

QImage picture()
{
    QImage image(160, 100, QImage::Format_ARGB32);
    image.fill(QColor(0xe8, 0xf0, 0xff));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x1f, 0x3a, 0x93), 4));
    painter.drawRect(2, 2, 156, 96);
    painter.setBrush(QColor(0xd0, 0x20, 0x20));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(55, 50), 30, 30);
    painter.setBrush(QColor(0x20, 0xa0, 0x40));
    painter.drawRect(95, 25, 45, 50);
    return image;
}

}  // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: richtext_sample OUT.rtf|OUT.rtfd\n");
        return 2;
    }

    QTextDocument document;
    QTextCursor cursor(&document);
    heading(cursor, QStringLiteral("Quorvel rich-text sample"), 22, true);

    paragraph(cursor);
    cursor.insertText(QStringLiteral("The first paragraph is plain text written by the program's own RTF writer, "
                                     "followed by a second paragraph with every kind of character formatting."),
                      base());

    paragraph(cursor);
    auto run = [&](const QString &text, const std::function<void(QTextCharFormat &)> &change) {
        QTextCharFormat format = base();
        change(format);
        cursor.insertText(text, format);
    };
    run(QStringLiteral("Styles: "), [](QTextCharFormat &) {});
    run(QStringLiteral("bold"), [](QTextCharFormat &f) { f.setFontWeight(QFont::Bold); });
    run(QStringLiteral(", "), [](QTextCharFormat &) {});
    run(QStringLiteral("italic"), [](QTextCharFormat &f) { f.setFontItalic(true); });
    run(QStringLiteral(", "), [](QTextCharFormat &) {});
    run(QStringLiteral("underlined"), [](QTextCharFormat &f) { f.setFontUnderline(true); });
    run(QStringLiteral(", "), [](QTextCharFormat &) {});
    run(QStringLiteral("struck through"), [](QTextCharFormat &f) { f.setFontStrikeOut(true); });
    run(QStringLiteral(", E = mc"), [](QTextCharFormat &) {});
    run(QStringLiteral("2"), [](QTextCharFormat &f) { f.setVerticalAlignment(QTextCharFormat::AlignSuperScript); });
    run(QStringLiteral(", H"), [](QTextCharFormat &) {});
    run(QStringLiteral("2"), [](QTextCharFormat &f) { f.setVerticalAlignment(QTextCharFormat::AlignSubScript); });
    run(QStringLiteral("O, "), [](QTextCharFormat &) {});
    run(QStringLiteral("red text"), [](QTextCharFormat &f) { f.setForeground(QColor(0xd0, 0, 0)); });
    run(QStringLiteral(", "), [](QTextCharFormat &) {});
    run(QStringLiteral("a yellow background"), [](QTextCharFormat &f) { f.setBackground(QColor(0xff, 0xee, 0x00)); });
    run(QStringLiteral(", "), [](QTextCharFormat &) {});
    run(QStringLiteral("DejaVu Sans Mono"),
        [](QTextCharFormat &f) { f.setFontFamilies({QStringLiteral("DejaVu Sans Mono")}); });
    run(QStringLiteral(" and "), [](QTextCharFormat &) {});
    run(QStringLiteral("large 18 point"), [](QTextCharFormat &f) { f.setFontPointSize(18); });
    run(QStringLiteral(" text."), [](QTextCharFormat &) {});

    paragraph(cursor);
    cursor.insertText(
        QString::fromUtf8(
            "Accents and symbols: caf\xc3\xa9, na\xc3\xafve, \xe2\x82\xac 12.50, \xe2\x80\x9cquotes\xe2\x80\x9d; "
            "Greek \xce\xa9\xce\xbc\xce\xad\xce\xb3\xce\xb1, Cyrillic "
            "\xd0\x9f\xd1\x80\xd0\xb8\xd0\xb2\xd0\xb5\xd1\x82; "
            "braces {} and a backslash \\."),
        base());

    heading(cursor, QStringLiteral("Paragraph formats"), 16);
    QTextBlockFormat indented;
    indented.setLeftMargin(36);
    indented.setAlignment(Qt::AlignJustify);
    paragraph(cursor, indented);
    cursor.insertText(
        QStringLiteral("This paragraph is indented by half an inch and justified, so that its lines fill the "
                       "width between the margins. It goes on long enough to wrap onto a second and a third "
                       "line, which shows the indent on every line of it."),
        base());
    QTextBlockFormat right;
    right.setAlignment(Qt::AlignRight);
    paragraph(cursor, right);
    cursor.insertText(QStringLiteral("A right-aligned paragraph,\u2028with a line break inside it."), base());
    QTextBlockFormat tabs;
    tabs.setTabPositions({QTextOption::Tab(288, QTextOption::RightTab)});
    paragraph(cursor, tabs);
    cursor.insertText(QStringLiteral("Subtotal\t1,234.50"), base());

    paragraph(cursor);
    cursor.insertText(QStringLiteral("A list:"), base());
    QTextBlockFormat item;
    cursor.insertBlock(item);
    QTextListFormat bullets;
    bullets.setStyle(QTextListFormat::ListDisc);
    cursor.createList(bullets);
    cursor.insertText(QStringLiteral("first item"), base());
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("second item"), base());

    heading(cursor, QStringLiteral("A table"), 16);
    paragraph(cursor);
    cursor.insertText(QStringLiteral("The table below has a shaded header row, two lines and a total:"), base());
    QTextTableFormat tableFormat;
    tableFormat.setBorder(1);
    tableFormat.setCellPadding(4);
    QTextTable *table = cursor.insertTable(4, 3, tableFormat);
    const QStringList cells = {QStringLiteral("Item"),    QStringLiteral("Quantity"), QStringLiteral("Price"),
                               QStringLiteral("Bolt M6"), QStringLiteral("12"),       QStringLiteral("0.20"),
                               QStringLiteral("Nut M6"),  QStringLiteral("12"),       QStringLiteral("0.10")};
    QTextTableCellFormat shaded;
    shaded.setBackground(QColor(0xdd, 0xe4, 0xf0));
    for (int i = 0; i < cells.size(); ++i) {
        QTextCharFormat format = base();
        if (i < 3) {
            format.setFontWeight(QFont::Bold);
            table->cellAt(0, i).setFormat(shaded);
        }
        table->cellAt(i / 3, i % 3).firstCursorPosition().insertText(cells.at(i), format);
    }
    // A last row whose first cell spans two columns.
    table->mergeCells(3, 0, 1, 2);
    QTextBlockFormat alignRight;
    alignRight.setAlignment(Qt::AlignRight);
    QTextCursor total = table->cellAt(3, 0).firstCursorPosition();
    total.setBlockFormat(alignRight);
    QTextCharFormat bold = base();
    bold.setFontWeight(QFont::Bold);
    total.insertText(QStringLiteral("Total"), bold);
    table->cellAt(3, 2).firstCursorPosition().insertText(QStringLiteral("0.30"), bold);
    cursor.movePosition(QTextCursor::End);

    heading(cursor, QStringLiteral("A picture"), 16);
    paragraph(cursor);
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("sample.png")), picture());
    QTextImageFormat image;
    image.setName(QStringLiteral("sample.png"));
    image.setWidth(160);
    image.setHeight(100);
    cursor.insertImage(image);
    paragraph(cursor);
    cursor.insertText(QStringLiteral("The end."), base());

    QString error;
    if (!RichTextFile::save(QString::fromLocal8Bit(argv[1]), document, &error)) {
        std::fprintf(stderr, "richtext_sample: %s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
