#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "core/Program.h"
#include "display/PlotScale.h"
#include "engine/LockCycle.h"
#include "hostlink/ActiveNMRAppInterface.h"

namespace ActiveNMRAppInterface {

namespace {
constexpr double kProbeOffset = 0.013245; // MHz beside the line: only noise is received there
}

void ReadLockData(Program& program, LockSampleArray& words) {
  if (program.doEvents() == 0) return;
  for (std::int32_t i = 0; i <= 8; ++i) {
    program.doEvents();
    base::ignoringErrors(
        [&] { words[static_cast<std::size_t>(i)] = HostGetLockData(program, i, IndexPassing::ByReference); });
    program.doEvents();
  }
}

void SetSweepBounds(Program& program, const std::int32_t& lower, const std::int32_t& upper,
                    const std::int32_t& speed) {
  HostSetLockField(program, program.record.FieldCenter);
  HostSetLockSweepWidth(program, static_cast<double>(upper) - lower);
  SetSweepSpeed(program, program.record.SweepSpeed);
  HostSetLockSweepSpeed(program, speed);
}

void SendSweepSettings(Program& program) {
  const LockParameters& record = program.record;
  SetSweepBounds(program, record.SweepLower, record.SweepUpper, record.SweepSpeedNow);
}

void SampleLockData(Program& program) {
  const std::uint32_t entered = program.cycle.modeChanges;
  HostSetLockFrequency(program, program.record.Frequency + kProbeOffset);
  // A mode button pressed meanwhile has set the hardware's mode; only the frequency is still put back.
  if (program.cycle.modeChanges == entered) HostSetLockMode(program, 7);
  HostSetLockFrequency(program, program.record.Frequency);
  LockSampleArray sample{};
  ReadLockData(program, sample); // the read itself is what settles the sample; its words are not used here
}

void HoldAtField(Program& program, std::int32_t field) {
  HostSetLockMode(program, 3);
  HostSetLockField(program, field);
}

void LockModeOff(Program& program) {
  const std::uint32_t entered = program.cycle.modeChanges;
  HoldAtField(program, program.record.FieldCenterNow);
  if (program.cycle.modeChanges != entered) return; // a newer mode button has the hardware now
  HostSetLockMode(program, 0);
  vbLock_mod::LockCycle(program); // the display shows the new state without waiting for the timer
}

void SetLockPhase(Program& program, double& degrees) {
  // One turn is added once and none is taken off: the hardware folds the rest itself.
  if (degrees < 0) degrees += 360;
  program.record.PhaseMilliTurns = base::toInt32(degrees / 360 * 1000) % 1000;
  if (!program.record.Initializing) HostSetLockPhase(program, degrees);
}

void SendLockPhase(Program& program) {
  double degrees = program.record.LockPhase;
  SetLockPhase(program, degrees);
}

void SetLockRxGain(Program& program, std::int32_t gain) { HostSetLockRxGain(program, gain); }

void SetLockLoop(Program& program, float p, float i, float d) {
  HostSetLockLoopParam(program, 0, p);
  HostSetLockLoopParam(program, 1, i);
  HostSetLockLoopParam(program, 2, d);
}

void SendLoopConstants(Program& program) {
  SetLockLoop(program, program.record.LoopP, program.record.LoopI, program.record.LoopD);
}

void SetSweepSpeed(Program& program, std::int32_t speed) {
  program.record.SweepSpeedNow = speed;
  program.record.SweepSpeed = speed;
  if (!program.record.Initializing) HostSetLockSweepSpeed(program, speed);
}

void SetSweepWidth(Program& program, std::int32_t width) {
  LockParameters& record = program.record;
  record.SweepWidth = width;
  record.SweepUpper = base::toInt32(width / 2.0 + record.FieldCenterNow);
  record.SweepLower = base::toInt32(record.FieldCenterNow - width / 2.0);
  PlotScale::SetupPlot(program);
  if (record.Initializing) return;
  HostSetLockField(program, record.FieldCenter);
  HostSetLockSweepWidth(program, width);
}

} // namespace ActiveNMRAppInterface
