// Opening orders in the order editor over a large database, and taking the
// materials total into the editor: each open finds the order's lines among
// every line of every order.
//
//   bench_orders SUPPORT_DIR [OPENS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read.
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "orders/BOMManager.h"
#include "orders/OrderManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <cstdio>
#include <vector>

using bench::median;
using bench::worst;

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [OPENS]", 50, line))
        return 2;
    if (!bench::useSupportDir(argv[0], line.supportDir))
        return 1;
    const int opens = line.count;
    bench::answerAlerts(0);  // keep each order's own tax rate
    bench::dropLogLines();

    Quorvel quorvel;
    const double readMs = bench::readDatabase(quorvel);
    QElapsedTimer timer;
    OrderManager &orders = *quorvel.getOrderManager();
    BOMManager &lines = *quorvel.getBOMManager();

    std::vector<double> openMs, totalMs;
    QRandomGenerator random(7);
    int linesSeen = 0;
    for (int i = 0; i < opens; ++i) {
        const int row = random.bounded(orders.numberOfRowsInTableView());
        orders.table->selectRow(row);
        timer.start();
        orders.edit();
        openMs.push_back(timer.nsecsElapsed() / 1e6);
        linesSeen += lines.numberOfRowsInTableView();

        timer.start();
        orders.insertBOMTotal();
        totalMs.push_back(timer.nsecsElapsed() / 1e6);
        orders.cancel();
    }
    std::printf("orders %d, lines %d (database read in %.0f ms)\n", orders.getCount(), lines.getCount(), readMs);
    std::printf("open an order in the editor   %.2f ms median, %.2f ms worst (%d opens, %.1f lines each)\n",
                median(openMs), worst(openMs), opens, double(linesSeen) / opens);
    std::printf("insertBOMTotal                %.3f ms median, %.3f ms worst\n", median(totalMs), worst(totalMs));
    return 0;
}
