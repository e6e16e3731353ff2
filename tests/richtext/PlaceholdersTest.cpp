// Filling placeholders in a document: split runs, formats, values that hold
// their own placeholder, and an HTML table put in at a placeholder.
#include "TestMain.h"

#include "RichTextChecks.h"
#include "platform/richtext/Placeholders.h"

#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

using namespace richtextchecks;

namespace {

QTextCharFormat formatAt(QTextDocument &document, int position)
{
    QTextCursor cursor(&document);
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

}  // namespace

class PlaceholdersTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReplaceAPlaceholderSplitAcrossRunsWithTheFirstCharactersFormat()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        QTextCharFormat plain;
        QTextCharFormat first;
        first.setFontWeight(QFont::Bold);
        first.setForeground(QColor(200, 0, 0));
        first.setFontPointSize(15);
        QTextCharFormat second;
        second.setFontItalic(true);
        second.setFontPointSize(9);
        cursor.insertText(QStringLiteral("Dear "), plain);
        cursor.insertText(QStringLiteral("<cont"), first);
        cursor.insertText(QStringLiteral("actname>"), second);
        cursor.insertText(QStringLiteral(", thanks"), plain);

        QCOMPARE(Placeholders::replaceAll(document, QStringLiteral("<contactname>"), QStringLiteral("Ann Smith")), 1);
        QCOMPARE(document.toPlainText(), QStringLiteral("Dear Ann Smith, thanks"));
        for (int position = 5; position < 14; ++position) {
            const QTextCharFormat format = formatAt(document, position);
            QVERIFY(format.fontWeight() == QFont::Bold);
            QVERIFY(!format.fontItalic());
            QCOMPARE(format.fontPointSize(), 15.0);
            QCOMPARE(format.foreground().color(), QColor(200, 0, 0));
        }
        // The text around keeps its own format.
        QVERIFY(formatAt(document, 14).fontWeight() != QFont::Bold);
        QVERIFY(formatAt(document, 4).fontWeight() != QFont::Bold);
    }

    void shouldReplaceEveryOccurrence_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("result");
        QTest::newRow("several") << QStringLiteral("<n> and <n>\n<n>!") << QStringLiteral("<n>")
                                 << QStringLiteral("Bob") << 3 << QStringLiteral("Bob and Bob\nBob!");
        QTest::newRow("none") << QStringLiteral("nothing here") << QStringLiteral("<n>") << QStringLiteral("Bob") << 0
                              << QStringLiteral("nothing here");
        QTest::newRow("letter case counts") << QStringLiteral("<N> <n>") << QStringLiteral("<n>") << QStringLiteral("x")
                                            << 1 << QStringLiteral("<N> x");
        QTest::newRow("value holds the placeholder")
            << QStringLiteral("A <x> B <x>") << QStringLiteral("<x>") << QStringLiteral("<x><x>") << 2
            << QStringLiteral("A <x><x> B <x><x>");
        QTest::newRow("value ends like the placeholder begins")
            << QStringLiteral("<x>x>") << QStringLiteral("<x>") << QStringLiteral("<") << 1 << QStringLiteral("<x>");
        QTest::newRow("empty value") << QStringLiteral("a<x>b<x>") << QStringLiteral("<x>") << QString() << 2
                                     << QStringLiteral("ab");
        QTest::newRow("adjacent") << QStringLiteral("<x><x><x>") << QStringLiteral("<x>") << QStringLiteral("1") << 3
                                  << QStringLiteral("111");
        QTest::newRow("empty placeholder")
            << QStringLiteral("abc") << QString() << QStringLiteral("x") << 0 << QStringLiteral("abc");
    }

    void shouldReplaceEveryOccurrence()
    {
        QFETCH(QString, text);
        QFETCH(QString, placeholder);
        QFETCH(QString, value);
        QFETCH(int, count);
        QFETCH(QString, result);
        QTextDocument document;
        document.setPlainText(text);
        QCOMPARE(Placeholders::replaceAll(document, placeholder, value), count);
        QCOMPARE(document.toPlainText(), result);
    }

    void shouldReplaceInsideTableCells()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("<total> "));
        QTextTable *table = cursor.insertTable(1, 2);
        table->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("sum <total>"));
        QCOMPARE(Placeholders::replaceAll(document, QStringLiteral("<total>"), QStringLiteral("12.50")), 2);
        QCOMPARE(table->cellAt(0, 1).firstCursorPosition().block().text(), QStringLiteral("sum 12.50"));
    }

    void shouldInsertAnHtmlTableAtThePlaceholder()
    {
        QTextDocument document;
        document.setPlainText(QStringLiteral("Before\n<itemsordered>\nAfter <itemsordered>"));
        const QString html
            = QStringLiteral("<table border=\"1\"><tr><th>Item</th><th>Price</th></tr>"
                             "<tr><td>Bolt</td><td>0.20</td></tr><tr><td>Nut</td><td>0.10</td></tr></table>");
        QVERIFY(Placeholders::insertHtmlAt(document, QStringLiteral("<itemsordered>"), html));
        QTextTable *table = firstTable(document);
        QVERIFY(table);
        QCOMPARE(table->rows(), 3);
        QCOMPARE(table->columns(), 2);
        QCOMPARE(table->cellAt(0, 0).firstCursorPosition().block().text(), QStringLiteral("Item"));
        QCOMPARE(table->cellAt(1, 0).firstCursorPosition().block().text(), QStringLiteral("Bolt"));
        QCOMPARE(table->cellAt(2, 1).firstCursorPosition().block().text(), QStringLiteral("0.10"));
        const QString text = document.toPlainText();
        QVERIFY(text.startsWith(QStringLiteral("Before")));
        // Only the first occurrence is replaced.
        QCOMPARE(text.count(QStringLiteral("<itemsordered>")), 1);
        QVERIFY(text.endsWith(QStringLiteral("After <itemsordered>")));
    }

    void shouldLeaveTheDocumentAloneWithoutThePlaceholder()
    {
        QTextDocument document;
        document.setPlainText(QStringLiteral("no table here"));
        QVERIFY(!Placeholders::insertHtmlAt(document, QStringLiteral("<itemsordered>"),
                                            QStringLiteral("<table><tr><td>x</td></tr></table>")));
        QCOMPARE(document.toPlainText(), QStringLiteral("no table here"));
        QVERIFY(!firstTable(document));
    }
};

QUORVEL_TEST(PlaceholdersTest)
#include "PlaceholdersTest.moc"
