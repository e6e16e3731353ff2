#include "TestMain.h"
#include "TimeLimits.h"

#include "store/TableExport.h"
#include "store/TableView.h"
#include "store/kdDataSource.h"

#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A record whose fields are whatever the test gives it.
class ExportRecord : public dataObject
{
public:
    ExportRecord(std::initializer_list<std::pair<const char *, const char *>> values, bool isVisible = true)
    {
        for (const auto &[name, value] : values)
            fields.insert(QString::fromUtf8(name), QString::fromUtf8(value));
        setVisible(isVisible);
    }
    QString getFieldByName(const QString &name) const override { return fields.value(name, QStringLiteral("")); }

private:
    QHash<QString, QString> fields;
};

std::shared_ptr<ExportRecord> exportRecord(std::initializer_list<std::pair<const char *, const char *>> values,
                                           bool isVisible = true)
{
    return std::make_shared<ExportRecord>(values, isVisible);
}

// A table fed as the program's lists are fed: row n is the n-th visible record.
class ExportSource : public kdDataSource
{
public:
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        const dataObject *record = getnthVisibleItem(row);
        return record ? record->getFieldByName(columnId) : QStringLiteral("");
    }
};

// A table that owns no records at all: rows and cells come only from its
// own answers, as a subclass may give them.
class SyntheticSource : public kdDataSource
{
public:
    explicit SyntheticSource(int rowCount)
        : rows(rowCount)
    { }
    int numberOfRowsInTableView() const override { return rows; }
    QString objectValueForTableColumn(const QString &columnId, int row) const override
    {
        return columnId + QString::number(row);
    }

private:
    int rows;
};

QList<TableColumn> nameAndQty()
{
    return TableView::columnsFrom({{"name", "Name"}, {"qty", "Qty"}});
}

const char *const tableOpen = "<table cellpadding=2 cellspacing=2 border=0><tr>";
const char *const head = "<th style = background:#cccccc;font-family:sans-serif;text-align:left>";
const char *const plainCell = "<td  style = font-family:monospace>";
const char *const shadedCell = "<td style = background:#f0f0ff;font-family:monospace style = font-family:monospace>";

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

}  // namespace

class TableExportTest : public QObject
{
    Q_OBJECT
private slots:
    void shouldWriteCsvExactly();
    void shouldWriteHtmlExactly();
    void shouldLeaveOutInvisibleRecords();
    void shouldExportOnlyTheHeaderOfAnEmptyTable();
    void shouldWriteCellTextsAsTheyAre();
    void shouldFollowTheColumnOrderAndTheSourcesOwnAnswers();
    void shouldExportALargeTableQuickly();
    void shouldWrapTheHtmlPage();
    void shouldEncodeCsvAsUtf8_data();
    void shouldEncodeCsvAsUtf8();
    void shouldEncodeHtmlAsUtf16WithAByteOrderMark_data();
    void shouldEncodeHtmlAsUtf16WithAByteOrderMark();
    void shouldBuildColumnsFromALayoutFile();
    void shouldKeepTheLastColumnCount();
    void shouldNotReadPastTheEndOfAShortLayout();
    void shouldClearTheColumnsForAMissingLayout();
};

void TableExportTest::shouldWriteCsvExactly()
{
    ExportSource source;
    source.add(exportRecord({{"name", "Widget"}, {"qty", "4"}}));
    TableView table;
    table.setColumns(nameAndQty());
    QCOMPARE(encodeCsvExport(source.getDataAsCSVusingTableView(table)),
             QByteArray("\"Name\",\"Qty\"\r\"Widget\",\"4\"\r"));
}

void TableExportTest::shouldWriteHtmlExactly()
{
    ExportSource source;
    source.add(exportRecord({{"name", "Widget"}, {"qty", "4"}}));
    source.add(exportRecord({{"name", "Gadget"}, {"qty", "12"}}));
    source.add(exportRecord({{"name", "Gizmo"}, {"qty", "1"}}));
    TableView table;
    table.setColumns(nameAndQty());
    const QString expected = QString(tableOpen) + head + "Name</th>" + head + "Qty</th></tr>" + "<tr>" + plainCell
        + "Widget</td>" + plainCell + "4</td></tr>" + "<tr>" + shadedCell + "Gadget</td>" + shadedCell + "12</td></tr>"
        + "<tr>" + plainCell + "Gizmo</td>" + plainCell + "1</td></tr>" + "</table><br />";
    QCOMPARE(source.getDataAsHTMLusingTableView(table), expected);
}

void TableExportTest::shouldLeaveOutInvisibleRecords()
{
    ExportSource source;
    source.add(exportRecord({{"name", "Shown"}, {"qty", "1"}}));
    source.add(exportRecord({{"name", "Hidden"}, {"qty", "2"}}, false));
    auto later = exportRecord({{"name", "Later"}, {"qty", "3"}});
    source.add(later);
    source.add(exportRecord({{"name", "Also shown"}, {"qty", "4"}}));
    later->setVisible(false);
    TableView table;
    table.setColumns(nameAndQty());

    QCOMPARE(source.getDataAsCSVusingTableView(table),
             QString("\"Name\",\"Qty\"\r\"Shown\",\"1\"\r\"Also shown\",\"4\"\r"));
    const QString html = source.getDataAsHTMLusingTableView(table);
    QVERIFY(!html.contains("Hidden"));
    QVERIFY(!html.contains("Later"));
    // The second visible row is the shaded one, whatever was hidden before it.
    QVERIFY(html.contains(QString(shadedCell) + "Also shown</td>"));
    QVERIFY(html.contains(QString("<tr>") + plainCell + "Shown</td>"));
}

void TableExportTest::shouldExportOnlyTheHeaderOfAnEmptyTable()
{
    ExportSource source;
    source.add(exportRecord({{"name", "Hidden"}}, false));
    TableView table;
    table.setColumns(nameAndQty());
    QCOMPARE(source.getDataAsCSVusingTableView(table), QString("\"Name\",\"Qty\"\r"));
    QCOMPARE(source.getDataAsHTMLusingTableView(table),
             QString(tableOpen) + head + "Name</th>" + head + "Qty</th></tr></table><br />");
}

void TableExportTest::shouldWriteCellTextsAsTheyAre()
{
    ExportSource source;
    source.add(exportRecord({{"name", "12\" ruler, \"steel\""}, {"qty", "<b>&amp;\n"}}));
    TableView table;
    table.setColumns(TableView::columnsFrom({{"name", "Say \"what\""}, {"qty", "<i>Qty</i>"}}));
    QCOMPARE(source.getDataAsCSVusingTableView(table),
             QString("\"Say \"what\"\",\"<i>Qty</i>\"\r\"12\" ruler, \"steel\"\",\"<b>&amp;\n\"\r"));
    const QString html = source.getDataAsHTMLusingTableView(table);
    QVERIFY(html.contains(QString(head) + "<i>Qty</i></th>"));
    QVERIFY(html.contains(QString(plainCell) + "<b>&amp;\n</td>"));
}

void TableExportTest::shouldFollowTheColumnOrderAndTheSourcesOwnAnswers()
{
    SyntheticSource source(2);
    TableView table;
    table.setColumns(TableView::columnsFrom({{"b", "Bee"}, {"a", "Ay"}, {"c", "Sea"}}));
    QCOMPARE(source.getDataAsCSVusingTableView(table),
             QString("\"Bee\",\"Ay\",\"Sea\"\r\"b0\",\"a0\",\"c0\"\r\"b1\",\"a1\",\"c1\"\r"));
    table.setColumns(TableView::columnsFrom({{"c", "Sea"}}));
    QCOMPARE(source.getDataAsHTMLusingTableView(table),
             QString(tableOpen) + head + "Sea</th></tr><tr>" + plainCell + "c0</td></tr><tr>" + shadedCell
                 + "c1</td></tr></table><br />");
}

void TableExportTest::shouldExportALargeTableQuickly()
{
    ExportSource source;
    const int rows = 100000;
    for (int i = 0; i < rows; ++i) {
        const QByteArray number = QByteArray::number(i);
        source.add(exportRecord({{"ordernum", number.constData()},
                                 {"name", "Acme Widgets Ltd"},
                                 {"date", "01/03/08"},
                                 {"status", "Invoiced"},
                                 {"value", "1234.50"},
                                 {"balance", "0.00"}}));
    }
    TableView table;
    table.setColumns(TableView::columnsFrom({{"ordernum", "No."},
                                             {"name", "Name"},
                                             {"date", "Date"},
                                             {"status", "Status"},
                                             {"value", "Value"},
                                             {"balance", "Balance"}}));
    QElapsedTimer timer;
    timer.start();
    const QString csv = source.getDataAsCSVusingTableView(table);
    const qint64 csvTime = timer.restart();
    const QString html = source.getDataAsHTMLusingTableView(table);
    const qint64 htmlTime = timer.elapsed();
    qDebug("100000 rows: CSV %lld ms, HTML %lld ms", csvTime, htmlTime);
    QCOMPARE(csv.count(QLatin1Char('\r')), rows + 1);
    QCOMPARE(html.count(QLatin1String("<tr>")), rows + 1);  // and the header row
    QVERIFY2(csvTime < testlib::timeLimit(1000), qPrintable(QString("CSV export took %1 ms").arg(csvTime)));
    QVERIFY2(htmlTime < testlib::timeLimit(1000), qPrintable(QString("HTML export took %1 ms").arg(htmlTime)));
}

void TableExportTest::shouldWrapTheHtmlPage()
{
    QCOMPARE(wrapHtmlExport(QStringLiteral("<table>%@ 100%</table>")),
             QString("<html><head><title>Data Export from Quorvel</title><body><table>%@ 100%</table>"
                     "</body></head></html>"));
}

void TableExportTest::shouldEncodeCsvAsUtf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("ascii") << QString("\"a\"\r") << QByteArray("\"a\"\r");
    QTest::newRow("accented") << QString::fromUtf8("café") << QByteArray("caf\xc3\xa9");
    QTest::newRow("beyond the basic plane")
        << QString::fromUtf8("x\xf0\x9f\x98\x80y") << QByteArray("x\xf0\x9f\x98\x80y");
    QTest::newRow("lone high surrogate dropped") << (QString("a") + QChar(0xD83D) + "b") << QByteArray("ab");
    QTest::newRow("lone low surrogate dropped") << (QString("a") + QChar(0xDE00)) << QByteArray("a");
    QTest::newRow("reversed pair dropped") << (QString("a") + QChar(0xDE00) + QChar(0xD83D) + "b") << QByteArray("ab");
    QTest::newRow("pair kept after a lone one")
        << (QString(QChar(0xD83D)) + "-" + QChar(0xD83D) + QChar(0xDE00)) << QByteArray("-\xf0\x9f\x98\x80");
    QTest::newRow("empty") << QString() << QByteArray();
}

void TableExportTest::shouldEncodeCsvAsUtf8()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, expected);
    QCOMPARE(encodeCsvExport(text), expected);
}

void TableExportTest::shouldEncodeHtmlAsUtf16WithAByteOrderMark_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("empty") << QString() << QByteArray("\xff\xfe", 2);
    QTest::newRow("ascii") << QString("<a>") << QByteArray("\xff\xfe<\0a\0>\0", 8);
    QTest::newRow("accented") << QString::fromUtf8("é€") << QByteArray("\xff\xfe\xe9\0\xac\x20", 6);
    QTest::newRow("surrogate pair") << QString::fromUtf8("\xf0\x9f\x98\x80")
                                    << QByteArray("\xff\xfe\x3d\xd8\x00\xde", 6);
}

void TableExportTest::shouldEncodeHtmlAsUtf16WithAByteOrderMark()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, expected);
    const QByteArray bytes = encodeHtmlExport(text);
    QCOMPARE(bytes, expected);
    QCOMPARE(QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData() + 2), (bytes.size() - 2) / 2),
             text);
}

void TableExportTest::shouldBuildColumnsFromALayoutFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("layout.xml");
    QVERIFY(writeFile(path,
                      "<layout>\n <table>\n  <setup>\n   <numberofcols>3</numberofcols>\n  </setup>\n"
                      "  <column>\n   <field>name</field>\n   <colheading>Name</colheading>\n"
                      "   <colwidth>150</colwidth>\n  </column>\n"
                      "  <column>\n   <field>date</field>\n   <colheading>Date</colheading>\n"
                      "   <colwidth>80</colwidth>\n  </column>\n"
                      "  <column>\n   <field>value</field>\n   <colheading>Value &amp; tax</colheading>\n"
                      "   <colwidth>60pt</colwidth>\n  </column>\n </table>\n</layout>\n"));
    ExportSource source;
    TableView table;
    table.setColumns(TableView::columnsFrom({{"old", "Old"}}));
    QVERIFY(source.configureTable(table, path, QStringLiteral("ignored")));

    const QList<TableColumn> &columns = table.tableColumns();
    QCOMPARE(columns.size(), 3);
    const struct
    {
        const char *identifier, *title;
        int width;
    } expected[] = {{"name", "Name", 150}, {"date", "Date", 80}, {"value", "Value & tax", 60}};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(columns[i].identifier, QString(expected[i].identifier));
        QCOMPARE(columns[i].title, QString(expected[i].title));
        QCOMPARE(columns[i].width, expected[i].width);
        QVERIFY(!columns[i].editable);
    }
    const QList<SortDescriptor> &sorts = table.sortDescriptors();
    QCOMPARE(sorts.size(), 3);
    QCOMPARE(sorts[0].key, QString("name"));
    QCOMPARE(sorts[2].key, QString("value"));
    for (const SortDescriptor &sort : sorts)
        QVERIFY(sort.ascending);
    QVERIFY(table.lastColumnFills());
}

void TableExportTest::shouldKeepTheLastColumnCount()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("layout.xml");
    QVERIFY(writeFile(path,
                      "<l><t><c><numberofcols>2</numberofcols><field>a</field><colheading>A</colheading>"
                      "<colwidth>10</colwidth><field>b</field><colheading>B</colheading>"
                      "<colwidth>20</colwidth><numberofcols>1</numberofcols></c></t></l>"));
    ExportSource source;
    TableView table;
    QVERIFY(source.configureTable(table, path));
    QCOMPARE(table.tableColumns().size(), 1);
    QCOMPARE(table.tableColumns()[0].identifier, QString("a"));
    // Every field still gives a sort descriptor.
    QCOMPARE(table.sortDescriptors().size(), 2);
}

void TableExportTest::shouldNotReadPastTheEndOfAShortLayout()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("layout.xml");
    QVERIFY(writeFile(path,
                      "<l><t><c><numberofcols>4</numberofcols><field>a</field><field>b</field>"
                      "<field>c</field><colheading>A</colheading><colwidth>10</colwidth></c></t></l>"));
    ExportSource source;
    TableView table;
    QVERIFY(source.configureTable(table, path));
    const QList<TableColumn> &columns = table.tableColumns();
    QCOMPARE(columns.size(), 4);
    QCOMPARE(columns[0].title, QString("A"));
    QCOMPARE(columns[0].width, 10);
    QCOMPARE(columns[2].identifier, QString("c"));
    QCOMPARE(columns[2].title, QString(""));
    QCOMPARE(columns[3].identifier, QString(""));
}

void TableExportTest::shouldClearTheColumnsForAMissingLayout()
{
    ExportSource source;
    TableView table;
    table.setColumns(nameAndQty());
    QVERIFY(source.configureTable(table, QStringLiteral("/nonexistent/quorvel/layout.xml")));
    QVERIFY(table.tableColumns().isEmpty());
    QVERIFY(table.sortDescriptors().isEmpty());
}

QUORVEL_TEST(TableExportTest)
#include "TableExportTest.moc"
