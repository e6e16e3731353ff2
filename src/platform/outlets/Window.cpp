#include "platform/outlets/Window.h"

namespace {
QList<Window *> &registry()
{
    static QList<Window *> windows;
    return windows;
}
}  // namespace

Window::Window(QObject *parent) : Outlet(parent)
{
    registry().append(this);
}

Window::~Window()
{
    registry().removeOne(this);
}

QList<Window *> Window::allWindows()
{
    return registry();
}

Window *Window::keyWindow()
{
    for (Window *window : std::as_const(registry()))
        if (window->isKeyWindow())
            return window;
    return nullptr;
}

void Window::setTitle(const QString &text)
{
    if (windowTitle == text)
        return;
    windowTitle = text;
    Q_EMIT changed();
}

void Window::makeKeyAndOrderFront()
{
    visible = true;
    Q_EMIT changed();
    widgetBecameKey(true);
}

void Window::orderOut()
{
    visible = false;
    Q_EMIT changed();
    widgetBecameKey(false);
}

void Window::setDocumentEdited(bool on)
{
    if (edited == on)
        return;
    edited = on;
    Q_EMIT changed();
}

int Window::runModal()
{
    int code = 0;
    visible = true;
    Q_EMIT modalRequested(&code);
    visible = false;
    return code;
}

void Window::widgetBecameKey(bool isKey)
{
    if (key == isKey)
        return;
    key = isKey;
    if (isKey)  // only one window is key at a time
        for (Window *other : std::as_const(registry()))
            if (other != this && other->key) {
                other->key = false;
                Q_EMIT other->keyChanged(false);
            }
    Q_EMIT keyChanged(isKey);
}

void Window::widgetVisibilityChanged(bool isVisible)
{
    visible = isVisible;
    if (!isVisible)
        widgetBecameKey(false);
}
