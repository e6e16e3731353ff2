// The item editor driven through its widgets: typing an item and keeping
// it, abandoning it, the picture well (drop, chooser, removal) and the
// keyboard.
#include "FormDriver.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "items/widgets/ItemEditorWindow.h"
#include "items/widgets/ItemPicture.h"
#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <memory>

using testlib::TestEnvironment;

namespace {

struct OpenEditor : testlib::FormDriver
{
    Quorvel quorvel;
    ItemManager &items = *quorvel.getItemManager();
    ItemEditorWindow window{items};
    QWidget *form() override { return &window; }
};

// A small red picture in a PNG file.
QString makePicture(const QString &fileName)
{
    QImage image(8, 6, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = TestEnvironment::current().root() + QLatin1Char('/') + fileName;
    return image.save(path, "PNG") ? path : QString();
}

}  // namespace

class ItemEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKeepTheTypedItemOnOK()
    {
        OpenEditor editor;
        editor.quorvel.getPrefsController()->itemPrefixField->setStringValue(QStringLiteral("ST-"));
        editor.items.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        Item *item = editor.items.getCurrentItem();
        QCOMPARE(editor.find<QLineEdit>("code")->text(), QStringLiteral("ST-%1").arg(item->getID()));
        editor.type("name", QStringLiteral("Lamp"));
        editor.type("qty", QStringLiteral("4"));
        editor.type("price", QStringLiteral("12.50"));
        QTest::keyClicks(editor.find<QPlainTextEdit>("description"), QStringLiteral("Brass"));
        QTest::keyClick(editor.find<QComboBox>("condition"), Qt::Key_Down);
        QTest::keyClick(editor.find<QCheckBox>("decreaseQty"), Qt::Key_Space);
        editor.click("okButton");

        QVERIFY(editor.window.isHidden());
        QCOMPARE(editor.items.getItemById(item->getID()), item);
        QCOMPARE(item->getItem(), QStringLiteral("Lamp"));
        QCOMPARE(item->getQty(), QStringLiteral("4"));
        QCOMPARE(item->getPrice(), QStringLiteral("12.50"));
        QCOMPARE(item->getDescription(), QStringLiteral("Brass"));
        QCOMPARE(item->getCondition(), QStringLiteral("New"));  // a new item starts with none chosen
        QVERIFY(item->getDecreaseQty());
    }

    void shouldAbandonANewItemOnEscapeAndCancel_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Escape") << true;
        QTest::newRow("Cancel") << false;
    }
    void shouldAbandonANewItemOnEscapeAndCancel()
    {
        QFETCH(bool, escape);
        OpenEditor editor;
        editor.items.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        editor.type("name", QStringLiteral("Lamp"));
        if (escape)
            QTest::keyClick(editor.find<QLineEdit>("name"), Qt::Key_Escape);
        else
            editor.click("cancelButton");
        QVERIFY(editor.window.isHidden());
        QCOMPARE(editor.items.getCount(), 0);
        QVERIFY(!editor.items.editorWindow->isVisible());
    }

    void shouldTakeADroppedPictureAndRemoveItAtOnce()
    {
        OpenEditor editor;
        editor.items.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        const int id = editor.items.getCurrentItem()->getID();
        auto data = std::make_unique<QMimeData>();
        data->setUrls({QUrl::fromLocalFile(makePicture(QStringLiteral("lamp.png")))});
        auto *well = editor.find<QLabel>("imageView");
        QVERIFY(testlib::dragAndDrop(well, data.get()));
        QVERIFY(!well->pixmap().isNull());

        editor.click("okButton");
        QVERIFY(QFile::exists(platform::paths::itemImagePath(id)));
        QCOMPARE(QImage(platform::paths::itemImagePath(id)).size(), QSize(8, 6));

        editor.items.table->selectRow(0);
        editor.items.edit();
        editor.click("deleteImageButton");
        QVERIFY(well->pixmap().isNull());
        QVERIFY(!QFile::exists(platform::paths::itemImagePath(id)));
    }

    void shouldTakeTheChosenPictureWhenSpaceIsPressedOnTheWell()
    {
        OpenEditor editor;
        editor.items.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        TestEnvironment::current().scriptFilePanelAnswers({makePicture(QStringLiteral("chosen.png"))});
        QTest::keyClick(editor.find<QLabel>("imageView"), Qt::Key_Space);
        QCOMPARE(TestEnvironment::current().filePanelsShown().size(), 1);
        QCOMPARE(ItemPicture::image(editor.items.imageView->image()).size(), QSize(8, 6));
    }

    void shouldMoveTheFocusToAFieldByItsLabelsMnemonic()
    {
        OpenEditor editor;
        editor.items.create();
        editor.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&editor.window));
        QTest::keyClick(&editor.window, Qt::Key_Q, Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget(), editor.find<QLineEdit>("qty"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), editor.find<QLineEdit>("optimumQty"));
    }
};

QUORVEL_TEST(ItemEditorWindowTest)
#include "ItemEditorWindowTest.moc"
