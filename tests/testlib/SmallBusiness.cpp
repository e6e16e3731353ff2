#include "SmallBusiness.h"

#include "DatabaseFiles.h"
#include "Preferences.h"
#include "platform/Paths.h"
#include "platform/PropertyList.h"
#include "store/PrefsController.h"

#include <QDir>

namespace testlib {

void writeSmallBusiness()
{
    const auto write = [](const char *file, const char *root, const QList<PlistRecord> &records) {
        writeFile(platform::paths::bundleFile(QLatin1String(file)), plistOf(root, records));
    };
    write("contacts.xml", "contacts",
          {{{"id", "1"},
            {"company", "0"},
            {"name", "Ann Lee"},
            {"kind", "Individual"},
            {"type", "Customer"},
            {"add1", "High St"}},
           {{"id", "2"}, {"company", "0"}, {"name", "Acme"}, {"kind", "Company"}, {"type", "Customer"}},
           {{"id", "3"}, {"company", "2"}, {"name", "Dee Fox"}, {"kind", "Company Contact"}}});
    write("orders.xml", "orders",
          {{{"id", "10"},
            {"contact", "1"},
            {"ordernum", "INV10"},
            {"title", "Kitchen"},
            {"status", "Order"},
            {"includeBOM", "NO"},
            {"sent", "NO"},
            {"repeats", "NO"}},
           {{"id", "11"},
            {"contact", "3"},
            {"ordernum", "INV11"},
            {"title", "Gate"},
            {"status", "Quote"},
            {"includeBOM", "NO"},
            {"sent", "NO"},
            {"repeats", "NO"}},
           {{"id", "12"},
            {"contact", "0"},
            {"ordernum", "INV12"},
            {"title", "Shed"},
            {"status", "Order"},
            {"includeBOM", "NO"},
            {"sent", "NO"},
            {"repeats", "NO"}}});
    write(
        "items.xml", "products",
        {{{"id", "20"}, {"code", "ITM20"}, {"item", "Bolt"}, {"qty", "10"}, {"price", "2.00"}, {"decreaseQty", "YES"}},
         {{"id", "21"}, {"code", "ITM21"}, {"item", "Nut"}, {"qty", "5"}, {"price", "0.50"}, {"decreaseQty", "NO"}}});
    write("itemsordered.xml", "materials",
          {{{"id", "30"},
            {"order", "10"},
            {"product", "20"},
            {"contact", "1"},
            {"item", "Bolt"},
            {"qty", "3"},
            {"cost", "2.00"},
            {"total", "6.00"}},
           {{"id", "31"},
            {"order", "10"},
            {"product", "0"},
            {"contact", "1"},
            {"item", "Labour"},
            {"qty", "1"},
            {"cost", "40"},
            {"total", "40.00"}},
           {{"id", "32"}, {"order", "12"}, {"product", "21"}, {"contact", "0"}, {"item", "Nut"}, {"qty", "2"}}});
    write("actions.xml", "actions",
          {{{"id", "40"}, {"title", "Ring Ann"}, {"complete", "NO"}, {"alarm", "NO"}, {"alarmacknowledged", "NO"}},
           {{"id", "41"}, {"title", "Order glass"}, {"complete", "NO"}, {"alarm", "NO"}, {"alarmacknowledged", "NO"}}});
    write("bills.xml", "bills",
          {{{"id", "50"}, {"name", "Rent"}, {"amount", "500.00"}, {"datepaid", "01/01/26"}, {"number", "R1"}},
           {{"id", "51"}, {"name", "Power"}, {"amount", "80.00"}, {"datepaid", "05/01/26"}, {"number", "P7"}}});
    writeFile(platform::paths::attachmentsDir() + QStringLiteral("/Order10/plan.txt"), "a plan");
    QDir().mkpath(PrefsController::notepadPath());
    QSettings settings = preferences();
    settings.setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
    for (const char *module : {"QuorvelTimeMmt", "QuorvelDataMmt", "QuorvelAccountMmt"})
        settings.setValue(QLatin1String(module), QStringLiteral("YES"));
}

QList<QVariantMap> recordsOnDisk(const QString &fileName)
{
    const QVariantMap root = platform::plist::readValueFile(platform::paths::bundleFile(fileName)).toMap();
    QList<QVariantMap> records;
    if (root.isEmpty())
        return records;
    const QVariantList list = root.first().toList();
    for (const QVariant &record : list)
        records << record.toMap();
    return records;
}

QVariantMap recordOnDisk(const QString &fileName, const QString &field, const QString &value)
{
    for (const QVariantMap &record : recordsOnDisk(fileName)) {
        if (record.value(field).toString() == value)
            return record;
    }
    return {};
}

}  // namespace testlib
