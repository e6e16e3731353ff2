#include "orders/widgets/MyImageView.h"

#include "app/widgets/EditorWidgets.h"

#include "orders/OrderManager.h"
#include "platform/Localised.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QIcon>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>

using platform::localised;

namespace {

constexpr int imageSide = 48;

}  // namespace

MyImageView::MyImageView(OrderManager &manager, QWidget *parent)
    : QLabel(parent),
      orderManager(manager),
      outlet(manager.myImageView)
{
    setObjectName(QStringLiteral("myImageView"));
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAlignment(Qt::AlignCenter);
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Sunken);
    setLineWidth(1);
    setMinimumSize(imageSide + 16, imageSide + 16);
    setToolTip(localised("Drop a file here to attach it, or press Space to choose one."));
    setAccessibleName(localised("Attachment well"));
    setAccessibleDescription(toolTip());

    // The well is there: the editor reports the icon to it.
    outlet->setConnected(true);
    connect(&manager, &OrderManager::attachmentIconChanged, this, &MyImageView::updateIcon);
    connect(outlet, &Outlet::changed, this, &MyImageView::updateIcon);
    updateIcon();
}

MyImageView::~MyImageView()
{
    if (outlet)
        outlet->setConnected(false);
}

QSize MyImageView::sizeHint() const
{
    return {imageSide + 24, imageSide + 24};
}

void MyImageView::updateIcon()
{
    if (!outlet)
        return;
    const QString wanted = outlet->image();
    setEnabled(outlet->isEnabled());
    if (outlet->isHidden())
        hide();
    else if (isHidden() && !isWindow())
        show();
    if (wanted == imageName && (wanted.isEmpty() || !pixmap().isNull()))
        return;
    imageName = wanted;
    const QString path = QStringLiteral(":/core/icons/%1.svg").arg(wanted);
    if (wanted.isEmpty() || !QFile::exists(path)) {
        clear();
        return;
    }
    setPixmap(QIcon(path).pixmap(QSize(imageSide, imageSide), devicePixelRatioF()));
}

void MyImageView::dragEnterEvent(QDragEnterEvent *event)
{
    if (editor::firstLocalFile(event->mimeData()).isNull()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void MyImageView::dragMoveEvent(QDragMoveEvent *event)
{
    if (editor::firstLocalFile(event->mimeData()).isNull()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

// Only the first file of a drop is attached; the editor counts it and
// names the well's new image.
void MyImageView::dropEvent(QDropEvent *event)
{
    const QString path = editor::firstLocalFile(event->mimeData());
    if (path.isNull()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    orderManager.fileDropped(path);
    updateIcon();
}

void MyImageView::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space)) {
        event->accept();
        orderManager.attach();
        return;
    }
    QLabel::keyPressEvent(event);
}

void MyImageView::focusInEvent(QFocusEvent *event)
{
    QLabel::focusInEvent(event);
    showFocus(true);
}

void MyImageView::focusOutEvent(QFocusEvent *event)
{
    QLabel::focusOutEvent(event);
    showFocus(false);
}

// A visible frame while the well has the keyboard focus.
void MyImageView::showFocus(bool focused)
{
    setFrameShadow(focused ? QFrame::Plain : QFrame::Sunken);
    setLineWidth(focused ? 2 : 1);
}
