#pragma once
// The list of the database's dated backups, newest first, with the records
// each holds; Enter (or Restore) chooses the one selected.
#include "store/Backups.h"

#include <QDialog>
#include <optional>

class QTableWidget;

class BackupsWindow : public QDialog
{
    Q_OBJECT
public:
    explicit BackupsWindow(const QList<backups::Backup> &list, QWidget *parent = nullptr);
    QString chosen() const;
    static std::optional<QString> choose(const QList<backups::Backup> &list, QWidget *parent);

private:
    QList<backups::Backup> shown;
    QTableWidget *table;
};
