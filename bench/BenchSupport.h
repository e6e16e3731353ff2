#pragma once
// What the benchmark programs share: reading their command line, the
// application-support folder they run over, the headless controller's
// database read, and the figures they print (median, worst, processor time).
#include <QString>
#include <QTemporaryDir>
#include <vector>

class Quorvel;

namespace bench {

// The middle value once sorted (the upper one of an even count), 0 for none.
double median(std::vector<double> values);
// The largest value, 0 for none.
double worst(const std::vector<double> &values);
// This thread's processor time: on a busy machine the wall time also counts
// the time other programs had the processor.
double threadCpuMs();

// SUPPORT_DIR and the count that may follow it.
struct CommandLine
{
    QString supportDir;
    int count = 0;  // at least 1
};
// False, after printing "usage: PROGRAM USAGE", when SUPPORT_DIR is missing.
// `usage` is the rest of the usage line ("SUPPORT_DIR [RUNS]").
bool readCommandLine(int argc, char **argv, const char *usage, int defaultCount, CommandLine &line);

// SUPPORT_DIR itself as the application-support folder, for a benchmark
// that only reads it. False, after saying so, when it holds no database.
bool useSupportDir(const char *program, const QString &supportDir);

// A temporary application-support folder whose database bundle is a
// symbolic link to SUPPORT_DIR's, for a benchmark whose controller may write:
// whatever it writes beside the bundle, and the preferences, go into the
// temporary folder, which goes away with this object. The English string
// table is installed too.
class LinkedSupportDir
{
public:
    // False, after saying so, when SUPPORT_DIR holds no database bundle.
    bool link(const char *program, const QString &supportDir);
    QString path() const { return temporary.path(); }

private:
    QTemporaryDir temporary;
};

// Every alert is answered with `answer`.
void answerAlerts(int answer);
// The log lines go nowhere.
void dropLogLines();

// The controller runs without its repeat checker, and reads the database
// the program's way; answers the milliseconds the read took.
double readDatabase(Quorvel &quorvel);
// The controller runs without its repeat checker, and reads its database
// bundle into `readMs` milliseconds; false, after saying so, when the
// bundle could not be read whole.
bool readWholeDatabase(const char *program, Quorvel &quorvel, double &readMs);

}  // namespace bench
