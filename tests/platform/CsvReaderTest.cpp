// Reading CSV files as people have them: quoting, line ends, marks and
// encodings, the separator a spreadsheet chose, and what is refused.
#include "TestMain.h"

#include "platform/Csv.h"

#include <QBuffer>
#include <QTest>

namespace {

using Records = QList<QStringList>;

struct Read
{
    Records records;
    QString problem;
    QString encoding;
};

Read readAll(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    csv::Reader reader(buffer);
    Read read;
    QStringList values;
    while (reader.next(values))
        read.records << values;
    read.problem = reader.problem();
    read.encoding = reader.encoding();
    return read;
}

}  // namespace

class CsvReaderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldReadRecords_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Records>("records");
        QTest::newRow("plain") << QByteArray("a,b\n1,2\n") << Records{{"a", "b"}, {"1", "2"}};
        QTest::newRow("no final line end") << QByteArray("a,b\n1,2") << Records{{"a", "b"}, {"1", "2"}};
        QTest::newRow("CR LF") << QByteArray("a,b\r\n1,2\r\n") << Records{{"a", "b"}, {"1", "2"}};
        QTest::newRow("CR alone") << QByteArray("a,b\r1,2\r") << Records{{"a", "b"}, {"1", "2"}};
        QTest::newRow("quoted comma") << QByteArray("\"Smith, Jane\",x\n") << Records{{"Smith, Jane", "x"}};
        QTest::newRow("doubled quotes") << QByteArray("\"say \"\"hi\"\"\",x\n") << Records{{"say \"hi\"", "x"}};
        QTest::newRow("line break in quotes") << QByteArray("\"1 High St\r\nUnit 2\",x\r\nnext,y\r\n")
                                              << Records{{"1 High St\r\nUnit 2", "x"}, {"next", "y"}};
        QTest::newRow("empty values") << QByteArray(",,\n") << Records{{"", "", ""}};
        QTest::newRow("empty line") << QByteArray("a\n\nb\n") << Records{{"a"}, {""}, {"b"}};
        QTest::newRow("quote inside a value") << QByteArray("5\" pipe,x\n") << Records{{"5\" pipe", "x"}};
        QTest::newRow("byte-order mark") << QByteArray("\xef\xbb\xbfName,Phone\n") << Records{{"Name", "Phone"}};
        QTest::newRow("semicolons") << QByteArray("Name;Ort\nAnn;K\xc3\xb6ln\n")
                                    << Records{{"Name", "Ort"}, {"Ann", QString::fromUtf8("K\xc3\xb6ln")}};
        QTest::newRow("tabs") << QByteArray("Name\tCity\nAnn\tAshford, Kent\n")
                              << Records{{"Name", "City"}, {"Ann", "Ashford, Kent"}};
        QTest::newRow("Latin-1") << QByteArray("Name\nM\xfcller\n")
                                 << Records{{"Name"}, {QString::fromUtf8("M\xc3\xbcller")}};
        QTest::newRow("UTF-16 with its mark")
            << QByteArray("\xff\xfeN\0a\0m\0e\0\n\0A\0n\0n\0", 18) << Records{{"Name"}, {"Ann"}};
        QTest::newRow("empty file") << QByteArray() << Records{};
    }
    void shouldReadRecords()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Records, records);
        const Read read = readAll(bytes);
        QCOMPARE(read.records, records);
        QCOMPARE(read.problem, QString());
    }

    void shouldTellTheEncodingItRead()
    {
        QCOMPARE(readAll("a\nb\n").encoding, QStringLiteral("UTF-8"));
        QCOMPARE(readAll("M\xfcller\n").encoding, QStringLiteral("Latin-1"));
    }

    void shouldRefuseWhatIsNoTable_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        QTest::addColumn<int>("readFirst");
        QTest::newRow("binary") << QByteArray("PK\x03\x04\0\0binary", 12) << QStringLiteral("not a text file") << 0;
        QTest::newRow("quote never closed")
            << QByteArray("a,b\n\"open,x\nmore\n") << QStringLiteral("begins on line 2 is never closed") << 1;
        QTest::newRow("one endless line")
            << QByteArray(2 * csv::Reader::maxRecordLength, 'x') << QStringLiteral("longer than") << 0;
        QTest::newRow("too many values") << QByteArray(3 * csv::Reader::maxFields, ',') << QStringLiteral("more than")
                                         << 0;
    }
    void shouldRefuseWhatIsNoTable()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, problem);
        QFETCH(int, readFirst);
        const Read read = readAll(bytes);
        QVERIFY2(read.problem.contains(problem), qPrintable(read.problem));
        QCOMPARE(read.records.size(), readFirst);
    }
};

QUORVEL_TEST(CsvReaderTest)
#include "CsvReaderTest.moc"
