// The messages' blanks: every kind of conversion the program's texts use
// takes the next argument, and what is not a conversion stays.
#include "TestMain.h"

#include "platform/Formats.h"

#include <QTest>

class FormatsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldFillEachConversionInTurn_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
        QTest::newRow("objects") << "%@ '%@' has been duplicated" << QStringList{"Job", "Gate"}
                                 << "Job 'Gate' has been duplicated";
        QTest::newRow("numbers and a percent sign") << "Change to %.2f%%" << QStringList{"17.50"} << "Change to 17.50%";
        QTest::newRow("integers") << "This leaves %i of these items" << QStringList{"3"}
                                  << "This leaves 3 of these items";
        QTest::newRow("too few arguments") << "%@ and %@" << QStringList{"one"} << "one and %@";
        QTest::newRow("not a conversion") << "100% sure, %x" << QStringList{"unused"} << "100% sure, %x";
        QTest::newRow("a percent sign at the end") << "Keep %@%" << QStringList{"15.00"} << "Keep 15.00%";
        QTest::newRow("an argument holding a conversion") << "%@ %@" << QStringList{"%@", "b"} << "%@ b";
    }
    void shouldFillEachConversionInTurn()
    {
        QFETCH(QString, format);
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        QCOMPARE(platform::withArguments(format, arguments), expected);
    }
};

QUORVEL_TEST(FormatsTest)
#include "FormatsTest.moc"
