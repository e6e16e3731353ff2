#pragma once
// Nothing waits for Quit: every change reaches the disk within seconds. A
// kind of record whose collection changed (records added, deleted, put in
// another order) or that was marked changed (a line's figures, stock, an
// alarm acknowledged, a sale at the checkout) is written once the program
// has been idle for two seconds. Its bytes are built a slice of records at a
// time between the window's events, and the file is written on a worker
// thread, so typing never waits for a save. The notepad is saved the same way.
//
// Every write of the program goes through here: an editor's write is made at
// once (after any write of that file still under way), and Quit writes
// everything that is left. A write that fails leaves the old file and the
// records as they were; it is said once, and tried again with the next save.
#include "store/DatabaseBundle.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>

#include <array>
#include <functional>
#include <future>
#include <memory>

namespace database {
class FileBuilder;
}

class SaveKeeper : public QObject
{
    Q_OBJECT
public:
    explicit SaveKeeper(DatabaseBundle &bundle, QObject *parent = nullptr);
    ~SaveKeeper() override;

    // How long the program must be idle before changes are written.
    static constexpr int idleMs = 2000;
    // Records built per slice between two events of the window.
    static constexpr int sliceRecords = 4000;

    // The collections as they are now are what is on disk (after reading
    // the database).
    void settle();
    void markChanged(DatabaseBundle::File file);
    void markNotepadChanged();
    // Writes the file now (waiting for a write of it under way); answers
    // whether it was written.
    bool writeNow(DatabaseBundle::File file);
    // Writes every file now, as at Quit; answers whether all were written.
    bool writeAll();
    // Writes whatever is changed or under way now, and waits for it.
    void flush();

    // Whether a change waits to be written, or a write is under way.
    bool isPending() const;
    // The files whose last write failed, with the reasons.
    QList<DatabaseBundle::File> failingFiles() const;
    QString failureOf(DatabaseBundle::File file) const { return failures[file]; }
    // When a file was last written.
    QDateTime lastSaved() const { return lastSave; }

    // How the notepad is saved (the preferences do it); none saves nothing.
    std::function<void()> saveNotepad;
    // Told when a file could not be written, and when it was written again
    // after failing (reason "").
    std::function<void(DatabaseBundle::File file, const QString &reason)> onWriteFailed;

Q_SIGNALS:
    void saved(DatabaseBundle::File file, qint64 bytes);

private:
    struct Writing
    {
        std::future<QString> result;  // "" when written
        quint64 generation = 0;
        qint64 bytes = 0;
    };
    void idle();
    void buildSlice();
    void checkGenerations();
    void collect(DatabaseBundle::File file);
    void finished(DatabaseBundle::File file, const QString &reason, quint64 generation, qint64 bytes);

    DatabaseBundle &bundle;
    QTimer idleTimer;
    QTimer sliceTimer;
    QTimer watchTimer;
    QTimer doneTimer;
    std::array<bool, DatabaseBundle::FileCount> changed{};
    std::array<quint64, DatabaseBundle::FileCount> savedGeneration{};
    std::array<QString, DatabaseBundle::FileCount> failures;
    std::array<std::unique_ptr<Writing>, DatabaseBundle::FileCount> writing;
    std::unique_ptr<database::FileBuilder> building;
    quint64 buildingGeneration = 0;
    bool notepadChanged = false;
    QDateTime lastSave;
};
