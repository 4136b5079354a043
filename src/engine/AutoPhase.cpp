#include "base/Rounding.h"
#include "core/Program.h"
#include "engine/AutoLock.h"
#include "engine/AutoLockShared.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/panels/frmControls.h"
#include <cmath>

namespace AutoLock {

namespace {

constexpr float kFineStep = 6; // degrees: at or below, the step shrinks one by one

void setPhaseControl(Program& program) {
  program.frmControls->vsPhase.setValue(base::toInt32(program.autoLock.PhaseSetting));
}

void forgetPhasing(AutoLockState& state) {
  state.PhaseRepeatCount = 0;
  state.PhaseSeenInPhase = kFalse;
}

void turn(Program& program, std::int32_t phaseWord) {
  AutoLockState& state = program.autoLock;
  state.PhaseSetting += state.DownPhaseWord > phaseWord ? state.PhaseStep : -state.PhaseStep;
  if (state.PhaseSetting > 180) state.PhaseSetting -= 360;
  if (state.PhaseSetting < -180) state.PhaseSetting += 360;
  setPhaseControl(program);
}

// A negative word on the way down: the signal stands upside down.
void turnOver(Program& program) {
  AutoLockState& state = program.autoLock;
  state.PhaseSetting += state.PhaseSetting <= 0 ? 180 : -180;
  setPhaseControl(program);
  if (sampleBesideSweep(program)) ActiveNMRAppInterface::LockModeAuto(program);
}

bool stepOutOfPhase(Program& program, std::int32_t phaseWord) {
  AutoLockState& state = program.autoLock;
  if (!state.PhaseSeenInPhase) state.PhaseRepeatCount = 1;
  if (state.PhaseStep > kFineStep) {
    state.PhaseStep = static_cast<float>(5.0 * state.PhaseDiff / state.PhaseThreshold);
  } else if (state.PhaseDiff < state.PrevPhaseDiff && state.PrevPhaseDiff != 0 && !state.PhaseSeenInPhase) {
    state.PhaseStep -= 1;
  }
  if (!(state.PhaseStep >= 1)) state.PhaseStep = 1;
  if (state.PhaseStep > 45) state.PhaseStep = 45;
  turn(program, phaseWord);
  return false;
}

bool stepInPhase(Program& program, std::int32_t phaseWord) {
  AutoLockState& state = program.autoLock;
  if (state.PhaseRepeatCount >= program.record.PhaseRepeatTimes && state.PhaseRepeatCount != 0) {
    forgetPhasing(state);
    return true;
  }
  if (state.PhaseRepeatCount != 0) { // still dithered with shrinking steps for the remaining repeats
    state.PhaseSeenInPhase = kTrue;
    ++state.PhaseRepeatCount;
    state.PhaseStep = state.PhaseStep <= kFineStep ? state.PhaseStep - 1 : 5;
    if (state.PhaseStep < 1) state.PhaseStep = 1;
    turn(program, phaseWord);
    return false;
  }
  // In phase at the very first comparison: the operator decides, AutoLock simply goes on.
  if (program.record.LockMode == kModePhase) {
    const std::uint32_t entered = program.cycle.modeChanges;
    const ports::Answer answer = program.platform.dialogs().message("It seems in phase, Continue anyway?",
                                                                    program.platform.version().title,
                                                                    ports::Buttons::YesNo, ports::Icon::None);
    if (program.cycle.modeChanges != entered) return false; // the answer is to a run that has been left
    if (answer == ports::Answer::Yes) {
      state.PhaseStep = 1;
      state.PhaseRepeatCount = 1;
      return false;
    }
  }
  forgetPhasing(state);
  return true;
}

} // namespace

bool AutoPhaseStep(Program& program, std::int32_t phaseWord, double peakMagnitude) {
  AutoLockState& state = program.autoLock;
  if (program.cycle.SweepRising == 0) {
    state.DownPhaseWord = phaseWord;
    state.downPhaseMagnitude = peakMagnitude;
    if (phaseWord < 0) turnOver(program);
    return false;
  }
  if (state.DownPhaseWord == 0) return false; // nothing to compare yet
  state.PhaseDiff = base::toInt32(std::abs(double(state.DownPhaseWord) - phaseWord));
  state.averageMagnitude = (state.downPhaseMagnitude + peakMagnitude) / 2;
  state.PhaseThreshold = static_cast<float>(program.record.PhaseThresholdFactor * state.averageMagnitude);
  const bool outOfPhase = double(state.PhaseThreshold) <= state.PhaseDiff;
  const bool finished = outOfPhase ? stepOutOfPhase(program, phaseWord) : stepInPhase(program, phaseWord);
  state.PrevPhaseDiff = state.PhaseDiff;
  return finished;
}

} // namespace AutoLock
