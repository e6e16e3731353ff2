#pragma once
// What every editor window does alike: it is a non-modal dialog over an
// editor's outlets with OK (the default button) and Cancel at the bottom;
// OK stores the record, while Cancel, Escape and the close box abandon it
// and hide the window. Showing the window puts the focus in its first
// field, when it names one. The window remembers its size and place.
#include <QDialog>
#include <QList>
#include <functional>

class QDialogButtonBox;
class QLayout;
class QPushButton;
class Window;

class EditorDialog : public QDialog
{
    Q_OBJECT
public:
    EditorDialog(const QString &name, const QString &title, std::function<void()> cancel, QWidget *parent);

public Q_SLOTS:
    // Escape, the Cancel button and the close box.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;

    // Lays the window out: the body, which takes the spare room, a row of
    // commands below it (when there is one) and the buttons: the extra ones,
    // OK, which calls `finish`, and Cancel. OK and the extra buttons first
    // end the editing of the field being edited. Tab visits the tab chain in
    // order and then the buttons; a window that leaves its tab chain empty
    // keeps the order its widgets were laid out in.
    void layOut(QLayout *body, QLayout *below, std::function<void()> finish, QList<QPushButton *> extra = {});
    // Binds the window to its outlet and restores its size and place (or
    // gives it the default size).
    void attach(Window *outlet, const QString &placementKey, const QSize &defaultSize);

    // The field that has the focus when the window shows; none leaves the
    // focus where the dialog puts it.
    QWidget *firstField = nullptr;
    // The widgets in the order Tab visits them.
    QList<QWidget *> tabChain;

private:
    std::function<void()> cancelling;
};
