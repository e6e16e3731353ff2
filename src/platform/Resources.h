#pragma once
// The resources compiled into the core library (the string tables under
// ":/core/strings/", the icons under ":/core/icons/"). A static library's
// resources are linked in only when something refers to them: call this once
// before the first look-up (installStringTable does it itself). Calling it
// again does nothing.
namespace platform {

void initResources();

}  // namespace platform
