// The checkout at a counter over a large database, with its window: opening
// it on a new sale, adding a line by an item's code (typed or scanned, then
// Enter), and a keystroke in the tender panel's tendered field, each with
// the window repainted.
//
//   bench_checkout SUPPORT_DIR [RUNS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read (the
// program is never quit, so nothing is written).
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "checkout/CheckoutManager.h"
#include "checkout/widgets/CheckoutWindow.h"
#include "items/Item.h"
#include "items/ItemManager.h"
#include "store/PrefsController.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QSettings>
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
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [RUNS]", 20, line))
        return 2;
    bench::LinkedSupportDir temporary;
    if (!temporary.link(argv[0], line.supportDir))
        return 1;
    QSettings(PrefsController::settingsName(), PrefsController::settingsName())
        .setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    bench::answerAlerts(1);  // a low-stock warning is acknowledged
    bench::dropLogLines();

    Quorvel quorvel;
    ApplicationWindows windows(quorvel);
    windows.start();
    CheckoutManager &checkout = *quorvel.getCheckoutManager();
    CheckoutWindow *window = windows.checkoutWindow();
    ItemManager &items = *quorvel.getItemManager();
    QRandomGenerator random(11);

    std::vector<double> openMs, codeMs, keystrokeMs;
    QElapsedTimer timer;
    int lines = 0;
    for (int run = 0; run < line.count; ++run) {
        timer.start();
        checkout.edit(nullptr);
        repaint(window);
        openMs.push_back(timer.nsecsElapsed() / 1e6);

        for (int n = 0; n < 10; ++n) {
            const auto *item = static_cast<Item *>(items.getnthItem(random.bounded(items.getCount())));
            const QString code = item->getCode();
            QLineEdit *field = window->codeField();
            timer.restart();
            field->setText(code);
            Q_EMIT field->textEdited(code);
            Q_EMIT field->returnPressed();
            repaint(window);
            codeMs.push_back(timer.nsecsElapsed() / 1e6);
        }
        lines += window->findChild<QObject *>(QStringLiteral("checkoutTableView")) ? 10 : 0;

        checkout.tender();
        auto *tendered = window->tenderPanel()->findChild<QLineEdit *>(QStringLiteral("tenderTendered"));
        const QString typed = QStringLiteral("1250.00");
        for (int i = 1; i <= typed.size(); ++i) {
            timer.restart();
            tendered->setText(typed.left(i));
            Q_EMIT tendered->textEdited(tendered->text());
            repaint(window->tenderPanel());
            keystrokeMs.push_back(timer.nsecsElapsed() / 1e6);
        }
        checkout.tenderCancel();
    }
    std::printf("orders %d, items %d\n", quorvel.getOrderManager()->getCount(), items.getCount());
    std::printf("open the checkout on a new sale   %.2f ms median, %.2f ms worst (%zu)\n", median(openMs),
                worst(openMs), openMs.size());
    std::printf("add a line by its code            %.2f ms median, %.2f ms worst (%zu)\n", median(codeMs),
                worst(codeMs), codeMs.size());
    std::printf("tender keystroke                  %.3f ms median, %.3f ms worst (%zu)\n", median(keystrokeMs),
                worst(keystrokeMs), keystrokeMs.size());
    return lines > 0 ? 0 : 1;
}
