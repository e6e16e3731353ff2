#include "app/widgets/EditorWidgets.h"

#include "app/widgets/OutletBinding.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace editor {

QLineEdit *lineEdit(TextField *outlet, const QString &name, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(name);
    binding::bind(outlet, edit);
    return edit;
}

QComboBox *popUp(PopUp *outlet, const QString &name)
{
    auto *box = new QComboBox;
    box->setObjectName(name);
    binding::bind(outlet, box);
    return box;
}

QLabel *labelFor(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QPushButton *pushButton(const QString &text, const QString &name)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);  // Enter belongs to OK
    return button;
}

}  // namespace editor
