// The report engine over a large database: "Top Sellers" (every order line,
// merged by item) and "Outstanding Balances" (every order).
//
//   bench_reports SUPPORT_DIR [RUNS] [REPORT...]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb. Nothing is written into
// it: the program's controller runs over a temporary folder whose bundle is
// a symbolic link to the real one and whose reports folder gets the built-in
// definitions. Prints the median time of each report and its row count.
// Other reports of the reports folder may be named instead of the two.
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "orders/BOMManager.h"
#include "orders/OrderManager.h"
#include "platform/Log.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

using bench::median;
using bench::threadCpuMs;

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [RUNS] [REPORT...]", 5, line))
        return 2;
    const int runs = line.count;
    bench::LinkedSupportDir temporary;
    if (!temporary.link(argv[0], line.supportDir))
        return 1;
    bench::answerAlerts(1);
    // The engine's log lines ("doing report ...") are counted; BENCH_VERBOSE=1 prints them.
    int logLines = 0;
    const bool verbose = qEnvironmentVariableIsSet("BENCH_VERBOSE");
    platform::setLogHandler([&logLines, verbose](platform::LogChannel, const QString &text) {
        ++logLines;
        if (verbose)
            std::fprintf(stderr, "log: %s\n", qPrintable(text));
    });

    Quorvel quorvel;
    double readMs = 0;
    if (!bench::readWholeDatabase(argv[0], quorvel, readMs))
        return 1;
    ReportManager *reports = quorvel.getReportManager();
    reports->populateFilter();
    std::printf("database read in %.0f ms: %d orders, %d order lines\n", readMs, quorvel.getOrderManager()->getCount(),
                quorvel.getBOMManager()->getCount());

    QElapsedTimer timer;
    QStringList names;
    for (int i = 3; i < argc; ++i)
        names << QString::fromLocal8Bit(argv[i]);
    if (names.isEmpty())
        names = QStringList{QStringLiteral("Top Sellers"), QStringLiteral("Outstanding Balances")};
    for (const QString &name : std::as_const(names)) {
        std::vector<double> times, cpuTimes;
        for (int run = 0; run < runs; ++run) {
            const double cpuBefore = threadCpuMs();
            timer.start();
            reports->doReport(name, reports->table);
            times.push_back(timer.nsecsElapsed() / 1e6);
            cpuTimes.push_back(threadCpuMs() - cpuBefore);
        }
        std::printf("%-22s median_ms %7.1f  min_ms %7.1f  cpu_ms %7.1f  rows %d  table_rows %d  total %s\n",
                    qPrintable(name), median(times), *std::min_element(times.begin(), times.end()), median(cpuTimes),
                    reports->getCount(), reports->numberOfRowsInTableView(),
                    qPrintable(reports->objectValueForTableColumn(reports->getTotalCol(),
                                                                  reports->numberOfRowsInTableView() - 1)));
    }
    std::printf("log lines: %d\n", logLines);
    return 0;
}
