#pragma once
// A chart under a table, drawn with Qt Charts: the bars of a report, or
// money in and out by month; "Save Chart…" keeps it as a PNG picture.
// Hidden while it has nothing to show.
#include "reports/ChartData.h"

#include <QWidget>

class QChart;
class QChartView;
class QPushButton;

class ChartPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ChartPanel(const QString &name, QWidget *parent = nullptr);

    void showBars(const QList<charts::Bar> &bars, const QString &title);
    void showMonths(const QList<charts::Month> &months);
    void clear();

    QChart *chart() const;
    // The chart as a picture; false when it cannot be written.
    bool saveAsPng(const QString &path) const;
    // Asks where (the save panel) and saves.
    void saveWithPanel();

private:
    QChartView *view;
    QPushButton *save;
};
