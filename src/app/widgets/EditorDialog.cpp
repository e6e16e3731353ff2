#include "app/widgets/EditorDialog.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;

EditorDialog::EditorDialog(const QString &name, const QString &title, std::function<void()> cancel, QWidget *parent)
    : QDialog(parent),
      cancelling(std::move(cancel))
{
    setObjectName(name);
    setWindowTitle(title);
    setModal(false);
    setSizeGripEnabled(true);
}

void EditorDialog::layOut(QLayout *body, QLayout *below, std::function<void()> finish, QList<QPushButton *> extra)
{
    auto *buttons = new QDialogButtonBox(this);
    // A command of the window takes the fields as their formatters make them,
    // also the one still being edited.
    for (QPushButton *button : extra) {
        buttons->addButton(button, QDialogButtonBox::ActionRole);
        connect(button, &QPushButton::pressed, this, [this] { binding::commitEditing(this); });
    }
    QPushButton *ok = buttons->addButton(localised("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    QPushButton *cancel = buttons->addButton(localised("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, [this, finish = std::move(finish)] {
        binding::commitEditing(this);
        finish();
    });
    connect(cancel, &QPushButton::clicked, this, &EditorDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    if (below)
        layout->addLayout(below);
    layout->addWidget(buttons);
    if (tabChain.isEmpty())
        return;
    for (QPushButton *button : extra)
        tabChain << button;
    tabChain << ok << cancel;
    for (int i = 1; i < tabChain.size(); ++i)
        setTabOrder(tabChain.at(i - 1), tabChain.at(i));
}

void EditorDialog::attach(Window *outlet, const QString &placementKey, const QSize &defaultSize)
{
    binding::bind(outlet, this);
    placement::remember(this, placementKey, defaultSize);
}

void EditorDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (firstField)
        firstField->setFocus(Qt::OtherFocusReason);
}

void EditorDialog::reject()
{
    cancelling();
    if (isVisible())
        QDialog::reject();
}
