#pragma once
// One writer per database: the program holds this lock on its database
// folder for as long as it runs, and every command line command that writes
// holds it while it writes. It is a lock file beside the database folder
// ("quorveldatabase.qvldb.lock" in the support folder); a lock left by a
// program that crashed is taken over.
//
// The lock's name also names the local socket a running program listens on,
// so that a second start on the same data folder can bring it to the front.
#include <QString>
#include <memory>

class QLockFile;

class DatabaseLock
{
public:
    DatabaseLock();
    ~DatabaseLock();

    static QString lockPath();
    // A name for the running program's socket, the same for one data folder.
    static QString serverName();

    // Takes the lock (making the support folder when it is not there);
    // false while another program holds it.
    bool tryLock();
    bool isLocked() const;
    void unlock();
    // Who holds it, as far as the lock file says ("process 1234 on host").
    QString holder() const;

private:
    std::unique_ptr<QLockFile> file;
};
