#pragma once
// Driving a window's form as a user would: widgets found by their object
// name, text typed over what a field holds, buttons clicked. Header only:
// the core test executables, which have no widgets, never include it.
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QWidget>

namespace testlib {

// The widget of that class and name inside the form; a warning names the
// widget when there is none (the test then fails on the null pointer).
template <class Widget> Widget *findNamed(const QWidget *form, const char *name)
{
    auto *widget = form ? form->findChild<Widget *>(QLatin1String(name)) : nullptr;
    if (!widget)
        qWarning("no widget named %s", name);
    return widget;
}

// Drags the data onto the widget and drops it there, as a file manager
// does (the drop is made whatever the answer); whether the drag was accepted.
inline bool dragAndDrop(QWidget *target, const QMimeData *data)
{
    QDragEnterEvent enter(target->rect().center(), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent drop(target->rect().center(), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    return enter.isAccepted();
}

// A form reached through form(): the fixture of a window test derives from
// this and says which window its form is.
class FormDriver
{
public:
    virtual ~FormDriver() = default;
    virtual QWidget *form() = 0;

    template <class Widget> Widget *find(const char *name) { return findNamed<Widget>(form(), name); }
    QString text(const char *field) { return find<QLineEdit>(field)->text(); }
    // Replaces the field's text by typing.
    void type(const char *field, const QString &value)
    {
        QLineEdit *edit = find<QLineEdit>(field);
        edit->selectAll();
        QTest::keyClicks(edit, value);
    }
    void click(const char *button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
};

}  // namespace testlib
