// Windows as the user meets them: the period of the accounts above all
// three of its tables, and Escape putting a window away.
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/widgets/ChartPanel.h"
#include "app/widgets/NotepadWindow.h"
#include "platform/Paths.h"
#include "platform/outlets/Window.h"

#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTextEdit>

using Program = testlib::RunningProgram;

class WindowsOnScreenTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
    }

    void shouldShowThePeriodAboveAllThreeAccountsTables()
    {
        Program program;
        program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        auto *period = program.window()->findChild<QComboBox *>(QStringLiteral("billPeriodPopUp"));
        auto *tables = program.window()->findChild<QTabWidget *>(QStringLiteral("accountsTabView"));
        QVERIFY(period && tables);
        // Not inside any of the sub-tabs, and still there on the statement.
        QVERIFY(!tables->isAncestorOf(period));
        tables->setCurrentIndex(2);
        QVERIFY(period->isVisibleTo(program.window()));
        // The statement's difference is labelled on screen; the money in
        // reads "Date Paid" above its dates.
        auto *statement = program.window()->findChild<QTableView *>(QStringLiteral("statementTableView"));
        QCOMPARE(statement->model()->index(3, 0).data().toString(), QStringLiteral("Difference"));
        auto *moneyIn = program.window()->findChild<QTableView *>(QStringLiteral("moneyInTableView"));
        QCOMPARE(moneyIn->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Date Paid"));
    }

    void shouldDrawTheChartsUnderAReportAndTheStatement()
    {
        Program program;
        program.list(QStringLiteral("pro3"), QStringLiteral("reportTableView"), -1);
        auto *chooser = program.window()->findChild<QComboBox *>(QStringLiteral("reportChooser"));
        auto *chart = program.window()->findChild<ChartPanel *>(QStringLiteral("reportChart"));
        QVERIFY(chooser && chart);
        // A report without a total draws none; one with a total, a bar a row.
        chooser->setCurrentIndex(chooser->findText(QStringLiteral("Current Customers")));
        Q_EMIT chooser->activated(chooser->currentIndex());
        QVERIFY(chart->isHidden());
        chooser->setCurrentIndex(chooser->findText(QStringLiteral("Stocktake")));
        Q_EMIT chooser->activated(chooser->currentIndex());
        QVERIFY(!chart->isHidden());
        QCOMPARE(chart->chart()->series().size(), 1);
        const auto *bars = qobject_cast<QBarSeries *>(chart->chart()->series().first());
        QVERIFY(bars);
        QCOMPARE(bars->barSets().first()->count(), 2);  // Bolt and Nut
        // Saved as a picture where the panel says.
        const QString picture = testlib::TestEnvironment::current().root() + QStringLiteral("/chart.png");
        testlib::TestEnvironment::current().scriptFilePanelAnswers({picture});
        chart->saveWithPanel();
        QVERIFY(QImage(picture).width() > 0);

        // The statement: money in and out of the period by month.
        program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        auto *months = program.window()->findChild<ChartPanel *>(QStringLiteral("statementChart"));
        QVERIFY(months);
        QVERIFY(!months->chart()->series().isEmpty());
        const auto *inAndOut = qobject_cast<QBarSeries *>(months->chart()->series().first());
        QCOMPARE(inAndOut->barSets().size(), 2);
        QCOMPARE(inAndOut->barSets().at(1)->at(0), 580.0);  // January's bills
    }

    void shouldPictureTheOrderEditorOpenedAtStart_data()
    {
        QTest::addColumn<QString>("order");
        QTest::addColumn<int>("code");
        QTest::newRow("an order there is") << "INV10" << 0;
        QTest::newRow("no such order") << "INV99" << 2;
    }
    void shouldPictureTheOrderEditorOpenedAtStart()
    {
        QFETCH(QString, order);
        QFETCH(int, code);
        const QString picture = testlib::TestEnvironment::current().root() + QStringLiteral("/editor.png");
        QFile::remove(picture);
        QProcess program;
        program.start(QStringLiteral(QUORVEL_PROGRAM_PATH),
                      {QStringLiteral("--data-dir"), platform::paths::applicationSupportDir(),
                       QStringLiteral("--edit-order"), order, QStringLiteral("--screenshot"), picture});
        QVERIFY(program.waitForFinished(60000));
        QCOMPARE(program.exitCode(), code);
        const QImage shown(picture);
        QCOMPARE(!shown.isNull(), code == 0);
    }

    void shouldPutTheNotepadAwayWithEscape()
    {
        Program program;
        program.quorvel.notePad->makeKeyAndOrderFront();
        auto *notepad = program.window()->window()->findChild<NotepadWindow *>();
        if (!notepad) {
            for (QWidget *top : QApplication::topLevelWidgets())
                notepad = notepad ? notepad : qobject_cast<NotepadWindow *>(top);
        }
        QVERIFY(notepad);
        QVERIFY(QTest::qWaitForWindowExposed(notepad));
        notepad->activateWindow();
        QApplication::setActiveWindow(notepad);
        QTest::keyClick(notepad->editor(), Qt::Key_Escape);
        QVERIFY(!notepad->isVisible());
    }
};

QUORVEL_TEST(WindowsOnScreenTest)
#include "WindowsOnScreenTest.moc"
