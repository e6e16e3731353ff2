#pragma once
// Long work says how far it got, so that the user sees it: the widget layer
// shows a progress window once the work has taken half a second; with no
// handler (the command line, the tests) nothing is shown. The handler
// answers false when the user asked to stop.
#include <QString>
#include <QtGlobal>
#include <functional>

namespace platform {

using ProgressHandler = std::function<bool(const QString &what, qint64 done, qint64 total)>;

// `done` of `total` (of any unit); done == total ends the work's report.
bool reportProgress(const QString &what, qint64 done, qint64 total);

ProgressHandler setProgressHandler(ProgressHandler handler);

}  // namespace platform
