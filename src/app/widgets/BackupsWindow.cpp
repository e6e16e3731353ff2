#include "app/widgets/BackupsWindow.h"

#include "app/widgets/WindowPlacement.h"
#include "platform/Localised.h"
#include "store/DatabaseBundle.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using platform::localised;

BackupsWindow::BackupsWindow(const QList<backups::Backup> &list, QWidget *parent)
    : QDialog(parent),
      shown(list),
      table(new QTableWidget)
{
    setObjectName(QStringLiteral("backupsWindow"));
    setWindowTitle(localised("Restore from Backup"));
    const QStringList kinds = {localised("Contacts"), localised("Orders"), localised("Items"),
                               localised("Lines"),    localised("Bills"),  localised("Tasks")};
    table->setObjectName(QStringLiteral("backupsTable"));
    table->setColumnCount(2 + DatabaseBundle::FileCount);
    table->setHorizontalHeaderLabels(QStringList{localised("Made"), localised("Backup")} + kinds);
    table->setRowCount(int(list.size()));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int row = 0; row < list.size(); ++row) {
        const backups::Backup &backup = list.at(row);
        table->setItem(row, 0, new QTableWidgetItem(QLocale().toString(backup.made, QLocale::ShortFormat)));
        table->setItem(row, 1, new QTableWidgetItem(backup.name));
        for (int file = 0; file < DatabaseBundle::FileCount; ++file) {
            const int records = backup.records[size_t(file)];
            auto *cell = new QTableWidgetItem(records < 0 ? QStringLiteral("-") : QLocale().toString(records));
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table->setItem(row, 2 + file, cell);
        }
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    if (!list.isEmpty())
        table->selectRow(0);
    connect(table, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(localised("Restore"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("restoreButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *intro = new QLabel(localised("Quorvel keeps the database as it was before it first saved it in each "
                                       "session. Choose the backup to put back."));
    intro->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    table->setFocus();
    placement::remember(this, QStringLiteral("QuorvelBackupsWindowGeometry"), QSize(760, 380));
}

QString BackupsWindow::chosen() const
{
    const int row = table->currentRow();
    return row >= 0 && row < shown.size() ? shown.at(row).name : QString();
}

std::optional<QString> BackupsWindow::choose(const QList<backups::Backup> &list, QWidget *parent)
{
    BackupsWindow window(list, parent);
    if (window.exec() != QDialog::Accepted || window.chosen().isEmpty())
        return std::nullopt;
    return window.chosen();
}
