// Inputs that once crashed, hung, ran away with memory or made the readers
// disagree, kept in tests/data/fuzz-regressions/READER/ (READER as the fuzz
// target in fuzz/). A file named NAME.readable.xml must be read, one named
// NAME.refused.xml must be refused with a reason; either way nothing may
// crash, and the record reader must answer the same with and without its
// quick scanner.
#include "TestMain.h"

#include "RecordReadings.h"
#include "ValueSaveAndLoad.h"

#include "platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

QString regressionFolder(const char *reader)
{
    return QStringLiteral(QUORVEL_TEST_DATA "/fuzz-regressions/") + QLatin1String(reader);
}

// One row per file of the reader's folder, with whether it must be read.
void addRegressionRows(const char *reader)
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("readable");
    const QFileInfoList files
        = QDir(regressionFolder(reader)).entryInfoList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    QVERIFY2(!files.isEmpty(), qPrintable(regressionFolder(reader)));
    for (const QFileInfo &file : files) {
        const QString name = file.fileName();
        const bool readable = name.endsWith(QLatin1String(".readable.xml"));
        QVERIFY2(readable || name.endsWith(QLatin1String(".refused.xml")),
                 qPrintable(name + QStringLiteral(": name it NAME.readable.xml or NAME.refused.xml")));
        QTest::newRow(qPrintable(name)) << file.filePath() << readable;
    }
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

// A document whose DOCTYPE declares an entity of `length` characters and
// whose one record holds `references` references to it, after `filler`
// bytes of a plain value.
QByteArray documentWithEntity(int length, int references, qsizetype filler)
{
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE plist [<!ENTITY e \"" + QByteArray(length, 'x')
        + "\">]>\n<plist version=\"1.0\"><dict><key>orders</key><array><dict><key>note</key><string>"
        + QByteArray(filler, 'n') + "</string><key>name</key><string>" + QByteArray("&e;").repeated(references)
        + "</string></dict></array></dict></plist>\n";
}

}  // namespace

class FuzzRegressionTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadRecordsAlikeWithAndWithoutTheQuickScan_data() { addRegressionRows("plist_records"); }
    void shouldReadRecordsAlikeWithAndWithoutTheQuickScan();
    void shouldReadGeneralValuesThatSurviveSaving_data() { addRegressionRows("plist_value"); }
    void shouldReadGeneralValuesThatSurviveSaving();
    void shouldKeepEntityExpansionInProportionToTheDocument_data();
    void shouldKeepEntityExpansionInProportionToTheDocument();
};

void FuzzRegressionTest::shouldReadRecordsAlikeWithAndWithoutTheQuickScan()
{
    QFETCH(QString, path);
    QFETCH(bool, readable);
    const testlib::QuickAndFull readings = testlib::readQuickAndFull(contentsOf(path), QStringLiteral("orders"));
    QVERIFY2(readings.agree(), qPrintable(readings.description()));
    QVERIFY2(readings.quick.ok == readable,
             readable ? qPrintable(readings.quick.reason) : "read, though it must be refused");
    if (!readable)
        QVERIFY(!readings.full.reason.isEmpty());
}

void FuzzRegressionTest::shouldReadGeneralValuesThatSurviveSaving()
{
    QFETCH(QString, path);
    QFETCH(bool, readable);
    platform::plist::ReadStatus status;
    const QVariant value = platform::plist::readValue(contentsOf(path), &status);
    QVERIFY2(status.ok() == readable, readable ? qPrintable(status.message()) : "read, though it must be refused");
    if (!readable) {
        QVERIFY(!value.isValid());
        return;
    }
    const QString fault = testlib::valueSaveAndLoadFault(value);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void FuzzRegressionTest::shouldKeepEntityExpansionInProportionToTheDocument_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("references");
    QTest::addColumn<qsizetype>("filler");
    QTest::addColumn<bool>("readable");
    // 1.2 GB of text from a 300 KB file: refused at once.
    QTest::newRow("a long entity used 100000 times") << 4000 << 100000 << qsizetype(0) << false;
    QTest::newRow("a long entity used a few times") << 4000 << 20 << qsizetype(0) << true;
    // A large document may use a short entity often: the limit grows with
    // the document.
    QTest::newRow("a short entity, often, in 8 MB") << 20 << 200000 << qsizetype(8 << 20) << true;
    QTest::newRow("a long entity, often, in 8 MB") << 400 << 200000 << qsizetype(8 << 20) << false;
}

void FuzzRegressionTest::shouldKeepEntityExpansionInProportionToTheDocument()
{
    QFETCH(int, length);
    QFETCH(int, references);
    QFETCH(qsizetype, filler);
    QFETCH(bool, readable);
    const QByteArray document = documentWithEntity(length, references, filler);
    const testlib::RecordReading reading = testlib::readRecordLines(document, QStringLiteral("orders"), true);
    QVERIFY2(reading.ok == readable, readable ? qPrintable(reading.reason) : "read, though it must be refused");
    if (readable) {
        QCOMPARE(reading.records.size(), 1);
        QVERIFY(reading.records.first().endsWith(QString(qsizetype(length) * references, QLatin1Char('x'))));
    } else {
        QVERIFY2(reading.reason.contains(QLatin1String("expansion limit")), qPrintable(reading.reason));
    }
    platform::plist::ReadStatus status;
    readValue(document, &status);
    QCOMPARE(status.ok(), readable);
}

QUORVEL_TEST(FuzzRegressionTest)

#include "FuzzRegressionTest.moc"
