// The lists' filters at each keystroke of a search over a large database:
// the search is typed into the list's search field a character at a time
// and every filter pass that follows is timed. The stock list is searched
// with "All" and with "In Stock" chosen; the contacts outline with "All",
// its filter pass timed together with the rebuild of its rows (the row
// count and the cells of a window's worth of rows, as the table asks for
// them after a reload).
//
//   bench_lists SUPPORT_DIR [ROUNDS]
//
// SUPPORT_DIR holds Quorvel/quorveldatabase.qvldb; it is only read.
#include "BenchSupport.h"
#include "app/Quorvel.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

using bench::median;
using bench::threadCpuMs;
using bench::worst;

namespace {

// Searches as a user types them: a name, a code, a word of the
// descriptions, a status, and one that matches nothing.
const char *const searches[] = {"hinge 12", "ITM4711", "sturdy", "stock", "zzq"};

// Contact searches: a surname, a street, a town, an e-mail address, a word
// of a company's name, and one that matches nothing.
const char *const contactSearches[] = {"kowalski", "church walk", "dunmore", "raj2@", "panel", "zzq"};

// The rows a list window shows at once.
constexpr int rowsOnScreen = 40;

struct ShownRows
{
    int rows = 0;
    qsizetype characters = 0;  // in the cells on screen
};

// What the contacts table does after a reload: the row count, then the
// cells of the rows on screen.
ShownRows showContactRows(const ContactManager &contacts, const QList<TableColumn> &columns)
{
    ShownRows shown;
    shown.rows = contacts.numberOfRowsInTableView();
    for (int row = 0; row < std::min(shown.rows, rowsOnScreen); ++row) {
        for (const TableColumn &column : columns)
            shown.characters += contacts.objectValueForTableColumn(column.identifier, row).size();
    }
    return shown;
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "SUPPORT_DIR [ROUNDS]", 5, line))
        return 2;
    if (!bench::useSupportDir(argv[0], line.supportDir))
        return 1;
    const int rounds = line.count;
    bench::answerAlerts(0);
    bench::dropLogLines();

    Quorvel quorvel;
    const double readMs = bench::readDatabase(quorvel);
    QElapsedTimer timer;
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
                    timer.start();
                    items.filter();
                    keystrokes.push_back(timer.nsecsElapsed() / 1e6);
                }
                // Clearing the field shows everything again.
                items.searchField->setStringValue(QString());
                timer.start();
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

    ContactManager &contacts = *quorvel.getContactManager();
    const QList<TableColumn> &columns = contacts.getCompanyOutline()->tableColumns();
    contacts.typeFilter->selectItemWithTitle(QStringLiteral("All"));
    std::printf("contacts %d, outline rows %d, columns %lld\n", contacts.getCount(),
                showContactRows(contacts, columns).rows, qlonglong(columns.size()));
    std::vector<double> contactKeystrokes;
    std::vector<double> filterPasses;  // the same keystrokes: the filter pass alone
    std::vector<double> rowRebuilds;  // and the rows and cells alone
    std::vector<double> processorTimes;  // the whole keystroke, this thread's processor time
    int fewestRows = contacts.getCount();
    qsizetype charactersShown = 0;
    for (int round = 0; round < rounds; ++round) {
        for (const char *search : contactSearches) {
            const QString text = QString::fromLatin1(search);
            for (qsizetype typed = 0; typed <= text.size(); ++typed) {
                // The last pass clears the field, which shows everybody again.
                contacts.searchField->setStringValue(typed < text.size() ? text.left(typed + 1) : QString());
                const double cpuBefore = threadCpuMs();
                timer.start();
                contacts.filter();
                const double filtered = timer.nsecsElapsed() / 1e6;
                const ShownRows shown = showContactRows(contacts, columns);
                const double total = timer.nsecsElapsed() / 1e6;
                processorTimes.push_back(threadCpuMs() - cpuBefore);
                contactKeystrokes.push_back(total);
                filterPasses.push_back(filtered);
                rowRebuilds.push_back(total - filtered);
                fewestRows = std::min(fewestRows, shown.rows);
                charactersShown += shown.characters;
            }
        }
    }
    std::printf("contacts outline filter    %.2f ms median, %.2f ms worst per keystroke (target: under 20 ms)\n",
                median(contactKeystrokes), worst(contactKeystrokes));
    std::printf("  filter pass alone        %.2f ms median, %.2f ms worst\n", median(filterPasses),
                worst(filterPasses));
    std::printf("  rows and cells alone     %.2f ms median, %.2f ms worst\n", median(rowRebuilds), worst(rowRebuilds));
    std::printf("  processor time           %.2f ms median, %.2f ms worst\n", median(processorTimes),
                worst(processorTimes));
    std::printf("  %zu keystrokes, fewest rows %d, %lld characters in the cells shown\n", contactKeystrokes.size(),
                fewestRows, qlonglong(charactersShown));
    return worst(everyKeystroke) < 20.0 && worst(contactKeystrokes) < 20.0 ? 0 : 3;
}
