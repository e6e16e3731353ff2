// Benchmark of the database: reading, writing, filtering, sorting and the
// CSV export of a large database bundle.
//
//   bench_database DATA_DIR STEP [OUT_DIR]
//
// DATA_DIR is an application-support folder holding
// Quorvel/quorveldatabase.qvldb (make one with
// `python3 ../shared/tools/make-database.py DATA_DIR --orders 100000`).
// STEP is one of:
//   read            read the six files into the collections, links resolved
//   read-serial     the same on one thread
//   read-unshared   the same without sharing repeated values
//   write-all       write all six files (into OUT_DIR, default DATA_DIR/bench-output)
//   write-orders    write orders.xml alone (into OUT_DIR)
//   build-all       build the bytes of all six files in memory, nothing written
//   build-orders    build the bytes of orders.xml in memory
//   filter          make visible the orders whose contains() answers "Ashford"
//   filter-contacts the same, also taking an order whose contact matches
//   sort            sort the orders by date (sortByColumn "date", NO, 2)
//   csv             CSV export of the orders with five columns
//   scan            the quick scanner alone over the six files (no records)
//   scan-xml        the full XML reader alone over the six files (no records)
// Every step but read* and scan* first reads the database (not timed).
//
// Each step prints one line:
//   STEP <name> wall_ms <ms> peak_mb <MB> before_mb <MB> <notes>
// peak_mb is the peak resident memory (VmHWM) while the step ran: the peak
// is reset after the untimed preparation, so each step's figure is its own
// (it includes what the preparation left resident, given as before_mb).
// Run each step in a fresh process (bench/run-bench.sh does).
#include "contacts/Contact.h"
#include "orders/Order.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/Backups.h"
#include "store/DatabaseBundle.h"
#include "store/DatabaseLock.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstring>
#include <functional>

namespace {

// The orders' table as the order list shows it: a cell is the named field
// of the n-th visible order.
class OrderList : public kdDataSource
{
public:
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        const dataObject *record = getnthVisibleItem(row);
        return record ? record->getFieldByName(columnId) : QString();
    }
};

double statusMegabytes(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray wanted = QByteArray(field) + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(wanted)) {
            const QByteArray number = line.mid(wanted.size()).trimmed().split(' ').value(0);
            return number.toDouble() / 1024.0;
        }
    }
    return -1;
}

// Starts a new peak: VmHWM falls back to the current resident size.
void resetPeak()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

struct Collections
{
    kdDataSource contacts;
    OrderList orders;
    kdDataSource items;
    kdDataSource materials;
    kdDataSource bills;
    kdDataSource actions;
    DatabaseBundle bundle{contacts, orders, items, materials, bills, actions};
};

QString countsOf(const Collections &c)
{
    return QStringLiteral("contacts=%1 orders=%2 items=%3 lines=%4 bills=%5 tasks=%6")
        .arg(c.contacts.getCount())
        .arg(c.orders.getCount())
        .arg(c.items.getCount())
        .arg(c.materials.getCount())
        .arg(c.bills.getCount())
        .arg(c.actions.getCount());
}

class CountingVisitor : public platform::plist::RecordVisitor
{
public:
    void restart() override { records = fields = 0; }
    void record(std::span<const platform::plist::Field> f) override
    {
        ++records;
        fields += qint64(f.size());
    }
    qint64 records = 0;
    qint64 fields = 0;
};

int usage()
{
    std::fprintf(stderr,
                 "usage: bench_database DATA_DIR STEP [OUT_DIR]\n"
                 "steps: read read-serial read-unshared write-all write-orders build-all build-orders\n"
                 "       filter filter-contacts\n"
                 "       sort csv scan scan-xml backup lock\n");
    return 2;
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3)
        return usage();
    const QString dataDir = QFileInfo(args.at(1)).absoluteFilePath();
    const QString step = args.at(2);
    const QString outDir = args.size() > 3 ? args.at(3) : dataDir + QStringLiteral("/bench-output");
    platform::paths::setApplicationSupportDir(dataDir);
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        std::fprintf(stderr, "bench_database: no database bundle in %s\n", qPrintable(dataDir));
        return 1;
    }

    Collections c;
    QString notes;
    std::function<void()> timed;
    QString made;

    const auto prepare = [&]() {
        const DatabaseBundle::ReadResult result = c.bundle.readDatabase();
        if (!result.ok())
            std::exit(3);
    };

    if (step == u"read" || step == u"read-serial" || step == u"read-unshared") {
        c.bundle.setParallelReading(step != u"read-serial");
        c.bundle.setValueSharing(step != u"read-unshared");
        timed = [&]() {
            const DatabaseBundle::ReadResult result = c.bundle.readDatabase();
            notes = countsOf(c) + (result.ok() ? QString() : QStringLiteral(" FAILED"));
        };
    } else if (step == u"write-all" || step == u"write-orders") {
        prepare();
        platform::paths::setApplicationSupportDir(outDir);
        timed = [&]() {
            const bool ok
                = step == u"write-all" ? c.bundle.writeDatabase() : c.bundle.writeDatabase(DatabaseBundle::Orders);
            qint64 bytes = 0;
            for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
                if (step == u"write-all" || f == DatabaseBundle::Orders)
                    bytes += QFileInfo(DatabaseBundle::filePath(DatabaseBundle::File(f))).size();
            }
            notes = QStringLiteral("bytes=%1%2").arg(bytes).arg(ok ? QString() : QStringLiteral(" FAILED"));
        };
    } else if (step == u"lock") {
        // Taking and letting go of the database's lock, as a start does.
        timed = [&]() {
            DatabaseLock lock;
            const bool taken = lock.tryLock();
            lock.unlock();
            notes = taken ? QStringLiteral("taken") : QStringLiteral("FAILED held by %1").arg(lock.holder());
        };
    } else if (step == u"backup") {
        // The backup a run makes before its first write, in the data folder's
        // Backups; removed again after the timing.
        timed = [&]() {
            QString why;
            const QString name = backups::make(QDateTime::currentDateTime(), 1000, &why);
            notes = name.isEmpty() ? QStringLiteral("FAILED %1").arg(why) : QStringLiteral("made %1").arg(name);
            made = name;
        };
    } else if (step == u"build-all" || step == u"build-orders") {
        prepare();
        timed = [&]() {
            qint64 bytes = 0;
            for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
                if (step == u"build-all" || f == DatabaseBundle::Orders)
                    bytes += c.bundle.fileContents(DatabaseBundle::File(f)).size();
            }
            notes = QStringLiteral("bytes=%1").arg(bytes);
        };
    } else if (step == u"filter" || step == u"filter-contacts") {
        prepare();
        const bool withContacts = step == u"filter-contacts";
        timed = [&, withContacts]() {
            // The parts are timed too: the searches, then the row count
            // that rebuilds the table's index of visible rows.
            QElapsedTimer part;
            part.start();
            const QString text = QStringLiteral("Ashford");
            c.orders.filterBy([&](const dataObject &record) {
                const auto &order = static_cast<const Order &>(record);
                return order.contains(text)
                    || (withContacts && order.getContact() && order.getContact()->contains(text));
            });
            const double searched = double(part.nsecsElapsed()) / 1e6;
            const int rows = c.orders.numberOfRowsInTableView();
            notes = QStringLiteral("visible=%1 (search and set %2 ms, row count %3 ms)")
                        .arg(rows)
                        .arg(searched, 0, 'f', 1)
                        .arg(double(part.nsecsElapsed()) / 1e6 - searched, 0, 'f', 1);
        };
    } else if (step == u"sort") {
        prepare();
        timed = [&]() {
            c.orders.sortByColumn(QStringLiteral("date"), false, 2);
            notes = QStringLiteral("first=%1 last=%2")
                        .arg(c.orders.getnthItem(0)->getFieldByName(QStringLiteral("date")),
                             c.orders.getnthItem(c.orders.getCount() - 1)->getFieldByName(QStringLiteral("date")));
        };
    } else if (step == u"csv") {
        prepare();
        timed = [&]() {
            TableView table;
            table.setColumns(TableView::columnsFrom({{"ordernum", "Order"},
                                                     {"date", "Date"},
                                                     {"title", "Title"},
                                                     {"status", "Status"},
                                                     {"valueWithTax", "Total"}}));
            const QString csv = c.orders.getDataAsCSVusingTableView(table);
            notes = QStringLiteral("chars=%1").arg(csv.size());
        };
    } else if (step == u"scan" || step == u"scan-xml") {
        const bool quick = step == u"scan";
        timed = [&, quick]() {
            qint64 bytes = 0;
            qint64 records = 0;
            bool fullUsed = false;
            for (int f = 0; f < DatabaseBundle::FileCount; ++f) {
                const auto file = DatabaseBundle::File(f);
                platform::plist::RecordReader reader;
                reader.setQuickScanEnabled(quick);
                CountingVisitor visitor;
                const auto status
                    = reader.readFile(DatabaseBundle::filePath(file), DatabaseBundle::rootKey(file), visitor);
                if (!status.ok())
                    std::fprintf(stderr, "%s: %s\n", qPrintable(DatabaseBundle::fileName(file)),
                                 qPrintable(status.message()));
                fullUsed = fullUsed || reader.usedFullReader();
                bytes += QFileInfo(DatabaseBundle::filePath(file)).size();
                records += visitor.records;
            }
            notes = QStringLiteral("bytes=%1 records=%2%3")
                        .arg(bytes)
                        .arg(records)
                        .arg(quick && fullUsed ? QStringLiteral(" (full reader used)") : QString());
        };
    } else {
        return usage();
    }

    const double before = statusMegabytes("VmRSS");
    resetPeak();
    QElapsedTimer clock;
    clock.start();
    timed();
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    const double peak = statusMegabytes("VmHWM");
    std::printf("STEP %s wall_ms %.1f peak_mb %.1f before_mb %.1f %s\n", qPrintable(step), ms, peak, before,
                qPrintable(notes));
    if (step == u"sort") {
        // A second sort finds every date already parsed.
        clock.restart();
        c.orders.sortByColumn(QStringLiteral("date"), true, 2);
        std::printf("STEP sort-again wall_ms %.1f peak_mb %.1f before_mb %.1f (dates cached, the other way)\n",
                    double(clock.nsecsElapsed()) / 1e6, statusMegabytes("VmHWM"), before);
    }
    if (!made.isEmpty())
        QDir(backups::folder() + QLatin1Char('/') + made).removeRecursively();
    std::fflush(stdout);
    // The collections are large: leave without tearing them down.
    std::_Exit(0);
}
