// Invoices through the program's own windows: the order editor offers the
// stationery, prints the order as edited without writing it, and the
// template window's toolbar prints, saves a PDF and e-mails it (the PDF then
// counts among the order's attachments); the plain invoice sheet opens from
// the editor too.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "app/widgets/Printing.h"
#include "orders/widgets/CustomInvoiceWindow.h"
#include "orders/widgets/DocumentWindows.h"
#include "orders/widgets/InvoiceSheetWindow.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolBar>

using testlib::TestEnvironment;
using Program = testlib::RunningProgram;

namespace {

// INV10 (Ann Lee's kitchen) open in the order editor.
OrderEditorWindow *openKitchen(Program &program)
{
    program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), 0);
    program.named(QStringLiteral("editAction"))->trigger();
    OrderEditorWindow *editor = program.windows.orderEditorWindow();
    return QTest::qWaitForWindowExposed(editor) ? editor : nullptr;
}

}  // namespace

class InvoiceWindowsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
    }

    void shouldPrintTheOrderAsEditedWithoutWritingIt()
    {
        Program program;
        OrderEditorWindow *editor = openKitchen(program);
        QVERIFY(editor);
        auto *stationery = editor->findChild<QComboBox *>(QStringLiteral("whichStationary"));
        QCOMPARE(stationery->count(), 2);
        QCOMPARE(stationery->currentText(), QStringLiteral("Invoice"));
        QTest::mouseClick(editor->findChild<QPushButton *>(QStringLiteral("editInvoiceTemplateButton")),
                          Qt::LeftButton);
        QCOMPARE(TestEnvironment::current().openedFiles(),
                 QStringList{platform::paths::quorvelDir() + QStringLiteral("/stationary")});
        const QByteArray ordersBefore = testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml")));

        auto *title = editor->findChild<QLineEdit *>(QStringLiteral("title"));
        title->selectAll();
        QTest::keyClicks(title, QStringLiteral("Kitchen refit"));
        QTest::mouseClick(editor->findChild<QPushButton *>(QStringLiteral("printInvoiceButton")), Qt::LeftButton);

        const QList<QWidget *> open = program.windows.documentWindows()->openWindows();
        QCOMPARE(open.size(), 1);
        auto *invoice = qobject_cast<CustomInvoiceWindow *>(open.first());
        QVERIFY(invoice && QTest::qWaitForWindowExposed(invoice));
        QCOMPARE(invoice->windowTitle(), QStringLiteral("Invoice"));
        const QString text = invoice->textView()->toPlainText();
        QVERIFY2(text.contains(QStringLiteral("Kitchen refit")) && text.contains(QStringLiteral("Ann Lee")),
                 qPrintable(text));
        QVERIFY(!text.contains(QLatin1Char('<')));
        // Nothing written until the editor is finished.
        QCOMPARE(testlib::readFile(platform::paths::bundleFile(QStringLiteral("orders.xml"))), ordersBefore);

        // A last change in the window, then Print: what is printed is what shows.
        QStringList printed;
        const auto previous = printing::setDocumentPrintHandler(
            [&printed](const QTextDocument &document, QWidget *) { printed << document.toPlainText(); });
        QTextCursor cursor(invoice->textView()->document());
        cursor.insertText(QStringLiteral("COPY "));
        QVERIFY(invoice->windowTitle().contains(QStringLiteral("*")) || invoice->isWindowModified());
        invoice->toolBar()->findChild<QAction *>(QStringLiteral("printItemIdentifier"))->trigger();
        printing::setDocumentPrintHandler(previous);
        QCOMPARE(printed.size(), 1);
        QVERIFY(printed.first().startsWith(QStringLiteral("COPY ")));

        QTest::keyClick(invoice, Qt::Key_Escape);
        QTRY_VERIFY(program.windows.documentWindows()->openWindows().isEmpty());
    }

    void shouldEmailAPdfKeptWithTheOrdersAttachments()
    {
        Program program;
        OrderEditorWindow *editor = openKitchen(program);
        QVERIFY(editor);
        auto *count = editor->findChild<QLabel *>(QStringLiteral("attachmentText"));
        QCOMPARE(count->text(), QStringLiteral("There is 1 attachment"));
        QTest::mouseClick(editor->findChild<QPushButton *>(QStringLiteral("printInvoiceButton")), Qt::LeftButton);
        auto *invoice = qobject_cast<CustomInvoiceWindow *>(program.windows.documentWindows()->openWindows().value(0));
        QVERIFY(invoice);
        const QList<QAction *> actions = invoice->toolBar()->actions();
        QCOMPARE(actions.size(), 3);

        invoice->toolBar()->findChild<QAction *>(QStringLiteral("emailItemIdentifier"))->trigger();
        const QString pdf = platform::paths::attachmentsDir() + QStringLiteral("/Order10/INV10.pdf");
        QVERIFY(testlib::readFile(pdf).startsWith("%PDF-"));
        QCOMPARE(TestEnvironment::current().composedEmails().size(), 1);
        QCOMPARE(TestEnvironment::current().composedEmails().first().subject, QStringLiteral("Invoice INV10"));
        QCOMPARE(count->text(), QStringLiteral("There are  2  attachments"));

        const QString saved = TestEnvironment::current().root() + QStringLiteral("/kitchen.pdf");
        TestEnvironment::current().scriptFilePanelAnswers({saved});
        invoice->toolBar()->findChild<QAction *>(QStringLiteral("pdfItemIdentifier"))->trigger();
        QVERIFY(testlib::readFile(saved).startsWith("%PDF-"));
    }

    void shouldOpenThePlainInvoiceSheet()
    {
        Program program;
        OrderEditorWindow *editor = openKitchen(program);
        QVERIFY(editor);
        QTest::mouseClick(editor->findChild<QPushButton *>(QStringLiteral("printInvoiceSheetButton")), Qt::LeftButton);
        auto *sheet = qobject_cast<InvoiceSheetWindow *>(program.windows.documentWindows()->openWindows().value(0));
        QVERIFY(sheet && QTest::qWaitForWindowExposed(sheet));
        const QString text = sheet->findChild<QTextEdit *>(QStringLiteral("invoiceSheet"))->toPlainText();
        QVERIFY2(text.contains(QStringLiteral("Ann Lee\nHigh St")) && text.contains(QStringLiteral("Bolt")),
                 qPrintable(text));
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTRY_VERIFY(program.windows.documentWindows()->openWindows().isEmpty());
    }
};

QUORVEL_TEST(InvoiceWindowsTest)
#include "InvoiceWindowsTest.moc"
