#include "store/ListColumns.h"

namespace ListColumns {

QStringList kinds()
{
    return {QStringLiteral("contacts"),  QStringLiteral("orders"), QStringLiteral("items"),
            QStringLiteral("materials"), QStringLiteral("bills"),  QStringLiteral("tasks")};
}

bool isMoneyField(const QString &field)
{
    static const QStringList money{
        QStringLiteral("value"),       QStringLiteral("valueWithTax"), QStringLiteral("tax"),
        QStringLiteral("taxAmount"),   QStringLiteral("shipping"),     QStringLiteral("deposit"),
        QStringLiteral("balance"),     QStringLiteral("price"),        QStringLiteral("bought"),
        QStringLiteral("cost"),        QStringLiteral("total"),        QStringLiteral("amount"),
        QStringLiteral("totalcharge"), QStringLiteral("rate"),         QStringLiteral("stockcost")};
    return money.contains(field);
}

QList<TableColumn> defaultsFor(const QString &kind)
{
    if (kind == QLatin1String("contacts")) {
        QList<TableColumn> columns = TableView::columnsFrom({{"name", "Name"},
                                                             {"type", "Type"},
                                                             {"add1", "Address"},
                                                             {"postcode", "Postcode"},
                                                             {"phone", "Phone"},
                                                             {"email", "Email"}});
        // Room for the outline's disclosure and a company's people indented.
        columns.first().width = 200;
        return columns;
    }
    if (kind == QLatin1String("orders"))
        return TableView::columnsFrom({{"ordernum", "Number"},
                                       {"date", "Date"},
                                       {"title", "Title"},
                                       {"contact:name", "Customer"},
                                       {"status", "Status"},
                                       {"valueWithTax", "Total"}});
    if (kind == QLatin1String("items"))
        return TableView::columnsFrom({{"code", "Code"},
                                       {"item", "Item"},
                                       {"qty", "Qty"},
                                       {"price", "Price"},
                                       {"bought", "Cost"},
                                       {"status", "Status"}});
    if (kind == QLatin1String("materials"))
        return TableView::columnsFrom({{"item", "Item"},
                                       {"code", "Code"},
                                       {"qty", "Qty"},
                                       {"cost", "Cost"},
                                       {"unit", "Unit"},
                                       {"total", "Total"}});
    if (kind == QLatin1String("tasks"))
        return TableView::columnsFrom({{"complete", "Done"},
                                       {"title", "Title"},
                                       {"startdate", "Start"},
                                       {"enddate", "End"},
                                       {"totaltime", "Time"},
                                       {"totalcharge", "Charge"}});
    if (kind == QLatin1String("bills"))
        return TableView::columnsFrom({{"datepaid", "Date Paid"},
                                       {"name", "Paid To"},
                                       {"number", "Number"},
                                       {"category", "Category"},
                                       {"amount", "Amount"}});
    return {};
}

}  // namespace ListColumns
