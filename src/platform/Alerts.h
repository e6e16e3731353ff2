#pragma once
// The one seam through which the program shows a modal alert. The GUI layer
// installs a handler that shows a real message box; tests install a scripted
// responder; with no handler (the command line) the alert is printed on
// standard error and answered with the default button.
#include <QString>
#include <functional>

namespace platform {

struct Alert
{
    QString message;  // the title line
    QString informativeText;  // the explanation under it
    QString defaultButton;  // answers 1; empty means "OK"
    QString alternateButton;  // answers 0; empty means no such button
    QString otherButton;  // answers -1; empty means no such button
    QString details;  // a long text shown on request, scrolling (lines)
};

using AlertHandler = std::function<int(const Alert &)>;

// Shows the alert and answers 1 (default), 0 (alternate) or -1 (other).
int runAlert(const Alert &alert);
int runAlert(const QString &message, const QString &informativeText, const QString &defaultButton = QString(),
             const QString &alternateButton = QString(), const QString &otherButton = QString());

// Installs a handler and answers the previous one.
AlertHandler setAlertHandler(AlertHandler handler);

}  // namespace platform
