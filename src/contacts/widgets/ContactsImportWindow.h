#pragma once
// The preview of a CSV file of contacts: its first rows under their headings,
// and above each column the contact field it goes to, found from the
// heading and changeable (or "(ignore)"). OK imports with the fields shown;
// Cancel imports nothing. Keyboard: Tab goes from chooser to chooser.
#include "contacts/ContactsCsv.h"

#include <QDialog>
#include <optional>

class QComboBox;
class QTableWidget;

class ContactsImportWindow : public QDialog
{
    Q_OBJECT
public:
    explicit ContactsImportWindow(const contactsCsv::Preview &preview, QWidget *parent = nullptr);

    QList<contactsCsv::Field> mapping() const;
    // Runs the window: the fields chosen, or none when cancelled.
    static std::optional<QList<contactsCsv::Field>> choose(const contactsCsv::Preview &preview, QWidget *parent);

private:
    QList<QComboBox *> choosers;
    QTableWidget *rows;
};
