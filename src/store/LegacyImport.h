#pragma once
// The import of a database the program's first generation kept in one XML
// file (read with Parser): every record of the file goes into the
// collections, which were emptied first (their ids start again), one kind of
// record at a time as the file lists them. An order's "contactId" links it to
// a contact imported before it; a contact listed after its order is not
// linked, and "0" links nothing. A record whose first field is under an
// unknown element is dropped.
//
// Before anything is emptied, the database folder as it was (when there is
// one) is copied whole beside it, so that an import never loses what was
// there; the user is told where.
#include <QDateTime>
#include <QString>
#include <functional>

class kdDataSource;

namespace legacyImport {

// Where the records go.
struct Collections
{
    kdDataSource &contacts;
    kdDataSource &orders;
    kdDataSource &items;
    kdDataSource &materials;
    kdDataSource &bills;
    kdDataSource &actions;
};

struct Counts
{
    int contacts = 0;
    int orders = 0;
    int items = 0;
    int materials = 0;
    int bills = 0;
    int actions = 0;
    int linked = 0;  // orders linked to a contact
    int records() const { return contacts + orders + items + materials + bills + actions; }
};

// Empties the collections and reads the file into them. `progress` is told
// the bytes read of the file's size every so often.
Counts importFile(const QString &path, Collections collections,
                  const std::function<void(qint64 done, qint64 total)> &progress = {});

// The name of the copy kept before an import:
// "quorveldatabase.qvldb.before-import-YYYYMMDD-HHMMSS" beside the folder.
QString backupPath(const QString &bundle, const QDateTime &now);
// Copies the database folder whole to backupPath(); "" when there is no
// folder to keep. A copy that fails is removed and answered as an error.
QString keepCopyOfBundle(const QString &bundle, const QDateTime &now, QString *error);

// Copies the first generation's attachments folder into the database
// folder's; answers whether it was copied (nothing is said when it was not).
bool copyAttachments(const QString &from, const QString &to);

}  // namespace legacyImport
