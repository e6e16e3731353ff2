#pragma once
// The main window's status bar: how many records the list in front shows
// of how many there are ("16,697 of 100,000 orders"), and what the last
// save wrote and when. When a search leaves a list empty, the list itself
// says so.
#include <QStatusBar>

class MainWindow;
class QLabel;
class Quorvel;
class QTableView;

class MainStatusBar : public QStatusBar
{
    Q_OBJECT
public:
    MainStatusBar(Quorvel &controller, MainWindow &window);

    // The count of the list in front, as shown.
    QString countText() const;
    QString savedText() const;

public Q_SLOTS:
    void showCount();

private:
    Quorvel &quorvel;
    MainWindow &main;
    QLabel *count;
    QLabel *saved;
};
