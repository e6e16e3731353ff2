#include "orders/widgets/InvoiceSheetWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/Printing.h"
#include "app/widgets/WindowPlacement.h"
#include "orders/DocumentOutput.h"
#include "orders/Invoice.h"
#include "platform/Alerts.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextDocument>
#include <QTextEdit>
#include <QVBoxLayout>

using platform::localised;

InvoiceSheetWindow::InvoiceSheetWindow(QuorvelServices *services, QWidget *parent)
    : QDialog(parent),
      sheet(new Invoice(services, this)),
      view(new QTextEdit)
{
    setObjectName(QStringLiteral("invoiceWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    view->setObjectName(QStringLiteral("invoiceSheet"));
    view->setReadOnly(true);

    sheet->printDocument = [this](QTextDocument &document) { printing::printDocument(document, this); };
    auto *buttons = new QDialogButtonBox;
    QPushButton *print = editor::pushButton(localised("Print..."), QStringLiteral("printSheetButton"));
    QPushButton *pdf = editor::pushButton(localised("Save as PDF..."), QStringLiteral("pdfSheetButton"));
    QPushButton *header = editor::pushButton(localised("Edit Header..."), QStringLiteral("editHeaderButton"));
    QPushButton *footer = editor::pushButton(localised("Edit Footer..."), QStringLiteral("editFooterButton"));
    buttons->addButton(header, QDialogButtonBox::ActionRole);
    buttons->addButton(footer, QDialogButtonBox::ActionRole);
    buttons->addButton(pdf, QDialogButtonBox::ActionRole);
    buttons->addButton(print, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Close);
    print->setDefault(true);
    print->setShortcut(QKeySequence::Print);
    connect(print, &QPushButton::clicked, this, [this] { sheet->print(); });
    connect(pdf, &QPushButton::clicked, this, [this] {
        platform::FilePanelRequest request;
        request.kind = platform::FilePanelRequest::Save;
        request.title = localised("Save as PDF");
        request.fileTypes = QStringList{QStringLiteral("pdf")};
        request.suggestedName = localised("Invoice") + QStringLiteral(".pdf");
        const std::optional<QString> path = platform::runFilePanel(request);
        QString error;
        if (path && !documents::writePdfFile(*sheet->sheetDocument(), *path, &error))
            platform::runAlert(localised("The PDF could not be saved."),
                               localised("%1 could not be written: %2").arg(*path, error));
    });
    connect(header, &QPushButton::clicked, this, [this] { sheet->editInvoiceHeader(); });
    connect(footer, &QPushButton::clicked, this, [this] { sheet->editInvoiceFooter(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(view, 1);
    layout->addWidget(buttons);
    binding::bind(sheet->invoiceWindow, this);
    placement::remember(this, QStringLiteral("QuorvelInvoiceSheetWindowGeometry"), QSize(760, 880));
}

InvoiceSheetWindow::~InvoiceSheetWindow() = default;

void InvoiceSheetWindow::showSheet()
{
    view->setDocument(sheet->sheetDocument()->clone(view));
}
