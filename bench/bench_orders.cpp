// Opening orders in the order editor over a large database, and taking the
// materials total into the editor: each open finds the order's lines among
// every line of every order.
//
//   bench_orders SUPPORT_DIR [OPENS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read.
#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "orders/BOMManager.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Log.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

double worst(const std::vector<double> &values)
{
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s SUPPORT_DIR [OPENS]\n", argv[0]);
        return 2;
    }
    platform::paths::setApplicationSupportDir(QString::fromLocal8Bit(argv[1]));
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        std::fprintf(stderr, "%s: no database in %s\n", argv[0], argv[1]);
        return 1;
    }
    const int opens = argc > 2 ? std::max(1, atoi(argv[2])) : 50;
    platform::setAlertHandler([](const platform::Alert &) { return 0; });  // keep each order's own tax rate
    platform::setLogHandler([](platform::LogChannel, const QString &) {});

    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    QElapsedTimer timer;
    timer.start();
    quorvel.readDatabase();
    const double readMs = timer.nsecsElapsed() / 1e6;
    OrderManager &orders = *quorvel.getOrderManager();
    BOMManager &lines = *quorvel.getBOMManager();

    std::vector<double> openMs, totalMs;
    QRandomGenerator random(7);
    int linesSeen = 0;
    for (int i = 0; i < opens; ++i) {
        const int row = random.bounded(orders.numberOfRowsInTableView());
        orders.table->selectRow(row);
        timer.restart();
        orders.edit();
        openMs.push_back(timer.nsecsElapsed() / 1e6);
        linesSeen += lines.numberOfRowsInTableView();

        timer.restart();
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
