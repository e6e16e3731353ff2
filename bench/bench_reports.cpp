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
#include "app/PrefsController.h"
#include "app/Quorvel.h"
#include "orders/BOMManager.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/StringTable.h"
#include "reports/ReportManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// This thread's processor time: on a busy machine the wall time also counts
// the time other programs had the processor.
double threadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s SUPPORT_DIR [RUNS] [REPORT...]\n", argv[0]);
        return 2;
    }
    const QString source = QDir(QString::fromLocal8Bit(argv[1])).absoluteFilePath(
        QStringLiteral("Quorvel/quorveldatabase.qvldb"));
    const int runs = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    if (!QFileInfo(source).isDir()) {
        std::fprintf(stderr, "%s: no database at %s\n", argv[0], qPrintable(source));
        return 1;
    }

    QTemporaryDir temporary;
    QDir().mkpath(temporary.path() + QStringLiteral("/Quorvel"));
    QFile::link(source, temporary.path() + QStringLiteral("/Quorvel/quorveldatabase.qvldb"));
    platform::paths::setApplicationSupportDir(temporary.path());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temporary.path() + QStringLiteral("/prefs"));
    platform::setAlertHandler([](const platform::Alert &) { return 1; });
    platform::installStringTable(QStringLiteral("en"));
    // The engine's log lines ("doing report ...") are counted; BENCH_VERBOSE=1 prints them.
    int logLines = 0;
    const bool verbose = qEnvironmentVariableIsSet("BENCH_VERBOSE");
    platform::setLogHandler([&logLines, verbose](platform::LogChannel, const QString &text) {
        ++logLines;
        if (verbose)
            std::fprintf(stderr, "log: %s\n", qPrintable(text));
    });

    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    QElapsedTimer timer;
    timer.start();
    if (!quorvel.getDatabase().readDatabase().ok()) {
        std::fprintf(stderr, "%s: the database could not be read whole\n", argv[0]);
        return 1;
    }
    const double readMs = timer.nsecsElapsed() / 1e6;
    ReportManager *reports = quorvel.getReportManager();
    reports->populateFilter();
    std::printf("database read in %.0f ms: %d orders, %d order lines\n", readMs,
                quorvel.getOrderManager()->getCount(), quorvel.getBOMManager()->getCount());

    QStringList names;
    for (int i = 3; i < argc; ++i)
        names << QString::fromLocal8Bit(argv[i]);
    if (names.isEmpty())
        names = QStringList{QStringLiteral("Top Sellers"), QStringLiteral("Outstanding Balances")};
    for (const QString &name : std::as_const(names)) {
        std::vector<double> times, cpuTimes;
        for (int run = 0; run < runs; ++run) {
            const double cpuBefore = threadCpuMs();
            timer.restart();
            reports->doReport(name, reports->table);
            times.push_back(timer.nsecsElapsed() / 1e6);
            cpuTimes.push_back(threadCpuMs() - cpuBefore);
        }
        std::printf("%-22s median_ms %7.1f  min_ms %7.1f  cpu_ms %7.1f  rows %d  table_rows %d  total %s\n",
                    qPrintable(name), median(times), *std::min_element(times.begin(), times.end()),
                    median(cpuTimes), reports->getCount(),
                    reports->numberOfRowsInTableView(),
                    qPrintable(reports->objectValueForTableColumn(reports->getTotalCol(),
                                                                  reports->numberOfRowsInTableView() - 1)));
    }
    std::printf("log lines: %d\n", logLines);
    return 0;
}
