#include "contacts/widgets/ContactsImportWindow.h"

#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using platform::localised;

ContactsImportWindow::ContactsImportWindow(const contactsCsv::Preview &preview, QWidget *parent)
    : QDialog(parent),
      rows(new QTableWidget)
{
    setObjectName(QStringLiteral("contactsImportWindow"));
    setWindowTitle(localised("Import Contacts"));
    auto *intro = new QLabel(localised("Choose the contact field each column goes to. The first rows of the file "
                                       "are shown below; the file is read as %1.")
                                 .arg(preview.encoding));
    intro->setWordWrap(true);

    const int columns = int(preview.headings.size());
    rows->setObjectName(QStringLiteral("previewTable"));
    rows->setColumnCount(columns);
    rows->setRowCount(int(preview.rows.size()) + 1);
    rows->setHorizontalHeaderLabels(preview.headings);
    rows->setVerticalHeaderItem(0, new QTableWidgetItem(localised("Goes to")));
    rows->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int column = 0; column < columns; ++column) {
        auto *chooser = new QComboBox;
        chooser->setObjectName(QStringLiteral("fieldFor%1").arg(column));
        chooser->setAccessibleName(localised("Field for the column %1").arg(preview.headings.at(column)));
        for (const contactsCsv::Field field : contactsCsv::allFields())
            chooser->addItem(contactsCsv::labelOf(field), int(field));
        chooser->setCurrentIndex(chooser->findData(int(preview.mapping.value(column))));
        rows->setCellWidget(0, column, chooser);
        choosers << chooser;
        for (int row = 0; row < preview.rows.size(); ++row)
            rows->setItem(row + 1, column, new QTableWidgetItem(preview.rows.at(row).value(column)));
    }
    rows->resizeColumnsToContents();
    for (int row = 1; row < rows->rowCount(); ++row)
        rows->setVerticalHeaderItem(row, new QTableWidgetItem(QString::number(row)));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(localised("Import"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("importButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    if (!preview.problem.isEmpty()) {
        auto *problem = new QLabel(localised("Only part of the file can be read: %1").arg(preview.problem));
        problem->setObjectName(QStringLiteral("previewProblem"));
        problem->setWordWrap(true);
        layout->addWidget(problem);
    }
    layout->addWidget(rows, 1);
    layout->addWidget(buttons);
    setTabOrder(buttons, buttons);
    if (!choosers.isEmpty())
        choosers.first()->setFocus();
    placement::remember(this, QStringLiteral("QuorvelContactsImportWindowGeometry"), QSize(900, 480));
}

QList<contactsCsv::Field> ContactsImportWindow::mapping() const
{
    QList<contactsCsv::Field> fields;
    for (const QComboBox *chooser : choosers)
        fields << contactsCsv::Field(chooser->currentData().toInt());
    return fields;
}

std::optional<QList<contactsCsv::Field>> ContactsImportWindow::choose(const contactsCsv::Preview &preview,
                                                                      QWidget *parent)
{
    ContactsImportWindow window(preview, parent);
    if (window.exec() != QDialog::Accepted)
        return std::nullopt;
    return window.mapping();
}
