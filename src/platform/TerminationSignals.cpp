#include "platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace platform {

namespace {

int signalPipe[2] = {-1, -1};
std::function<void()> terminationHook;

extern "C" void forwardSignal(int number)
{
    const char byte = char(number);
    // Nothing can be done about a full pipe here: one byte waiting is enough.
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, 1);
}

}  // namespace

void onTerminationSignal(std::function<void()> hook)
{
    terminationHook = std::move(hook);
    if (signalPipe[0] >= 0)
        return;
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [] {
        char byte = 0;
        [[maybe_unused]] const ssize_t read = ::read(signalPipe[1], &byte, 1);
        if (terminationHook)
            terminationHook();
    });
    struct sigaction action = {};
    action.sa_handler = forwardSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : {SIGTERM, SIGHUP, SIGINT})
        sigaction(number, &action, nullptr);
}

}  // namespace platform
