// The simulated console's class and type library in the registry. Clients in other processes reach the
// console's own interface only when its type library is registered.
#pragma once
#include "win32/Win.h"

namespace win32 {

// Machine-wide, or for this user when the machine's registry may not be written. 0, or the system's error
// number.
LSTATUS registerConsole();
LSTATUS unregisterConsole();
bool consoleIsRegistered(); // with this very exe

} // namespace win32
