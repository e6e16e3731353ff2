#include "Preferences.h"

#include "app/Quorvel.h"
#include "store/PrefsController.h"

#include <QDir>

namespace testlib {

QSettings preferences()
{
    return QSettings(PrefsController::settingsName(), PrefsController::settingsName());
}

void startWithModules(Quorvel &quorvel, bool monthFirst)
{
    {
        QSettings settings = preferences();
        settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        settings.setValue(QStringLiteral("QuorvelDateFormat"), monthFirst ? QStringLiteral("1") : QStringLiteral("0"));
        settings.sync();
    }
    QDir().mkpath(PrefsController::notepadPath());
    quorvel.getPrefsController()->readDefaults();
}

}  // namespace testlib
