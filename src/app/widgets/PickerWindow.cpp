#include "app/widgets/PickerWindow.h"

#include "app/widgets/OutletBinding.h"
#include "app/widgets/WindowPlacement.h"
#include "app/widgets/integrityTableView.h"
#include "platform/Localised.h"
#include "store/Picker.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

using platform::localised;

PickerWindow::PickerWindow(Picker &picker, QWidget *parent)
    : QDialog(parent),
      owner(picker)
{
    setObjectName(QStringLiteral("pickerWindow"));
    setWindowTitle(localised("Select"));
    // Chosen before anything else is done, like a panel run modally, but
    // shown without blocking: the choice arrives through the callback.
    setWindowModality(Qt::ApplicationModal);

    search = new QLineEdit(this);
    search->setObjectName(QStringLiteral("searchBox"));
    search->setPlaceholderText(localised("Search"));
    search->setClearButtonEnabled(true);
    search->installEventFilter(this);

    rows = new integrityTableView(this);
    rows->setObjectName(QStringLiteral("pickerTable"));
    rows->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rows->installEventFilter(this);

    select = new QPushButton(localised("Select"), this);
    select->setObjectName(QStringLiteral("selectButton"));
    select->setDefault(true);
    cancelling = new QPushButton(localised("Cancel"), this);
    cancelling->setObjectName(QStringLiteral("cancelButton"));
    cancelling->setAutoDefault(false);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cancelling);
    buttons->addWidget(select);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(search);
    layout->addWidget(rows, 1);
    layout->addLayout(buttons);
    setTabOrder(search, rows);
    setTabOrder(rows, select);
    setTabOrder(select, cancelling);

    binding::bind(picker.searchBox, search);
    binding::bind(picker.table, rows);
    binding::bind(picker.pickerWindow, this);
    connect(select, &QPushButton::clicked, this, [this] { owner.finish(); });
    connect(cancelling, &QPushButton::clicked, this, [this] { owner.cancel(); });

    placement::remember(this, QStringLiteral("QuorvelPickerWindowGeometry"), QSize(440, 360));
}

// Escape, the Cancel button's shortcut and the window's close box.
void PickerWindow::reject()
{
    owner.cancel();
    if (isVisible())
        QDialog::reject();
}

void PickerWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    search->setFocus(Qt::OtherFocusReason);
    search->selectAll();
}

bool PickerWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        if (watched == search)
            return moveIntoTable(static_cast<QKeyEvent *>(event)->key());
        if (watched == rows)
            return typeIntoSearch(event);
    }
    return QDialog::eventFilter(watched, event);
}

// Down (or Page Down) in the search field goes to the table, choosing its
// first row when none is chosen yet.
bool PickerWindow::moveIntoTable(int key)
{
    if (key != Qt::Key_Down && key != Qt::Key_PageDown)
        return false;
    const QAbstractItemModel *model = rows->model();
    if (!model || model->rowCount() == 0)
        return false;
    rows->setFocus(Qt::TabFocusReason);
    if (!rows->selectionModel()->hasSelection())
        rows->selectRow(0);
    return true;
}

// Text typed while the table has the focus goes on in the search field.
bool PickerWindow::typeIntoSearch(QEvent *event)
{
    const auto *key = static_cast<QKeyEvent *>(event);
    const QString text = key->text();
    if (text.isEmpty() || !text.at(0).isPrint()
        || (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return false;
    search->setFocus(Qt::OtherFocusReason);
    search->deselect();
    search->end(false);
    QKeyEvent copy(QEvent::KeyPress, key->key(), key->modifiers(), text);
    QCoreApplication::sendEvent(search, &copy);
    return true;
}
