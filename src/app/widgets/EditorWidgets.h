#pragma once
// The small pieces every editor window is built from: a line edit, a pop-up
// or a notes box bound to its outlet, a label that gives its field a
// mnemonic, buttons that never take Enter from the window's OK button, rows
// of widgets side by side, and the rows of a form.
#include <QList>
#include <QString>
#include <functional>
#include <initializer_list>

class PopUp;
class QComboBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMimeData;
class QPlainTextEdit;
class QPushButton;
class QWidget;
class TextField;
class TextView;

namespace editor {

QLineEdit *lineEdit(TextField *outlet, const QString &name, QWidget *parent = nullptr);
QComboBox *popUp(PopUp *outlet, const QString &name);
// A pop-up whose choices are suggestions: any other title can be typed.
QComboBox *editablePopUp(PopUp *outlet, const QString &name);
// Several lines of text; Tab moves on to the next field instead of typing a tab.
QPlainTextEdit *notes(TextView *outlet, const QString &name);
QLabel *labelFor(const QString &text, QWidget *buddy);
QPushButton *pushButton(const QString &text, const QString &name);
// A button that does `action` when clicked.
QPushButton *pushButton(const QString &text, const QString &name, std::function<void()> action);
// The buttons every contact form has: the postal block to the pasteboard,
// and the mail program on the e-mail address.
QPushButton *copyAddressButton(std::function<void()> action);
QPushButton *emailButton(std::function<void()> action);

// The widgets side by side; the first takes `firstStretch` of the spare room.
QHBoxLayout *row(std::initializer_list<QWidget *> widgets, int firstStretch = 0);
// The widgets side by side at the left, the spare room after them.
QHBoxLayout *leftRow(std::initializer_list<QWidget *> widgets);

// The rows of a form. A label names its field (the field is the label's
// buddy, so a mnemonic in the label moves the focus there); an empty label
// makes the field a further line of the row above. Every field added here
// joins the tab chain, when the form has one.
struct Form
{
    QFormLayout *layout;
    QList<QWidget *> *tabChain = nullptr;
    // Pop-ups as wide as this many characters; 0 leaves them as wide as
    // their longest item.
    int popUpLength = 0;

    QLineEdit *field(TextField *outlet, const QString &name, const QString &label);
    QComboBox *popUp(PopUp *outlet, const QString &name, const QString &label, bool editable = false);
    QPlainTextEdit *notes(TextView *outlet, const QString &name, const QString &label);
    // A field with a button beside it; the field takes the spare room.
    void withButton(const QString &label, QWidget *field, QPushButton *button);

private:
    void add(const QString &label, QWidget *field);
};

// The first local file a drag carries, a null text when it carries none.
QString firstLocalFile(const QMimeData *data);

}  // namespace editor
