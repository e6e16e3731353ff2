#include "app/kdKeyResponder.h"

#include "store/kdDataSource.h"

bool kdKeyResponder::keyDown(unsigned character)
{
    if (character != DeleteCharacter && character != DeleteFunctionKey && character != DeleteCharFunctionKey)
        return false;  // swallowed
    if (!owner)
        return false;
    owner->deleteKey();
    return true;
}
