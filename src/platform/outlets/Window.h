#pragma once
// A window or panel: its title, whether it is on screen, whether it is the
// key window (the one that receives keys), its edited mark, and which of its
// outlets has keyboard focus (its first responder).
#include "platform/outlets/Outlet.h"

#include <QList>
#include <QPointer>
#include <QRect>

class Window : public Outlet
{
    Q_OBJECT
public:
    explicit Window(QObject *parent = nullptr);
    ~Window() override;

    // Every window outlet that exists, in the order they were made.
    static QList<Window *> allWindows();
    // The key window among them, none when no window is key.
    static Window *keyWindow();

    QString title() const { return windowTitle; }
    void setTitle(const QString &text);

    bool isVisible() const { return visible; }
    bool isKeyWindow() const { return key; }
    // On screen, in front, and the key window.
    void makeKeyAndOrderFront();
    // Off screen.
    void orderOut();
    // Centred on the screen (the widget decides where that is).
    void center() { Q_EMIT centerRequested(); }

    bool isDocumentEdited() const { return edited; }
    void setDocumentEdited(bool on);

    // The outlet with keyboard focus in this window; none when focus is on
    // something that is not an outlet, or nowhere.
    Outlet *firstResponder() const { return responder; }

    // Where the window is on screen and its size (its contents, without the
    // title bar); an empty rectangle until the widget has told it.
    QRect frame() const { return windowFrame; }
    // Moves and resizes the window (an empty rectangle is ignored).
    void setFrame(const QRect &rect);
    // The frame kept in the preferences under "NSWindow Frame NAME", so that
    // another window can take this one's place (a window with no frame yet
    // removes what was kept); setFrameUsingName answers whether a frame was
    // stored under that name (and then takes it).
    void saveFrameUsingName(const QString &name) const;
    bool setFrameUsingName(const QString &name);
    static QString frameKey(const QString &name);

    // Runs the window modally: answers when the user has closed it. With no
    // widget the run ends at once (answer 0); tests may set an answer.
    int runModal();
    void stopModal(int code) { Q_EMIT stopModalRequested(code); }

    // From the widget layer.
    void widgetBecameKey(bool isKey);
    void widgetVisibilityChanged(bool isVisible);
    void widgetFocusChanged(Outlet *focused) { responder = focused; }
    // The widget was moved or resized by the user or the platform.
    void widgetFrameChanged(const QRect &rect) { windowFrame = rect; }

Q_SIGNALS:
    void centerRequested();
    void modalRequested(int *code);
    void stopModalRequested(int code);
    // The window became key, or stopped being key.
    void keyChanged(bool isKey);
    // The program moved or resized the window: the widget follows.
    void frameChangeRequested(const QRect &rect);

private:
    QString windowTitle;
    bool visible = false;
    bool key = false;
    bool edited = false;
    QRect windowFrame;
    QPointer<Outlet> responder;
};
