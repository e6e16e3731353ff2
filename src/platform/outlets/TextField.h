#pragma once
// A one-line text field (also a label or a search field). A field may carry
// a date format ("%d/%m/%y"), which the widget layer uses to read and show
// dates; the text itself stays the text shown.
#include "platform/outlets/Outlet.h"

class TextField : public Outlet
{
    Q_OBJECT
public:
    explicit TextField(QObject *parent = nullptr);

    QString stringValue() const { return value; }
    void setStringValue(const QString &text);
    float floatValue() const;
    int intValue() const;

    QString dateFormat() const { return format; }
    void setDateFormat(const QString &newFormat);

    bool isEditable() const { return editable; }
    void setEditable(bool on);

    // From the widget: the user typed (edited() follows) or pressed Enter
    // (activated() follows).
    void userSetStringValue(const QString &text);
    void performAction() { Q_EMIT activated(); }

Q_SIGNALS:
    void edited();
    void activated();

private:
    QString value = QStringLiteral("");
    QString format;
    bool editable = true;
};
