#include "items/ItemManager.h"

#include "platform/Localised.h"

ItemManager::ItemManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("items"), QStringLiteral("Delete Item"), parent),
      stockFilter(new PopUp(this))
{
    stockFilter->addItems({platform::localised("All"), platform::localised("In Stock")});
}
