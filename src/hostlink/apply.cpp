#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include <cmath>

namespace ActiveNMRAppInterface {

namespace {

void markDown(LockParameters& record, int mode) {
  for (int k = 0; k <= 3; ++k) record.ModeButtonDown[static_cast<std::size_t>(k)] = k == mode ? 1 : 0;
}

void mirrorMode(Program& program, int button, const char* status) {
  frmLock& main = program.frmLock.get();
  main.ShowSweepLabels(button == frmLock::ButtonSweep);
  main.Toolbar1.press(button);
  ++program.cycle.modeChanges; // a mode change or procedure that is still talking to the host gives way
  program.record.LockMode = static_cast<std::int16_t>(button - 1);
  program.record.LockStatus = status;
  main.Timer1.setEnabled(button != frmLock::ButtonOff);
}

// Keeps the power within its limit when a sweep will add its offset.
void clampSweepOffset(LockParameters& record) {
  if (record.DeltaTxPwr + record.TxPower > kMaxTxPower) record.DeltaTxPwr = kMaxTxPower - record.TxPower;
}

// The sweep that is already running uses the raised power.
void raiseToSweepPower(Program& program) {
  LockParameters& record = program.record;
  const double before = record.TxPower;
  record.TxPower += record.DeltaTxPwr;
  if (record.TxPower <= kMaxTxPower) return;
  program.beep();
  record.DeltaTxPwr = kMaxTxPower - before;
  record.TxPower = kMaxTxPower;
}

void sendToIdleHardware(Program& program) {
  LockParameters& record = program.record;
  SetLockTxPower(program, record.TxPower);
  SetLockFrequency(program, record.Frequency);
  double phase = record.LockPhase;
  SetLockPhase(program, phase);
  SetLockRxGain(program, record.RxGain);
  record.LockMode = kModeOff;
  program.frmLock->Timer1.setEnabled(false);
  record.LockStatus = "OFF";
}

void mirrorHardware(Program& program, std::int32_t state) {
  LockParameters& record = program.record;
  switch (state) {
  case 1:
    mirrorMode(program, frmLock::ButtonLock, "HOLD"); // the first tick replaces it with its judgement
    record.LockState = kJustEntered;
    clampSweepOffset(record);
    markDown(record, kModeLock);
    break;
  case 2:
    mirrorMode(program, frmLock::ButtonSweep, "SWEEP");
    raiseToSweepPower(program);
    markDown(record, kModeSweep);
    break;
  case 3:
    mirrorMode(program, frmLock::ButtonHold, "HOLD");
    clampSweepOffset(record);
    markDown(record, kModeHold);
    break;
  default:
    mirrorMode(program, frmLock::ButtonOff, "OFF");
    clampSweepOffset(record);
    markDown(record, kModeOff);
    sendToIdleHardware(program);
  }
}

// A panel that cannot be loaded is not open, whatever the settings ask for.
void showControls(Program& program) {
  try {
    program.frmControls->show();
  } catch (const base::RuntimeError&) {
    program.frmLock->mnuControls(21).setChecked(false);
    program.panels.ControlsShown = kFalse;
    throw;
  }
}

void showPreferences(Program& program) {
  LockParameters& record = program.record;
  frmLock& main = program.frmLock.get();
  for (int unit = 0; unit <= 2; ++unit) main.mnuUnits(unit).setChecked(false);
  main.mnuUnits(static_cast<int>(record.DisplayUnits)).setChecked(true);
  if (record.ShowControls) {
    main.mnuControls(21).setChecked(true);
    program.panels.ControlsShown = kTrue;
    showControls(program);
  }
  // The real trace's mark is set when the file says not to show it, the imaginary one's when it says to:
  // operators' files rely on both.
  if (record.ShowReal == 0) main.mnuPrefs(1).setChecked(true);
  if (record.ShowImag != 0) main.mnuPrefs(2).setChecked(true);
  record.ShowLockLevel = record.LogEnabled = record.UseTimer = kFalse;
  for (int item : {5, 10, 15}) main.mnuPrefs(item).setChecked(false);
  if (::frmLevel* meter = program.frmLevel.ifLoaded()) meter->hide();
}

// Where the field centre stands on the scroll bar, four DAC units a step. A centre that the bar cannot show
// is refused before the record or the hardware takes it.
std::int16_t centrePosition(Program& program) {
  const controls::ScrollBar& bar = program.frmLock->hsCenter;
  const std::int32_t centre = program.record.FieldCenter;
  const double position = base::roundHalfEven(centre / 4.0);
  if (position >= bar.minimum() && position <= bar.maximum()) return static_cast<std::int16_t>(position);
  const std::string where =
      vbLock_mod::settingName(program, "Hardware", "FieldCenter", base::numberText(centre));
  if (position < INT16_MIN || position > INT16_MAX) base::raiseOverflow(where);
  base::raiseInvalidValue(where);
}

} // namespace

void ApplyLockParameters(Program& program) {
  LockParameters& record = program.record;
  const std::int32_t state = GetLockHardwareState(program);
  const std::int16_t centre = centrePosition(program);
  record.SweepSpeedNow = record.SweepSpeed;
  record.FieldCenterNow = record.FieldCenter;
  SetSweepWidth(program, record.SweepWidth);
  program.frmLock->hsCenter.setValue(centre);
  if (record.PlotMax <= 0)
    base::raiseInvalidCall(
        vbLock_mod::settingName(program, "Display", "PlotMax", base::numberText(record.PlotMax)));
  record.AmplitudeExponent = base::toInt16(std::log(record.PlotMax) / std::log(2.0));
  mirrorHardware(program, state);
  program.frmLock->showStatus();
  showPreferences(program);
}

} // namespace ActiveNMRAppInterface
