#include "TestMain.h"

#include "app/kdKeyResponder.h"
#include "app/widgets/OutletBinding.h"
#include "app/widgets/integrityTableView.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <memory>

namespace {

const RgbaColour red{1, 0, 0, 1};

// Three fruits; the first and the last carry a status colour.
class StatusList : public TableDataSource
{
public:
    QStringList names{QStringLiteral("apple"), QStringLiteral("banana"), QStringLiteral("cherry")};
    int numberOfRowsInTableView() const override { return int(names.size()); }
    QString objectValueForTableColumn(const QString &, int row) const override { return names.value(row); }
    std::optional<RgbaColour> labelColorForRow(int row) const override
    {
        return row == 1 ? std::nullopt : std::optional<RgbaColour>(red);
    }
    QString getDataAsCSVusingTableView(const TableView &) const override { return {}; }
    QString getDataAsHTMLusingTableView(const TableView &) const override { return {}; }
};

class CountingList : public kdDataSource
{
public:
    int deletes = 0;
    void deleteKey() override { ++deletes; }
};

}  // namespace

class IntegrityTableViewTest : public QObject
{
    Q_OBJECT

    StatusList source;
    std::unique_ptr<TableView> table;
    std::unique_ptr<integrityTableView> view;

    QRgb pixelAt(const QImage &image, int x, int row) const
    {
        return image.pixel(x, view->rowViewportPosition(row) + view->rowHeight(row) / 2);
    }

private Q_SLOTS:
    void init()
    {
        table = std::make_unique<TableView>();
        table->setColumns({TableColumn{QStringLiteral("name"), QStringLiteral("Name"), 80, true}});
        table->setLastColumnFills(true);
        table->setDataSource(&source);
        view = std::make_unique<integrityTableView>();
        view->resize(300, 160);
        view->setShowGrid(false);
        binding::bind(table.get(), view.get());
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
    }
    void cleanup()
    {
        view.reset();
        table.reset();
    }

    void shouldPaintAColouredRowOnAnInsetRoundedBand()
    {
        table->selectRow(2);
        const QImage image = view->viewport()->grab().toImage();
        const int right = view->viewport()->width() - 20;  // clear of the text
        const QRgb base = view->palette().color(QPalette::Base).rgb();

        QCOMPARE(QColor(pixelAt(image, right, 0)), QColor(Qt::red));
        QCOMPARE(QColor(image.pixel(0, view->rowViewportPosition(0))), QColor(base));  // outside the rounded corner
        QCOMPARE(QColor(pixelAt(image, right, 1)), QColor(base));  // no colour: plain
        QVERIFY(QColor(pixelAt(image, right, 2)) != QColor(Qt::red));  // selected: not its status
        QCOMPARE(view->bandRect(0),
                 QRect(1, view->rowViewportPosition(0) + 1, view->viewport()->width() - 2, view->rowHeight(0) - 1));
    }

    void shouldHandOnlyTheDeleteKeysToTheResponder_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("deletes");
        QTest::addColumn<int>("selectedRow");
        QTest::newRow("backspace") << int(Qt::Key_Backspace) << 1 << 0;
        QTest::newRow("forward delete") << int(Qt::Key_Delete) << 1 << 0;
        QTest::newRow("letter of another row") << int(Qt::Key_C) << 0 << 0;
        QTest::newRow("digit") << int(Qt::Key_5) << 0 << 0;
        QTest::newRow("arrow still moves") << int(Qt::Key_Down) << 0 << 1;
    }
    void shouldHandOnlyTheDeleteKeysToTheResponder()
    {
        QFETCH(int, key);
        QFETCH(int, deletes);
        QFETCH(int, selectedRow);
        CountingList list;
        kdKeyResponder responder;
        responder.setOwner(&list);
        view->setKeyResponder(&responder);
        table->selectRow(0);

        QTest::keyClick(view.get(), Qt::Key(key));

        QCOMPARE(list.deletes, deletes);
        QCOMPARE(table->selectedRow(), selectedRow);
        QVERIFY(!view->findChild<QLineEdit *>());  // no editor opened
    }
};

QUORVEL_TEST(IntegrityTableViewTest)
#include "IntegrityTableViewTest.moc"
