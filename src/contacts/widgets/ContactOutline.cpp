#include "contacts/widgets/ContactOutline.h"

#include "app/widgets/TableModel.h"
#include "contacts/Contact.h"
#include "contacts/ContactManager.h"
#include "store/TableView.h"

#include <QAbstractItemDelegate>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyle>
#include <QTableView>

namespace {

const QString personKind = QStringLiteral("Company Contact");

// Wraps the view's own delegate: the name cells are handed to it moved in by
// their indentation, with the triangle and the selection drawn in the room
// left of them; every other cell, and every editor, is its alone. So row
// colours and whatever else that delegate does stay as they were.
class OutlineDelegate : public QAbstractItemDelegate
{
public:
    OutlineDelegate(QAbstractItemDelegate *inner, ContactOutline *owner, QObject *parent)
        : QAbstractItemDelegate(parent),
          base(inner),
          outline(owner)
    {
        connect(base, &QAbstractItemDelegate::commitData, this, &QAbstractItemDelegate::commitData);
        connect(base, &QAbstractItemDelegate::closeEditor, this, &QAbstractItemDelegate::closeEditor);
        connect(base, &QAbstractItemDelegate::sizeHintChanged, this, &QAbstractItemDelegate::sizeHintChanged);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int indent = indentation(index);
        if (indent == 0) {
            base->paint(painter, option, index);
            return;
        }
        // The room in front of the name: selected with the row, otherwise
        // without a background of its own (a row colour shows through).
        QStyleOptionViewItem room = option;
        room.rect.setWidth(qMin(indent, option.rect.width()));
        room.showDecorationSelected = true;
        room.backgroundBrush = Qt::NoBrush;
        const QWidget *widget = option.widget;
        QStyle *style = widget ? widget->style() : nullptr;
        if (style)
            style->drawPrimitive(QStyle::PE_PanelItemViewItem, &room, painter, widget);
        base->paint(painter, moved(option, indent), index);
        const QRect triangle = outline->disclosureRect(index.row());
        if (!triangle.isEmpty())
            drawTriangle(painter, triangle, option, outline->isRowExpanded(index.row()));
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return base->sizeHint(option, index) + QSize(indentation(index), 0);
    }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return base->createEditor(parent, moved(option, indentation(index)), index);
    }
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override { base->destroyEditor(editor, index); }
    void setEditorData(QWidget *editor, const QModelIndex &index) const override { base->setEditorData(editor, index); }
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        base->setModelData(editor, model, index);
    }
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override
    {
        base->updateEditorGeometry(editor, moved(option, indentation(index)), index);
    }
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override
    {
        return base->editorEvent(event, model, moved(option, indentation(index)), index);
    }
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        return base->helpEvent(event, view, moved(option, indentation(index)), index);
    }

private:
    int indentation(const QModelIndex &index) const
    {
        return index.isValid() && index.column() == outline->nameColumn() ? outline->indentationOfRow(index.row()) : 0;
    }

    static QStyleOptionViewItem moved(const QStyleOptionViewItem &option, int indent)
    {
        QStyleOptionViewItem result = option;
        result.rect.setLeft(qMin(option.rect.left() + indent, option.rect.right()));
        return result;
    }

    // A small filled triangle in the middle of the box, pointing right
    // (people hidden) or down (people shown), in the colour of the row's text.
    static void drawTriangle(QPainter *painter, const QRect &box, const QStyleOptionViewItem &option, bool open)
    {
        const QPalette::ColorGroup group = !(option.state & QStyle::State_Enabled) ? QPalette::Disabled
            : (option.state & QStyle::State_Active)                                ? QPalette::Active
                                                                                   : QPalette::Inactive;
        const QColor colour = option.palette.color(
            group, (option.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text);
        const qreal half = qMax(2.0, qMin(box.width(), box.height()) / 5.0);
        const QPointF centre = QRectF(box).center();
        QPainterPath path;
        if (open) {
            path.moveTo(centre.x() - half, centre.y() - half / 2);
            path.lineTo(centre.x() + half, centre.y() - half / 2);
            path.lineTo(centre.x(), centre.y() + half);
        } else {
            path.moveTo(centre.x() - half / 2, centre.y() - half);
            path.lineTo(centre.x() + half, centre.y());
            path.lineTo(centre.x() - half / 2, centre.y() + half);
        }
        path.closeSubpath();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->fillPath(path, colour);
        painter->restore();
    }

    QPointer<QAbstractItemDelegate> base;
    ContactOutline *outline;
};

bool isNameColumn(const QString &identifier)
{
    return identifier == QLatin1String("name") || identifier == QLatin1String("1");
}

}  // namespace

ContactOutline *ContactOutline::install(QTableView *view, ContactManager *manager)
{
    return new ContactOutline(view, manager);
}

ContactOutline::ContactOutline(QTableView *tableView, ContactManager *contacts)
    : QObject(tableView),
      view(tableView),
      manager(contacts)
{
    view->setItemDelegate(new OutlineDelegate(view->itemDelegate(), this, this));
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
}

int ContactOutline::nameColumn() const
{
    const auto *model = qobject_cast<const TableModel *>(view->model());
    if (!model)
        return -1;
    for (int column = 0; column < model->columnCount(); ++column) {
        if (isNameColumn(model->columnIdentifier(column)))
            return column;
    }
    return -1;
}

// One level of the outline: the style's indentation of a tree, and never
// less than a line's height, so the triangle has room.
int ContactOutline::levelWidth() const
{
    return qMax(view->style()->pixelMetric(QStyle::PM_TreeViewIndentation, nullptr, view),
                view->fontMetrics().height());
}

bool ContactOutline::isPerson(const Contact *contact) const
{
    return contact && contact->getKind() == personKind;
}

int ContactOutline::indentationOfRow(int row) const
{
    const Contact *contact = manager->contactAtRow(row);
    if (!contact)
        return 0;
    return isPerson(contact) ? 2 * levelWidth() : levelWidth();
}

QRect ContactOutline::disclosureRect(int row) const
{
    const int column = nameColumn();
    if (column < 0 || view->isColumnHidden(column) || !manager->isItemExpandable(manager->contactAtRow(row)))
        return {};
    const QRect cell = view->visualRect(view->model()->index(row, column));
    if (!cell.isValid())
        return {};
    return QRect(cell.left(), cell.top(), qMin(levelWidth(), cell.width()), cell.height());
}

bool ContactOutline::isRowExpanded(int row) const
{
    return manager->isExpanded(manager->contactAtRow(row));
}

int ContactOutline::rowOf(const Contact *contact) const
{
    if (!contact)
        return -1;
    const int count = manager->numberOfRowsInTableView();
    for (int row = 0; row < count; ++row) {
        if (manager->contactAtRow(row) == contact)
            return row;
    }
    return -1;
}

void ContactOutline::setRowExpanded(int row, bool expanded)
{
    const Contact *company = manager->contactAtRow(row);
    if (manager->isItemExpandable(company))
        setCompanyExpanded(company, expanded);
}

// The rows after the company move when its people come or go: the selection
// follows its record, or falls back on the company when that record is one
// of the people just hidden.
void ContactOutline::setCompanyExpanded(const Contact *company, bool expanded)
{
    TableView *table = manager->getCompanyOutline();
    const Contact *selected = manager->contactAtRow(table->selectedRow());
    if (manager->isExpanded(company) == expanded)
        return;
    manager->setExpanded(company, expanded);
    if (!selected)
        return;
    const int row = rowOf(selected);
    table->selectRow(row >= 0 ? row : rowOf(company));
}

bool ContactOutline::handleKey(int key)
{
    const Contact *contact = manager->contactAtRow(manager->getCompanyOutline()->selectedRow());
    if (!contact)
        return true;  // nothing to open or close; the row stays as it is
    if (key == Qt::Key_Right) {
        if (manager->isItemExpandable(contact))
            setCompanyExpanded(contact, true);
    } else if (manager->isItemExpandable(contact)) {
        setCompanyExpanded(contact, false);
    } else if (isPerson(contact)) {
        const int companyRow = rowOf(manager->getContactbyId(QString::number(contact->getCompany())));
        if (companyRow >= 0)
            manager->getCompanyOutline()->selectRow(companyRow);
    }
    return true;
}

bool ContactOutline::handleMouse(QEvent *event)
{
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (event->type() == QEvent::MouseButtonRelease) {
        const bool swallow = swallowRelease;
        swallowRelease = false;
        return swallow;
    }
    if (mouse->button() != Qt::LeftButton)
        return false;
    const QPoint point = mouse->position().toPoint();
    const int row = view->rowAt(point.y());
    if (row < 0 || !disclosureRect(row).contains(point))
        return false;
    swallowRelease = true;
    setRowExpanded(row, !manager->isExpanded(manager->contactAtRow(row)));
    return true;
}

bool ContactOutline::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == view) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && (key->key() == Qt::Key_Left || key->key() == Qt::Key_Right))
            return handleKey(key->key());
        return false;
    }
    // The event's type before the view: while the view is being destroyed
    // its viewport still sends events here, and the view is no view any more.
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:  // a quick second click toggles again
    case QEvent::MouseButtonRelease:
        return watched == view->viewport() && handleMouse(event);
    default:
        return false;
    }
}
