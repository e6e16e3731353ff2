// Reading a report definition: each key into the plain value, what is wrong
// in a definition said line by line and read as well as it can be, and files
// that give no definition at all.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "platform/PropertyList.h"
#include "reports/ReportDefinition.h"

#include <QFile>
#include <QTest>

using namespace reports;

namespace {

// A definition of two columns with every key a report may have.
QVariantMap fullDefinition()
{
    return {{"selectfrom", "itemspurchased"},
            {"colheadings", QStringList{"Item", "Qty"}},
            {"colwidths", QStringList{"120", "40"}},
            {"fields", QStringList{"item", "qty"}},
            {"where", QVariantList{QVariant(QStringList{"qty", ">", "0"})}},
            {"fields2", QStringList{"code", "total"}},
            {"where2", QVariantList{}},
            {"totalcol", "2"},
            {"collationmatchcol", "1"},
            {"collationqtycol", "2"}};
}

QVariantMap with(QVariantMap map, const QString &key, const QVariant &value)
{
    map.insert(key, value);
    return map;
}

QVariantMap without(QVariantMap map, const QString &key)
{
    map.remove(key);
    return map;
}

}  // namespace

class ReportDefinitionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadEveryKeyAndSayWhatIsWrong_data()
    {
        QTest::addColumn<QVariantMap>("root");
        QTest::addColumn<QStringList>("headings");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("secondRows");
        QTest::addColumn<QString>("totalCol");
        QTest::addColumn<QString>("matchCol");
        QTest::addColumn<QString>("qtyCol");
        QTest::addColumn<QStringList>("problems");
        const QVariantMap full = fullDefinition();
        const QStringList two{"Item", "Qty"};
        const QStringList names{"item", "qty"};
        const QString none = noColumn;

        QTest::newRow("every key") << full << two << names << "itemspurchased" << true << "field2"
                                   << "field1"
                                   << "field2" << QStringList();
        QTest::newRow("lists of values, as a file gives them")
            << with(with(full, "colheadings", QVariantList{"Item", "Qty"}), "fields", QVariantList{"item", "qty"})
            << two << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList();
        QTest::newRow("no total without the key")
            << without(full, "totalcol") << two << names << "itemspurchased" << true << none << "field1"
            << "field2" << QStringList();
        QTest::newRow("total -1 is none")
            << with(full, "totalcol", "-1") << two << names << "itemspurchased" << true << none << "field1"
            << "field2" << QStringList();
        QTest::newRow("total written as a number")
            << with(full, "totalcol", QVariant(qlonglong(1))) << two << names << "itemspurchased" << true << "field1"
            << "field1"
            << "field2" << QStringList();
        QTest::newRow("blanks around a column number")
            << with(full, "collationmatchcol", " 1 ") << two << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList();
        QTest::newRow("total that is no column")
            << with(full, "totalcol", "2nd") << two << names << "itemspurchased" << true << none << "field1"
            << "field2" << QStringList{"\"totalcol\" is not a column number: \"2nd\"; no total"};
        QTest::newRow("a lone minus is no column")
            << with(full, "collationqtycol", "-") << two << names << "itemspurchased" << true << "field2"
            << "field1" << none << QStringList{"\"collationqtycol\" is not a column number: \"-\"; no merging of rows"};
        QTest::newRow("merging needs both columns")
            << without(full, "collationqtycol") << two << names << "itemspurchased" << true << "field2" << none << none
            << QStringList();
        QTest::newRow("second rows need both keys")
            << without(full, "where2") << two << names << "itemspurchased" << false << "field2"
            << "field1"
            << "field2" << QStringList();
        QTest::newRow("short second fields")
            << with(full, "fields2", QStringList{"code"}) << two << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList{"\"fields2\" has 1 names, fewer than the 2 of \"fields\"; the others are empty"};
        QTest::newRow("short second fields without second rows")
            << without(with(full, "fields2", QStringList{"code"}), "where2") << two << names << "itemspurchased"
            << false << "field2"
            << "field1"
            << "field2" << QStringList();
        QTest::newRow("one text for a list")
            << with(full, "fields", "item") << two << QStringList{"item"} << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList{"\"fields\" should be a list of texts; read as a list of one"};
        QTest::newRow("an entry that is no text")
            << with(full, "colheadings", QVariantList{"Item", QVariantMap{{"a", "b"}}}) << QStringList{"Item", ""}
            << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList{"entry 2 of \"colheadings\" is not a text; read as empty"};
        QTest::newRow("a list that is a dictionary")
            << with(full, "fields", QVariantMap{{"a", "b"}}) << two << QStringList() << "itemspurchased" << true
            << "field2"
            << "field1"
            << "field2" << QStringList{"\"fields\" is not a list of texts; left out"};
        QTest::newRow("missing headings and fields") << without(without(full, "colheadings"), "fields") << QStringList()
                                                     << QStringList() << "itemspurchased" << true << "field2"
                                                     << "field1"
                                                     << "field2" << QStringList{"no \"colheadings\"", "no \"fields\""};
        QTest::newRow("fewer widths than headings")
            << with(full, "colwidths", QStringList{"120"}) << two << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList{"\"colwidths\" has 1 widths for 2 headings; the others are 100 points wide"};
        QTest::newRow("no widths at all")
            << without(full, "colwidths") << two << names << "itemspurchased" << true << "field2"
            << "field1"
            << "field2" << QStringList{"no \"colwidths\""};
        QTest::newRow("source that is no text")
            << with(full, "selectfrom", QStringList{"orders"}) << two << names << QString() << true << "field2"
            << "field1"
            << "field2" << QStringList{"\"selectfrom\" is not a text; left out"};
        QTest::newRow("empty dictionary")
            << QVariantMap() << QStringList() << QStringList() << QString() << false << none << none << none
            << QStringList{"no \"colheadings\"", "no \"colwidths\"", "no \"fields\""};
    }
    void shouldReadEveryKeyAndSayWhatIsWrong()
    {
        QFETCH(QVariantMap, root);
        QFETCH(QStringList, headings);
        QFETCH(QStringList, fields);
        QFETCH(QString, source);
        QFETCH(bool, secondRows);
        QFETCH(QString, totalCol);
        QFETCH(QString, matchCol);
        QFETCH(QString, qtyCol);
        QFETCH(QStringList, problems);
        QStringList said;
        const ReportDefinition definition = readReportDefinition(root, &said);
        QCOMPARE(definition.headings, headings);
        QCOMPARE(definition.fields, fields);
        QCOMPARE(definition.source, source);
        QCOMPARE(definition.source.isNull(), source.isNull());
        QCOMPARE(definition.hasSecondRows(), secondRows);
        QCOMPARE(definition.totalCol, totalCol);
        QCOMPARE(definition.matchCol, matchCol);
        QCOMPARE(definition.qtyCol, qtyCol);
        QCOMPARE(definition.collates(), matchCol != noColumn && qtyCol != noColumn);
        QCOMPARE(said, problems);
    }

    void shouldKeepTheConditionsAsFoundForTheRun()
    {
        const QVariantMap root = fullDefinition();
        const ReportDefinition definition = readReportDefinition(root);
        QCOMPARE(definition.where, root.value("where"));
        QCOMPARE(definition.where2, root.value("where2"));
        QCOMPARE(definition.widths, QStringList({"120", "40"}));
        QCOMPARE(definition.fields2, QStringList({"code", "total"}));
    }

    void shouldReadOnlyAPropertyListOfADictionary_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("read");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("source");
        QTest::newRow("a definition") << platform::plist::writeValue(fullDefinition()) << true << QString()
                                      << "itemspurchased";
        QTest::newRow("an empty dictionary")
            << QByteArray("<plist version=\"1.0\"><dict/></plist>") << true << QString() << QString();
        QTest::newRow("cut short") << QByteArray("<plist><dict><key>") << false << QString() << QString();
        QTest::newRow("an empty file") << QByteArray() << false << QString() << QString();
        QTest::newRow("an array") << QByteArray("<plist version=\"1.0\"><array/></plist>") << false
                                  << "it is not a dictionary" << QString();
        QTest::newRow("a text") << QByteArray("<plist version=\"1.0\"><string>x</string></plist>") << false
                                << "it is not a dictionary" << QString();
    }
    void shouldReadOnlyAPropertyListOfADictionary()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, read);
        QFETCH(QString, failure);
        QFETCH(QString, source);
        const QString path = testlib::TestEnvironment::current().root() + QStringLiteral("/Definition.xml");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();

        QString said;
        const std::optional<ReportDefinition> definition = readReportDefinitionFile(path, &said);
        QCOMPARE(definition.has_value(), read);
        if (read) {
            QVERIFY(said.isNull());
        } else {
            QVERIFY2(said.startsWith(QStringLiteral("couldn't read report definition ") + path + QStringLiteral(": ")),
                     qPrintable(said));
            QVERIFY(said.size() > path.size() + 34);  // a reason follows
            if (!failure.isEmpty())
                QVERIFY2(said.endsWith(failure), qPrintable(said));
        }
        if (definition)
            QCOMPARE(definition->source, source);
    }

    void shouldPickTheValueAColumnNames_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<int>("index");
        QTest::newRow("first") << "field1" << 1;
        QTest::newRow("two digits") << "field12" << 12;
        QTest::newRow("none") << "field-1" << -1;
        QTest::newRow("only the prefix") << "field" << 0;
        QTest::newRow("a short name") << "qty" << 0;
        QTest::newRow("any five characters") << "colum3" << 3;
    }
    void shouldPickTheValueAColumnNames()
    {
        QFETCH(QString, identifier);
        QFETCH(int, index);
        QCOMPARE(columnIndex(identifier), index);
    }
};

QUORVEL_TEST(ReportDefinitionTest)
#include "ReportDefinitionTest.moc"
