// Fuzz target of the CSV reader and the contacts import over it: records
// are read until the reader stops, then the same bytes are imported as
// contacts. Nothing may crash, hang or run away with memory; every record
// keeps within the reader's limits.
#include "contacts/ContactsCsv.h"
#include "platform/Csv.h"
#include "platform/Log.h"
#include "store/kdDataSource.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryFile>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool quiet = [] {
        platform::setLogHandler([](platform::LogChannel, const QString &) {});
        return true;
    }();
    (void)quiet;
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    csv::Reader reader(buffer);
    QStringList values;
    size_t records = 0;
    while (reader.next(values)) {
        if (++records > size + 1 || values.size() > csv::Reader::maxFields) {
            std::fprintf(stderr, "record %zu out of bounds: %lld values\n", records,
                         static_cast<long long>(values.size()));
            std::abort();
        }
    }
    // The contacts import over the same bytes, every column to a field.
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size())
        return 0;
    file.flush();
    const contactsCsv::Preview preview = contactsCsv::preview(file.fileName());
    QList<contactsCsv::Field> mapping;
    const QList<contactsCsv::Field> fields = contactsCsv::allFields();
    for (qsizetype i = 0; i < preview.headings.size(); ++i)
        mapping << fields.at(i % fields.size());
    kdDataSource contacts;
    contactsCsv::import(file.fileName(), mapping, contacts, false);
    return 0;
}
