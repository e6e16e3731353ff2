#include "TestEnvironment.h"

#include "platform/Clock.h"
#include "platform/Paths.h"

#include <QDir>
#include <QSettings>

namespace testlib {

namespace {
TestEnvironment *currentEnvironment = nullptr;
}

TestEnvironment::TestEnvironment()
{
    Q_ASSERT(dir.isValid());
    QDir(dir.path()).mkpath(QStringLiteral("support"));
    QDir(dir.path()).mkpath(QStringLiteral("home"));
    platform::paths::setApplicationSupportDir(supportDir());
    platform::paths::setHomeDir(homeDir());
    const QString settings = dir.path() + QStringLiteral("/settings");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings);
    platform::setFixedNow(fixedNow());
    previousHandler = platform::setAlertHandler([this](const platform::Alert &alert) {
        shown.append(alert);
        return alertScript.isEmpty() ? 1 : alertScript.takeFirst();
    });
    currentEnvironment = this;
}

TestEnvironment::~TestEnvironment()
{
    platform::setAlertHandler(previousHandler);
    platform::setFixedNow(QDateTime());
    platform::paths::setApplicationSupportDir(QString());
    platform::paths::setHomeDir(QString());
    if (currentEnvironment == this)
        currentEnvironment = nullptr;
}

TestEnvironment &TestEnvironment::current()
{
    Q_ASSERT(currentEnvironment);
    return *currentEnvironment;
}

QString TestEnvironment::supportDir() const { return dir.path() + QStringLiteral("/support"); }
QString TestEnvironment::homeDir() const { return dir.path() + QStringLiteral("/home"); }

QDateTime TestEnvironment::fixedNow()
{
    return QDateTime(QDate(2026, 1, 15), QTime(10, 0));
}

}  // namespace testlib
