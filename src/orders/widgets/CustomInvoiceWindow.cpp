#include "orders/widgets/CustomInvoiceWindow.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/Printing.h"
#include "app/widgets/WindowPlacement.h"
#include "orders/CustomInvoiceController.h"
#include "platform/Localised.h"

#include <QAction>
#include <QFile>
#include <QIcon>
#include <QKeySequence>
#include <QShortcut>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolBar>

using platform::localised;

namespace {

QString iconPath(const QString &name)
{
    return QStringLiteral(":/core/icons/%1.svg").arg(name);
}

// The keys of the toolbar's commands.
QKeySequence shortcutFor(const QString &identifier)
{
    if (identifier == QLatin1String("printItemIdentifier"))
        return QKeySequence::Print;
    if (identifier == QLatin1String("pdfItemIdentifier"))
        return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    if (identifier == QLatin1String("emailItemIdentifier"))
        return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M);
    return {};
}

}  // namespace

CustomInvoiceWindow::CustomInvoiceWindow(QuorvelServices *services, QWidget *parent)
    : QMainWindow(parent),
      invoice(new CustomInvoiceController(services, this)),
      text(new QTextEdit)
{
    setObjectName(QStringLiteral("customInvoiceWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    text->setObjectName(QStringLiteral("invoiceTextView"));
    text->setDocument(invoice->invoiceTextView);
    text->setAcceptRichText(true);
    setCentralWidget(text);

    invoice->imageExists = [](const QString &name) { return QFile::exists(iconPath(name)); };
    invoice->printDocument = [this](QTextDocument &document) { printing::printDocument(document, this); };
    buildToolBar();

    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    // The title marks a document changed since it was filled.
    connect(invoice->invoiceTextView, &QTextDocument::modificationChanged, this,
            [this](bool changed) { invoice->window->setDocumentEdited(changed); });

    binding::bind(invoice->window, this);
    placement::remember(this, QStringLiteral("QuorvelCustomInvoiceWindowGeometry"), QSize(820, 900));
}

CustomInvoiceWindow::~CustomInvoiceWindow() = default;

void CustomInvoiceWindow::buildToolBar()
{
    const QString identifier = CustomInvoiceController::toolbarIdentifier();
    tools = addToolBar(localised("Invoice"));
    tools->setObjectName(identifier);
    tools->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    tools->setIconSize(QSize(24, 24));
    tools->setMovable(false);
    for (const QString &item : invoice->toolbarDefaultItemIdentifiers(identifier)) {
        const ToolbarItem made = invoice->toolbarItemForItemIdentifier(item);
        if (!made.action)
            continue;
        QAction *action = tools->addAction(QIcon(iconPath(made.image)), made.label);
        action->setObjectName(item);
        action->setShortcut(shortcutFor(item));
        action->setToolTip(
            QStringLiteral("%1 (%2)").arg(made.label, action->shortcut().toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, [action = made.action] { action(); });
    }
}
