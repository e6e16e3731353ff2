#pragma once
// The small pieces every editor window is built from: a line edit or a
// pop-up bound to its outlet, a label that gives its field a mnemonic, and a
// button that never takes Enter from the window's OK button.
#include <QString>

class PopUp;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;
class TextField;

namespace editor {

QLineEdit *lineEdit(TextField *outlet, const QString &name, QWidget *parent = nullptr);
QComboBox *popUp(PopUp *outlet, const QString &name);
QLabel *labelFor(const QString &text, QWidget *buddy);
QPushButton *pushButton(const QString &text, const QString &name);

}  // namespace editor
