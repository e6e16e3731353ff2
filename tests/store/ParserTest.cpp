#include "TestEnvironment.h"
#include "TestMain.h"

#include "store/DbItem.h"
#include "store/Parser.h"
#include "store/XmlTag.h"
#include "store/kdToolBox.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

struct ParsedItem
{
    QString grandParent;
    QString parent;
    QString name;
    QString data;
    bool newParent = false;
};

// Every item of a document, in order.
QList<ParsedItem> readAll(const QByteArray &document, int limit = 100000)
{
    Parser parser;
    parser.initWithData(document);
    QList<ParsedItem> items;
    while (auto item = parser.getItem()) {
        items.append(
            {item->getGrandParentName(), item->getParentName(), item->getName(), item->getData(), item->isNewParent()});
        if (items.size() > limit)
            break;
    }
    return items;
}

// A document holding one record with one field whose raw text is `value`.
QByteArray oneField(const QByteArray &value)
{
    return "<db><group><record><field>" + value + "</field></record></group></db>";
}

// What the code under test prints on standard output while `action` runs.
template <typename Action> QByteArray capturedStandardOutput(Action action)
{
    QTemporaryDir dir;
    const QByteArray path = QFile::encodeName(dir.filePath(QStringLiteral("stdout")));
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
    action();
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    QFile captured(QString::fromLocal8Bit(path));
    captured.open(QIODevice::ReadOnly);
    return captured.readAll();
}

}  // namespace

class ParserTest : public QObject
{
    Q_OBJECT
private slots:
    void shouldReplaceOnlyTheFirstOccurrence_data();
    void shouldReplaceOnlyTheFirstOccurrence();
    void shouldReadTheFieldsOfEachRecord();
    void shouldDecodeAValue_data();
    void shouldDecodeAValue();
    void shouldGiveTheEmptyTextForAnEmptyField();
    void shouldStartANewRecordAfterOneWithoutFields();
    void shouldEndWhenTheDocumentElementCloses();
    void shouldAnswerNothingForACutFile_data();
    void shouldAnswerNothingForACutFile();
    void shouldReadATagWithoutItsSlashes();
    void shouldTruncateALongTagText();
    void shouldTruncateALongValue();
    void shouldStopAtAValueThatIsNotAscii();
    void shouldReadAFileAndReportItsSize();
    void shouldReadAMissingFileAsEmpty();
    void shouldSurviveAnyInput();
};

void ParserTest::shouldReplaceOnlyTheFirstOccurrence_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first of many") << "a"
                                   << "o"
                                   << "banana"
                                   << "bonana";
    QTest::newRow("absent") << "x"
                            << "y"
                            << "banana"
                            << "banana";
    QTest::newRow("at the end") << "na"
                                << "NA!"
                                << "bana"
                                << "baNA!";
    QTest::newRow("whole text") << "&amp;"
                                << "&"
                                << "&amp;"
                                << "&";
    QTest::newRow("replacement holds the target") << "&"
                                                  << "&amp;"
                                                  << "a&b&c"
                                                  << "a&amp;b&c";
    QTest::newRow("empty text") << "a"
                                << "b"
                                << ""
                                << "";
}

void ParserTest::shouldReplaceOnlyTheFirstOccurrence()
{
    QFETCH(QString, target);
    QFETCH(QString, replacement);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(kdToolBox::replaceSubstring(target, replacement, text), expected);
}

void ParserTest::shouldReadTheFieldsOfEachRecord()
{
    const QByteArray document
        = "<database>\n  <contacts>\n    <contact>\n      <surname>Smith</surname>\n"
          "      <first>Ann</first>\n    </contact>\n    <contact>\n      <surname>Jones</surname>\n"
          "      <first>Bob</first>\n      <phone>0123</phone>\n    </contact>\n  </contacts>\n"
          "  <orders>\n    <order>\n      <ordernum>7</ordernum>\n    </order>\n  </orders>\n</database>\n";
    const QList<ParsedItem> items = readAll(document);
    QCOMPARE(items.size(), 6);
    const struct
    {
        const char *grandParent, *parent, *name, *data;
        bool newParent;
    } expected[] = {
        {"contacts", "contact", "surname", "Smith", true}, {"contacts", "contact", "first", "Ann", false},
        {"contacts", "contact", "surname", "Jones", true}, {"contacts", "contact", "first", "Bob", false},
        {"contacts", "contact", "phone", "0123", false},   {"orders", "order", "ordernum", "7", true},
    };
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(items[i].grandParent, QString(expected[i].grandParent));
        QCOMPARE(items[i].parent, QString(expected[i].parent));
        QCOMPARE(items[i].name, QString(expected[i].name));
        QCOMPARE(items[i].data, QString(expected[i].data));
        QCOMPARE(items[i].newParent, expected[i].newParent);
    }
}

void ParserTest::shouldDecodeAValue_data()
{
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QByteArray("Widget") << "Widget";
    QTest::newRow("only the first ampersand") << QByteArray("a &amp; b &amp; c") << "a & b &amp; c";
    QTest::newRow("escaped less-than entity") << QByteArray("&amp;lt;") << "<";
    QTest::newRow("first less-than and greater-than") << QByteArray("&lt;b&gt; &lt;i&gt;") << "<b> &lt;i&gt;";
    QTest::newRow("greater-than made from ampersand") << QByteArray("&amp;gt;&amp;") << ">&amp;";
    QTest::newRow("line feed and carriage return trimmed") << QByteArray("\nhello\r") << "hello";
    QTest::newRow("only line breaks trimmed") << QByteArray("\r\n  padded \t\n") << "  padded \t";
    QTest::newRow("spaces kept") << QByteArray("  spaces  ") << "  spaces  ";
    QTest::newRow("inner line break kept") << QByteArray("one\ntwo") << "one\ntwo";
    QTest::newRow("only line breaks") << QByteArray("\n\r\n") << "";
    QTest::newRow("quote and apostrophe") << QByteArray("\"it's\"") << "\"it's\"";
    QTest::newRow("unknown entity kept") << QByteArray("&quot;") << "&quot;";
    QTest::newRow("closing bracket in value") << QByteArray("a > b") << "a > b";
}

void ParserTest::shouldDecodeAValue()
{
    QFETCH(QByteArray, raw);
    QFETCH(QString, expected);
    const QList<ParsedItem> items = readAll(oneField(raw));
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0].name, QString("field"));
    QCOMPARE(items[0].data, expected);
}

void ParserTest::shouldGiveTheEmptyTextForAnEmptyField()
{
    Parser parser;
    parser.initWithData(oneField(""));
    const auto item = parser.getItem();
    QVERIFY(item);
    QVERIFY(!item->getData().isNull());
    QCOMPARE(item->getData(), QString(""));
    QCOMPARE(parser.getContent(), QString(""));
    QVERIFY(!parser.getItem());
}

void ParserTest::shouldStartANewRecordAfterOneWithoutFields()
{
    const QList<ParsedItem> items
        = readAll("<db><group><empty></empty><record><a>1</a><b>2</b></record><hollow>\n</hollow></group></db>");
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0].parent, QString("record"));
    QCOMPARE(items[0].name, QString("a"));
    QVERIFY(items[0].newParent);
    QCOMPARE(items[1].name, QString("b"));
    QVERIFY(!items[1].newParent);
}

void ParserTest::shouldEndWhenTheDocumentElementCloses()
{
    Parser parser;
    parser.initWithData("<db><g><r><f>1</f></r></g></db><db><g><r><f>2</f></r></g></db>");
    const auto first = parser.getItem();
    QVERIFY(first);
    QCOMPARE(first->getData(), QString("1"));
    QVERIFY(!parser.getItem());
    QCOMPARE(parser.getIndent(), 0);
}

void ParserTest::shouldAnswerNothingForACutFile_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<int>("itemsBeforeTheEnd");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("no tags") << QByteArray("just some text") << 0;
    QTest::newRow("inside the first value") << QByteArray("<db><g><r><f>abc") << 0;
    QTest::newRow("inside an opening tag") << QByteArray("<db><g><r><f") << 0;
    QTest::newRow("inside the second value") << QByteArray("<db><g><r><f>ab</f><h>cd") << 1;
    QTest::newRow("after a value's less-than") << QByteArray("<db><g><r><f>ab</f><h>cd<") << 2;
    QTest::newRow("before the document closes") << QByteArray("<db><g><r><f>ab</f></r>") << 1;
}

void ParserTest::shouldAnswerNothingForACutFile()
{
    QFETCH(QByteArray, document);
    QFETCH(int, itemsBeforeTheEnd);
    Parser parser;
    parser.initWithData(document);
    for (int i = 0; i < itemsBeforeTheEnd; ++i)
        QVERIFY(parser.getItem());
    QVERIFY(!parser.getItem());
    // The input stays at its end.
    QVERIFY(!parser.getItem());
    QVERIFY(!parser.getTag(false));
    QVERIFY(!parser.getData());
}

void ParserTest::shouldReadATagWithoutItsSlashes()
{
    Parser parser;
    parser.initWithData("text before<  /ab/c >value<x>");
    auto tag = parser.getTag(false);
    QVERIFY(tag);
    QCOMPARE(tag->getData(), QString("  abc "));
    QVERIFY(tag->isClosing());
    const auto value = parser.getData();
    QVERIFY(value);
    QCOMPARE(*value, QString("value"));
    // The "<" of the next tag is already taken.
    tag = parser.getTag(true);
    QVERIFY(tag);
    QCOMPARE(tag->getData(), QString("x"));
    QVERIFY(!tag->isClosing());
    QVERIFY(!parser.getTag(false));
}

void ParserTest::shouldTruncateALongTagText()
{
    const QByteArray longName = "abcdefghijklmnopqrstuvwxyz0123456789";
    const QByteArray longRecord(500, 'r');
    const QList<ParsedItem> items = readAll("<db><g><" + longRecord + "><" + longName + ">one</" + longName
                                            + "><short>two</short></" + longRecord + "></g></db>");
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0].name, QString::fromLatin1(longName.left(Parser::maxTagLength)));
    QCOMPARE(items[0].parent, QString(Parser::maxTagLength, QLatin1Char('r')));
    QCOMPARE(items[0].data, QString("one"));
    QCOMPARE(items[1].name, QString("short"));
    QCOMPARE(items[1].data, QString("two"));
}

void ParserTest::shouldTruncateALongValue()
{
    QByteArray huge(Parser::maxValueLength + 5000, 'x');
    huge.replace(Parser::maxValueLength - 1, 2, "YZ");  // straddles the limit
    const QList<ParsedItem> items = readAll("<db><g><r><big>" + huge + "</big><after>ok</after></r></g></db>");
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0].data.size(), Parser::maxValueLength);
    QCOMPARE(items[0].data, QString::fromLatin1(huge.left(Parser::maxValueLength)));
    QVERIFY(items[0].data.endsWith(QLatin1Char('Y')));
    QCOMPARE(items[1].name, QString("after"));
    QCOMPARE(items[1].data, QString("ok"));
}

void ParserTest::shouldStopAtAValueThatIsNotAscii()
{
    Parser parser;
    parser.initWithData("<db><g><r><a>fine</a><b>caf\xc3\xa9</b><c>later</c></r></g></db>");
    const auto first = parser.getItem();
    QVERIFY(first);
    QCOMPARE(first->getData(), QString("fine"));
    QVERIFY(!parser.getItem());
    QVERIFY(!parser.getItem());

    // Bytes above 127 beyond the first 10000 of a value count too.
    QByteArray longValue(Parser::maxValueLength + 10, 'a');
    longValue[Parser::maxValueLength + 5] = char(0xE9);
    Parser second;
    second.initWithData(oneField(longValue));
    QVERIFY(!second.getItem());
}

void ParserTest::shouldReadAFileAndReportItsSize()
{
    const QByteArray document = "<db><g><r><f>1</f></r></g></db>\n";
    QFile file(testlib::TestEnvironment::current().homeDir() + QStringLiteral("/old.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(document);
    file.close();

    Parser parser;
    const QByteArray printed = capturedStandardOutput([&] { parser.initWithFilePath(QStringLiteral("~/old.xml")); });
    QCOMPARE(printed, QByteArray::number(document.size()) + " bytes read\n");
    QCOMPARE(parser.length(), quint32(document.size()));
    const auto item = parser.getItem();
    QVERIFY(item);
    QCOMPARE(item->getData(), QString("1"));
}

void ParserTest::shouldReadAMissingFileAsEmpty()
{
    Parser parser;
    const QByteArray printed
        = capturedStandardOutput([&] { parser.initWithFilePath(QStringLiteral("/nonexistent/quorvel/none.xml")); });
    QCOMPARE(printed, QByteArray("0 bytes read\n"));
    QCOMPARE(parser.length(), 0u);
    QVERIFY(!parser.getNextByte());
    QVERIFY(!parser.getItem());
}

void ParserTest::shouldSurviveAnyInput()
{
    // Random bytes and damaged documents: every call ends, and as each item
    // takes at least one byte there can be no more items than bytes.
    QRandomGenerator random(20240601);
    const QByteArray valid
        = "<db><g><r><a>1 &amp; 2</a><b>\nx\r</b></r><r><a></a></r></g><h><s><t>&lt;</t></s></h></db>";
    const char alphabet[] = "<>/&;amp ltg\n\rxyz\x80\xff";
    for (int round = 0; round < 3000; ++round) {
        QByteArray input;
        if (round % 2 == 0) {
            const int length = int(random.bounded(200));
            for (int i = 0; i < length; ++i)
                input.append(alphabet[random.bounded(int(sizeof alphabet - 1))]);
        } else {
            input = valid;
            const int edits = 1 + int(random.bounded(5));
            for (int e = 0; e < edits; ++e) {
                const int at = int(random.bounded(int(input.size())));
                switch (random.bounded(3)) {
                case 0:
                    input.remove(at, 1 + int(random.bounded(4)));
                    break;
                case 1:
                    input.insert(at, alphabet[random.bounded(int(sizeof alphabet - 1))]);
                    break;
                default:
                    input[at] = char(random.bounded(256));
                    break;
                }
            }
        }
        const QList<ParsedItem> items = readAll(input, int(input.size()) + 1);
        QVERIFY2(items.size() <= input.size(), input.constData());
    }
}

QUORVEL_TEST(ParserTest)
#include "ParserTest.moc"
