#pragma once
// How the commands read their arguments: named options as "--name VALUE" or
// "--name=VALUE" (the last of a repeated option counts) beside positional
// arguments, the "ID[=TITLE],..." column lists, and the export bytes of a
// table in either format.
#include "store/TableView.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

class TableDataSource;

namespace cli {

struct Options
{
    QStringList positional;
    QMap<QString, QString> values;
};

// Anything but the accepted options is a usage error (answered in `why`).
std::optional<Options> parseOptions(const QStringList &arguments, const QStringList &accepted, QString &why);

// "ID[=TITLE],..." A column without a title takes the title `shown` gives
// that field, else the field name. An empty ID is a usage error.
std::optional<QList<TableColumn>> parseColumns(const QString &text, const QList<TableColumn> &shown, QString &why);

// The program's export of the table: CSV in UTF-8, or the HTML page.
QByteArray exportBytes(const TableDataSource &source, const TableView &table, bool csv);

}  // namespace cli
