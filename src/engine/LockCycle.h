// One tick of the lock acquisition cycle: reads the lock words, judges the lock, logs, steps the automatic
// procedures, draws the traces.
#pragma once
#include <cstdint>

class Program;

namespace vbLock_mod {

void LockCycle(Program& program); // Pumps: handlers, ticks and client calls may run inside.
bool DetectSweepTurn(Program& program,
                     std::int32_t dac); // true when the field sweep turned since the last call
void deriveThresholds(Program& program, std::int32_t noise); // 16 x noise, and that divided by NoiseFactor

} // namespace vbLock_mod
