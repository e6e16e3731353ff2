#include "app/widgets/WelcomePanel.h"

#include "app/widgets/OutletBinding.h"
#include "platform/Localised.h"
#include "store/PrefsController.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using platform::localised;

WelcomePanel::WelcomePanel(PrefsController &controller, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("welcomePanel"));
    setWindowTitle(localised("Welcome to Quorvel"));

    auto *layout = new QVBoxLayout(this);
    auto *welcome = new QLabel(localised("Quorvel keeps your contacts, orders and stock in one place. "
                                         "Choose the extra modules you would like to use; you can change "
                                         "them later in the preferences."),
                               this);
    welcome->setObjectName(QStringLiteral("welcomeText"));
    welcome->setWordWrap(true);
    layout->addWidget(welcome);

    const auto addBox = [this, layout](CheckBox *outlet, const QString &name) {
        auto *box = new QCheckBox(outlet->title(), this);
        box->setObjectName(name);
        binding::bind(outlet, box);
        layout->addWidget(box);
    };
    addBox(controller.proTimeMmtButton2, QStringLiteral("proTimeMmtButton2"));
    addBox(controller.proAccountMmtButton2, QStringLiteral("proAccountMmtButton2"));
    addBox(controller.proDataMmtButton2, QStringLiteral("proDataMmtButton2"));
    layout->addSpacing(12);
    addBox(controller.dontShowWelcomeButton, QStringLiteral("dontShowWelcomeButton"));

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *start = buttons->addButton(localised("&Start"), QDialogButtonBox::AcceptRole);
    start->setObjectName(QStringLiteral("welcomeStartButton"));
    start->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);

    binding::bind(controller.welcomePanel, this);
}
