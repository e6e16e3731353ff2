// Fuzz target of the general property-list reader (readValue). Nothing may
// crash, hang or run away with memory; a failed read answers no value. What
// is read must survive being saved and loaded (see ValueSaveAndLoad.h for
// what the first save may change on purpose).
#include "ValueSaveAndLoad.h"

#include "platform/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView document(reinterpret_cast<const char *>(data), qsizetype(size));
    platform::plist::ReadStatus status;
    const QVariant value = platform::plist::readValue(document, &status);
    if (!status.ok()) {
        if (value.isValid()) {
            std::fprintf(stderr, "a failed read answered a value\n");
            std::abort();
        }
        return 0;
    }
    const QString fault = testlib::valueSaveAndLoadFault(value);
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(fault));
        std::abort();
    }
    return 0;
}
