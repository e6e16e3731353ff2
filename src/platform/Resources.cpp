#include "platform/Resources.h"

#include <QtGlobal>
#include <mutex>

// Q_INIT_RESOURCE declares a function of the global namespace, so it must be
// called from outside any namespace.
static void registerCoreResources()
{
    Q_INIT_RESOURCE(quorvel_core);
}

namespace platform {

void initResources()
{
    static std::once_flag registered;
    std::call_once(registered, registerCoreResources);
}

}  // namespace platform
