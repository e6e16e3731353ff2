#include "orders/BOMManager.h"

BOMManager::BOMManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("materials"), QStringLiteral("Delete Item"), parent)
{
}
