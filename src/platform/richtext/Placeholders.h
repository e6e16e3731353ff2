#pragma once
// Filling placeholders such as "<contactname>" in a loaded document (the
// invoice stationery).
#include <QString>

class QTextDocument;

namespace Placeholders {

// Replaces every occurrence of the placeholder by plain text that takes the
// character format of the placeholder's first character, also where the
// file split the placeholder across runs. The replacement text is never
// searched again, so a value that holds its own placeholder cannot make this
// loop. Answers the number of occurrences replaced.
int replaceAll(QTextDocument &document, const QString &placeholder, const QString &text);

// Replaces the first occurrence of the placeholder by the HTML (a <table>
// becomes a real table). Answers whether there was one.
bool insertHtmlAt(QTextDocument &document, const QString &placeholder, const QString &html);

}  // namespace Placeholders
