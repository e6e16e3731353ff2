// Fuzz target of report definition files, the reports folder's small
// property lists: the bytes are the definition "Fuzz.xml", run by the
// report engine over a small business (every kind of record, with links
// between them), as the chooser runs it. Nothing may crash, hang or run
// away with memory, whatever the columns, clauses and collation say.
#include "FakeServices.h"
#include "SmallBusiness.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "reports/ReportManager.h"
#include "platform/outlets/TextField.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

namespace {

struct Business
{
    QTemporaryDir folder;
    std::unique_ptr<testlib::FakeServices> services;
    TextField fromDate;
    Business()
    {
        platform::setLogHandler([](platform::LogChannel, const QString &) {});
        platform::paths::useDataDir(folder.path());
        testlib::writeSmallBusiness();
        services = std::make_unique<testlib::FakeServices>();
        services->getDatabase().readDatabase();
        fromDate.setDateFormat(QStringLiteral("%d/%m/%y"));
        QDir().mkpath(platform::paths::reportsDir());
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 1;
    static char name[] = "report_definition_fuzzer";
    static char *argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    static Business business;
    QFile definition(QDir(platform::paths::reportsDir()).filePath(QStringLiteral("Fuzz.xml")));
    if (!definition.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    definition.write(reinterpret_cast<const char *>(data), qint64(size));
    definition.close();
    ReportManager reports(business.services.get());
    reports.setFromDate(&business.fromDate);
    reports.doReport(QStringLiteral("Fuzz"), reports.table);
    return 0;
}
