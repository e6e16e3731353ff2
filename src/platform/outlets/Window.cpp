#include "platform/outlets/Window.h"

#include <QSettings>
#include <QStringList>

namespace {

// The program's preferences store (the one the preferences controller uses).
const QString storeName = QStringLiteral("Quorvel");

QList<Window *> &registry()
{
    static QList<Window *> windows;
    return windows;
}
}  // namespace

Window::Window(QObject *parent)
    : Outlet(parent)
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

void Window::setFrame(const QRect &rect)
{
    if (rect.isEmpty())
        return;
    windowFrame = rect;
    Q_EMIT frameChangeRequested(rect);
}

QString Window::frameKey(const QString &name)
{
    return QStringLiteral("NSWindow Frame ") + name;
}

// Stored as the text "x y width height". A window that has no frame yet
// (never shown) leaves no frame under the name, so nothing stale is handed on.
void Window::saveFrameUsingName(const QString &name) const
{
    QSettings settings(storeName, storeName);
    if (windowFrame.isEmpty()) {
        settings.remove(frameKey(name));
        return;
    }
    settings.setValue(frameKey(name),
                      QStringLiteral("%1 %2 %3 %4")
                          .arg(windowFrame.x())
                          .arg(windowFrame.y())
                          .arg(windowFrame.width())
                          .arg(windowFrame.height()));
}

bool Window::setFrameUsingName(const QString &name)
{
    const QSettings settings(storeName, storeName);
    const QStringList parts = settings.value(frameKey(name)).toString().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (parts.size() != 4)
        return false;
    int numbers[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        numbers[i] = parts.at(i).toInt(&ok);
        if (!ok)
            return false;
    }
    const QRect rect(numbers[0], numbers[1], numbers[2], numbers[3]);
    if (rect.isEmpty())
        return false;
    setFrame(rect);
    return true;
}
