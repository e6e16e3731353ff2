#include "orders/DocumentOutput.h"

#include "platform/richtext/RtfWriter.h"

#include <QMarginsF>
#include <QPageLayout>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextDocument>

namespace documents {

QPageSize::PageSizeId paperFor(const QLocale &locale)
{
    switch (locale.territory()) {
    case QLocale::UnitedStates:
    case QLocale::Canada:
    case QLocale::Mexico:
    case QLocale::Chile:
    case QLocale::Colombia:
    case QLocale::Venezuela:
    case QLocale::Philippines:
    case QLocale::PuertoRico:
    case QLocale::Guatemala:
    case QLocale::CostaRica:
        return QPageSize::Letter;
    default:
        return QPageSize::A4;
    }
}

bool writePdf(const QTextDocument &document, QIODevice &device, QPageSize::PageSizeId paper)
{
    QPdfWriter writer(&device);
    writer.setCreator(QStringLiteral("Quorvel"));
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    // The document's own layout keeps a margin of 2 cm on every side.
    writer.setPageLayout(
        QPageLayout(QPageSize(paper), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    writer.setResolution(300);
    document.print(&writer);
    return true;
}

bool writePdfFile(const QTextDocument &document, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    writePdf(document, file, paperFor(QLocale()));
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

QByteArray rtfBytes(const QTextDocument &document)
{
    return RtfWriter::writeRtf(document).rtf;
}

QByteArray plainTextBytes(const QTextDocument &document)
{
    QByteArray text = document.toPlainText().toUtf8();
    if (!text.endsWith('\n'))
        text += '\n';
    return text;
}

bool writeFile(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

}  // namespace documents
