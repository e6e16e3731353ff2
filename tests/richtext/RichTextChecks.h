#pragma once
// What the rich-text tests share: documents in the default font, pictures
// made and compared by their pixels, files written and read back, and the
// texts, formats, tables and pictures of a QTextDocument looked up.
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextFormat>

class QTextDocument;
class QTextTable;

namespace richtextchecks {

// Twelve-point Helvetica, the font a new document is written in.
void prepare(QTextDocument &document);

QImage filledImage(int width, int height, const QColor &colour);
// The image saved in the given format ("PNG", "JPEG", ...).
QByteArray imageBytes(const QImage &image, const char *format);
bool samePixels(const QImage &a, const QImage &b);

bool writeFile(const QString &path, const QByteArray &bytes);
// The file's bytes; empty when it cannot be read.
QByteArray readFile(const QString &path);

QStringList blockTexts(const QTextDocument &document);
// The format of the first character of the first occurrence of text.
QTextCharFormat formatOf(QTextDocument &document, const QString &text);
QTextBlockFormat blockFormatOf(QTextDocument &document, const QString &text);
QTextTable *firstTable(const QTextDocument &document);
// The text of a cell, its paragraphs joined by U+2029.
QString cellText(QTextTable *table, int row, int column);
// The image formats of the document, in order, one per picture.
QList<QTextImageFormat> images(const QTextDocument &document);
// The picture stored under the name, as an image.
QImage imageResource(const QTextDocument &document, const QString &name);

}  // namespace richtextchecks
