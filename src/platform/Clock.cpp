#include "platform/Clock.h"

#include <QMutex>

namespace platform {

namespace {
QMutex clockMutex;
QDateTime fixedMoment;
}  // namespace

QDateTime now()
{
    {
        QMutexLocker locker(&clockMutex);
        if (fixedMoment.isValid())
            return fixedMoment;
    }
    return QDateTime::currentDateTime();
}

void setFixedNow(const QDateTime &moment)
{
    QMutexLocker locker(&clockMutex);
    fixedMoment = moment.isValid() ? moment : QDateTime();
}

}  // namespace platform
