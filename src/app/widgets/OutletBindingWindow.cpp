// Binding a window outlet to a top-level widget: title and edited mark,
// showing, key window and first responder, centring and modal runs.
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

}  // namespace

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

}  // namespace binding
