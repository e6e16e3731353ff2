// Fuzz target of the tokenizer of the older four-level dialect (Parser):
// items are taken until it answers nothing. Nothing may crash, hang or run
// away with memory, and every item must keep within the tokenizer's limits.
#include "store/Parser.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Parser parser;
    parser.initWithData(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    // Every item takes at least one byte of the input.
    size_t items = 0;
    while (const std::unique_ptr<DbItem> item = parser.getItem()) {
        if (++items > size || item->getName().size() > Parser::maxTagLength
            || item->getParentName().size() > Parser::maxTagLength
            || item->getGrandParentName().size() > Parser::maxTagLength
            || item->getData().size() > Parser::maxValueLength || item->getData().isNull()) {
            std::fprintf(stderr, "item %zu out of bounds: name %lld, value %lld bytes\n", items,
                         static_cast<long long>(item->getName().size()),
                         static_cast<long long>(item->getData().size()));
            std::abort();
        }
    }
    return 0;
}
