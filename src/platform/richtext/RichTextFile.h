#pragma once
// Rich-text files on disk: a plain .rtf file or an .rtfd package (a folder
// holding TXT.rtf and its attachments), chosen by the path's extension.
#include <QString>
#include <QStringList>

class QTextDocument;

namespace RichTextFile {

// Loads the file or package into the document. False (with the reason in
// *error) when it cannot be read at all; a damaged file loads what it can
// and lists what it skipped in *skipped.
bool load(const QString &path, QTextDocument &document, QString *error = nullptr, QStringList *skipped = nullptr);

// Saves the document atomically: a file through a temporary file, a package
// by writing a temporary folder beside it and renaming it into place. On
// failure the old file or package is left as it was and *error says why.
bool save(const QString &path, const QTextDocument &document, QString *error = nullptr);

}  // namespace RichTextFile
