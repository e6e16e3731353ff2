#include "platform/outlets/ColorWell.h"

ColorWell::ColorWell(QObject *parent)
    : Outlet(parent)
{ }

void ColorWell::setColor(const RgbaColour &newColour)
{
    if (colour == newColour)
        return;
    colour = newColour;
    Q_EMIT changed();
}

void ColorWell::userSetColor(const RgbaColour &newColour)
{
    colour = newColour;
    Q_EMIT activated();
}
