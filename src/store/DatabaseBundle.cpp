#include "store/DatabaseBundle.h"

#include "contacts/Contact.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "platform/Clock.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/DatabaseReading.h"
#include "store/DatabaseWriting.h"
#include "store/kdDataSource.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

using platform::plist::ReadStatus;

using database::NoContact;
using database::Parsed;
using database::parseFile;

namespace {

void report(const QString &line)
{
    std::fprintf(stderr, "quorvel: %s\n", qUtf8Printable(line));
    std::fflush(stderr);
}

}  // namespace

// ------------------------------------------------------------ DatabaseBundle

QString DatabaseBundle::fileName(File file)
{
    static const char *const names[]
        = {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml"};
    return QString::fromLatin1(names[file]);
}

QString DatabaseBundle::rootKey(File file)
{
    static const char *const keys[] = {"contacts", "orders", "products", "materials", "bills", "actions"};
    return QString::fromLatin1(keys[file]);
}

QString DatabaseBundle::filePath(File file)
{
    return platform::paths::bundleFile(fileName(file));
}

DatabaseBundle::DatabaseBundle(kdDataSource &contacts, kdDataSource &orders, kdDataSource &items,
                               kdDataSource &materials, kdDataSource &bills, kdDataSource &actions)
    : collections{&contacts, &orders, &items, &materials, &bills, &actions}
{ }

void DatabaseBundle::setConnectContactById(ConnectContactById hook)
{
    connectHook = std::move(hook);
}
void DatabaseBundle::setSetContactfor(SetContactFor hook)
{
    contactForHook = std::move(hook);
}
void DatabaseBundle::setAfterReading(AfterReading hook)
{
    afterHook = std::move(hook);
}

void DatabaseBundle::connectContactById(int contactId, Order *order) const
{
    if (!order)
        return;
    order->setContact(dynamic_cast<Contact *>(collection(Contacts).getItemById(contactId)));
}

void DatabaseBundle::setContactfor(Material *line) const
{
    if (!line)
        return;
    const auto *order = dynamic_cast<const Order *>(collection(Orders).getItemById(line->getOrder()));
    line->setContact(order && order->getContact() ? order->getContact()->getID() : 0);
}

QString DatabaseBundle::Failure::message() const
{
    QString why = reason;
    if (why.endsWith(QLatin1Char('.')))
        why.chop(1);
    const QString where = line > 0 ? QStringLiteral("line %1: ").arg(line) : QString();
    return QStringLiteral("cannot read %1: %2%3 (the file is left as it is)").arg(path, where, why);
}

DatabaseBundle::ReadResult DatabaseBundle::readDatabase()
{
    std::array<Parsed, FileCount> parsed;

    // Parse: the files are independent, so several threads may share them,
    // the largest first.
    std::vector<File> queue = {Contacts, Orders, Items, Materials, Bills, Actions};
    const int workers = parallel ? std::clamp(QThread::idealThreadCount(), 1, FileCount) : 1;
    if (workers > 1) {
        std::vector<qint64> sizes(FileCount);
        for (File file : queue)
            sizes[file] = QFileInfo(filePath(file)).size();
        std::stable_sort(queue.begin(), queue.end(), [&](File a, File b) { return sizes[a] > sizes[b]; });
        std::atomic<int> next{0};
        const auto work = [&]() {
            for (int n; (n = next.fetch_add(1)) < FileCount;)
                parseFile(queue[size_t(n)], parsed[queue[size_t(n)]], sharing);
        };
        std::vector<std::thread> threads;
        for (int t = 1; t < workers; ++t)
            threads.emplace_back(work);
        work();
        for (std::thread &thread : threads)
            thread.join();
    } else {
        for (File file : queue)
            parseFile(file, parsed[file], sharing);
    }

    // Link, in the fixed order, so that each file finds what it refers to.
    ReadResult result;
    for (int f = 0; f < FileCount; ++f) {
        const File file = File(f);
        Parsed &p = parsed[f];
        unreadable[f] = false;
        if (p.exists && !p.status.ok()) {
            Failure failure;
            failure.file = file;
            failure.path = filePath(file);
            failure.reason = p.status.reason;
            failure.line = p.status.line;
            result.failures.append(failure);
            unreadable[f] = true;
            report(failure.message());
        }
        kdDataSource &target = collection(file);
        for (size_t n = 0; n < p.records.size(); ++n) {
            std::shared_ptr<dataObject> record = std::move(p.records[n]);
            if (file == Orders) {
                auto *order = static_cast<Order *>(record.get());
                if (connectHook)
                    connectHook(p.numbers[n], order);
                else
                    connectContactById(p.numbers[n], order);
                target.add(std::move(record));
            } else if (file == Materials) {
                auto *line = static_cast<Material *>(record.get());
                target.add(std::move(record));
                line->setID(p.numbers[n]);
                if (p.contacts[n] != NoContact)
                    line->setContact(p.contacts[n]);
                else if (contactForHook)
                    contactForHook(line);
                else
                    setContactfor(line);
            } else {
                target.add(std::move(record));
            }
        }
        p.records.clear();
        p.records.shrink_to_fit();
        if (afterHook)
            afterHook(file);
    }
    return result;
}

QByteArray DatabaseBundle::fileContents(File file) const
{
    return database::fileBytes(file, collection(file));
}

bool DatabaseBundle::fail(const QString &message)
{
    if (writeError.isEmpty())
        writeError = message;
    report(message);
    return false;
}

bool DatabaseBundle::setAside(File file)
{
    const QString path = filePath(file);
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        unreadable[file] = false;  // gone already: nothing to keep
        return true;
    }
    const QString base
        = path + QStringLiteral(".unreadable-") + platform::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside = base;
    for (int n = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++n)
        aside = base + QStringLiteral("-%1").arg(n);
    if (!QDir().rename(path, aside))
        return fail(
            QStringLiteral("cannot keep the unreadable %1 aside as %2, so it is not overwritten").arg(path, aside));
    report(QStringLiteral("kept the unreadable %1 as %2").arg(path, aside));
    unreadable[file] = false;
    return true;
}

void DatabaseBundle::firstWrite()
{
    if (written)
        return;
    written = true;
    // What a write cut short by a crash left is cleared first (this run is
    // the database's only writer).
    for (int file = 0; file < FileCount; ++file) {
        if (const int removed = platform::plist::removeUnfinishedWrites(filePath(File(file))))
            report(QStringLiteral("removed %1 unfinished copies of %2 left by an earlier run")
                       .arg(removed)
                       .arg(fileName(File(file))));
    }
    if (beforeFirstWrite)
        beforeFirstWrite();
}

bool DatabaseBundle::writeDatabase(File file)
{
    firstWrite();
    writeError.clear();
    const QString folder = platform::paths::bundleDir();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    return writeFile(file, fileContents(file));
}

bool DatabaseBundle::prepareWrite(File file)
{
    firstWrite();
    writeError.clear();
    const QString folder = platform::paths::bundleDir();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    return !unreadable[file] || setAside(file);
}

bool DatabaseBundle::writeFile(File file, const QByteArray &contents)
{
    if (unreadable[file] && !setAside(file))
        return false;
    const QString path = filePath(file);
    QString why;
    if (!platform::plist::writeFileAtomically(path, contents, &why))
        return fail(QStringLiteral("cannot write %1: %2").arg(path, why));
    return true;
}

bool DatabaseBundle::writeDatabase()
{
    firstWrite();
    writeError.clear();
    const QString folder = platform::paths::bundleDir();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    // Each file is built while the one before it goes to disk; the files
    // are still written one after the other, in order.
    bool all = true;
    QByteArray current = fileContents(File(0));
    for (int f = 0; f < FileCount; ++f) {
        QByteArray following;
        std::thread builder;
        if (f + 1 < FileCount)
            builder = std::thread([&] { following = fileContents(File(f + 1)); });
        if (!writeFile(File(f), current))
            all = false;
        current = QByteArray();
        if (builder.joinable())
            builder.join();
        current = std::move(following);
    }
    return all;
}
