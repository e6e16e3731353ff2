#pragma once
// Reading a record property list with the quick scanner on and off. The two
// ways must agree on every document: the same records and the same answer
// (read or not). The tests, the fuzz targets and the random-damage driver of
// bench/ all compare them through these.
#include "platform/PropertyList.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace testlib {

// What one read gave: whether the document was read, why not, and the
// records delivered, each as "key=value|key=value" with the keys by name
// ("\", "|" and "=" in a key or value have a "\" before them).
// A failed read keeps no records (they are void).
struct RecordReading
{
    bool ok = false;
    QString reason;
    QStringList records;
    bool usedFullReader = false;
};

// The known keys given to the reader when none are named.
QStringList defaultKnownKeys();

RecordReading readRecordLines(QByteArrayView document, const QString &rootKey, bool quickScan,
                              const QStringList &knownKeys = defaultKnownKeys());

// The document read with the quick scanner (the full reader behind it) and
// with the full reader alone.
struct QuickAndFull
{
    RecordReading quick;
    RecordReading full;

    // The same answer (read or not) and the same records.
    bool agree() const { return quick.ok == full.ok && quick.records == full.records; }
    // What each gave, for a message.
    QString description() const;
};

QuickAndFull readQuickAndFull(QByteArrayView document, const QString &rootKey,
                              const QStringList &knownKeys = defaultKnownKeys());

}  // namespace testlib
