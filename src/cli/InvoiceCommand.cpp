#include "cli/InvoiceCommand.h"

#include "app/Quorvel.h"
#include "cli/CliOptions.h"
#include "cli/CliOutput.h"
#include "cli/CliUsage.h"
#include "contacts/Contact.h"
#include "orders/BOMManager.h"
#include "orders/CustomInvoiceController.h"
#include "orders/DocumentOutput.h"
#include "orders/Invoice.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/Stationery.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/StringTable.h"
#include "platform/outlets/TextField.h"
#include "store/PrefsController.h"

#include <QBuffer>
#include <QFileInfo>
#include <QLocale>
#include <QSettings>
#include <QTextDocument>

namespace cli {

namespace {

// The preferences an invoice shows: the date order, the currency and the
// words for orders and the bill of materials.
void readInvoicePreferences(PrefsController &prefs)
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    prefs.setUKFormat(settings.value(QStringLiteral("QuorvelDateFormat")).toString() != QLatin1String("1"));
    const std::pair<QString, TextField *> fields[] = {
        {QStringLiteral("QuorvelCurrency"), prefs.currencyField},
        {QStringLiteral("QuorvelTermOrder"), prefs.termOrder},
    };
    for (const auto &[key, field] : fields) {
        if (settings.contains(key))
            field->setStringValue(settings.value(key).toString());
    }
}

std::shared_ptr<Order> findOrder(const OrderManager &orders, const QString &number, int id)
{
    for (int n = 0; n < orders.getCount(); ++n) {
        auto *order = static_cast<Order *>(orders.getnthItem(n));
        if (id > 0 ? order->getID() == id : order->getOrderNum() == number)
            return shareOf(order);
    }
    return nullptr;
}

}  // namespace

int invoiceCommand(const QStringList &arguments, QIODevice &out, QIODevice &err)
{
    QString why;
    // --sheet is a switch: it takes no value.
    QStringList rest = arguments;
    const bool sheet = rest.removeAll(QStringLiteral("--sheet")) > 0;
    const auto options = parseOptions(
        rest, {QStringLiteral("id"), QStringLiteral("stationery"), QStringLiteral("format"), QStringLiteral("output")},
        why);
    if (!options)
        return usageError(err, why);
    int id = 0;
    QString number;
    if (options->values.contains(QStringLiteral("id"))) {
        bool ok = false;
        id = options->values.value(QStringLiteral("id")).toInt(&ok);
        if (!ok || id <= 0)
            return usageError(err, QStringLiteral("--id needs an order's id, a whole number above 0"));
        if (!options->positional.isEmpty())
            return usageError(err, QStringLiteral("give an order number or --id, not both"));
    } else {
        if (options->positional.size() != 1)
            return usageError(err, QStringLiteral("invoice needs one ORDER (its number, as INV12) or --id N"));
        number = options->positional.first();
    }
    const QString output = options->values.value(QStringLiteral("output"));
    QString format = options->values.value(QStringLiteral("format"));
    if (format.isEmpty()) {
        const QString suffix = QFileInfo(output).suffix().toLower();
        format = suffix == QLatin1String("rtf") || suffix == QLatin1String("txt") ? suffix : QStringLiteral("pdf");
    }
    if (format != QLatin1String("pdf") && format != QLatin1String("rtf") && format != QLatin1String("txt"))
        return usageError(err, QStringLiteral("unknown format \"%1\" (pdf, rtf or txt)").arg(format));
    const QString stationeryName = options->values.value(QStringLiteral("stationery"), QStringLiteral("Invoice"));
    if (sheet && options->values.contains(QStringLiteral("stationery")))
        return usageError(err, QStringLiteral("--sheet prints the plain sheet: it takes no --stationery"));
    if (!stationery::isSafeName(stationeryName)) {
        say(err,
            QStringLiteral("quorvel-cli: \"%1\" is not a name of stationery (a name, not a path)").arg(stationeryName));
        return Failure;
    }
    if (!QFileInfo(platform::paths::bundleDir()).isDir()) {
        say(err, QStringLiteral("quorvel-cli: no database at %1").arg(platform::paths::bundleDir()));
        return Failure;
    }

    // The log (stationery installed, a placeholder step) goes to the error stream.
    const platform::LogHandler previousLog
        = platform::setLogHandler([&err](platform::LogChannel channel, const QString &text) {
              if (channel == platform::LogChannel::Log)
                  say(err, QStringLiteral("quorvel: ") + text);
          });
    struct RestoreLog
    {
        platform::LogHandler previous;
        ~RestoreLog() { platform::setLogHandler(previous); }
    } restoreLog{previousLog};

    platform::installStringTable();
    Quorvel quorvel;
    quorvel.setStartRepeatChecker(false);
    readInvoicePreferences(*quorvel.getPrefsController());
    const bool allRead = quorvel.getDatabase().readDatabase().ok();
    if (!sheet) {
        stationery::install();
        if (!stationery::names().contains(stationeryName)) {
            say(err,
                QStringLiteral("quorvel-cli: no stationery \"%1\"; there is: %2")
                    .arg(stationeryName, stationery::names().join(QStringLiteral(", "))));
            return Failure;
        }
    }
    const std::shared_ptr<Order> order = findOrder(*quorvel.getOrderManager(), number, id);
    if (!order) {
        say(err,
            id > 0 ? QStringLiteral("quorvel-cli: no order with the id %1").arg(id)
                   : QStringLiteral("quorvel-cli: no order numbered \"%1\"").arg(number));
        return allRead ? Failure : UnreadableFile;
    }
    // As the order editor does when it opens the order: its lines are the
    // current ones, and its contact shows its company's name.
    quorvel.setCurrentOrder(order->getID());
    quorvel.getBOMManager()->setCurrentOrder(order->getID());
    if (Contact *contact = order->getContact())
        contact->setCompanyName(quorvel.getContactNameforId(QString::number(contact->getCompany())));

    QTextDocument *document = nullptr;
    CustomInvoiceController invoice(&quorvel);
    Invoice plainSheet(&quorvel);
    if (sheet) {
        plainSheet.setDataSource(quorvel.getBOMManager());
        plainSheet.setDetailsForThisOrder(order.get(), order->getContact());
        document = plainSheet.sheetDocument();
    } else {
        invoice.setWhichStationary(stationeryName);
        invoice.setbomDataSource(quorvel.getBOMManager());
        invoice.setOrder(order);
        if (!invoice.problem().isEmpty()) {
            say(err,
                QStringLiteral("quorvel-cli: the stationery \"%1\" could not be read: %2")
                    .arg(stationeryName, invoice.problem()));
            return Failure;
        }
        document = invoice.invoiceTextView;
    }

    QByteArray bytes;
    if (format == QLatin1String("pdf")) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        documents::writePdf(*document, buffer, documents::paperFor(QLocale()));
    } else if (format == QLatin1String("rtf")) {
        bytes = documents::rtfBytes(*document);
    } else {
        bytes = documents::plainTextBytes(*document);
    }
    if (!writeOutput(bytes, output, out, err))
        return Failure;
    return allRead ? Success : UnreadableFile;
}

}  // namespace cli
