#pragma once
// The charts of the main window: under the reports table, the report's
// totalled column as bars (for a report that totals one); under the
// statement, money in and money out by month for the period shown. Each is
// drawn again whenever its table is.
class BillManager;
class ChartPanel;
class QWidget;
class ReportManager;

namespace listCharts {

ChartPanel *reportChart(ReportManager &reports, QWidget *parent);
ChartPanel *statementChart(BillManager &bills, QWidget *parent);

}  // namespace listCharts
