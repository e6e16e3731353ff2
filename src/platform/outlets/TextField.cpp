#include "platform/outlets/TextField.h"

#include "platform/Numbers.h"

TextField::TextField(QObject *parent) : Outlet(parent) {}

void TextField::setStringValue(const QString &text)
{
    const QString stored = text.isNull() ? QStringLiteral("") : text;
    if (stored == value && !value.isNull())
        return;
    value = stored;
    Q_EMIT changed();
}

float TextField::floatValue() const
{
    return platform::floatValue(value);
}

int TextField::intValue() const
{
    return platform::intValue(value);
}

void TextField::setDateFormat(const QString &newFormat)
{
    if (format == newFormat)
        return;
    format = newFormat;
    Q_EMIT changed();
}

void TextField::setEditable(bool on)
{
    if (editable == on)
        return;
    editable = on;
    Q_EMIT changed();
}

void TextField::userSetStringValue(const QString &text)
{
    const QString stored = text.isNull() ? QStringLiteral("") : text;
    if (stored == value)
        return;
    value = stored;
    Q_EMIT edited();
}
