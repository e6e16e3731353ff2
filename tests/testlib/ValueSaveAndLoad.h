#pragma once
// Saving and loading a general property-list value (writeValue, readValue)
// again and again: the fuzz target of readValue and the regression tests
// check that whatever was read survives it.
#include <QString>
#include <QVariant>

namespace testlib {

// Empty when the value, as read from some document, can be written, what is
// written reads back, and from then on saving and loading changes nothing;
// else what went wrong, with the bytes concerned.
//
// The first save may change a value on purpose: a date loses its
// milliseconds, and text that XML cannot carry (an unpaired surrogate that a
// UTF-7 or UTF-16 document can hold) is written as U+FFFD, which can also
// move a key to another place in the sorted dictionary. So the comparison is
// between the second save and the third.
QString valueSaveAndLoadFault(const QVariant &value);

}  // namespace testlib
