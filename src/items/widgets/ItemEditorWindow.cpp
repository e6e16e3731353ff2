#include "items/widgets/ItemEditorWindow.h"

#include "app/widgets/EditorWidgets.h"
#include "app/widgets/OutletBinding.h"
#include "items/ItemManager.h"
#include "items/widgets/ItemPicture.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"

#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

using editor::pushButton;
using platform::localised;

namespace {

constexpr int wellSide = 160;

}  // namespace

ItemEditorWindow::ItemEditorWindow(ItemManager &manager, QWidget *parent)
    : EditorDialog(
        QStringLiteral("itemEditorWindow"), localised("Item"), [owner = &manager] { owner->cancel(); }, parent),
      items(manager)
{
    auto *columns = new QHBoxLayout;
    auto *left = new QVBoxLayout;
    left->addWidget(makeItemGroup(), 1);
    left->addWidget(makeStockGroup());
    columns->addLayout(left, 1);
    columns->addWidget(makePictureGroup());
    QPushButton *similar = pushButton(localised("New Similar"), QStringLiteral("createSimilarButton"),
                                      [this] { items.createSimilar(); });
    layOut(columns, nullptr, [this] { items.finish(); }, {similar});

    connect(items.imageView, &Outlet::changed, this, &ItemEditorWindow::showPicture);
    items.imageView->setConnected(true);
    showPicture();
    attach(items.editorWindow, QStringLiteral("QuorvelItemEditorWindowGeometry"), QSize(720, 520));
}

ItemEditorWindow::~ItemEditorWindow()
{
    items.imageView->setConnected(false);
}

QWidget *ItemEditorWindow::makeItemGroup()
{
    auto *group = new QGroupBox(localised("Item"));
    group->setObjectName(QStringLiteral("itemGroup"));
    editor::Form form{new QFormLayout(group), &tabChain, 12};
    form.field(items.code, QStringLiteral("code"), localised("C&ode:"));
    form.field(items.name, QStringLiteral("name"), localised("&Name:"));
    form.popUp(items.condition, QStringLiteral("condition"), localised("Con&dition:"));
    form.popUp(items.status, QStringLiteral("status"), localised("&Status:"));
    form.notes(items.description, QStringLiteral("description"), localised("Des&cription:"));
    form.withButton(localised("Su&pplier:"), editor::lineEdit(items.supplierName, QStringLiteral("supplierName")),
                    pushButton(localised("Choose Supplier..."), QStringLiteral("pickSupplierButton"),
                               [this] { items.pickSupplier(); }));
    return group;
}

QWidget *ItemEditorWindow::makeStockGroup()
{
    auto *group = new QGroupBox(localised("Stock"));
    group->setObjectName(QStringLiteral("stockGroup"));
    editor::Form form{new QFormLayout(group), &tabChain};
    form.field(items.price, QStringLiteral("price"), localised("P&rice:"));
    form.field(items.bought, QStringLiteral("bought"), localised("&Bought for:"));
    form.field(items.shipping, QStringLiteral("shipping"), localised("S&hipping:"));
    form.field(items.qty, QStringLiteral("qty"), localised("&Quantity in stock:"));
    form.field(items.optimumQty, QStringLiteral("optimumQty"), localised("Quantity &wanted:"));
    form.field(items.warnLevel, QStringLiteral("warnLevel"), localised("&Low-stock level:"));

    auto *decrease = new QCheckBox(localised("&Take sales out of stock"));
    decrease->setObjectName(QStringLiteral("decreaseQty"));
    binding::bind(items.decreaseQty, decrease);
    form.layout->addRow(QString(), decrease);
    tabChain << decrease;
    return group;
}

QWidget *ItemEditorWindow::makePictureGroup()
{
    auto *group = new QGroupBox(localised("Picture"));
    group->setObjectName(QStringLiteral("pictureGroup"));
    well = new QLabel;
    well->setObjectName(QStringLiteral("imageView"));
    well->setAlignment(Qt::AlignCenter);
    well->setFrameShape(QFrame::StyledPanel);
    well->setFrameShadow(QFrame::Sunken);
    well->setFixedSize(wellSide + 8, wellSide + 8);
    well->setAcceptDrops(true);
    well->setFocusPolicy(Qt::StrongFocus);
    well->setToolTip(localised("Drop a picture here, or press Space to choose one."));
    well->setAccessibleName(localised("Picture"));
    well->installEventFilter(this);

    QPushButton *choose
        = pushButton(localised("Choose Picture..."), QStringLiteral("chooseImageButton"), [this] { choosePicture(); });
    QPushButton *remove
        = pushButton(localised("Remove Picture"), QStringLiteral("deleteImageButton"), [this] { items.deleteImage(); });
    tabChain << well << choose << remove;

    auto *layout = new QVBoxLayout(group);
    layout->addWidget(well, 0, Qt::AlignHCenter);
    layout->addWidget(choose);
    layout->addWidget(remove);
    layout->addStretch(1);
    return group;
}

void ItemEditorWindow::showPicture()
{
    const QImage picture = ItemPicture::image(items.imageView->image());
    if (picture.isNull()) {
        well->clear();
        return;
    }
    well->setPixmap(
        QPixmap::fromImage(picture.scaled(wellSide, wellSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

bool ItemEditorWindow::takePictureFrom(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QByteArray tiff = ItemPicture::tiffData(reader.read());
    if (tiff.isEmpty())
        return false;
    items.imageView->userSetImage(tiff);
    return true;
}

void ItemEditorWindow::choosePicture()
{
    QStringList types;
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        types << QString::fromLatin1(format);
    if (const std::optional<QString> chosen = platform::runOpenPanel(types, localised("Choose Picture")))
        takePictureFrom(*chosen);
}

// The well takes dropped image files, and Space or Enter opens the chooser.
bool ItemEditorWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != well)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (editor::firstLocalFile(drag->mimeData()).isNull()) {
            drag->ignore();
        } else {
            drag->setDropAction(Qt::CopyAction);
            drag->accept();
        }
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QString path = editor::firstLocalFile(drop->mimeData());
        if (path.isNull() || !takePictureFrom(path)) {
            drop->ignore();
        } else {
            drop->setDropAction(Qt::CopyAction);
            drop->accept();
        }
        return true;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && (key->key() == Qt::Key_Space || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
            choosePicture();
            return true;
        }
        return false;
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        well->setLineWidth(event->type() == QEvent::FocusIn ? 2 : 1);
        return false;
    default:
        return QDialog::eventFilter(watched, event);
    }
}
