#pragma once
// The one source of "now". Tests pin it; the repeat checker and the alarm
// watch read it.
#include <QDateTime>

namespace platform {

QDateTime now();
// Pins "now" to a moment; an invalid moment returns to the real clock.
void setFixedNow(const QDateTime &moment);

}  // namespace platform
