#pragma once
// The reports tab: the chooser of report definitions and the table of the
// report that ran.
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QObject>

class Quorvel;

class ReportManager : public QObject, public kdDataSource
{
    Q_OBJECT
public:
    explicit ReportManager(Quorvel *controller, QObject *parent = nullptr);

    // Fills the chooser with the report definitions.
    void populateFilter() {}

    TableView *table;

private:
    Quorvel *quorvel;
};
