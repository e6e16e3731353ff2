#pragma once
// The program as a user has it in front of them: the controller with every
// window built by the program's own start-up over the test's data folder,
// the main window active (so that its shortcuts reach it), and its lists
// driven from the keyboard. Header only: the core test executables, which
// have no widgets, never include it.
#include "TestEnvironment.h"

#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"

#include <QApplication>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace testlib {

struct RunningProgram
{
    Quorvel quorvel;
    ApplicationWindows windows{quorvel};

    RunningProgram()
    {
        windows.start();
        activate();
    }
    MainWindow *window() const { return windows.mainWindow(); }
    void activate() const
    {
        window()->activateWindow();
        QApplication::setActiveWindow(window());
    }
    template <class Widget = QAction> Widget *named(const QString &name) const
    {
        return window()->findChild<Widget *>(name);
    }
    // The list of that tab, in front, with the focus and that row selected.
    QTableView *list(const QString &tab, const QString &name, int row) const
    {
        activate();
        window()->tabs()->setCurrentWidget(window()->tabWithIdentifier(tab));
        auto *view = window()->findChild<QTableView *>(name);
        view->setFocus();
        view->selectRow(row);
        return view;
    }
    // The selected row deleted from the keyboard, the question answered OK.
    static void deleteSelected(QTableView *view)
    {
        TestEnvironment::current().scriptAlertAnswers({1});
        QTest::keyClick(view, Qt::Key_Backspace);
    }
    static QString cell(const QTableView *view, int row, int column)
    {
        return view->model()->index(row, column).data().toString();
    }
    static QStringList column(const QTableView *view, int column)
    {
        QStringList cells;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            cells << cell(view, row, column);
        return cells;
    }
};

}  // namespace testlib
