#pragma once
// A test's guard against a hang or a runaway (not a speed figure: those come
// from bench/): the limit given, stretched by QUORVEL_TEST_TIME_SCALE when
// the whole suite runs slowed down on purpose (under the sanitizers).
#include <QtGlobal>

namespace testlib {

inline qint64 timeLimit(qint64 milliseconds)
{
    bool ok = false;
    const int scale = qEnvironmentVariableIntValue("QUORVEL_TEST_TIME_SCALE", &ok);
    return ok && scale > 1 ? milliseconds * scale : milliseconds;
}

}  // namespace testlib
