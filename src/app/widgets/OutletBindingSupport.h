#pragma once
// What every binding of an outlet to a widget shares: which widget shows
// which outlet, the tie (Link) that keeps them in step and knows whether a
// change is the user's, and printing a bound widget. Only the binding's own
// files (OutletBinding*.cpp) include this.
#include "app/widgets/OutletBinding.h"
#include "platform/outlets/Outlet.h"

#include <QEvent>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>

class QWidget;

namespace binding::detail {

// Which outlet each bound widget (or action, or button group) shows, and
// the other way round. Entries go when either side is destroyed.
QHash<const QObject *, QPointer<Outlet>> &outletsByWidget();
QHash<const Outlet *, QPointer<QObject>> &widgetsByOutlet();
Outlet *registeredOutlet(const QObject *object);

// The tie between one outlet and one widget. It lives as a child of the
// widget, so every connection made with it as context ends with the widget.
// While the widget is being set from the outlet (apply), the widget's own
// signals are not user actions and are not reported back.
class Link : public QObject
{
public:
    Link(Outlet *outlet, QObject *target)
        : QObject(target),
          source(outlet)
    { }

    template <class Change> void apply(Change &&change)
    {
        const bool outer = applying;
        applying = true;
        change();
        applying = outer;
    }
    bool isApplying() const { return applying; }
    // Whether a signal of the widget is the user's and has an outlet to go to.
    bool fromUser() const { return !applying && source; }
    bool hasOutlet() const { return source; }

    std::function<bool(QEvent *)> filter;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return watched == parent() && filter && source ? filter(event) : false;
    }

private:
    QPointer<Outlet> source;
    bool applying = false;
};

// What printing a bound widget does (the print dialog unless a test says
// otherwise), and the platform's print dialog itself.
PrintHandler &currentPrintHandler();
void printWithDialog(QWidget *widget);

// Marks the object as showing the outlet.
void remember(QObject *target, Outlet *outlet);
// The common part of every binding: the outlet is connected and knows its
// widget, and asks it to print when the program prints the outlet.
Link *attach(Outlet *outlet, QObject *target);
// Enabled and hidden, from the outlet. A window is shown only by its
// Window outlet, so a plain outlet may hide one but never shows it.
void showState(const Outlet *outlet, QWidget *widget);

// Sets the widget from the outlet now and whenever the program changes it.
template <class Show> void follow(Link *link, Outlet *outlet, Show show)
{
    const auto update = [link, show] { link->apply(show); };
    QObject::connect(outlet, &Outlet::changed, link, update);
    update();
}

}  // namespace binding::detail
