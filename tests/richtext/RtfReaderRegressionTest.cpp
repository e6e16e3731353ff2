// The inputs the fuzz target of the RTF reader found faults with
// (tests/data/fuzz-regressions/rtf): each is read quickly without a crash,
// and what is read survives being written, read and written again. As in
// the fuzz target, each is read as the TXT.rtf of a package holding a.png,
// b.tiff, c.txt and d.png, a link to a picture outside the package.
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/RtfReader.h"
#include "platform/richtext/RtfWriter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

using namespace richtextchecks;

class RtfReaderRegressionTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_package;

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("doc.rtfd")));
        m_package = m_folder.filePath(QStringLiteral("doc.rtfd"));
        QVERIFY(writeFile(m_package + QStringLiteral("/a.png"), imageBytes(filledImage(6, 4, Qt::darkCyan), "PNG")));
        QVERIFY(writeFile(m_package + QStringLiteral("/b.tiff"), imageBytes(filledImage(3, 5, Qt::darkCyan), "TIFF")));
        QVERIFY(writeFile(m_package + QStringLiteral("/c.txt"), "not a picture"));
        QVERIFY(writeFile(m_folder.filePath(QStringLiteral("outside.png")),
                          imageBytes(filledImage(2, 2, Qt::darkCyan), "PNG")));
        QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("outside.png")), m_package + QStringLiteral("/d.png")));
    }

    void shouldReadEachFaultInputQuicklyAndStably_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(QStringLiteral(QUORVEL_TEST_DATA "/fuzz-regressions/rtf"));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        QVERIFY2(!names.isEmpty(), "no fault inputs found");
        for (const QString &name : names)
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }
    void shouldReadEachFaultInputQuicklyAndStably()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray input = file.readAll();

        QTextDocument document;
        QElapsedTimer timer;
        timer.start();
        const RtfReadResult result = RtfReader::read(input, document, m_package);
        const qint64 elapsed = timer.elapsed();
        QVERIFY2(elapsed < 2000, qPrintable(QStringLiteral("%1 ms").arg(elapsed)));
        if (!result.ok) {
            QVERIFY(document.isEmpty());
            return;
        }

        const QByteArray written = RtfWriter::writeRtf(document).rtf;
        QTextDocument again;
        const RtfReadResult reread = RtfReader::read(written, again);
        QVERIFY(reread.ok);
        QVERIFY2(reread.skipped.isEmpty(), qPrintable(reread.skipped.join(QLatin1Char('\n'))));
        QCOMPARE(again.toPlainText(), document.toPlainText());
        QCOMPARE(RtfWriter::writeRtf(again).rtf, written);
    }
};

QUORVEL_TEST(RtfReaderRegressionTest)
#include "RtfReaderRegressionTest.moc"
