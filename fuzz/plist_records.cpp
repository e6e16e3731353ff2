// Fuzz target of the property-list record reader (RecordReader::read): the
// document is read with the quick scanner (the full XML reader taking over
// where it gives up) and with the full reader alone. Neither may crash, hang
// or run away with memory, and the two must come to the same answer with
// the same records; a disagreement aborts, so that libFuzzer keeps the input.
//
// The full reader is fed the document a block (1 MiB) at a time. An input
// whose last byte is 0xFF reaches past a block's end: the four bytes before
// that byte say where a run of spaces goes into the document (the first
// two, an offset) and how much shorter than a block the document is then up
// to the end of the spaces (the next two), so that the block ends at a
// place of the fuzzer's choosing.
#include "RecordReadings.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr qsizetype Block = qsizetype(1) << 20;

QByteArray padded(const uint8_t *data, size_t size)
{
    const qsizetype length = qsizetype(size) - 5;
    const qsizetype at = ((data[length] << 8) | data[length + 1]) % (length + 1);
    const qsizetype shortBy = (data[length + 2] << 8) | data[length + 3];
    const qsizetype spaces = std::max<qsizetype>(0, Block - at - shortBy);
    QByteArray document;
    document.reserve(length + spaces);
    document.append(reinterpret_cast<const char *>(data), at);
    document.append(spaces, ' ');
    document.append(reinterpret_cast<const char *>(data) + at, length - at);
    return document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray storage;
    QByteArrayView document(reinterpret_cast<const char *>(data), qsizetype(size));
    if (size >= 5 && data[size - 1] == 0xFF) {
        storage = padded(data, size);
        document = storage;
    }
    const testlib::QuickAndFull readings = testlib::readQuickAndFull(document, QStringLiteral("orders"));
    if (!readings.agree()) {
        std::fprintf(stderr, "the readers disagree:\n%s\n", qPrintable(readings.description()));
        std::abort();
    }
    return 0;
}
