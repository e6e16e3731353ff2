#pragma once
// The notepad: one rich-text page, kept by the PrefsController in the
// database bundle. The window remembers its size and place.
#include <QWidget>

class QTextEdit;
class TextView;
class Window;

class NotepadWindow : public QWidget
{
    Q_OBJECT
public:
    NotepadWindow(Window *notePad, TextView *notepadView, QWidget *parent = nullptr);
    ~NotepadWindow() override;

    QTextEdit *editor() const { return textEdit; }

private:
    QTextEdit *textEdit = nullptr;
};
