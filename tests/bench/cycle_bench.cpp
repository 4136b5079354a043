// The panel's own work: one lock cycle with a host that costs nothing and a canvas that only records, and
// whole simulated ticks a second with and without the spins' physics. One core, one run.
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "engine/LockCycle.h"
#include "headless/HeadlessPlatform.h"
#include "headless/Operator.h"
#include "headless/SimulatedHost.h"
#include "sim/Console.h"
#include "support/AutoLockRun.h"
#include "ui/main/frmLock.h"
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>

namespace {

using Timepoint = std::chrono::steady_clock::time_point;

double secondsSince(Timepoint start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Panel {
  Panel() {
    platform.memorySettings().text(headless::HeadlessPlatform::kIniPath) = support::defaultSettings();
    platform.transcript().want(headless::Transcript::Kind::Call, false);
    program.emplace(platform);
  }
  void freeHost() { // a triangle sweep with a signal, at no cost
    platform.host().answer = [n = 0](int dispid, std::span<const ports::HostArg> args) mutable {
      if (dispid != 201) return std::optional<double>(0);
      const int word = static_cast<int>(args[0].value);
      if (word == 0) n = (n + 100) % 20000;
      return std::optional<double>(word == 0 ? (n < 10000 ? n : 20000 - n) - 5000 : n % 500);
    };
  }
  void start(const char* mode) {
    vbLock_mod::startUp(*program);
    headless::Operator(program->desktop, platform.windows()).press(mode);
  }
  // The idle loop on virtual time for so many timer ticks.
  void ticks(int count) {
    const headless::Micros end = platform.clock().micros() + count * 10 * headless::kMillisecond;
    while (platform.clock().micros() < end && vbLock_mod::idlePass(*program)) {
      if (!vbLock_mod::idleMayWait(*program) || !platform.pump().nothingWaits()) continue;
      platform.clock().advance(std::min(platform.pump().nextDue(), end) - platform.clock().micros());
    }
  }
  headless::HeadlessPlatform platform;
  std::optional<Program> program;
};

double nanosecondsPerCycle() {
  Panel panel;
  panel.freeHost();
  panel.start("Sweep");
  double best = 1e9;
  for (int round = 0; round < 20; ++round) {
    constexpr int kCycles = 20000;
    const Timepoint start = std::chrono::steady_clock::now();
    for (int i = 0; i < kCycles; ++i) vbLock_mod::LockCycle(*panel.program);
    best = std::min(best, secondsSince(start) / kCycles * 1e9);
  }
  return best;
}

template <class Prepare> double ticksPerSecond(const char* mode, int count, Prepare prepare) {
  Panel panel;
  prepare(panel);
  panel.start(mode);
  const Timepoint start = std::chrono::steady_clock::now();
  panel.ticks(count);
  return count / secondsSince(start);
}

} // namespace

int main() {
  const double cycle = nanosecondsPerCycle();
  const double without = ticksPerSecond("Sweep", 2000000, [](Panel& panel) { panel.freeHost(); });
  std::optional<sim::Console> console;
  const auto withSpins = [&](Panel& panel) {
    console.emplace(sim::Settings{});
    headless::connectConsole(panel.platform.host(), panel.platform.clock(), *console);
  };
  const double sweeping = ticksPerSecond("Sweep", 500000, withSpins);
  const double locked = ticksPerSecond("Lock", 500000, withSpins);
  std::printf("one lock cycle, own work:            %8.0f ns\n", cycle);
  std::printf("ticks a second without physics:      %8.0f  (%.2f of 1,000,000)\n", without, without / 1e6);
  std::printf("ticks a second sweeping, with spins: %8.0f  (%.2f of 100,000)\n", sweeping, sweeping / 1e5);
  std::printf("ticks a second locked, with spins:   %8.0f  (%.2f of 100,000)\n", locked, locked / 1e5);
}
