// Binding the outlets of fields, text views, pop-ups, check boxes, buttons,
// actions, matrices, colour wells and tab views to their widgets.
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

using namespace detail;

namespace {

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
    QObject::connect(widget, &QComboBox::activated, link, [link, outlet, widget](int index) {
        if (!link->fromUser())
            return;
        // An editable pop-up may hold a title the user typed.
        if (widget->isEditable() && widget->itemText(index) != outlet->itemTitleAt(index))
            outlet->userEnterTitle(widget->itemText(index));
        else
            outlet->userSelectItemAtIndex(index);
    });
    if (widget->isEditable() && widget->lineEdit()) {
        // Typed and left without Enter, the title is taken all the same.
        QObject::connect(widget->lineEdit(), &QLineEdit::editingFinished, link, [link, outlet, widget] {
            if (link->fromUser() && widget->currentText() != outlet->titleOfSelectedItem())
                outlet->userEnterTitle(widget->currentText());
        });
    }
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

}  // namespace binding
