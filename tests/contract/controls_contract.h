// What the program may rely on from its controls, whatever shows them. A test program includes this once and
// defines contract::makeBackEnd; the same suite then runs without a window system and on native windows.
#pragma once
#include "contract/controls_contract_focus.h"
#include "contract/controls_contract_values.h"
#include "contract/controls_contract_windows.h"
