// The header's tables (fonts, colours), field instructions, and pictures and
// attachments placed in the document.
#include "platform/richtext/RtfReaderState.h"

#include "platform/richtext/RtfReaderPictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextDocument>
#include <QUrl>

namespace rtf::reading {

// Cocoa writes PostScript names: "Helvetica-Bold" is Helvetica in bold,
// "Arial-BoldItalicMT" Arial in bold italic. Suffixes are taken off until
// none is left, so that the family that remains reads the same again.
void splitPostScriptName(FontEntry &font)
{
    struct Suffix
    {
        const char *text;
        bool bold;
        bool italic;
    };
    static const Suffix suffixes[] = {
        {"-BoldOblique", true, true}, {"-BoldItalic", true, true}, {"-Bold", true, false},
        {"-Oblique", false, true},    {"-Italic", false, true},    {"-Roman", false, false},
        {"-Regular", false, false},
    };
    static const QHash<QString, QString> familyNames = {
        {QStringLiteral("ArialMT"), QStringLiteral("Arial")},
        {QStringLiteral("TimesNewRomanPSMT"), QStringLiteral("Times New Roman")},
        {QStringLiteral("TimesNewRomanPS"), QStringLiteral("Times New Roman")},
        {QStringLiteral("CourierNewPSMT"), QStringLiteral("Courier New")},
        {QStringLiteral("CourierNewPS"), QStringLiteral("Courier New")},
        {QStringLiteral("HelveticaNeue"), QStringLiteral("Helvetica Neue")},
        {QStringLiteral("LucidaGrande"), QStringLiteral("Lucida Grande")},
    };
    QString name = font.family;
    for (bool changed = true; changed;) {
        changed = false;
        if (name.endsWith(QLatin1String("MT")) && name.contains(QLatin1Char('-'))) {
            name.chop(2);
            changed = true;
        }
        for (const Suffix &suffix : suffixes) {
            if (name.endsWith(QLatin1String(suffix.text))) {
                name.chop(qsizetype(qstrlen(suffix.text)));
                font.bold = font.bold || suffix.bold;
                font.italic = font.italic || suffix.italic;
                changed = true;
                break;
            }
        }
        const auto known = familyNames.constFind(name);
        if (known != familyNames.constEnd()) {
            name = known.value();
            changed = true;
        }
        const QString trimmed = name.trimmed();
        if (trimmed != name) {
            name = trimmed;
            changed = true;
        }
    }
    font.family = name;
}

// ---------------------------------------------------------------- tables of the header

void Reader::finishFontEntry()
{
    if (m_fontNumber >= 0 || !m_fontName.isEmpty() || !m_fontText.isEmpty()) {
        FontEntry entry = m_fontEntry;
        entry.family = (m_fontText + m_decoder.decode(m_fontName, fontEntryCodePage())).simplified();
        splitPostScriptName(entry);
        if (m_fontNumber >= 0 && (m_fonts.size() < maxFonts || m_fonts.contains(m_fontNumber)))
            m_fonts.insert(m_fontNumber, entry);
    }
    m_fontNumber = -1;
    m_fontName.clear();
    m_fontText.clear();
    m_fontEntry = FontEntry();
    m_fontCodePageGiven = false;
}

void Reader::finishColour()
{
    if (m_colours.size() < maxColours) {
        if (m_red < 0 && m_green < 0 && m_blue < 0)
            m_colours.append(QColor());  // the automatic colour
        else
            m_colours.append(QColor(std::max(m_red, 0), std::max(m_green, 0), std::max(m_blue, 0)));
    }
    m_red = m_green = m_blue = -1;
}

void Reader::finishFieldInstruction(int field)
{
    if (field < 0 || size_t(field) >= m_fields.size())
        return;
    Field &f = m_fields[size_t(field)];
    f.instruction += m_decoder.decode(f.pending, f.codePage);
    f.pending.clear();
    const QString instruction = QString(f.instruction).remove(QLatin1Char('\t')).trimmed();
    if (!instruction.startsWith(QLatin1String("HYPERLINK"), Qt::CaseInsensitive))
        return;
    // HYPERLINK "url" or HYPERLINK \l "bookmark"
    bool local = false;
    qsizetype i = 9;
    while (i < instruction.size()) {
        const QChar ch = instruction.at(i);
        if (ch.isSpace()) {
            ++i;
            continue;
        }
        if (ch == QLatin1Char('\\')) {
            if (i + 1 < instruction.size() && instruction.at(i + 1) == QLatin1Char('l'))
                local = true;
            i += 2;
            continue;
        }
        QString target;
        if (ch == QLatin1Char('"')) {
            const qsizetype end = instruction.indexOf(QLatin1Char('"'), i + 1);
            target = instruction.mid(i + 1, end < 0 ? -1 : end - i - 1);
        } else {
            qsizetype end = i;
            while (end < instruction.size() && !instruction.at(end).isSpace())
                ++end;
            target = instruction.mid(i, end - i);
        }
        if (!target.isEmpty())
            f.href = local ? QLatin1Char('#') + target : target;
        return;
    }
}

// ---------------------------------------------------------------- pictures

QString Reader::uniqueResourceName(const QString &preferred)
{
    QString name = preferred;
    int number = 2;
    while (m_resourceNames.contains(name)) {
        const qsizetype dot = preferred.lastIndexOf(QLatin1Char('.'));
        if (dot > 0)
            name = preferred.left(dot) + QLatin1Char('-') + QString::number(number) + preferred.mid(dot);
        else
            name = preferred + QLatin1Char('-') + QString::number(number);
        ++number;
    }
    m_resourceNames.insert(name);
    return name;
}

void Reader::insertPicture(const QString &resourceName, qreal width, qreal height)
{
    resolveSurrogate();
    flushRun();
    // A picture given one side gets the other in its proportions; one
    // larger than maxPicturePoints is shown smaller, in its proportions, and
    // no side is shown smaller than minPicturePoints.
    const QSize pixels = m_document.resource(QTextDocument::ImageResource, QUrl(resourceName)).value<QImage>().size();
    if (!pixels.isEmpty()) {
        if (width <= 0 && height <= 0) {
            if (pixels.width() > maxPicturePoints || pixels.height() > maxPicturePoints) {
                width = pixels.width();
                height = pixels.height();
            }
        } else if (width <= 0) {
            width = height * pixels.width() / pixels.height();
        } else if (height <= 0) {
            height = width * pixels.height() / pixels.width();
        }
    }
    QTextImageFormat format;
    format.setName(resourceName);
    if (width > 0 && height > 0) {
        const qreal factor = std::min({qreal(1), maxPicturePoints / width, maxPicturePoints / height});
        format.setWidth(std::max(width * factor, minPicturePoints));
        format.setHeight(std::max(height * factor, minPicturePoints));
    }
    m_builder->addImage(format);
}

void Reader::finishPicture()
{
    PictureState picture = std::move(m_picture);
    m_picture = PictureState();
    if (picture.tooLarge) {
        note(QStringLiteral("picture of more than %1 bytes skipped").arg(RtfReader::maxPictureBytes));
        return;
    }
    const QByteArray format = pictureFormat(picture.data);
    if (format != "png" && format != "jpeg") {
        if (picture.blip == Keyword::OtherBlip)
            note(QStringLiteral("picture in a format other than PNG or JPEG skipped"));
        else if (!picture.data.isEmpty())
            note(QStringLiteral("damaged picture skipped"));
        return;
    }
    DecodedPicture decoded = decodePicture(picture.data, format, &m_pixelBudget);
    if (decoded.image.isNull()) {
        note(decoded.problem);
        return;
    }
    ++m_pictureCount;
    const QString name = uniqueResourceName(QStringLiteral("picture%1.%2")
                                                .arg(m_pictureCount)
                                                .arg(format == "png" ? QStringLiteral("png") : QStringLiteral("jpg")));
    m_document.addResource(QTextDocument::ImageResource, QUrl(name), decoded.image);
    qreal width = 0;
    qreal height = 0;
    if (picture.goalWidth > 0)
        width = picture.goalWidth / twipsPerUnit * picture.scaleX / 100.0;
    else if (picture.scaleX != 100)
        width = decoded.image.width() * picture.scaleX / 100.0;
    if (picture.goalHeight > 0)
        height = picture.goalHeight / twipsPerUnit * picture.scaleY / 100.0;
    else if (picture.scaleY != 100)
        height = decoded.image.height() * picture.scaleY / 100.0;
    insertPicture(name, width, height);
}

QString Reader::loadAttachment(const QString &name, QString *problem)
{
    if (m_packageDir.isEmpty()) {
        *problem = QStringLiteral("attachment %1 outside a package skipped").arg(name);
        return QString();
    }
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))
        || name == QLatin1String(".") || name == QLatin1String("..") || name.contains(QChar(0))) {
        *problem = QStringLiteral("attachment name \"%1\" refused").arg(name);
        return QString();
    }
    const QFileInfo info(QDir(m_packageDir).filePath(name));
    const QString package = QFileInfo(m_packageDir).canonicalFilePath();
    const QString file = info.canonicalFilePath();
    if (!info.isFile() || file.isEmpty() || package.isEmpty() || !file.startsWith(package + QLatin1Char('/'))) {
        *problem = QStringLiteral("attachment %1 not found").arg(name);
        return QString();
    }
    if (info.size() > RtfReader::maxPictureBytes) {
        *problem = QStringLiteral("attachment %1 of %2 bytes skipped").arg(name).arg(info.size());
        return QString();
    }
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("attachment %1 cannot be read").arg(name);
        return QString();
    }
    const QByteArray bytes = input.read(RtfReader::maxPictureBytes);
    DecodedPicture decoded = decodePicture(bytes, QByteArray(), &m_pixelBudget);
    if (decoded.image.isNull()) {
        *problem = QStringLiteral("attachment %1: %2").arg(name, decoded.problem);
        return QString();
    }
    const QString resource = uniqueResourceName(name);
    m_document.addResource(QTextDocument::ImageResource, QUrl(resource), decoded.image);
    return resource;
}

void Reader::finishAttachment()
{
    AttachmentState attachment = std::move(m_attachment);
    m_attachment = AttachmentState();
    QString name = attachment.name + m_decoder.decode(attachment.pendingName, attachment.codePage);
    name = name.trimmed();

    QString resource;
    const auto known = m_attachmentResources.constFind(name);
    if (known != m_attachmentResources.constEnd()) {
        resource = known.value();
    } else {
        QString problem;
        resource = loadAttachment(name, &problem);
        if (resource.isEmpty() && !attachment.pendingName.isEmpty() && attachment.name.isEmpty()) {
            // A name written in UTF-8 rather than in the document's code page.
            const QString utf8 = QString::fromUtf8(attachment.pendingName).trimmed();
            if (utf8 != name) {
                QString second;
                resource = loadAttachment(utf8, &second);
            }
        }
        if (resource.isEmpty())
            note(problem);
        m_attachmentResources.insert(name, resource);
    }
    if (resource.isEmpty())
        return;
    insertPicture(resource, attachment.width > 0 ? attachment.width / twipsPerUnit : 0,
                  attachment.height > 0 ? attachment.height / twipsPerUnit : 0);
}

}  // namespace rtf::reading
