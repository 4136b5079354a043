// The identifiers that the interface definition only declares.
#include <initguid.h>
// before the interfaces
#include "win32/automation/Com.h"
