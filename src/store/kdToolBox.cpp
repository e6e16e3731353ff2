#include "store/kdToolBox.h"

QString kdToolBox::replaceSubstring(const QString &target, const QString &replacement, const QString &text)
{
    if (text.isNull())
        return QString();
    if (target.isEmpty())
        return text;
    const qsizetype at = text.indexOf(target);
    if (at < 0)
        return text;
    QString result = text;
    result.replace(at, target.size(), replacement);
    return result;
}
