#pragma once
// Writing a filled document out: as a PDF on the paper of the user's
// country (US Letter where that is the custom, else A4), as RTF, or as its
// plain text. Files are written whole or not at all: a failed write leaves
// what was there and says why.
#include <QByteArray>
#include <QLocale>
#include <QPageSize>
#include <QString>

class QIODevice;
class QTextDocument;

namespace documents {

// Letter for the United States, Canada, Mexico and the other countries that
// use it; A4 everywhere else.
QPageSize::PageSizeId paperFor(const QLocale &locale);

// The document laid out on pages of the paper, with 2 cm margins, as PDF.
bool writePdf(const QTextDocument &document, QIODevice &device, QPageSize::PageSizeId paper);
bool writePdfFile(const QTextDocument &document, const QString &path, QString *error = nullptr);

QByteArray rtfBytes(const QTextDocument &document);
QByteArray plainTextBytes(const QTextDocument &document);

// Writes the bytes to the file atomically.
bool writeFile(const QString &path, const QByteArray &bytes, QString *error = nullptr);

}  // namespace documents
