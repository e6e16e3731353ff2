#include "platform/outlets/TextView.h"

TextView::TextView(QObject *parent)
    : Outlet(parent)
{ }

void TextView::setString(const QString &newText)
{
    const QString stored = newText.isNull() ? QStringLiteral("") : newText;
    if (stored == text)
        return;
    text = stored;
    Q_EMIT changed();
}

bool TextView::readRTFDFromFile(const QString &path)
{
    bool ok = false;
    Q_EMIT readRequested(path, &ok);
    return ok;
}

bool TextView::writeRTFDToFile(const QString &path)
{
    bool ok = false;
    Q_EMIT writeRequested(path, &ok);
    return ok;
}

void TextView::userSetString(const QString &newText)
{
    const QString stored = newText.isNull() ? QStringLiteral("") : newText;
    if (stored == text)
        return;
    text = stored;
    Q_EMIT edited();
}
