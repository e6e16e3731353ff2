#include "platform/outlets/Button.h"

Button::Button(QObject *parent)
    : Outlet(parent)
{ }

void Button::setTitle(const QString &text)
{
    if (label == text)
        return;
    label = text;
    Q_EMIT changed();
}

void Button::setImage(const QString &name)
{
    if (imageName == name)
        return;
    imageName = name;
    Q_EMIT changed();
}
