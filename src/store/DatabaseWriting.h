#pragma once
// The bytes of one database file, built from its collection: every record
// with its keys in sorted order, a key without a value left out where the
// file leaves it out.
#include "store/DatabaseBundle.h"

#include <QByteArray>
#include <memory>

class kdDataSource;

namespace platform::plist {
class RecordWriter;
}

namespace database {

QByteArray fileBytes(DatabaseBundle::File file, const kdDataSource &source);

// The same bytes built a slice of records at a time, so that a large file
// can be built between the events of a window. When records join or leave
// the collection between slices, the building starts again; a record edited
// after its slice was built is written as it was then.
class FileBuilder
{
public:
    FileBuilder(DatabaseBundle::File file, const kdDataSource &source);
    ~FileBuilder();
    // Adds up to `records` more records; true once every record is in.
    bool step(int records);
    QByteArray finish();
    DatabaseBundle::File kind() const { return file; }

private:
    void restart();

    DatabaseBundle::File file;
    const kdDataSource &source;
    std::unique_ptr<platform::plist::RecordWriter> writer;
    int next = 0;
    quint64 generation = 0;
};

}  // namespace database
