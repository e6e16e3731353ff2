#pragma once
// One tag of the older four-level dialect as the tokenizer sees it: the text
// between the angle brackets with every "/" removed, and whether a "/" was
// there.
#include <QString>

class XmlTag
{
public:
    XmlTag() = default;

    const QString &getData() const { return data; }
    void setData(const QString &text);
    bool isClosing() const { return closing; }
    void setClosing(bool isClosingTag);

private:
    QString data;
    bool closing = false;
};
