#pragma once
// The program's messages with their blanks filled in: a format such as
// "%@ '%@' has been duplicated. The number of the new %@ is %@" gets its
// arguments, already written as text, in order.
#include <QString>
#include <QStringList>

namespace platform {

// Each conversion (%@, %i, %d, %f, %.2f ...) is replaced by the next
// argument and "%%" by a percent sign; a conversion with no argument left
// stays as it is, and so does any other character.
QString withArguments(const QString &format, const QStringList &arguments);

}  // namespace platform
