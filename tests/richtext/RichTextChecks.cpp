#include "RichTextChecks.h"

#include <QBuffer>
#include <QFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

namespace richtextchecks {

void prepare(QTextDocument &document)
{
    QFont font(QStringLiteral("Helvetica"));
    font.setPointSize(12);
    document.setDefaultFont(font);
}

QImage filledImage(int width, int height, const QColor &colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

QByteArray imageBytes(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

bool samePixels(const QImage &a, const QImage &b)
{
    return !a.isNull() && a.convertToFormat(QImage::Format_ARGB32) == b.convertToFormat(QImage::Format_ARGB32);
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList blockTexts(const QTextDocument &document)
{
    QStringList texts;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        texts.append(block.text());
    return texts;
}

QTextCharFormat formatOf(QTextDocument &document, const QString &text)
{
    const QTextCursor found = document.find(text, 0, QTextDocument::FindCaseSensitively);
    if (found.isNull())
        return QTextCharFormat();
    QTextCursor cursor(&document);
    cursor.setPosition(found.selectionStart() + 1);
    return cursor.charFormat();
}

QTextBlockFormat blockFormatOf(QTextDocument &document, const QString &text)
{
    const QTextCursor found = document.find(text, 0, QTextDocument::FindCaseSensitively);
    return found.isNull() ? QTextBlockFormat() : found.blockFormat();
}

QTextTable *firstTable(const QTextDocument &document)
{
    for (QTextFrame *frame : document.rootFrame()->childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(frame))
            return table;
    }
    return nullptr;
}

QString cellText(QTextTable *table, int row, int column)
{
    const QTextTableCell cell = table->cellAt(row, column);
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
    return cursor.selectedText();
}

QList<QTextImageFormat> images(const QTextDocument &document)
{
    QList<QTextImageFormat> found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            // Neighbouring pictures of one format share a fragment.
            const QTextCharFormat format = it.fragment().charFormat();
            for (int i = 0; format.isImageFormat() && i < it.fragment().length(); ++i)
                found.append(format.toImageFormat());
        }
    }
    return found;
}

QImage imageResource(const QTextDocument &document, const QString &name)
{
    return document.resource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
}

}  // namespace richtextchecks
