#pragma once
// A multi-line text view. Its plain text is held here; a rich-text view
// (the notepad) keeps its formatting in the bound widget, which reads and
// writes rich-text packages when asked.
#include "platform/outlets/Outlet.h"

class TextView : public Outlet
{
    Q_OBJECT
public:
    explicit TextView(QObject *parent = nullptr);

    QString string() const { return text; }
    void setString(const QString &newText);

    // Rich text with attachments ("name.rtfd"): answers whether a bound
    // widget read or wrote the package. With no widget nothing happens and
    // the answer is false.
    bool readRTFDFromFile(const QString &path);
    bool writeRTFDToFile(const QString &path);

    // From the widget: the user edited the text.
    void userSetString(const QString &newText);

Q_SIGNALS:
    void edited();
    void readRequested(const QString &path, bool *ok);
    void writeRequested(const QString &path, bool *ok);

private:
    QString text = QStringLiteral("");
};
