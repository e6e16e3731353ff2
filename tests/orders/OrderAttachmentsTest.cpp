// Files attached to an order: its folder in the database bundle, the count
// the editor shows, dropping files, opening and deleting the folder.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/OrderManager.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QTest>

using testlib::TestEnvironment;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString outside(const QString &name)
{
    return TestEnvironment::current().root() + QStringLiteral("/outside/") + name;
}

// The order manager with the editor's attachment outlets and order 7 open.
struct Editor
{
    Quorvel quorvel;
    OrderManager &manager = *quorvel.getOrderManager();

    Editor()
    {
        manager.attachmentText->setConnected(true);
        manager.attachmentButton->setConnected(true);
        manager.myImageView->setConnected(true);
        auto order = std::make_shared<Order>();
        order->setID(7);
        order->setTaxRate(QStringLiteral("20.00"));
        manager.add(order);
        open();
    }
    void open()
    {
        manager.table->selectRow(0);
        manager.edit();
    }
};

}  // namespace

class OrderAttachmentsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestEnvironment::current().clearDiagnostics();
        QDir(platform::paths::quorvelDir()).removeRecursively();
    }

    void shouldCountAndDescribeTheAttachments_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("icon");
        QTest::newRow("no folder") << QStringList{} << "There are no attachments"
                                   << "";
        QTest::newRow("one") << QStringList{"plan.pdf"} << "There is 1 attachment"
                             << "singlefilewell";
        QTest::newRow("Finder file first") << QStringList{".DS_Store", "a.pdf", "b.pdf"} << "There are  2  attachments"
                                           << "doublefilewell";
        QTest::newRow("Finder file not first") << QStringList{".DS_Store", "-draft.txt"} << "There are  2  attachments"
                                               << "doublefilewell";
        QTest::newRow("a folder counts once") << QStringList{"photos/a.jpg", "photos/b.jpg"} << "There is 1 attachment"
                                              << "singlefilewell";
    }
    void shouldCountAndDescribeTheAttachments()
    {
        QFETCH(QStringList, entries);
        QFETCH(QString, text);
        QFETCH(QString, icon);
        for (const QString &entry : entries)
            writeFile(OrderManager::attachmentFolder(7) + u'/' + entry, "x");
        Editor editor;
        QCOMPARE(editor.manager.attachmentText->stringValue(), text);
        QCOMPARE(editor.manager.attachmentButton->isEnabled(), !icon.isEmpty());
        QCOMPARE(editor.manager.myImageView->image(), icon);
    }

    void shouldCopyADroppedFileOrFolderOnlyOnce()
    {
        Editor editor;
        writeFile(outside(QStringLiteral("letter.txt")), "Dear Sir");
        writeFile(outside(QStringLiteral("site/photos/.front.jpg")), "jpeg");
        editor.manager.fileDropped(outside(QStringLiteral("letter.txt")));
        editor.manager.fileDropped(outside(QStringLiteral("site")));
        const QString folder = OrderManager::attachmentFolder(7);
        QCOMPARE(readFile(folder + QStringLiteral("/site/photos/.front.jpg")), QByteArray("jpeg"));

        // The same name again: not copied, yet counted until the order is opened again.
        writeFile(outside(QStringLiteral("letter.txt")), "Second letter");
        editor.manager.fileDropped(outside(QStringLiteral("letter.txt")));
        QCOMPARE(readFile(folder + QStringLiteral("/letter.txt")), QByteArray("Dear Sir"));
        QCOMPARE(editor.manager.attachmentText->stringValue(), QStringLiteral("There are  3  attachments"));
        editor.open();
        QCOMPARE(editor.manager.getNumberOfAttachments(), 2);
    }

    void shouldAttachNothingUnderANameThatLeavesTheFolder_data()
    {
        QTest::addColumn<QString>("dropped");
        QTest::newRow("a parent folder") << QStringLiteral("site/photos/..");
        QTest::newRow("the folder itself") << QStringLiteral("site/.");
        QTest::newRow("a trailing slash") << QStringLiteral("site/");
    }
    void shouldAttachNothingUnderANameThatLeavesTheFolder()
    {
        QFETCH(QString, dropped);
        writeFile(outside(QStringLiteral("site/photos/front.jpg")), "jpeg");
        QVERIFY(!orderAttachments::attach(7, outside(dropped)));
        const QString folder = OrderManager::attachmentFolder(7);
        QVERIFY(QDir(folder).isEmpty());
        QVERIFY(!QFileInfo::exists(QFileInfo(folder).path() + QStringLiteral("/photos")));
    }

    void shouldReachOneFolderWhateverTheSpelling_data()
    {
        QTest::addColumn<QString>("onDisk");
        QTest::newRow("as counted") << "Attachments/Order7";
        QTest::newRow("as deleted") << "attachments/order7";
        QTest::newRow("mixed") << "ATTACHMENTS/oRdEr7";
    }
    void shouldReachOneFolderWhateverTheSpelling()
    {
        QFETCH(QString, onDisk);
        const QString folder = platform::paths::bundleDir() + u'/' + onDisk;
        writeFile(folder + QStringLiteral("/old.txt"), "old");
        Editor editor;
        QCOMPARE(editor.manager.getNumberOfAttachments(), 1);

        writeFile(outside(QStringLiteral("new.txt")), "new");
        editor.manager.fileDropped(outside(QStringLiteral("new.txt")));
        QCOMPARE(readFile(folder + QStringLiteral("/new.txt")), QByteArray("new"));
        editor.manager.viewAttachments();
        QCOMPARE(TestEnvironment::current().openedFiles(), QStringList{folder});

        // Deleted, the folder is held aside whole for an undo.
        const QString held = OrderManager::deleteAttachments(7);
        QVERIFY(!QFileInfo::exists(folder));
        QCOMPARE(readFile(held + QStringLiteral("/old.txt")), QByteArray("old"));
        QCOMPARE(readFile(held + QStringLiteral("/new.txt")), QByteArray("new"));
        const QStringList top = QDir(platform::paths::bundleDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        QCOMPARE(top.size(), 2);  // one attachments folder, whatever its spelling, and the holding folder
        QVERIFY(top.contains(QStringLiteral("Deleted Attachments")));
    }
};

QUORVEL_TEST(OrderAttachmentsTest)
#include "OrderAttachmentsTest.moc"
