#pragma once
// The window of one filled stationery document: the document in an editable
// rich-text view, so that a last change can be made before it goes out, and
// the toolbar "quorvelCustomInvoiceToolBar" with Print, Save as PDF and
// E-mail. It owns its controller and goes when closed (Escape closes it);
// it remembers its size, and the title marks a document edited since it
// was filled.
#include <QMainWindow>

class CustomInvoiceController;
class QTextEdit;
class QToolBar;
class QuorvelServices;

class CustomInvoiceWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit CustomInvoiceWindow(QuorvelServices *services, QWidget *parent = nullptr);
    ~CustomInvoiceWindow() override;

    CustomInvoiceController &controller() const { return *invoice; }
    QTextEdit *textView() const { return text; }
    QToolBar *toolBar() const { return tools; }

private:
    void buildToolBar();

    CustomInvoiceController *invoice;
    QTextEdit *text;
    QToolBar *tools = nullptr;
};
