#include "TestMain.h"

#include "accounts/Bill.h"

#include <QMap>
#include <QTest>

namespace {

struct TextField {
    const char *key;
    const QString &(Bill::*get)() const;
    void (Bill::*set)(const QString &);
};

const TextField textFields[] = {
    {"number", &Bill::getNumber, &Bill::setNumber},
    {"name", &Bill::getName, &Bill::setName},
    {"datePaid", &Bill::getDatePaid, &Bill::setDatePaid},
    {"amount", &Bill::getAmount, &Bill::setAmount},
    {"details", &Bill::getDetails, &Bill::setDetails},
    {"category", &Bill::getCategory, &Bill::setCategory},
    {"order", &Bill::getOrder, &Bill::setOrder},
};

const TextField &textField(const QString &key)
{
    for (const TextField &field : textFields) {
        if (key == QLatin1String(field.key))
            return field;
    }
    qFatal("no text field %s", qPrintable(key));
}

QMap<QString, QString> snapshot(const Bill &bill)
{
    QMap<QString, QString> all;
    for (const TextField &field : textFields)
        all.insert(QLatin1String(field.key), (bill.*field.get)());
    all.insert(QStringLiteral("id"), QString::number(bill.getID()));
    return all;
}

void fillBill(Bill &bill)
{
    for (const TextField &field : textFields)
        (bill.*field.set)(QLatin1String(field.key) + QStringLiteral("word"));
    bill.setID(12);
}

}  // namespace

class BillRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartEmptyAndVisible_data()
    {
        QTest::addColumn<QString>("key");
        for (const TextField &field : textFields)
            QTest::newRow(field.key) << QString::fromLatin1(field.key);
    }
    void shouldStartEmptyAndVisible()
    {
        QFETCH(QString, key);
        const Bill bill;
        QVERIFY(bill.getVisible());
        QCOMPARE(bill.getID(), 0);
        const QString value = (bill.*textField(key).get)();
        QVERIFY(value.isEmpty());
        // Only the in-memory order reference starts absent.
        QCOMPARE(value.isNull(), key == QLatin1String("order"));
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("amount") << "amount" << "amountword";
        QTest::newRow("category") << "category" << "categoryword";
        QTest::newRow("datePaid") << "datePaid" << "datePaidword";
        QTest::newRow("datepaid") << "datepaid" << "datePaidword";
        QTest::newRow("details answers the date paid") << "details" << "datePaidword";
        QTest::newRow("number") << "number" << "numberword";
        QTest::newRow("name") << "name" << "nameword";
        QTest::newRow("surname answers the payee") << "surname" << "nameword";
        QTest::newRow("order not answered") << "order" << "";
        QTest::newRow("id not answered") << "id" << "";
        QTest::newRow("DatePaid wrong case") << "DatePaid" << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Bill bill;
        fillBill(bill);
        const QString answer = bill.getFieldByName(name);
        QCOMPARE(answer, expected);
        QVERIFY(!answer.isNull());
    }

    void shouldSetExactlyTheNamedField_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("field");     // the field that changes; "" for none
        QTest::newRow("amount") << "amount" << "amount";
        QTest::newRow("category") << "category" << "category";
        QTest::newRow("datePaid") << "datePaid" << "datePaid";
        QTest::newRow("datepaid") << "datepaid" << "datePaid";
        QTest::newRow("details sets the details") << "details" << "details";
        QTest::newRow("number") << "number" << "number";
        QTest::newRow("name") << "name" << "name";
        QTest::newRow("surname ignored") << "surname" << "";
        QTest::newRow("order ignored") << "order" << "";
        QTest::newRow("id ignored") << "id" << "";
        QTest::newRow("Amount ignored") << "Amount" << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, field);
        Bill bill;
        fillBill(bill);
        QMap<QString, QString> wanted = snapshot(bill);
        if (!field.isEmpty())
            wanted[field] = QStringLiteral("44");
        bill.setFieldByName(name, QStringLiteral("44"));
        QCOMPARE(snapshot(bill), wanted);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data()
    {
        QTest::addColumn<QString>("key");
        for (const TextField &field : textFields)
            QTest::newRow(field.key) << QString::fromLatin1(field.key);
    }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        const TextField &field = textField(key);
        Bill bill;
        (bill.*field.set)(QStringLiteral("kept"));
        (bill.*field.set)(QString());
        QCOMPARE((bill.*field.get)(), QStringLiteral("kept"));
        (bill.*field.set)(QStringLiteral(""));
        QCOMPARE((bill.*field.get)(), QStringLiteral(""));
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
