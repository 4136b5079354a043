#include "engine/AutoLock.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "engine/AutoLockShared.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmSweep.h"
#include <algorithm>
#include <cmath>

namespace AutoLock {

namespace {

constexpr std::int32_t kNoiseSweepSpeed = 65536, kNoiseSweepWidth = 8192;
constexpr int kNoiseSamples = 5;

std::int32_t centreText(Program& program) {
  return base::toInt32(StrToFloatVal(program.frmLock->txtCenter.text()));
}

void applyCentre(Program& program, std::int32_t centre) {
  program.frmLock->typeCentre(base::numberText(centre));
}

void setSweepPanel(Program& program, std::int32_t speed, std::int32_t width) {
  ::frmSweep& panel = program.frmSweep.get();
  panel.cmbSweepSpeed.setText(base::numberText(speed));
  panel.cmbSweepWidth.setText(base::numberText(width));
  panel.ApplyBoth();
}

// The mean of the samples without the largest and the smallest, the first of equal ones. Five equal samples
// have one index for both: only one is left out and the sum of four is divided by three all the same;
// thresholds have always been set on that.
std::int32_t trimmedMean(const std::array<std::int32_t, 6>& samples) {
  const auto end = samples.begin() + kNoiseSamples;
  const auto largest = std::max_element(samples.begin(), end);
  const auto smallest = std::min_element(samples.begin(), end);
  double sum = 0;
  for (auto sample = samples.begin(); sample != end; ++sample)
    if (sample != largest && sample != smallest) sum += *sample;
  return base::toInt32(sum / 3);
}

std::int32_t nextNoiseField(Program& program) {
  AutoLockState& state = program.autoLock;
  const double width = program.record.SweepWidth;
  ++state.SearchCount;
  state.startCentre = centreText(program);
  if (state.SearchDirection != 0) {
    state.SearchDirection = static_cast<std::int16_t>(-state.SearchDirection);
  } else {
    state.SearchDirection = -1;
    if (state.startCentre != 0) state.SearchCount = 0, state.startCentre = 0;
  }
  return base::toInt32(state.startCentre + state.SearchDirection * state.SearchCount * width);
}

double gainFor(Program& program, double target, double seen) {
  const double gain = StrToFloatVal(program.frmControls->txtRxGain.text()) * target / seen;
  return gain > 0 ? std::min(gain, 10000.0) : 0; // nothing seen at all (0/0) leaves no gain to ask for
}

void moveSearch(Program& program) {
  AutoLockState& state = program.autoLock;
  program.record.LockStatus = "Locating a peak";
  ++state.SearchCount;
  const double half = program.record.SweepWidth / 2.0;
  double centre = 0;
  if (state.SearchDirection == 0 && centreText(program) != 0) {
    state.SearchDirection = -1;
    state.SearchCount = 0;
  } else {
    state.SearchDirection =
        static_cast<std::int16_t>(state.SearchDirection == 0 ? -1 : -state.SearchDirection);
    centre = program.record.SweepLower + half + state.SearchDirection * state.SearchCount * half;
  }
  applyCentre(program, base::toInt32(centre));
}

void endPeakSearch(Program& program) {
  program.autoLock.PeakSearchActive = false;
  program.autoLock.ThresholdShown = false;
}

void enterStep(Program& program, std::int16_t step, const char* status) {
  program.autoLock.AutoLockStep = step;
  program.record.LockStatus = status;
}

} // namespace

bool sampleBesideSweep(Program& program) {
  const std::uint32_t entered = program.cycle.modeChanges;
  ActiveNMRAppInterface::SampleLockData(program);
  return program.cycle.modeChanges == entered;
}

bool MeasureNoise(Program& program) {
  AutoLockState& state = program.autoLock;
  const std::uint32_t entered = program.cycle.modeChanges;
  if (state.noiseCount == 0) setSweepPanel(program, kNoiseSweepSpeed, kNoiseSweepWidth);
  if (program.cycle.modeChanges != entered) return false;
  applyCentre(program, nextNoiseField(program));
  if (program.cycle.modeChanges != entered) return false;
  if (state.noiseCount < kNoiseSamples) {
    if (!sampleBesideSweep(program)) return false;
    const std::int32_t power = ActiveNMRAppInterface::HostGetLockData(program, 6);
    if (program.cycle.modeChanges != entered) return false;
    state.NoisePower = power;
    state.noiseSamples[static_cast<std::size_t>(state.noiseCount++)] = power;
    ActiveNMRAppInterface::LockModeAuto(program);
    return false;
  }
  state.NoisePower = trimmedMean(state.noiseSamples);
  state.noiseCount = 0;
  setSweepPanel(program, program.record.AutoLockSweepSpeed, program.record.AutoLockSweepWidth);
  if (program.cycle.modeChanges != entered) return false;
  state.SearchCount = state.SearchDirection = 0;
  return true;
}

bool LocatePeak(Program& program, std::int32_t position, double magnitude, double tolerance) {
  AutoLockState& state = program.autoLock;
  if (!state.ThresholdShown) {
    state.ThresholdShown = true;
    ShowPeakThreshold(program);
  }
  if (state.SearchRestart) {
    state.SearchRestart = false;
    state.downPosition = state.lastCentre = 0;
    state.SearchCount = state.SearchDirection = 0;
    if (sampleBesideSweep(program)) ActiveNMRAppInterface::LockModeAuto(program);
    return false;
  }
  if (magnitude < state.NoiseThreshold || state.NoiseThreshold < 0) {
    moveSearch(program);
    return false;
  }
  program.record.LockStatus = "Found a peak; Centering it";
  if (program.cycle.SweepRising == 0) {
    state.downPosition = position;
    return false;
  }
  // Averaging the two directions cancels the sweep's lag.
  const std::int32_t average = base::toInt32((double(state.downPosition) + position) / 2);
  if (std::abs(double(state.lastCentre) - average) > tolerance) {
    state.lastCentre = average;
    applyCentre(program, average);
    return false;
  }
  state.lastCentre = state.downPosition = 0;
  state.SearchCount = state.SearchDirection = 0;
  return true;
}

bool AdjustGainToPeak(Program& program, double magnitude, double target, double tolerance) {
  AutoLockState& state = program.autoLock;
  if (program.cycle.SweepRising == 0) {
    state.downPeakMagnitude = magnitude;
    return false;
  }
  const double average = (state.downPeakMagnitude + magnitude) / 2;
  if (target - tolerance < average && average < target + tolerance) return true;
  program.frmControls->vsRxGain.setValue(base::toInt32(gainFor(program, target, average)));
  return false;
}

bool AdjustGainToLockLevel(Program& program, std::int32_t level, double target, double tolerance) {
  if (target - tolerance < level && level < target + tolerance) return true;
  program.frmControls->vsRxGain.setValue(base::toInt32(gainFor(program, target, level)));
  return false;
}

bool HandOverToLock(Program& program) {
  program.autoLock.AutoLockTrim = kTrue;
  program.frmLock->pressModeButton(frmLock::ButtonLock);
  return false;
}

void runStep(Program& program, std::int32_t peakPosition, double peakMagnitude) {
  AutoLockState& state = program.autoLock;
  const LockParameters& record = program.record;
  switch (state.AutoLockStep) {
  case 0:
    program.record.LockStatus = "Acquiring noise power";
    if (!MeasureNoise(program)) return;
    enterStep(program, 1, "Locating a peak");
    state.NoiseThreshold = std::sqrt(std::abs(double(state.NoisePower))) * record.PeakThresholdFactor;
    state.PeakSearchActive = true;
    return;
  case 1:
    if (!LocatePeak(program, peakPosition, peakMagnitude, 1000)) return;
    enterStep(program, 2, "Adjusting Rx gain to set peak magn (2000)"); // says 2000 whatever the target is
    endPeakSearch(program);
    return;
  case 2:
    if (!AdjustGainToPeak(program, peakMagnitude, record.SetPeakMagn, record.SetPeakMagn / 10)) return;
    enterStep(program, 3, "Auto Phasing");
    return;
  case 3:
    if (!AutoPhaseStep(program, program.cycle.PeakPhaseWord, peakMagnitude)) return;
    enterStep(program, 4, "Centering the peak again");
    state.PeakSearchActive = true;
    return;
  case 4:
    if (!LocatePeak(program, peakPosition, peakMagnitude, 200)) return;
    enterStep(program, 5, "Auto Locking...");
    endPeakSearch(program);
    return;
  default:
    HandOverToLock(program);
  }
}

void ShowPeakThreshold(Program& program) {
  ::frmLock& main = program.frmLock.get();
  const bool shown = program.autoLock.ThresholdShown;
  main.lblPkPwr.setVisible(shown);
  main.lblSigThreshold.setVisible(shown);
  if (!shown) return;
  drawThresholdLine(program, 65280);
  const std::int32_t power = program.cycle.PeakPower;
  main.lblPkPwr.setCaption(main.peakLevelCaption() + " " +
                           (power < 1 ? std::string("n/a") : base::fixedText(std::sqrt(power), 1, 2)));
  main.lblSigThreshold.setCaption(main.peakThresholdCaption() + " " +
                                  base::fixedText(program.autoLock.NoiseThreshold, 1, 2));
}

void ErasePeakThreshold(Program& program) {
  drawThresholdLine(program, program.frmLock->Picture1.backColour());
}

void drawThresholdLine(Program& program, controls::Colour colour) {
  controls::PictureBox& picture = program.frmLock->Picture1;
  const auto y = static_cast<float>(program.autoLock.NoiseThreshold);
  picture.line(picture.scaleLeft(), y, picture.scaleLeft() + picture.scaleWidth(), y, colour);
}

} // namespace AutoLock
