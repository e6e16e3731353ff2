#include "TestMain.h"

#include "RecordFieldTable.h"
#include "TestEnvironment.h"
#include "items/Item.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace {

const testlib::RecordFieldTable<Item> itemFields{
    {
        {"bought", &Item::getBought, &Item::setBought},
        {"code", &Item::getCode, &Item::setCode},
        {"condition", &Item::getCondition, &Item::setCondition},
        {"description", &Item::getDescription, &Item::setDescription},
        {"item", &Item::getItem, &Item::setItem},
        {"price", &Item::getPrice, &Item::setPrice},
        {"qty", &Item::getQty, &Item::setQty},
        {"optimumQty", &Item::getOptimumQty, &Item::setOptimumQty},
        {"shipping", &Item::getShipping, &Item::setShipping},
        {"status", &Item::getStatus, &Item::setStatus},
        {"supplier", &Item::getSupplier, &Item::setSupplier},
        {"warnlevel", &Item::getWarnlevel, &Item::setWarnlevel},
    },
    {testlib::flagField("decreaseQty", &Item::getDecreaseQty)},
};

void fillItem(Item &item)
{
    itemFields.fill(item, QStringLiteral("word"));
    item.setID(17);
}

const QByteArray somePicture("II*\0picture-one", 15);
const QByteArray otherPicture("II*\0picture-two-longer", 22);

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

}  // namespace

class ItemRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // Each test gets a data folder of its own, so pictures never leak.
        dataDir = std::make_unique<QTemporaryDir>();
        QVERIFY(dataDir->isValid());
        platform::paths::setApplicationSupportDir(dataDir->path());
    }
    void cleanup()
    {
        platform::paths::setApplicationSupportDir(testlib::TestEnvironment::current().supportDir());
        dataDir.reset();
    }

    void shouldAnswerFreshValuesByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const char *stored[] = {"bought", "code",       "condition", "description", "item",     "price",
                                "qty",    "optimumqty", "shipping",  "status",      "supplier", "warnlevel"};
        for (const char *name : stored)
            QTest::newRow(name) << QString::fromLatin1(name) << "";
        QTest::newRow("decreaseqty") << "decreaseqty"
                                     << "NO";
        QTest::newRow("id") << "id"
                            << "0";
        QTest::newRow("reorderqty") << "reorderqty"
                                    << "0.00";
        QTest::newRow("stockcost") << "stockcost"
                                   << "0.00";
        QTest::newRow("stockretail") << "stockretail"
                                     << "0.00";
    }
    void shouldAnswerFreshValuesByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        testlib::expectAnswer(Item(), name, expected);
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bought") << "bought"
                                << "2.5";
        QTest::newRow("code") << "code"
                              << "codeword";
        QTest::newRow("condition") << "condition"
                                   << "conditionword";
        QTest::newRow("decreaseqty") << "decreaseqty"
                                     << "YES";
        QTest::newRow("description") << "description"
                                     << "descriptionword";
        QTest::newRow("item") << "item"
                              << "itemword";
        QTest::newRow("id") << "id"
                            << "17";
        QTest::newRow("price") << "price"
                               << "4";
        QTest::newRow("qty") << "qty"
                             << "3";
        QTest::newRow("optimumqty") << "optimumqty"
                                    << "10";
        QTest::newRow("shipping") << "shipping"
                                  << "shippingword";
        QTest::newRow("status") << "status"
                                << "statusword";
        QTest::newRow("supplier") << "supplier"
                                  << "supplierword";
        QTest::newRow("warnlevel") << "warnlevel"
                                   << "warnlevelword";
        QTest::newRow("reorderqty") << "reorderqty"
                                    << "7.00";
        QTest::newRow("stockcost") << "stockcost"
                                   << "7.50";
        QTest::newRow("stockretail") << "stockretail"
                                     << "7.50";
        QTest::newRow("optimumQty not answered") << "optimumQty"
                                                 << "";
        QTest::newRow("decreaseQty not answered") << "decreaseQty"
                                                  << "";
        QTest::newRow("image not answered") << "image"
                                            << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Item item;
        fillItem(item);
        item.setBought(QStringLiteral("2.5"));
        item.setPrice(QStringLiteral("4"));
        item.setQty(QStringLiteral("3"));
        item.setOptimumQty(QStringLiteral("10"));
        item.setDecreaseQty(true);
        testlib::expectAnswer(item, name, expected);
    }

    void shouldSetExactlyTheNamedField_data()
    {
        testlib::addSetByNameColumns();
        QTest::newRow("bought") << "bought"
                                << "1.99"
                                << "bought"
                                << "1.99";
        QTest::newRow("code") << "code"
                              << "X-1"
                              << "code"
                              << "X-1";
        QTest::newRow("condition") << "condition"
                                   << "Used"
                                   << "condition"
                                   << "Used";
        QTest::newRow("description") << "description"
                                     << "long"
                                     << "description"
                                     << "long";
        QTest::newRow("item") << "item"
                              << "Hinge"
                              << "item"
                              << "Hinge";
        QTest::newRow("price") << "price"
                               << "3"
                               << "price"
                               << "3";
        QTest::newRow("qty") << "qty"
                             << "8"
                             << "qty"
                             << "8";
        QTest::newRow("optimumqty") << "optimumqty"
                                    << "20"
                                    << "optimumQty"
                                    << "20";
        QTest::newRow("shipping") << "shipping"
                                  << "0.50"
                                  << "shipping"
                                  << "0.50";
        QTest::newRow("status") << "status"
                                << "Active"
                                << "status"
                                << "Active";
        QTest::newRow("supplier") << "supplier"
                                  << "4"
                                  << "supplier"
                                  << "4";
        QTest::newRow("warnlevel") << "warnlevel"
                                   << "2"
                                   << "warnlevel"
                                   << "2";
        QTest::newRow("decreaseqty YES") << "decreaseqty"
                                         << "YES"
                                         << "decreaseQty"
                                         << "true";
        QTest::newRow("id") << "id"
                            << "55"
                            << "id"
                            << "55";
        QTest::newRow("optimumQty ignored") << "optimumQty"
                                            << "20"
                                            << ""
                                            << "";
        QTest::newRow("decreaseQty ignored") << "decreaseQty"
                                             << "YES"
                                             << ""
                                             << "";
        QTest::newRow("reorderqty ignored") << "reorderqty"
                                            << "1"
                                            << ""
                                            << "";
        QTest::newRow("stockcost ignored") << "stockcost"
                                           << "1"
                                           << ""
                                           << "";
        QTest::newRow("stockretail ignored") << "stockretail"
                                             << "1"
                                             << ""
                                             << "";
        QTest::newRow("image ignored") << "image"
                                       << "x"
                                       << ""
                                       << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, field);
        QFETCH(QString, expected);
        Item item;
        fillItem(item);
        itemFields.expectSetByNameChangesOnly(item, name, value, field, expected);
    }

    void shouldTakeOnlyUpperCaseYesForDecreaseQty_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("YES sets") << "YES" << false << true;
        QTest::newRow("yes clears") << "yes" << true << false;
        QTest::newRow("Yes clears") << "Yes" << true << false;
        QTest::newRow("NO clears") << "NO" << true << false;
        QTest::newRow("1 clears") << "1" << true << false;
    }
    void shouldTakeOnlyUpperCaseYesForDecreaseQty()
    {
        QFETCH(QString, value);
        QFETCH(bool, before);
        QFETCH(bool, after);
        Item item;
        item.setDecreaseQty(before);
        item.setFieldByName(QStringLiteral("decreaseqty"), value);
        QCOMPARE(item.getDecreaseQty(), after);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data() { itemFields.addKeyRows(); }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        itemFields.expectKeepsTheOldTextWhenGivenNothing(key);
    }

    void shouldAdjustTheQuantity_data()
    {
        QTest::addColumn<QString>("qty");
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("delta");
        QTest::addColumn<int>("result");
        QTest::newRow("dec empty") << ""
                                   << "dec" << 0 << -1;
        QTest::newRow("inc empty") << ""
                                   << "inc" << 0 << 1;
        QTest::newRow("dec 5") << "5"
                               << "dec" << 0 << 4;
        QTest::newRow("dec to negative") << "0"
                                         << "dec" << 0 << -1;
        QTest::newRow("inc words") << "abc"
                                   << "inc" << 0 << 1;
        QTest::newRow("adjust leading number") << "12 boxes"
                                               << "adjust" << -5 << 7;
        QTest::newRow("adjust leading blanks") << "  7"
                                               << "adjust" << 3 << 10;
        QTest::newRow("adjust below zero") << "2"
                                           << "adjust" << -6 << -4;
        QTest::newRow("decimals dropped") << "2.9"
                                          << "adjust" << 0 << 2;
    }
    void shouldAdjustTheQuantity()
    {
        QFETCH(QString, qty);
        QFETCH(QString, how);
        QFETCH(int, delta);
        QFETCH(int, result);
        Item item;
        item.setQty(qty);
        int answer = 0;
        if (how == QLatin1String("inc"))
            answer = item.incQty();
        else if (how == QLatin1String("dec"))
            answer = item.decQty();
        else
            answer = item.adjustQty(delta);
        QCOMPARE(answer, result);
        QCOMPARE(item.getQty(), QString::number(result));
    }

    void shouldWorkOutStockFigures_data()
    {
        QTest::addColumn<QString>("bought");
        QTest::addColumn<QString>("price");
        QTest::addColumn<QString>("qty");
        QTest::addColumn<QString>("optimum");
        QTest::addColumn<QString>("cost");
        QTest::addColumn<QString>("retail");
        QTest::addColumn<QString>("reorder");
        QTest::newRow("empty") << ""
                               << ""
                               << ""
                               << ""
                               << "0.00"
                               << "0.00"
                               << "0.00";
        QTest::newRow("retail from bought, not price") << "2.5"
                                                       << "4"
                                                       << "3"
                                                       << ""
                                                       << "7.50"
                                                       << "7.50"
                                                       << "-3.00";
        QTest::newRow("reorder up to optimum") << "1"
                                               << "2"
                                               << "4"
                                               << "10"
                                               << "4.00"
                                               << "4.00"
                                               << "6.00";
        QTest::newRow("above optimum") << ""
                                       << ""
                                       << "6"
                                       << "4"
                                       << "0.00"
                                       << "0.00"
                                       << "-2.00";
        // 1.115 lies above the half in single precision and below it in double.
        QTest::newRow("single precision") << "1.115"
                                          << "9"
                                          << "1"
                                          << ""
                                          << "1.12"
                                          << "1.12"
                                          << "-1.00";
        QTest::newRow("words") << "cheap"
                               << "dear"
                               << "some"
                               << "many"
                               << "0.00"
                               << "0.00"
                               << "0.00";
    }
    void shouldWorkOutStockFigures()
    {
        QFETCH(QString, bought);
        QFETCH(QString, price);
        QFETCH(QString, qty);
        QFETCH(QString, optimum);
        QFETCH(QString, cost);
        QFETCH(QString, retail);
        QFETCH(QString, reorder);
        Item item;
        item.setBought(bought);
        item.setPrice(price);
        item.setQty(qty);
        item.setOptimumQty(optimum);
        QCOMPARE(item.getStockCost(), cost);
        QCOMPARE(item.getStockRetail(), retail);
        QCOMPARE(item.getReOrderQty(), reorder);
    }

    void shouldSearchCodeConditionDescriptionNameAndStatus_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("code") << "codeword" << true;
        QTest::newRow("condition") << "conditionword" << true;
        QTest::newRow("description") << "descriptionword" << true;
        QTest::newRow("name") << "itemword" << true;
        QTest::newRow("status") << "statusword" << true;
        QTest::newRow("other letter case") << "ITEMWORD" << true;
        QTest::newRow("price not searched") << "priceword" << false;
        QTest::newRow("bought not searched") << "boughtword" << false;
        QTest::newRow("qty not searched") << "qtyword" << false;
        QTest::newRow("supplier not searched") << "supplierword" << false;
        QTest::newRow("warn level not searched") << "warnlevelword" << false;
        QTest::newRow("shipping not searched") << "shippingword" << false;
        QTest::newRow("nothing typed") << "" << false;
    }
    void shouldSearchCodeConditionDescriptionNameAndStatus()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        Item item;
        fillItem(item);
        item.setQty(QStringLiteral("qtyword"));
        QCOMPARE(item.contains(text), found);
    }

    void shouldHaveNoPictureWithoutCreatingTheFolder()
    {
        Item item;
        item.setID(17);
        QVERIFY(item.getImage().isEmpty());
        QVERIFY(!QFileInfo::exists(platform::paths::itemImagesDir()));
        QVERIFY(!QFileInfo::exists(platform::paths::bundleDir()));

        // The folder without this item's file answers none as well.
        QVERIFY(QDir().mkpath(platform::paths::itemImagesDir()));
        QVERIFY(item.getImage().isEmpty());
        QVERIFY(!QFileInfo::exists(platform::paths::itemImagePath(17)));
    }

    void shouldWriteThePictureIntoTheFolder()
    {
        Item item;
        item.setID(17);
        item.setImage(somePicture);
        QCOMPARE(QFileInfo(platform::paths::itemImagePath(17)).fileName(), QStringLiteral("17.tiff"));
        QCOMPARE(fileBytes(platform::paths::itemImagePath(17)), somePicture);
        QCOMPARE(item.getImage(), somePicture);
        // Only the item's own file is there: the write left nothing behind.
        QCOMPARE(QDir(platform::paths::itemImagesDir()).entryList(QDir::Files), QStringList{QStringLiteral("17.tiff")});

        Item sameItemLater;
        sameItemLater.setID(17);
        QCOMPARE(sameItemLater.getImage(), somePicture);
        Item otherItem;
        otherItem.setID(18);
        QVERIFY(otherItem.getImage().isEmpty());
    }

    void shouldReplaceADifferentPictureOnly()
    {
        Item item;
        item.setID(4);
        const QString path = platform::paths::itemImagePath(4);
        item.setImage(somePicture);
        // The same picture again is nothing to do: a file removed behind
        // the item's back is not written again.
        QVERIFY(QFile::remove(path));
        item.setImage(somePicture);
        QVERIFY(!QFileInfo::exists(path));

        item.setImage(otherPicture);
        QCOMPARE(fileBytes(path), otherPicture);
        QCOMPARE(item.getImage(), otherPicture);
    }

    void shouldKeepALoadedPicture()
    {
        Item writer;
        writer.setID(6);
        writer.setImage(somePicture);
        Item reader;
        reader.setID(6);
        QCOMPARE(reader.getImage(), somePicture);
        QVERIFY(QFile::remove(platform::paths::itemImagePath(6)));
        QCOMPARE(reader.getImage(), somePicture);
    }

    void shouldDropThePictureAndItsFile()
    {
        Item item;
        item.setID(9);
        item.setImage(somePicture);
        item.setImage(QByteArray());
        QVERIFY(item.getImage().isEmpty());
        QVERIFY(!QFileInfo::exists(platform::paths::itemImagePath(9)));

        // Dropping again, with no file left, is no error and creates nothing.
        Item bare;
        bare.setID(10);
        bare.setImage(QByteArray());
        QVERIFY(bare.getImage().isEmpty());
        QVERIFY(!QFileInfo::exists(platform::paths::itemImagePath(10)));
    }

    void shouldNotCreateTheFolderWhenDroppingNothing()
    {
        Item item;
        item.setID(2);
        item.setImage(QByteArray());
        QVERIFY(!QFileInfo::exists(platform::paths::itemImagesDir()));
    }

private:
    std::unique_ptr<QTemporaryDir> dataDir;
};

QUORVEL_TEST(ItemRecordTest)
#include "ItemRecordTest.moc"
