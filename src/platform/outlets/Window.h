#pragma once
// A window or panel: its title, whether it is on screen, whether it is the
// key window (the one that receives keys), its edited mark, and which of its
// outlets has keyboard focus (its first responder).
#include "platform/outlets/Outlet.h"

#include <QList>
#include <QPointer>

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

    // Runs the window modally: answers when the user has closed it. With no
    // widget the run ends at once (answer 0); tests may set an answer.
    int runModal();
    void stopModal(int code) { Q_EMIT stopModalRequested(code); }

    // From the widget layer.
    void widgetBecameKey(bool isKey);
    void widgetVisibilityChanged(bool isVisible);
    void widgetFocusChanged(Outlet *focused) { responder = focused; }

Q_SIGNALS:
    void centerRequested();
    void modalRequested(int *code);
    void stopModalRequested(int code);
    // The window became key, or stopped being key.
    void keyChanged(bool isKey);

private:
    QString windowTitle;
    bool visible = false;
    bool key = false;
    bool edited = false;
    QPointer<Outlet> responder;
};
