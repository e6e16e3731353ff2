// The bill editor driven through its widgets: typing a bill and keeping it.
#include "FormDriver.h"
#include "TestMain.h"

#include "accounts/Bill.h"
#include "accounts/BillManager.h"
#include "accounts/widgets/BillEditorWindow.h"
#include "app/Quorvel.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QTest>

namespace {

struct OpenEditor : testlib::FormDriver
{
    Quorvel quorvel;
    BillManager &bills = *quorvel.getBillManager();
    BillEditorWindow window{bills};
    QWidget *form() override { return &window; }
};

}  // namespace

class BillEditorWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKeepTheTypedBillWithItsCategory()
    {
        OpenEditor editor;
        editor.bills.create();
        QVERIFY(editor.window.isVisible());
        editor.type("invoiceNumber", QStringLiteral("INV-7"));
        editor.type("amount", QStringLiteral("1,200.50"));
        QTest::keyClicks(editor.find<QPlainTextEdit>("details"), QStringLiteral("Paper"));
        auto *categories = editor.find<QComboBox>("category");
        QVERIFY(categories->count() > 0);
        QTest::keyClick(categories, Qt::Key_End);
        QCOMPARE(categories->currentIndex(), categories->count() - 1);
        const QString chosen = categories->currentText();
        editor.click("okButton");

        QVERIFY(!editor.window.isVisible());
        QCOMPARE(editor.bills.getCount(), 1);
        const auto *bill = static_cast<const Bill *>(editor.bills.getnthItem(0));
        QCOMPARE(bill->getNumber(), QStringLiteral("INV-7"));
        // A money field keeps the figure without its thousands separators.
        QCOMPARE(bill->getAmount(), QStringLiteral("1200.50"));
        QCOMPARE(bill->getDetails(), QStringLiteral("Paper"));
        QCOMPARE(bill->getCategory(), chosen);
    }
};

QUORVEL_TEST(BillEditorWindowTest)
#include "BillEditorWindowTest.moc"
