#include "tasks/widgets/CompleteColumnToggle.h"

#include "app/widgets/TableModel.h"
#include "tasks/ActionManager.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QTableView>

namespace {

const QString completeColumn = QStringLiteral("complete");

// Shows a cell's "Yes" or "No" as a ticked or empty check box.
class CheckCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QString text = index.data(Qt::DisplayRole).toString();
        if (text != QLatin1String("Yes") && text != QLatin1String("No"))
            return;
        option->features |= QStyleOptionViewItem::HasCheckIndicator;
        option->checkState = text == QLatin1String("Yes") ? Qt::Checked : Qt::Unchecked;
        option->text.clear();
    }
};

}  // namespace

CompleteColumnToggle *CompleteColumnToggle::install(QTableView *view, ActionManager &manager)
{
    return view ? new CompleteColumnToggle(view, manager) : nullptr;
}

CompleteColumnToggle::CompleteColumnToggle(QTableView *view, ActionManager &manager)
    : QObject(view),
      table(view),
      actions(manager)
{
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
    // The column of check boxes follows the "complete" column wherever the
    // columns put it.
    auto *delegate = new CheckCellDelegate(this);
    const auto placeDelegate = [view, delegate] {
        if (!view->model())
            return;
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            if (view->itemDelegateForColumn(column) == delegate)
                view->setItemDelegateForColumn(column, nullptr);
        }
        if (const auto *model = qobject_cast<const TableModel *>(view->model())) {
            const int column = model->columnWithIdentifier(completeColumn);
            if (column >= 0)
                view->setItemDelegateForColumn(column, delegate);
        }
    };
    placeDelegate();
    if (view->model())
        connect(view->model(), &QAbstractItemModel::modelReset, this, placeDelegate);
}

void CompleteColumnToggle::toggle(int row)
{
    if (row >= 0 && row < actions.numberOfRowsInTableView())
        actions.setObjectValueForTableColumn(QString(), completeColumn, row);
}

bool CompleteColumnToggle::eventFilter(QObject *watched, QEvent *event)
{
    // The event's type first: while the table is being destroyed its
    // widgets still send events here, and the table is no table any more.
    if (event->type() == QEvent::KeyPress && watched == table) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() != Qt::Key_Space || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
            return false;
        const QModelIndex current = table->currentIndex();
        toggle(current.isValid() ? current.row() : actions.table->selectedRow());
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease && watched == table->viewport()) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const auto *model = qobject_cast<const TableModel *>(table->model());
        const QModelIndex index = table->indexAt(mouse->position().toPoint());
        if (mouse->button() == Qt::LeftButton && model && index.isValid()
            && model->columnIdentifier(index.column()) == completeColumn)
            toggle(index.row());
    }
    return false;
}
