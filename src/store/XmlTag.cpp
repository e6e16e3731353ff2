#include "store/XmlTag.h"

void XmlTag::setData(const QString &text)
{
    data = text;
}

void XmlTag::setClosing(bool isClosingTag)
{
    closing = isClosingTag;
}
