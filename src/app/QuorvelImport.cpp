// The controller's imports: a first-generation database, kept apart from
// what it replaces, and contacts from a CSV file.
#include "app/Quorvel.h"

#include "accounts/BillManager.h"
#include "contacts/ContactManager.h"
#include "items/ItemManager.h"
#include "orders/BOMManager.h"
#include "orders/OrderManager.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"
#include "platform/Paths.h"
#include "platform/Progress.h"
#include "reports/ReportManager.h"
#include "store/LegacyImport.h"
#include "tasks/ActionManager.h"

#include <QFileInfo>

using platform::localised;

bool Quorvel::importQuorvelDatabaseWithWarning()
{
    const int answer = platform::runAlert(
        localised("Import Quorvel Database"),
        localised("If you continue, an earlier version of Quorvel (v1.x) will be searched for and data will be "
                  "imported. Any existing data will be overwritten. Do you want to continue?"),
        localised("OK"), localised("Cancel"));
    return answer == 1 && importQuorvelDatabase();
}

bool Quorvel::importQuorvelDatabase()
{
    const QString file = platform::paths::legacyDatabaseFile();
    if (!QFileInfo::exists(file)) {
        platform::runAlert(localised("Import Quorvel Database"), localised("An Quorvel database hasn't been found."),
                           localised("OK"));
        return false;
    }
    // What is there now is kept whole before anything is emptied.
    QString why;
    const QString copy = legacyImport::keepCopyOfBundle(platform::paths::bundleDir(), platform::now(), &why);
    if (copy.isEmpty() && QFileInfo(platform::paths::bundleDir()).isDir()) {
        platform::runAlert(
            localised("Nothing was imported."),
            localised("Your database could not be kept aside first, so it was left as it is: %1").arg(why));
        return false;
    }

    const QString what = localised("Importing the first-generation database");
    reportManager->clear();
    // What was deleted before cannot come back into the imported data.
    deletionHistory->clear();
    DatabaseBundle &bundle = *database;
    const legacyImport::Counts counts = legacyImport::importFile(
        file,
        {bundle.collection(DatabaseBundle::Contacts), bundle.collection(DatabaseBundle::Orders),
         bundle.collection(DatabaseBundle::Items), bundle.collection(DatabaseBundle::Materials),
         bundle.collection(DatabaseBundle::Bills), bundle.collection(DatabaseBundle::Actions)},
        [&what](qint64 done, qint64 total) { platform::reportProgress(what, done, total); });
    itemManager->filter();
    actionManager->filter();
    contactManager->filter();
    orderManager->filter();
    billManager->filter();
    legacyImport::copyAttachments(platform::paths::legacyAttachmentsDir(),
                                  platform::paths::bundleDir() + QStringLiteral("/Attachments"));
    setChangeFlag();

    QString told = localised("%1 contacts, %2 orders (%3 with their contact), %4 order lines, %5 stock items, %6 "
                             "tasks and %7 bills were imported. They are saved as you work, and all of them when "
                             "Quorvel quits.")
                       .arg(counts.contacts)
                       .arg(counts.orders)
                       .arg(counts.linked)
                       .arg(counts.materials)
                       .arg(counts.items)
                       .arg(counts.actions)
                       .arg(counts.bills);
    if (!copy.isEmpty())
        told += QLatin1Char('\n') + localised("Your data as it was before the import is kept in %1.").arg(copy);
    platform::runAlert(localised("Import finished"), told, localised("OK"));
    return counts.records() > 0;
}

void Quorvel::importContacts()
{
    mainWindow->makeKeyAndOrderFront();
    platform::FilePanelRequest request;
    request.kind = platform::FilePanelRequest::Open;
    request.title = localised("Import Contacts");
    request.fileTypes = QStringList{QStringLiteral("csv")};
    if (const std::optional<QString> path = platform::runFilePanel(request))
        openPanelDidEnd(*path);
}

bool Quorvel::openPanelDidEnd(const QString &path)
{
    const contactsCsv::Preview preview = contactsCsv::preview(path);
    if (preview.headings.isEmpty()) {
        platform::runAlert(localised("These contacts cannot be imported."),
                           localised("%1 could not be read: %2").arg(QFileInfo(path).fileName(), preview.problem));
        return false;
    }
    QList<contactsCsv::Field> mapping = preview.mapping;
    if (chooseContactColumns) {
        const auto chosen = chooseContactColumns(preview);
        if (!chosen)
            return false;
        mapping = *chosen;
    }
    const QString what = localised("Importing contacts");
    const contactsCsv::Outcome outcome
        = contactsCsv::import(path, mapping, *contactManager, false,
                              [&what](qint64 done, qint64 total) { platform::reportProgress(what, done, total); });
    contactManager->filter();
    if (outcome.imported > 0)
        writeDatabase(contactManager.get());
    platform::runAlert(localised("Contacts imported"), outcome.summary(), localised("OK"));
    return outcome.imported > 0;
}
