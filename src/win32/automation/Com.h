// The COM interfaces we implement or call, ours among them.
#pragma once
#include "win32/Win.h"
// Interfaces are released, never deleted: none has a virtual destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#include "NMRLock_i.h"
#include <objidl.h>
#include <ocidl.h>
#include <oleauto.h>
