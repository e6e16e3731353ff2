#include "platform/outlets/CheckBox.h"

CheckBox::CheckBox(QObject *parent)
    : Outlet(parent)
{ }

void CheckBox::setState(bool newState)
{
    if (on == newState)
        return;
    on = newState;
    Q_EMIT changed();
}

void CheckBox::setTitle(const QString &text)
{
    if (label == text)
        return;
    label = text;
    Q_EMIT changed();
}

void CheckBox::userSetState(bool newState)
{
    on = newState;
    Q_EMIT activated();
}
