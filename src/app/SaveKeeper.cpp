#include "app/SaveKeeper.h"

#include "platform/Clock.h"
#include "platform/PropertyList.h"
#include "store/DatabaseWriting.h"
#include "store/kdDataSource.h"

#include <QFileInfo>

#include <chrono>

SaveKeeper::SaveKeeper(DatabaseBundle &databaseBundle, QObject *parent)
    : QObject(parent),
      bundle(databaseBundle)
{
    idleTimer.setSingleShot(true);
    idleTimer.setInterval(idleMs);
    connect(&idleTimer, &QTimer::timeout, this, &SaveKeeper::idle);
    sliceTimer.setInterval(0);
    connect(&sliceTimer, &QTimer::timeout, this, &SaveKeeper::buildSlice);
    watchTimer.setInterval(500);
    connect(&watchTimer, &QTimer::timeout, this, &SaveKeeper::checkGenerations);
    doneTimer.setInterval(20);
    connect(&doneTimer, &QTimer::timeout, this, [this] {
        bool busy = false;
        for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
            if (writing[f] && writing[f]->result.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
                collect(DatabaseBundle::File(f));
            busy = busy || writing[f];
        }
        if (!busy)
            doneTimer.stop();
    });
    settle();
    watchTimer.start();
}

SaveKeeper::~SaveKeeper()
{
    // A write under way is let finish: the file is then whole.
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        if (writing[f])
            writing[f]->result.wait();
    }
}

void SaveKeeper::settle()
{
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        savedGeneration[f] = bundle.collection(DatabaseBundle::File(f)).getGeneration();
        changed[f] = false;
    }
}

void SaveKeeper::markChanged(DatabaseBundle::File file)
{
    changed[file] = true;
    idleTimer.start();
}

void SaveKeeper::markNotepadChanged()
{
    notepadChanged = true;
    idleTimer.start();
}

void SaveKeeper::checkGenerations()
{
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        const bool moved = bundle.collection(DatabaseBundle::File(f)).getGeneration() != savedGeneration[f];
        if (moved && !changed[f] && !(building && building->kind() == f) && !writing[f])
            markChanged(DatabaseBundle::File(f));
    }
}

bool SaveKeeper::isPending() const
{
    if (building || notepadChanged)
        return true;
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        if (changed[f] || writing[f])
            return true;
    }
    return false;
}

QList<DatabaseBundle::File> SaveKeeper::failingFiles() const
{
    QList<DatabaseBundle::File> files;
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        if (!failures[f].isEmpty())
            files << DatabaseBundle::File(f);
    }
    return files;
}

void SaveKeeper::idle()
{
    if (notepadChanged) {
        notepadChanged = false;
        if (saveNotepad)
            saveNotepad();
    }
    if (building)
        return;
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        if (!changed[f] || writing[f])
            continue;
        changed[f] = false;
        building = std::make_unique<database::FileBuilder>(DatabaseBundle::File(f),
                                                           bundle.collection(DatabaseBundle::File(f)));
        buildingGeneration = bundle.collection(DatabaseBundle::File(f)).getGeneration();
        sliceTimer.start();
        return;
    }
}

void SaveKeeper::buildSlice()
{
    if (!building) {
        sliceTimer.stop();
        return;
    }
    const DatabaseBundle::File file = building->kind();
    const quint64 generation = bundle.collection(file).getGeneration();
    if (generation != buildingGeneration)
        buildingGeneration = generation;  // the builder starts again by itself
    if (!building->step(sliceRecords))
        return;
    sliceTimer.stop();
    QByteArray bytes = building->finish();
    building.reset();
    if (!bundle.prepareWrite(file)) {
        finished(file, bundle.lastWriteError(), buildingGeneration, 0);
    } else {
        auto job = std::make_unique<Writing>();
        job->generation = buildingGeneration;
        job->bytes = bytes.size();
        const QString path = DatabaseBundle::filePath(file);
        job->result = std::async(std::launch::async, [path, bytes = std::move(bytes)] {
            QString why;
            return platform::plist::writeFileAtomically(path, bytes, &why)
                ? QString()
                : QStringLiteral("cannot write %1: %2").arg(path, why);
        });
        writing[file] = std::move(job);
        doneTimer.start();
    }
    // The next changed file, if any.
    idle();
}

void SaveKeeper::collect(DatabaseBundle::File file)
{
    std::unique_ptr<Writing> job = std::move(writing[file]);
    if (!job)
        return;
    const QString reason = job->result.get();
    finished(file, reason, job->generation, job->bytes);
    // A change made while the file was written is written next.
    if (changed[file] && failures[file].isEmpty())
        idleTimer.start();
}

void SaveKeeper::finished(DatabaseBundle::File file, const QString &reason, quint64 generation, qint64 bytes)
{
    if (reason.isEmpty()) {
        savedGeneration[file] = generation;
        const bool recovered = !failures[file].isEmpty();
        failures[file].clear();
        lastSave = platform::now();
        if (recovered && onWriteFailed)
            onWriteFailed(file, QString());
        Q_EMIT saved(file, bytes);
        return;
    }
    const bool known = !failures[file].isEmpty();
    failures[file] = reason;
    // Tried again with the next save; not at once, which would fail alike.
    changed[file] = true;
    if (!known && onWriteFailed)
        onWriteFailed(file, reason);
}

bool SaveKeeper::writeNow(DatabaseBundle::File file)
{
    if (building && building->kind() == file) {
        building.reset();
        sliceTimer.stop();
    }
    if (writing[file]) {
        writing[file]->result.wait();
        collect(file);
    }
    const quint64 generation = bundle.collection(file).getGeneration();
    changed[file] = false;
    const bool written = bundle.writeDatabase(file);
    const qint64 bytes = written ? QFileInfo(DatabaseBundle::filePath(file)).size() : 0;
    finished(file, written ? QString() : bundle.lastWriteError(), generation, bytes);
    return written;
}

bool SaveKeeper::writeAll()
{
    bool all = true;
    for (int f = 0; f < DatabaseBundle::FileCount; ++f)
        all = writeNow(DatabaseBundle::File(f)) && all;
    if (notepadChanged && saveNotepad)
        saveNotepad();
    notepadChanged = false;
    return all;
}

void SaveKeeper::flush()
{
    for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
        const bool moved = bundle.collection(DatabaseBundle::File(f)).getGeneration() != savedGeneration[f];
        if (changed[f] || writing[f] || moved || (building && building->kind() == f))
            writeNow(DatabaseBundle::File(f));
    }
    if (notepadChanged && saveNotepad)
        saveNotepad();
    notepadChanged = false;
}
