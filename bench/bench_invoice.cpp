// Invoices over a large database: opening the invoice window for an order
// with 200 lines (the stationery read, every placeholder filled, the bill of
// materials put in as a table, the window shown and its document laid out),
// and quorvel-cli invoice writing one order's PDF, its database read
// included, beside the database read alone in the same run.
//
//   bench_invoice SUPPORT_DIR [RUNS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read (the
// 200 lines are added in memory, the stationery goes to a temporary folder).
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "orders/BOMManager.h"
#include "orders/CustomInvoiceController.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/widgets/CustomInvoiceWindow.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTextDocument>
#include <QTextEdit>
#include <cstdio>
#include <vector>

using bench::median;
using bench::worst;

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [RUNS]", 20, line))
        return 2;
    bench::LinkedSupportDir support;
    if (!support.link(argv[0], line.supportDir))
        return 1;
    bench::answerAlerts(1);
    bench::dropLogLines();

    Quorvel quorvel;
    double readMs = 0;
    if (!bench::readWholeDatabase(argv[0], quorvel, readMs))
        return 1;
    quorvel.getOrderManager()->installStationary();
    OrderManager &orders = *quorvel.getOrderManager();
    BOMManager &bom = *quorvel.getBOMManager();
    auto *order = static_cast<Order *>(orders.getnthItem(orders.getCount() / 2));
    order->setIncludeBOM(true);
    for (int n = 0; n < 200; ++n) {
        auto material = Material::withOrder(order->getID());
        material->setItem(QStringLiteral("Line %1 of the order").arg(n + 1));
        material->setQty(QStringLiteral("2"));
        bom.add(material);
    }
    quorvel.setCurrentOrder(order->getID());
    bom.setCurrentOrder(order->getID());
    const int lines = bom.numberOfRowsInTableView();

    std::vector<double> openMs;
    double heightCm = 0;
    QElapsedTimer timer;
    for (int run = 0; run < line.count; ++run) {
        timer.start();
        auto *window = new CustomInvoiceWindow(&quorvel);
        window->controller().setWhichStationary(QStringLiteral("Invoice"));
        window->controller().setbomDataSource(&bom);
        window->controller().setOrder(shareOf(order));
        // Laid out as the window shows it.
        heightCm = window->textView()->document()->documentLayout()->documentSize().height() / 96.0 * 2.54;
        openMs.push_back(timer.nsecsElapsed() / 1e6);
        delete window;
    }

    std::vector<double> cliMs;
    const QString pdf = support.path() + QStringLiteral("/invoice.pdf");
    for (int run = 0; run < 3; ++run) {
        QProcess cli;
        timer.start();
        cli.start(QStringLiteral(QUORVEL_CLI_PATH),
                  {QStringLiteral("--data-dir"), support.path(), QStringLiteral("invoice"), QStringLiteral("--id"),
                   QString::number(order->getID()), QStringLiteral("--output"), pdf});
        if (!cli.waitForFinished(120000) || cli.exitCode() != 0) {
            std::fprintf(stderr, "quorvel-cli invoice failed: %s\n", cli.readAllStandardError().constData());
            return 1;
        }
        cliMs.push_back(timer.nsecsElapsed() / 1e6);
    }

    std::printf("orders %d, lines %d (database read in %.0f ms in this process)\n", orders.getCount(), bom.getCount(),
                readMs);
    std::printf("open the invoice window, %d lines (%.0f cm long)   %.1f ms median, %.1f ms worst (%d runs)\n", lines,
                heightCm, median(openMs), worst(openMs), line.count);
    std::printf("quorvel-cli invoice to PDF, read included   %.0f ms median, %.0f ms worst (3 runs)\n", median(cliMs),
                worst(cliMs));
    return 0;
}
