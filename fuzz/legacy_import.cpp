// Fuzz target of the first-generation import: the bytes read as a database
// of the older dialect into six collections. Nothing may crash, hang or run
// away with memory, and no more records come out than the input has room for.
#include "store/LegacyImport.h"
#include "store/kdDataSource.h"

#include <QFile>
#include <QTemporaryFile>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QTemporaryFile file;
    if (!file.open() || file.write(reinterpret_cast<const char *>(data), qint64(size)) != qint64(size))
        return 0;
    file.flush();
    kdDataSource contacts, orders, items, materials, bills, actions;
    const legacyImport::Counts counts
        = legacyImport::importFile(file.fileName(), {contacts, orders, items, materials, bills, actions});
    // Every record takes at least a field's tags ("<a>" and "</a>").
    if (size_t(counts.records()) > size / 7 + 1 || counts.linked > counts.orders) {
        std::fprintf(stderr, "%d records from %zu bytes\n", counts.records(), size);
        std::abort();
    }
    return 0;
}
