#pragma once
// A push button or a menu item: a title and an action.
#include "platform/outlets/Outlet.h"

class Button : public Outlet
{
    Q_OBJECT
public:
    explicit Button(QObject *parent = nullptr);

    QString title() const { return label; }
    void setTitle(const QString &text);
    // The name of an image of the program's resources ("" for none).
    QString image() const { return imageName; }
    void setImage(const QString &name);

    // From the widget (or a test): the user pressed it.
    void performClick() { Q_EMIT activated(); }

Q_SIGNALS:
    void activated();

private:
    QString label;
    QString imageName;
};
