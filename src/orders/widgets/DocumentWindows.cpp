#include "orders/widgets/DocumentWindows.h"

#include "orders/BOMManager.h"
#include "orders/CustomInvoiceController.h"
#include "orders/Invoice.h"
#include "orders/Order.h"
#include "orders/OrderManager.h"
#include "orders/widgets/CustomInvoiceWindow.h"
#include "orders/widgets/InvoiceSheetWindow.h"

DocumentWindows::DocumentWindows(QuorvelServices &servicesGiven, BOMManager &lines, QObject *parent)
    : QObject(parent),
      services(servicesGiven),
      bom(lines)
{ }

DocumentWindows::~DocumentWindows()
{
    for (const QPointer<QWidget> &window : std::as_const(windows))
        delete window.data();
}

void DocumentWindows::install(OrderManager &manager)
{
    manager.openTemplateWindow = [this, &manager](const QString &name, std::shared_ptr<Order> order) {
        auto *window = new CustomInvoiceWindow(&services);
        windows << window;
        CustomInvoiceController &invoice = window->controller();
        invoice.onAttachmentAdded = [&manager](int orderId) { manager.attachmentAdded(orderId); };
        invoice.setWhichStationary(name);
        invoice.setbomDataSource(&bom);
        invoice.setOrder(std::move(order));
    };
    manager.openInvoiceSheet = [this](std::shared_ptr<Order> order) {
        auto *window = new InvoiceSheetWindow(&services);
        windows << window;
        Invoice &sheet = window->invoice();
        sheet.setDataSource(&bom);
        sheet.setDetailsForThisOrder(order.get(), order->getContact());
        window->showSheet();
        sheet.invoiceWindow->center();
        sheet.invoiceWindow->makeKeyAndOrderFront();
    };
}

QList<QWidget *> DocumentWindows::openWindows() const
{
    QList<QWidget *> open;
    for (const QPointer<QWidget> &window : windows) {
        if (window)
            open << window.data();
    }
    return open;
}
