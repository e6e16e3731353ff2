#include "accounts/StatementManager.h"

#include "platform/Localised.h"
#include "platform/Numbers.h"
#include "store/TableView.h"

using namespace Qt::Literals::StringLiterals;

int StatementManager::numberOfRowsInTableView() const
{
    return 4;
}

QString StatementManager::lastRowValue(const TableView *table, const QString &columnId)
{
    const TableDataSource *source = table ? table->dataSource() : nullptr;
    if (!source)
        return u""_s;
    const int rows = source->numberOfRowsInTableView();
    if (rows < 1)
        return u""_s;
    return source->objectValueForTableColumn(columnId, rows - 1);
}

QString StatementManager::shownValueForTableColumn(const QString &columnId, int row) const
{
    if (columnId == "name"_L1 && row == 3)
        return platform::localised("Difference");
    return objectValueForTableColumn(columnId, row);
}

QString StatementManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    if (columnId == "name"_L1) {
        if (row == 0)
            return platform::localised("Money In");
        if (row == 1)
            return platform::localised("Money Out");
        return u""_s;
    }
    switch (row) {
    case 0:
        return lastRowValue(inTable, u"field2"_s);
    case 1:
        return lastRowValue(outTable, u"amount"_s);
    case 2:
        return u"_____"_s;
    case 3: {
        const float moneyIn = platform::floatValue(lastRowValue(inTable, u"field2"_s));
        const float moneyOut = platform::floatValue(lastRowValue(outTable, u"amount"_s));
        const float difference = moneyIn - moneyOut;
        return platform::format2(difference);
    }
    default:
        return u""_s;
    }
}

QString StatementManager::getDataAsCSVusingTableView(const TableView &table) const
{
    const QList<TableColumn> &columns = table.tableColumns();
    QString text;
    // Values are written as they are, as in every CSV export of the program.
    for (qsizetype c = 0; c < columns.size(); ++c) {
        if (c > 0)
            text += u',';
        text += u'"' + columns.at(c).title + u'"';
    }
    text += u'\r';
    for (int row = 0; row < numberOfRowsInTableView(); ++row) {
        for (qsizetype c = 0; c < columns.size(); ++c) {
            if (c > 0)
                text += u',';
            text += u'"' + objectValueForTableColumn(columns.at(c).identifier, row) + u'"';
        }
        text += u'\r';
    }
    return text;
}

QString StatementManager::getDataAsHTMLusingTableView(const TableView &table) const
{
    static const QLatin1String headOpen("<th style = background:#cccccc;font-family:monospace>");
    static const QLatin1String shade("style = background:#f0f0ff;font-family:monospace");
    static const QLatin1String cellStyle(" style = font-family:monospace>");

    const QList<TableColumn> &columns = table.tableColumns();
    QString text = u"<table cellpadding=2 cellspacing=2 border=0><tr>"_s;
    for (const TableColumn &column : columns)
        text += headOpen + column.title + "</th>"_L1;
    text += "</tr>"_L1;
    bool shaded = false;  // the first row is plain, then every other row
    for (int row = 0; row < numberOfRowsInTableView(); ++row) {
        text += "<tr>"_L1;
        for (const TableColumn &column : columns) {
            text += "<td "_L1;
            if (shaded)
                text += shade;
            text += cellStyle + objectValueForTableColumn(column.identifier, row) + "</td>"_L1;
        }
        text += "</tr>"_L1;
        shaded = !shaded;
    }
    text += "</table><br />"_L1;
    return text;
}
