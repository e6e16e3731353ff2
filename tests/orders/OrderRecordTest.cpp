#include "TestMain.h"

#include "RecordFieldTable.h"
#include "contacts/Contact.h"
#include "orders/Order.h"

#include <QTest>

namespace {

// Every field of an order with its accessors.
const testlib::RecordFieldTable<Order> orderFields{
    {
        {"balance", &Order::getBalance, &Order::setBalance},
        {"balancePaid", &Order::getBalancePaid, &Order::setBalancePaid},
        {"date", &Order::getDate, &Order::setDate},
        {"deposit", &Order::getDeposit, &Order::setDeposit},
        {"depositPaid", &Order::getDepositPaid, &Order::setDepositPaid},
        {"description", &Order::getDescription, &Order::setDescription},
        {"lastRepeatDate", &Order::getLastRepeatDate, &Order::setLastRepeatDate},
        {"orderNum", &Order::getOrderNum, &Order::setOrderNum},
        {"paymentMethod", &Order::getPaymentMethod, &Order::setPaymentMethod},
        {"repeatFrequency", &Order::getRepeatFrequency, &Order::setRepeatFrequency},
        {"shipping", &Order::getShipping, &Order::setShipping},
        {"status", &Order::getStatus, &Order::setStatus},
        {"tax", &Order::getTax, &Order::setTax},
        {"taxRate", &Order::getTaxRate, &Order::setTaxRate},
        {"title", &Order::getTitle, &Order::setTitle},
        {"type", &Order::getType, &Order::setType},
        {"value", &Order::getValue, &Order::setValue},
        {"valueWithTax", &Order::getValueWithTax, &Order::setValueWithTax},
    },
    {
        testlib::flagField("includeBOM", &Order::getIncludeBOM),
        testlib::flagField("repeats", &Order::getRepeats),
        testlib::flagField("sent", &Order::getSent),
    },
};

// An order whose every text field holds a text of its own ("<field>-text").
void fillOrder(Order &order)
{
    orderFields.fill(order, QStringLiteral("-text"));
}

void fillContact(Contact &contact)
{
    contact.setID(31);
    contact.setAdd1(QStringLiteral("1 High St"));
    contact.setAdd2(QStringLiteral("Lower Town"));
    contact.setAdd3(QStringLiteral("Shire"));
    contact.setComments(QStringLiteral("pays late"));
    contact.setCompanyName(QStringLiteral("Acme Ltd"));
    contact.setEmail(QStringLiteral("jane@example.com"));
    contact.setExtension(QStringLiteral("204"));
    contact.setFax(QStringLiteral("0100 200"));
    contact.setJobTitle(QStringLiteral("Buyer"));
    contact.setKind(QStringLiteral("Company Contact"));
    contact.setMobile(QStringLiteral("07700 900"));
    contact.setName(QStringLiteral("Jane van Smith"));
    contact.setPhone(QStringLiteral("0100 300"));
    contact.setPostcode(QStringLiteral("AB1 2CD"));
    contact.setTitle(QStringLiteral("Dr"));
    contact.setType(QStringLiteral("Supplier"));
    contact.setWebsite(QStringLiteral("example.com"));
}

}  // namespace

class OrderRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartAsAnUnlinkedEnquiry()
    {
        const Order order;
        QCOMPARE(order.getID(), 0);
        QVERIFY(order.getVisible());
        QCOMPARE(order.getContact(), nullptr);
        QCOMPARE(order.getIncludeBOM(), false);
        QCOMPARE(order.getRepeats(), false);
        QCOMPARE(order.getSent(), false);
        QCOMPARE(order.getRepeatFrequency(), QStringLiteral("month"));
        QCOMPARE(order.getLastRepeatDate(), QStringLiteral(""));
        QVERIFY(!order.getLastRepeatDate().isNull());
        QCOMPARE(order.getTax(), QStringLiteral(""));
    }

    void shouldAnswerFreshValuesByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("type") << "type"
                              << "Order";
        QTest::newRow("status") << "status"
                                << "Enquiry";
        QTest::newRow("paymentmethod") << "paymentmethod"
                                       << "web";
        QTest::newRow("balance") << "balance"
                                 << "";
        QTest::newRow("title") << "title"
                               << "";
        QTest::newRow("includeBOM") << "includeBOM"
                                    << "No";
        QTest::newRow("sent") << "sent"
                              << "No";
        QTest::newRow("contact:name without contact") << "contact:name"
                                                      << "";
        QTest::newRow("contact:id without contact") << "contact:id"
                                                    << "";
    }
    void shouldAnswerFreshValuesByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        testlib::expectAnswer(Order(), name, expected);
    }

    void shouldAnswerFieldsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("balance") << "balance"
                                 << "balance-text";
        QTest::newRow("balancePaid") << "balancePaid"
                                     << "balancePaid-text";
        QTest::newRow("balancepaid") << "balancepaid"
                                     << "balancePaid-text";
        QTest::newRow("date") << "date"
                              << "date-text";
        QTest::newRow("deposit") << "deposit"
                                 << "deposit-text";
        QTest::newRow("depositPaid") << "depositPaid"
                                     << "depositPaid-text";
        QTest::newRow("depositpaid") << "depositpaid"
                                     << "depositPaid-text";
        QTest::newRow("description") << "description"
                                     << "description-text";
        QTest::newRow("title") << "title"
                               << "title-text";
        QTest::newRow("orderNum") << "orderNum"
                                  << "orderNum-text";
        QTest::newRow("ordernum") << "ordernum"
                                  << "orderNum-text";
        QTest::newRow("paymentmethod") << "paymentmethod"
                                       << "paymentMethod-text";
        QTest::newRow("value") << "value"
                               << "value-text";
        QTest::newRow("status") << "status"
                                << "status-text";
        QTest::newRow("shipping") << "shipping"
                                  << "shipping-text";
        QTest::newRow("type") << "type"
                              << "type-text";
        QTest::newRow("tax answers the balance") << "tax"
                                                 << "balance-text";
        QTest::newRow("taxRate") << "taxRate"
                                 << "taxRate-text";
        QTest::newRow("valueWithTax") << "valueWithTax"
                                      << "valueWithTax-text";
        QTest::newRow("includeBOM set") << "includeBOM"
                                        << "Yes";
        QTest::newRow("sent set") << "sent"
                                  << "Yes";
        QTest::newRow("taxrate not answered") << "taxrate"
                                              << "";
        QTest::newRow("valuewithtax not answered") << "valuewithtax"
                                                   << "";
        QTest::newRow("paymentMethod not answered") << "paymentMethod"
                                                    << "";
        QTest::newRow("repeats not answered") << "repeats"
                                              << "";
        QTest::newRow("repeatFrequency not answered") << "repeatFrequency"
                                                      << "";
        QTest::newRow("lastRepeatDate not answered") << "lastRepeatDate"
                                                     << "";
        QTest::newRow("includebom not answered") << "includebom"
                                                 << "";
        QTest::newRow("id not answered") << "id"
                                         << "";
        QTest::newRow("Title wrong case") << "Title"
                                          << "";
    }
    void shouldAnswerFieldsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        Order order;
        fillOrder(order);
        order.setID(5);
        order.setIncludeBOM(true);
        order.setSent(true);
        order.setRepeats(true);
        testlib::expectAnswer(order, name, expected);
    }

    // Each flag answers for itself: one set, the other clear.
    void shouldAnswerEachFlagFromItsOwnField_data()
    {
        QTest::addColumn<bool>("includeBOM");
        QTest::addColumn<bool>("sent");
        QTest::newRow("bill of materials only") << true << false;
        QTest::newRow("sent only") << false << true;
    }
    void shouldAnswerEachFlagFromItsOwnField()
    {
        QFETCH(bool, includeBOM);
        QFETCH(bool, sent);
        Order order;
        order.setIncludeBOM(includeBOM);
        order.setSent(sent);
        QCOMPARE(order.getFieldByName(QStringLiteral("includeBOM")),
                 includeBOM ? QStringLiteral("Yes") : QStringLiteral("No"));
        QCOMPARE(order.getFieldByName(QStringLiteral("sent")), sent ? QStringLiteral("Yes") : QStringLiteral("No"));
    }

    void shouldAnswerTheLinkedContactsFields_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("add1") << "contact:add1"
                              << "1 High St";
        QTest::newRow("add2") << "contact:add2"
                              << "Lower Town";
        QTest::newRow("add3") << "contact:add3"
                              << "Shire";
        QTest::newRow("comments") << "contact:comments"
                                  << "pays late";
        QTest::newRow("companyname") << "contact:companyname"
                                     << "Acme Ltd";
        QTest::newRow("email") << "contact:email"
                               << "jane@example.com";
        QTest::newRow("extension") << "contact:extension"
                                   << "204";
        QTest::newRow("fax") << "contact:fax"
                             << "0100 200";
        QTest::newRow("id") << "contact:id"
                            << "31";
        QTest::newRow("jobtitle") << "contact:jobtitle"
                                  << "Buyer";
        QTest::newRow("kind") << "contact:kind"
                              << "Company Contact";
        QTest::newRow("mobile") << "contact:mobile"
                                << "07700 900";
        QTest::newRow("name") << "contact:name"
                              << "Jane van Smith";
        QTest::newRow("surname") << "contact:surname"
                                 << "Smith";
        QTest::newRow("phone") << "contact:phone"
                               << "0100 300";
        QTest::newRow("postcode") << "contact:postcode"
                                  << "AB1 2CD";
        QTest::newRow("title") << "contact:title"
                               << "Dr";
        QTest::newRow("type") << "contact:type"
                              << "Supplier";
        QTest::newRow("website") << "contact:website"
                                 << "example.com";
        QTest::newRow("jobTitle not answered") << "contact:jobTitle"
                                               << "";
        QTest::newRow("address not answered") << "contact:address"
                                              << "";
        QTest::newRow("company not answered") << "contact:company"
                                              << "";
        QTest::newRow("order's own title still answered") << "title"
                                                          << "title-text";
    }
    void shouldAnswerTheLinkedContactsFields()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        const auto contact = std::make_shared<Contact>();
        fillContact(*contact);
        Order order;
        fillOrder(order);
        order.setContact(contact.get());
        QCOMPARE(order.getFieldByName(name), expected);

        // The same names answer nothing while no contact is linked.
        Order unlinked;
        fillOrder(unlinked);
        if (name.startsWith(QLatin1String("contact:")))
            QCOMPARE(unlinked.getFieldByName(name), QStringLiteral(""));
    }

    void shouldSetExactlyTheNamedField_data()
    {
        testlib::addSetByNameColumns();
        QTest::newRow("balance") << "balance"
                                 << "5.00"
                                 << "balance"
                                 << "5.00";
        QTest::newRow("balancePaid") << "balancePaid"
                                     << "1/2/08"
                                     << "balancePaid"
                                     << "1/2/08";
        QTest::newRow("balancepaid ignored") << "balancepaid"
                                             << "1/2/08"
                                             << ""
                                             << "";
        QTest::newRow("date") << "date"
                              << "02/01/08"
                              << "date"
                              << "02/01/08";
        QTest::newRow("deposit") << "deposit"
                                 << "10"
                                 << "deposit"
                                 << "10";
        QTest::newRow("depositPaid") << "depositPaid"
                                     << "yes"
                                     << "depositPaid"
                                     << "yes";
        QTest::newRow("depositpaid ignored") << "depositpaid"
                                             << "yes"
                                             << ""
                                             << "";
        QTest::newRow("description") << "description"
                                     << "two\nlines"
                                     << "description"
                                     << "two\nlines";
        QTest::newRow("id") << "id"
                            << "42"
                            << "id"
                            << "42";
        QTest::newRow("id leading number") << "id"
                                           << "7x"
                                           << "id"
                                           << "7";
        QTest::newRow("title") << "title"
                               << "Fence"
                               << "title"
                               << "Fence";
        QTest::newRow("ordernum") << "ordernum"
                                  << "Q-9"
                                  << "orderNum"
                                  << "Q-9";
        QTest::newRow("orderNum ignored") << "orderNum"
                                          << "Q-9"
                                          << ""
                                          << "";
        QTest::newRow("paymentmethod") << "paymentmethod"
                                       << "cash"
                                       << "paymentMethod"
                                       << "cash";
        QTest::newRow("paymentMethod ignored") << "paymentMethod"
                                               << "cash"
                                               << ""
                                               << "";
        QTest::newRow("value") << "value"
                               << "100"
                               << "value"
                               << "100";
        QTest::newRow("status") << "status"
                                << "Complete"
                                << "status"
                                << "Complete";
        QTest::newRow("shipping") << "shipping"
                                  << "4.95"
                                  << "shipping"
                                  << "4.95";
        QTest::newRow("type") << "type"
                              << "Quote"
                              << "type"
                              << "Quote";
        QTest::newRow("tax sets the tax") << "tax"
                                          << "17.50"
                                          << "tax"
                                          << "17.50";
        QTest::newRow("taxrate") << "taxrate"
                                 << "20.00"
                                 << "taxRate"
                                 << "20.00";
        QTest::newRow("taxRate ignored") << "taxRate"
                                         << "20.00"
                                         << ""
                                         << "";
        QTest::newRow("valuewithtax") << "valuewithtax"
                                      << "120.00"
                                      << "valueWithTax"
                                      << "120.00";
        QTest::newRow("valueWithTax ignored") << "valueWithTax"
                                              << "120.00"
                                              << ""
                                              << "";
        QTest::newRow("lastrepeatdate ignored") << "lastrepeatdate"
                                                << "01/01/08"
                                                << ""
                                                << "";
        QTest::newRow("repeatfrequency ignored") << "repeatfrequency"
                                                 << "week"
                                                 << ""
                                                 << "";
        QTest::newRow("repeats ignored") << "repeats"
                                         << "YES"
                                         << ""
                                         << "";
        QTest::newRow("contact ignored") << "contact"
                                         << "3"
                                         << ""
                                         << "";
        QTest::newRow("unknown ignored") << "colour"
                                         << "red"
                                         << ""
                                         << "";
    }
    void shouldSetExactlyTheNamedField()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, field);
        QFETCH(QString, expected);
        Order order;
        fillOrder(order);
        order.setID(3);
        orderFields.expectSetByNameChangesOnly(order, name, value, field, expected);
    }

    void shouldReadFlagsByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("includeBOM");
        QTest::addColumn<bool>("sent");
        QTest::newRow("includeBOM Yes") << "includeBOM"
                                        << "Yes" << false << true << false;
        QTest::newRow("includebom Yes") << "includebom"
                                        << "Yes" << false << true << false;
        QTest::newRow("includeBOM YES clears") << "includeBOM"
                                               << "YES" << true << false << true;
        QTest::newRow("includeBOM yes clears") << "includeBOM"
                                               << "yes" << true << false << true;
        QTest::newRow("includeBOM No clears") << "includeBOM"
                                              << "No" << true << false << true;
        QTest::newRow("IncludeBOM ignored") << "IncludeBOM"
                                            << "Yes" << false << false << false;
        QTest::newRow("sent No sets") << "sent"
                                      << "No" << false << false << true;
        QTest::newRow("sent Yes clears") << "sent"
                                         << "Yes" << true << true << false;
        QTest::newRow("sent empty clears") << "sent"
                                           << "" << true << true << false;
        QTest::newRow("sent no (lower) clears") << "sent"
                                                << "no" << true << true << false;
        QTest::newRow("Sent ignored") << "Sent"
                                      << "No" << true << true << true;
    }
    void shouldReadFlagsByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(bool, before);
        QFETCH(bool, includeBOM);
        QFETCH(bool, sent);
        Order order;
        order.setIncludeBOM(before);
        order.setSent(before);
        order.setFieldByName(name, value);
        QCOMPARE(order.getIncludeBOM(), includeBOM);
        QCOMPARE(order.getSent(), sent);
    }

    void shouldNotRoundTripTheSentFlag()
    {
        // The older files' "No" means sent; the getter speaks plainly.
        Order order;
        order.setFieldByName(QStringLiteral("sent"), QStringLiteral("No"));
        QCOMPARE(order.getFieldByName(QStringLiteral("sent")), QStringLiteral("Yes"));
        order.setFieldByName(QStringLiteral("sent"), order.getFieldByName(QStringLiteral("sent")));
        QCOMPARE(order.getSent(), false);
    }

    void shouldKeepTheOldTextWhenGivenNothing_data() { orderFields.addKeyRows(); }
    void shouldKeepTheOldTextWhenGivenNothing()
    {
        QFETCH(QString, key);
        orderFields.expectKeepsTheOldTextWhenGivenNothing(key);
    }

    void shouldChangeButNeverClearTheContact()
    {
        const auto first = std::make_shared<Contact>();
        const auto second = std::make_shared<Contact>();
        Order order;
        order.setContact(nullptr);
        QCOMPARE(order.getContact(), nullptr);
        order.setContact(first.get());
        QCOMPARE(order.getContact(), first.get());
        order.setContact(nullptr);
        QCOMPARE(order.getContact(), first.get());
        order.setContact(second.get());
        QCOMPARE(order.getContact(), second.get());
    }

    void shouldSearchDateTitleStatusAndTypeOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("title piece") << "refit" << true;
        QTest::newRow("title other case") << "KITCHEN" << true;
        QTest::newRow("status") << "enq" << true;
        QTest::newRow("type") << "quo" << true;
        QTest::newRow("date") << "02/08" << true;
        QTest::newRow("order number") << "ORD-77" << false;
        QTest::newRow("description") << "oak" << false;
        QTest::newRow("value") << "123" << false;
        QTest::newRow("payment method") << "cheque" << false;
        QTest::newRow("contact's name") << "Smith" << false;
        QTest::newRow("nothing typed") << "" << false;
    }
    void shouldSearchDateTitleStatusAndTypeOnly()
    {
        QFETCH(QString, text);
        QFETCH(bool, found);
        const auto contact = std::make_shared<Contact>();
        contact->setName(QStringLiteral("Jane Smith"));
        Order order;
        order.setContact(contact.get());
        order.setDate(QStringLiteral("01/02/08"));
        order.setTitle(QStringLiteral("Kitchen Refit"));
        order.setType(QStringLiteral("Quote"));
        order.setOrderNum(QStringLiteral("ORD-77"));
        order.setDescription(QStringLiteral("oak worktops"));
        order.setValue(QStringLiteral("123.45"));
        order.setPaymentMethod(QStringLiteral("cheque"));
        QCOMPARE(order.contains(text), found);
    }

    void shouldColourOnlyCompleteOrders_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("colour");
        QTest::newRow("Complete") << "Complete" << 1;
        QTest::newRow("complete") << "complete" << 0;
        QTest::newRow("Completed") << "Completed" << 0;
        QTest::newRow("Enquiry") << "Enquiry" << 0;
    }
    void shouldColourOnlyCompleteOrders()
    {
        QFETCH(QString, status);
        QFETCH(int, colour);
        Order order;
        order.setStatus(status);
        QCOMPARE(order.getColour(), colour);
    }

    void shouldSortOnlyTheDateColumnAsDates_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<bool>("isDate");
        QTest::newRow("date") << "date" << true;
        QTest::newRow("Date") << "Date" << false;
        QTest::newRow("lastrepeatdate") << "lastrepeatdate" << false;
        QTest::newRow("datepaid") << "datepaid" << false;
    }
    void shouldSortOnlyTheDateColumnAsDates()
    {
        QFETCH(QString, column);
        QFETCH(bool, isDate);
        QCOMPARE(Order::isDate(column), isDate);
    }
};

QUORVEL_TEST(OrderRecordTest)
#include "OrderRecordTest.moc"
