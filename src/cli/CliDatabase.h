#pragma once
// The six collections of the database, read as the program reads them at
// start, for the command line's commands.
#include "store/DatabaseBundle.h"
#include "store/kdDataSource.h"

#include <QString>

namespace cli {

class CliDatabase
{
public:
    CliDatabase();

    // Whether the database folder exists (nothing is read or made without it).
    bool exists() const;
    // Reads every file; a file that cannot be read is reported on standard
    // error by the bundle. Answers whether every file could be read.
    bool read();
    // Writes all six files, as quitting the program does.
    bool writeAll();

    // The collection of a kind as the command line names it ("contacts",
    // "orders", "items", "materials", "bills", "tasks"); nullptr for others.
    const kdDataSource *collection(const QString &kind) const;
    // The bundle itself, for the commands that change the collections.
    DatabaseBundle &getBundle() { return bundle; }

private:
    kdDataSource contacts, orders, items, materials, bills, actions;
    DatabaseBundle bundle;
};

}  // namespace cli
