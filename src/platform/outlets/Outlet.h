#pragma once
// The core side of a widget: what a window, a field or a menu shows, held
// without any widget so that every rule of a manager runs (and is tested)
// with no window at all. The widget layer binds a real widget to an outlet
// both ways: the program changes the outlet and the widget follows; the
// user edits the widget and the outlet follows and says so.
//
// An outlet with no widget bound is "absent" (isConnected() false); the
// managers skip absent outlets where the program allows for them (the
// checkout binds fewer outlets than the order editor). Tests mark an outlet
// connected by hand.
#include <QObject>
#include <QString>

class Outlet : public QObject
{
    Q_OBJECT
public:
    explicit Outlet(QObject *parent = nullptr);

    bool isConnected() const { return connected; }
    void setConnected(bool on) { connected = on; }

    bool isEnabled() const { return enabled; }
    void setEnabled(bool on);
    bool isHidden() const { return hidden; }
    void setHidden(bool on);

    // Asks the bound widget to print itself (the platform's view printing).
    // Answers whether a widget took the request.
    bool print();

Q_SIGNALS:
    // The program changed something the widget shows (enabled, hidden, value).
    void changed();
    void printRequested(bool *taken);

private:
    bool connected = false;
    bool enabled = true;
    bool hidden = false;
};
