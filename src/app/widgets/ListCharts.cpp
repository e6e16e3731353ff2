#include "app/widgets/ListCharts.h"

#include "accounts/BillManager.h"
#include "app/widgets/ChartPanel.h"
#include "reports/ChartData.h"
#include "reports/ReportManager.h"
#include "store/PrefsController.h"
#include "store/TableView.h"

namespace listCharts {

namespace {

// The most bars a report's chart shows (the largest).
constexpr int mostBars = 20;

// The rows a collection shows, without the total rows under them.
int shownRows(const kdDataSource &source)
{
    return source.kdDataSource::numberOfRowsInTableView();
}

}  // namespace

ChartPanel *reportChart(ReportManager &reports, QWidget *parent)
{
    auto *panel = new ChartPanel(QStringLiteral("reportChart"), parent);
    const auto draw = [&reports, panel] {
        const QString totalled = reports.getTotalCol();
        const QList<TableColumn> columns = reports.table->tableColumns();
        if (totalled == QLatin1String("field-1") || columns.isEmpty()) {
            panel->clear();
            return;
        }
        QString title;
        for (const TableColumn &column : columns) {
            if (column.identifier == totalled)
                title = column.title;
        }
        QStringList labels, figures;
        const int rows = shownRows(reports);
        for (int row = 0; row < rows; ++row) {
            labels << reports.objectValueForTableColumn(columns.first().identifier, row);
            figures << reports.objectValueForTableColumn(totalled, row);
        }
        panel->showBars(charts::reportBars(labels, figures, mostBars), title);
    };
    QObject::connect(reports.table, &TableView::reloaded, panel, draw);
    QObject::connect(reports.table, &TableView::columnsChanged, panel, draw);
    return panel;
}

ChartPanel *statementChart(BillManager &bills, QWidget *parent)
{
    auto *panel = new ChartPanel(QStringLiteral("statementChart"), parent);
    const auto draw = [&bills, panel] {
        charts::Dated moneyIn, moneyOut;
        // The money in of the period: its rows carry the figure and the date.
        if (const auto *received = dynamic_cast<const kdDataSource *>(bills.getInTableView()->dataSource())) {
            for (int row = 0; row < shownRows(*received); ++row)
                moneyIn.append({received->objectValueForTableColumn(QStringLiteral("field3"), row),
                                received->objectValueForTableColumn(QStringLiteral("field2"), row)});
        }
        for (int row = 0; row < shownRows(bills); ++row) {
            const dataObject *bill = bills.getnthVisibleItem(row);
            moneyOut.append(
                {bill->getFieldByName(QStringLiteral("datepaid")), bill->getFieldByName(QStringLiteral("amount"))});
        }
        panel->showMonths(charts::monthlyMoney(moneyIn, moneyOut, PrefsController::dateFormatOf(bills.getQuorvel())));
    };
    QObject::connect(bills.getSttTableView(), &TableView::reloaded, panel, draw);
    return panel;
}

}  // namespace listCharts
