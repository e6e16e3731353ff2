#pragma once
// The database bundle: the folder that holds all business data as six
// property lists, one per collection (contacts.xml, orders.xml, items.xml,
// itemsordered.xml, bills.xml, actions.xml), each a root dictionary with one
// key whose array holds one dictionary of strings per record.
//
// The bundle works over the six collections it is given and reads them in
// the fixed order contacts, orders, items, lines, bills, tasks, so that links
// resolve. The application controller plugs its managers in through the
// hooks: linking an order to its contact, deriving a line's contact from its
// order, and what to do after each file (the managers' filter, and after the
// orders the check for overdue repeats).
//
// A file that exists but cannot be read loads nothing and is reported (one
// line on standard error, and in the read result); it is never overwritten
// silently: before the first write of that file it is kept beside it as
// "NAME.unreadable-YYYYMMDD-HHMMSS".
#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <functional>

class kdDataSource;
class Material;
class Order;

class DatabaseBundle
{
public:
    enum File { Contacts, Orders, Items, Materials, Bills, Actions };
    static constexpr int FileCount = 6;

    static QString fileName(File file);  // "contacts.xml" ...
    static QString rootKey(File file);  // "contacts", "orders", "products", "materials", "bills", "actions"
    static QString filePath(File file);  // the file in the bundle folder

    // The collections, in the order of the files. They must outlive the bundle.
    DatabaseBundle(kdDataSource &contacts, kdDataSource &orders, kdDataSource &items, kdDataSource &materials,
                   kdDataSource &bills, kdDataSource &actions);
    kdDataSource &collection(File file) const { return *collections[file]; }

    // Links an order read from the file to the contact with that id. The
    // default looks the id up in the contacts and hands the order
    // setContact() the result (which ignores none).
    using ConnectContactById = std::function<void(int contactId, Order *order)>;
    // Fills in the contact of a line stored without one. The default takes
    // the id of the contact of the line's order (0 when the order has none or
    // is not there).
    using SetContactFor = std::function<void(Material *line)>;
    // Called after each file in the reading order, whether it was there,
    // read, or not.
    using AfterReading = std::function<void(File file)>;
    // An empty hook puts the default back.
    void setConnectContactById(ConnectContactById hook);
    void setSetContactfor(SetContactFor hook);
    void setAfterReading(AfterReading hook);
    // Called once, before the first write of the bundle (the backup of the
    // files as they are); a write goes on whatever it does.
    void setBeforeFirstWrite(std::function<void()> hook) { beforeFirstWrite = std::move(hook); }
    void connectContactById(int contactId, Order *order) const;
    void setContactfor(Material *line) const;

    struct Failure
    {
        File file = Contacts;
        QString path;
        QString reason;
        qint64 line = 0;  // 0 when there is no line
        // "cannot read PATH: line 12: REASON (the file is left as it is)"
        QString message() const;
    };
    struct ReadResult
    {
        QList<Failure> failures;
        bool ok() const { return failures.isEmpty(); }
    };

    // Reads the six files into the collections (added to what they hold).
    // Missing files are skipped; nothing is created. Each failure is also
    // reported on standard error as "quorvel: " and its message.
    ReadResult readDatabase();

    // Writes one file, or all six in order, atomically; the bundle folder
    // (and the "Quorvel" folder above it) is made by the first write. A file
    // that could not be read is first renamed aside. Answers whether every
    // file was written; a failure is reported on standard error and kept in
    // lastWriteError().
    bool writeDatabase(File file);
    bool writeDatabase();
    // What must be done before a file's bytes are written elsewhere than
    // here (on a worker thread): the backup before the first write, the
    // folder made, an unreadable file set aside. False, with the reason in
    // lastWriteError(), when the file must not be written.
    bool prepareWrite(File file);
    // The bytes a write of the file puts on disk, from the collection as it
    // stands.
    QByteArray fileContents(File file) const;
    QString lastWriteError() const { return writeError; }

    // Whether the file failed at the last reading and has not yet been set
    // aside by a write.
    bool isUnreadable(File file) const { return unreadable[file]; }

    // Files are parsed on several threads (and linked in order afterwards)
    // unless this is switched off.
    void setParallelReading(bool on) { parallel = on; }
    // Short repeated values read from the files share one string each
    // unless this is switched off (the benchmark measures what it saves).
    void setValueSharing(bool on) { sharing = on; }

private:
    bool setAside(File file);
    void firstWrite();
    bool writeFile(File file, const QByteArray &contents);
    bool fail(const QString &message);

    std::array<kdDataSource *, FileCount> collections;
    ConnectContactById connectHook;
    SetContactFor contactForHook;
    AfterReading afterHook;
    std::array<bool, FileCount> unreadable{};
    bool parallel = true;
    bool sharing = true;
    QString writeError;
    std::function<void()> beforeFirstWrite;
    bool written = false;
};
