#include "platform/outlets/Outlet.h"

Outlet::Outlet(QObject *parent)
    : QObject(parent)
{ }

void Outlet::setEnabled(bool on)
{
    if (enabled == on)
        return;
    enabled = on;
    Q_EMIT changed();
}

void Outlet::setHidden(bool on)
{
    if (hidden == on)
        return;
    hidden = on;
    Q_EMIT changed();
}

bool Outlet::print()
{
    bool taken = false;
    Q_EMIT printRequested(&taken);
    return taken;
}
