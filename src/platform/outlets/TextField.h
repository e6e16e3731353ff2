#pragma once
// A one-line text field (also a label or a search field). A field may carry
// a formatter, which decides the text it shows and hands back:
// - a date format ("%d/%m/%y" or "%m/%d/%y"): text that reads as a date,
//   words such as "today" or "next week" included (platform::readDate), is
//   shown as the format prints that date ("today" becomes "15/01/26");
// - money: text that is wholly a number, and every float set on the field,
//   is shown with two decimals ("100" becomes "100.00"), without thousands
//   separators, so the figure shown is the figure stored and read back.
// Any other text is shown as it stands: the field never loses what was
// typed. The program's text is formatted when it is set; the user's text
// when the user finishes editing (commitEditing), so typing is never
// rewritten under the cursor.
#include "platform/outlets/Outlet.h"

#include <QDate>
#include <optional>

class TextField : public Outlet
{
    Q_OBJECT
public:
    explicit TextField(QObject *parent = nullptr);

    QString stringValue() const { return value; }
    // The text, as the field's formatter makes it.
    void setStringValue(const QString &text);
    // A number: two decimals in a money field, else the number itself
    // (the fewest decimals that read back as the same float).
    void setFloatValue(float number);
    float floatValue() const;
    int intValue() const;

    // A date format of %d %m %y %Y (a time format of %H %M is carried for
    // the widget layer and the managers, and formats nothing).
    QString dateFormat() const { return format; }
    void setDateFormat(const QString &newFormat);
    // The date the text stands for in the field's date format (words such as
    // "tomorrow" read on today's date), none when it stands for none.
    std::optional<QDate> dateValue() const;

    bool isMoney() const { return money; }
    void setMoney(bool on);

    // What the field's formatter makes of the text.
    QString formatted(const QString &text) const;

    bool isEditable() const { return editable; }
    void setEditable(bool on);

    // From the widget: the user typed (edited() follows) or pressed Enter
    // (activated() follows).
    void userSetStringValue(const QString &text);
    void performAction() { Q_EMIT activated(); }
    // From the widget: the user finished editing the field. The text
    // becomes what the formatter makes of it; when that changes it,
    // changed() and edited() follow.
    void commitEditing();

Q_SIGNALS:
    void edited();
    void activated();

private:
    QString value = QStringLiteral("");
    QString format;
    bool money = false;
    bool editable = true;
};
