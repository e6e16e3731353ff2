#include "platform/richtext/Placeholders.h"

#include <QTextCursor>
#include <QTextDocument>

namespace Placeholders {

int replaceAll(QTextDocument &document, const QString &placeholder, const QString &text)
{
    if (placeholder.isEmpty())
        return 0;
    int count = 0;
    QTextCursor edit(&document);
    edit.beginEditBlock();
    QTextCursor from(&document);
    for (;;) {
        QTextCursor found = document.find(placeholder, from, QTextDocument::FindCaseSensitively);
        if (found.isNull())
            break;
        // The format before a position is the format of the character that
        // ends there: just after the placeholder's first character.
        QTextCursor first(&document);
        first.setPosition(found.selectionStart() + 1);
        const QTextCharFormat format = first.charFormat();
        found.insertText(text, format);
        ++count;
        // The search goes on after the inserted text, which is never searched.
        from = found;
    }
    edit.endEditBlock();
    return count;
}

bool insertHtmlAt(QTextDocument &document, const QString &placeholder, const QString &html)
{
    if (placeholder.isEmpty())
        return false;
    QTextCursor found = document.find(placeholder, 0, QTextDocument::FindCaseSensitively);
    if (found.isNull())
        return false;
    found.insertHtml(html);
    return true;
}

}  // namespace Placeholders
