// The program's idle loop on virtual time.
#pragma once
#include "core/Program.h"
#include "headless/HeadlessPlatform.h"

namespace headless {

// Passes while there is work, then time jumps to what is due next, until so much time has gone by and all
// that was due by then is done. False when no window is left. Failure when the loop finds work for ever at
// one moment.
bool runIdleLoop(Program& program, HeadlessPlatform& platform, Micros time);

} // namespace headless
