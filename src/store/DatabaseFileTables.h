#pragma once
// The six database files' keys and the record fields they hold: for each
// kind, the keys in the sorted order the file is written in (with an enum
// that follows the list), and the text fields that go by key with their
// accessors. The reader and the writer of the database files share them;
// nothing else includes this.
#include "accounts/Bill.h"
#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "store/DatabaseBundle.h"
#include "tasks/Action.h"

#include <QString>
#include <QStringList>

namespace database {

inline const QString Yes = QStringLiteral("YES");
inline const QString No = QStringLiteral("NO");

// The keys of each file. The enums follow the lists, which are in the sorted
// order the files are written in.
enum ContactKey {
    cAdd1,
    cAdd2,
    cAdd3,
    cComments,
    cCompany,
    cEmail,
    cExtension,
    cFax,
    cId,
    cJobTitle,
    cKind,
    cMobile,
    cName,
    cPhone,
    cPostcode,
    cTitle,
    cType,
    cWebsite,
    ContactKeyCount
};
inline const QStringList ContactKeys
    = {QStringLiteral("add1"),    QStringLiteral("add2"),     QStringLiteral("add3"),      QStringLiteral("comments"),
       QStringLiteral("company"), QStringLiteral("email"),    QStringLiteral("extension"), QStringLiteral("fax"),
       QStringLiteral("id"),      QStringLiteral("jobtitle"), QStringLiteral("kind"),      QStringLiteral("mobile"),
       QStringLiteral("name"),    QStringLiteral("phone"),    QStringLiteral("postcode"),  QStringLiteral("title"),
       QStringLiteral("type"),    QStringLiteral("website")};

enum OrderKey {
    oBalance,
    oBalancePaid,
    oContact,
    oDate,
    oDeposit,
    oDepositPaid,
    oDescription,
    oId,
    oIncludeBOM,
    oLastRepeatDate,
    oOrderNum,
    oPaymentMethod,
    oRepeatFrequency,
    oRepeats,
    oSent,
    oShipping,
    oStatus,
    oTax,
    oTaxRate,
    oTitle,
    oType,
    oValue,
    oValueWithTax,
    OrderKeyCount
};
inline const QStringList OrderKeys = {QStringLiteral("balance"),
                                      QStringLiteral("balancepaid"),
                                      QStringLiteral("contact"),
                                      QStringLiteral("date"),
                                      QStringLiteral("deposit"),
                                      QStringLiteral("depositpaid"),
                                      QStringLiteral("description"),
                                      QStringLiteral("id"),
                                      QStringLiteral("includeBOM"),
                                      QStringLiteral("lastrepeatdate"),
                                      QStringLiteral("ordernum"),
                                      QStringLiteral("paymentmethod"),
                                      QStringLiteral("repeatfrequency"),
                                      QStringLiteral("repeats"),
                                      QStringLiteral("sent"),
                                      QStringLiteral("shipping"),
                                      QStringLiteral("status"),
                                      QStringLiteral("tax"),
                                      QStringLiteral("taxrate"),
                                      QStringLiteral("title"),
                                      QStringLiteral("type"),
                                      QStringLiteral("value"),
                                      QStringLiteral("valuewithtax")};

enum ItemKey {
    iBought,
    iCode,
    iCondition,
    iDecreaseQty,
    iDescription,
    iId,
    iItem,
    iOptimumQty,
    iPrice,
    iQty,
    iShipping,
    iStatus,
    iSupplier,
    iWarnlevel,
    ItemKeyCount
};
inline const QStringList ItemKeys
    = {QStringLiteral("bought"),      QStringLiteral("code"),        QStringLiteral("condition"),
       QStringLiteral("decreaseQty"), QStringLiteral("description"), QStringLiteral("id"),
       QStringLiteral("item"),        QStringLiteral("optimumqty"),  QStringLiteral("price"),
       QStringLiteral("qty"),         QStringLiteral("shipping"),    QStringLiteral("status"),
       QStringLiteral("supplier"),    QStringLiteral("warnlevel")};

enum MaterialKey { mCode, mContact, mCost, mId, mItem, mOrder, mProduct, mQty, mTotal, mUnit, MaterialKeyCount };
inline const QStringList MaterialKeys
    = {QStringLiteral("code"),  QStringLiteral("contact"), QStringLiteral("cost"),    QStringLiteral("id"),
       QStringLiteral("item"),  QStringLiteral("order"),   QStringLiteral("product"), QStringLiteral("qty"),
       QStringLiteral("total"), QStringLiteral("unit")};

enum BillKey { bAmount, bCategory, bDatePaid, bDetails, bId, bName, bNumber, BillKeyCount };
inline const QStringList BillKeys
    = {QStringLiteral("amount"), QStringLiteral("category"), QStringLiteral("datepaid"), QStringLiteral("details"),
       QStringLiteral("id"),     QStringLiteral("name"),     QStringLiteral("number")};

enum ActionKey {
    aAlarm,
    aAlarmAcknowledged,
    aComplete,
    aDetails,
    aEndDate,
    aEndTime,
    aId,
    aRate,
    aStartDate,
    aStartTime,
    aTitle,
    aTotalCharge,
    aTotalTime,
    aTotalTimeUnits,
    ActionKeyCount
};
inline const QStringList ActionKeys = {QStringLiteral("alarm"),     QStringLiteral("alarmacknowledged"),
                                       QStringLiteral("complete"),  QStringLiteral("details"),
                                       QStringLiteral("enddate"),   QStringLiteral("endtime"),
                                       QStringLiteral("id"),        QStringLiteral("rate"),
                                       QStringLiteral("startdate"), QStringLiteral("starttime"),
                                       QStringLiteral("title"),     QStringLiteral("totalcharge"),
                                       QStringLiteral("totaltime"), QStringLiteral("totaltimeunits")};

inline const QStringList &keysOf(DatabaseBundle::File file)
{
    static const QStringList *const all[]
        = {&ContactKeys, &OrderKeys, &ItemKeys, &MaterialKeys, &BillKeys, &ActionKeys};
    return *all[file];
}

// The text fields of each record kind that go by key, with their accessors.
template <typename Record> struct TextField
{
    int key;
    const QString &(Record::*get)() const;
    void (Record::*set)(const QString &);
};

inline const TextField<Contact> ContactTexts[] = {
    {cAdd1, &Contact::getAdd1, &Contact::setAdd1},
    {cAdd2, &Contact::getAdd2, &Contact::setAdd2},
    {cAdd3, &Contact::getAdd3, &Contact::setAdd3},
    {cComments, &Contact::getComments, &Contact::setComments},
    {cEmail, &Contact::getEmail, &Contact::setEmail},
    {cExtension, &Contact::getExtension, &Contact::setExtension},
    {cFax, &Contact::getFax, &Contact::setFax},
    {cJobTitle, &Contact::getJobTitle, &Contact::setJobTitle},
    {cKind, &Contact::getKind, &Contact::setKind},
    {cMobile, &Contact::getMobile, &Contact::setMobile},
    {cName, &Contact::getName, &Contact::setName},
    {cPhone, &Contact::getPhone, &Contact::setPhone},
    {cPostcode, &Contact::getPostcode, &Contact::setPostcode},
    {cTitle, &Contact::getTitle, &Contact::setTitle},
    {cType, &Contact::getType, &Contact::setType},
    {cWebsite, &Contact::getWebsite, &Contact::setWebsite},
};

inline const TextField<Order> OrderTexts[] = {
    {oBalance, &Order::getBalance, &Order::setBalance},
    {oBalancePaid, &Order::getBalancePaid, &Order::setBalancePaid},
    {oDate, &Order::getDate, &Order::setDate},
    {oDeposit, &Order::getDeposit, &Order::setDeposit},
    {oDepositPaid, &Order::getDepositPaid, &Order::setDepositPaid},
    {oDescription, &Order::getDescription, &Order::setDescription},
    {oLastRepeatDate, &Order::getLastRepeatDate, &Order::setLastRepeatDate},
    {oOrderNum, &Order::getOrderNum, &Order::setOrderNum},
    {oPaymentMethod, &Order::getPaymentMethod, &Order::setPaymentMethod},
    {oRepeatFrequency, &Order::getRepeatFrequency, &Order::setRepeatFrequency},
    {oShipping, &Order::getShipping, &Order::setShipping},
    {oStatus, &Order::getStatus, &Order::setStatus},
    {oTax, &Order::getTax, &Order::setTax},
    {oTaxRate, &Order::getTaxRate, &Order::setTaxRate},
    {oTitle, &Order::getTitle, &Order::setTitle},
    {oType, &Order::getType, &Order::setType},
    {oValue, &Order::getValue, &Order::setValue},
    {oValueWithTax, &Order::getValueWithTax, &Order::setValueWithTax},
};

inline const TextField<Item> ItemTexts[] = {
    {iBought, &Item::getBought, &Item::setBought},
    {iCode, &Item::getCode, &Item::setCode},
    {iCondition, &Item::getCondition, &Item::setCondition},
    {iDescription, &Item::getDescription, &Item::setDescription},
    {iItem, &Item::getItem, &Item::setItem},
    {iOptimumQty, &Item::getOptimumQty, &Item::setOptimumQty},
    {iPrice, &Item::getPrice, &Item::setPrice},
    {iQty, &Item::getQty, &Item::setQty},
    {iShipping, &Item::getShipping, &Item::setShipping},
    {iStatus, &Item::getStatus, &Item::setStatus},
    {iSupplier, &Item::getSupplier, &Item::setSupplier},
    {iWarnlevel, &Item::getWarnlevel, &Item::setWarnlevel},
};

inline const TextField<Material> MaterialTexts[] = {
    {mCode, &Material::getCode, &Material::setCode},    {mCost, &Material::getCost, &Material::setCost},
    {mItem, &Material::getItem, &Material::setItem},    {mQty, &Material::getQty, &Material::setQty},
    {mTotal, &Material::getTotal, &Material::setTotal}, {mUnit, &Material::getUnit, &Material::setUnit},
};

inline const TextField<Bill> BillTexts[] = {
    {bAmount, &Bill::getAmount, &Bill::setAmount},
    {bCategory, &Bill::getCategory, &Bill::setCategory},
    {bDatePaid, &Bill::getDatePaid, &Bill::setDatePaid},
    {bDetails, &Bill::getDetails, &Bill::setDetails},
    {bName, &Bill::getName, &Bill::setName},
    {bNumber, &Bill::getNumber, &Bill::setNumber},
};

inline const TextField<Action> ActionTexts[] = {
    {aDetails, &Action::getDetails, &Action::setDetails},
    {aEndDate, &Action::getEndDate, &Action::setEndDate},
    {aEndTime, &Action::getEndTime, &Action::setEndTime},
    {aRate, &Action::getRate, &Action::setRate},
    {aStartDate, &Action::getStartDate, &Action::setStartDate},
    {aStartTime, &Action::getStartTime, &Action::setStartTime},
    {aTitle, &Action::getTitle, &Action::setTitle},
    {aTotalCharge, &Action::getTotalCharge, &Action::setTotalCharge},
    {aTotalTime, &Action::getTotalTime, &Action::setTotalTime},
    {aTotalTimeUnits, &Action::getTotalTimeUnits, &Action::setTotalTimeUnits},
};

}  // namespace database
