// Puts the simulated console behind the recorded host, so that both share the virtual clock, the transcript
// and the faults.
#pragma once
#include "headless/FakeHost.h"
#include "sim/Console.h"

namespace headless {

// From now on host answers as the console does. The console must outlive the host's use.
inline void connectConsole(FakeHost& host, const VirtualClock& clock, sim::Console& console) {
  host.answer = [&clock, &console, at = clock.micros()](int dispid,
                                                        std::span<const ports::HostArg> args) mutable {
    if (const Micros passed = clock.micros() - at; passed > 0) {
      at = clock.micros();
      console.advance(static_cast<double>(passed) / kSecond);
    }
    return std::optional<double>(console.call(dispid, args));
  };
}

} // namespace headless
