// A period chosen in the accounts tab over a large database: the bills are
// filtered and totalled, the money-in definition is written and run over
// every order, and the statement reads both totals. Each choice of the
// period pop-up is timed from the choice to the cells a window shows of the
// three tables (the rows on screen of the bills and money in, the four rows
// of the statement).
//
//   bench_accounts SUPPORT_DIR [RUNS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb. Nothing is written into
// it: the program's controller runs over a temporary folder whose bundle is
// a symbolic link to the real one; "MoneyIn.xml" is written into that
// folder's reports folder at every choice, as the program does. "Now" is
// pinned to 15 June 2019, 10:00, and the periods measured from a start date
// start on 01/01/19 (dates day first).
#include "BenchSupport.h"
#include "accounts/BillManager.h"
#include "app/Quorvel.h"
#include "orders/OrderManager.h"
#include "platform/Clock.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <vector>

using bench::median;
using bench::threadCpuMs;
using bench::worst;

namespace {

// The rows a window shows at once.
constexpr int rowsOnScreen = 40;

// What a table does after a reload: the row count, then the cells of the
// rows on screen and of the last row (the total). Answers the characters
// read, so that nothing is left out as unused.
qsizetype showRows(const TableView &table)
{
    const TableDataSource *source = table.dataSource();
    if (!source)
        return 0;
    const int rows = source->numberOfRowsInTableView();
    qsizetype characters = 0;
    for (int row = 0; row < rows; ++row) {
        if (row >= rowsOnScreen && row != rows - 1)
            continue;
        for (const TableColumn &column : table.tableColumns())
            characters += source->objectValueForTableColumn(column.identifier, row).size();
    }
    return characters;
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [RUNS]", 7, line))
        return 2;
    const int runs = line.count;
    bench::LinkedSupportDir temporary;
    if (!temporary.link(argv[0], line.supportDir))
        return 1;
    bench::answerAlerts(1);
    bench::dropLogLines();
    platform::setFixedNow(QDateTime(QDate(2019, 6, 15), QTime(10, 0)));

    Quorvel quorvel;
    double readMs = 0;
    if (!bench::readWholeDatabase(argv[0], quorvel, readMs))
        return 1;
    quorvel.getPrefsController()->setUKFormat(true);
    quorvel.getPrefsController()->setHasAccounts(true);
    quorvel.getReportManager()->populateFilter();
    BillManager &bills = *quorvel.getBillManager();
    std::printf("database read in %.0f ms: %d bills, %d orders\n", readMs, bills.getCount(),
                quorvel.getOrderManager()->getCount());

    bills.fromDate->setStringValue(QStringLiteral("01/01/19"));
    std::vector<double> every, everyCpu;
    QElapsedTimer timer;
    qsizetype characters = 0;
    const QStringList periods = bills.periodPopUp->itemTitles();
    for (int period = 0; period < periods.size(); ++period) {
        std::vector<double> times, cpuTimes;
        for (int run = 0; run < runs; ++run) {
            // Another period first, so that every timed choice changes it.
            bills.periodPopUp->selectItemAtIndex((period + 1) % int(periods.size()));
            const double cpuBefore = threadCpuMs();
            timer.start();
            bills.periodPopUp->userSelectItemAtIndex(period);
            characters += showRows(*bills.getTableView());
            characters += showRows(*bills.getInTableView());
            characters += showRows(*bills.getSttTableView());
            times.push_back(timer.nsecsElapsed() / 1e6);
            cpuTimes.push_back(threadCpuMs() - cpuBefore);
        }
        const TableDataSource *moneyIn = bills.getInTableView()->dataSource();
        const TableDataSource *statement = bills.getSttTableView()->dataSource();
        std::printf("%-24s median %6.1f ms  worst %6.1f ms  cpu %6.1f ms  bills %6d  money in rows %6d  out %s  "
                    "in %s  difference %s\n",
                    qPrintable(periods.at(period)), median(times), worst(times), median(cpuTimes),
                    bills.numberOfRowsInTableView() - 2, moneyIn ? moneyIn->numberOfRowsInTableView() - 2 : 0,
                    qPrintable(statement->objectValueForTableColumn(QStringLiteral("amount"), 1)),
                    qPrintable(statement->objectValueForTableColumn(QStringLiteral("amount"), 0)),
                    qPrintable(statement->objectValueForTableColumn(QStringLiteral("amount"), 3)));
        every.insert(every.end(), times.begin(), times.end());
        everyCpu.insert(everyCpu.end(), cpuTimes.begin(), cpuTimes.end());
    }
    std::printf("every period             median %6.1f ms  worst %6.1f ms  cpu %6.1f ms  (%zu choices, %lld "
                "characters shown; target: under 300 ms)\n",
                median(every), worst(every), median(everyCpu), every.size(), qlonglong(characters));
    return worst(every) < 300.0 ? 0 : 3;
}
