// The lists as the user sees them in the program's own windows: numbers
// right-aligned, money with separators, totals that read as totals, columns
// sorted as they read and sized to what they hold, the reports tab showing
// its report.
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "TestEnvironment.h"
#include "TestMain.h"

#include "app/widgets/MainStatusBar.h"
#include "app/widgets/TableModel.h"
#include "app/widgets/integrityTableView.h"
#include "platform/Paths.h"
#include "store/PrefsController.h"

#include <QDir>
#include <QFont>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>

using Program = testlib::RunningProgram;

namespace {

Qt::Alignment alignmentOf(const QTableView *view, int column)
{
    return view->model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
}

int columnTitled(const QTableView *view, const QString &title)
{
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        if (view->model()->headerData(column, Qt::Horizontal).toString() == title)
            return column;
    }
    return -1;
}

}  // namespace

class ListsOnScreenTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        testlib::writeSmallBusiness();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void shouldAlignNumbersAndShowTotalsAsTotals()
    {
        Program program;
        program.quorvel.getPrefsController()->currencyField->setStringValue(QStringLiteral("\u20ac"));
        QTableView *items = program.list(QStringLiteral("3"), QStringLiteral("itemTableView"), 0);
        QVERIFY(alignmentOf(items, columnTitled(items, QStringLiteral("Qty"))) & Qt::AlignRight);
        QVERIFY(alignmentOf(items, columnTitled(items, QStringLiteral("Item"))) & Qt::AlignLeft);
        QVERIFY(alignmentOf(items, columnTitled(items, QStringLiteral("Code"))) & Qt::AlignLeft);

        QTableView *bills = program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        const int amount = columnTitled(bills, QStringLiteral("Amount"));
        QVERIFY(amount >= 0);
        const int rows = bills->model()->rowCount();
        // Two bills, the "_____" row left out of the view, the total in bold
        // with the currency, ruled off.
        QCOMPARE(rows, 4);
        QVERIFY(bills->isRowHidden(2));
        QVERIFY(!bills->isRowHidden(3));
        QCOMPARE(Program::cell(bills, 3, amount), QStringLiteral("\u20ac580.00"));
        QVERIFY(bills->model()->index(3, amount).data(Qt::FontRole).value<QFont>().bold());
        QVERIFY(bills->model()->index(3, amount).data(TableModel::TotalRowRole).toBool());
        QVERIFY(!bills->model()->index(0, amount).data(TableModel::TotalRowRole).toBool());
        QVERIFY(alignmentOf(bills, amount) & Qt::AlignRight);
    }

    void shouldShowMoneyWithTheLocalesSeparators()
    {
        Program program;
        QTableView *bills = program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), 0);
        const int amount = columnTitled(bills, QStringLiteral("Amount"));
        QStringList shown = Program::column(bills, amount).mid(0, 2);
        shown.sort();
        QCOMPARE(shown, (QStringList{"500.00", "80.00"}));
        // The stored text stays as it was typed.
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(bills->model()->index(0, amount).data(Qt::EditRole).toString().contains(u','), false);
        QVERIFY(Program::cell(bills, 0, amount).contains(u','));
    }

    void shouldSortAClickedColumnAsItReads()
    {
        Program program;
        QTableView *bills = program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        const int amount = columnTitled(bills, QStringLiteral("Amount"));
        bills->horizontalHeader()->sectionClicked(amount);
        // The first click puts the greatest first: 500 before 80, which as
        // text would come the other way round.
        QCOMPARE(Program::column(bills, amount).mid(0, 2), (QStringList{"500.00", "80.00"}));
        bills->horizontalHeader()->sectionClicked(amount);
        QCOMPARE(Program::column(bills, amount).mid(0, 2), (QStringList{"80.00", "500.00"}));
    }

    void shouldFitEveryTitleAtAThousandPixels()
    {
        Program program;
        program.window()->resize(1000, 700);
        program.window()->show();
        for (const auto &[tab, name] :
             {std::pair{"1", "contactOutline"}, std::pair{"2", "orderTableView"}, std::pair{"3", "itemTableView"},
              std::pair{"pro", "actionTableView"}, std::pair{"pro2", "billTableView"}}) {
            QTableView *view = program.list(QLatin1String(tab), QLatin1String(name), -1);
            QVERIFY2(view, name);
            QTRY_VERIFY(view->isVisible());
            QCoreApplication::processEvents();  // fitted once laid out
            const QHeaderView *header = view->horizontalHeader();
            QVERIFY(!header->stretchLastSection());
            for (int column = 0; column < header->count(); ++column)
                QVERIFY2(header->sectionSize(column) >= header->sectionSizeHint(column),
                         qPrintable(QStringLiteral("%1: %2").arg(
                             QLatin1String(name), view->model()->headerData(column, Qt::Horizontal).toString())));
        }
    }

    void shouldRememberTheWidthsAndOrderTheUserGave()
    {
        {
            Program program;
            program.window()->show();
            QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), -1);
            QTRY_VERIFY(orders->isVisible());
            QCoreApplication::processEvents();  // fitted once laid out
            orders->horizontalHeader()->resizeSection(2, 333);
            orders->horizontalHeader()->moveSection(0, 3);
        }
        Program again;
        again.window()->show();
        QTableView *orders = again.list(QStringLiteral("2"), QStringLiteral("orderTableView"), -1);
        QTRY_VERIFY(orders->isVisible());
        QTRY_COMPARE(orders->horizontalHeader()->sectionSize(2), 333);
        QCOMPARE(orders->horizontalHeader()->visualIndex(0), 3);
    }

    void shouldCountTheListInFrontAndSayWhatASearchLeftOut()
    {
        Program program;
        const auto *status = program.window()->findChild<MainStatusBar *>();
        QVERIFY(status);
        QTableView *orders = program.list(QStringLiteral("2"), QStringLiteral("orderTableView"), -1);
        QCOMPARE(status->countText(), QStringLiteral("3 orders"));
        auto *search = program.window()->findChild<QLineEdit *>(QStringLiteral("orderSearchField"));
        const auto type = [search](const QString &text) {
            search->setText(text);
            Q_EMIT search->textEdited(text);
        };
        type(QStringLiteral("Kitchen"));
        QCOMPARE(status->countText(), QStringLiteral("1 of 3 orders"));
        QVERIFY(static_cast<integrityTableView *>(orders)->placeholderText().isEmpty());
        type(QStringLiteral("zzz"));
        QCOMPARE(status->countText(), QStringLiteral("0 of 3 orders"));
        QCOMPARE(static_cast<integrityTableView *>(orders)->placeholderText(),
                 QStringLiteral("No orders match \u201czzz\u201d."));
        // Another tab counts its own list.
        program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), -1);
        QCOMPARE(status->countText(), QStringLiteral("2 bills"));
        // What the last save wrote, and when.
        Program::deleteSelected(program.list(QStringLiteral("pro2"), QStringLiteral("billTableView"), 0));
        QTRY_VERIFY_WITH_TIMEOUT(status->savedText().startsWith(QStringLiteral("Saved bills.xml (")), 5000);
    }

    void shouldRunTheChosenReportWhenTheTabIsShown()
    {
        Program program;
        QTableView *report = program.list(QStringLiteral("pro3"), QStringLiteral("reportTableView"), -1);
        QVERIFY(report->model()->rowCount() > 0);
        QVERIFY(report->model()->columnCount() > 0);
    }
};

QUORVEL_TEST(ListsOnScreenTest)
#include "ListsOnScreenTest.moc"
