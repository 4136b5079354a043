#include "headless/IdleLoop.h"
#include "core/vbLock_mod.h"
#include "headless/Errors.h"
#include <algorithm>

namespace headless {

bool runIdleLoop(Program& program, HeadlessPlatform& platform, Micros time) {
  constexpr int kRestless = 100000; // passes at one moment
  VirtualClock& clock = platform.clock();
  HeadlessPump& pump = platform.pump();
  const Micros end = clock.micros() + time;
  Micros moment = clock.micros();
  int passes = 0;
  while (vbLock_mod::idlePass(program)) {
    const Micros now = clock.micros();
    passes = now == moment ? passes + 1 : 0;
    moment = now;
    if (passes > kRestless) throw Failure("the idle loop does not come to rest");
    if (!vbLock_mod::idleMayWait(program) || !pump.nothingWaits()) continue;
    const Micros next = pump.nextDue();
    if (next > end) {
      clock.advance(std::max<Micros>(end - now, 0));
      return true;
    }
    clock.advance(next - now);
  }
  return false;
}

} // namespace headless
