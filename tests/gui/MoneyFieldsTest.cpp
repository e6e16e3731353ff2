// Every money field of every editor window shows two decimals once the user
// leaves it, keeps its figures at the right, and has room for a million with
// its cents even in a window made as small as it goes.
#include "FormDriver.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "accounts/BillManager.h"
#include "accounts/widgets/BillEditorWindow.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "items/ItemManager.h"
#include "items/widgets/ItemEditorWindow.h"
#include "orders/OrderManager.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "tasks/ActionManager.h"
#include "tasks/widgets/TaskEditorWindow.h"

#include <QApplication>
#include <QLayout>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTest>

namespace {

// The room a line edit paints its text in.
int roomForText(const QLineEdit *edit)
{
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.rect = edit->rect();
    option.lineWidth = edit->hasFrame() ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit) : 0;
    const QRect contents
        = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit).marginsRemoved(edit->textMargins());
    return contents.width() - 2 * 2;  // the line edit's own margin on either side
}

}  // namespace

class MoneyFieldsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldShowTwoDecimalsWithRoomForAMillion_data()
    {
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QString>("field");
        for (const char *field : {"value", "shipping", "taxAmount", "deposit", "balance"})
            QTest::addRow("order %s", field) << "order" << field;
        for (const char *field : {"price", "bought", "shipping"})
            QTest::addRow("item %s", field) << "item" << field;
        for (const char *field : {"rate", "totalCharge"})
            QTest::addRow("task %s", field) << "task" << field;
        QTest::newRow("bill amount") << "bill"
                                     << "amount";
    }
    void shouldShowTwoDecimalsWithRoomForAMillion()
    {
        QFETCH(QString, editor);
        QFETCH(QString, field);
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        QWidget *window = nullptr;
        if (editor == QLatin1String("order")) {
            quorvel.getOrderManager()->create();
            window = windows.orderEditorWindow();
        } else if (editor == QLatin1String("item")) {
            quorvel.getItemManager()->create();
            window = windows.itemEditorWindow();
        } else if (editor == QLatin1String("task")) {
            quorvel.getActionManager()->create();
            window = windows.taskEditorWindow();
        } else {
            quorvel.getBillManager()->create();
            window = windows.billEditorWindow();
        }
        QVERIFY(window);
        QApplication::setActiveWindow(window);
        QVERIFY(QTest::qWaitForWindowActive(window));
        window->resize(1, 1);
        window->layout()->activate();

        auto *edit = testlib::findNamed<QLineEdit>(window, qPrintable(field));
        QVERIFY(edit && edit->isVisible());
        QVERIFY(edit->alignment() & Qt::AlignRight);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("1000000"));
        QCOMPARE(edit->text(), QStringLiteral("1000000"));
        QTest::keyClick(edit, Qt::Key_Tab);  // leaves the field
        QVERIFY(!edit->hasFocus());
        QCOMPARE(edit->text(), QStringLiteral("1000000.00"));
        QVERIFY2(roomForText(edit) >= edit->fontMetrics().horizontalAdvance(QStringLiteral("1,000,000.00")),
                 qPrintable(QStringLiteral("%1 pixels").arg(roomForText(edit))));
        window->hide();
    }
};

QUORVEL_TEST(MoneyFieldsTest)
#include "MoneyFieldsTest.moc"
