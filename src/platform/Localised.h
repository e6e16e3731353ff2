#pragma once
// Every text the user reads goes through here: the translation context
// "Quorvel", falling back to the English text.
#include <QString>

namespace platform {

QString localised(const char *english);
QString localised(const QString &english);

}  // namespace platform
