#include "tasks/ActionManager.h"

#include "platform/Localised.h"

ActionManager::ActionManager(Quorvel *controller, QObject *parent)
    : ListManager(controller, QStringLiteral("tasks"), QStringLiteral("Delete Task"), parent),
      filterPopUp(new PopUp(this))
{
    filterPopUp->addItems({platform::localised("All"), platform::localised("Incomplete")});
}
