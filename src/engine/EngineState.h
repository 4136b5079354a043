// Run-time state of the lock acquisition cycle, AutoLock and AutoPhase, and the plot cursor they draw with.
#pragma once
#include <array>
#include <cstdint>

using LockSampleArray = std::array<std::int32_t, 101>; // one tick fills 0 to 8

struct CycleState {
  std::int32_t LockLevelThreshold = 0, LockErrorThreshold = 0;
  std::int32_t SweepRising = 0; // 1 while the field sweep runs upward
  std::int16_t SweepTurnCount = 0;
  std::int32_t PeakPower = 0, PeakPhaseWord = 0;
  double PeakLevel = 0;
  // Counts mode buttons, and modes taken over from the hardware: tells a routine that yielded whether a newer
  // change overtook it.
  std::uint32_t modeChanges = 0;
  LockSampleArray LockSample{}; // the words of the last read made by a mode change
};

struct PlotCursor {
  std::int32_t previousX = 0, x = 0;
  std::int32_t previousLevel = 0, previousError = 0, previousMagnitude = 0;
  std::int32_t levelAverage = 0; // running average of the level meter
  std::int32_t lastDac = 0;      // for the sweep-turn detector
  std::int16_t direction = 0;    // of the time-based trace: +1 or -1, 0 before the first tick
  float leftEdge = 0, rightEdge = 0, centre = 0, plotWidth = 0, plotHeight = 0;
  std::array<float, 9> gridY{}; // horizontal grid lines
  float PlotTop = 0, PlotBottom = 0;
};

struct AutoLockState {
  std::int16_t AutoLockStep = 0; // 0 to 5
  std::int32_t NoisePower = 0;
  double NoiseThreshold = 0; // in magnitude units
  std::int16_t SearchDirection = 0, SearchCount = 0;
  bool ThresholdShown = false, PeakSearchActive = false, SearchRestart = false;
  std::int16_t AutoLockTrim = 0, AutoLockTrimDone = 0, AutoLockTrimTicks = 0;

  // Work record.
  std::int32_t downPosition = 0; // peak position of the last downward half sweep
  std::int32_t lastCentre = 0;   // last centre applied
  double downPeakMagnitude = 0;
  std::int32_t startCentre = 0; // field centre of the noise measurement
  std::array<std::int32_t, 6> noiseSamples{};
  std::int16_t noiseCount = 0;

  // AutoPhase.
  float PhaseSetting = 0, PhaseStep = 0; // degrees
  std::int32_t DownPhaseWord = 0;        // 0: none yet
  double downPhaseMagnitude = 0;
  std::int32_t PhaseDiff = 0, PrevPhaseDiff = 0;
  double averageMagnitude = 0;
  float PhaseThreshold = 0;
  std::int32_t PhaseRepeatCount = 0;
  std::int16_t PhaseSeenInPhase = 0;
};
