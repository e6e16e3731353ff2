#include "platform/Alerts.h"

#include <cstdio>

namespace platform {

namespace {
AlertHandler &installedHandler()
{
    static AlertHandler handler;
    return handler;
}
}  // namespace

int runAlert(const Alert &alert)
{
    AlertHandler &handler = installedHandler();
    if (handler)
        return handler(alert);
    // No window to show it in: print it and take the default button.
    const QByteArray message = alert.message.toLocal8Bit();
    const QByteArray informative = alert.informativeText.toLocal8Bit();
    const QByteArray details = alert.details.toLocal8Bit();
    if (!message.isEmpty())
        std::fprintf(stderr, "%s\n", message.constData());
    if (!informative.isEmpty())
        std::fprintf(stderr, "%s\n", informative.constData());
    if (!details.isEmpty())
        std::fprintf(stderr, "%s\n", details.constData());
    std::fflush(stderr);
    return 1;
}

int runAlert(const QString &message, const QString &informativeText, const QString &defaultButton,
             const QString &alternateButton, const QString &otherButton)
{
    Alert alert;
    alert.message = message;
    alert.informativeText = informativeText;
    alert.defaultButton = defaultButton;  // empty: the handler shows "OK"
    alert.alternateButton = alternateButton;
    alert.otherButton = otherButton;
    return runAlert(alert);
}

AlertHandler setAlertHandler(AlertHandler handler)
{
    AlertHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

}  // namespace platform
