#include "app/widgets/NotepadWindow.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"

#include <QShortcut>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {
const QString geometryKey = QStringLiteral("QuorvelNotepadWindowGeometry");
}

NotepadWindow::NotepadWindow(Window *notePad, TextView *notepadView, QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("notePad"));
    setWindowTitle(platform::localised("Notepad"));

    textEdit = new QTextEdit(this);
    textEdit->setObjectName(QStringLiteral("notepadView"));
    textEdit->setAcceptRichText(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(textEdit);

    if (notepadView)
        binding::bind(notepadView, textEdit);
    if (notePad)
        binding::bind(notePad, this);
    placement::remember(this, geometryKey, QSize(480, 560));
    // Escape puts the notepad away, as it does every other window (what is
    // written is kept: the notepad is saved as it changes).
    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
}

// A notepad still open when the program ends keeps its place too.
NotepadWindow::~NotepadWindow()
{
    if (isVisible())
        placement::save(this, geometryKey);
}
