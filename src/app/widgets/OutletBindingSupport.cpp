#include "app/widgets/OutletBindingSupport.h"
#include "app/widgets/Printing.h"

#include "app/widgets/TableModel.h"
#include "platform/DateReading.h"
#include "platform/outlets/Button.h"
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/ColorWell.h"
#include "platform/outlets/Matrix.h"
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TabView.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "platform/richtext/RichTextFile.h"
#include "store/TableDataSource.h"
#include "store/TableView.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>
#include <memory>

namespace binding {
namespace detail {

QHash<const QObject *, QPointer<Outlet>> &outletsByWidget()
{
    static QHash<const QObject *, QPointer<Outlet>> table;
    return table;
}

QHash<const Outlet *, QPointer<QObject>> &widgetsByOutlet()
{
    static QHash<const Outlet *, QPointer<QObject>> table;
    return table;
}

Outlet *registeredOutlet(const QObject *object)
{
    return outletsByWidget().value(object).data();
}

PrintHandler &currentPrintHandler()
{
    static PrintHandler handler = printWithDialog;
    return handler;
}

// Marks the object as showing the outlet.
void remember(QObject *target, Outlet *outlet)
{
    outletsByWidget().insert(target, outlet);
    QObject::connect(target, &QObject::destroyed, [target] { outletsByWidget().remove(target); });
}

// The common part of every binding: the outlet is connected and knows its
// widget, and asks it to print when the program prints the outlet.
Link *attach(Outlet *outlet, QObject *target)
{
    auto *link = new Link(outlet, target);
    remember(target, outlet);
    widgetsByOutlet().insert(outlet, target);
    outlet->setConnected(true);

    QObject::connect(outlet, &QObject::destroyed, [outlet] { widgetsByOutlet().remove(outlet); });
    QObject::connect(target, &QObject::destroyed, outlet, [outlet, target] {
        // The outlet is absent again unless it has been bound elsewhere since.
        const auto found = widgetsByOutlet().constFind(outlet);
        if (found != widgetsByOutlet().constEnd() && (found.value().isNull() || found.value() == target)) {
            widgetsByOutlet().remove(outlet);
            outlet->setConnected(false);
        }
    });
    if (auto *widget = qobject_cast<QWidget *>(target)) {
        QObject::connect(outlet, &Outlet::printRequested, link, [outlet, widget](bool *taken) {
            if (widgetFor(outlet) != widget)
                return;  // the outlet has been bound to another widget since
            *taken = true;
            currentPrintHandler()(widget);
        });
    }
    return link;
}

// Enabled and hidden, from the outlet. A window is shown only by its
// Window outlet, so a plain outlet may hide one but never shows it.
void showState(const Outlet *outlet, QWidget *widget)
{
    widget->setEnabled(outlet->isEnabled());
    if (outlet->isHidden()) {
        if (!widget->isHidden())
            widget->hide();
    } else if (widget->isHidden() && !widget->isWindow()) {
        widget->show();
    }
}

}  // namespace detail

namespace {

void printWidget(QPrinter &printer, QWidget *widget)
{
    if (auto *text = qobject_cast<QTextEdit *>(widget)) {
        text->print(&printer);
        return;
    }
    if (auto *plain = qobject_cast<QPlainTextEdit *>(widget)) {
        plain->print(&printer);
        return;
    }
    if (auto *table = qobject_cast<QTableView *>(widget)) {
        const auto *model = qobject_cast<const TableModel *>(table->model());
        if (model && model->outlet() && model->dataSource()) {
            QTextDocument document;
            document.setHtml(model->dataSource()->getDataAsHTMLusingTableView(*model->outlet()));
            document.print(&printer);
            return;
        }
    }
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
    const qreal natural = qreal(printer.resolution()) / qMax(1, widget->logicalDpiX());
    const qreal fit = qMin(page.width() / qMax(1, widget->width()), page.height() / qMax(1, widget->height()));
    const qreal scale = qMin(natural, fit);
    painter.scale(scale, scale);
    widget->render(&painter);
}

}  // namespace

namespace detail {

// The platform's print dialog over one set of print settings shared by
// every print of the program.
void printWithDialog(QWidget *widget)
{
    QPrinter &printer = printing::sharedPrinter();
    QPrintDialog dialog(&printer, widget->window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    printWidget(printer, widget);
}

}  // namespace detail

using namespace detail;

Outlet *outletFor(const QWidget *widget)
{
    for (const QWidget *current = widget; current; current = current->parentWidget()) {
        if (Outlet *outlet = registeredOutlet(current))
            return outlet;
    }
    return nullptr;
}

QWidget *widgetFor(const Outlet *outlet)
{
    return qobject_cast<QWidget *>(widgetsByOutlet().value(outlet).data());
}

PrintHandler setPrintHandler(PrintHandler handler)
{
    PrintHandler previous = currentPrintHandler();
    currentPrintHandler() = handler ? std::move(handler) : PrintHandler(printWithDialog);
    return previous;
}

}  // namespace binding
