#pragma once
// Binds real widgets to the core outlets, both ways: what the program sets
// on an outlet shows in the widget; what the user does in the widget reaches
// the outlet (userSet.../perform..., so the outlet's edited()/activated()
// signals follow). Binding marks the outlet connected. The widget keeps a
// pointer to its outlet, so a window's first responder is the outlet of the
// focused widget (or of its nearest bound ancestor).
//
// The outlet leads: binding shows the outlet's state in the widget at once.
// A title the outlet does not have yet (check box, button, action, window)
// is taken from the widget, and a tab view outlet with no tabs takes the
// widget's pages, so that forms keep the texts they were built with.
// Destroying the widget leaves the outlet absent again.
#include <QString>
#include <functional>

class QAbstractButton;
class QAction;
class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTabWidget;
class QTableView;
class QTextEdit;
class QWidget;

class Button;
class CheckBox;
class ColorWell;
class Matrix;
class Outlet;
class PopUp;
class TabView;
class TableView;
class TextField;
class TextView;
class Window;

namespace binding {

// Enter performs the field's action; leaving the field (or Enter) ends its
// editing, so its formatter shapes what was typed. A date field shows its
// format as a hint; a money field is right-aligned and wide enough to show
// 1,000,000.00.
void bind(TextField *outlet, QLineEdit *widget);
void bind(TextField *outlet, QLabel *widget);  // shown only
void bind(TextView *outlet, QPlainTextEdit *widget);
// Plain text both ways; the rich-text package requests of the outlet are
// answered by reading or writing the widget's document.
void bind(TextView *outlet, QTextEdit *widget);
void bind(PopUp *outlet, QComboBox *widget);
void bind(CheckBox *outlet, QAbstractButton *widget);
void bind(Button *outlet, QAbstractButton *widget);
void bind(Button *outlet, QAction *action);
// The group's buttons, by id 0..n-1, are the matrix's cells.
void bind(Matrix *outlet, QButtonGroup *group);
void bind(ColorWell *outlet, QAbstractButton *widget);  // shows the colour; a click opens a colour chooser
// Tabs are matched by the pages' "tabIdentifier" property; removing a tab
// from the outlet removes the page from the widget.
void bind(TabView *outlet, QTabWidget *widget);
// A table model over the outlet's data source (one per view), selection
// both ways, header clicks, double click and Enter.
void bind(TableView *outlet, QTableView *widget);
// Title, shown/hidden, key window, edited mark, first responder, centring
// and modal runs (a QDialog is exec'ed; another widget runs a local loop
// until it is hidden or stopModal is asked).
void bind(Window *outlet, QWidget *widget);

// Ends the editing of every text field in the window, as leaving each would
// (a window's OK does this before it stores what the fields hold).
void commitEditing(const QWidget *window);
// The width a line edit needs to show the text in full.
int widthToShow(const QLineEdit *widget, const QString &text);

// The outlet bound to the widget or to its nearest ancestor, none if none.
Outlet *outletFor(const QWidget *widget);
// The widget an outlet is bound to, none if none (and none for an action or
// a button group).
QWidget *widgetFor(const Outlet *outlet);

// How a bound widget is printed when its outlet is asked to print (the
// default shows the platform's print dialog with the shared print settings).
// Tests replace it.
using PrintHandler = std::function<void(QWidget *widget)>;
PrintHandler setPrintHandler(PrintHandler handler);

}  // namespace binding
