// Start-up of the whole program over a database, to a usable main window,
// and the feel of the orders list: a search typed a keystroke at a time and
// scrolling through the list, each followed by a repaint of the window.
//
//   bench_startup SUPPORT_DIR [RUNS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb. Nothing is written into
// it: the program is started over a temporary folder whose bundle is a
// symbolic link to the real one, with its preferences in the temporary
// folder too, and it is never quit (quitting saves).
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "orders/OrderManager.h"
#include "store/PrefsController.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <cstdio>
#include <vector>

using bench::median;
using bench::worst;

namespace {

void repaint(QWidget *window)
{
    window->repaint();
    QApplication::processEvents();
}

}  // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [RUNS]", 3, line))
        return 2;
    const int runs = line.count;
    bench::LinkedSupportDir temporary;
    if (!temporary.link(argv[0], line.supportDir))
        return 1;
    QSettings(PrefsController::settingsName(), PrefsController::settingsName())
        .setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    bench::answerAlerts(1);

    std::vector<double> startMs, keystrokeMs, filterMs, scrollMs;
    int orders = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        Quorvel quorvel;
        ApplicationWindows windows(quorvel);
        windows.start();
        MainWindow *window = windows.mainWindow();
        window->show();
        quorvel.mainTabView->selectTabViewItemWithIdentifier(QStringLiteral("2"));
        repaint(window);
        startMs.push_back(timer.nsecsElapsed() / 1e6);
        orders = quorvel.getOrderManager()->getCount();

        // A search typed a keystroke at a time, then erased.
        auto *search = window->findChild<QLineEdit *>(QStringLiteral("orderSearchField"));
        const QString typed = QStringLiteral("INV00123");
        for (int i = 1; i <= typed.size(); ++i) {
            timer.restart();
            search->setText(typed.left(i));
            Q_EMIT search->textEdited(search->text());
            repaint(window);
            keystrokeMs.push_back(timer.nsecsElapsed() / 1e6);
        }
        // The same search run by the list alone, without the window's repaint.
        for (int i = 1; i <= typed.size(); ++i) {
            quorvel.getOrderManager()->searchField->setStringValue(typed.left(i));
            timer.restart();
            quorvel.getOrderManager()->filter();
            filterMs.push_back(timer.nsecsElapsed() / 1e6);
        }
        search->clear();
        Q_EMIT search->textEdited(QString());
        repaint(window);

        // Scrolling through the whole list in twenty steps.
        auto *table = window->findChild<QTableView *>(QStringLiteral("orderTableView"));
        QScrollBar *bar = table->verticalScrollBar();
        for (int step = 1; step <= 20; ++step) {
            timer.restart();
            bar->setValue(bar->maximum() * step / 20);
            repaint(window);
            scrollMs.push_back(timer.nsecsElapsed() / 1e6);
        }
    }
    std::printf("orders in the database      %d\n", orders);
    std::printf("start to a usable window    %.0f ms (median of %d)\n", median(startMs), runs);
    std::printf("search keystroke + repaint  %.1f ms median, %.1f ms worst\n", median(keystrokeMs), worst(keystrokeMs));
    std::printf("  of which the list filter  %.1f ms median\n", median(filterMs));
    std::printf("scroll step + repaint       %.1f ms median, %.1f ms worst\n", median(scrollMs), worst(scrollMs));
    return 0;
}
