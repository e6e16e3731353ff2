#include "platform/Localised.h"

#include <QCoreApplication>

namespace platform {

QString localised(const char *english)
{
    return QCoreApplication::translate("Quorvel", english);
}

QString localised(const QString &english)
{
    const QByteArray text = english.toUtf8();
    return QCoreApplication::translate("Quorvel", text.constData());
}

}  // namespace platform
