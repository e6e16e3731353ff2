#pragma once
// The end of a session, told by the system rather than the user: SIGTERM
// (logging out, a shutdown, `kill`), SIGHUP (the terminal went away) and
// SIGINT (Ctrl+C in the terminal that started the program). Each is turned
// into one call of the hook on the event loop's thread, so the program can
// save everything and quit as if the user had chosen Quit; the signal
// handler itself only writes a byte to a pipe.
#include <functional>

namespace platform {

// Installs the hook (replacing an earlier one) and the signal handlers.
// Needs a running or about to run event loop on the calling thread.
void onTerminationSignal(std::function<void()> hook);

}  // namespace platform
