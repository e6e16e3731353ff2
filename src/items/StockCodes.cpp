#include "items/StockCodes.h"

#include "items/Item.h"
#include "store/kdDataSource.h"

StockCodes::StockCodes(const kdDataSource &list)
    : items(list)
{ }

Item *StockCodes::itemWithCode(const QString &code)
{
    const QString wanted = key(code);
    if (wanted.isEmpty())
        return nullptr;
    if (stale || generation != items.getGeneration())
        rebuild();
    Item *found = byCode.value(wanted);
    if (found && key(found->getCode()) != wanted) {
        // Its code was changed behind the index's back (a file read into it).
        rebuild();
        found = byCode.value(wanted);
    }
    return found;
}

void StockCodes::rebuild()
{
    byCode.clear();
    byCode.reserve(items.getCount());
    const int count = items.getCount();
    for (int n = 0; n < count; ++n) {
        auto *item = static_cast<Item *>(items.getnthItem(n));
        const QString code = key(item->getCode());
        if (!code.isEmpty() && !byCode.contains(code))
            byCode.insert(code, item);
    }
    generation = items.getGeneration();
    stale = false;
}
