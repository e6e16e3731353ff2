#include "store/LegacyImport.h"

#include "accounts/Bill.h"
#include "contacts/Contact.h"
#include "items/Item.h"
#include "orders/Material.h"
#include "orders/Order.h"
#include "platform/Folders.h"
#include "platform/Numbers.h"
#include "store/Parser.h"
#include "store/kdDataSource.h"
#include "tasks/Action.h"

#include <QFileInfo>
#include <array>
#include <memory>

namespace legacyImport {

namespace {

enum Kind { None = -1, ItemKind, MaterialKind, ActionKind, ContactKind, OrderKind, BillKind, KindCount };

Kind kindOf(const QString &element)
{
    if (element == QLatin1String("product"))
        return ItemKind;
    if (element == QLatin1String("material"))
        return MaterialKind;
    if (element == QLatin1String("action"))
        return ActionKind;
    if (element == QLatin1String("contact"))
        return ContactKind;
    if (element == QLatin1String("order"))
        return OrderKind;
    if (element == QLatin1String("bill"))
        return BillKind;
    return None;
}

std::shared_ptr<dataObject> fresh(Kind kind)
{
    switch (kind) {
    case ItemKind:
        return std::make_shared<Item>();
    case MaterialKind:
        return std::make_shared<Material>();
    case ActionKind:
        return std::make_shared<Action>();
    case ContactKind:
        return std::make_shared<Contact>();
    case OrderKind:
        return std::make_shared<Order>();
    case BillKind:
        return std::make_shared<Bill>();
    default:
        return nullptr;
    }
}

// The record's own setter by field name.
void setField(Kind kind, dataObject &record, const QString &name, const QString &value)
{
    switch (kind) {
    case ItemKind:
        static_cast<Item &>(record).setFieldByName(name, value);
        break;
    case MaterialKind:
        static_cast<Material &>(record).setFieldByName(name, value);
        break;
    case ActionKind:
        static_cast<Action &>(record).setFieldByName(name, value);
        break;
    case ContactKind:
        static_cast<Contact &>(record).setFieldByName(name, value);
        break;
    case OrderKind:
        static_cast<Order &>(record).setFieldByName(name, value);
        break;
    case BillKind:
        static_cast<Bill &>(record).setFieldByName(name, value);
        break;
    default:
        break;
    }
}

}  // namespace

Counts importFile(const QString &path, Collections to, const std::function<void(qint64, qint64)> &progress)
{
    kdDataSource *const targets[KindCount]
        = {&to.items, &to.materials, &to.actions, &to.contacts, &to.orders, &to.bills};
    for (kdDataSource *target : targets)
        target->clear();

    std::array<std::shared_ptr<dataObject>, KindCount> pending;
    for (int kind = 0; kind < KindCount; ++kind)
        pending[size_t(kind)] = fresh(Kind(kind));
    Kind current = None;
    Counts counts;
    int *const counted[KindCount]
        = {&counts.items, &counts.materials, &counts.actions, &counts.contacts, &counts.orders, &counts.bills};
    const auto commit = [&] {
        if (current == None)
            return;
        targets[current]->add(pending[size_t(current)]);
        ++*counted[current];
        pending[size_t(current)] = fresh(current);
    };

    Parser parser;
    parser.initWithFilePath(path);
    const qint64 size = parser.length();
    qint64 reported = 0;
    while (const std::unique_ptr<DbItem> item = parser.getItem()) {
        const Kind kind = kindOf(item->getParentName());
        if (item->isNewParent()) {
            commit();
            current = kind;
        }
        if (kind == None)
            continue;
        dataObject &record = *pending[size_t(kind)];
        setField(kind, record, item->getName(), item->getData());
        if (kind == OrderKind && item->getName() == QLatin1String("contactId")
            && item->getData() != QLatin1String("0")) {
            // Against the contacts imported so far.
            auto *contact = dynamic_cast<Contact *>(to.contacts.getItemById(platform::intValue(item->getData())));
            static_cast<Order &>(record).setContact(contact);
        }
        if (progress && qint64(parser.position()) - reported > (1 << 20)) {
            reported = parser.position();
            progress(reported, size);
        }
    }
    commit();
    for (int n = 0; n < to.orders.getCount(); ++n)
        counts.linked += static_cast<Order *>(to.orders.getnthItem(n))->getContact() ? 1 : 0;
    if (progress)
        progress(size, size);
    return counts;
}

QString backupPath(const QString &bundle, const QDateTime &now)
{
    return bundle + QStringLiteral(".before-import-") + now.toString(QStringLiteral("yyyyMMdd-HHmmss"));
}

QString keepCopyOfBundle(const QString &bundle, const QDateTime &now, QString *error)
{
    if (!QFileInfo(bundle).isDir())
        return QString();
    QString copy = backupPath(bundle, now);
    // Two imports within a second keep both copies.
    for (int n = 2; QFileInfo::exists(copy); ++n)
        copy = backupPath(bundle, now) + QStringLiteral("-%1").arg(n);
    if (!platform::copyFolder(bundle, copy, error))
        return QString();
    return copy;
}

bool copyAttachments(const QString &from, const QString &to)
{
    return platform::copyFolder(from, to);
}

}  // namespace legacyImport
