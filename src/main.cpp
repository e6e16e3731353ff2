// The program's entry: the main window over the database in the
// application-support folder (or the folder given with --data-dir).
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "app/widgets/PlatformServices.h"
#include "app/widgets/SingleInstance.h"
#include "checkout/CheckoutManager.h"
#include "checkout/widgets/CheckoutWindow.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/widgets/OrderEditorWindow.h"
#include "platform/Alerts.h"
#include "platform/Localised.h"
#include "platform/Paths.h"
#include "platform/StringTable.h"
#include "platform/TerminationSignals.h"
#include "store/DatabaseLock.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

using platform::localised;

namespace {

// A start for a picture of the main window: a welcome panel that a first
// start would show is answered at once with every module on.
void answerWelcomePanelAutomatically()
{
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        for (QCheckBox *box : dialog->findChildren<QCheckBox *>())
            box->setChecked(!box->objectName().contains(QLatin1String("dontShow")));
        dialog->accept();
    });
}

// The order with that number, none when there is no such order.
Order *orderNumbered(const OrderManager &orders, const QString &number)
{
    for (int n = 0; n < orders.getCount(); ++n) {
        auto *order = static_cast<Order *>(orders.getnthItem(n));
        if (order->getOrderNum() == number)
            return order;
    }
    return nullptr;
}

}  // namespace

int main(int argc, char **argv)
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVEL_VERSION));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Quorvel: run a small business."));
    options.addHelpOption();
    options.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
                                     QStringLiteral("Use DIR as the application-support folder (the preferences "
                                                    "are then kept in DIR/Quorvel too)."),
                                     QStringLiteral("DIR"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Start, render the main window (the checkout or the order "
                                                       "editor when it is open) to the PNG FILE and exit without "
                                                       "saving."),
                                        QStringLiteral("FILE"));
    const QCommandLineOption timing(QStringLiteral("startup-time"),
                                    QStringLiteral("Print the time to a usable main window on standard error."));
    const QCommandLineOption tab(QStringLiteral("tab"),
                                 QStringLiteral("Show the tab with identifier ID (1, 2, 3, pro, pro2, pro3) at start."),
                                 QStringLiteral("ID"));
    const QCommandLineOption checkout(QStringLiteral("checkout"),
                                      QStringLiteral("Open the checkout on a new sale at start (a shop counter)."));
    const QCommandLineOption checkoutOrder(
        QStringLiteral("checkout-order"),
        QStringLiteral("Open the checkout at start on the order numbered NUMBER (as INV12), to take payment on it."),
        QStringLiteral("NUMBER"));
    const QCommandLineOption editOrder(
        QStringLiteral("edit-order"),
        QStringLiteral("Open the order numbered NUMBER (as INV12) in the order editor at start."),
        QStringLiteral("NUMBER"));
    options.addOption(tab);
    options.addOption(editOrder);
    options.addOption(checkout);
    options.addOption(checkoutOrder);
    options.addOption(dataDir);
    options.addOption(screenshot);
    options.addOption(timing);
    options.process(app);
    if (options.isSet(dataDir))
        platform::paths::useDataDir(options.value(dataDir));

    platform::installStringTable();
    platformServices::install();

    if (options.isSet(screenshot)) {
        // A picture never waits for an answer: an alert takes its default
        // button and is said on standard error.
        platform::setAlertHandler([](const platform::Alert &alert) {
            std::fprintf(stderr, "quorvel: %s (answered with its default button)\n", qPrintable(alert.message));
            return 1;
        });
    }
    // One program per data folder. A picture never writes, so it needs
    // neither the lock nor the socket.
    DatabaseLock lock;
    SingleInstance instance;
    if (!options.isSet(screenshot)) {
        if (SingleInstance::askRunningToShow(DatabaseLock::serverName()))
            return 0;
        if (!lock.tryLock()) {
            platform::runAlert(localised("The database is open in another Quorvel."),
                               localised("%1 is being used by %2. Quit that Quorvel, or wait until the command "
                                         "using it has finished, and start again.")
                                   .arg(platform::paths::bundleDir(), lock.holder()),
                               localised("Quit"));
            return 1;
        }
    }
    Quorvel quorvel;
    ApplicationWindows windows(quorvel);
    if (options.isSet(screenshot))
        answerWelcomePanelAutomatically();
    else
        instance.listen(DatabaseLock::serverName(), [&windows] { windows.showMainWindow(); });
    windows.start();
    if (options.isSet(tab))
        quorvel.mainTabView->selectTabViewItemWithIdentifier(options.value(tab));
    if (options.isSet(checkoutOrder)) {
        Order *order = orderNumbered(*quorvel.getOrderManager(), options.value(checkoutOrder));
        if (!order) {
            std::fprintf(stderr, "quorvel: no order numbered %s\n", qPrintable(options.value(checkoutOrder)));
            return 2;
        }
        quorvel.getCheckoutManager()->edit(order);
    } else if (options.isSet(checkout)) {
        quorvel.getCheckoutManager()->edit(nullptr);
    } else if (options.isSet(editOrder)) {
        Order *order = orderNumbered(*quorvel.getOrderManager(), options.value(editOrder));
        if (!order) {
            std::fprintf(stderr, "quorvel: no order numbered %s\n", qPrintable(options.value(editOrder)));
            return 2;
        }
        quorvel.getOrderManager()->editOrder(order);
    }

    if (options.isSet(timing) || options.isSet(screenshot)) {
        QApplication::processEvents();
        if (options.isSet(timing))
            std::fprintf(stderr, "quorvel: usable main window after %lld ms\n",
                         static_cast<long long>(sinceStart.elapsed()));
    }
    if (options.isSet(screenshot)) {
        QWidget *front = quorvel.getCheckoutManager()->isOpen() ? static_cast<QWidget *>(windows.checkoutWindow())
            : options.isSet(editOrder)                          ? static_cast<QWidget *>(windows.orderEditorWindow())
                                                                : windows.mainWindow();
        const bool saved = front->grab().save(options.value(screenshot), "PNG");
        if (!saved)
            std::fprintf(stderr, "quorvel: cannot write %s\n", qPrintable(options.value(screenshot)));
        return saved ? 0 : 1;
    }
    // The session ends (logout, shutdown, kill): saved as at Quit.
    platform::onTerminationSignal([&windows] { windows.terminate(); });
    return app.exec();
}
