// The conditions of a report: reading a definition's clauses, and testing a
// record against them, with a clause made by hand and the same clause read
// from a definition giving the same answer.
#include "TestMain.h"

#include "reports/ReportCriteria.h"
#include "reports/ReportItem.h"

#include <QTest>

#include <memory>

using namespace reports;

namespace {

const QString dayFirst = QStringLiteral("%d/%m/%y");
const QString monthFirst = QStringLiteral("%m/%d/%y");

std::unique_ptr<ReportItem> rowOf(const QStringList &values)
{
    auto row = std::make_unique<ReportItem>();
    for (const QString &value : values)
        row->addField(value);
    return row;
}

QVariant clauseOf(const QString &field, const QString &op, const QString &value)
{
    return QVariant(QStringList{field, op, value});
}

}  // namespace

class ReportCriteriaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadTheClausesOfADefinition_data()
    {
        QTest::addColumn<QVariant>("where");
        QTest::addColumn<QStringList>("clauses");
        QTest::addColumn<QStringList>("problems");
        QTest::newRow("no conditions") << QVariant() << QStringList() << QStringList();
        QTest::newRow("an empty list") << QVariant(QVariantList()) << QStringList() << QStringList();
        QTest::newRow("two clauses") << QVariant(
            QVariantList{clauseOf("balance", ">", "0"), clauseOf("contact:id", "=", "currentcontact")})
                                     << QStringList{"balance > 0", "contact:id = currentcontact"} << QStringList();
        QTest::newRow("a number as the value") << QVariant(QVariantList{QVariantList{"qty", "<", qlonglong(5)}})
                                               << QStringList{"qty < 5"} << QStringList();
        QTest::newRow("a text instead of a list") << QVariant(QStringLiteral("balance > 0")) << QStringList()
                                                  << QStringList{"\"where\" is not a list of clauses; left out"};
        QTest::newRow("a clause of two texts")
            << QVariant(QVariantList{QVariant(QStringList{"balance", ">"}), clauseOf("qty", "=", "1")})
            << QStringList{"qty = 1"}
            << QStringList{"clause 1 of \"where\" is not three texts (field, operator, value); left out"};
        QTest::newRow("a clause with a list inside")
            << QVariant(QVariantList{clauseOf("qty", "=", "1"), QVariantList{"qty", "=", QVariantList{"1"}}})
            << QStringList{"qty = 1"}
            << QStringList{"clause 2 of \"where\" is not three texts (field, operator, value); left out"};
        QTest::newRow("a clause that is a text")
            << QVariant(QVariantList{QStringLiteral("qty")}) << QStringList()
            << QStringList{"clause 1 of \"where\" is not three texts (field, operator, value); left out"};
        QTest::newRow("an unknown operator is kept")
            << QVariant(QVariantList{clauseOf("qty", ">=", "1")}) << QStringList{"qty >= 1"}
            << QStringList{"clause 1 of \"where\" has the unknown operator \">=\"; it always holds"};
    }
    void shouldReadTheClausesOfADefinition()
    {
        QFETCH(QVariant, where);
        QFETCH(QStringList, clauses);
        QFETCH(QStringList, problems);
        QStringList said;
        const QList<Clause> read = prepareClauses(where, QStringLiteral("where"), dayFirst, &said);
        QStringList texts;
        for (const Clause &clause : read) {
            texts << clause.field + u' ' + clause.op + u' ' + clause.value;
            QVERIFY(clause.prepared);
            QCOMPARE(clause.currentContact, clause.value == QStringLiteral("currentcontact"));
        }
        QCOMPARE(texts, clauses);
        QCOMPARE(said, problems);
    }

    void shouldTestARecordByItsOwnValue_data()
    {
        QTest::addColumn<QString>("found");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("holds");
        QTest::newRow("same day is on or after") << "01/03/08"
                                                 << ">"
                                                 << "01/03/08" << dayFirst << true;
        QTest::newRow("same day is not before") << "08/03/08"
                                                << "<"
                                                << "08/03/08" << dayFirst << false;
        QTest::newRow("a day later") << "02/03/08"
                                     << ">"
                                     << "01/03/08" << dayFirst << true;
        QTest::newRow("a day earlier") << "28/02/08"
                                       << ">"
                                       << "01/03/08" << dayFirst << false;
        QTest::newRow("read day first") << "02/01/08"
                                        << "<"
                                        << "01/02/08" << dayFirst << true;
        QTest::newRow("read month first") << "02/01/08"
                                          << "<"
                                          << "01/02/08" << monthFirst << false;
        QTest::newRow("across a year") << "31/12/07"
                                       << "<"
                                       << "01/01/08" << dayFirst << true;
        QTest::newRow("four-digit year") << "01/03/2008"
                                         << ">"
                                         << "01/03/08" << dayFirst << true;
        QTest::newRow("an unreadable date is later") << "99/99/99"
                                                     << ">"
                                                     << "01/01/08" << dayFirst << true;
        QTest::newRow("an unreadable date is not before") << "99/99/99"
                                                          << "<"
                                                          << "01/01/08" << dayFirst << false;
        QTest::newRow("a date and a value that is no date") << "01/03/08"
                                                            << "<"
                                                            << "soon" << dayFirst << false;
        QTest::newRow("dates equal only as text") << "01/03/08"
                                                  << "="
                                                  << "1/3/08" << dayFirst << false;
        QTest::newRow("a date differs from nothing") << "03/04/08"
                                                     << "!"
                                                     << "" << dayFirst << true;
        QTest::newRow("one-digit day is a number") << "1/3/08"
                                                   << "="
                                                   << "1" << dayFirst << true;
        QTest::newRow("empty text equals nothing") << ""
                                                   << "="
                                                   << "" << dayFirst << true;
        QTest::newRow("empty text is not unlike nothing") << ""
                                                          << "!"
                                                          << "" << dayFirst << false;
        QTest::newRow("text is above anything") << "abc"
                                                << ">"
                                                << "100" << dayFirst << true;
        QTest::newRow("text is below anything") << "abc"
                                                << "<"
                                                << "100" << dayFirst << true;
        QTest::newRow("text compared with letter case") << "Customer"
                                                        << "="
                                                        << "customer" << dayFirst << false;
        QTest::newRow("100 is not above 100") << "100"
                                              << ">"
                                              << "100" << dayFirst << false;
        QTest::newRow("100.5 is above 100") << "100.5"
                                            << ">"
                                            << "100" << dayFirst << true;
        QTest::newRow("-3 is below 2") << "-3"
                                       << "<"
                                       << "2" << dayFirst << true;
        QTest::newRow("numbers equal as numbers") << "12"
                                                  << "="
                                                  << "12.00" << dayFirst << true;
        QTest::newRow("numbers unequal as numbers") << "12"
                                                    << "!"
                                                    << "12.00" << dayFirst << false;
        QTest::newRow("a number and a word") << "0"
                                             << "="
                                             << "none" << dayFirst << true;
        QTest::newRow("leading number of a text") << "12 boxes"
                                                  << ">"
                                                  << "11" << dayFirst << true;
        QTest::newRow("compared in single precision") << "0.1"
                                                      << "="
                                                      << "0.100000001" << dayFirst << true;
        QTest::newRow("an unknown operator holds") << "5"
                                                   << "~"
                                                   << "9" << dayFirst << true;
    }
    void shouldTestARecordByItsOwnValue()
    {
        QFETCH(QString, found);
        QFETCH(QString, op);
        QFETCH(QString, value);
        QFETCH(QString, format);
        QFETCH(bool, holds);
        const auto record = rowOf({found});
        Clause byHand;
        byHand.field = QStringLiteral("field1");
        byHand.op = op;
        byHand.value = value;
        QCOMPARE(CriteriaTest(format, QStringLiteral("-1")).meets(*record, {byHand}), holds);
        const QList<Clause> read = prepareClauses(QVariantList{clauseOf(QStringLiteral("field1"), op, value)},
                                                  QStringLiteral("where"), format);
        QCOMPARE(CriteriaTest(format, QStringLiteral("-1")).meets(*record, read), holds);
        // Dates are read once per test; a second record with the same texts gets the same answer.
        CriteriaTest twice(format, QStringLiteral("-1"));
        QCOMPARE(twice.meets(*record, read), holds);
        QCOMPARE(twice.meets(*record, read), holds);
    }

    void shouldStandTheOpenContactForCurrentContact_data()
    {
        QTest::addColumn<QString>("found");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("contact");
        QTest::addColumn<bool>("holds");
        QTest::newRow("the open contact's record") << "7"
                                                   << "="
                                                   << "7" << true;
        QTest::newRow("another contact's record") << "8"
                                                  << "="
                                                  << "7" << false;
        QTest::newRow("none open matches no record") << "7"
                                                     << "="
                                                     << "-1" << false;
        QTest::newRow("none open matches a record of none") << "-1"
                                                            << "="
                                                            << "-1" << true;
        QTest::newRow("not the open contact") << "8"
                                              << "!"
                                              << "7" << true;
        QTest::newRow("a record of no contact") << ""
                                                << "="
                                                << "7" << false;
    }
    void shouldStandTheOpenContactForCurrentContact()
    {
        QFETCH(QString, found);
        QFETCH(QString, op);
        QFETCH(QString, contact);
        QFETCH(bool, holds);
        const auto record = rowOf({found});
        Clause byHand;
        byHand.field = QStringLiteral("field1");
        byHand.op = op;
        byHand.value = QStringLiteral("currentcontact");
        QCOMPARE(CriteriaTest(dayFirst, contact).meets(*record, {byHand}), holds);
        const QList<Clause> read
            = prepareClauses(QVariantList{clauseOf("field1", op, "currentcontact")}, QStringLiteral("where"), dayFirst);
        QCOMPARE(CriteriaTest(dayFirst, contact).meets(*record, read), holds);
    }

    void shouldNeedEveryClause_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<bool>("holds");
        QTest::newRow("both hold") << QStringList{"Customer", "120.00"} << true;
        QTest::newRow("the first fails") << QStringList{"Supplier", "120.00"} << false;
        QTest::newRow("the second fails") << QStringList{"Customer", "0.00"} << false;
        QTest::newRow("a missing value is empty text") << QStringList{"Customer"} << true;
    }
    void shouldNeedEveryClause()
    {
        QFETCH(QStringList, values);
        QFETCH(bool, holds);
        const QList<Clause> where
            = prepareClauses(QVariantList{clauseOf("field1", "=", "Customer"), clauseOf("field2", ">", "0")},
                             QStringLiteral("where"), dayFirst);
        QCOMPARE(where.size(), 2);
        QCOMPARE(CriteriaTest(dayFirst, QStringLiteral("-1")).meets(*rowOf(values), where), holds);
        QVERIFY(CriteriaTest(dayFirst, QStringLiteral("-1")).meets(*rowOf(values), {}));
    }

    void shouldKnowADateByItsShape_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("date");
        QTest::newRow("two-digit year") << "01/03/08" << true;
        QTest::newRow("four-digit year") << "01/03/2008" << true;
        QTest::newRow("one-digit day") << "1/3/08" << false;
        QTest::newRow("too short") << "01/03/8" << false;
        QTest::newRow("dashes") << "01-03-08" << false;
        QTest::newRow("letters") << "ab/cd/ef" << false;
        QTest::newRow("a time after it") << "01/03/08 10:00" << true;
        QTest::newRow("empty") << "" << false;
    }
    void shouldKnowADateByItsShape()
    {
        QFETCH(QString, text);
        QFETCH(bool, date);
        QCOMPARE(isDate(text), date);
    }
};

QUORVEL_TEST(ReportCriteriaTest)
#include "ReportCriteriaTest.moc"
