#include "FormDriver.h"
#include "TableCells.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/Quorvel.h"
#include "app/widgets/integrityTableView.h"
#include "orders/BOMManager.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderAttachments.h"
#include "orders/OrderManager.h"
#include "orders/widgets/MyImageView.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "store/PrefsController.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <memory>

namespace {

// A controller with the editor window over its order manager, at a tax rate.
struct OpenEditor : testlib::FormDriver
{
    Quorvel quorvel;
    OrderManager &orders = *quorvel.getOrderManager();
    OrderEditorWindow window{orders};

    explicit OpenEditor(const QString &taxRate = QStringLiteral("17.5"))
    {
        quorvel.getPrefsController()->taxRate->setStringValue(taxRate);
    }
    QWidget *form() override { return &window; }
};

QString makeFile(const QString &folder, const QString &name)
{
    QFile file(folder + QLatin1Char('/') + name);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("attachment");
    return file.fileName();
}

}  // namespace

class OrderEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Each test's orders are numbered from 1 again: none starts with the
    // attachments of an earlier one.
    void init() { QDir(QFileInfo(OrderManager::attachmentFolder(1)).path()).removeRecursively(); }

    void shouldWorkOutTaxAndBalanceAndStoreTheTotal()
    {
        OpenEditor editor;
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        Order *order = editor.orders.getCurrentItem();
        QCOMPARE(editor.find<QLineEdit>("orderNumber")->text(), QStringLiteral("INV%1").arg(order->getID()));
        QCOMPARE(editor.find<QLabel>("tax")->text().endsWith(QStringLiteral("@ 17.50%")), true);

        editor.type("value", QStringLiteral("100"));
        editor.click("calculateTaxButton");
        QCOMPARE(editor.find<QLineEdit>("taxAmount")->text(), QStringLiteral("17.50"));
        editor.type("shipping", QStringLiteral("10"));
        editor.type("deposit", QStringLiteral("20"));
        QCOMPARE(editor.find<QLineEdit>("balance")->text(), QStringLiteral("107.50"));
        // The whole total beside the balance, which reads as due until a
        // date says it was paid.
        QVERIFY2(editor.find<QLabel>("orderTotal")->text().endsWith(QStringLiteral("127.50")),
                 qPrintable(editor.find<QLabel>("orderTotal")->text()));
        QCOMPARE(editor.find<QLabel>("balanceState")->text(), QStringLiteral("Due"));
        // The figures' currency stands before them, as the preferences name it.
        editor.quorvel.getPrefsController()->currencyField->setStringValue(QStringLiteral("CHF"));
        for (const char *symbol :
             {"valueCurrency", "shippingCurrency", "taxCurrency", "depositCurrency", "balanceCurrency"})
            QCOMPARE(editor.find<QLabel>(symbol)->text(), QStringLiteral("CHF"));
        QVERIFY(editor.find<QLabel>("orderTotal")->text().contains(QStringLiteral("CHF")));
        editor.type("balancePaid", QStringLiteral("03/04/26"));
        QCOMPARE(editor.find<QLabel>("balanceState")->text(), QStringLiteral("Paid"));

        editor.click("okButton");
        QCOMPARE(order->getValueWithTax(), QStringLiteral("127.50"));
        QVERIFY(editor.window.isHidden());
        QCOMPARE(editor.orders.getItemById(order->getID()), order);
    }

    void shouldHideTheTaxAmountAtARateOfNothing_data()
    {
        QTest::addColumn<QString>("rate");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("zero") << "0" << true;
        QTest::newRow("empty") << "" << true;
        QTest::newRow("17.5") << "17.5" << false;
    }
    void shouldHideTheTaxAmountAtARateOfNothing()
    {
        QFETCH(QString, rate);
        QFETCH(bool, hidden);
        OpenEditor editor(rate);
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        QCOMPARE(editor.find<QLineEdit>("taxAmount")->isHidden(), hidden);
        QCOMPARE(editor.find<QPushButton>("calculateTaxButton")->isHidden(), hidden);
        QCOMPARE(editor.find<QLabel>("tax")->text().isEmpty(), hidden);
    }

    void shouldListTheAttachmentsToOpenOrTakeOff()
    {
        OpenEditor editor;
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        const int id = editor.orders.getCurrentItem()->getID();
        const QString source = testlib::TestEnvironment::current().root() + QStringLiteral("/files");
        QDir().mkpath(source);
        editor.orders.fileDropped(makeFile(source, QStringLiteral("plan.txt")));
        editor.orders.fileDropped(makeFile(source, QStringLiteral("Photo.jpg")));
        auto *list = editor.find<QListWidget>("attachmentList");
        QVERIFY(list);
        editor.orders.attachmentAdded(id);
        QStringList shown;
        for (int row = 0; row < list->count(); ++row)
            shown << list->item(row)->text();
        QCOMPARE(shown, (QStringList{"Photo.jpg", "plan.txt"}));

        // Open hands the file to the desktop.
        list->setCurrentRow(1);
        testlib::TestEnvironment::current().clearDiagnostics();
        editor.click("openAttachmentButton");
        QCOMPARE(testlib::TestEnvironment::current().openedFiles(),
                 QStringList{OrderManager::attachmentFolder(id) + QStringLiteral("/plan.txt")});

        // Remove asks first; cancelled, nothing changes.
        testlib::TestEnvironment::current().scriptAlertAnswers({0});
        editor.click("removeAttachmentButton");
        QCOMPARE(list->count(), 2);
        testlib::TestEnvironment::current().scriptAlertAnswers({1});
        editor.click("removeAttachmentButton");
        QCOMPARE(list->count(), 1);
        QVERIFY(!QFileInfo::exists(OrderManager::attachmentFolder(id) + QStringLiteral("/plan.txt")));
        QCOMPARE(editor.find<QLabel>("attachmentText")->text(), QStringLiteral("There is 1 attachment"));
        // Taken off the order, not destroyed (until the program quits).
        QVERIFY(QFileInfo::exists(orderAttachments::holdingFolder() + QStringLiteral("/Order%1-plan.txt").arg(id)));
    }

    void shouldAttachOnlyTheFirstFileDropped_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("withText");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QString>("image");
        QTest::newRow("two files") << 2 << false << "There is 1 attachment"
                                   << "singlefilewell";
        QTest::newRow("one file and text") << 1 << true << "There is 1 attachment"
                                           << "singlefilewell";
        QTest::newRow("text only") << 0 << true << "There are no attachments"
                                   << "";
    }
    void shouldAttachOnlyTheFirstFileDropped()
    {
        QFETCH(int, files);
        QFETCH(bool, withText);
        QFETCH(QString, count);
        QFETCH(QString, image);
        OpenEditor editor;
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        const int id = editor.orders.getCurrentItem()->getID();
        QDir(testlib::TestEnvironment::current().root()).mkpath(QStringLiteral("drop"));
        const QString source = testlib::TestEnvironment::current().root() + QStringLiteral("/drop");
        QList<QUrl> urls;
        for (int i = 0; i < files; ++i)
            urls << QUrl::fromLocalFile(makeFile(source, QStringLiteral("plan%1.txt").arg(i)));

        auto data = std::make_unique<QMimeData>();
        if (!urls.isEmpty())
            data->setUrls(urls);
        if (withText)
            data->setText(QStringLiteral("some words"));
        MyImageView *well = editor.window.attachmentWell();
        QCOMPARE(testlib::dragAndDrop(well, data.get()), files > 0);

        QCOMPARE(editor.find<QLabel>("attachmentText")->text(), count);
        QCOMPARE(well->shownImage(), image);
        const QStringList attached = QDir(OrderManager::attachmentFolder(id)).entryList(QDir::Files);
        QCOMPARE(attached, files > 0 ? QStringList{QStringLiteral("plan0.txt")} : QStringList{});
    }

    void shouldAttachTheChosenFileWhenSpaceIsPressedOnTheWell()
    {
        OpenEditor editor;
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        const QString file = makeFile(testlib::TestEnvironment::current().root(), QStringLiteral("letter.pdf"));
        testlib::TestEnvironment::current().scriptFilePanelAnswers({file});
        QTest::keyClick(editor.window.attachmentWell(), Qt::Key_Space);
        QCOMPARE(testlib::TestEnvironment::current().filePanelsShown().size(), 1);
        QCOMPARE(editor.find<QLabel>("attachmentText")->text(), QStringLiteral("There is 1 attachment"));
        QVERIFY(editor.window.isVisible());
    }

    void shouldAbandonTheOrderOnEscapeCancelAndTheCloseBox_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Escape") << "escape";
        QTest::newRow("Cancel") << "cancel";
        QTest::newRow("close box") << "close";
    }
    void shouldAbandonTheOrderOnEscapeCancelAndTheCloseBox()
    {
        QFETCH(QString, how);
        OpenEditor editor;
        editor.orders.create();
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));
        const int id = editor.orders.getCurrentItem()->getID();
        editor.type("title", QStringLiteral("Fence"));
        if (how == QLatin1String("escape"))
            QTest::keyClick(editor.find<QLineEdit>("title"), Qt::Key_Escape);
        else if (how == QLatin1String("cancel"))
            editor.click("cancelButton");
        else
            editor.window.close();
        QVERIFY(editor.window.isHidden());
        QVERIFY(!editor.orders.getOrderEditorWindow()->isVisible());
        QCOMPARE(editor.orders.getItemById(id), nullptr);
    }

    void shouldShowTheLinesOfTheOrderInTheEditor()
    {
        OpenEditor editor;
        BOMManager &bom = *editor.quorvel.getBOMManager();
        editor.orders.create();
        const int id = editor.orders.getCurrentItem()->getID();
        for (const auto &[order, name] : {std::pair{id, "Post"}, std::pair{id + 50, "Gate"}, std::pair{id, "Rail"}}) {
            const std::shared_ptr<Material> line = Material::withOrder(order);
            line->setItem(QString::fromLatin1(name));
            bom.add(line);
        }
        editor.quorvel.setCurrentOrder(id);
        QVERIFY(QTest::qWaitForWindowExposed(&editor.window));

        const QAbstractItemModel *model = editor.window.materialsTable()->model();
        QCOMPARE(testlib::modelColumn(*model), QStringList({QStringLiteral("Post"), QStringLiteral("Rail")}));

        // F2 edits a cell in place: a new cost works the line's total out again.
        integrityTableView *table = editor.window.materialsTable();
        table->setFocus();
        table->setCurrentIndex(model->index(1, 3));  // Rail's cost
        QTest::keyClick(table, Qt::Key_F2);
        auto *cell = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(cell && table->isAncestorOf(cell));
        QTest::keyClicks(cell, QStringLiteral("2.5"));
        QTest::keyClick(cell, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(model->index(1, 5).data().toString(), QStringLiteral("2.50"),
                                  300);  // committed when queued

        // Add Line gives the order a free line of its own.
        editor.click("createMaterialButton");
        QCOMPARE(model->rowCount(), 3);
    }
};

QUORVEL_TEST(OrderEditorWindowTest)
#include "OrderEditorWindowTest.moc"
