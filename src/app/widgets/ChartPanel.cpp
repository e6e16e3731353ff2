#include "app/widgets/ChartPanel.h"

#include "platform/Alerts.h"
#include "platform/FilePanels.h"
#include "platform/Localised.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QHBoxLayout>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>
#include <QValueAxis>

using platform::localised;

ChartPanel::ChartPanel(const QString &name, QWidget *parent)
    : QWidget(parent),
      view(new QChartView(this)),
      save(new QPushButton(localised("Save Chart…"), this))
{
    setObjectName(name);
    view->setObjectName(name + QStringLiteral("View"));
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumHeight(180);
    view->chart()->legend()->setAlignment(Qt::AlignBottom);
    save->setObjectName(name + QStringLiteral("SaveButton"));
    save->setAutoDefault(false);
    connect(save, &QPushButton::clicked, this, &ChartPanel::saveWithPanel);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view, 1);
    layout->addLayout(buttons);
    hide();
}

QChart *ChartPanel::chart() const
{
    return view->chart();
}

void ChartPanel::clear()
{
    QChart *shown = view->chart();
    shown->removeAllSeries();
    for (QAbstractAxis *axis : shown->axes())
        shown->removeAxis(axis);
    hide();
}

void ChartPanel::showBars(const QList<charts::Bar> &bars, const QString &title)
{
    clear();
    if (bars.isEmpty())
        return;
    QChart *shown = view->chart();
    auto *set = new QBarSet(title);
    QStringList labels;
    double highest = 0;
    for (const charts::Bar &bar : bars) {
        *set << bar.value;
        labels << bar.label;
        highest = std::max(highest, bar.value);
    }
    auto *series = new QBarSeries;
    series->append(set);
    shown->addSeries(series);
    auto *categories = new QBarCategoryAxis;
    categories->append(labels);
    shown->addAxis(categories, Qt::AlignBottom);
    series->attachAxis(categories);
    auto *values = new QValueAxis;
    values->setRange(0, highest > 0 ? highest * 1.05 : 1);
    values->setLabelFormat(QStringLiteral("%.0f"));
    shown->addAxis(values, Qt::AlignLeft);
    series->attachAxis(values);
    shown->legend()->setVisible(false);
    shown->setTitle(title);
    show();
}

void ChartPanel::showMonths(const QList<charts::Month> &months)
{
    clear();
    if (months.isEmpty())
        return;
    QChart *shown = view->chart();
    auto *in = new QBarSet(localised("Money In"));
    auto *out = new QBarSet(localised("Money Out"));
    QStringList labels;
    double highest = 0;
    for (const charts::Month &month : months) {
        *in << month.in;
        *out << month.out;
        labels << QLocale().toString(month.month, QStringLiteral("MMM yy"));
        highest = std::max({highest, month.in, month.out});
    }
    auto *series = new QBarSeries;
    series->append(in);
    series->append(out);
    shown->addSeries(series);
    auto *categories = new QBarCategoryAxis;
    categories->append(labels);
    shown->addAxis(categories, Qt::AlignBottom);
    series->attachAxis(categories);
    auto *values = new QValueAxis;
    values->setRange(0, highest > 0 ? highest * 1.05 : 1);
    values->setLabelFormat(QStringLiteral("%.0f"));
    shown->addAxis(values, Qt::AlignLeft);
    series->attachAxis(values);
    shown->legend()->setVisible(true);
    shown->setTitle(localised("Money In and Out by Month"));
    show();
}

bool ChartPanel::saveAsPng(const QString &path) const
{
    return view->grab().save(path, "PNG");
}

void ChartPanel::saveWithPanel()
{
    platform::FilePanelRequest request;
    request.kind = platform::FilePanelRequest::Save;
    request.title = localised("Save Chart");
    request.fileTypes = {QStringLiteral("png")};
    request.suggestedName = localised("Chart") + QStringLiteral(".png");
    const std::optional<QString> path = platform::runFilePanel(request);
    if (!path)
        return;
    const QString file = platform::withRequiredExtension(*path, QStringLiteral("png"));
    if (!saveAsPng(file))
        platform::runAlert(localised("The chart could not be saved."), file);
}
