#pragma once
// Reading one database file into records that are not yet in their
// collection: the records in file order, and the ids they refer to, so that
// the links can be resolved once every file is read.
#include "platform/PropertyList.h"
#include "store/DatabaseBundle.h"
#include "store/dataObject.h"

#include <climits>
#include <memory>
#include <vector>

namespace database {

// A line stored without "contact".
constexpr int NoContact = INT_MIN;

// One file parsed into records, not yet in their collection.
struct Parsed
{
    bool exists = false;
    platform::plist::ReadStatus status;
    std::vector<std::shared_ptr<dataObject>> records;
    std::vector<int> numbers;  // orders: the contact id; lines: the stored id
    std::vector<int> contacts;  // lines: the stored contact id, or NoContact
};

// Reads the file of the kind from the database folder into `out`; a file
// that is missing leaves `out.exists` false. `sharing` lets records share
// the text of values that repeat.
void parseFile(DatabaseBundle::File file, Parsed &out, bool sharing);

}  // namespace database
