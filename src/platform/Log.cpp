#include "platform/Log.h"

#include <cstdio>

namespace platform {

namespace {
LogHandler &installedHandler()
{
    static LogHandler handler;
    return handler;
}
}  // namespace

void log(const QString &text)
{
    if (installedHandler()) {
        installedHandler()(LogChannel::Log, text);
        return;
    }
    std::fprintf(stderr, "quorvel: %s\n", text.toLocal8Bit().constData());
    std::fflush(stderr);
}

void standardOutput(const QString &text)
{
    if (installedHandler()) {
        installedHandler()(LogChannel::StandardOutput, text);
        return;
    }
    std::fputs(text.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

LogHandler setLogHandler(LogHandler handler)
{
    LogHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

}  // namespace platform
