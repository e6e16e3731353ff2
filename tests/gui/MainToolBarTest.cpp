#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/MainToolBar.h"

#include <QAction>
#include <QIcon>
#include <QImage>
#include <QMainWindow>
#include <QPixmap>
#include <QPointer>
#include <QTest>
#include <QToolButton>
#include <memory>

namespace {

// A toolbar source the test controls: identifiers in order, and an item per
// identifier ("x" has no image, so it is inert).
struct FakeItems
{
    QStringList identifiers{QStringLiteral("printItemIdentifier"), QStringLiteral("x"),
                            QStringLiteral("padItemIdentifier")};
    QStringList triggered;

    ToolbarItem itemFor(const QString &identifier)
    {
        if (identifier == QLatin1String("printItemIdentifier"))
            return {identifier, QStringLiteral("print"), QStringLiteral("Print"), [this] { triggered << "print"; }};
        if (identifier == QLatin1String("padItemIdentifier"))
            return {identifier, QStringLiteral("pad"), QStringLiteral("Notepad"), [this] { triggered << "pad"; }};
        if (identifier == QLatin1String("helpItemIdentifier"))
            return {identifier, QStringLiteral("help"), QStringLiteral("Help"), [this] { triggered << "help"; }};
        return {identifier, QString(), QString(), nullptr};
    }

    MainToolBar *makeToolBar(QWidget *parent = nullptr)
    {
        return new MainToolBar([this] { return identifiers; },
                               [this](const QString &identifier) { return itemFor(identifier); }, parent);
    }
};

QStringList namesOf(const QList<QAction *> &actions)
{
    QStringList names;
    for (const QAction *action : actions)
        names << action->objectName();
    return names;
}

// How many pixels of the picture are drawn, and how many of them are in the
// icons' line colour (#2f4f6f) or accent colour (#e0823d).
struct Ink
{
    int drawn = 0;
    int line = 0;
    int accent = 0;
};

Ink inkOf(const QImage &picture)
{
    const auto near = [](QRgb pixel, int r, int g, int b) {
        return qAbs(qRed(pixel) - r) + qAbs(qGreen(pixel) - g) + qAbs(qBlue(pixel) - b) < 40;
    };
    Ink ink;
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) < 200)
                continue;
            ++ink.drawn;
            ink.line += near(pixel, 0x2f, 0x4f, 0x6f);
            ink.accent += near(pixel, 0xe0, 0x82, 0x3d);
        }
    }
    return ink;
}

}  // namespace

class MainToolBarTest : public QObject
{
    Q_OBJECT
private slots:
    void shouldDrawEveryImageOfTheProgram_data()
    {
        QTest::addColumn<QString>("image");
        for (const char *name : {"contact", "company", "print", "new", "item", "delete", "edit", "eggtimer", "html",
                                 "csv", "cog", "envelope", "pad", "checkout", "help", "quorvel"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void shouldDrawEveryImageOfTheProgram()
    {
        QFETCH(QString, image);
        const QIcon icon = MainToolBar::iconNamed(image);
        QVERIFY(!icon.isNull());
        for (const int size : {24, 64}) {
            const QPixmap pixmap = icon.pixmap(QSize(size, size));
            QCOMPARE(pixmap.size(), QSize(size, size));  // drawn from the vector image, not a fixed bitmap
            const Ink ink = inkOf(pixmap.toImage());
            // Drawn, yet mostly empty: a line icon, not a filled square or a blank.
            QVERIFY2(ink.drawn > size * size / 20, qPrintable(QString::number(ink.drawn)));
            QVERIFY2(ink.drawn < size * size * 3 / 4 || image == QLatin1String("quorvel"),
                     qPrintable(QString::number(ink.drawn)));
            QVERIFY(ink.line > 0);
            if (size == 64)
                QVERIFY(ink.accent > 0);
        }
    }

    void shouldAnswerNoIconForAnUnknownImage()
    {
        QVERIFY(MainToolBar::iconNamed(QStringLiteral("todo")).isNull());
        QVERIFY(MainToolBar::iconNamed(QString()).isNull());
    }

    void shouldShowOneLabelledButtonPerItemInOrder()
    {
        FakeItems items;
        std::unique_ptr<MainToolBar> bar(items.makeToolBar());
        const QList<QAction *> actions = bar->actions();
        QCOMPARE(namesOf(actions), items.identifiers);
        QCOMPARE(actions.at(0)->text(), QStringLiteral("Print"));
        QCOMPARE(actions.at(2)->text(), QStringLiteral("Notepad"));
        QVERIFY(!actions.at(0)->icon().isNull());
        QVERIFY(!actions.at(2)->icon().isNull());
        auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(actions.at(0)));
        QVERIFY(button);
        QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        QCOMPARE(bar->iconSize(), QSize(24, 24));
    }

    void shouldRunTheItemsActionWhenItsButtonIsClicked()
    {
        FakeItems items;
        QMainWindow window;
        MainToolBar *bar = items.makeToolBar(&window);
        window.addToolBar(bar);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::mouseClick(bar->widgetForAction(bar->actions().at(2)), Qt::LeftButton);
        QTest::mouseClick(bar->widgetForAction(bar->actions().at(0)), Qt::LeftButton);
        QCOMPARE(items.triggered, QStringList({"pad", "print"}));
    }

    void shouldLeaveAnItemWithoutImageInert()
    {
        FakeItems items;
        std::unique_ptr<MainToolBar> bar(items.makeToolBar());
        QAction *inert = bar->actions().at(1);
        QCOMPARE(inert->objectName(), QStringLiteral("x"));
        QVERIFY(!inert->isEnabled());
        QVERIFY(inert->text().isEmpty());
        inert->trigger();
        QVERIFY(items.triggered.isEmpty());
    }

    void shouldFollowTheListWhenRebuilt()
    {
        FakeItems items;
        std::unique_ptr<MainToolBar> bar(items.makeToolBar());
        QPointer<QAction> old = bar->actions().at(0);
        items.identifiers = {QStringLiteral("helpItemIdentifier"), QStringLiteral("printItemIdentifier")};
        QCOMPARE(namesOf(bar->actions()).size(), 3);  // nothing changes until asked
        bar->rebuild();
        QCOMPARE(namesOf(bar->actions()), items.identifiers);
        QVERIFY(old.isNull());  // the old buttons are gone, not only hidden
        bar->actions().at(0)->trigger();
        QCOMPARE(items.triggered, QStringList({"help"}));
    }

    void shouldStayWhereItIsAndOfferNoCustomisation()
    {
        FakeItems items;
        QMainWindow window;
        MainToolBar *bar = items.makeToolBar(&window);
        window.addToolBar(bar);
        QCOMPARE(bar->objectName(), QStringLiteral("quorvelLiteMainToolBar"));
        QVERIFY(!bar->isMovable());
        QVERIFY(!bar->isFloatable());
        QCOMPARE(bar->contextMenuPolicy(), Qt::PreventContextMenu);
        QVERIFY(!bar->toggleViewAction()->isVisible());
    }

    void shouldShowTheControllersItemsWithTheirIcons()
    {
        Quorvel controller;
        QStringList printed;
        controller.standardOutput = [&printed](const QString &text) { printed << text; };
        MainToolBar bar(controller);
        const QStringList expected = controller.toolbarDefaultItemIdentifiers(Quorvel::toolbarIdentifier());
        QVERIFY(expected.size() >= 11);
        QCOMPARE(namesOf(bar.actions()), expected);
        for (QAction *action : bar.actions()) {
            QVERIFY2(action->isEnabled(), qPrintable(action->objectName()));
            QVERIFY2(!action->text().isEmpty(), qPrintable(action->objectName()));
            QVERIFY2(!action->icon().isNull(), qPrintable(action->objectName()));
        }
        QVERIFY2(printed.isEmpty(), qPrintable(printed.join(' ')));  // no image was missing
    }
};

QUORVEL_TEST(MainToolBarTest)
#include "MainToolBarTest.moc"
