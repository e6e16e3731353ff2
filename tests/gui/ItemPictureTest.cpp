#include "TestMain.h"

#include "TestEnvironment.h"
#include "items/Item.h"
#include "items/widgets/ItemPicture.h"
#include "platform/Paths.h"

#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A small picture whose every pixel differs, so that a lost channel, a flip
// or a resize shows; with alpha when asked.
QImage samplePicture(QImage::Format format)
{
    QImage image(7, 5, format);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * 36, y * 60, (x + y) * 20, 255 - x * y * 5));
    }
    return image;
}

// Whether two pictures have the same size and every channel of every pixel
// within `tolerance` (translucent pixels are stored premultiplied, which
// may move a channel by one step).
bool samePixels(const QImage &a, const QImage &b, int tolerance)
{
    if (a.size() != b.size())
        return false;
    const QImage left = a.convertToFormat(QImage::Format_ARGB32);
    const QImage right = b.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb p = left.pixel(x, y);
            const QRgb q = right.pixel(x, y);
            if (qAbs(qRed(p) - qRed(q)) > tolerance || qAbs(qGreen(p) - qGreen(q)) > tolerance
                || qAbs(qBlue(p) - qBlue(q)) > tolerance || qAbs(qAlpha(p) - qAlpha(q)) > tolerance)
                return false;
        }
    }
    return true;
}

}  // namespace

class ItemPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QImageWriter::supportedImageFormats().contains("tiff"))
            QSKIP("Qt's TIFF image plugin is not installed (Debian package qt6-image-formats-plugins)");
    }

    void init()
    {
        QVERIFY(dataDir.isValid());
        platform::paths::setApplicationSupportDir(dataDir.path());
    }
    void cleanup() { platform::paths::setApplicationSupportDir(testlib::TestEnvironment::current().supportDir()); }

    void shouldKeepAPictureThroughTheItemsFile_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("tolerance");
        QTest::newRow("opaque") << int(QImage::Format_RGB32) << 0;
        QTest::newRow("translucent") << int(QImage::Format_ARGB32) << 1;
    }
    void shouldKeepAPictureThroughTheItemsFile()
    {
        QFETCH(int, format);
        QFETCH(int, tolerance);
        const QImage original = samplePicture(QImage::Format(format));
        const QByteArray tiff = ItemPicture::tiffData(original);
        QVERIFY(!tiff.isEmpty());

        Item item;
        item.setID(17);
        item.setImage(tiff);
        QVERIFY(QFileInfo::exists(platform::paths::itemImagePath(17)));

        Item later;
        later.setID(17);
        const QImage loaded = ItemPicture::image(later.getImage());
        QVERIFY(!loaded.isNull());
        QCOMPARE(loaded.size(), original.size());
        QVERIFY(samePixels(loaded, original, tolerance));
        QCOMPARE(loaded.hasAlphaChannel(), original.hasAlphaChannel());
    }

    void shouldEncodeAsTiff()
    {
        const QByteArray tiff = ItemPicture::tiffData(samplePicture(QImage::Format_RGB32));
        // Little- or big-endian TIFF signature.
        QVERIFY(tiff.startsWith(QByteArray("II*\0", 4)) || tiff.startsWith(QByteArray("MM\0*", 4)));
    }

    void shouldAnswerNothingForNoPicture()
    {
        QVERIFY(ItemPicture::tiffData(QImage()).isEmpty());
        QVERIFY(ItemPicture::image(QByteArray()).isNull());
        QVERIFY(ItemPicture::image(QByteArray("not a picture")).isNull());
    }

private:
    QTemporaryDir dataDir;
};

QUORVEL_TEST(ItemPictureTest)
#include "ItemPictureTest.moc"
