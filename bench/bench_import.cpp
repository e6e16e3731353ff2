// The imports over a large business: a first-generation database file (made
// by bench/make-legacy-database.py) read into the six collections, beside
// xmllint --stream reading the same file in the same run; and a CSV file of
// 100k contacts, as an address book exports them, made here.
//
//   bench_import LEGACY_FILE [RUNS]
//
// Nothing is written but the CSV file, in a temporary folder.
#include "BenchSupport.h"
#include "contacts/ContactsCsv.h"
#include "platform/Log.h"
#include "store/LegacyImport.h"
#include "store/kdDataSource.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <vector>

using bench::median;

namespace {

QString contactsCsvFile(const QString &folder, int rows)
{
    const QString path = folder + QStringLiteral("/contacts.csv");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QString();
    QByteArray text = "First Name,Last Name,Company,E-mail Address,Business Phone,Mobile Phone,"
                      "Business Street,Business City,Business Postal Code,Notes\r\n";
    const char *const first[] = {"Jane", "John", "Ann", "Peter", "Maria", "Li", "Olga"};
    const char *const last[] = {"Smith", "van Dijk", "Okafor", "Garcia", "Nguyen"};
    for (int n = 0; n < rows; ++n) {
        text += QByteArray(first[n % 7]) + ',' + last[n % 5] + QByteArray::number(n) + ','
            + (n % 4 == 0 ? "\"Firm " + QByteArray::number(n % 500) + ", Ltd\"" : QByteArray()) + ",person"
            + QByteArray::number(n) + "@example.org,01632 " + QByteArray::number(100000 + n) + ",07700 "
            + QByteArray::number(900000 + n) + ",\"" + QByteArray::number(n % 200) + " High St\",Ashford,AB1 2CD,"
            + (n % 10 == 0 ? QByteArray("\"met at the fair\r\ncall in May\"") : QByteArray()) + "\r\n";
        if (text.size() > (1 << 20)) {
            file.write(text);
            text.clear();
        }
    }
    file.write(text);
    return path;
}

}  // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    bench::CommandLine line;
    if (!bench::readCommandLine(argc, argv, "LEGACY_FILE [RUNS]", 3, line))
        return 2;
    const QString legacy = line.supportDir;
    if (!QFileInfo(legacy).isFile()) {
        std::fprintf(stderr, "bench_import: no file %s (make one with bench/make-legacy-database.py)\n",
                     qPrintable(legacy));
        return 1;
    }
    bench::dropLogLines();

    std::vector<double> legacyMs, xmllintMs, csvMs;
    legacyImport::Counts counts;
    contactsCsv::Outcome outcome;
    QTemporaryDir scratch;
    const QString csv = contactsCsvFile(scratch.path(), 100000);
    QElapsedTimer timer;
    for (int run = 0; run < line.count; ++run) {
        {
            kdDataSource contacts, orders, items, materials, bills, actions;
            timer.start();
            counts = legacyImport::importFile(legacy, {contacts, orders, items, materials, bills, actions});
            legacyMs.push_back(timer.nsecsElapsed() / 1e6);
        }
        QProcess xmllint;
        timer.start();
        xmllint.start(QStringLiteral("xmllint"), {QStringLiteral("--stream"), QStringLiteral("--noout"), legacy});
        xmllint.waitForFinished(600000);
        xmllintMs.push_back(timer.nsecsElapsed() / 1e6);
        {
            kdDataSource contacts;
            const contactsCsv::Preview preview = contactsCsv::preview(csv, 0);
            timer.start();
            outcome = contactsCsv::import(csv, preview.mapping, contacts, false);
            csvMs.push_back(timer.nsecsElapsed() / 1e6);
        }
    }
    std::printf("first-generation file %.1f MB: %d contacts, %d orders, %d lines, %d items, %d bills, %d tasks\n",
                QFileInfo(legacy).size() / 1e6, counts.contacts, counts.orders, counts.materials, counts.items,
                counts.bills, counts.actions);
    std::printf("legacy import                    %7.0f ms median (%d runs)\n", median(legacyMs), line.count);
    std::printf("xmllint --stream, same file      %7.0f ms median   ratio %.2f\n", median(xmllintMs),
                median(legacyMs) / median(xmllintMs));
    std::printf("CSV of 100k contacts (%.1f MB)   %7.0f ms median: %d contacts, %d companies\n",
                QFileInfo(csv).size() / 1e6, median(csvMs), outcome.imported, outcome.companiesMade);
    return 0;
}
