#pragma once
// The bytes of one database file, built from its collection: every record
// with its keys in sorted order, a key without a value left out where the
// file leaves it out.
#include "store/DatabaseBundle.h"

#include <QByteArray>

class kdDataSource;

namespace database {

QByteArray fileBytes(DatabaseBundle::File file, const kdDataSource &source);

}  // namespace database
