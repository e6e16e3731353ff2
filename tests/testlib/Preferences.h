#pragma once
// The program's preferences as the tests set them up: the file the test
// environment redirects, and the state a saved start leaves behind.
#include <QSettings>

class Quorvel;

namespace testlib {

// The program's preferences (under the test environment's folder).
QSettings preferences();

// A saved start: the welcome panel answered and the notepad written, so
// every module whose key is not "NO" is on, dates written day first or
// month first. The controller's preferences are read again.
void startWithModules(Quorvel &quorvel, bool monthFirst = false);

}  // namespace testlib
