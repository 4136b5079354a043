// The automatic procedures: AutoLock finds, centres and scales the deuterium line and hands over to Lock;
// AutoPhase turns the receiver phase until both sweep directions look the same. Each is stepped once per
// sweep turn.
#pragma once
#include <cstdint>

class Program;

namespace AutoLock {

// Step routines: true when the step is finished. All pump (they call the host).
bool MeasureNoise(Program& program);
bool LocatePeak(Program& program, std::int32_t position, double magnitude, double tolerance);
bool AdjustGainToPeak(Program& program, double magnitude, double target, double tolerance);
bool AutoPhaseStep(Program& program, std::int32_t phaseWord, double peakMagnitude);
bool HandOverToLock(Program& program); // always false: Lock mode's gain trim carries the procedure on
bool AdjustGainToLockLevel(Program& program, std::int32_t level, double target, double tolerance);

// Runs the present AutoLock step on a completed half sweep; moves on when the step is finished.
void runStep(Program& program, std::int32_t peakPosition, double peakMagnitude);

void ShowPeakThreshold(Program& program);  // the threshold line and the two peak labels, while ThresholdShown
void ErasePeakThreshold(Program& program); // the line only

} // namespace AutoLock
