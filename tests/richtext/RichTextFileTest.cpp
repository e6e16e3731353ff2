// Rich-text files on disk: saving an .rtf file or an .rtfd package
// atomically, what a failed save leaves behind, and loading both forms.
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/RichTextFile.h"
#include "platform/richtext/RichTextFileTesting.h"
#include "platform/richtext/RtfWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using RichTextFile::testing::Failure;

Q_DECLARE_METATYPE(Failure)

using namespace richtextchecks;

namespace {

QImage testImage(QRgb colour)
{
    QImage image(4, 3, QImage::Format_ARGB32);
    image.fill(colour);
    image.setPixel(0, 0, qRgb(1, 2, 3));
    return image;
}

void makeDocument(QTextDocument &document, const QString &text, const QImage &image = QImage())
{
    document.setPlainText(text);
    if (image.isNull())
        return;
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("picture.png")), image);
    QTextImageFormat format;
    format.setName(QStringLiteral("picture.png"));
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertImage(format);
}

// Every entry of a folder, hidden ones included.
QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// The names of the images a document references, with their pixels.
QList<QImage> imagesOf(const QTextDocument &document)
{
    QList<QImage> images;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (!format.isImageFormat())
                continue;
            const QVariant resource
                = document.resource(QTextDocument::ImageResource, QUrl(format.toImageFormat().name()));
            QImage image = resource.value<QImage>();
            if (image.isNull() && resource.userType() == QMetaType::QByteArray)
                image = QImage::fromData(resource.toByteArray());
            images << image;
        }
    }
    return images;
}

}  // namespace

class RichTextFileTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { RichTextFile::testing::injectFailure(Failure::None); }

    void shouldSaveAndLoadAPlainFile()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("note.rtf"));
        QTextDocument document;
        makeDocument(document, QStringLiteral("first\nsecond"), testImage(qRgb(9, 99, 199)));
        QString error;
        QVERIFY2(RichTextFile::save(path, document, &error), qPrintable(error));
        QCOMPARE(readFile(path), RtfWriter::writeRtf(document).rtf);
        QCOMPARE(entries(folder.path()), QStringList({"note.rtf"}));

        QTextDocument loaded;
        QStringList skipped;
        QVERIFY2(RichTextFile::load(path, loaded, &error, &skipped), qPrintable(error));
        QVERIFY2(skipped.isEmpty(), qPrintable(skipped.join(QLatin1Char('\n'))));
        QCOMPARE(loaded.toPlainText().remove(QChar::ObjectReplacementCharacter), QStringLiteral("first\nsecond"));
        const QList<QImage> images = imagesOf(loaded);
        QCOMPARE(images.size(), 1);
        QVERIFY(samePixels(images.at(0), testImage(qRgb(9, 99, 199))));
    }

    void shouldSaveAndLoadAPackageWithItsPictures()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Stationery.rtfd"));
        QTextDocument document;
        makeDocument(document, QStringLiteral("Invoice for <contactname>"), testImage(qRgb(200, 10, 10)));
        QString error;
        QVERIFY2(RichTextFile::save(path, document, &error), qPrintable(error));
        QCOMPARE(entries(folder.path()), QStringList({"Stationery.rtfd"}));
        QCOMPARE(entries(path), QStringList({"TXT.rtf", "picture.png"}));
        const RtfWriteResult written = RtfWriter::writePackage(document);
        QCOMPARE(readFile(path + QStringLiteral("/TXT.rtf")), written.rtf);
        QCOMPARE(readFile(path + QStringLiteral("/picture.png")), written.attachments.at(0).bytes);

        QTextDocument loaded;
        QVERIFY2(RichTextFile::load(path, loaded, &error), qPrintable(error));
        QCOMPARE(loaded.toPlainText().remove(QChar::ObjectReplacementCharacter),
                 QStringLiteral("Invoice for <contactname>"));
        const QList<QImage> images = imagesOf(loaded);
        QCOMPARE(images.size(), 1);
        QVERIFY(samePixels(images.at(0), testImage(qRgb(200, 10, 10))));
    }

    void shouldReplaceAnExistingPackageWhole()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("notepad.rtfd"));
        QVERIFY(QDir().mkpath(path));
        QVERIFY(writeFile(path + QStringLiteral("/TXT.rtf"), "{\\rtf1 old}"));
        QVERIFY(writeFile(path + QStringLiteral("/old picture.tiff"), "old bytes"));

        QTextDocument document;
        makeDocument(document, QStringLiteral("new text"));
        QString error;
        QVERIFY2(RichTextFile::save(path, document, &error), qPrintable(error));
        QCOMPARE(entries(folder.path()), QStringList({"notepad.rtfd"}));
        QCOMPARE(entries(path), QStringList({"TXT.rtf"}));
        QCOMPARE(readFile(path + QStringLiteral("/TXT.rtf")), RtfWriter::writePackage(document).rtf);
    }

    void shouldLeaveTheOldPackageWhenSavingFails_data()
    {
        QTest::addColumn<Failure>("failure");
        QTest::newRow("writing a file") << Failure::WriteFile;
        QTest::newRow("moving the old package aside") << Failure::RenameAside;
        QTest::newRow("moving the new package into place") << Failure::RenameIntoPlace;
    }

    void shouldLeaveTheOldPackageWhenSavingFails()
    {
        QFETCH(Failure, failure);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("notepad.rtfd"));
        QVERIFY(QDir().mkpath(path));
        QVERIFY(writeFile(path + QStringLiteral("/TXT.rtf"), "{\\rtf1 old}"));
        QVERIFY(writeFile(path + QStringLiteral("/old.png"), "old bytes"));

        QTextDocument document;
        makeDocument(document, QStringLiteral("new text"), testImage(qRgb(0, 0, 255)));
        RichTextFile::testing::injectFailure(failure);
        QString error;
        QVERIFY(!RichTextFile::save(path, document, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(entries(folder.path()), QStringList({"notepad.rtfd"}));
        QCOMPARE(entries(path), QStringList({"TXT.rtf", "old.png"}));
        QCOMPARE(readFile(path + QStringLiteral("/TXT.rtf")), QByteArray("{\\rtf1 old}"));
        QCOMPARE(readFile(path + QStringLiteral("/old.png")), QByteArray("old bytes"));

        // The failure was one-off: the next save goes through.
        QVERIFY2(RichTextFile::save(path, document, &error), qPrintable(error));
        QCOMPARE(entries(path), QStringList({"TXT.rtf", "picture.png"}));
    }

    void shouldLeaveNothingWhenANewPackageCannotBeSaved()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("new.rtfd"));
        QTextDocument document;
        makeDocument(document, QStringLiteral("text"));
        RichTextFile::testing::injectFailure(Failure::RenameIntoPlace);
        QString error;
        QVERIFY(!RichTextFile::save(path, document, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(entries(folder.path()).isEmpty());
    }

    void shouldFailWhereTheParentIsAFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("package") << QStringLiteral("doc.rtfd");
        QTest::newRow("file") << QStringLiteral("doc.rtf");
    }

    void shouldFailWhereTheParentIsAFile()
    {
        QFETCH(QString, name);
        QTemporaryDir folder;
        const QString parent = folder.filePath(QStringLiteral("not a folder"));
        QVERIFY(writeFile(parent, "plain file"));
        QTextDocument document;
        makeDocument(document, QStringLiteral("text"));
        QString error;
        QVERIFY(!RichTextFile::save(parent + QLatin1Char('/') + name, document, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(readFile(parent), QByteArray("plain file"));
        QCOMPARE(entries(folder.path()), QStringList({"not a folder"}));
    }

    void shouldRefuseWhatCannotBeLoaded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("contents");  // empty: nothing is made
        QTest::newRow("missing file") << QStringLiteral("none.rtf") << QByteArray();
        QTest::newRow("missing package") << QStringLiteral("none.rtfd") << QByteArray();
        QTest::newRow("package without its text") << QStringLiteral("empty.rtfd") << QByteArray("folder");
        QTest::newRow("package that is a file") << QStringLiteral("flat.rtfd") << QByteArray("{\\rtf1 text}");
        QTest::newRow("not rich text") << QStringLiteral("plain.rtf") << QByteArray("just some words");
    }

    void shouldRefuseWhatCannotBeLoaded()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, contents);
        QTemporaryDir folder;
        const QString path = folder.filePath(name);
        if (contents == "folder")
            QVERIFY(QDir().mkpath(path));
        else if (!contents.isEmpty())
            QVERIFY(writeFile(path, contents));
        QTextDocument document;
        document.setPlainText(QStringLiteral("unchanged"));
        QString error;
        QVERIFY(!RichTextFile::load(path, document, &error));
        QVERIFY(!error.isEmpty());
    }

    void shouldLookForAttachmentsOnlyInsideThePackage()
    {
        QTemporaryDir folder;
        QVERIFY(testImage(qRgb(5, 5, 5)).save(folder.filePath(QStringLiteral("outside.png"))));
        const QString path = folder.filePath(QStringLiteral("doc.rtfd"));
        QVERIFY(QDir().mkpath(path));
        QVERIFY(testImage(qRgb(7, 7, 7)).save(path + QStringLiteral("/inside.png")));
        QVERIFY(writeFile(path + QStringLiteral("/TXT.rtf"),
                          "{\\rtf1\\ansi A{{\\NeXTGraphic ../outside.png \\width80 \\height60}\\'ac}"
                          "B{{\\NeXTGraphic "
                              + folder.filePath(QStringLiteral("outside.png")).toUtf8()
                              + " \\width80 \\height60}\\'ac}"
                                "C{{\\NeXTGraphic inside.png \\width80 \\height60}\\'ac}D}"));
        QTextDocument document;
        QString error;
        QVERIFY2(RichTextFile::load(path, document, &error), qPrintable(error));
        QVERIFY(document.toPlainText().startsWith(QLatin1Char('A')));
        const QList<QImage> images = imagesOf(document);
        QStringList found;
        for (const QImage &image : images) {
            if (samePixels(image, testImage(qRgb(5, 5, 5))))
                found << QStringLiteral("outside");
            else if (samePixels(image, testImage(qRgb(7, 7, 7))))
                found << QStringLiteral("inside");
        }
        QCOMPARE(found, QStringList({"inside"}));
    }
};

QUORVEL_TEST(RichTextFileTest)
#include "RichTextFileTest.moc"
