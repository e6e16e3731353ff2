// Fuzz target of the RTF reader (RtfReader::read). No input may crash it,
// hang it or make it run away with memory. What it reads is also written
// back (RtfWriter::writeRtf) and read again: writing that second document
// must give the same bytes as the first writing, so that a document loaded
// from any file survives being saved and loaded.
//
// Inputs are read as the TXT.rtf of a package that holds a.png, b.tiff,
// c.txt (not a picture) and d.png (a link to a picture outside it), so that
// \NeXTGraphic attachments are found, refused and skipped.
#include "platform/richtext/RtfReader.h"
#include "platform/richtext/RtfWriter.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextDocument>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void quiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // Image decoders complain about damaged pictures; that is expected.
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        std::abort();
    }
}

QString packageDir;

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::abort();
    }
}

QByteArray picture(int width, int height, const char *format)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

void makePackage()
{
    static QTemporaryDir folder;
    if (!folder.isValid() || !QDir(folder.path()).mkdir(QStringLiteral("doc.rtfd"))) {
        std::fprintf(stderr, "cannot make the package folder\n");
        std::abort();
    }
    packageDir = folder.filePath(QStringLiteral("doc.rtfd"));
    writeFile(packageDir + QStringLiteral("/a.png"), picture(6, 4, "PNG"));
    writeFile(packageDir + QStringLiteral("/b.tiff"), picture(3, 5, "TIFF"));
    writeFile(packageDir + QStringLiteral("/c.txt"), "not a picture");
    writeFile(folder.filePath(QStringLiteral("outside.png")), picture(2, 2, "PNG"));
    QFile::link(folder.filePath(QStringLiteral("outside.png")), packageDir + QStringLiteral("/d.png"));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quiet);
    static int appArgc = 1;
    static char *appArgv[] = {(*argc > 0) ? (*argv)[0] : const_cast<char *>("rtf_reader_fuzzer"), nullptr};
    static QGuiApplication *app = new QGuiApplication(appArgc, appArgv);
    Q_UNUSED(app);
    makePackage();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    QTextDocument document;
    const RtfReadResult result = RtfReader::read(input, document, packageDir);
    if (!result.ok) {
        if (!document.isEmpty()) {
            std::fprintf(stderr, "a refused input left text in the document\n");
            std::abort();
        }
        return 0;
    }

    const QByteArray written = RtfWriter::writeRtf(document).rtf;
    QTextDocument again;
    const RtfReadResult reread = RtfReader::read(written, again);
    if (!reread.ok || !reread.skipped.isEmpty()) {
        std::fprintf(stderr, "what was written is not read back cleanly (%s):\n%s\n",
                     qPrintable(reread.skipped.join(QLatin1String("; "))), written.left(2000).constData());
        std::abort();
    }
    const QByteArray rewritten = RtfWriter::writeRtf(again).rtf;
    if (rewritten != written) {
        std::fprintf(stderr, "a document changed when saved and loaded:\n%s\n---- then ----\n%s\n",
                     written.left(4000).constData(), rewritten.left(4000).constData());
        std::abort();
    }
    return 0;
}
