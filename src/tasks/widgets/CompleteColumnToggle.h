#pragma once
// The "complete" column of the task list works as a column of check boxes:
// a click on a row's cell in that column, or Space on the selected row,
// toggles the task's done flag in place (the task manager sets the change
// flag). The cells show the flag ("Yes" or "No") as a check box.
#include <QObject>

class ActionManager;
class QTableView;

class CompleteColumnToggle : public QObject
{
    Q_OBJECT
public:
    // Watches the view (its keys) and its viewport (its clicks); lives as
    // long as the view.
    static CompleteColumnToggle *install(QTableView *view, ActionManager &manager);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CompleteColumnToggle(QTableView *view, ActionManager &manager);
    void toggle(int row);

    QTableView *table;
    ActionManager &actions;
};
