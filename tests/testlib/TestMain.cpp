#include "TestMain.h"

#include "TestEnvironment.h"

#include <QCoreApplication>
#ifdef QUORVEL_TEST_GUI
#include <QApplication>
#include <QStyleFactory>
#endif
#include <QLocale>
#include <QStandardPaths>
#include <QTest>
#include <memory>

namespace testlib {

std::vector<Registration> &registry()
{
    static std::vector<Registration> all;
    return all;
}

Registrar::Registrar(const char *name, std::function<QObject *()> make)
{
    registry().push_back({name, std::move(make)});
}

}  // namespace testlib

int main(int argc, char **argv)
{
    qputenv("QT_HASH_SEED", "0");
    qputenv("LC_ALL", "C");
    QLocale::setDefault(QLocale::c());
    QStandardPaths::setTestModeEnabled(true);
#ifdef QUORVEL_TEST_GUI
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
#else
    QCoreApplication app(argc, argv);
#endif

    QStringList args = app.arguments();
    QString onlyClass;
    const qsizetype classFlag = args.indexOf(QStringLiteral("-class"));
    if (classFlag > 0 && classFlag + 1 < args.size()) {
        onlyClass = args.at(classFlag + 1);
        args.remove(classFlag, 2);
    }

    int failures = 0;
    for (const auto &registration : testlib::registry()) {
        if (!onlyClass.isEmpty() && onlyClass != QLatin1String(registration.name))
            continue;
        testlib::TestEnvironment environment;  // temporary data folder, preferences, alerts, clock
        std::unique_ptr<QObject> test(registration.make());
        failures += QTest::qExec(test.get(), args);
    }
    return failures == 0 ? 0 : 1;
}
