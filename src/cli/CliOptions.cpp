#include "cli/CliOptions.h"

#include "store/TableDataSource.h"
#include "store/TableExport.h"

namespace cli {

std::optional<Options> parseOptions(const QStringList &arguments, const QStringList &accepted, QString &why)
{
    Options options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (!argument.startsWith(QLatin1String("--"))) {
            options.positional << argument;
            continue;
        }
        QString name = argument.mid(2);
        QString value;
        const qsizetype equals = name.indexOf(QLatin1Char('='));
        if (equals >= 0) {
            value = name.mid(equals + 1);
            name = name.left(equals);
        }
        if (!accepted.contains(name)) {
            why = QStringLiteral("unknown option --%1").arg(name);
            return std::nullopt;
        }
        if (equals < 0) {
            if (i + 1 >= arguments.size()) {
                why = QStringLiteral("option --%1 needs a value").arg(name);
                return std::nullopt;
            }
            value = arguments.at(++i);
        }
        options.values.insert(name, value);
    }
    return options;
}

std::optional<QList<TableColumn>> parseColumns(const QString &text, const QList<TableColumn> &shown, QString &why)
{
    QList<TableColumn> columns;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const qsizetype equals = part.indexOf(QLatin1Char('='));
        TableColumn column;
        column.identifier = (equals < 0 ? part : part.left(equals)).trimmed();
        if (column.identifier.isEmpty()) {
            why = QStringLiteral("--columns needs ID[=TITLE],... with no empty ID");
            return std::nullopt;
        }
        column.title = column.identifier;
        if (equals >= 0) {
            column.title = part.mid(equals + 1);
        } else {
            for (const TableColumn &known : shown) {
                if (known.identifier == column.identifier)
                    column.title = known.title;
            }
        }
        columns.append(column);
    }
    return columns;
}

QByteArray exportBytes(const TableDataSource &source, const TableView &table, bool csv)
{
    return csv ? encodeCsvExport(source.getDataAsCSVusingTableView(table))
               : encodeHtmlExport(wrapHtmlExport(source.getDataAsHTMLusingTableView(table)));
}

}  // namespace cli
