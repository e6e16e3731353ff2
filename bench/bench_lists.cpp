// The stock list's filter at each keystroke of a search over a large
// database: the search is typed into the list's search field a character at
// a time and every filter pass that follows is timed, with "All" and with
// "In Stock" chosen.
//
//   bench_lists SUPPORT_DIR [ROUNDS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read.
#include "app/Quorvel.h"
#include "items/ItemManager.h"
#include "platform/Alerts.h"
#include "platform/Log.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
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

// Searches as a user types them: a name, a code, a word of the
// descriptions, a status, and one that matches nothing.
const char *const searches[] = {"hinge 12", "ITM4711", "sturdy", "stock", "zzq"};

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s SUPPORT_DIR [ROUNDS]\n", argv[0]);
        return 2;
    }
    platform::paths::setApplicationSupportDir(QString::fromLocal8Bit(argv[1]));
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        std::fprintf(stderr, "%s: no database in %s\n", argv[0], argv[1]);
        return 1;
    }
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    platform::setAlertHandler([](const platform::Alert &) { return 0; });
    platform::setLogHandler([](platform::LogChannel, const QString &) {});

    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    QElapsedTimer timer;
    timer.start();
    quorvel.readDatabase();
    const double readMs = timer.nsecsElapsed() / 1e6;
    ItemManager &items = *quorvel.getItemManager();

    std::printf("items %d (database read in %.0f ms)\n", items.getCount(), readMs);
    std::vector<double> everyKeystroke;
    for (const QString &mode : {QStringLiteral("All"), QStringLiteral("In Stock")}) {
        items.stockFilter->selectItemWithTitle(mode);
        std::vector<double> keystrokes;
        for (int round = 0; round < rounds; ++round) {
            for (const char *search : searches) {
                const QString text = QString::fromLatin1(search);
                for (qsizetype typed = 1; typed <= text.size(); ++typed) {
                    items.searchField->setStringValue(text.left(typed));
                    timer.restart();
                    items.filter();
                    keystrokes.push_back(timer.nsecsElapsed() / 1e6);
                }
                // Clearing the field shows everything again.
                items.searchField->setStringValue(QString());
                timer.restart();
                items.filter();
                keystrokes.push_back(timer.nsecsElapsed() / 1e6);
            }
        }
        std::printf("stock list filter, %-8s %.2f ms median, %.2f ms worst per keystroke (%zu keystrokes)\n",
                    qPrintable(mode), median(keystrokes), worst(keystrokes), keystrokes.size());
        everyKeystroke.insert(everyKeystroke.end(), keystrokes.begin(), keystrokes.end());
    }
    std::printf("stock list filter, all     %.2f ms median, %.2f ms worst per keystroke (target: under 20 ms)\n",
                median(everyKeystroke), worst(everyKeystroke));
    return worst(everyKeystroke) < 20.0 ? 0 : 3;
}
