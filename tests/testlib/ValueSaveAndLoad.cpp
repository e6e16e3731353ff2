#include "ValueSaveAndLoad.h"

#include "platform/PropertyList.h"

namespace testlib {

namespace {

// Writes the value and reads it back: the bytes in written, a fault in fault.
QVariant saveAndLoad(const QVariant &value, QByteArray &written, QString &fault)
{
    if (!fault.isEmpty())
        return QVariant();
    QString why;
    written = platform::plist::writeValue(value, &why);
    if (written.isEmpty()) {
        fault = QStringLiteral("a value that was read cannot be written: ") + why;
        return QVariant();
    }
    platform::plist::ReadStatus status;
    const QVariant loaded = platform::plist::readValue(written, &status);
    if (!status.ok())
        fault = QStringLiteral("what was written cannot be read back: %1\n%2")
                    .arg(status.message(), QString::fromUtf8(written.left(4000)));
    return loaded;
}

}  // namespace

QString valueSaveAndLoadFault(const QVariant &value)
{
    QString fault;
    QByteArray first;
    QByteArray second;
    QByteArray third;
    saveAndLoad(saveAndLoad(saveAndLoad(value, first, fault), second, fault), third, fault);
    if (fault.isEmpty() && second != third) {
        fault = QStringLiteral("a value changed when saved and loaded again:\n%1\n---- then ----\n%2")
                    .arg(QString::fromUtf8(second.left(4000)), QString::fromUtf8(third.left(4000)));
    }
    return fault;
}

}  // namespace testlib
