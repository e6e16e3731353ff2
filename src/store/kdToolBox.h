#pragma once
// Small string helpers shared by the readers.
#include <QString>

class kdToolBox
{
public:
    // The text with the FIRST occurrence of target replaced by replacement;
    // the text itself when target does not occur; a null text gives a null
    // text. Later occurrences are left alone on purpose: the older database
    // dialect relies on it when its values are unescaped.
    static QString replaceSubstring(const QString &target, const QString &replacement, const QString &text);

    // An action that does nothing, kept for menu items bound to it.
    void myAction() { }
};
