#include "BenchSupport.h"

#include "app/Quorvel.h"
#include "platform/Alerts.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/StringTable.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace bench {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

double worst(const std::vector<double> &values)
{
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

double threadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

bool readCommandLine(int argc, char **argv, const char *usage, int defaultCount, CommandLine &line)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s %s\n", argv[0], usage);
        return false;
    }
    line.supportDir = QString::fromLocal8Bit(argv[1]);
    line.count = argc > 2 ? std::max(1, std::atoi(argv[2])) : defaultCount;
    return true;
}

bool useSupportDir(const char *program, const QString &supportDir)
{
    platform::paths::setApplicationSupportDir(supportDir);
    if (QFileInfo(platform::paths::bundleDir()).isDir())
        return true;
    std::fprintf(stderr, "%s: no database in %s\n", program, qPrintable(supportDir));
    return false;
}

bool LinkedSupportDir::link(const char *program, const QString &supportDir)
{
    const QString bundle = QStringLiteral("Quorvel/quorveldatabase.qvldb");
    const QString source = QDir(supportDir).absoluteFilePath(bundle);
    if (!QFileInfo(source).isDir()) {
        std::fprintf(stderr, "%s: no database at %s\n", program, qPrintable(source));
        return false;
    }
    QDir().mkpath(temporary.path() + QStringLiteral("/Quorvel"));
    QFile::link(source, temporary.path() + u'/' + bundle);
    platform::paths::setApplicationSupportDir(temporary.path());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temporary.path() + QStringLiteral("/prefs"));
    platform::installStringTable(QStringLiteral("en"));
    return true;
}

void answerAlerts(int answer)
{
    platform::setAlertHandler([answer](const platform::Alert &) { return answer; });
}

void dropLogLines()
{
    platform::setLogHandler([](platform::LogChannel, const QString &) {});
}

double readDatabase(Quorvel &quorvel)
{
    quorvel.setStartRepeatChecker(false);
    QElapsedTimer timer;
    timer.start();
    quorvel.readDatabase();
    return timer.nsecsElapsed() / 1e6;
}

bool readWholeDatabase(const char *program, Quorvel &quorvel, double &readMs)
{
    quorvel.setStartRepeatChecker(false);
    QElapsedTimer timer;
    timer.start();
    const bool whole = quorvel.getDatabase().readDatabase().ok();
    readMs = timer.nsecsElapsed() / 1e6;
    if (!whole)
        std::fprintf(stderr, "%s: the database could not be read whole\n", program);
    return whole;
}

}  // namespace bench
