#pragma once
// The windows an order editor opens to print: the stationery filled for its
// order (CustomInvoiceWindow) and the plain invoice sheet
// (InvoiceSheetWindow). Installed on the order editor and the checkout; the
// windows it opens go when closed, and any still open go with it.
#include <QList>
#include <QObject>
#include <QPointer>

class BOMManager;
class OrderManager;
class QuorvelServices;
class QWidget;

class DocumentWindows : public QObject
{
    Q_OBJECT
public:
    DocumentWindows(QuorvelServices &services, BOMManager &bom, QObject *parent = nullptr);
    ~DocumentWindows() override;

    // Sets the manager's hooks so that printing opens these windows.
    void install(OrderManager &manager);
    // The windows open now, the newest last.
    QList<QWidget *> openWindows() const;

private:
    QuorvelServices &services;
    BOMManager &bom;
    QList<QPointer<QWidget>> windows;
};
