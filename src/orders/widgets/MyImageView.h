#pragma once
// The attachment well of the order editor: files dragged from the desktop
// onto it are attached to the order in the editor (the first file of a drop
// only; anything that is not a local file is refused). It shows one sheet
// when the order has one attachment and two sheets when it has more. From
// the keyboard, Enter or Space on the well opens the file chooser instead.
#include <QLabel>
#include <QPointer>

class Button;

class OrderManager;

class MyImageView : public QLabel
{
    Q_OBJECT
public:
    explicit MyImageView(OrderManager &manager, QWidget *parent = nullptr);
    ~MyImageView() override;

    // Shows the image the editor names for the well ("" for none).
    void updateIcon();
    // The name of the image shown ("" for none).
    QString shownImage() const { return imageName; }

    QSize sizeHint() const override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void showFocus(bool focused);

    OrderManager &orderManager;
    QPointer<Button> outlet;  // the editor's well outlet
    QString imageName;
};
