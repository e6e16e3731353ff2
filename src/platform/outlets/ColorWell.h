#pragma once
// A colour well: one colour as red, green, blue and alpha components
// between 0 and 1.
#include "platform/outlets/Outlet.h"

struct RgbaColour
{
    float red = 1;
    float green = 1;
    float blue = 1;
    float alpha = 1;
    bool operator==(const RgbaColour &) const = default;
};

class ColorWell : public Outlet
{
    Q_OBJECT
public:
    explicit ColorWell(QObject *parent = nullptr);

    RgbaColour color() const { return colour; }
    void setColor(const RgbaColour &newColour);

    // From the widget: the user chose a colour (activated() follows).
    void userSetColor(const RgbaColour &newColour);

Q_SIGNALS:
    void activated();

private:
    RgbaColour colour;
};
