#include "TestMain.h"

#include "RecordFieldTable.h"
#include "accounts/Bill.h"

#include <QTest>

namespace {

const testlib::RecordFieldTable<Bill> billFields{{
    {"number", &Bill::getNumber, &Bill::setNumber},
    {"name", &Bill::getName, &Bill::setName},
    {"datePaid", &Bill::getDatePaid, &Bill::setDatePaid},
    {"amount", &Bill::getAmount, &Bill::setAmount},
    {"details", &Bill::getDetails, &Bill::setDetails},
    {"category", &Bill::getCategory, &Bill::setCategory},
    {"order", &Bill::getOrder, &Bill::setOrder},
}};

void fillBill(Bill &bill)
{
    billFields.fill(bill, QStringLiteral("word"));
    bill.setID(12);
}

}  // namespace

class BillRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartEmptyAndVisible_data() { billFields.addKeyRows(); }
    void shouldStartEmptyAndVisible()
    {
        QFETCH(QString, key);
        const Bill bill;
        QVERIFY(bill.getVisible());
        QCOMPARE(bill.getID(), 0);
        const QString value = (bill.*billFields.textField(key).get)();
        QVERIFY(value.isEmpty());
        // Only the in-memory order reference starts absent.
        QCOMPARE(value.isNull(), key == QLatin1String("order"));
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("amount") << "amount"
                                << "amountword";
        QTest::newRow("category") << "category"
                                  << "categoryword";
        QTest::newRow("datePaid") << "datePaid"
                                  << "datePaidword";
        QTest::newRow("datepaid") << "datepaid"
                                  << "datePaidword";
        QTest::newRow("details answers the date paid") << "details"
                                                       << "datePaidword";
        QTest::newRow("number") << "number"
                                << "numberword";
        QTest::newRow("name") << "name"
                              << "nameword";
        QTest::newRow("surname answers the payee") << "surname"
                                                   << "nameword";
        QTest::newRow("order not answered") << "order"
                                            << "";
        QTest::newRow("id not answered") << "id"
                                         << "";
        QTest::newRow("DatePaid wrong case") << "DatePaid"
                                             << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Bill bill;
        fillBill(bill);
        testlib::expectAnswer(bill, name, expected);
    }

    void shouldSetExactlyTheNamedField_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("field");  // the field that changes; "" for none
        QTest::newRow("amount") << "amount"
                                << "amount";
        QTest::newRow("category") << "category"
                                  << "category";
        QTest::newRow("datePaid") << "datePaid"
                                  << "datePaid";
        QTest::newRow("datepaid") << "datepaid"
                                  << "datePaid";
        QTest::newRow("details sets the details") << "details"
                                                  << "details";
        QTest::newRow("number") << "number"
                                << "number";
        QTest::newRow("name") << "name"
                              << "name";
        QTest::newRow("surname ignored") << "surname"
                                         << "";
        QTest::newRow("order ignored") << "order"
                                       << "";
        QTest::newRow("id ignored") << "id"
                                    << "";
        QTest::newRow("Amount ignored") << "Amount"
                                        << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, field);
        Bill bill;
        fillBill(bill);
        const QString value = QStringLiteral("44");
        billFields.expectSetByNameChangesOnly(bill, name, value, field, value);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data() { billFields.addKeyRows(); }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        billFields.expectKeepsTheOldTextWhenGivenNothing(key);
    }

    void shouldSortOnlyDatepaidAsDates_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<bool>("isDate");
        QTest::newRow("datepaid") << "datepaid" << true;
        QTest::newRow("datePaid") << "datePaid" << false;
        QTest::newRow("date") << "date" << false;
        QTest::newRow("amount") << "amount" << false;
    }
    void shouldSortOnlyDatepaidAsDates()
    {
        QFETCH(QString, column);
        QFETCH(bool, isDate);
        QCOMPARE(Bill::isDate(column), isDate);
    }

    void shouldSearchCategoryNameDetailsAndNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("category") << "station" << true;
        QTest::newRow("name") << "ACME" << true;
        QTest::newRow("details") << "toner" << true;
        QTest::newRow("number") << "inv-55" << true;
        QTest::newRow("amount not searched") << "1,234" << false;
        QTest::newRow("date not searched") << "03/08" << false;
        QTest::newRow("order not searched") << "job9" << false;
        QTest::newRow("nothing typed") << "" << false;
    }
    void shouldSearchCategoryNameDetailsAndNumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        Bill bill;
        bill.setCategory(QStringLiteral("Stationery"));
        bill.setName(QStringLiteral("Acme Supplies"));
        bill.setDetails(QStringLiteral("Toner and paper"));
        bill.setNumber(QStringLiteral("INV-5567"));
        bill.setAmount(QStringLiteral("1,234.00"));
        bill.setDatePaid(QStringLiteral("01/03/08"));
        bill.setOrder(QStringLiteral("job9"));
        QCOMPARE(bill.contains(text), found);
    }
};

QUORVEL_TEST(BillRecordTest)
#include "BillRecordTest.moc"
