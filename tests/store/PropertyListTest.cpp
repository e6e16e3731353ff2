#include "TestMain.h"

#include "platform/PropertyList.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPoint>
#include <QProcess>
#include <QScopeGuard>
#include <QRandomGenerator>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace platform::plist;

namespace {

const QStringList KnownKeys = {QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("status")};

// Collects the records as "key=value" lines, voiding them on restart.
class Collector : public RecordVisitor
{
public:
    explicit Collector(const RecordReader &recordReader)
        : reader(recordReader)
    { }
    void restart() override
    {
        records.clear();
        ++restarts;
    }
    void record(std::span<const Field> fields) override
    {
        QStringList pairs;
        for (const Field &field : fields)
            pairs << reader.keyName(field.key) + QLatin1Char('=') + field.value;
        records << pairs.join(QLatin1Char('|'));
        for (const Field &field : fields)
            values << field.value;
    }

    const RecordReader &reader;
    QStringList records;
    QList<QString> values;  // every value, kept to compare the buffers
    int restarts = 0;
};

struct Outcome
{
    ReadStatus status;
    QStringList records;
    bool fullReader = false;
};

Outcome readWith(QByteArrayView document, bool quick, const QString &rootKey = QStringLiteral("orders"))
{
    RecordReader reader(KnownKeys);
    reader.setQuickScanEnabled(quick);
    Collector collector(reader);
    Outcome outcome;
    outcome.status = reader.read(document, rootKey, collector);
    outcome.records = collector.records;
    outcome.fullReader = reader.usedFullReader();
    return outcome;
}

QByteArray plist(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n\t<key>orders</key>\n\t<array>\n"
        + body + "\t</array>\n</dict>\n</plist>\n";
}

QByteArray record(const QByteArray &pairs)
{
    return "\t\t<dict>\n" + pairs + "\t\t</dict>\n";
}

QByteArray dataFile(const QString &name)
{
    QFile file(QStringLiteral(QUORVEL_TEST_DATA "/plist/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data %s", qPrintable(name));
    return file.readAll();
}

// A document of n records the way this program writes it.
QByteArray sampleDocument(int n)
{
    RecordWriter writer(QStringLiteral("orders"));
    QList<QString> keep;
    for (int i = 1; i <= n; ++i) {
        keep << QString::number(i) << QStringLiteral("Order %1 <b> & \"c\" é").arg(i);
    }
    const QString status = QStringLiteral("Complete");
    for (int i = 0; i < n; ++i) {
        writer.beginRecord();
        writer.addField(u"id", keep.at(2 * i));
        writer.addField(u"title", keep.at(2 * i + 1));
        writer.addField(u"status", status);
        writer.endRecord();
    }
    return writer.finish();
}

}  // namespace

class PropertyListTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadEveryFormOfAValidDocument_data();
    void shouldReadEveryFormOfAValidDocument();
    void shouldRefuseInvalidDocumentsWithAReasonAndALine_data();
    void shouldRefuseInvalidDocumentsWithAReasonAndALine();
    void shouldRefuseEveryTruncatedDocument();
    void shouldAgreeWithTheFullReaderOnMutatedDocuments();
    void shouldReadLargeDocumentsInBlocks_data();
    void shouldReadLargeDocumentsInBlocks();
    void shouldNumberUnknownKeysAfterTheKnownOnes();
    void shouldShareRepeatedShortValues();
    void shouldReadAFileAndExplainAMissingOne();
    void shouldWriteThePlatformLayout();
    void shouldWriteAnEmptyArrayAsEmptyElement();
    void shouldRoundTripAnyText_data();
    void shouldRoundTripAnyText();
    void shouldReplaceAFileWholeOrNotAtAll();
    void shouldKeepTheOldFileOnAFullDisk();
    void shouldReadAndWriteGeneralValues();
    void shouldRefuseBadGeneralValues_data();
    void shouldRefuseBadGeneralValues();
};

void PropertyListTest::shouldReadEveryFormOfAValidDocument_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<bool>("quick");  // whether the quick scanner reads it alone

    const QByteArray one = record("\t\t\t<key>id</key>\n\t\t\t<string>1</string>\n"
                                  "\t\t\t<key>name</key>\n\t\t\t<string>Ann</string>\n");
    QTest::newRow("this program's layout") << plist(one + one) << QStringList{"id=1|name=Ann", "id=1|name=Ann"} << true;
    QTest::newRow("no declaration, no doctype, one line") << QByteArray(
        "<plist><dict><key>orders</key><array><dict><key>id</key><string>2</string></dict></array></dict></plist>")
                                                          << QStringList{"id=2"} << true;
    QTest::newRow("spaces and CR LF between elements") << QByteArray(
        "<?xml version='1.0' encoding='utf-8' standalone='yes'?>\r\n<plist version=\"1.0\">\r\n  <dict>\r\n"
        "    <key>orders</key>\r\n    <array>\r\n      <dict>\r\n        <key>id</key>\r\n"
        "        <string>3</string>\r\n      </dict>\r\n    </array>\r\n  </dict>\r\n</plist>\r\n")
                                                       << QStringList{"id=3"} << true;
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF") + plist(one) << QStringList{"id=1|name=Ann"} << true;
    QTest::newRow("empty string element")
        << plist(record("<key>name</key><string/><key>id</key><string></string>")) << QStringList{"name=|id="} << true;
    QTest::newRow("named entities") << plist(record("<key>name</key><string>&amp;&lt;&gt;&quot;&apos;</string>"))
                                    << QStringList{"name=&<>\"'"} << true;
    QTest::newRow("character references")
        << plist(record("<key>name</key><string>&#38;&#x26;&#233;&#x65E5;&#x1F600;</string>"))
        << QStringList{QStringLiteral("name=&&é日😀")} << true;
    QTest::newRow("text in UTF-8") << plist(
        record("<key>name</key><string>\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80</string>"))
                                   << QStringList{QStringLiteral("name=é 日本 😀")} << true;
    QTest::newRow("line ends inside text become line feeds")
        << plist(record("<key>name</key><string>a\r\nb\rc\nd&#13;e</string>")) << QStringList{"name=a\nb\nc\nd\re"}
        << true;
    QTest::newRow("other kinds of value as text")
        << plist(record(
               "<key>id</key><integer> 42 </integer><key>name</key><real>2.50</real>"
               "<key>status</key><true/><key>sent</key><false/><key>date</key><date>2020-05-17T08:30:00Z</date>"))
        << QStringList{"id=42|name=2.50|status=YES|sent=NO|date=2020-05-17T08:30:00Z"} << true;
    QTest::newRow("other root keys before and after")
        << QByteArray("<plist><dict><key>version</key><integer>2</integer><key>orders</key><array>"
                      "<dict><key>id</key><string>5</string></dict></array><key>z</key><true/></dict></plist>")
        << QStringList{"id=5"} << true;
    QTest::newRow("empty array") << QByteArray("<plist><dict><key>orders</key><array/></dict></plist>") << QStringList{}
                                 << true;
    QTest::newRow("empty record") << plist("\t\t<dict/>\n\t\t<dict></dict>\n") << QStringList{"", ""} << true;
    QTest::newRow("a key written twice comes twice")
        << plist(record("<key>id</key><string>1</string><key>id</key><string>2</string>")) << QStringList{"id=1|id=2"}
        << true;
    QTest::newRow("text that looks like markup")
        << plist(record("<key>name</key><string>a > b ]] c</string>")) << QStringList{"name=a > b ]] c"} << true;

    QTest::newRow("written by plistlib (file)")
        << dataFile(QStringLiteral("plistlib-orders.xml"))
        << QStringList{QStringLiteral(
                           "contact=12|date=02/01/08|description=Line one\nLine two|id=1|includeBOM=NO|repeats=NO|"
                           "sent=YES|status=Order|title=Fit shelves & <brackets>|type=Order|value=120.00"),
                       QStringLiteral("contact=0|date=01/02/08|id=2|includeBOM=YES|repeats=NO|sent=NO|status=Quote|"
                                      "title=Zoë's café 日本 😀|type=Order")}
        << true;

    // Everything below is left to the full reader.
    QTest::newRow("comment between records")
        << plist(one + "<!-- the second one -->" + one) << QStringList{"id=1|name=Ann", "id=1|name=Ann"} << false;
    QTest::newRow("comment inside text") << plist(record("<key>name</key><string>An<!-- x -->n</string>"))
                                         << QStringList{"name=Ann"} << false;
    QTest::newRow("CDATA") << plist(record("<key>name</key><string><![CDATA[<b> & </b>]]></string>"))
                           << QStringList{"name=<b> & </b>"} << false;
    QTest::newRow("processing instruction")
        << QByteArray("<?xml version=\"1.0\"?><?editor x?><plist><dict><key>orders</key><array><dict><key>id</key>"
                      "<string>1</string></dict></array></dict></plist>")
        << QStringList{"id=1"} << false;
    QTest::newRow("entity declared in the DOCTYPE")
        << QByteArray("<!DOCTYPE plist [<!ENTITY co \"Quorvel &amp; Co\">]><plist><dict><key>orders</key><array>"
                      "<dict><key>name</key><string>&co;</string></dict></array></dict></plist>")
        << QStringList{"name=Quorvel & Co"} << false;
    QTest::newRow("white space inside tags")
        << QByteArray("<plist ><dict ><key >orders</key ><array ><dict ><key>id</key><string >1</string ></dict >"
                      "</array></dict></plist >")
        << QStringList{"id=1"} << false;
    QTest::newRow("true written with an end tag")
        << plist(record("<key>status</key><true></true>")) << QStringList{"status=YES"} << false;
    QTest::newRow("nested values in a record are skipped")
        << plist(record("<key>id</key><string>1</string><key>tags</key><array><string>a</string></array>"
                        "<key>more</key><dict><key>k</key><string>v</string></dict><key>pic</key><data>AAE=</data>"
                        "<key>name</key><string>Ann</string>"))
        << QStringList{"id=1|name=Ann"} << false;
    QTest::newRow("root key twice: the last counts")
        << QByteArray("<plist><dict><key>orders</key><array><dict><key>id</key><string>1</string></dict></array>"
                      "<key>orders</key><array><dict><key>id</key><string>2</string></dict></array></dict></plist>")
        << QStringList{"id=2"} << false;
    QTest::newRow("ISO-8859-1") << QByteArray(
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist><dict><key>orders</key>"
        "<array><dict><key>name</key><string>Zo\xEB</string></dict></array></dict></plist>")
                                << QStringList{QStringLiteral("name=Zoë")} << false;
    {
        QStringEncoder toUtf16(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
        const QByteArray utf16 = toUtf16(QString::fromUtf8(
            "<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist><dict><key>orders</key><array><dict><key>name</key>"
            "<string>日本</string></dict></array></dict></plist>"));
        QTest::newRow("UTF-16") << utf16 << QStringList{QStringLiteral("name=日本")} << false;
    }
    QTest::newRow("comment after the end") << plist(one) + "<!-- saved -->\n" << QStringList{"id=1|name=Ann"} << false;
    QTest::newRow("edited by hand (file)") << dataFile(QStringLiteral("edited-orders.xml"))
                                           << QStringList{"id=7|title=Fit Quorvel & Sons shelves|description=First "
                                                          "line\nsecond line|status=<Complete> & paid|"
                                                          "contact=12|sent=YES"}
                                           << false;
}

void PropertyListTest::shouldReadEveryFormOfAValidDocument()
{
    QFETCH(QByteArray, document);
    QFETCH(QStringList, expected);
    QFETCH(bool, quick);

    const Outcome both = readWith(document, true);
    QVERIFY2(both.status.ok(), qPrintable(both.status.message()));
    QCOMPARE(both.records, expected);
    QCOMPARE(both.fullReader, !quick);

    const Outcome full = readWith(document, false);
    QVERIFY2(full.status.ok(), qPrintable(full.status.message()));
    QCOMPARE(full.records, expected);
}

void PropertyListTest::shouldRefuseInvalidDocumentsWithAReasonAndALine_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<qint64>("line");

    const QByteArray good = plist(record("\t\t\t<key>id</key>\n\t\t\t<string>1</string>\n"));
    QTest::newRow("empty file") << QByteArray() << "Premature end of document" << qint64(1);
    QTest::newRow("not XML") << QByteArray("id,name\n1,Ann\n") << "" << qint64(1);
    QTest::newRow("another XML document") << QByteArray("<html><body/></html>") << "not a property list" << qint64(1);
    QTest::newRow("root is an array") << QByteArray("<plist><array/></plist>") << "not a dictionary" << qint64(1);
    QTest::newRow("empty property list") << QByteArray("<plist/>") << "empty" << qint64(1);
    QTest::newRow("root key missing") << QByteArray(
        "<plist>\n<dict>\n<key>contacts</key>\n<array/>\n</dict>\n</plist>\n")
                                      << "no \"orders\"" << qint64(5);
    QTest::newRow("root key not an array")
        << QByteArray("<plist><dict><key>orders</key><string>x</string></dict></plist>") << "not an array" << qint64(1);
    QTest::newRow("array of strings") << QByteArray(
        "<plist><dict><key>orders</key><array><string>x</string></array></dict></plist>")
                                      << "expected <dict>" << qint64(1);
    QTest::newRow("end tag misspelt") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>1</strin>\n")) << "mismatch"
                                      << qint64(9);
    QTest::newRow("cut in the middle") << good.left(good.indexOf("</string>") + 3) << "Premature end" << qint64(9);
    QTest::newRow("undeclared entity") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>&nbsp;</string>\n"))
                                       << "unknown entity &nbsp;" << qint64(9);
    QTest::newRow("control character") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>a\x01</string>\n")) << ""
                                       << qint64(9);
    QTest::newRow("invalid UTF-8") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>a\xC3(</string>\n"))
                                   << "incorrectly encoded" << qint64(9);
    QTest::newRow("]]> in text") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>a]]>b</string>\n")) << "]]>"
                                 << qint64(9);
    QTest::newRow("invalid character reference")
        << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>&#1;</string>\n")) << "character reference" << qint64(9);
    QTest::newRow("key without value") << plist(record("\t\t\t<key>id</key>\n")) << "expected a value" << qint64(9);
    QTest::newRow("value without key") << plist(record("\t\t\t<string>1</string>\n")) << "expected <key>" << qint64(8);
    QTest::newRow("text between elements") << plist(record("\t\t\tid\n")) << "unexpected text" << qint64(8);
    QTest::newRow("unknown element") << plist(record("\t\t\t<key>id</key>\n\t\t\t<number>1</number>\n"))
                                     << "unknown element <number>" << qint64(9);
    QTest::newRow("element inside a string") << plist(record("\t\t\t<key>id</key>\n\t\t\t<string>a<b/>c</string>\n"))
                                             << "unexpected <b> inside text" << qint64(9);
    QTest::newRow("content after the end") << good + "<plist/>"
                                           << "Extra content" << qint64(14);
    QTest::newRow("second element in plist")
        << QByteArray("<plist><dict><key>orders</key><array/></dict><dict/></plist>") << "unexpected <dict>"
        << qint64(1);
}

void PropertyListTest::shouldRefuseInvalidDocumentsWithAReasonAndALine()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, reason);
    QFETCH(qint64, line);

    for (const bool quick : {true, false}) {
        const Outcome outcome = readWith(document, quick);
        QVERIFY(!outcome.status.ok());
        QVERIFY2(outcome.status.reason.contains(reason, Qt::CaseInsensitive), qPrintable(outcome.status.reason));
        QCOMPARE(outcome.status.line, line);
        QVERIFY(outcome.status.message().startsWith(QStringLiteral("line %1: ").arg(line)));
    }
}

void PropertyListTest::shouldRefuseEveryTruncatedDocument()
{
    const QByteArray document = sampleDocument(3);
    // Whatever follows "</plist>" is white space, so the document is whole
    // only from there on.
    const qsizetype whole = document.lastIndexOf("</plist>") + 8;
    for (qsizetype length = 0; length < whole; ++length) {
        const Outcome outcome = readWith(document.left(length), true);
        if (outcome.status.ok())
            QFAIL(qPrintable(QStringLiteral("a document cut at byte %1 was read").arg(length)));
    }
    QVERIFY(readWith(document.left(whole), true).status.ok());
}

void PropertyListTest::shouldAgreeWithTheFullReaderOnMutatedDocuments()
{
    // Random damage to a document: both readers must come to the same answer,
    // and neither may crash or hang.
    const QByteArray original = sampleDocument(4) + QByteArray();
    const char alphabet[] = "<>/&;#x!-[]?=\"' \t\r\n\x01\x80\xC3\xA9\xFF"
                            "abdeikgnrsty0123456789";
    QRandomGenerator random(20260115);
    int readable = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray document = original;
        const int changes = 1 + random.bounded(4);
        for (int c = 0; c < changes; ++c) {
            const qsizetype at = random.bounded(document.size());
            const char byte = alphabet[random.bounded(int(sizeof alphabet - 1))];
            switch (random.bounded(3)) {
            case 0:
                document[at] = byte;
                break;
            case 1:
                document.insert(at, byte);
                break;
            default:
                document.remove(at, 1 + random.bounded(8));
                break;
            }
        }
        const Outcome quick = readWith(document, true);
        const Outcome full = readWith(document, false);
        if (quick.status.ok() != full.status.ok() || quick.records != full.records)
            QFAIL(qPrintable(QStringLiteral("the readers disagree on:\n")
                             + QString::fromLatin1(document.toPercentEncoding("<>/ \n\t=\"!?"))));
        if (quick.status.ok())
            ++readable;
    }
    // Some of the damage leaves a readable document (a changed letter in a
    // value); the comparison above covers those too.
    QVERIFY(readable > 0);
}

void PropertyListTest::shouldReadLargeDocumentsInBlocks_data()
{
    QTest::addColumn<QByteArray>("tail");
    QTest::addColumn<bool>("readable");

    QTest::newRow("line feed") << QByteArray("\n") << true;
    QTest::newRow("comment") << QByteArray("<!-- saved -->\n") << true;
    QTest::newRow("second element") << QByteArray("<plist/>") << false;
    QTest::newRow("text") << QByteArray("junk") << false;
}

void PropertyListTest::shouldReadLargeDocumentsInBlocks()
{
    // The full reader takes the document a mebibyte at a time. A document
    // whose root ends exactly at the end of a block must still have what
    // follows it checked.
    QFETCH(QByteArray, tail);
    QFETCH(bool, readable);

    const qsizetype block = qsizetype(1) << 20;
    const QByteArray head
        = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n\t<key>orders</key>\n"
          "\t<array>\n\t\t<dict><key>id</key><string>1</string><key>name</key><string>";
    const QByteArray close = "</string></dict>\t</array>\n</dict>\n</plist>";
    // Fill the name so that the document proper ends at two blocks exactly.
    const QByteArray fill(2 * block - head.size() - close.size(), 'x');
    const QByteArray document = head + fill + close;
    QCOMPARE(document.size(), 2 * block);

    const Outcome quick = readWith(document + tail, true);
    const Outcome full = readWith(document + tail, false);
    QCOMPARE(full.status.ok(), readable);
    QCOMPARE(quick.status.ok(), readable);
    if (readable) {
        QCOMPARE(full.records, QStringList{QStringLiteral("id=1|name=") + QString::fromLatin1(fill)});
        QCOMPARE(quick.records, full.records);
    }
}

void PropertyListTest::shouldNumberUnknownKeysAfterTheKnownOnes()
{
    RecordReader reader(KnownKeys);
    QCOMPARE(reader.knownKeyCount(), 3);
    class KeyCollector : public RecordVisitor
    {
    public:
        void restart() override { keys.clear(); }
        void record(std::span<const Field> fields) override
        {
            for (const Field &field : fields)
                keys << field.key;
        }
        QList<int> keys;
    } keyCollector;
    const QByteArray document = plist(record("<key>status</key><string>a</string><key>extra</key><string>b</string>"
                                             "<key>id</key><string>c</string><key>extra</key><string>d</string>"));
    QVERIFY(reader.read(document, QStringLiteral("orders"), keyCollector).ok());
    QCOMPARE(keyCollector.keys, (QList<int>{2, 3, 0, 3}));
    QCOMPARE(reader.keyName(3), QStringLiteral("extra"));
    QCOMPARE(reader.keyCount(), 4);
    QVERIFY(reader.keyName(4).isNull());
}

void PropertyListTest::shouldShareRepeatedShortValues()
{
    QByteArray body;
    for (int i = 0; i < 600; ++i)
        body += record("<key>id</key><string>" + QByteArray::number(i)
                       + "</string><key>status</key><string>Complete</string>"
                         "<key>name</key><string>Zo&#235;</string>");
    const QByteArray document = plist(body);
    for (const bool quick : {true, false}) {
        RecordReader reader(KnownKeys);
        reader.setQuickScanEnabled(quick);
        Collector collector(reader);
        QVERIFY(reader.read(document, QStringLiteral("orders"), collector).ok());
        QCOMPARE(collector.values.size(), 1800);
        const QString &firstStatus = collector.values.at(1);
        const QString &lastStatus = collector.values.at(1798);
        QCOMPARE(lastStatus, QStringLiteral("Complete"));
        QCOMPARE(lastStatus.constData(), firstStatus.constData());
        QCOMPARE(collector.values.at(1799), QStringLiteral("Zoë"));
        QCOMPARE(collector.values.at(1799).constData(), collector.values.at(2).constData());
        QVERIFY(collector.values.at(0).constData() != collector.values.at(3).constData());
    }
    RecordReader unshared(KnownKeys);
    unshared.setSharingEnabled(false);
    Collector collector(unshared);
    QVERIFY(unshared.read(document, QStringLiteral("orders"), collector).ok());
    QVERIFY(collector.values.at(1).constData() != collector.values.at(4).constData());
    QCOMPARE(collector.values.at(4), QStringLiteral("Complete"));
}

void PropertyListTest::shouldReadAFileAndExplainAMissingOne()
{
    RecordReader reader(KnownKeys);
    Collector collector(reader);
    const ReadStatus status = reader.readFile(QStringLiteral(QUORVEL_TEST_DATA "/plist/plistlib-contacts.xml"),
                                              QStringLiteral("contacts"), collector);
    QVERIFY2(status.ok(), qPrintable(status.message()));
    QCOMPARE(collector.records,
             (QStringList{
                 QStringLiteral("id=1|name=Zoë Ångström|comments=Calls <before> noon & after \"tea\"|kind=Individual"),
                 QStringLiteral("name=日本 Trading 😀|id=2|company=0|kind=Company|vip=YES|rating=4.5|"
                                "since=2020-05-17T08:30:00Z|email="),
                 QStringLiteral("id=3|decreaseQty=NO")}));

    QTemporaryDir dir;
    const ReadStatus missing
        = reader.readFile(dir.filePath(QStringLiteral("nothing.xml")), QStringLiteral("contacts"), collector);
    QVERIFY(!missing.ok());
    QCOMPARE(missing.line, 0);
    QVERIFY(!missing.message().isEmpty());
}

void PropertyListTest::shouldWriteThePlatformLayout()
{
    RecordWriter writer(QStringLiteral("orders"));
    const QString id = QStringLiteral("1");
    const QString title = QStringLiteral("Tea & <cake>");
    const QString empty = QStringLiteral("");
    writer.beginRecord();
    writer.addField(u"title", title);
    writer.addField(u"includeBOM", empty);
    writer.addField(u"id", id);
    writer.endRecord();
    writer.beginRecord();
    writer.endRecord();
    const QByteArray expected
        = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
          "<plist version=\"1.0\">\n"
          "<dict>\n"
          "\t<key>orders</key>\n"
          "\t<array>\n"
          "\t\t<dict>\n"
          "\t\t\t<key>id</key>\n"
          "\t\t\t<string>1</string>\n"
          "\t\t\t<key>includeBOM</key>\n"
          "\t\t\t<string></string>\n"
          "\t\t\t<key>title</key>\n"
          "\t\t\t<string>Tea &amp; &lt;cake&gt;</string>\n"
          "\t\t</dict>\n"
          "\t\t<dict/>\n"
          "\t</array>\n"
          "</dict>\n"
          "</plist>\n";
    QCOMPARE(writer.finish(), expected);
}

void PropertyListTest::shouldWriteAnEmptyArrayAsEmptyElement()
{
    RecordWriter writer(QStringLiteral("bills"));
    const QByteArray bytes = writer.finish();
    QVERIFY(bytes.endsWith("<dict>\n\t<key>bills</key>\n\t<array/>\n</dict>\n</plist>\n"));
    const Outcome outcome = readWith(bytes, true, QStringLiteral("bills"));
    QVERIFY(outcome.status.ok());
    QVERIFY(outcome.records.isEmpty());
}

void PropertyListTest::shouldRoundTripAnyText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("readBack");

    const auto same = [](const char *name, const QString &text) { QTest::newRow(name) << text << text; };
    same("markup characters", QStringLiteral("a < b & c > d"));
    same("quotes", QStringLiteral("\"double\" and 'single'"));
    same("entity look-alike", QStringLiteral("&amp; &#38; &lt;"));
    same("CDATA end", QStringLiteral("]]> and ]]"));
    same("accents", QStringLiteral("Zoë Ångström, crème brûlée"));
    same("Japanese", QStringLiteral("日本語のテキスト"));
    same("emoji", QStringLiteral("ok 😀👍🏽"));
    same("tabs and line feeds", QStringLiteral("\tone\ntwo\n"));
    same("carriage returns", QStringLiteral("one\rtwo\r\nthree"));
    same("leading and trailing blanks", QStringLiteral("  padded  "));
    same("empty", QStringLiteral(""));
    QTest::newRow("control characters become U+FFFD") << QStringLiteral("a\x01"
                                                                        "b\x1F"
                                                                        "c")
                                                      << QStringLiteral("a\uFFFDb\uFFFDc");
    QTest::newRow("unpaired surrogate becomes U+FFFD") << QString(QChar(0xD800)) + u'x' << QStringLiteral("\uFFFDx");
}

void PropertyListTest::shouldRoundTripAnyText()
{
    QFETCH(QString, text);
    QFETCH(QString, readBack);

    RecordWriter writer(QStringLiteral("orders"));
    writer.beginRecord();
    writer.addField(u"name", text);
    writer.endRecord();
    const QByteArray bytes = writer.finish();
    for (const bool quick : {true, false}) {
        const Outcome outcome = readWith(bytes, quick);
        QVERIFY2(outcome.status.ok(), qPrintable(outcome.status.message()));
        QCOMPARE(outcome.records, QStringList{QStringLiteral("name=") + readBack});
    }
}

void PropertyListTest::shouldReplaceAFileWholeOrNotAtAll()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("orders.xml"));
    QString why;
    QVERIFY(writeFileAtomically(path, QByteArray("first"), &why));
    QVERIFY(writeFileAtomically(path, QByteArray("second version"), &why));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("second version"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("orders.xml")});

    const QString nowhere = dir.filePath(QStringLiteral("missing/orders.xml"));
    QVERIFY(!writeFileAtomically(nowhere, QByteArray("x"), &why));
    QVERIFY(!why.isEmpty());
    QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("missing"))));
}

void PropertyListTest::shouldKeepTheOldFileOnAFullDisk()
{
    // A real full file system: a 64 KiB one mounted for the test, where the
    // machine allows it.
    QTemporaryDir dir;
    const QString disk = dir.filePath(QStringLiteral("small"));
    QDir().mkpath(disk);
    QProcess mount;
    mount.start(QStringLiteral("mount"), {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                                          QStringLiteral("size=64k"), QStringLiteral("tmpfs"), disk});
    if (!mount.waitForFinished(10000) || mount.exitStatus() != QProcess::NormalExit || mount.exitCode() != 0)
        QSKIP("a small file system cannot be mounted here (the test needs to run as root)");
    const auto unmount = qScopeGuard([&disk] { QProcess::execute(QStringLiteral("umount"), {disk}); });
    const QString path = disk + QStringLiteral("/orders.xml");
    QString why;
    const QByteArray old(20 * 1024, 'o');
    QVERIFY2(writeFileAtomically(path, old, &why), qPrintable(why));
    // Larger than the room left beside the old file.
    QVERIFY(!writeFileAtomically(path, QByteArray(60 * 1024, 'n'), &why));
    QVERIFY2(why.contains(QStringLiteral("No space left on device")), qPrintable(why));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), old);
    // Nothing half-written is left behind to fill the disk further.
    QCOMPARE(QDir(disk).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("orders.xml")});
    // Room made, the next write goes through.
    QVERIFY2(writeFileAtomically(path, QByteArray(30 * 1024, 'n'), &why), qPrintable(why));
}

void PropertyListTest::shouldReadAndWriteGeneralValues()
{
    QVariantMap definition;
    definition.insert(QStringLiteral("title"), QStringLiteral("Sales & <costs>"));
    definition.insert(QStringLiteral("fields"), QStringList{QStringLiteral("date"), QStringLiteral("value")});
    definition.insert(QStringLiteral("rows"),
                      QVariantList{QVariantList{QStringLiteral("a"), QStringLiteral("b")}, QVariantList{}});
    definition.insert(QStringLiteral("count"), 3);
    definition.insert(QStringLiteral("ratio"), 0.25);
    definition.insert(QStringLiteral("on"), true);
    definition.insert(QStringLiteral("nothing"), QVariantMap());
    definition.insert(QStringLiteral("when"), QDateTime(QDate(2024, 2, 29), QTime(12, 30), Qt::UTC));
    definition.insert(QStringLiteral("bytes"), QByteArray("\x00\x01\xFF", 3));
    QString why;
    const QByteArray bytes = writeValue(definition, &why);
    QVERIFY2(!bytes.isEmpty(), qPrintable(why));
    QVERIFY(bytes.contains("\t<key>count</key>\n\t<integer>3</integer>\n"));

    ReadStatus status;
    const QVariant back = readValue(bytes, &status);
    QVERIFY2(status.ok(), qPrintable(status.message()));
    const QVariantMap map = back.toMap();
    QCOMPARE(map.value(QStringLiteral("title")).toString(), QStringLiteral("Sales & <costs>"));
    QCOMPARE(map.value(QStringLiteral("fields")).toStringList(),
             (QStringList{QStringLiteral("date"), QStringLiteral("value")}));
    const QVariantList rows = map.value(QStringLiteral("rows")).toList();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(0).toStringList(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QVERIFY(rows.at(1).toList().isEmpty());
    QCOMPARE(map.value(QStringLiteral("count")).toLongLong(), 3);
    QCOMPARE(map.value(QStringLiteral("ratio")).toDouble(), 0.25);
    QCOMPARE(map.value(QStringLiteral("on")).toBool(), true);
    QCOMPARE(map.value(QStringLiteral("nothing")).toMap(), QVariantMap());
    QCOMPARE(map.value(QStringLiteral("when")).toDateTime(), QDateTime(QDate(2024, 2, 29), QTime(12, 30), Qt::UTC));
    QCOMPARE(map.value(QStringLiteral("bytes")).toByteArray(), QByteArray("\x00\x01\xFF", 3));

    // A plain string at the root, as some tools write it.
    QCOMPARE(readValue("<plist><string>x</string></plist>").toString(), QStringLiteral("x"));

    QVERIFY(writeValue(QVariant::fromValue(QPoint(1, 2)), &why).isEmpty());
    QVERIFY(why.contains(QStringLiteral("cannot be written")));
}

void PropertyListTest::shouldRefuseBadGeneralValues_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("reason");

    QTest::newRow("too deep") << QByteArray("<plist>") + QByteArray("<array>").repeated(300)
            + QByteArray("</array>").repeated(300) + "</plist>"
                              << "nested too deeply";
    QTest::newRow("bad integer") << QByteArray("<plist><integer>12x</integer></plist>") << "not an integer";
    QTest::newRow("bad date") << QByteArray("<plist><date>yesterday</date></plist>") << "not a date";
    QTest::newRow("bad data") << QByteArray("<plist><data>@@@</data></plist>") << "base64";
    QTest::newRow("key without value") << QByteArray("<plist><dict><key>a</key></dict></plist>") << "has no value";
    QTest::newRow("truncated") << QByteArray("<plist><dict><key>a</key><string>b") << "Premature end";
    QTest::newRow("not a property list") << QByteArray("<report/>") << "not a property list";
}

void PropertyListTest::shouldRefuseBadGeneralValues()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, reason);
    ReadStatus status;
    const QVariant value = readValue(document, &status);
    QVERIFY(!value.isValid());
    QVERIFY2(status.reason.contains(reason), qPrintable(status.reason));
}

QUORVEL_TEST(PropertyListTest)
#include "PropertyListTest.moc"
