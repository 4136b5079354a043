#include "display/LockKeys.h"
#include "base/NumberText.h"
#include "core/Program.h"
#include "display/PlotScale.h"
#include "engine/AutoLock.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAmpl.h"

namespace {

enum Key : std::int16_t {
  KeyControls = 6,
  Tab = 9,
  Alt = 18,
  Escape = 27,
  PageUp = 33,
  PageDown = 34,
  Home = 36,
  Up = 38,
  Down = 40
};
constexpr std::int16_t kShift = 1;
constexpr int kOffsetStep = 200 / 8; // percent

std::int16_t toggle(controls::MenuItem& item) {
  item.setChecked(!item.checked());
  return flag(item.checked());
}

void showAmplitude(Program& program) {
  if (::frmAmpl* panel = program.frmAmpl.ifLoaded())
    panel->txtDispAmpl.setText(base::signedText(program.record.AmplitudeExponent));
}

void stepDisplay(Program& program, std::int16_t& keyCode, std::int16_t shift) {
  LockParameters& record = program.record;
  const int direction = keyCode == Down ? 1 : -1;
  if (shift & kShift) {
    record.PlotOffset = static_cast<std::int16_t>(record.PlotOffset - direction * kOffsetStep);
  } else {
    record.AmplitudeExponent = static_cast<std::int16_t>(record.AmplitudeExponent + direction);
    showAmplitude(program);
  }
  PlotScale::ApplyDisplaySettings(program);
  keyCode = 0;
}

void scaleThreshold(Program& program, double small, double large) {
  const double factor = program.autoLock.NoiseThreshold < 10 ? small : large;
  // The next noise measurement keeps the operator's choice. A factor past its range is refused: saved, it
  // would keep the next start from reading the settings.
  const float kept = base::toSingle(program.record.PeakThresholdFactor * factor);
  program.autoLock.NoiseThreshold *= factor;
  program.record.PeakThresholdFactor = kept;
}

void thresholdToTop(Program& program) {
  AutoLockState& state = program.autoLock;
  const double top = program.cursor.PlotTop;
  program.record.PeakThresholdFactor =
      base::toSingle(top / state.NoiseThreshold * program.record.PeakThresholdFactor);
  state.NoiseThreshold = top;
  state.ThresholdShown = true;
}

void moveThreshold(Program& program, std::int16_t keyCode) {
  // No tick may run while the threshold changes; releasing the key starts the timer again.
  program.frmLock->Timer1.setInterval(0);
  AutoLock::ErasePeakThreshold(program);
  if (keyCode == PageUp) scaleThreshold(program, 1.1, 1.05);
  if (keyCode == PageDown) scaleThreshold(program, 0.9, 0.95);
  if (keyCode == Home) thresholdToTop(program);
  AutoLock::ShowPeakThreshold(program);
  program.autoLock.SearchRestart = true;
}

} // namespace

void HandleLockKey(Program& program, std::int16_t& keyCode, std::int16_t shift) {
  LockParameters& record = program.record;
  switch (keyCode) {
  case KeyControls:
    toggle(program.frmLock->mnuControls(21));
    break; // the mark only: the panel stays as it is
  case Tab:
    record.ShowImag = toggle(program.frmLock->mnuPrefs(2));
    break;
  case Alt:
    record.ShowReal = toggle(program.frmLock->mnuPrefs(1));
    break;
  case Escape:
    program.frmLock->Picture1.setFocus();
    break;
  case Up:
  case Down:
    stepDisplay(program, keyCode, shift);
    break;
  case PageUp:
  case PageDown:
    if (program.autoLock.ThresholdShown) moveThreshold(program, keyCode);
    break;
  case Home:
    if (program.autoLock.PeakSearchActive) moveThreshold(program, keyCode);
    break;
  default:
    break;
  }
}
