#pragma once
// Copying a folder whole: every file and folder under it (also from the
// program's resources), each copied file writable by the user. A copy that
// cannot be made whole is removed again, so there is never half a copy.
#include <QString>

namespace platform {

// False, with the reason in *error, when `from` is missing, `to` exists, or
// a file could not be copied.
bool copyFolder(const QString &from, const QString &to, QString *error = nullptr);

}  // namespace platform
