#pragma once
// A check box (or one cell of a radio matrix): on or off, with a title.
#include "platform/outlets/Outlet.h"

class CheckBox : public Outlet
{
    Q_OBJECT
public:
    explicit CheckBox(QObject *parent = nullptr);

    bool state() const { return on; }
    void setState(bool newState);
    QString title() const { return label; }
    void setTitle(const QString &text);

    // From the widget: the user ticked or cleared it (activated() follows).
    void userSetState(bool newState);

Q_SIGNALS:
    void activated();

private:
    bool on = false;
    QString label;
};
