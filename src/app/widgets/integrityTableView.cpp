#include "app/widgets/integrityTableView.h"

#include "app/kdKeyResponder.h"
#include "app/widgets/TableModel.h"
#include "store/TableDataSource.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

constexpr qreal bandRadius = 10;

QColor colourOf(const RgbaColour &colour)
{
    const auto unit = [](float value) { return qBound(0.0, double(value), 1.0); };
    return QColor::fromRgbF(unit(colour.red), unit(colour.green), unit(colour.blue), unit(colour.alpha));
}

// Keys the table leaves to the ordinary item-view handling or to its window:
// moving around, leaving the table, activating a row, closing a dialog.
bool isNavigationKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Enter:
    case Qt::Key_Return:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}

bool hasCommandModifier(const QKeyEvent *event)
{
    return event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

// The character the platform gives a delete key, 0 for other keys.
unsigned deleteCharacter(const QKeyEvent *event)
{
    if (hasCommandModifier(event))
        return 0;
    if (event->key() == Qt::Key_Backspace)
        return kdKeyResponder::DeleteCharacter;
    if (event->key() == Qt::Key_Delete)
        return kdKeyResponder::DeleteFunctionKey;
    return 0;
}

}  // namespace

// Leaves the cells of banded rows without a background of their own, so the
// band shows through them, and rules off the totals.
class StatusRowDelegate : public QStyledItemDelegate
{
public:
    explicit StatusRowDelegate(integrityTableView *view)
        : QStyledItemDelegate(view),
          table(view)
    { }

    // A total row has a rule drawn above it.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (!index.data(TableModel::TotalRowRole).toBool())
            return;
        painter->save();
        painter->setPen(QPen(option.palette.color(QPalette::Text), 1));
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (table->isBandedRow(index.row()))
            option->backgroundBrush = Qt::NoBrush;
    }

private:
    integrityTableView *table;
};

integrityTableView::integrityTableView(QWidget *parent)
    : QTableView(parent)
{
    setItemDelegate(new StatusRowDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setTabKeyNavigation(false);  // Tab leaves the table for the next field
    setAlternatingRowColors(false);
    verticalHeader()->hide();
    // One line per record, all rows the same height: a list of 100k rows
    // never measures its cells.
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
}

TableDataSource *integrityTableView::dataSource() const
{
    const auto *tableModel = qobject_cast<const TableModel *>(model());
    return tableModel ? tableModel->dataSource() : nullptr;
}

void integrityTableView::reloadData()
{
    if (auto *tableModel = qobject_cast<TableModel *>(model()))
        tableModel->reload();
    else
        viewport()->update();
}

void integrityTableView::setPlaceholderText(const QString &text)
{
    if (text == placeholder)
        return;
    placeholder = text;
    viewport()->update();
}

QRect integrityTableView::bandRect(int row) const
{
    const QRect rowRect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
    return QRect(rowRect.x() + 1, rowRect.y() + 1, rowRect.width() - 2, rowRect.height() - 1);
}

void integrityTableView::paintEvent(QPaintEvent *event)
{
    bandedRows.clear();
    const TableDataSource *source = dataSource();
    const QRect area = event->rect();
    const int first = rowAt(area.top());  // -1: no row reaches the area
    if (source && first >= 0) {
        int last = rowAt(area.bottom());
        if (last < 0)
            last = model()->rowCount(rootIndex()) - 1;
        QPainter painter(viewport());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (int row = first; row <= last; ++row) {
            if (isRowHidden(row) || (selectionModel() && selectionModel()->isRowSelected(row, rootIndex())))
                continue;
            const std::optional<RgbaColour> colour = source->labelColorForRow(row);
            if (!colour)
                continue;
            bandedRows.insert(row);
            painter.setBrush(colourOf(*colour));
            painter.drawRoundedRect(QRectF(bandRect(row)), bandRadius, bandRadius);
        }
    }
    QTableView::paintEvent(event);  // the cells, on top of the bands
    if (!placeholder.isEmpty() && (!model() || model()->rowCount(rootIndex()) == 0)) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(12, 24, -12, -12),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, placeholder);
    }
}

bool integrityTableView::event(QEvent *event)
{
    // The delete keys belong to the list, even where a menu uses them.
    if (event->type() == QEvent::ShortcutOverride && deleteCharacter(static_cast<QKeyEvent *>(event)) != 0) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void integrityTableView::keyPressEvent(QKeyEvent *event)
{
    if (isNavigationKey(event->key()) || hasCommandModifier(event)) {
        QTableView::keyPressEvent(event);
        return;
    }
    const unsigned character = deleteCharacter(event);
    if (character != 0 && keyResponder)
        keyResponder->keyDown(character);
    event->accept();  // every other key stops here
}
