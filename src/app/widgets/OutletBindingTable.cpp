// Binding a table outlet to a table view through the generic table model.
#include "app/widgets/OutletBindingSupport.h"

#include "app/widgets/TableModel.h"
#include "platform/DateReading.h"
#include "platform/outlets/Button.h"
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/ColorWell.h"
#include "platform/outlets/Matrix.h"
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TabView.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "platform/richtext/RichTextFile.h"
#include "store/PrefsController.h"
#include "store/TableDataSource.h"
#include "store/TableView.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocument>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>
#include <memory>

namespace {

// Column widths from what the columns hold, on a list's first show: each
// column as wide as its title and the cells in view (within limits), the
// room that is left to the widest text columns (titles and names), the
// last column not stretched.
void fitColumns(QTableView *widget, const TableModel *model)
{
    QHeaderView *header = widget->horizontalHeader();
    const int count = model->columnCount();
    if (count == 0)
        return;
    constexpr int narrowest = 48, widest = 360;
    QList<int> widths(count);
    int total = 0;
    for (int column = 0; column < count; ++column) {
        const int wanted = std::max(header->sectionSizeHint(column),
                                    static_cast<QAbstractItemView *>(widget)->sizeHintForColumn(column))
            + 8;
        widths[column] = std::clamp(wanted, narrowest, widest);
        total += widths[column];
    }
    const int room = widget->viewport()->width() - total;
    // The text columns share the room (or give it back) by what they hold.
    QList<int> text;
    for (int column = 0; column < count; ++column) {
        if (!model->isNumericColumn(column) && !model->isDateColumn(column) && widths[column] > narrowest * 2)
            text << column;
    }
    if (!text.isEmpty() && room != 0) {
        int textTotal = 0;
        for (int column : std::as_const(text))
            textTotal += widths[column];
        for (int column : std::as_const(text)) {
            const int share = int(qint64(room) * widths[column] / std::max(1, textTotal));
            widths[column] = std::max(narrowest * 2, widths[column] + share);
        }
    }
    for (int column = 0; column < count; ++column)
        widget->setColumnWidth(column, widths[column]);
}

QString columnsKey(const QTableView *widget)
{
    return QStringLiteral("QuorvelColumns ") + widget->objectName();
}

}  // namespace

namespace binding {

using namespace detail;

void bind(TableView *outlet, QTableView *widget)
{
    Link *link = attach(outlet, widget);
    auto *model = new TableModel(outlet, widget);
    widget->setModel(model);
    widget->setSelectionBehavior(QAbstractItemView::SelectRows);
    widget->setSelectionMode(QAbstractItemView::SingleSelection);
    widget->setSortingEnabled(false);  // the data source sorts, on header clicks
    widget->verticalHeader()->hide();
    QHeaderView *header = widget->horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setHighlightSections(false);
    // The "_____" row above a total is left out: the rule is drawn instead.
    auto hiddenRule = std::make_shared<int>(-1);
    const auto showTotals = [widget, model, hiddenRule] {
        if (*hiddenRule >= 0)
            widget->setRowHidden(*hiddenRule, false);
        *hiddenRule = model->ruleRow();
        if (*hiddenRule >= 0)
            widget->setRowHidden(*hiddenRule, true);
    };
    showTotals();

    // The widths: those the user left (the order of the columns too), else
    // fitted to what the list holds when it is first shown. The last column
    // is not stretched over the room that is left.
    header->setSectionsMovable(true);
    header->setStretchLastSection(false);
    auto fitted = std::make_shared<bool>(false);
    const auto showColumns = [outlet, widget, model, fitted] {
        for (int column = 0; column < model->columnCount(); ++column)
            widget->setColumnWidth(column, outlet->tableColumns().at(column).width);
        if (!widget->isVisible())
            *fitted = false;
        else
            fitColumns(widget, model);
    };
    auto listening = std::make_shared<bool>(false);
    const auto firstShow = [widget, model, fitted, listening] {
        if (*fitted || model->columnCount() == 0)
            return;
        *fitted = true;
        const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
        const QByteArray kept = settings.value(columnsKey(widget)).toByteArray();
        QHeaderView *shownHeader = widget->horizontalHeader();
        if (kept.isEmpty() || widget->objectName().isEmpty() || !shownHeader->restoreState(kept)
            || shownHeader->count() != model->columnCount())
            fitColumns(widget, model);
        shownHeader->setStretchLastSection(false);
        // From now on what the user does to the columns is kept.
        if (*listening)
            return;
        *listening = true;
        const auto keep = [widget] {
            if (widget->objectName().isEmpty())
                return;
            QSettings store(PrefsController::settingsName(), PrefsController::settingsName());
            store.setValue(columnsKey(widget), widget->horizontalHeader()->saveState());
        };
        QObject::connect(shownHeader, &QHeaderView::sectionResized, widget, keep);
        QObject::connect(shownHeader, &QHeaderView::sectionMoved, widget, keep);
    };
    const auto showSortIndicator = [outlet, widget, model] {
        const QList<SortDescriptor> &descriptors = outlet->sortDescriptors();
        const int column = descriptors.isEmpty() ? -1 : model->columnWithIdentifier(descriptors.first().key);
        const bool ascending = descriptors.isEmpty() || descriptors.first().ascending;
        widget->horizontalHeader()->setSortIndicator(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    };
    const auto showSelection = [link, widget, model](int row) {
        link->apply([&] {
            if (row >= 0 && row < model->rowCount()) {
                widget->selectRow(row);
                widget->scrollTo(model->index(row, 0));
            } else {
                widget->clearSelection();
            }
        });
    };

    showColumns();
    showSortIndicator();
    showSelection(outlet->selectedRow());
    follow(link, outlet, [outlet, widget] { showState(outlet, widget); });

    // A reload keeps the widths the user gave the columns; new columns take
    // the outlet's widths.
    auto widths = std::make_shared<QList<int>>();
    QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, link, [widget, widths] {
        widths->clear();
        for (int column = 0; column < widget->horizontalHeader()->count(); ++column)
            widths->append(widget->columnWidth(column));
    });
    QObject::connect(model, &QAbstractItemModel::modelReset, link,
                     [table = QPointer<TableView>(outlet), widget, model, widths, showColumns, showSortIndicator,
                      showSelection, showTotals] {
                         if (!table)
                             return;  // the outlet is going: the model is empty now
                         if (widths->size() == model->columnCount()) {
                             for (int column = 0; column < widths->size(); ++column)
                                 widget->setColumnWidth(column, widths->at(column));
                         } else {
                             showColumns();
                         }
                         showSortIndicator();
                         showTotals();
                         if (table->selectedRow() >= model->rowCount())
                             table->selectRow(-1);  // the row is gone
                         else
                             showSelection(table->selectedRow());
                     });
    QObject::connect(outlet, &TableView::columnsChanged, link, [showColumns, showSortIndicator] {
        showColumns();
        showSortIndicator();
    });
    QObject::connect(outlet, &TableView::selectionChanged, link, showSelection);

    QObject::connect(widget->selectionModel(), &QItemSelectionModel::selectionChanged, link, [link, outlet, widget] {
        if (!link->fromUser())
            return;
        const QModelIndexList rows = widget->selectionModel()->selectedRows();
        outlet->userSelectRow(rows.isEmpty() ? -1 : rows.first().row());
    });
    QObject::connect(header, &QHeaderView::sectionClicked, link, [link, outlet, model, showSortIndicator](int column) {
        if (!link->fromUser() || column < 0 || column >= model->columnCount())
            return;
        outlet->userClickColumn(model->columnIdentifier(column));
        if (link->fromUser())
            showSortIndicator();
    });
    QObject::connect(widget, &QAbstractItemView::doubleClicked, link, [link, outlet](const QModelIndex &index) {
        if (link->fromUser() && index.isValid())
            outlet->userDoubleClick(index.row());
    });
    // Enter on a row does what a double click does.
    link->filter = [link, outlet, widget, firstShow](QEvent *event) {
        // Fitted once the list is laid out, when its rows in view are known.
        if (event->type() == QEvent::Show)
            QTimer::singleShot(0, widget, firstShow);
        if (event->type() != QEvent::KeyPress || !link->fromUser())
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
            || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
            return false;
        const QModelIndex current = widget->currentIndex();
        const int row = current.isValid() ? current.row() : outlet->selectedRow();
        if (row < 0 || row >= widget->model()->rowCount())
            return false;
        outlet->userDoubleClick(row);
        return true;
    };
    widget->installEventFilter(link);
}

}  // namespace binding
