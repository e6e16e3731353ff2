#include "app/widgets/OutletBinding.h"

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
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>
#include <memory>

namespace binding {
namespace {

// Which outlet each bound widget (or action, or button group) shows, and
// the other way round. Entries go when either side is destroyed.
QHash<const QObject *, QPointer<Outlet>> &outletsByWidget()
{
    static QHash<const QObject *, QPointer<Outlet>> table;
    return table;
}

QHash<const Outlet *, QPointer<QObject>> &widgetsByOutlet()
{
    static QHash<const Outlet *, QPointer<QObject>> table;
    return table;
}

Outlet *registeredOutlet(const QObject *object)
{
    return outletsByWidget().value(object).data();
}

// The tie between one outlet and one widget. It lives as a child of the
// widget, so every connection made with it as context ends with the widget.
// While the widget is being set from the outlet (apply), the widget's own
// signals are not user actions and are not reported back.
class Link : public QObject
{
public:
    Link(Outlet *outlet, QObject *target)
        : QObject(target),
          source(outlet)
    { }

    template <class Change> void apply(Change &&change)
    {
        const bool outer = applying;
        applying = true;
        change();
        applying = outer;
    }
    bool isApplying() const { return applying; }
    // Whether a signal of the widget is the user's and has an outlet to go to.
    bool fromUser() const { return !applying && source; }
    bool hasOutlet() const { return source; }

    std::function<bool(QEvent *)> filter;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return watched == parent() && filter && source ? filter(event) : false;
    }

private:
    QPointer<Outlet> source;
    bool applying = false;
};

void printWithDialog(QWidget *widget);

PrintHandler &currentPrintHandler()
{
    static PrintHandler handler = printWithDialog;
    return handler;
}

// Marks the object as showing the outlet.
void remember(QObject *target, Outlet *outlet)
{
    outletsByWidget().insert(target, outlet);
    QObject::connect(target, &QObject::destroyed, [target] { outletsByWidget().remove(target); });
}

// The common part of every binding: the outlet is connected and knows its
// widget, and asks it to print when the program prints the outlet.
Link *attach(Outlet *outlet, QObject *target)
{
    auto *link = new Link(outlet, target);
    remember(target, outlet);
    widgetsByOutlet().insert(outlet, target);
    outlet->setConnected(true);

    QObject::connect(outlet, &QObject::destroyed, [outlet] { widgetsByOutlet().remove(outlet); });
    QObject::connect(target, &QObject::destroyed, outlet, [outlet, target] {
        // The outlet is absent again unless it has been bound elsewhere since.
        const auto found = widgetsByOutlet().constFind(outlet);
        if (found != widgetsByOutlet().constEnd() && (found.value().isNull() || found.value() == target)) {
            widgetsByOutlet().remove(outlet);
            outlet->setConnected(false);
        }
    });
    if (auto *widget = qobject_cast<QWidget *>(target)) {
        QObject::connect(outlet, &Outlet::printRequested, link, [outlet, widget](bool *taken) {
            if (widgetFor(outlet) != widget)
                return;  // the outlet has been bound to another widget since
            *taken = true;
            currentPrintHandler()(widget);
        });
    }
    return link;
}

// Enabled and hidden, from the outlet. A window is shown only by its
// Window outlet, so a plain outlet may hide one but never shows it.
void showState(const Outlet *outlet, QWidget *widget)
{
    widget->setEnabled(outlet->isEnabled());
    if (outlet->isHidden()) {
        if (!widget->isHidden())
            widget->hide();
    } else if (widget->isHidden() && !widget->isWindow()) {
        widget->show();
    }
}

// "%d/%m/%y" as the user reads it: "dd/mm/yy".
QString formatHint(const QString &format)
{
    QString hint = format;
    hint.replace(QLatin1String("%d"), QLatin1String("dd"));
    hint.replace(QLatin1String("%m"), QLatin1String("mm"));
    hint.replace(QLatin1String("%Y"), QLatin1String("yyyy"));
    hint.replace(QLatin1String("%y"), QLatin1String("yy"));
    return hint;
}

// What the field's formatter asks of the widget: a date field shows its
// date format as a hint while it is empty; a money field shows its figures
// at the right and is wide enough for a million with its cents.
void showFormatter(const TextField *outlet, QLineEdit *widget)
{
    if (platform::isDayFormat(outlet->dateFormat()))
        widget->setPlaceholderText(formatHint(outlet->dateFormat()));
    if (outlet->isMoney()) {
        widget->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int wide = widthToShow(widget, QStringLiteral("1,000,000.00"));
        if (widget->minimumWidth() < wide)
            widget->setMinimumWidth(wide);
    }
}

// Sets the widget from the outlet now and whenever the program changes it.
template <class Show> void follow(Link *link, Outlet *outlet, Show show)
{
    const auto update = [link, show] { link->apply(show); };
    QObject::connect(outlet, &Outlet::changed, link, update);
    update();
}

// An image of the program's resources by name ("print"), or by resource path.
QIcon iconNamed(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QString path = name.startsWith(QLatin1String(":/")) ? name : QStringLiteral(":/core/icons/%1.svg").arg(name);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QColor colourOf(const RgbaColour &colour)
{
    const auto unit = [](float value) { return qBound(0.0, double(value), 1.0); };
    return QColor::fromRgbF(unit(colour.red), unit(colour.green), unit(colour.blue), unit(colour.alpha));
}

// A colour well shows its colour as the button's icon.
void showSwatch(const ColorWell *outlet, QAbstractButton *widget)
{
    QSize size = widget->iconSize();
    if (size.isEmpty())
        size = QSize(16, 16);
    QPixmap swatch(size);
    swatch.fill(colourOf(outlet->color()));
    widget->setIcon(QIcon(swatch));
}

// The identifier a tab page is addressed by: its "tabIdentifier" property,
// else its object name.
QString identifierOfPage(const QWidget *page)
{
    const QVariant identifier = page->property("tabIdentifier");
    return identifier.isValid() ? identifier.toString() : page->objectName();
}

// The outlet of the focused widget or of its nearest bound ancestor inside
// the window, the window's own outlet excluded.
Outlet *responderFor(const QWidget *focus, const QWidget *window)
{
    for (const QWidget *widget = focus; widget && widget != window; widget = widget->parentWidget()) {
        if (Outlet *outlet = registeredOutlet(widget))
            return outlet;
    }
    return nullptr;
}

// The title, with the edited mark while the window is edited. The mark's
// placeholder is in the title only then, so the widget's title is the
// outlet's title the rest of the time.
void showTitle(const Window *outlet, QWidget *widget)
{
    const bool edited = outlet->isDocumentEdited();
    const QString title = edited ? outlet->title() + QStringLiteral("[*]") : outlet->title();
    if (!edited && widget->isWindowModified())
        widget->setWindowModified(false);
    if (widget->windowTitle() != title)
        widget->setWindowTitle(title);
    if (edited && !widget->isWindowModified())
        widget->setWindowModified(true);
}

// Whether raising a window means anything on this platform (the offscreen
// platform of the command line and the tests has no stacking order).
bool stacksWindows()
{
    return QGuiApplication::platformName() != QLatin1String("offscreen");
}

void centre(QWidget *widget)
{
    if (!widget->isWindow())
        return;
    QScreen *screen = widget->screen() ? widget->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QRect frame = widget->frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    widget->move(frame.topLeft());
}

void printWidget(QPrinter &printer, QWidget *widget)
{
    if (auto *text = qobject_cast<QTextEdit *>(widget)) {
        text->print(&printer);
        return;
    }
    if (auto *plain = qobject_cast<QPlainTextEdit *>(widget)) {
        plain->print(&printer);
        return;
    }
    if (auto *table = qobject_cast<QTableView *>(widget)) {
        const auto *model = qobject_cast<const TableModel *>(table->model());
        if (model && model->outlet() && model->dataSource()) {
            QTextDocument document;
            document.setHtml(model->dataSource()->getDataAsHTMLusingTableView(*model->outlet()));
            document.print(&printer);
            return;
        }
    }
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
    const qreal natural = qreal(printer.resolution()) / qMax(1, widget->logicalDpiX());
    const qreal fit = qMin(page.width() / qMax(1, widget->width()), page.height() / qMax(1, widget->height()));
    const qreal scale = qMin(natural, fit);
    painter.scale(scale, scale);
    widget->render(&painter);
}

// The platform's print dialog over one set of print settings shared by
// every print of the program.
void printWithDialog(QWidget *widget)
{
    static QPrinter *const printer = new QPrinter(QPrinter::HighResolution);
    QPrintDialog dialog(printer, widget->window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    printWidget(*printer, widget);
}

}  // namespace

void bind(TextField *outlet, QLineEdit *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        if (widget->text() != outlet->stringValue())
            widget->setText(outlet->stringValue());
        widget->setReadOnly(!outlet->isEditable());
        showFormatter(outlet, widget);
    });
    QObject::connect(widget, &QLineEdit::textEdited, link, [link, outlet](const QString &text) {
        if (link->fromUser())
            outlet->userSetStringValue(text);
    });
    QObject::connect(widget, &QLineEdit::returnPressed, link, [link, outlet] {
        if (link->fromUser())
            outlet->performAction();
    });
    // Leaving the field (or Enter) ends its editing: the field's formatter
    // has its say on what was typed.
    QObject::connect(widget, &QLineEdit::editingFinished, link, [link, outlet] {
        if (link->fromUser())
            outlet->commitEditing();
    });
}

void commitEditing(const QWidget *window)
{
    if (!window)
        return;
    const QList<QLineEdit *> edits = window->findChildren<QLineEdit *>();
    for (QLineEdit *edit : edits) {
        if (auto *field = qobject_cast<TextField *>(registeredOutlet(edit)))
            field->commitEditing();
    }
}

int widthToShow(const QLineEdit *widget, const QString &text)
{
    QStyleOptionFrame option;
    option.initFrom(widget);
    option.rect = widget->rect();
    option.lineWidth
        = widget->hasFrame() ? widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, widget) : 0;
    option.midLineWidth = 0;
    option.state |= QStyle::State_Sunken;
    option.features = QStyleOptionFrame::None;
    const QMargins margins = widget->textMargins();
    // A line edit keeps two pixels free on either side of its text, and one
    // for the cursor.
    const QFontMetrics metrics = widget->fontMetrics();
    const QSize contents(metrics.horizontalAdvance(text) + 2 * 2 + 1 + margins.left() + margins.right(),
                         metrics.height());
    return widget->style()->sizeFromContents(QStyle::CT_LineEdit, &option, contents, widget).width();
}

void bind(TextField *outlet, QLabel *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        if (widget->text() != outlet->stringValue())
            widget->setText(outlet->stringValue());
    });
}

void bind(TextView *outlet, QPlainTextEdit *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        if (widget->toPlainText() != outlet->string())
            widget->setPlainText(outlet->string());
    });
    QObject::connect(widget, &QPlainTextEdit::textChanged, link, [link, outlet, widget] {
        if (link->fromUser())
            outlet->userSetString(widget->toPlainText());
    });
}

void bind(TextView *outlet, QTextEdit *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        if (widget->toPlainText() != outlet->string())
            widget->setPlainText(outlet->string());
    });
    QObject::connect(widget, &QTextEdit::textChanged, link, [link, outlet, widget] {
        if (link->fromUser())
            outlet->userSetString(widget->toPlainText());
    });
    QObject::connect(outlet, &TextView::readRequested, link, [link, outlet, widget](const QString &path, bool *ok) {
        bool loaded = false;
        link->apply([&] { loaded = RichTextFile::load(path, *widget->document()); });
        if (loaded)
            outlet->setString(widget->toPlainText());
        *ok = loaded;
    });
    QObject::connect(outlet, &TextView::writeRequested, link,
                     [widget](const QString &path, bool *ok) { *ok = RichTextFile::save(path, *widget->document()); });
}

void bind(PopUp *outlet, QComboBox *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        bool same = widget->count() == outlet->numberOfItems();
        for (int i = 0; same && i < widget->count(); ++i)
            same = widget->itemText(i) == outlet->itemTitleAt(i);
        if (!same) {
            widget->clear();
            widget->addItems(outlet->itemTitles());
        }
        widget->setCurrentIndex(outlet->indexOfSelectedItem());
    });
    QObject::connect(widget, &QComboBox::activated, link, [link, outlet](int index) {
        if (link->fromUser())
            outlet->userSelectItemAtIndex(index);
    });
}

void bind(CheckBox *outlet, QAbstractButton *widget)
{
    if (outlet->title().isEmpty())
        outlet->setTitle(widget->text());  // the form's title until the program gives one
    Link *link = attach(outlet, widget);
    widget->setCheckable(true);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        widget->setChecked(outlet->state());
        if (widget->text() != outlet->title())
            widget->setText(outlet->title());
    });
    QObject::connect(widget, &QAbstractButton::clicked, link, [link, outlet](bool checked) {
        if (link->fromUser())
            outlet->userSetState(checked);
    });
}

void bind(Button *outlet, QAbstractButton *widget)
{
    if (outlet->title().isEmpty())
        outlet->setTitle(widget->text());
    Link *link = attach(outlet, widget);
    // An image replaces the form's icon only once the program names one.
    auto shownImage = std::make_shared<QString>();
    follow(link, outlet, [outlet, widget, shownImage] {
        showState(outlet, widget);
        if (widget->text() != outlet->title())
            widget->setText(outlet->title());
        if (outlet->image() != *shownImage) {
            *shownImage = outlet->image();
            widget->setIcon(iconNamed(outlet->image()));
        }
    });
    QObject::connect(widget, &QAbstractButton::clicked, link, [link, outlet] {
        if (link->fromUser())
            outlet->performClick();
    });
}

void bind(Button *outlet, QAction *action)
{
    if (outlet->title().isEmpty())
        outlet->setTitle(action->text());
    Link *link = attach(outlet, action);
    auto shownImage = std::make_shared<QString>();
    follow(link, outlet, [outlet, action, shownImage] {
        action->setEnabled(outlet->isEnabled());
        action->setVisible(!outlet->isHidden());
        if (action->text() != outlet->title())
            action->setText(outlet->title());
        if (outlet->image() != *shownImage) {
            *shownImage = outlet->image();
            action->setIcon(iconNamed(outlet->image()));
        }
    });
    QObject::connect(action, &QAction::triggered, link, [link, outlet] {
        if (link->fromUser())
            outlet->performClick();
    });
}

void bind(Matrix *outlet, QButtonGroup *group)
{
    Link *link = attach(outlet, group);
    for (QAbstractButton *button : group->buttons())
        remember(button, outlet);
    follow(link, outlet, [outlet, group] {
        for (int column = 0; column < outlet->numberOfColumns(); ++column) {
            QAbstractButton *cell = group->button(column);
            if (!cell)
                continue;
            showState(outlet, cell);
            if (!outlet->titles().at(column).isEmpty())
                cell->setText(outlet->titles().at(column));
        }
        if (QAbstractButton *selected = group->button(outlet->selectedColumn()))
            selected->setChecked(true);
    });
    QObject::connect(group, &QButtonGroup::idClicked, link, [link, outlet](int column) {
        if (link->fromUser())
            outlet->userSelectColumn(column);
    });
}

void bind(ColorWell *outlet, QAbstractButton *widget)
{
    Link *link = attach(outlet, widget);
    follow(link, outlet, [outlet, widget] {
        showState(outlet, widget);
        showSwatch(outlet, widget);
    });
    QObject::connect(widget, &QAbstractButton::clicked, link, [link, outlet, widget] {
        if (!link->fromUser())
            return;
        const QColor chosen = QColorDialog::getColor(colourOf(outlet->color()), widget->window(), QString(),
                                                     QColorDialog::ShowAlphaChannel);
        if (!chosen.isValid() || !link->fromUser())
            return;
        outlet->userSetColor(
            RgbaColour{float(chosen.redF()), float(chosen.greenF()), float(chosen.blueF()), float(chosen.alphaF())});
        showSwatch(outlet, widget);
    });
}

void bind(TabView *outlet, QTabWidget *widget)
{
    // Every page the widget has had, so that a tab removed by the program can
    // come back when the program sets its tabs again.
    struct Page
    {
        QPointer<QWidget> page;
        QString identifier;
        QString label;
    };
    auto pages = std::make_shared<QList<Page>>();
    for (int i = 0; i < widget->count(); ++i)
        pages->append(Page{widget->widget(i), identifierOfPage(widget->widget(i)), widget->tabText(i)});
    if (outlet->numberOfTabViewItems() == 0 && !pages->isEmpty()) {
        QStringList identifiers;
        QStringList labels;
        for (const Page &page : std::as_const(*pages)) {
            identifiers.append(page.identifier);
            labels.append(page.label);
        }
        outlet->setTabs(identifiers, labels);
        outlet->selectTabViewItemAtIndex(widget->currentIndex());
    }

    Link *link = attach(outlet, widget);
    const auto pageFor = [pages](const QString &identifier) -> Page * {
        for (Page &page : *pages) {
            if (page.page && page.identifier == identifier)
                return &page;
        }
        return nullptr;
    };
    const auto showSelection = [outlet, widget, pageFor] {
        if (const Page *page = pageFor(outlet->selectedIdentifier()))
            widget->setCurrentWidget(page->page);
    };
    const auto showTabs = [outlet, widget, pageFor, showSelection] {
        QList<Page *> wanted;
        for (int i = 0; i < outlet->numberOfTabViewItems(); ++i) {
            Page *page = pageFor(outlet->identifierAt(i));
            if (!page || wanted.contains(page))
                continue;  // no page for that tab: the widget cannot show it
            if (!outlet->labelAt(i).isEmpty())
                page->label = outlet->labelAt(i);
            wanted.append(page);
        }
        for (int i = widget->count() - 1; i >= 0; --i) {
            const bool keep = std::any_of(wanted.cbegin(), wanted.cend(),
                                          [&](const Page *page) { return page->page == widget->widget(i); });
            if (!keep)
                widget->removeTab(i);
        }
        for (int i = 0; i < wanted.size(); ++i) {
            const int at = widget->indexOf(wanted.at(i)->page);
            if (at != i) {
                if (at >= 0)
                    widget->removeTab(at);
                widget->insertTab(i, wanted.at(i)->page, wanted.at(i)->label);
            }
            widget->setTabText(i, wanted.at(i)->label);
        }
        showSelection();
    };
    follow(link, outlet, [outlet, widget] { showState(outlet, widget); });
    link->apply(showTabs);
    QObject::connect(outlet, &TabView::tabsChanged, link, [link, showTabs] { link->apply(showTabs); });
    QObject::connect(outlet, &TabView::selectionChanged, link, [link, showSelection] { link->apply(showSelection); });
    QObject::connect(widget, &QTabWidget::currentChanged, link, [link, outlet, widget](int index) {
        if (!link->fromUser() || index < 0)
            return;
        const int tab = outlet->indexOfTabViewItemWithIdentifier(identifierOfPage(widget->widget(index)));
        if (tab >= 0 && tab != outlet->indexOfSelectedTab())
            outlet->userSelectTabAtIndex(tab);
    });
}

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

    const auto showColumns = [outlet, widget, model] {
        for (int column = 0; column < model->columnCount(); ++column)
            widget->setColumnWidth(column, outlet->tableColumns().at(column).width);
        widget->horizontalHeader()->setStretchLastSection(outlet->lastColumnFills());
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
    QObject::connect(
        model, &QAbstractItemModel::modelReset, link,
        [table = QPointer<TableView>(outlet), widget, model, widths, showColumns, showSortIndicator, showSelection] {
            if (!table)
                return;  // the outlet is going: the model is empty now
            if (widths->size() == model->columnCount()) {
                for (int column = 0; column < widths->size(); ++column)
                    widget->setColumnWidth(column, widths->at(column));
            } else {
                showColumns();
            }
            showSortIndicator();
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
    link->filter = [link, outlet, widget](QEvent *event) {
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

void bind(Window *outlet, QWidget *widget)
{
    if (outlet->title().isEmpty())
        outlet->setTitle(widget->windowTitle());
    if (widget->isVisible() && !outlet->isVisible())
        outlet->widgetVisibilityChanged(true);  // already on screen when bound
    Link *link = attach(outlet, widget);

    const auto bringToFront = [widget] {
        if (!widget->isVisible())
            widget->show();
        if (stacksWindows())
            widget->raise();
        widget->activateWindow();
    };
    follow(link, outlet, [outlet, widget, bringToFront] {
        widget->setEnabled(outlet->isEnabled());
        showTitle(outlet, widget);
        const bool onScreen = outlet->isVisible() && !outlet->isHidden();
        if (onScreen && !widget->isVisible())
            bringToFront();
        else if (!onScreen && widget->isVisible())
            widget->hide();
    });
    if (widget->isVisible() && widget->isActiveWindow())
        outlet->widgetBecameKey(true);
    QObject::connect(outlet, &Window::keyChanged, link, [link, outlet, widget, bringToFront](bool isKey) {
        if (isKey && outlet->isVisible() && !widget->isActiveWindow())
            link->apply(bringToFront);
    });
    QObject::connect(outlet, &Window::centerRequested, link, [widget] { centre(widget); });

    // The frame: a frame the program gave before the widget existed is
    // taken; otherwise the outlet learns where the widget is. From then on
    // the program moves the widget and the widget reports its moves.
    if (widget->isWindow()) {
        if (!outlet->frame().isEmpty())
            widget->setGeometry(outlet->frame());
        else
            outlet->widgetFrameChanged(widget->geometry());
    }
    QObject::connect(outlet, &Window::frameChangeRequested, link, [link, widget](const QRect &rect) {
        if (widget->isWindow())
            link->apply([widget, rect] { widget->setGeometry(rect); });
    });

    QObject::connect(qApp, &QApplication::focusChanged, link, [link, outlet, widget](QWidget *, QWidget *now) {
        if (link->hasOutlet() && now && (now == widget || widget->isAncestorOf(now)))
            outlet->widgetFocusChanged(responderFor(now, widget));
    });

    // Modal runs. A dialog is exec'ed; another widget runs a local loop
    // that ends when it is hidden (by the user or the program) or when
    // stopModal is asked.
    struct ModalRun
    {
        bool running = false;
        QPointer<QEventLoop> loop;
        int code = 0;
    };
    auto modal = std::make_shared<ModalRun>();
    link->filter = [link, outlet, modal, widget](QEvent *event) {
        switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
            if (widget->isWindow())
                outlet->widgetFrameChanged(widget->geometry());
            break;
        case QEvent::WindowActivate:
            outlet->widgetBecameKey(true);
            break;
        case QEvent::WindowDeactivate:
            outlet->widgetBecameKey(false);
            break;
        case QEvent::Show:
            if (!event->spontaneous() && !link->isApplying())
                outlet->widgetVisibilityChanged(true);
            break;
        case QEvent::Hide:
            if (event->spontaneous())
                break;  // minimised, not closed
            if (!link->isApplying())
                outlet->widgetVisibilityChanged(false);
            if (modal->loop)
                modal->loop->quit();
            break;
        default:
            break;
        }
        return false;
    };
    widget->installEventFilter(link);

    QObject::connect(outlet, &Window::modalRequested, link, [link, widget, modal, bringToFront](int *code) {
        if (modal->running)
            return;
        QPointer<QWidget> guard(widget);
        modal->running = true;
        modal->code = 0;
        if (auto *dialog = qobject_cast<QDialog *>(widget)) {
            *code = dialog->exec();
            modal->running = false;
            return;
        }
        const Qt::WindowModality previous = widget->windowModality();
        if (!widget->isVisible())
            widget->setWindowModality(Qt::WindowModal);
        QEventLoop loop;
        QObject::connect(widget, &QObject::destroyed, &loop, &QEventLoop::quit);
        modal->loop = &loop;
        bringToFront();
        if (widget->isVisible())
            loop.exec(QEventLoop::DialogExec);
        modal->loop = nullptr;
        modal->running = false;
        *code = modal->code;
        if (!guard)
            return;
        if (widget->isVisible())
            link->apply([widget] { widget->hide(); });
        widget->setWindowModality(previous);
    });
    QObject::connect(outlet, &Window::stopModalRequested, link, [widget, modal](int code) {
        if (!modal->running)
            return;
        if (auto *dialog = qobject_cast<QDialog *>(widget)) {
            dialog->done(code);
            return;
        }
        modal->code = code;
        if (modal->loop)
            modal->loop->quit();
    });
}

Outlet *outletFor(const QWidget *widget)
{
    for (const QWidget *current = widget; current; current = current->parentWidget()) {
        if (Outlet *outlet = registeredOutlet(current))
            return outlet;
    }
    return nullptr;
}

QWidget *widgetFor(const Outlet *outlet)
{
    return qobject_cast<QWidget *>(widgetsByOutlet().value(outlet).data());
}

PrintHandler setPrintHandler(PrintHandler handler)
{
    PrintHandler previous = currentPrintHandler();
    currentPrintHandler() = handler ? std::move(handler) : PrintHandler(printWithDialog);
    return previous;
}

}  // namespace binding
