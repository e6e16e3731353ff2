#include "TestMain.h"

#include "TestEnvironment.h"
#include "app/widgets/OutletBinding.h"
#include "platform/outlets/Button.h"
#include "platform/outlets/CheckBox.h"
#include "platform/outlets/Matrix.h"
#include "platform/outlets/PopUp.h"
#include "platform/outlets/TabView.h"
#include "platform/outlets/TextField.h"
#include "platform/outlets/TextView.h"
#include "platform/outlets/Window.h"
#include "store/TableDataSource.h"
#include "store/TableView.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace {

class NameList : public TableDataSource
{
public:
    QStringList names{QStringLiteral("ann"), QStringLiteral("bob"), QStringLiteral("cy")};
    QStringList clicks;
    int numberOfRowsInTableView() const override { return int(names.size()); }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        return columnId == QLatin1String("name") ? names.value(row) : QString::number(row);
    }
    void didClickTableColumn(const QString &columnId, bool ascending) override
    {
        clicks << columnId + (ascending ? QStringLiteral(" up") : QStringLiteral(" down"));
    }
    QString getDataAsCSVusingTableView(const TableView &) const override { return {}; }
    QString getDataAsHTMLusingTableView(const TableView &) const override { return {}; }
};

QPoint centreOfRow(QTableView &view, int row)
{
    return view.visualRect(view.model()->index(row, 0)).center();
}

}  // namespace

class OutletBindingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldFollowATextFieldBothWays()
    {
        TextField field;
        QLineEdit edit;
        binding::bind(&field, &edit);
        QSignalSpy edited(&field, &TextField::edited);
        QSignalSpy activated(&field, &TextField::activated);
        QVERIFY(field.isConnected());
        QCOMPARE(binding::widgetFor(&field), &edit);

        field.setStringValue(QStringLiteral("12.50"));
        field.setEditable(false);
        field.setEnabled(false);
        QCOMPARE(edit.text(), QStringLiteral("12.50"));
        QVERIFY(edit.isReadOnly());
        QVERIFY(!edit.isEnabled());
        QCOMPARE(edited.count(), 0);

        field.setEditable(true);
        field.setEnabled(true);
        QTest::keyClicks(&edit, QStringLiteral("7"));
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(field.stringValue(), QStringLiteral("12.507"));
        QCOMPARE(edited.count(), 1);
        QCOMPARE(activated.count(), 1);
    }

    void shouldFollowATextViewBothWays_data()
    {
        QTest::addColumn<bool>("rich");
        QTest::newRow("plain") << false;
        QTest::newRow("rich") << true;
    }
    void shouldFollowATextViewBothWays()
    {
        QFETCH(bool, rich);
        TextView view;
        QTextEdit richEdit;
        QPlainTextEdit plainEdit;
        QWidget *widget = rich ? static_cast<QWidget *>(&richEdit) : &plainEdit;
        rich ? binding::bind(&view, &richEdit) : binding::bind(&view, &plainEdit);
        const auto shown = [&] { return rich ? richEdit.toPlainText() : plainEdit.toPlainText(); };
        QSignalSpy edited(&view, &TextView::edited);

        view.setString(QStringLiteral("first line\nsecond"));
        QCOMPARE(shown(), QStringLiteral("first line\nsecond"));
        QCOMPARE(edited.count(), 0);

        QTest::keyClicks(widget, QStringLiteral("X"));
        QCOMPARE(view.string(), shown());
        QVERIFY(view.string().contains(QLatin1Char('X')));
        QCOMPARE(edited.count(), 1);
    }

    void shouldReadAndWriteNotesThroughTheRichTextView()
    {
        TextView view;
        QTextEdit edit;
        const QString path = testlib::TestEnvironment::current().root() + QStringLiteral("/notes.rtfd");
        QVERIFY(!view.writeRTFDToFile(path));  // no widget yet
        binding::bind(&view, &edit);
        view.setString(QStringLiteral("call the supplier"));
        QVERIFY(view.writeRTFDToFile(path));

        view.setString(QStringLiteral("something else"));
        QVERIFY(view.readRTFDFromFile(path));
        QCOMPARE(edit.toPlainText(), QStringLiteral("call the supplier"));
        QCOMPARE(view.string(), QStringLiteral("call the supplier"));
    }

    void shouldFollowAPopUpBothWays()
    {
        PopUp popUp;
        QComboBox combo;
        binding::bind(&popUp, &combo);
        QSignalSpy activated(&popUp, &PopUp::activated);

        popUp.addItems({QStringLiteral("Quote"), QStringLiteral("Job"), QStringLiteral("Invoice")});
        popUp.selectItemWithTitle(QStringLiteral("Job"));
        QCOMPARE(combo.count(), 3);
        QCOMPARE(combo.currentText(), QStringLiteral("Job"));
        QCOMPARE(activated.count(), 0);

        QTest::keyClick(&combo, Qt::Key_Down);
        QCOMPARE(popUp.titleOfSelectedItem(), QStringLiteral("Invoice"));
        QCOMPARE(activated.count(), 1);

        popUp.selectItemAtIndex(-1);
        QVERIFY(combo.currentText().isNull());
        QVERIFY(popUp.titleOfSelectedItem().isNull());
    }

    void shouldFollowButtonsBothWays()
    {
        CheckBox check;
        QCheckBox box(QStringLiteral("Paid"));
        binding::bind(&check, &box);
        QCOMPARE(check.title(), QStringLiteral("Paid"));  // the form's title until the program gives one
        QSignalSpy checkActivated(&check, &CheckBox::activated);
        check.setState(true);
        QVERIFY(box.isChecked());
        QCOMPARE(checkActivated.count(), 0);
        box.click();
        QVERIFY(!check.state());
        QCOMPARE(checkActivated.count(), 1);

        Button button;
        QAction action;
        binding::bind(&button, &action);
        QSignalSpy clicked(&button, &Button::activated);
        button.setTitle(QStringLiteral("Print"));
        button.setHidden(true);
        QCOMPARE(action.text(), QStringLiteral("Print"));
        QVERIFY(!action.isVisible());
        action.trigger();
        QCOMPARE(clicked.count(), 1);

        Matrix matrix({QStringLiteral("Day"), QStringLiteral("Week"), QStringLiteral("Month")});
        QWidget panel;
        QButtonGroup group;
        for (int id = 0; id < 3; ++id)
            group.addButton(new QRadioButton(&panel), id);
        binding::bind(&matrix, &group);
        QCOMPARE(group.button(1)->text(), QStringLiteral("Week"));
        QCOMPARE(binding::outletFor(group.button(2)), &matrix);
        QSignalSpy cellActivated(&matrix, &Matrix::activated);
        matrix.selectCellAtColumn(1);
        QVERIFY(group.button(1)->isChecked());
        group.button(2)->click();
        QCOMPARE(matrix.selectedColumn(), 2);
        QCOMPARE(cellActivated.count(), 1);
    }

    void shouldFollowATabViewByIdentifier()
    {
        QTabWidget tabs;
        for (const QString &identifier : {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("pro")}) {
            auto *page = new QWidget;
            page->setProperty("tabIdentifier", identifier);
            tabs.addTab(page, QStringLiteral("Tab ") + identifier);
        }
        TabView tabView;
        binding::bind(&tabView, &tabs);
        QCOMPARE(tabView.identifiers(), QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("pro")}));
        QSignalSpy selection(&tabView, &TabView::selectionChanged);

        tabView.selectTabViewItemWithIdentifier(QStringLiteral("pro"));
        QCOMPARE(tabs.currentIndex(), 2);
        QCOMPARE(selection.count(), 1);  // not echoed back by the widget

        tabView.removeTabViewItemWithIdentifier(QStringLiteral("2"));
        QCOMPARE(tabs.count(), 2);
        QCOMPARE(tabs.widget(1)->property("tabIdentifier").toString(), QStringLiteral("pro"));
        QCOMPARE(tabs.tabText(1), QStringLiteral("Tab pro"));

        tabs.setCurrentIndex(0);
        QCOMPARE(tabView.selectedIdentifier(), QStringLiteral("1"));
    }

    void shouldFollowAWindow()
    {
        Window window;
        QWidget widget;
        auto *first = new QLineEdit(&widget);
        auto *second = new QLineEdit(&widget);
        auto *layout = new QVBoxLayout(&widget);
        layout->addWidget(first);
        layout->addWidget(second);
        TextField firstField;
        TextField secondField;
        binding::bind(&window, &widget);
        binding::bind(&firstField, first);
        binding::bind(&secondField, second);

        window.makeKeyAndOrderFront();
        QVERIFY(widget.isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&widget));
        window.setTitle(QStringLiteral("Order"));
        window.setDocumentEdited(true);
        QCOMPARE(widget.windowHandle()->title(), QStringLiteral("Order*"));  // the edited mark
        window.setDocumentEdited(false);
        QCOMPARE(widget.windowHandle()->title(), QStringLiteral("Order"));
        QVERIFY(window.isKeyWindow());
        second->setFocus();
        QCOMPARE(window.firstResponder(), &secondField);

        widget.close();  // by the user
        QVERIFY(!window.isVisible());
        QVERIFY(!window.isKeyWindow());
        window.makeKeyAndOrderFront();
        window.orderOut();
        QVERIFY(widget.isHidden());
    }

    void shouldMoveTheWindowBothWaysAndHandItsPlaceOn()
    {
        Window window;
        QWidget widget;
        widget.setGeometry(100, 120, 400, 300);
        binding::bind(&window, &widget);
        QCOMPARE(window.frame(), QRect(100, 120, 400, 300));  // learnt when bound

        window.makeKeyAndOrderFront();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
        window.setFrame(QRect(40, 50, 320, 240));
        QCOMPARE(widget.geometry(), QRect(40, 50, 320, 240));
        widget.setGeometry(60, 70, 500, 350);  // moved by the user
        QCOMPARE(window.frame(), QRect(60, 70, 500, 350));

        // Another window, made later, takes the place kept under a name.
        window.saveFrameUsingName(QStringLiteral("ContactWindows"));
        Window other;
        QWidget otherWidget;
        binding::bind(&other, &otherWidget);
        QVERIFY(other.setFrameUsingName(QStringLiteral("ContactWindows")));
        QCOMPARE(otherWidget.geometry(), QRect(60, 70, 500, 350));
    }

    void shouldEndAModalRunWithTheStopCode_data()
    {
        QTest::addColumn<bool>("dialog");
        QTest::newRow("dialog") << true;
        QTest::newRow("plain window") << false;
    }
    void shouldEndAModalRunWithTheStopCode()
    {
        QFETCH(bool, dialog);
        Window window;
        std::unique_ptr<QWidget> widget(dialog ? new QDialog : new QWidget);
        binding::bind(&window, widget.get());
        QTimer::singleShot(0, &window, [&] {
            QVERIFY(widget->isVisible());
            window.stopModal(7);
        });
        QCOMPARE(window.runModal(), 7);
        QVERIFY(widget->isHidden());
    }

    void shouldPrintTheBoundWidget()
    {
        QWidget *printed = nullptr;
        const binding::PrintHandler previous = binding::setPrintHandler([&](QWidget *widget) { printed = widget; });
        TextView notes;
        QVERIFY(!notes.print());
        QPlainTextEdit edit;
        binding::bind(&notes, &edit);
        QVERIFY(notes.print());
        QCOMPARE(printed, &edit);
        binding::setPrintHandler(previous);
    }

    void shouldFollowATableBothWays()
    {
        NameList list;
        TableView table;
        table.setColumns(TableView::columnsFrom({{"name", "Name"}, {"row", "Row"}}));
        table.setDataSource(&list);
        QTableView view;
        view.resize(300, 200);
        binding::bind(&table, &view);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCOMPARE(view.model()->rowCount(), 3);
        QCOMPARE(view.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Row"));
        QCOMPARE(view.model()->index(1, 0).data().toString(), QStringLiteral("bob"));
        QSignalSpy userSelected(&table, &TableView::selectionActivated);
        QSignalSpy doubleClicked(&table, &TableView::doubleClicked);

        table.selectRow(1);
        QCOMPARE(view.selectionModel()->selectedRows().value(0).row(), 1);
        QCOMPARE(userSelected.count(), 0);

        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centreOfRow(view, 2));
        QCOMPARE(table.selectedRow(), 2);
        QCOMPARE(userSelected.count(), 1);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centreOfRow(view, 0));
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, centreOfRow(view, 0));
        QCOMPARE(doubleClicked.count(), 1);
        QCOMPARE(table.selectedRow(), 0);
        QTest::keyClick(&view, Qt::Key_Return);
        QCOMPARE(doubleClicked.count(), 2);

        QHeaderView *header = view.horizontalHeader();
        const QPoint nameHeader(header->sectionViewportPosition(0) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, nameHeader);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, nameHeader);
        QCOMPARE(list.clicks, QStringList({QStringLiteral("name up"), QStringLiteral("name down")}));
        QCOMPARE(header->sortIndicatorSection(), 0);
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);

        table.selectRow(2);
        list.names.removeLast();
        table.reloadData();
        QCOMPARE(view.model()->rowCount(), 2);
        QCOMPARE(table.selectedRow(), -1);  // the selected row is gone
    }
};

QUORVEL_TEST(OutletBindingTest)
#include "OutletBindingTest.moc"
