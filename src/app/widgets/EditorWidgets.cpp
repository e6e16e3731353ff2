#include "app/widgets/EditorWidgets.h"

#include "app/widgets/OutletBinding.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>

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

QComboBox *editablePopUp(PopUp *outlet, const QString &name)
{
    auto *box = new QComboBox;
    box->setObjectName(name);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::InsertAtBottom);
    binding::bind(outlet, box);
    return box;
}

QPlainTextEdit *notes(TextView *outlet, const QString &name)
{
    auto *text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setTabChangesFocus(true);
    binding::bind(outlet, text);
    return text;
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

QPushButton *pushButton(const QString &text, const QString &name, std::function<void()> action)
{
    QPushButton *button = pushButton(text, name);
    QObject::connect(button, &QPushButton::clicked, button, std::move(action));
    return button;
}

QPushButton *copyAddressButton(std::function<void()> action)
{
    return pushButton(platform::localised("Copy Address"), QStringLiteral("copyContactButton"), std::move(action));
}

QPushButton *emailButton(std::function<void()> action)
{
    return pushButton(platform::localised("E-mail"), QStringLiteral("sendEmailButton"), std::move(action));
}

QHBoxLayout *row(std::initializer_list<QWidget *> widgets, int firstStretch)
{
    auto *layout = new QHBoxLayout;
    for (QWidget *widget : widgets)
        layout->addWidget(widget, layout->count() == 0 ? firstStretch : 0);
    return layout;
}

QHBoxLayout *leftRow(std::initializer_list<QWidget *> widgets)
{
    QHBoxLayout *layout = row(widgets);
    layout->addStretch(1);
    return layout;
}

void Form::add(const QString &label, QWidget *field)
{
    if (label.isEmpty())
        layout->addRow(QString(), field);
    else
        layout->addRow(labelFor(label, field), field);
    if (tabChain)
        *tabChain << field;
}

QLineEdit *Form::field(TextField *outlet, const QString &name, const QString &label)
{
    QLineEdit *edit = lineEdit(outlet, name);
    add(label, edit);
    return edit;
}

QComboBox *Form::popUp(PopUp *outlet, const QString &name, const QString &label, bool editable)
{
    QComboBox *box = editable ? editor::editablePopUp(outlet, name) : editor::popUp(outlet, name);
    if (popUpLength > 0) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(popUpLength);
    }
    add(label, box);
    return box;
}

QPlainTextEdit *Form::notes(TextView *outlet, const QString &name, const QString &label)
{
    QPlainTextEdit *text = editor::notes(outlet, name);
    add(label, text);
    return text;
}

void Form::withButton(const QString &label, QWidget *field, QPushButton *button)
{
    layout->addRow(labelFor(label, field), row({field, button}, 1));
    if (tabChain)
        *tabChain << field << button;
}

QString firstLocalFile(const QMimeData *data)
{
    if (!data || !data->hasUrls())
        return {};
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && !url.toLocalFile().isEmpty())
            return url.toLocalFile();
    }
    return {};
}

}  // namespace editor
