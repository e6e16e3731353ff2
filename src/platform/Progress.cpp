#include "platform/Progress.h"

namespace platform {

namespace {
ProgressHandler &installedHandler()
{
    static ProgressHandler handler;
    return handler;
}
}  // namespace

bool reportProgress(const QString &what, qint64 done, qint64 total)
{
    return installedHandler() ? installedHandler()(what, done, total) : true;
}

ProgressHandler setProgressHandler(ProgressHandler handler)
{
    ProgressHandler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}

}  // namespace platform
