#include "engine/LockCycle.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "display/PlotScale.h"
#include "engine/AutoLock.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/LockLog.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmLevel.h"
#include <cmath>
#include <cstdlib>

namespace vbLock_mod {

namespace {

constexpr std::int32_t kNoData = -1;       // the DAC word when the host has nothing usable
constexpr std::int32_t kTraceStep = 10;    // scale units a tick, time-based trace
constexpr std::int16_t kTrimInterval = 20; // ticks between two gain trims

struct Words {
  const LockSampleArray& word;
  std::int32_t magnitude;
  std::int32_t dac() const { return word[0]; }
  std::int32_t level() const { return word[1]; }
  std::int32_t error() const { return word[2]; }
};

std::int32_t magnitudeOf(const LockSampleArray& word) {
  return base::toInt32(std::sqrt(double(word[1]) * word[1] + double(word[2]) * word[2]));
}

// The trace runs to the right edge, comes back over what it drew, and starts on an empty plot at the left
// edge.
std::int32_t advanceTimeTrace(Program& program) {
  controls::PictureBox& picture = program.frmLock->Picture1;
  PlotCursor& cursor = program.cursor;
  std::int32_t x = base::toInt32(double(cursor.previousX) + cursor.direction * kTraceStep);
  const float left = picture.scaleLeft(), right = picture.scaleLeft() + picture.scaleWidth();
  if (right < static_cast<float>(x)) {
    cursor.direction = -1;
    x = base::toInt32(right);
  } else if (left > static_cast<float>(x)) {
    cursor.direction = 1;
    picture.cls();
    PlotScale::RedrawPlotBackground(program);
    x = base::toInt32(left);
  }
  return x;
}

std::int32_t followField(Program& program, std::int32_t dac, bool& turned) {
  turned = DetectSweepTurn(program, dac);
  if (turned && program.cycle.SweepRising == 1) {
    program.frmLock->Picture1.cls();
    PlotScale::RedrawPlotBackground(program);
  }
  return dac;
}

std::int32_t tracePosition(Program& program, std::int32_t dac, bool& turned) {
  switch (program.record.LockMode) {
  case kModeLock:
  case kModeHold:
    return advanceTimeTrace(program);
  case kModeSweep:
  case kModeAuto:
  case kModePhase:
    return followField(program, dac, turned);
  default:
    return 0;
  }
}

void showWords(Program& program, const Words& words) {
  controls::StatusBar& bar = program.frmLock->StatusBar1;
  bar.setText(1, "DAC:" + base::numberText(words.dac()));
  bar.setText(2, "Lvl:" + base::numberText(words.level()));
  bar.setText(3, "Err:" + base::numberText(words.error()));
}

void judge(Program& program, const Words& words) {
  const bool searching = std::abs(double(words.word[4])) >= program.cycle.LockErrorThreshold ||
                         words.word[3] <= program.cycle.LockLevelThreshold;
  program.record.LockStatus = searching ? "SEARCHING..." : "LOCKED";
  program.record.LockState = searching ? kSearching : kLocked;
  base::ignoringErrors([&] { ActiveNMRAppInterface::HostSetLockedFlag(program, searching ? 0 : -1); });
}

// The last phase of AutoLock, run inside Lock mode: brings the locked level to its target.
void trimGain(Program& program, const Words& words) {
  AutoLockState& state = program.autoLock;
  LockParameters& record = program.record;
  const std::string judged = record.LockStatus;
  if (state.AutoLockTrimDone) {
    record.LockStatus = judged + " : AutoLock Done";
    return;
  }
  ++state.AutoLockTrimTicks;
  // The wording says 500 whatever the target is: scripts wait for this very text.
  record.LockStatus = judged + " : Adjusting Rx gain to set lock level (500)";
  if (state.AutoLockTrimTicks <= kTrimInterval) return;
  if (AutoLock::AdjustGainToLockLevel(program, words.level(), record.SetLockLevel,
                                      base::toInt32(record.SetLockLevel / 10.0))) {
    record.LockStatus = judged + " : AutoLock Done";
    state.AutoLockTrimDone = kTrue;
  }
  state.AutoLockTrimTicks = 0;
  // Unlike on entering Lock, a word without noise here makes the judgement strict and warns nobody.
  const std::int32_t power = words.word[6];
  deriveThresholds(program, power > 0 ? base::toInt32(std::sqrt(power)) : 32767);
}

void lockModeTick(Program& program, const Words& words) {
  judge(program, words);
  if (program.record.LockMode != kModeLock) return; // telling the host let another mode button in
  if (program.record.LogEnabled) LockLog::WriteLogLine(program, words.dac(), words.level(), words.error());
  if (program.record.LockMode == kModeLock && program.autoLock.AutoLockTrim) trimGain(program, words);
}

// Peak power, phase word and peak magnitude of the half sweep that just ended. False when there was no peak.
bool takePeak(Program& program, const Words& words, double& magnitude) {
  CycleState& cycle = program.cycle;
  const double power = double(words.word[5] & 65535) * 65536 + double(words.word[4] & 65535);
  cycle.PeakPower = base::toInt32(power);
  cycle.PeakPhaseWord = words.word[7];
  magnitude = cycle.PeakPower > 0 ? std::sqrt(cycle.PeakPower) : 0;
  return cycle.PeakPower != 0;
}

void autoModeTurn(Program& program, const Words& words) {
  // The first turn after entering the mode only arms: the first step works on a complete half sweep.
  if (program.cycle.SweepTurnCount != 1) {
    program.cycle.SweepTurnCount = 1;
    return;
  }
  double magnitude = 0;
  const bool peak = takePeak(program, words, magnitude);
  program.cycle.PeakLevel = words.word[3];
  if (peak) AutoLock::runStep(program, base::toInt32(words.word[6] * 4.0), magnitude);
}

void phaseModeTurn(Program& program, const Words& words) {
  if (program.cycle.SweepTurnCount != 1) {
    ++program.cycle.SweepTurnCount;
    return;
  }
  double magnitude = 0;
  if (!takePeak(program, words, magnitude)) return;
  const std::uint32_t entered = program.cycle.modeChanges;
  if (!AutoLock::AutoPhaseStep(program, program.cycle.PeakPhaseWord, magnitude)) return;
  if (program.cycle.modeChanges != entered) return; // the operator chose a mode while the question stood open
  program.record.LockStatus = "AutoPhase Done";
  program.frmLock->pressModeButton(program.record.PreviousLockMode + 1);
}

void drawTraces(Program& program, std::int32_t x, const Words& words) {
  controls::PictureBox& picture = program.frmLock->Picture1;
  PlotCursor& cursor = program.cursor;
  const LockParameters& record = program.record;
  picture.setDrawWidth(1);
  // A jump of a tenth of the width or more is the wrap at the end of a sweep.
  if (std::abs(double(x) - cursor.previousX) < picture.scaleWidth() * 0.1 && picture.visible()) {
    const auto segment = [&](std::int32_t from, std::int32_t to, controls::Colour colour) {
      picture.line(static_cast<float>(cursor.previousX), static_cast<float>(from), static_cast<float>(x),
                   static_cast<float>(to), colour);
    };
    if (record.ShowReal) segment(cursor.previousLevel, words.level(), controls::rgb(255, 64, 64));
    if (record.ShowImag) segment(cursor.previousError, words.error(), controls::rgb(0, 255, 0));
    if (record.ShowMagnitude)
      segment(cursor.previousMagnitude, words.magnitude, controls::rgb(128, 128, 255));
  }
  cursor.previousX = cursor.x = x;
  cursor.previousLevel = words.level();
  cursor.previousError = words.error();
  cursor.previousMagnitude = words.magnitude;
}

void feedLevelMeter(Program& program, std::int32_t level) {
  ::frmLevel* meter = program.frmLevel.ifLoaded();
  if (!meter || !meter->visible()) return;
  const double length = program.record.DisplayFilter;
  std::int32_t& average = program.cursor.levelAverage;
  average = base::toInt32(((length - 1) * average + level) / length);
  meter->txtLockLevel.setText(base::numberText(average));
}

} // namespace

bool DetectSweepTurn(Program& program, std::int32_t dac) {
  std::int32_t& rising = program.cycle.SweepRising;
  const std::int32_t last = std::exchange(program.cursor.lastDac, dac);
  if (dac > last && rising == 0) {
    rising = 1;
    return true;
  }
  if (dac < last && rising == 1) {
    rising = 0;
    return true;
  }
  return false;
}

void deriveThresholds(Program& program, std::int32_t noise) {
  program.cycle.LockLevelThreshold = base::toInt32(noise * 16.0);
  program.cycle.LockErrorThreshold = base::toInt32(noise * 16.0 / program.record.NoiseFactor);
}

void LockCycle(Program& program) {
  LockSampleArray sample{};
  if (program.cursor.direction == 0) program.cursor.direction = 1;
  ActiveNMRAppInterface::ReadLockData(program, sample);
  const Words words{sample, magnitudeOf(sample)};
  if (words.dac() == kNoData) return;
  bool turned = false;
  const std::int32_t x = tracePosition(program, words.dac(), turned);
  showWords(program, words);
  if (program.record.LockMode == kModeLock)
    lockModeTick(program, words);
  else if (program.record.LockMode == kModeAuto && turned)
    autoModeTurn(program, words);
  else if (program.record.LockMode == kModePhase && turned)
    phaseModeTurn(program, words);
  program.frmLock->showStatus();
  drawTraces(program, x, words);
  feedLevelMeter(program, words.level());
}

} // namespace vbLock_mod
