// Table export: the CSV and HTML text of any kdDataSource's table, the table
// layout files, and the page-level encoding of an export.
#include "store/TableExport.h"

#include "platform/Numbers.h"
#include "store/Parser.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QtEndian>

namespace {

// A first guess of the text's size, so that one allocation usually does.
qsizetype estimatedSize(qsizetype rows, qsizetype columns, qsizetype perCell)
{
    const qsizetype estimate = (rows + 1) * columns * perCell + 64;
    return estimate > 0 && estimate < (qsizetype(1) << 28) ? estimate : (qsizetype(1) << 28);
}

}  // namespace

QString kdDataSource::getDataAsCSVusingTableView(const TableView &table) const
{
    const QList<TableColumn> &columns = table.tableColumns();
    const int rows = numberOfRowsInTableView();
    QString text;
    text.reserve(estimatedSize(rows, columns.size(), 16));

    // Values are written as they are: quotes, commas and line breaks inside
    // them are not escaped.
    for (qsizetype c = 0; c < columns.size(); ++c) {
        if (c > 0)
            text += QLatin1Char(',');
        text += QLatin1Char('"');
        text += columns.at(c).title;
        text += QLatin1Char('"');
    }
    text += QLatin1Char('\r');

    for (int row = 0; row < rows; ++row) {
        for (qsizetype c = 0; c < columns.size(); ++c) {
            if (c > 0)
                text += QLatin1Char(',');
            text += QLatin1Char('"');
            text += objectValueForTableColumn(columns.at(c).identifier, row);
            text += QLatin1Char('"');
        }
        text += QLatin1Char('\r');
    }
    return text;
}

QString kdDataSource::getDataAsHTMLusingTableView(const TableView &table) const
{
    static const QLatin1String tableOpen("<table cellpadding=2 cellspacing=2 border=0><tr>");
    static const QLatin1String headOpen("<th style = background:#cccccc;font-family:sans-serif;text-align:left>");
    static const QLatin1String headClose("</th>");
    static const QLatin1String rowOpen("<tr>");
    static const QLatin1String rowClose("</tr>");
    static const QLatin1String cellOpen("<td ");
    // Shaded cells carry two style attributes, one after the other; saved
    // exports have always been written so.
    static const QLatin1String shade("style = background:#f0f0ff;font-family:monospace");
    static const QLatin1String cellStyle(" style = font-family:monospace>");
    static const QLatin1String cellClose("</td>");
    static const QLatin1String tableClose("</table><br />");

    const QList<TableColumn> &columns = table.tableColumns();
    const int rows = numberOfRowsInTableView();
    QString text;
    text.reserve(estimatedSize(rows, columns.size(), 96));

    text += tableOpen;
    for (const TableColumn &column : columns) {
        text += headOpen;
        text += column.title;
        text += headClose;
    }
    text += rowClose;

    bool shaded = false;  // the first data row is plain, then every other row
    for (int row = 0; row < rows; ++row) {
        text += rowOpen;
        for (const TableColumn &column : columns) {
            text += cellOpen;
            if (shaded)
                text += shade;
            text += cellStyle;
            text += objectValueForTableColumn(column.identifier, row);
            text += cellClose;
        }
        text += rowClose;
        shaded = !shaded;
    }
    text += tableClose;
    return text;
}

bool kdDataSource::configureTable(TableView &table, const QString &path, const QString &defaults)
{
    Q_UNUSED(defaults);
    int count = 0;
    QStringList widths;
    QStringList headings;
    QStringList fields;
    QList<SortDescriptor> sortDescriptors;

    Parser parser;
    parser.initWithFilePath(path);
    while (const std::unique_ptr<DbItem> item = parser.getItem()) {
        const QString &name = item->getName();
        if (name == QLatin1String("numberofcols")) {
            count = platform::intValue(item->getData());  // the last one wins
        } else if (name == QLatin1String("colwidth")) {
            widths.append(item->getData());
        } else if (name == QLatin1String("colheading")) {
            headings.append(item->getData());
        } else if (name == QLatin1String("field")) {
            fields.append(item->getData());
            sortDescriptors.append(SortDescriptor{item->getData(), true});
        }
    }

    table.removeAllColumns();
    // A file with fewer fields, headings or widths than columns is wrong;
    // the missing parts are left empty (width: the default) rather than
    // read past the end.
    QList<TableColumn> columns;
    for (int i = 0; i < count; ++i) {
        TableColumn column;
        column.identifier = fields.value(i, QStringLiteral(""));
        column.title = headings.value(i, QStringLiteral(""));
        if (i < widths.size())
            column.width = platform::intValue(widths.at(i));
        column.editable = false;
        columns.append(column);
    }
    if (!columns.isEmpty())
        table.setColumns(columns);
    table.setSortDescriptors(sortDescriptors);
    table.setLastColumnFills(true);
    return true;
}

QString wrapHtmlExport(const QString &fragment)
{
    static const QLatin1String before("<html><head><title>Data Export from Quorvel</title><body>");
    static const QLatin1String after("</body></head></html>");
    QString page;
    page.reserve(before.size() + fragment.size() + after.size());
    page += before;
    page += fragment;
    page += after;
    return page;
}

QByteArray encodeCsvExport(const QString &text)
{
    // Unpaired surrogates cannot be written in UTF-8: drop them.
    const qsizetype n = text.size();
    const QChar *units = text.constData();
    qsizetype firstBad = -1;
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = units[i];
        if (!c.isSurrogate())
            continue;
        if (c.isHighSurrogate() && i + 1 < n && units[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        firstBad = i;
        break;
    }
    if (firstBad < 0)
        return text.toUtf8();

    QString clean;
    clean.reserve(n);
    clean.append(units, firstBad);
    for (qsizetype i = firstBad; i < n; ++i) {
        const QChar c = units[i];
        if (!c.isSurrogate()) {
            clean.append(c);
        } else if (c.isHighSurrogate() && i + 1 < n && units[i + 1].isLowSurrogate()) {
            clean.append(c);
            clean.append(units[i + 1]);
            ++i;
        }
    }
    return clean.toUtf8();
}

QByteArray encodeHtmlExport(const QString &text)
{
    const qsizetype n = text.size();
    QByteArray bytes(2 + 2 * n, Qt::Uninitialized);
    uchar *out = reinterpret_cast<uchar *>(bytes.data());
    out[0] = 0xFF;
    out[1] = 0xFE;
    const char16_t *units = reinterpret_cast<const char16_t *>(text.utf16());
    for (qsizetype i = 0; i < n; ++i)
        qToLittleEndian<quint16>(quint16(units[i]), out + 2 + 2 * i);
    return bytes;
}
