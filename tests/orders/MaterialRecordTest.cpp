#include "TestMain.h"

#include "RecordFieldTable.h"
#include "orders/Material.h"

#include <QTest>
#include <memory>

namespace {

// A line's setters replace the text even with a null one, so the table
// serves snapshots here, not the keep-the-old-text check.
const testlib::RecordFieldTable<Material> materialFields{
    {
        {"item", &Material::getItem, &Material::setItem},
        {"qty", &Material::getQty, &Material::setQty},
        {"cost", &Material::getCost, &Material::setCost},
        {"unit", &Material::getUnit, &Material::setUnit},
        {"total", &Material::getTotal, &Material::setTotal},
        {"code", &Material::getCode, &Material::setCode},
    },
    {
        testlib::numberField("order", &Material::getOrder),
        testlib::numberField("product", &Material::getProduct),
        testlib::numberField("contact", &Material::getContact),
    },
};

std::shared_ptr<Material> makeLine(const QString &how)
{
    if (how == QLatin1String("withOrder"))
        return Material::withOrder(12);
    if (how == QLatin1String("withOrderAndProduct"))
        return Material::withOrderAndProduct(12, 5);
    return std::make_shared<Material>();
}

}  // namespace

class MaterialRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartEachKindOfLineWithItsOwnDefaults_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("cost");
        QTest::addColumn<QString>("total");
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("product");
        QTest::newRow("plain") << "plain"
                               << "New Item"
                               << "0"
                               << "0" << 0 << 0;
        QTest::newRow("free line of an order") << "withOrder"
                                               << "New Item"
                                               << ""
                                               << "" << 12 << 0;
        QTest::newRow("stock line of an order") << "withOrderAndProduct"
                                                << ""
                                                << ""
                                                << "" << 12 << 5;
    }
    void shouldStartEachKindOfLineWithItsOwnDefaults()
    {
        QFETCH(QString, how);
        QFETCH(QString, item);
        QFETCH(QString, cost);
        QFETCH(QString, total);
        QFETCH(int, order);
        QFETCH(int, product);
        const std::shared_ptr<Material> line = makeLine(how);
        QCOMPARE(line->getItem(), item);
        QCOMPARE(line->getQty(), QStringLiteral("1"));
        QCOMPARE(line->getCost(), cost);
        QCOMPARE(line->getTotal(), total);
        QCOMPARE(line->getUnit(), QStringLiteral(""));
        QCOMPARE(line->getCode(), QStringLiteral(""));
        QVERIFY(!line->getItem().isNull());
        QVERIFY(!line->getCost().isNull());
        QCOMPARE(line->getOrder(), order);
        QCOMPARE(line->getProduct(), product);
        QCOMPARE(line->getContact(), 0);
        QCOMPARE(line->getID(), 0);
        QVERIFY(line->getVisible());
    }

    void shouldRecalculateTheTotalInSinglePrecision_data()
    {
        QTest::addColumn<QString>("qty");
        QTest::addColumn<QString>("cost");
        QTest::addColumn<QString>("total");
        QTest::newRow("3 x 2.5") << "3"
                                 << "2.5"
                                 << "7.50";
        QTest::newRow("empty qty") << ""
                                   << "2.5"
                                   << "0.00";
        QTest::newRow("cost not a number") << "3"
                                           << "abc"
                                           << "0.00";
        QTest::newRow("leading number") << "12 boxes"
                                        << "0.5"
                                        << "6.00";
        QTest::newRow("thousands separator stops the number") << "1"
                                                              << "1,250"
                                                              << "1.00";
        QTest::newRow("negative") << "-2"
                                  << "1.25"
                                  << "-2.50";
        // 1.115 in single precision lies just above the half, in double just below.
        QTest::newRow("single precision rounding") << "1"
                                                   << "1.115"
                                                   << "1.12";
    }
    void shouldRecalculateTheTotalInSinglePrecision()
    {
        QFETCH(QString, qty);
        QFETCH(QString, cost);
        QFETCH(QString, total);
        Material line;
        line.setQty(qty);
        line.setCost(cost);
        line.recalcTotal();
        QCOMPARE(line.getTotal(), total);
    }

    void shouldReadFiguresAsFloats_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("value");
        QTest::newRow("plain") << "7.50" << 7.5f;
        QTest::newRow("empty") << "" << 0.0f;
        QTest::newRow("words") << "abc" << 0.0f;
        QTest::newRow("leading blanks and trailing text") << "  4 hours" << 4.0f;
    }
    void shouldReadFiguresAsFloats()
    {
        QFETCH(QString, text);
        QFETCH(float, value);
        Material line;
        line.setQty(text);
        line.setCost(text);
        line.setTotal(text);
        QCOMPARE(line.getQtyasFloat(), value);
        QCOMPARE(line.getCostasFloat(), value);
        QCOMPARE(line.getTotalasFloat(), value);
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("item") << "item"
                              << "Hinge";
        QTest::newRow("qty") << "qty"
                             << "4";
        QTest::newRow("cost") << "cost"
                              << "1.20";
        QTest::newRow("code") << "code"
                              << "HG-1";
        QTest::newRow("unit") << "unit"
                              << "each";
        QTest::newRow("total") << "total"
                               << "4.80";
        QTest::newRow("order:contact:id") << "order:contact:id"
                                          << "31";
        QTest::newRow("order not answered") << "order"
                                            << "";
        QTest::newRow("product not answered") << "product"
                                              << "";
        QTest::newRow("contact not answered") << "contact"
                                              << "";
        QTest::newRow("id not answered") << "id"
                                         << "";
        QTest::newRow("Item wrong case") << "Item"
                                         << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        const std::shared_ptr<Material> line = Material::withOrderAndProduct(12, 5);
        line->setItem(QStringLiteral("Hinge"));
        line->setQty(QStringLiteral("4"));
        line->setCost(QStringLiteral("1.20"));
        line->setCode(QStringLiteral("HG-1"));
        line->setUnit(QStringLiteral("each"));
        line->setTotal(QStringLiteral("4.80"));
        line->setContact(31);
        line->setID(8);
        testlib::expectAnswer(*line, name, expected);
    }

    void shouldAnswerTheContactIdOfAFreshLine()
    {
        const Material line;
        QCOMPARE(line.getFieldByName(QStringLiteral("order:contact:id")), QStringLiteral("0"));
    }

    void shouldSetExactlyTheNamedField_data()
    {
        testlib::addSetByNameColumns();
        QTest::newRow("item") << "item"
                              << "Bolt"
                              << "item"
                              << "Bolt";
        QTest::newRow("cost") << "cost"
                              << "0.10"
                              << "cost"
                              << "0.10";
        QTest::newRow("qty") << "qty"
                             << "100"
                             << "qty"
                             << "100";
        QTest::newRow("code") << "code"
                              << "B-2"
                              << "code"
                              << "B-2";
        QTest::newRow("unit") << "unit"
                              << "box"
                              << "unit"
                              << "box";
        QTest::newRow("total") << "total"
                               << "10.00"
                               << "total"
                               << "10.00";
        QTest::newRow("order moves the line") << "order"
                                              << "12"
                                              << "order"
                                              << "12";
        QTest::newRow("order not a number") << "order"
                                            << "x"
                                            << "order"
                                            << "0";
        QTest::newRow("product") << "product"
                                 << "5x"
                                 << "product"
                                 << "5";
        QTest::newRow("contact ignored") << "contact"
                                         << "9"
                                         << ""
                                         << "";
        QTest::newRow("id ignored") << "id"
                                    << "9"
                                    << ""
                                    << "";
        QTest::newRow("Qty wrong case") << "Qty"
                                        << "9"
                                        << ""
                                        << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, field);
        QFETCH(QString, expected);
        const std::shared_ptr<Material> line = Material::withOrderAndProduct(3, 4);
        line->setContact(2);
        line->setID(1);
        materialFields.expectSetByNameChangesOnly(*line, name, value, field, expected);
    }

    void shouldReplaceTheTextEvenWithNothing()
    {
        Material line;
        line.setItem(QString());
        line.setCost(QString());
        QVERIFY(line.getItem().isNull());
        QVERIFY(line.getCost().isNull());
        line.recalcTotal();
        QCOMPARE(line.getTotal(), QStringLiteral("0.00"));
    }

    void shouldMatchEverySearch()
    {
        Material line;
        line.setItem(QStringLiteral("Hinge"));
        QVERIFY(line.contains(QStringLiteral("nothing like it")));
    }
};

QUORVEL_TEST(MaterialRecordTest)
#include "MaterialRecordTest.moc"
