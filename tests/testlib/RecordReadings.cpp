#include "RecordReadings.h"

namespace testlib {

namespace {

using platform::plist::Field;
using platform::plist::RecordReader;

// "\", "|" and "=" written with a backslash before them, so that two
// different records never make the same line.
QString escaped(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'\\' || c == u'|' || c == u'=')
            out += QLatin1Char('\\');
        out += c;
    }
    return out;
}

// Collects the records as lines, voiding them on restart.
class LineCollector : public platform::plist::RecordVisitor
{
public:
    explicit LineCollector(const RecordReader &recordReader)
        : reader(recordReader)
    { }
    void restart() override { records.clear(); }
    void record(std::span<const Field> fields) override
    {
        QString line;
        for (const Field &field : fields) {
            if (!line.isEmpty())
                line += QLatin1Char('|');
            line += escaped(reader.keyName(field.key)) + QLatin1Char('=') + escaped(field.value);
        }
        records << line;
    }

    const RecordReader &reader;
    QStringList records;
};

QString describe(const RecordReading &reading)
{
    if (!reading.ok)
        return QStringLiteral("not read (%1)").arg(reading.reason);
    return QStringLiteral("%1 record(s): %2")
        .arg(reading.records.size())
        .arg(reading.records.join(QLatin1String(" / ")).left(400));
}

}  // namespace

QStringList defaultKnownKeys()
{
    return {QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("title")};
}

RecordReading readRecordLines(QByteArrayView document, const QString &rootKey, bool quickScan,
                              const QStringList &knownKeys)
{
    RecordReader reader(knownKeys);
    reader.setQuickScanEnabled(quickScan);
    LineCollector collector(reader);
    const platform::plist::ReadStatus status = reader.read(document, rootKey, collector);
    RecordReading reading;
    reading.ok = status.ok();
    reading.reason = status.message();
    reading.usedFullReader = reader.usedFullReader();
    if (reading.ok)
        reading.records = collector.records;
    return reading;
}

QuickAndFull readQuickAndFull(QByteArrayView document, const QString &rootKey, const QStringList &knownKeys)
{
    return {readRecordLines(document, rootKey, true, knownKeys), readRecordLines(document, rootKey, false, knownKeys)};
}

QString QuickAndFull::description() const
{
    return QStringLiteral("with the quick scanner: %1\nwith the full reader alone: %2")
        .arg(describe(quick), describe(full));
}

}  // namespace testlib
