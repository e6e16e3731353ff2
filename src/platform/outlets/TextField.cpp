#include "platform/outlets/TextField.h"

#include "platform/Clock.h"
#include "platform/DateReading.h"
#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/StringTable.h"

TextField::TextField(QObject *parent)
    : Outlet(parent)
{ }

void TextField::setStringValue(const QString &text)
{
    const QString stored = formatted(text.isNull() ? QStringLiteral("") : text);
    if (stored == value && !value.isNull())
        return;
    value = stored;
    Q_EMIT changed();
}

void TextField::setFloatValue(float number)
{
    setStringValue(money ? platform::format2(number) : platform::shortestFloatText(number));
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

std::optional<QDate> TextField::dateValue() const
{
    return platform::readDate(value, format, platform::now().date(), platform::installedLanguage());
}

void TextField::setMoney(bool on)
{
    if (money == on)
        return;
    money = on;
    Q_EMIT changed();
}

QString TextField::formatted(const QString &text) const
{
    if (money) {
        if (const std::optional<QString> figure = platform::moneyText(text))
            return *figure;
    }
    if (platform::isDayFormat(format)) {
        const std::optional<QDate> date
            = platform::readDate(text, format, platform::now().date(), platform::installedLanguage());
        if (date)
            return platform::formatDate(*date, format);
    }
    return text;
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

void TextField::commitEditing()
{
    const QString shown = formatted(value);
    if (shown == value)
        return;
    value = shown;
    Q_EMIT changed();
    Q_EMIT edited();
}
